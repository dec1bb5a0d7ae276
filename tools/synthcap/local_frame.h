// Local east-north-up offsets the baseline logs print: the rover from its
// reference station, and the heading antenna from the main one. Flat-earth
// sums, good to millimetres over the few kilometres involved.
#pragma once

#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

struct Enu {
  double east = 0.0, north = 0.0, up = 0.0;
};

// Metres between the main and the heading antenna of a dual-antenna board.
inline constexpr double kHeadingBaselineLength = 1.2;

Enu RoverFromBase(const ReceiverEpoch& epoch);
// The heading antenna ahead of the main one along the vehicle's azimuth.
Enu HeadingBaseline(const ReceiverEpoch& epoch);

// Moves a position (degrees, metres) by an offset.
void Displace(double& latitude, double& longitude, double& height, const Enu& offset);

// The same offset in earth-centred axes at a latitude and longitude.
void EnuToEcef(const Enu& offset, double latitudeDeg, double longitudeDeg, double xyz[3]);

}  // namespace tarnlog::synth
