// The static page: accuracy of receivers recorded on a surveyed point, and
// the editor of the real-value table.
#pragma once

#include "frame/coordinate_fields.h"
#include "frame/page.h"
#include "pages/static/real_value_store.h"

namespace tarnlog {

class llherroRTKStatic : public Page {
 public:
  llherroRTKStatic(PageParent& parent, PageHost& host);
  // Tests Config/AllRealValue.txt, fills the three real-value lists and
  // applies their first entries; when the file can't be read and written
  // the start stops right after saying so.
  void Start() override;

  ChoiceField realValueType;
  CoordinateFields realValueCoordinates;
  ChoiceField master;
  CoordinateFields masterCoordinates;
  ChoiceField slave;
  CoordinateFields slaveCoordinates;
  TextField addRealValueType;
  ActionField addAction;
  ActionField modifyAction;
  ActionField deleteAction;

  // The three sets as last read from or shown in their fields.
  Coordinates realValue;
  Coordinates masterValue;
  Coordinates slaveValue;

 private:
  RealValueEditor Editor();
};

}  // namespace tarnlog
