// The "AUTO" page: runs the ticked tests over one folder of logs by starting
// copies of the program with the automatic-test switches.
#pragma once

#include "frame/page.h"

namespace tarnlog {

class CAuto : public Page {
 public:
  CAuto(PageParent& parent, PageHost& host);
  void Start() override;
};

}  // namespace tarnlog
