// The "Latitude", "Longitude", "Height" edit boxes that stand beside a
// real-value list on several pages.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "frame/fields.h"
#include "frame/real_value_table.h"

namespace tarnlog {

struct Coordinates {
  double latitude = 0.0;   // degrees
  double longitude = 0.0;  // degrees
  double height = 0.0;     // metres
};

inline Coordinates CoordinatesOf(const RealValueRow& row) {
  return {row.latitude, row.longitude, row.height};
}

struct CoordinateFields {
  CoordinateFields(Page& page, std::string_view group);

  // Shows a row's values as the dialog's data exchange does ("%.15g").
  void Show(const RealValueRow& row);
  void Show(const Coordinates& values);

  // Reads the three fields as plain text-to-double conversions. The latitude
  // must lie in -90..90 and the longitude in -180..180: otherwise `values`
  // stays as it was and the result is the check's message about the first
  // field out of range, latitude before longitude.
  std::optional<std::string> Read(Coordinates& values) const;

  TextField latitude;
  TextField longitude;
  TextField height;
};

// A double as the dialog's data exchange shows it in an edit box ("%.15g").
std::string DialogNumberText(double value);

// The coordinates of the name a real-value list has selected, looked up by
// exact name in the table; nothing when the name isn't there.
std::optional<Coordinates> SelectedCoordinates(const ChoiceField& list,
                                               const RealValueTable& table);

// A coordinate field as a refused check names it: its set and caption, its
// text as it stands and the range of its kind ("Master Latitude is "nan",
// it must lie in -90 to 90").
std::string CoordinateFieldRange(const TextField& field);

}  // namespace tarnlog
