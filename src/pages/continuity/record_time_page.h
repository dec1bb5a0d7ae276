#pragma once

#include "frame/page.h"

namespace tarnlog {

class CRecordTimeDlg : public Page {
 public:
  CRecordTimeDlg(PageParent& parent, PageHost& host);
  void Start() override;
};

}  // namespace tarnlog
