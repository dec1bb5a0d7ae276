#pragma once

#include "frame/page.h"

namespace tarnlog {

class llherroRTKDynamic : public Page {
 public:
  llherroRTKDynamic(PageParent& parent, PageHost& host);
};

}  // namespace tarnlog
