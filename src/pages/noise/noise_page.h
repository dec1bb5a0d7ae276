// The noise page: observation noise by double differencing and the MFG
// production test of boards.
#pragma once

#include "frame/coordinate_fields.h"
#include "frame/page.h"

namespace tarnlog {

class GenNoise : public Page {
 public:
  GenNoise(PageParent& parent, PageHost& host);
  void Start() override;
  // Both real-value lists are refilled and put back on entry 0.
  void RefreshOnTabChoice() override;

  ChoiceField refCoor;
  CoordinateFields refCoordinates;
  ChoiceField initCoor;
  CoordinateFields initCoordinates;
};

}  // namespace tarnlog
