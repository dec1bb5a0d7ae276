#include "pages/simulator/simulator_page.h"

namespace tarnlog {

SimulatorProDlg::SimulatorProDlg(PageParent& parent, PageHost& host)
    : Page(parent, host, "SimulatorProDlg") {}

}  // namespace tarnlog
