// Transverse Mercator grid coordinates by series, for the XY tables.
#pragma once

namespace tarnlog {

inline constexpr double kWgs84SemiMajor = 6378137.0;
inline constexpr double kWgs84Flattening = 0.00335281006247;

// Easting (with 500,000 m added, no zone prefix) and northing in metres, for
// a zone width of 3 or 6 degrees.
void GeodeticToGrid(double semiMajor, double flattening, double latitudeDegrees,
                    double longitudeDegrees, double height, double* eastingOut, double* northingOut,
                    int zoneWidth);

}  // namespace tarnlog
