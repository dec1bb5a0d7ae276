#include "pages/timing/pps_reacquisition_page.h"

namespace tarnlog {

PPSReacquisition::PPSReacquisition(PageParent& parent, PageHost& host)
    : Page(parent, host, "PPSReacquisition"),
      realValue(*this, "RealValue"),
      realCoordinates(*this, "RealValue"),
      roverPos(*this, "RoverPos"),
      roverCoordinates(*this, "RoverPos") {
  realValue.onChanged = [this] { OnRealValueChanged(); };
  roverPos.onChanged = [this] { OnRoverPosChanged(); };
}

void PPSReacquisition::Start() {
  Page::Start();
  RefreshOnTabChoice();
}

void PPSReacquisition::RefreshOnTabChoice() {
  RefillRealValueList(realValue);
  RefillRealValueList(roverPos);
  realValue.Select(0);
  roverPos.Select(0);
  OnRealValueChanged();
}

void PPSReacquisition::OnRealValueChanged() {
  if (realValue.selected < 0) return;
  const RealValueRow& row = Parent().RealValueStore().rows[realValue.selected];
  realCoordinates.Show(row);
  roverCoordinates.Show(row);
  roverPos.Select(realValue.selected);
}

void PPSReacquisition::OnRoverPosChanged() {
  if (roverPos.selected < 0) return;
  roverCoordinates.Show(Parent().RealValueStore().rows[roverPos.selected]);
}

}  // namespace tarnlog
