// A receiver in motion, epoch by epoch: GPS time, the true antenna position,
// the solution the receiver currently achieves, and the satellites it
// tracks. The message writers only read it; each epoch they print what a
// real board would print for that state.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "synthcap/prng.h"

namespace tarnlog::synth {

inline constexpr std::uint32_t kMillisecondsPerWeek = 604800000;
inline constexpr int kLeapSeconds = 18;

// The best solution's kind, from no fix to a fixed RTK ambiguity.
enum class FixKind { kNone, kSingle, kPsrDiff, kNarrowFloat, kNarrowInt };

std::string_view PositionTypeText(FixKind kind);    // "NONE", "SINGLE", ...
std::string_view SolutionStatusText(FixKind kind);  // "SOL_COMPUTED" or "INSUFFICIENT_OBS"

struct Satellite {
  int prn = 0;             // GPS 1-32, GLONASS slots 38-61
  int gloFrequency = 0;    // GLONASS frequency number + 7; 0 for GPS
  int channel = 0;         // the receiver channel pair it sits on
  double range = 0.0;      // metres
  double rangeRate = 0.0;  // metres per second
  double cnoL1 = 0.0;      // dB-Hz
  double cnoL2 = 0.0;
  double lockTime = 0.0;     // seconds
  double adrOffsetL1 = 0.0;  // cycles, fixed per pass
  double adrOffsetL2 = 0.0;
  double elevation = 0.0;  // degrees, used for DOPs and GSV-like fields
  bool Glonass() const { return prn >= 38; }
};

struct ReceiverEpoch {
  int week = 0;
  std::uint32_t millisecond = 0;  // of the week
  bool secondStart = true;        // the first epoch of a new whole second
  std::uint64_t index = 0;
  double idle = 0.0;  // percent

  // Truth, WGS84.
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  double undulation = 0.0;
  double speed = 0.0;  // horizontal, metres per second
  double track = 0.0;  // degrees from north
  double verticalSpeed = 0.0;
  double distance = 0.0;  // metres travelled since the start, for the odometer

  FixKind fix = FixKind::kSingle;
  double sigmaHorizontal = 1.0;  // metres, of the current solution
  double sigmaVertical = 2.0;
  double differentialAge = 0.0;
  double secondsSinceStart = 0.0;  // how long the PPP filter has converged
  int stationId = 0;
  // The reference station the differential solutions work against, a few
  // kilometres from the start.
  double baseLatitude = 0.0;
  double baseLongitude = 0.0;
  double baseHeight = 0.0;

  double attitude[3] = {0.0, 0.0, 0.0};     // roll, pitch, azimuth, degrees
  double angularRate[3] = {0.0, 0.0, 0.0};  // degrees per second

  std::vector<Satellite> satellites;

  double Seconds() const { return millisecond / 1000.0; }
  int SatellitesInSolution() const;
};

// Moves the receiver from one epoch to the next.
class ReceiverModel {
 public:
  ReceiverModel(std::uint64_t seed, int rateHz);
  // Steps to the next epoch; the first call gives the first epoch.
  const ReceiverEpoch& Advance();
  const ReceiverEpoch& Epoch() const { return epoch_; }

 private:
  void StepTime();
  void StepMotion(double dt);
  void StepSolution(double dt);
  void StepSatellites(double dt);
  Satellite NewSatellite(int channel);

  Rng rng_;
  int rateHz_;
  int startWeek_ = 0;
  std::uint64_t startMillisecond_ = 0;  // of the week the capture starts in
  double fixRemaining_ = 0.0;           // seconds left in the current fix kind
  ReceiverEpoch epoch_;
  bool started_ = false;
};

// Converts a GPS week and millisecond to UTC civil time.
struct CivilTime {
  int year, month, day, hour, minute;
  int millisecond;  // of the minute
};
CivilTime UtcOf(int week, std::uint32_t millisecond);

// Earth-centred coordinates of a WGS84 position.
void GeodeticToEcef(double latitudeDeg, double longitudeDeg, double height, double xyz[3]);

}  // namespace tarnlog::synth
