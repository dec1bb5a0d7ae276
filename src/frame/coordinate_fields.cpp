#include "frame/coordinate_fields.h"

#include <cstdio>

namespace tarnlog {
namespace {

std::string FormatCoordinate(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.15g", value);
  return text;
}

}  // namespace

CoordinateFields::CoordinateFields(Page& page, std::string_view group)
    : latitude(page, "Latitude", {}, group),
      longitude(page, "Longitude", {}, group),
      height(page, "Height", {}, group) {}

void CoordinateFields::Show(const RealValueRow& row) {
  latitude.text = FormatCoordinate(row.latitude);
  longitude.text = FormatCoordinate(row.longitude);
  height.text = FormatCoordinate(row.height);
}

}  // namespace tarnlog
