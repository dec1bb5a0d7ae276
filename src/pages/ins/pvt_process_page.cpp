#include "pages/ins/pvt_process_page.h"

namespace tarnlog {

PVTProcess::PVTProcess(PageParent& parent, PageHost& host) : Page(parent, host, "PVTProcess") {}

}  // namespace tarnlog
