#include "synthcap/nmea_fields.h"

#include <cstdint>

#include "synthcap/sentence_frame.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

// ",ddmm.mmmmmmm,N" or ",dddmm.mmmmmmm,E" with the hemisphere letter.
void FieldAngle(std::string& out, double degrees, int degreeDigits, char positive, char negative) {
  const double magnitude = degrees < 0 ? -degrees : degrees;
  const std::uint64_t units = static_cast<std::uint64_t>(magnitude * 60.0e7 + 0.5);
  const std::uint64_t perDegree = 600000000;
  out += ',';
  AppendPadded(out, static_cast<std::uint32_t>(units / perDegree), degreeDigits);
  const std::uint64_t minuteUnits = units % perDegree;
  AppendPadded(out, static_cast<std::uint32_t>(minuteUnits / 10000000), 2);
  out += '.';
  AppendPadded(out, static_cast<std::uint32_t>(minuteUnits % 10000000), 7);
  out += ',';
  out += degrees < 0 ? negative : positive;
}

}  // namespace

std::size_t BeginTalker(WriterContext& c, std::string_view talker) {
  const std::size_t start = BeginNmea(c.out, talker);
  c.out += c.name;
  return start;
}

void FieldUtcTime(std::string& out, const ReceiverEpoch& e) {
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  out += ',';
  AppendPadded(out, static_cast<std::uint32_t>(utc.hour), 2);
  AppendPadded(out, static_cast<std::uint32_t>(utc.minute), 2);
  AppendPadded(out, static_cast<std::uint32_t>(utc.millisecond / 1000), 2);
  out += '.';
  AppendPadded(out, static_cast<std::uint32_t>(utc.millisecond % 1000 / 10), 2);
}

void FieldLatitudeLongitude(std::string& out, double latitude, double longitude) {
  FieldAngle(out, latitude, 2, 'N', 'S');
  FieldAngle(out, longitude, 3, 'E', 'W');
}

int GgaQuality(FixKind kind) {
  switch (kind) {
    case FixKind::kNone:
      return 0;
    case FixKind::kSingle:
      return 1;
    case FixKind::kPsrDiff:
      return 2;
    case FixKind::kNarrowInt:
      return 4;
    case FixKind::kNarrowFloat:
      return 5;
  }
  return 0;
}

char ModeLetter(FixKind kind) {
  switch (kind) {
    case FixKind::kNone:
      return 'N';
    case FixKind::kSingle:
      return 'A';
    case FixKind::kPsrDiff:
      return 'D';
    case FixKind::kNarrowInt:
      return 'R';
    case FixKind::kNarrowFloat:
      return 'F';
  }
  return 'N';
}

std::string_view TalkerOf(const ReceiverEpoch& e) {
  for (const Satellite& satellite : e.satellites) {
    if (satellite.Glonass()) return "GN";
  }
  return "GP";
}

}  // namespace tarnlog::synth
