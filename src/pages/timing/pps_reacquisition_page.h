// The "Initial" page: first fix, reacquisition and PPS tests.
#pragma once

#include "frame/coordinate_fields.h"
#include "frame/page.h"

namespace tarnlog {

class PPSReacquisition : public Page {
 public:
  PPSReacquisition(PageParent& parent, PageHost& host);
  void Start() override;
  // Refills both real-value lists, selects entry 0 of both and runs the
  // "RealValue" list's changed action.
  void RefreshOnTabChoice() override;

  ChoiceField realValue;
  CoordinateFields realCoordinates;
  ChoiceField roverPos;
  CoordinateFields roverCoordinates;

 private:
  // A pick in "RealValue" sets both coordinate sets and moves "RoverPos"
  // to the same position; a pick in "RoverPos" sets the rover's only.
  void OnRealValueChanged();
  void OnRoverPosChanged();
};

}  // namespace tarnlog
