// The heading page: heading accuracy of two-antenna receivers.
#pragma once

#include "frame/coordinate_fields.h"
#include "frame/page.h"

namespace tarnlog {

class Heading : public Page {
 public:
  Heading(PageParent& parent, PageHost& host);
  void Start() override;
  // Refills the "Base" and "ANT1" lists, selects entry 0 of both and runs
  // the "Base" list's changed action.
  void RefreshOnTabChoice() override;

  ChoiceField base;
  CoordinateFields baseCoordinates;
  ChoiceField ant1;
  CoordinateFields ant1Coordinates;
  ChoiceField ant2;
  CoordinateFields ant2Coordinates;

 private:
  // A pick in "Base" takes the first row of that exact name; when the name
  // also stands in "ANT1", "ANT1" and "ANT2" move to the same position and
  // all three sets receive the row's coordinates.
  void OnBaseChanged();
};

}  // namespace tarnlog
