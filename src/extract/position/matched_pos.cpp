// Rows of MATCHEDPOSA, MATCHEDPOS2A, MATCHEDPOSHA and MATCHEDPOSBASE2A.
//
// Behind the four satellite counts the receiver sends four more fields: a
// reserved field, the extended solution status, the Galileo/BeiDou signal
// mask and the GPS/GLONASS signal mask. The first three are read with "%i"
// (so "06" is octal and "0a" reads as 0); the last two also arrive as the
// hexadecimal trailing fields. The table's columns:
//
//   16  extended solution status, as in column 16 of the RTK table
//   17  GPS/GLONASS signal mask (last hexadecimal field)
//   18  idle value of the header
//   19  Galileo/BeiDou signal mask as read with "%i", where the RTK table
//       has the same field read as hexadecimal
//   20  Galileo/BeiDou signal mask (second-last hexadecimal field)
//   21  the reserved field
//   22  receiver status of the header, read with "%i"
//   23  matched age: seconds behind the newest epoch of the run
#include "extract/position/position_rows.h"

namespace tarnlog {
namespace {

constexpr double kHalfWeek = 302400.0;
constexpr double kWeek = 604800.0;

}  // namespace

double MatchedAge(double seconds, double currentEpochSeconds) {
  double age = seconds - currentEpochSeconds;
  if (age < -kHalfWeek) {
    age += kWeek;
  } else if (age > kHalfWeek) {
    age -= kWeek;
  }
  return age;
}

void WriteMatchedPosRow(OutFile* out, const PositionRecord& r, double currentEpochSeconds) {
  if (out == nullptr) return;
  // tail: reserved, extended status, Galileo/BeiDou mask, in the order read.
  out->Printf(
      "%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%i,%.1f,%d,%i,%i,%i,%."
      "3f\n",
      r.header.week, r.header.seconds, r.code, r.latitude, r.longitude, r.EllipsoidalHeight(),
      r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0], r.satellites[1], r.satellites[2],
      r.satellites[3], r.differentialAge, r.solutionAge, r.tail[1], static_cast<int>(r.hex.last),
      r.header.idle, r.tail[2], static_cast<int>(r.hex.secondLast), r.tail[0], r.headerInteger,
      MatchedAge(r.header.seconds, currentEpochSeconds));
}

}  // namespace tarnlog
