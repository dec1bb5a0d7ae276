#include "pages/heading/heading_page.h"

#include <algorithm>

namespace tarnlog {

Heading::Heading(PageParent& parent, PageHost& host)
    : Page(parent, host, "Heading"),
      base(*this, "Base"),
      baseCoordinates(*this, "Base"),
      ant1(*this, "ANT1"),
      ant1Coordinates(*this, "ANT1"),
      ant2(*this, "ANT2"),
      ant2Coordinates(*this, "ANT2") {
  base.onChanged = [this] { OnBaseChanged(); };
}

void Heading::Start() {
  Page::Start();
  RefillRealValueList(ant2);
  ant2.Select(0);
  RefreshOnTabChoice();
}

void Heading::RefreshOnTabChoice() {
  RefillRealValueList(base);
  RefillRealValueList(ant1);
  base.Select(0);
  ant1.Select(0);
  OnBaseChanged();
}

void Heading::OnBaseChanged() {
  const std::string& name = base.SelectedText();
  const int row = Parent().RealValueStore().Find(name);
  if (base.selected < 0 || row < 0) return;
  const RealValueRow& values = Parent().RealValueStore().rows[row];
  baseCoordinates.Show(values);
  const auto inAnt1 = std::find(ant1.entries.begin(), ant1.entries.end(), name);
  if (inAnt1 == ant1.entries.end()) return;
  const int position = static_cast<int>(inAnt1 - ant1.entries.begin());
  ant1.Select(position);
  ant2.Select(position);
  ant1Coordinates.Show(values);
  ant2Coordinates.Show(values);
}

}  // namespace tarnlog
