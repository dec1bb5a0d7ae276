// NMEA sentences as a high-precision receiver writes them: seven decimals
// of minutes, UTC time to the hundredth of a second.
#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr double kKnotsPerMetrePerSecond = 1.0 / 0.514444;

// ",hhmmss.ss"
void FieldUtcTime(std::string& out, const ReceiverEpoch& e) {
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  out += ',';
  AppendPadded(out, static_cast<std::uint32_t>(utc.hour), 2);
  AppendPadded(out, static_cast<std::uint32_t>(utc.minute), 2);
  AppendPadded(out, static_cast<std::uint32_t>(utc.millisecond / 1000), 2);
  out += '.';
  AppendPadded(out, static_cast<std::uint32_t>(utc.millisecond % 1000 / 10), 2);
}

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

void FieldLatitudeLongitude(std::string& out, const PositionSolution& p) {
  FieldAngle(out, p.latitude, 2, 'N', 'S');
  FieldAngle(out, p.longitude, 3, 'E', 'W');
}

// The GGA quality indicator of a fix.
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

// The mode indicator of RMC and VTG.
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

bool TracksGlonass(const ReceiverEpoch& e) {
  for (const Satellite& satellite : e.satellites) {
    if (satellite.Glonass()) return true;
  }
  return false;
}

}  // namespace

void WriteGga(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  // A GPS-only receiver talks as GP, a multi-constellation one as GN.
  const std::size_t start = BeginNmea(out, TracksGlonass(e) ? "GNGGA" : "GPGGA");
  FieldUtcTime(out, e);
  if (e.fix == FixKind::kNone) {
    out += ",,,,,0,00,99.99,,M,,M,,";
  } else {
    const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
    FieldLatitudeLongitude(out, p);
    FieldInt(out, GgaQuality(e.fix));
    out += ',';
    AppendPadded(out, static_cast<std::uint32_t>(p.used), 2);
    FieldFixed(out, 0.5 + 6.0 / (p.used + 1), 2);
    FieldFixed(out, p.height, 3);
    Field(out, "M");
    FieldFixed(out, p.undulation, 3);
    Field(out, "M");
    if (p.stationId >= 0) {
      FieldFixed(out, p.differentialAge, 1);
      out += ',';
      AppendPadded(out, static_cast<std::uint32_t>(p.stationId), 4);
    } else {
      out += ",,";
    }
  }
  EndNmea(out, start);
}

void WriteRmc(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginNmea(out, "GNRMC");
  FieldUtcTime(out, e);
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  if (e.fix == FixKind::kNone) {
    out += ",V,,,,,,,";
  } else {
    const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
    Field(out, "A");
    FieldLatitudeLongitude(out, p);
    FieldFixed(out, e.speed * kKnotsPerMetrePerSecond, 3);
    FieldFixed(out, e.track, 1);
    out += ',';
  }
  AppendPadded(out, static_cast<std::uint32_t>(utc.day), 2);
  AppendPadded(out, static_cast<std::uint32_t>(utc.month), 2);
  AppendPadded(out, static_cast<std::uint32_t>(utc.year % 100), 2);
  out += ",,,";
  out += ModeLetter(e.fix);
  out += ",V";
  EndNmea(out, start);
}

void WriteVtg(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginNmea(out, "GNVTG");
  if (e.fix == FixKind::kNone) {
    out += ",,T,,M,,N,,K";
  } else {
    FieldFixed(out, e.track, 1);
    out += ",T,,M";
    FieldFixed(out, e.speed * kKnotsPerMetrePerSecond, 3);
    Field(out, "N");
    FieldFixed(out, e.speed * 3.6, 3);
    Field(out, "K");
  }
  out += ',';
  out += ModeLetter(e.fix);
  EndNmea(out, start);
}

// Pseudorange error statistics: RMS, error ellipse and the deviations of
// latitude, longitude and altitude.
void WriteGst(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginNmea(out, "GNGST");
  FieldUtcTime(out, e);
  if (e.fix == FixKind::kNone) {
    out += ",,,,,,,";
  } else {
    const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
    FieldFixed(out, p.sigma[0] * 1.3, 2);
    FieldFixed(out, p.sigma[0] * 1.1, 3);
    FieldFixed(out, p.sigma[1] * 0.9, 3);
    FieldFixed(out, 10.0 + 80.0 * c.rng.Unit(), 1);
    FieldFixed(out, p.sigma[0], 3);
    FieldFixed(out, p.sigma[1], 3);
    FieldFixed(out, p.sigma[2], 3);
  }
  EndNmea(out, start);
}

}  // namespace tarnlog::synth
