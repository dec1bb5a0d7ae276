#pragma once

#include "frame/page.h"

namespace tarnlog {

class CCN0CompareDlg : public Page {
 public:
  CCN0CompareDlg(PageParent& parent, PageHost& host);
};

}  // namespace tarnlog
