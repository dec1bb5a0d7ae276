// The standard NMEA sentences of the position set and their variants for
// the heading antenna and the second base: GGA, RMC, VTG and GST.
#include "synthcap/local_frame.h"
#include "synthcap/message_writers.h"
#include "synthcap/nmea_fields.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

// Everything behind the time field; empty fields without a fix.
void AppendGgaBody(std::string& out, const ReceiverEpoch& e, const PositionSolution& p) {
  if (e.fix == FixKind::kNone) {
    out += ",,,,,0,00,99.99,,M,,M,,";
    return;
  }
  FieldLatitudeLongitude(out, p.latitude, p.longitude);
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

void WriteGgaOf(WriterContext& c, std::string_view talker, const PositionSolution& p) {
  const std::size_t start = BeginTalker(c, talker);
  FieldUtcTime(c.out, c.epoch);
  AppendGgaBody(c.out, c.epoch, p);
  EndNmea(c.out, start);
}

PositionSolution BestPosition(WriterContext& c) {
  // No fix prints empty fields and draws no noise.
  if (c.epoch.fix == FixKind::kNone) return {};
  return SolvePosition(SolutionFamily::kBest, c.epoch, c.rng);
}

}  // namespace

void WriteGga(WriterContext& c) {
  // A GPS-only receiver talks as GP, a multi-constellation one as GN.
  WriteGgaOf(c, TalkerOf(c.epoch), BestPosition(c));
}

// The heading antenna's own position, 1.2 m ahead of the main antenna.
void WriteHeadingGga(WriterContext& c) {
  PositionSolution p = BestPosition(c);
  Displace(p.latitude, p.longitude, p.height, HeadingBaseline(c.epoch));
  WriteGgaOf(c, "GN", p);
}

// The position solved against the second base: RTK when the board has it.
void WriteBase2Gga(WriterContext& c) {
  const FixKind fix = c.epoch.fix;
  const bool rtk = fix == FixKind::kNarrowInt || fix == FixKind::kNarrowFloat;
  WriteGgaOf(c, "GN", rtk ? SolvePosition(SolutionFamily::kRtk, c.epoch, c.rng) : BestPosition(c));
}

void WriteRmc(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginTalker(c, "GN");
  FieldUtcTime(out, e);
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  if (e.fix == FixKind::kNone) {
    out += ",V,,,,,,,";
  } else {
    const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
    Field(out, "A");
    FieldLatitudeLongitude(out, p.latitude, p.longitude);
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
  const std::size_t start = BeginTalker(c, "GN");
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
  const std::size_t start = BeginTalker(c, "GN");
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
