#include "pages/dynamic/dynamic_page.h"

namespace tarnlog {

llherroRTKDynamic::llherroRTKDynamic(PageParent& parent, PageHost& host)
    : Page(parent, host, "llherroRTKDynamic") {}

}  // namespace tarnlog
