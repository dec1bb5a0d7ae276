#include "pages/noise/noise_page.h"

namespace tarnlog {

GenNoise::GenNoise(PageParent& parent, PageHost& host)
    : Page(parent, host, "GenNoise"),
      refCoor(*this, "RefCoor"),
      refCoordinates(*this, "RefCoor"),
      initCoor(*this, "InitCoor"),
      initCoordinates(*this, "InitCoor") {}

void GenNoise::Start() {
  Page::Start();
  RefreshOnTabChoice();
  RefuseAutoTestSwitch(kNoiseSwitch);
}

void GenNoise::RefreshOnTabChoice() {
  RefillRealValueList(refCoor);
  RefillRealValueList(initCoor);
  refCoor.Select(0);
  initCoor.Select(0);
}

}  // namespace tarnlog
