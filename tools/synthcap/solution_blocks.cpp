#include "synthcap/solution_blocks.h"

#include <cmath>

#include "synthcap/local_frame.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

// The fix a family reports when the best solution is `best`.
FixKind FamilyFix(SolutionFamily family, FixKind best) {
  if (best == FixKind::kNone) return FixKind::kNone;
  switch (family) {
    case SolutionFamily::kBest:
      return best;
    case SolutionFamily::kRtk:
      return best == FixKind::kNarrowInt || best == FixKind::kNarrowFloat ? best : FixKind::kNone;
    case SolutionFamily::kPseudorange:
      return best == FixKind::kSingle ? FixKind::kSingle : FixKind::kPsrDiff;
    case SolutionFamily::kPpp:
      return FixKind::kSingle;  // stands for "some PPP fix"; typed below
  }
  return best;
}

double HorizontalSigma(FixKind kind, double bestSigma) {
  switch (kind) {
    case FixKind::kNarrowInt:
    case FixKind::kNarrowFloat:
      return bestSigma;
    case FixKind::kPsrDiff:
      return bestSigma < 0.4 ? 0.6 : bestSigma;
    case FixKind::kSingle:
      return bestSigma < 1.0 ? 1.4 : bestSigma;
    case FixKind::kNone:
      return 0.0;
  }
  return bestSigma;
}

constexpr double kPppConvergedAfter = 300.0;  // seconds from the start of the capture

}  // namespace

PositionSolution SolvePosition(SolutionFamily family, const ReceiverEpoch& epoch, Rng& rng) {
  PositionSolution solution;
  const FixKind kind = FamilyFix(family, epoch.fix);
  const int tracked = static_cast<int>(epoch.satellites.size());
  solution.tracked = tracked;
  solution.status = SolutionStatusText(kind);
  solution.type = PositionTypeText(kind);
  if (kind == FixKind::kNone) return solution;  // zeros, as the board prints them

  double horizontal = HorizontalSigma(kind, epoch.sigmaHorizontal);
  double vertical = horizontal * 1.8;
  if (family == SolutionFamily::kPpp) {
    const double t = epoch.secondsSinceStart;
    solution.type = t < kPppConvergedAfter ? "PPP_CONVERGING" : "PPP";
    horizontal = t < kPppConvergedAfter ? 1.5 - 1.4 * t / kPppConvergedAfter : 0.06;
    vertical = horizontal * 1.7;
  }
  const double metresPerDegree = 111320.0;
  solution.latitude = epoch.latitude + rng.Noise() * horizontal / metresPerDegree;
  solution.longitude = epoch.longitude + rng.Noise() * horizontal / metresPerDegree;
  solution.height = epoch.height + rng.Noise() * vertical;
  solution.undulation = epoch.undulation;
  solution.sigma[0] = horizontal * (0.9 + 0.05 * rng.Noise());
  solution.sigma[1] = horizontal * (0.8 + 0.05 * rng.Noise());
  solution.sigma[2] = vertical * (1.0 + 0.05 * rng.Noise());
  const bool differential = kind != FixKind::kSingle && family != SolutionFamily::kPpp;
  solution.stationId = differential ? epoch.stationId : -1;
  solution.differentialAge = differential ? epoch.differentialAge : 0.0;
  solution.used = epoch.SatellitesInSolution();
  solution.usedL1 = solution.used;
  solution.usedMulti = kind == FixKind::kSingle ? 0 : solution.used;
  bool glonass = false;
  for (const Satellite& satellite : epoch.satellites)
    glonass |= satellite.Glonass();
  solution.extendedStatus = kind == FixKind::kSingle ? 0x06 : 0x02;
  solution.gpsGlonassMask = glonass ? 0x33 : 0x03;
  return solution;
}

