#include "frame/coordinate_fields.h"

#include <cstdio>
#include <cstdlib>

namespace tarnlog {
namespace {

constexpr double kLatitudeLimit = 90.0;
constexpr double kLongitudeLimit = 180.0;

// The negated test also turns away a text that reads as NaN.
bool InRange(double value, double limit) {
  return value >= -limit && value <= limit;
}

// The dialog's check of a coordinate field has no text of its own in this
// system. Its words are this program's, all here: the message below and the
// naming of the field in CoordinateFieldRange, shown as the window's box and
// as the line that ends a batch run.
std::string OutOfRangeMessage(const TextField& field) {
  return "Value out of range: " + CoordinateFieldRange(field);
}

}  // namespace

std::string DialogNumberText(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.15g", value);
  return text;
}

std::optional<Coordinates> SelectedCoordinates(const ChoiceField& list,
                                               const RealValueTable& table) {
  const int row = table.Find(list.SelectedText());
  if (row < 0) return std::nullopt;
  return CoordinatesOf(table.rows[static_cast<std::size_t>(row)]);
}

CoordinateFields::CoordinateFields(Page& page, std::string_view group)
    : latitude(page, "Latitude", {}, group),
      longitude(page, "Longitude", {}, group),
      height(page, "Height", {}, group) {}

void CoordinateFields::Show(const RealValueRow& row) {
  Show(CoordinatesOf(row));
}

void CoordinateFields::Show(const Coordinates& values) {
  latitude.text = DialogNumberText(values.latitude);
  longitude.text = DialogNumberText(values.longitude);
  height.text = DialogNumberText(values.height);
}

std::optional<std::string> CoordinateFields::Read(Coordinates& values) const {
  const Coordinates read{std::atof(latitude.text.c_str()), std::atof(longitude.text.c_str()),
                         std::atof(height.text.c_str())};
  if (!InRange(read.latitude, kLatitudeLimit)) return OutOfRangeMessage(latitude);
  if (!InRange(read.longitude, kLongitudeLimit)) return OutOfRangeMessage(longitude);
  values = read;
  return std::nullopt;
}

std::string CoordinateFieldRange(const TextField& field) {
  const std::string limit = std::to_string(
      static_cast<int>(field.Caption() == "Longitude" ? kLongitudeLimit : kLatitudeLimit));
  // The text goes on one line, as every message of a batch run does.
  std::string text = field.text;
  for (char& c : text) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  return field.Group() + " " + field.Caption() + " is \"" + text + "\", it must lie in -" + limit +
         " to " + limit;
}

}  // namespace tarnlog
