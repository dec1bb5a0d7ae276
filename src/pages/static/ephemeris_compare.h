// The pairwise comparison of two receivers' broadcast ephemerides, as the
// analyser leaves them per satellite in Sat_<N>.txt of each output folder.
#pragma once

#include <string>

namespace tarnlog {

// Satellite numbers: GPS 1-32, GLONASS 38-61, BDS 161-197. Others are not
// compared.
enum class EphemerisSystem { kNone, kGps, kGlonass, kBds };
EphemerisSystem SystemOfSatellite(int number);

// Compares Sat_<number>.txt of `folderA` with that of `folderB` and appends
// one row per common ephemeris to `resultPath`. False when either table is
// missing or the number belongs to no system.
//
// A table row is the analyser's record, blank-separated: column 1 the week,
// column 2 the reference time of the ephemeris (toe, seconds of week; for
// GLONASS tb, seconds of day), then the broadcast parameters in the
// analyser's order: for GPS and BDS the 19 orbit and clock terms (sqrtA, e,
// i0, Omega0, omega, M0, deltaN, iDot, OmegaDot, Cuc, Cus, Crc, Crs, Cic,
// Cis, toc, af0, af1, af2), for GLONASS the 11 state terms (x, y, z, vx, vy,
// vz, ax, ay, az, tauN, gammaN). Rows of the two receivers pair up by equal
// week and reference time to the millisecond; an ephemeris that only one
// receiver decoded is not reported.
//
// Result row: "%i,%10.3f" satellite number and reference time, then for
// each parameter ",%.6e" of B minus A: two receivers that decoded the same
// broadcast give a row of zeros, and any non-zero column names the term that
// one of them got wrong.
bool CompareSatelliteEphemerides(int number, const std::string& folderA, const std::string& folderB,
                                 const std::string& resultPath);

}  // namespace tarnlog