VelocitySolution SolveVelocity(SolutionFamily family, const ReceiverEpoch& epoch, Rng& rng) {
  VelocitySolution velocity;
  const FixKind kind = FamilyFix(family, epoch.fix);
  velocity.status = SolutionStatusText(kind);
  if (kind == FixKind::kNone) {
    velocity.type = "NONE";
    return velocity;
  }
  const bool carrier = kind == FixKind::kNarrowInt || kind == FixKind::kNarrowFloat;
  velocity.type = carrier && family != SolutionFamily::kPseudorange ? PositionTypeText(kind)
                                                                    : "DOPPLER_VELOCITY";
  velocity.latency = carrier ? 0.0 : 0.150;
  velocity.horizontalSpeed = epoch.speed + rng.Noise() * 0.01;
  if (velocity.horizontalSpeed < 0.0) velocity.horizontalSpeed = -velocity.horizontalSpeed;
  velocity.track = epoch.track;
  velocity.verticalSpeed = epoch.verticalSpeed + rng.Noise() * 0.01;
  return velocity;
}

void AppendStationId(std::string& out, int stationId) {
  out += '"';
  if (stationId >= 0) AppendInt(out, stationId);
  out += '"';
}

void AppendPositionBlock(std::string& out, const PositionSolution& s) {
  out += s.status;
  Field(out, s.type);
  FieldFixed(out, s.latitude, 11);
  FieldFixed(out, s.longitude, 11);
  FieldFixed(out, s.height, 4);
  FieldFixed(out, s.undulation, 4);
  Field(out, "WGS84");
  FieldFixed(out, s.sigma[0], 4);
  FieldFixed(out, s.sigma[1], 4);
  FieldFixed(out, s.sigma[2], 4);
  out += ',';
  AppendStationId(out, s.stationId);
  FieldFixed(out, s.differentialAge, 3);
  FieldFixed(out, s.solutionAge, 3);
  FieldInt(out, s.tracked);
  FieldInt(out, s.used);
  FieldInt(out, s.usedL1);
  FieldInt(out, s.usedMulti);
  Field(out, "00");
  FieldHex(out, s.extendedStatus, 2);
  FieldHex(out, s.galileoBeidouMask, 2);
  FieldHex(out, s.gpsGlonassMask, 2);
}

void AppendVelocityBlock(std::string& out, const VelocitySolution& v) {
  out += v.status;
  Field(out, v.type);
  FieldFixed(out, v.latency, 3);
  FieldFixed(out, v.age, 3);
  FieldFixed(out, v.horizontalSpeed, 4);
  FieldFixed(out, v.track, 6);
  FieldFixed(out, v.verticalSpeed, 4);
  Field(out, "0.0");
}

void AppendXyzBlock(std::string& out, const ReceiverEpoch& e, Rng& rng) {
  const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, rng);
  const VelocitySolution v = SolveVelocity(SolutionFamily::kBest, e, rng);
  double xyz[3] = {0.0, 0.0, 0.0};
  double velocity[3] = {0.0, 0.0, 0.0};
  const bool computed = p.status == "SOL_COMPUTED";
  if (p.tracked > 0 && computed) {
    GeodeticToEcef(p.latitude, p.longitude, p.height + p.undulation, xyz);
    constexpr double kDegrees = 3.14159265358979323846 / 180.0;
    Enu enu;
    enu.east = v.horizontalSpeed * std::sin(v.track * kDegrees);
    enu.north = v.horizontalSpeed * std::cos(v.track * kDegrees);
    enu.up = v.verticalSpeed;
    EnuToEcef(enu, p.latitude, p.longitude, velocity);
  }
  out += p.status;
  Field(out, p.type);
  for (double coordinate : xyz)
    FieldFixed(out, coordinate, 4);
  for (double sigma : p.sigma)
    FieldFixed(out, sigma, 4);
  Field(out, v.status);
  Field(out, v.type);
  for (double component : velocity)
    FieldFixed(out, component, 4);
  for (int i = 0; i < 3; ++i)
    FieldFixed(out, computed ? 0.02 : 0.0, 4);
  out += ',';
  AppendStationId(out, p.stationId);
  FieldFixed(out, v.latency, 3);
  FieldFixed(out, p.differentialAge, 3);
  FieldFixed(out, p.solutionAge, 3);
  FieldInt(out, p.tracked);
  FieldInt(out, p.used);
  FieldInt(out, p.usedL1);
  FieldInt(out, p.usedMulti);
  Field(out, "0");
  FieldHex(out, p.extendedStatus, 2);
  FieldHex(out, p.galileoBeidouMask, 2);
  FieldHex(out, p.gpsGlonassMask, 2);
}

}  // namespace tarnlog::synth
