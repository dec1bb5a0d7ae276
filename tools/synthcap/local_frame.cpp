#include "synthcap/local_frame.h"

#include <cmath>

namespace tarnlog::synth {
namespace {

constexpr double kDegrees = 3.14159265358979323846 / 180.0;
constexpr double kMetresPerDegree = 111320.0;

}  // namespace

Enu RoverFromBase(const ReceiverEpoch& e) {
  Enu offset;
  offset.north = (e.latitude - e.baseLatitude) * kMetresPerDegree;
  offset.east =
      (e.longitude - e.baseLongitude) * kMetresPerDegree * std::cos(e.latitude * kDegrees);
  offset.up = e.height - e.baseHeight;
  return offset;
}

Enu HeadingBaseline(const ReceiverEpoch& e) {
  const double pitch = e.attitude[1] * kDegrees;
  const double azimuth = e.attitude[2] * kDegrees;
  Enu offset;
  offset.east = kHeadingBaselineLength * std::cos(pitch) * std::sin(azimuth);
  offset.north = kHeadingBaselineLength * std::cos(pitch) * std::cos(azimuth);
  offset.up = kHeadingBaselineLength * std::sin(pitch);
  return offset;
}

void Displace(double& latitude, double& longitude, double& height, const Enu& offset) {
  latitude += offset.north / kMetresPerDegree;
  longitude += offset.east / (kMetresPerDegree * std::cos(latitude * kDegrees));
  height += offset.up;
}

void EnuToEcef(const Enu& o, double latitudeDeg, double longitudeDeg, double xyz[3]) {
  const double lat = latitudeDeg * kDegrees, lon = longitudeDeg * kDegrees;
  const double sinLat = std::sin(lat), cosLat = std::cos(lat);
  const double sinLon = std::sin(lon), cosLon = std::cos(lon);
  xyz[0] = -sinLon * o.east - sinLat * cosLon * o.north + cosLat * cosLon * o.up;
  xyz[1] = cosLon * o.east - sinLat * sinLon * o.north + cosLat * sinLon * o.up;
  xyz[2] = cosLat * o.north + sinLat * o.up;
}

}  // namespace tarnlog::synth
