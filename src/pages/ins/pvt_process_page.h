#pragma once

#include "frame/page.h"

namespace tarnlog {

class PVTProcess : public Page {
 public:
  PVTProcess(PageParent& parent, PageHost& host);
};

}  // namespace tarnlog
