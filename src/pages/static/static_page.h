#pragma once

#include "frame/page.h"

namespace tarnlog {

class llherroRTKStatic : public Page {
 public:
  llherroRTKStatic(PageParent& parent, PageHost& host);
  void Start() override;
};

}  // namespace tarnlog
