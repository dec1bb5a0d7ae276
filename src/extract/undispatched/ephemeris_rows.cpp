// GPSEPHEMA, BD2EPHEMA and GLOEPHEMERISA rows.
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/undispatched/long_log.h"
#include "extract/undispatched/undispatched_formats.h"

namespace tarnlog {
namespace {

struct KeplerEphemeris {
  int prn = 0;
  double tow = 0.0;
  int health = 0;
  int iode1 = 0;
  int iode2 = 0;
  int week = 0;
  int zWeek = 0;
  double toe = 0.0;
  double orbit[15] = {};  // A to omega-dot, in body order
  int iodc = 0;
  double toc = 0.0;
  double tgd = 0.0;
  double af[3] = {};
  int antiSpoofing = 0;
  double meanMotion = 0.0;
  double ura = 0.0;
};

// "TRUE" or "FALSE" and the comma behind it.
bool ReadFlag(FieldCursor& c, int& flag) {
  if (!c.ok) return false;
  if (std::strncmp(c.at, "TRUE,", 5) == 0) {
    flag = 1;
    c.at += 4;
  } else if (std::strncmp(c.at, "FALSE,", 6) == 0) {
    flag = 0;
    c.at += 5;
  } else {
    c.ok = false;
  }
  return c.ok;
}

bool ReadKepler(const char* body, KeplerEphemeris& e) {
  FieldCursor c(body);
  c.Decimal(e.prn).Comma().Double(e.tow).Comma().Decimal(e.health);
  c.Comma().Decimal(e.iode1).Comma().Decimal(e.iode2);
  c.Comma().Decimal(e.week).Comma().Decimal(e.zWeek).Comma().Double(e.toe);
  for (double& value : e.orbit)
    c.Comma().Double(value);
  c.Comma().Decimal(e.iodc).Comma().Double(e.toc).Comma().Double(e.tgd);
  for (double& value : e.af)
    c.Comma().Double(value);
  c.Comma();
  ReadFlag(c, e.antiSpoofing);
  c.Comma().Double(e.meanMotion).Comma().Double(e.ura);
  return c.ok;
}

bool WriteKeplerRow(const char* sentence, const char* name, OutFile& out) {
  LongLog log;
  KeplerEphemeris e;
  if (!OpenLongLog(sentence, name, &log) || !ReadKepler(log.body, e)) return false;
  const LongHeader& h = log.header;
  const double* o = e.orbit;
  out.Printf(
      "%i,%10.3f,%i,%10.3f,%10.3f,%3i,%10.3f,%2i,%3i,%3i,%i,%18.9e,%18.9e,%18.9e,%18.10e,%18.10e,%"
      "18.9e,%18.9e,%18.8e,%18.8e,%18.9e,%18.9e,%18.10e,%18.9e,%18.9e,%18.8e,%3i,%10.1lf,%18.9e,%"
      "13.5e,%13.5e,%13.5lf,%i,%18.9e,%18.9e\n",
      h.week, h.seconds, e.prn, e.tow, e.toe, e.health, h.seconds - e.toe, e.iode1, e.iode2, e.week,
      e.zWeek, o[0], o[1], o[2], o[3], o[4], o[5], o[6], o[7], o[8], o[9], o[10], o[11], o[12],
      o[13], o[14], e.iodc, e.toc, e.tgd, e.af[0], e.af[1], e.af[2], e.antiSpoofing, e.meanMotion,
      e.ura);
  return true;
}

struct GloEphemeris {
  int slot = 0;
  int frequency = 0;
  int satelliteType = 0;
  int reserved = 0;
  int week = 0;
  double timeMs = 0.0;
  double timeOffset = 0.0;
  int nt = 0;
  int issue = 0;
  int health = 0;
  double state[9] = {};  // position, velocity, luni-solar acceleration
  double tauN = 0.0;
  double deltaTauN = 0.0;
  double gamma = 0.0;
  int tk = 0;
  int p = 0;
  int ft = 0;
  int age = 0;
  int flags = 0;
};

bool ReadGlonass(const char* body, GloEphemeris& e) {
  FieldCursor c(body);
  c.Decimal(e.slot).Comma().Decimal(e.frequency).Comma().Decimal(e.satelliteType);
  c.Comma().Decimal(e.reserved).Comma().Decimal(e.week);
  c.Comma().Double(e.timeMs).Comma().Double(e.timeOffset).Comma().Decimal(e.nt);
  c.Comma().SkipField().Comma().SkipField();
  c.Comma().Decimal(e.issue).Comma().Decimal(e.health);
  for (double& value : e.state)
    c.Comma().Double(value);
  c.Comma().Double(e.tauN).Comma().Double(e.deltaTauN).Comma().Double(e.gamma);
  c.Comma().Decimal(e.tk).Comma().Decimal(e.p).Comma().Decimal(e.ft);
  c.Comma().Decimal(e.age).Comma().Decimal(e.flags);
  return c.ok;
}

}  // namespace

bool WriteGpsEphemerisRow(const char* sentence, OutFile& out) {
  return WriteKeplerRow(sentence, "GPSEPHEMA", out);
}

bool WriteBd2EphemerisRow(const char* sentence, OutFile& out) {
  return WriteKeplerRow(sentence, "BD2EPHEMA", out);
}

bool WriteGloEphemerisRow(const char* sentence, OutFile& out) {
  LongLog log;
  GloEphemeris e;
  if (!OpenLongLog(sentence, "GLOEPHEMERISA", &log) || !ReadGlonass(log.body, e)) return false;
  const LongHeader& h = log.header;
  const double* s = e.state;
  out.Printf(
      "%i,%10.3f,%i,%10.3f,%10.3f,%3i,%2i,%i,%i,%i,%2i,%i,%25.16e,%25.16e,%25.16e,%25.16e,%25.16e,%"
      "25.16e,%25.17lf,%25.17e,%25.17e,%25.17e,%18.9e,%25.17e,%5d,%d,%d,%d,%d\n",
      h.week, h.seconds, e.slot, e.timeMs / 1000.0, e.timeOffset, e.frequency, e.satelliteType,
      e.reserved, e.week, e.nt, e.issue, e.health, s[0], s[1], s[2], s[3], s[4], s[5], s[6], s[7],
      s[8], e.tauN, e.deltaTauN, e.gamma, e.tk, e.p, e.ft, e.age, e.flags);
  return true;
}

}  // namespace tarnlog
