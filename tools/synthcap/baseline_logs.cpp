// Baselines (rover from base, heading antenna from main antenna), the tilt
// survey, the second base's bias, and the maker's all-in-one solution logs
// AGRICA and PVTSOLA.
#include <cmath>

#include "synthcap/local_frame.h"
#include "synthcap/message_writers.h"
#include "synthcap/nmea_fields.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr double kDegrees = 3.14159265358979323846 / 180.0;
constexpr double kPoleLength = 1.8;

bool Rtk(const ReceiverEpoch& e) {
  return e.fix == FixKind::kNarrowInt || e.fix == FixKind::kNarrowFloat;
}

void AppendQuotedStation(std::string& out, int station) {
  out += ",\"";
  AppendInt(out, station);
  out += '"';
}

// Satellites tracked, used, used on L1 and used on several frequencies, a
// reserved byte, the extended status and the two signal masks.
void AppendBaselineTail(std::string& out, const ReceiverEpoch& e, bool computed) {
  const int used = computed ? e.SatellitesInSolution() : 0;
  FieldInt(out, static_cast<std::int64_t>(e.satellites.size()));
  FieldInt(out, used);
  FieldInt(out, used);
  FieldInt(out, used);
  out += ",00,00,00";
  FieldHex(out, used > 0 ? 0x33u : 0u, 2);
}

void AppendEnu(std::string& out, const Enu& enu, double sigma, Rng& rng) {
  FieldFixed(out, enu.east + sigma * rng.Noise(), 4);
  FieldFixed(out, enu.north + sigma * rng.Noise(), 4);
  FieldFixed(out, enu.up + 1.8 * sigma * rng.Noise(), 4);
}

}  // namespace

// Status as a number, position type, pole length, tilt, the antenna phase
// centre's position and deviations, then the slant and vertical heights.
void WriteSlantAntenna(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
  const double tilt = std::sqrt(e.attitude[0] * e.attitude[0] + e.attitude[1] * e.attitude[1]);
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, e.fix == FixKind::kNone ? 1 : 0);
  Field(c.out, p.type);
  FieldFixed(c.out, kPoleLength, 4);
  FieldFixed(c.out, tilt, 4);
  FieldFixed(c.out, p.latitude, 11);
  FieldFixed(c.out, p.longitude, 11);
  FieldFixed(c.out, p.height + p.undulation, 4);
  for (const double sigma : p.sigma)
    FieldFixed(c.out, sigma, 4);
  FieldFixed(c.out, kPoleLength, 4);
  FieldFixed(c.out, kPoleLength * std::cos(tilt * kDegrees), 4);
  EndLog(c, start);
}

// The heading antenna from the main antenna: status, type, east, north and
// up with deviations, the two antennas' ids, then the satellite counts.
void WriteEnuBaseline(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const bool computed = e.fix != FixKind::kNone;
  const std::size_t start = BeginLog(c);
  c.out += computed ? "SOL_COMPUTED,NARROW_INT" : "INSUFFICIENT_OBS,NONE";
  AppendEnu(c.out, computed ? HeadingBaseline(e) : Enu{}, computed ? 0.004 : 0.0, c.rng);
  for (const double sigma : {0.004, 0.004, 0.008})
    FieldFixed(c.out, computed ? sigma : 0.0, 4);
  c.out += ",\"1\"";
  AppendQuotedStation(c.out, 0);
  AppendBaselineTail(c.out, e, computed);
  EndLog(c, start);
}

