// The raw IMU logs: counts of the three accelerometers and the three
// gyroscopes, turned into m/s^2 and deg/s by the IMU model's scale. The
// counts stay in the order of the log (z, -y, x for each sensor). Behind
// them the row gives the IMU status word and the length of the acceleration
// vector (m/s^2); RAWIMUXA adds the length of the rate vector (deg/s).
//
// RAWIMUXA carries its IMU type in the body, behind the IMU information
// field; RAWIMUA takes the type of the Static page's selected row.
#include <cmath>

#include "extract/ins/imu_scale.h"
#include "extract/ins/ins_extractors.h"
#include "extract/log_fields.h"
#include "extract/status/log_scan.h"

namespace tarnlog {
namespace {

struct RawImuRecord {
  LongHeader header;
  int week = 0;
  double seconds = 0.0;
  int status = 0;
  int counts[6] = {};  // accelerometers, then gyroscopes

  double accel[3] = {};
  double rate[3] = {};
};

// "%x,%d,%d,%d,%d,%d,%d" behind the log's week and seconds.
FieldCursor& StatusAndCounts(FieldCursor& r, RawImuRecord& m) {
  r.Comma().Hex(m.status);
  for (int& count : m.counts)
    r.Comma().Decimal(count);
  return r;
}

void Scale(RawImuRecord& m, int type) {
  const ImuScale scale = ScaleOfImu(type);
  for (int axis = 0; axis < 3; ++axis) {
    m.accel[axis] = m.counts[axis] * scale.accelMetresPerSecond2;
    m.rate[axis] = m.counts[3 + axis] * scale.gyroDegreesPerSecond;
  }
}

double Length(const double (&v)[3]) {
  return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
}

void WriteHead(OutFile* out, const RawImuRecord& m) {
  out->Printf("%i %.3lf %i %.3lf %.3lf %.3lf %.3lf %.6lf %.6lf %.6lf %d %.3lf", m.header.week,
              m.header.seconds, m.week, m.seconds, m.accel[0], m.accel[1], m.accel[2], m.rate[0],
              m.rate[1], m.rate[2], m.status, Length(m.accel));
}

}  // namespace

void ExtractRawImux(const char* sentence, std::size_t, OutFile* table) {
  if (sentence == nullptr || table == nullptr || !Contains(sentence, "FINE")) return;
  RawImuRecord m;
  const char* body = BodyOf(sentence);
  if (!ReadLongHeader(sentence, &m.header) || body == nullptr) return;
  int type = 0;
  FieldCursor r(body);
  r.SkipField().Comma().Decimal(type).Comma().Decimal(m.week).Comma().Double(m.seconds);
  if (!StatusAndCounts(r, m).ok) return;
  Scale(m, type);
  WriteHead(table, m);
  table->Printf(" %.3lf\n", Length(m.rate));
}

void ExtractRawImuxRow(const DispatchContext& c) {
  ExtractRawImux(c.sentence, c.length, c.Table(0));
}

void ExtractRawImu(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  RawImuRecord m;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &m.header) || body == nullptr) return;
  FieldCursor r(body);
  r.Decimal(m.week).Comma().Double(m.seconds);
  if (!StatusAndCounts(r, m).ok) return;
  Scale(m, c.settings.imuType);
  WriteHead(out, m);
  out->Write(" \n");
}

}  // namespace tarnlog
