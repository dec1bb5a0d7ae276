// The CAN bus logs and the inertial logs without a dispatch row.
#include "extract/field_cursor.h"
#include "extract/undispatched/long_log.h"
#include "extract/undispatched/undispatched_formats.h"

namespace tarnlog {

bool WriteCanAngleRow(const char* sentence, OutFile& out) {
  LongLog log;
  double angle = 0.0;
  if (!OpenLongLog(sentence, "CANANGLEA", &log) || !FieldCursor(log.body).Double(angle).ok) {
    return false;
  }
  out.Printf("%i,%.3f,%.3f\n", log.header.week, log.header.seconds, angle);
  return true;
}

bool WriteCanGearRow(const char* sentence, OutFile& out) {
  LongLog log;
  int gear = 0;
  if (!OpenLongLog(sentence, "CANGEARA", &log) || !FieldCursor(log.body).Decimal(gear).ok) {
    return false;
  }
  out.Printf("%i,%.3f,%i\n", log.header.week, log.header.seconds, gear);
  return true;
}

bool WriteCanSpeedRow(const char* sentence, OutFile& out) {
  LongLog log;
  if (!OpenLongLog(sentence, "CANSPEEDA", &log)) return false;
  int flags[4] = {};
  double speeds[4] = {};
  FieldCursor c(log.body);
  if (!c.Decimal(flags[0]).Comma().Double(speeds[0]).ok) return false;
  for (int wheel = 1; wheel < 4; ++wheel)
    c.Comma().Decimal(flags[wheel]).Comma().Double(speeds[wheel]);
  const LongHeader& h = log.header;
  if (c.ok) {
    out.Printf("%i,%.3f,%i,%.3f,%i,%.3f,%i,%.3f,%i,%.3f\n", h.week, h.seconds, flags[0], speeds[0],
               flags[1], speeds[1], flags[2], speeds[2], flags[3], speeds[3]);
  } else {
    out.Printf("%i,%.3f,%i,%.3f\n", h.week, h.seconds, flags[0], speeds[0]);
  }
  return true;
}

bool WriteCorrImuDataRow(const char* sentence, OutFile& out) {
  LongLog log;
  if (!OpenLongLog(sentence, "CORRIMUDATAA", &log)) return false;
  int week = 0;
  double seconds = 0.0;
  double v[6] = {};
  FieldCursor c(log.body);
  c.Decimal(week).Comma().Double(seconds);
  for (double& value : v)
    c.Comma().Double(value);
  if (!c.ok) return false;
  out.Printf("%i,%.3f,%.11f,%.11f,%.11f,%.11f,%.11f,%.11f\n", week, seconds, v[0], v[1], v[2], v[3],
             v[4], v[5]);
  return true;
}

bool WriteImu2VelAttBiasRow(const char* sentence, OutFile& out) {
  LongLog log;
  if (!OpenLongLog(sentence, "IMU2VELATTBIASA", &log)) return false;
  double v[7] = {};
  FieldCursor c(log.body);
  c.Double(v[0]);
  for (int i = 1; i < 7; ++i)
    c.Comma().Double(v[i]);
  if (!c.ok) return false;
  out.Printf("%i,%.3f,%.6f,%.6f,%.6f,%.4f,%.4f,%.4f,%.3f\n", log.header.week, log.header.seconds,
             v[0], v[1], v[2], v[3], v[4], v[5], v[6]);
  return true;
}

}  // namespace tarnlog