// The rover from its base in earth-centred axes, with deviations and the
// base's station number.
void WriteXyzBaseline(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const bool computed = Rtk(e);
  double xyz[3] = {0.0, 0.0, 0.0};
  if (computed) EnuToEcef(RoverFromBase(e), e.latitude, e.longitude, xyz);
  const std::size_t start = BeginLog(c);
  c.out += computed ? "SOL_COMPUTED," : "INSUFFICIENT_OBS,NONE";
  if (computed) c.out += PositionTypeText(e.fix);
  for (const double component : xyz)
    FieldFixed(c.out, component + (computed ? e.sigmaHorizontal * c.rng.Noise() : 0.0), 4);
  for (int i = 0; i < 3; ++i)
    FieldFixed(c.out, computed ? e.sigmaHorizontal * (1.0 + 0.1 * i) : 0.0, 4);
  AppendQuotedStation(c.out, e.stationId);
  AppendBaselineTail(c.out, e, computed);
  EndLog(c, start);
}

// The second base against the first: its station, status, type, satellites
// tracked and used, the age, then the north, east and up bias in metres,
// drifting slowly.
void WriteBase2Bias(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const bool computed = Rtk(e);
  const double t = e.secondsSinceStart / 600.0;
  const std::size_t start = BeginLog(c);
  c.out += '"';
  AppendInt(c.out, (e.stationId + 1) % 4096);
  c.out += '"';
  Field(c.out, computed ? "SOL_COMPUTED" : "INSUFFICIENT_OBS");
  Field(c.out, computed ? PositionTypeText(e.fix) : "NONE");
  FieldInt(c.out, static_cast<std::int64_t>(e.satellites.size()));
  FieldInt(c.out, computed ? e.SatellitesInSolution() : 0);
  FieldFixed(c.out, computed ? e.differentialAge : 0.0, 3);
  FieldFixed(c.out, computed ? 0.02 * std::sin(t) : 0.0, 4);
  FieldFixed(c.out, computed ? 0.015 * std::cos(t) : 0.0, 4);
  FieldFixed(c.out, computed ? 0.03 * std::sin(0.5 * t) : 0.0, 4);
  EndLog(c, start);
}

// The code solution as east, north and up from the base, and the velocity
// in the same axes.
void WriteSppEnu(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const PositionSolution p = SolvePosition(SolutionFamily::kPseudorange, e, c.rng);
  const bool computed = p.status == "SOL_COMPUTED";
  const std::size_t start = BeginLog(c);
  c.out += p.status;
  Field(c.out, p.type);
  AppendEnu(c.out, computed ? RoverFromBase(e) : Enu{}, computed ? p.sigma[0] : 0.0, c.rng);
  const Enu velocity = {e.speed * std::sin(e.track * kDegrees),
                        e.speed * std::cos(e.track * kDegrees), e.verticalSpeed};
  AppendEnu(c.out, computed ? velocity : Enu{}, computed ? 0.02 : 0.0, c.rng);
  EndLog(c, start);
}

