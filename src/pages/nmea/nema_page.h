#pragma once

#include "frame/page.h"

namespace tarnlog {

class Nema : public Page {
 public:
  Nema(PageParent& parent, PageHost& host);
};

}  // namespace tarnlog
