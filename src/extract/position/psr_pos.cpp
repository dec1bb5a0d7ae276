// Rows of the PSR family (PSRPOSA, PSRPOS2A, MPSRPOSA, PSRPOSBASE2A) and
// the PPP family (PPPPOSA, MPPPPOSA).
#include "extract/position/position_rows.h"

namespace tarnlog {

// tail[0] is the reserved field read with "%d", tail[1] the extended
// solution status read with "%x".

void WritePsrPosRow(OutFile* out, const PositionRecord& r, int origin) {
  if (out == nullptr) return;
  out->Printf(
      "%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%i,%.lf,%i,%i,%i,%d,%"
      "d\n",
      r.header.week, r.header.seconds, r.code, r.latitude, r.longitude, r.EllipsoidalHeight(),
      r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0], r.satellites[1], r.satellites[2],
      r.satellites[3], r.differentialAge, r.solutionAge, r.tail[1], static_cast<int>(r.hex.last),
      r.header.idle, static_cast<int>(r.hex.secondLast), r.tail[0], r.tail[1], r.station, origin);
}

void WritePppPosRow(OutFile* out, const PositionRecord& r, int origin) {
  if (out == nullptr) return;
  out->Printf(
      "%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%i,%.lf,%i,%i,%d,%d\n",
      r.header.week, r.header.seconds, r.code, r.latitude, r.longitude, r.EllipsoidalHeight(),
      r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0], r.satellites[1], r.satellites[2],
      r.satellites[3], r.differentialAge, r.solutionAge, r.tail[1], static_cast<int>(r.hex.last),
      r.header.idle, static_cast<int>(r.hex.secondLast), r.tail[0], r.station, origin);
}

}  // namespace tarnlog
