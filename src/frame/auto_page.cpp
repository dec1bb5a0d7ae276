#include "frame/auto_page.h"

namespace tarnlog {

CAuto::CAuto(PageParent& parent, PageHost& host) : Page(parent, host, "CAuto") {}

void CAuto::Start() {
  Page::Start();
  RefuseAutoTestSwitch(kAutoSwitch);
}

}  // namespace tarnlog
