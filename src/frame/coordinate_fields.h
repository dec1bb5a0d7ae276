// The "Latitude", "Longitude", "Height" edit boxes that stand beside a
// real-value list on several pages.
#pragma once

#include <string_view>

#include "frame/fields.h"
#include "frame/real_value_table.h"

namespace tarnlog {

struct CoordinateFields {
  CoordinateFields(Page& page, std::string_view group);

  // Shows a row's values as the dialog's data exchange does ("%.15g").
  void Show(const RealValueRow& row);

  TextField latitude;
  TextField longitude;
  TextField height;
};

}  // namespace tarnlog