// The maker's agriculture log: UTC date and time, position and heading
// states, satellites per system, the heading baseline, attitude, velocity,
// position in degrees and earth-centred, deviations, the base's and the
// heading antenna's positions, time, age, undulation and the rest.
void WriteAgric(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
  const bool computed = p.status == "SOL_COMPUTED";
  int glonass = 0;
  for (const Satellite& satellite : e.satellites)
    glonass += satellite.Glonass() ? 1 : 0;
  const Enu baseline = computed ? HeadingBaseline(e) : Enu{};
  double xyz[3] = {0.0, 0.0, 0.0};
  if (computed) GeodeticToEcef(p.latitude, p.longitude, p.height + p.undulation, xyz);
  double second[3] = {p.latitude, p.longitude, p.height + p.undulation};
  Displace(second[0], second[1], second[2], baseline);
  const double north = e.speed * std::cos(e.track * kDegrees);
  const double east = e.speed * std::sin(e.track * kDegrees);

  const std::size_t start = BeginLog(c);
  std::string& out = c.out;
  out += "GNSS,236";
  for (const int value : {utc.year % 100, utc.month, utc.day, utc.hour, utc.minute,
                          utc.millisecond / 1000, GgaQuality(e.fix), computed ? 4 : 0,
                          static_cast<int>(e.satellites.size()) - glonass, 0, glonass})
    FieldInt(out, value);
  for (const double value :
       {baseline.north, baseline.east, baseline.up, 0.004, 0.004, 0.008, e.attitude[2],
        e.attitude[1], e.attitude[0], e.speed, north, east, e.verticalSpeed, 0.02, 0.02, 0.03})
    FieldFixed(out, computed ? value : 0.0, 4);
  FieldFixed(out, p.latitude, 11);
  FieldFixed(out, p.longitude, 11);
  FieldFixed(out, p.height + p.undulation, 4);
  for (const double value : xyz)
    FieldFixed(out, value, 4);
  for (const double value :
       {p.sigma[0], p.sigma[1], p.sigma[2], p.sigma[0], p.sigma[1], p.sigma[2]})
    FieldFixed(out, value, 4);
  FieldFixed(out, e.baseLatitude, 11);
  FieldFixed(out, e.baseLongitude, 11);
  FieldFixed(out, e.baseHeight, 4);
  FieldFixed(out, computed ? second[0] : 0.0, 11);
  FieldFixed(out, computed ? second[1] : 0.0, 11);
  FieldFixed(out, computed ? second[2] : 0.0, 4);
  FieldInt(out, e.millisecond);
  FieldFixed(out, p.differentialAge, 3);
  FieldFixed(out, e.track, 4);
  FieldFixed(out, p.undulation, 4);
  out += ",0.0000,0.0000,0,0";
  EndLog(c, start);
}

// The maker's solution summary: best position (type, height, latitude,
// longitude, deviations, age), code position (type, height, latitude,
// longitude), undulation, satellite counts of both, velocity, the heading
// solution, the dilutions and the PRNs used.
void WritePvtSolution(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const PositionSolution best = SolvePosition(SolutionFamily::kBest, e, c.rng);
  const PositionSolution code = SolvePosition(SolutionFamily::kPseudorange, e, c.rng);
  const bool heading = e.fix != FixKind::kNone;
  const std::size_t start = BeginLog(c);
  std::string& out = c.out;
  out += best.type;
  FieldFixed(out, best.height, 4);
  FieldFixed(out, best.latitude, 11);
  FieldFixed(out, best.longitude, 11);
  FieldFixed(out, best.sigma[2], 4);
  FieldFixed(out, best.sigma[0], 4);
  FieldFixed(out, best.sigma[1], 4);
  FieldFixed(out, best.differentialAge, 3);
  Field(out, code.type);
  FieldFixed(out, code.height, 4);
  FieldFixed(out, code.latitude, 11);
  FieldFixed(out, code.longitude, 11);
  FieldFixed(out, e.undulation, 4);
  for (const int count : {best.tracked, best.used, code.tracked, code.used})
    FieldInt(out, count);
  FieldFixed(out, e.speed * std::cos(e.track * kDegrees), 4);
  FieldFixed(out, e.speed * std::sin(e.track * kDegrees), 4);
  FieldFixed(out, e.speed, 4);
  Field(out, heading ? "NARROW_INT" : "NONE");
  FieldFixed(out, heading ? kHeadingBaselineLength : 0.0, 4);
  FieldFixed(out, heading ? e.attitude[2] : 0.0, 4);
  FieldFixed(out, heading ? e.attitude[1] : 0.0, 4);
  for (const int count : {best.tracked, best.used, best.used, best.usedMulti})
    FieldInt(out, count);
  const int used = static_cast<int>(e.satellites.size());
  const double pdop = 0.9 + 9.0 / used;
  for (const double dop : {pdop * 1.12, pdop, pdop * 0.55, pdop * 0.75, pdop * 0.5})
    FieldFixed(out, dop, 3);
  FieldFixed(out, 5.0, 1);
  FieldInt(out, used);
  for (const Satellite& satellite : e.satellites)
    FieldInt(out, satellite.prn);
  EndLog(c, start);
}

}  // namespace tarnlog::synth
