#pragma once

#include "frame/page.h"

namespace tarnlog {

class SimulatorProDlg : public Page {
 public:
  SimulatorProDlg(PageParent& parent, PageHost& host);
};

}  // namespace tarnlog
