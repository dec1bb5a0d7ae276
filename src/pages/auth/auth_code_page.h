#pragma once

#include "frame/page.h"

namespace tarnlog {

class AuthCode : public Page {
 public:
  AuthCode(PageParent& parent, PageHost& host);
};

}  // namespace tarnlog
