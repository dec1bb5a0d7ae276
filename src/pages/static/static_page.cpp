#include "pages/static/static_page.h"

namespace tarnlog {

llherroRTKStatic::llherroRTKStatic(PageParent& parent, PageHost& host)
    : Page(parent, host, "llherroRTKStatic") {}

void llherroRTKStatic::Start() {
  Page::Start();
  RefuseAutoTestSwitch(kStaticSwitch);
}

}  // namespace tarnlog
