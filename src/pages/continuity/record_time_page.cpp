#include "pages/continuity/record_time_page.h"

namespace tarnlog {

CRecordTimeDlg::CRecordTimeDlg(PageParent& parent, PageHost& host)
    : Page(parent, host, "CRecordTimeDlg") {}

void CRecordTimeDlg::Start() {
  Page::Start();
  RefuseAutoTestSwitch(kContinueSwitch);
}

}  // namespace tarnlog
