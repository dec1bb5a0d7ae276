// Rows of the BESTPOS family and of BESTGNSSPOSA, the last-position store
// and the grid rows.
#include "extract/geodetic_grid.h"
#include "extract/position/position_rows.h"

namespace tarnlog {

void WriteBestPosRow(OutFile* out, const PositionRecord& r) {
  if (out == nullptr) return;
  out->Printf(
      "%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%.lf,%i,%.4f,%d\n",
      r.header.week, r.header.seconds, r.code, r.latitude, r.longitude, r.EllipsoidalHeight(),
      r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0], r.satellites[1], r.satellites[2],
      r.satellites[3], r.differentialAge, r.solutionAge, static_cast<int>(r.hex.last),
      r.header.idle, static_cast<int>(r.hex.secondLast), r.undulation, r.station);
}

void WriteBestGnssPosRow(OutFile* out, const PositionRecord& r) {
  if (out == nullptr) return;
  out->Printf("%i,%.3f,%i,%.11f,%.11f,%.4f\n", r.header.week, r.header.seconds, r.code, r.latitude,
              r.longitude, r.EllipsoidalHeight());
}

void StoreLastBestPos(const PositionRecord& r, LastBestPosition& store) {
  store.latitude = r.latitude;
  store.longitude = r.longitude;
  store.height = r.EllipsoidalHeight();
  store.seconds = r.header.seconds;
  store.week = r.header.week;
}

void WriteGridRow(OutFile* out, const PositionRecord& r) {
  if (out == nullptr) return;
  double easting = 0.0;
  double northing = 0.0;
  GeodeticToGrid(kWgs84SemiMajor, kWgs84Flattening, r.latitude, r.longitude, 0.0, &easting,
                 &northing, 3);
  out->Printf("%.3f, %.3f, %.3f\n", r.header.seconds, easting, northing);
}

}  // namespace tarnlog
