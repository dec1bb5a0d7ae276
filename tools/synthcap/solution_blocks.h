// The position and velocity blocks that the long position logs, BESTXYZA
// and the combined logs share, derived from the receiver's state for each
// family of solution the board computes.
#pragma once

#include <string>
#include <string_view>

#include "synthcap/prng.h"
#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

struct PositionSolution {
  std::string_view status;                               // "SOL_COMPUTED", "INSUFFICIENT_OBS"
  std::string_view type;                                 // "NARROW_INT", "SINGLE", ...
  double latitude = 0.0, longitude = 0.0, height = 0.0;  // height above sea level
  double undulation = 0.0;
  double sigma[3] = {0.0, 0.0, 0.0};  // latitude, longitude, height
  int stationId = -1;                 // -1 prints as ""
  double differentialAge = 0.0;
  double solutionAge = 0.0;
  int tracked = 0, used = 0, usedL1 = 0, usedMulti = 0;
  unsigned extendedStatus = 0, galileoBeidouMask = 0, gpsGlonassMask = 0;
};

struct VelocitySolution {
  std::string_view status;
  std::string_view type;  // "DOPPLER_VELOCITY", "NARROW_INT", ...
  double latency = 0.0, age = 0.0;
  double horizontalSpeed = 0.0, track = 0.0, verticalSpeed = 0.0;
};

// The board's solution families.
enum class SolutionFamily { kBest, kRtk, kPseudorange, kPpp };

PositionSolution SolvePosition(SolutionFamily family, const ReceiverEpoch& epoch, Rng& rng);
VelocitySolution SolveVelocity(SolutionFamily family, const ReceiverEpoch& epoch, Rng& rng);

// The 21 fields from solution status to the GPS/GLONASS signal mask, and
// the 8 fields from velocity status to the reserved float; no leading or
// trailing comma.
void AppendPositionBlock(std::string& out, const PositionSolution& solution);
void AppendVelocityBlock(std::string& out, const VelocitySolution& solution);
// The BESTXYZA body: the best position and velocity in earth-centred
// coordinates with their deviations, and the position block's tail.
void AppendXyzBlock(std::string& out, const ReceiverEpoch& epoch, Rng& rng);
// "" or "131" with its quotes.
void AppendStationId(std::string& out, int stationId);

}  // namespace tarnlog::synth
