// The housekeeping logs: each is one read of its fields and one row. A
// sentence whose fields can't all be read leaves no row. Compact-header logs
// carry week and milliseconds; where they are read as two integers the row
// shows the milliseconds as seconds.
#include <cstring>

#include "extract/log_fields.h"
#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

constexpr double kMillisecond = 1000.0;

}  // namespace

void ExtractHwStatus(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  // Behind the header: a count, three supply readings, a field passed over,
  // a fourth reading, three more fields passed over and the flag word.
  int week = 0, milliseconds = 0, count = 0, flags = 0;
  double first = 0.0, second = 0.0, third = 0.0, fourth = 0.0;
  FieldCursor r(c.sentence);
  HeaderTail(StatusHeader(r, week, milliseconds));
  r.Decimal(count).Comma().Double(first).Comma().Double(second).Comma().Double(third).Comma();
  r.SkipField().Comma().Double(fourth).Comma();
  SkipFields(r, 3).Hex(flags);
  if (!r.ok) return;
  out->Printf("%d,%lf,%lf,%lf,%lf,%lf,%d,%lf\r\n", week, milliseconds / kMillisecond, first, second,
              third, fourth, flags, static_cast<double>(count));
}

void ExtractEnvInfo(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0, milliseconds = 0, a = 0, b = 0, d = 0;
  float temperature = 0.0f;
  FieldCursor r(c.sentence);
  HeaderTail(StatusHeader(r, week, milliseconds));
  Float(r.Decimal(a).Comma(), temperature).Comma().Decimal(b).Comma().Decimal(d);
  if (!r.ok) return;
  out->Printf("%d,%lf,%d,%.2f,%d,%d\r\n", week, milliseconds / kMillisecond, a,
              static_cast<double>(temperature), b, d);
}

void ExtractRxStatus(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0;
  double seconds = 0.0;
  FieldCursor head(c.sentence);
  SkipFields(head, 5).Decimal(week).Comma().Double(seconds);
  const char* semicolon = SemicolonOf(c.sentence);
  if (!head.ok || semicolon == nullptr) return;
  // The tenth field of the body: the receiver status word.
  int status = 0;
  FieldCursor body(semicolon);
  SkipFields(body.Char(';'), 9).Hex(status);
  if (!body.ok) return;
  out->Printf("%d %.3f %d\n", week, seconds, status);
}

void ExtractSlantAp(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0, count = 0;
  double seconds = 0.0, x = 0.0, y = 0.0, z = 0.0, e = 0.0, f = 0.0;
  FieldCursor r(c.sentence);
  SkipFields(r, 4).Decimal(week).Comma().Double(seconds);
  HeaderTail(r).Decimal(count).Comma();
  SkipFields(r, 3).Double(x).Comma().Double(y).Comma().Double(z).Comma();
  SkipFields(r, 3).Double(e).Comma().Double(f);
  if (!r.ok) return;
  out->Printf("%d %lf %d %.11lf %.11lf %.11lf %lf %.11lf\n", week, seconds, count, x, y, z, e, f);
}

void ExtractFreqJamStatus(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0, milliseconds = 0, a = 0, b = 0, d = 0;
  FieldCursor head(c.sentence);
  StatusHeader(head, week, milliseconds);
  const char* semicolon = SemicolonOf(c.sentence);
  if (!head.ok || semicolon == nullptr) return;
  FieldCursor body(semicolon);
  body.Char(';').SkipField().Comma().Decimal(a).Comma();
  body.SkipField().Comma().Decimal(b).Comma().SkipField().Comma().Decimal(d);
  if (!body.ok) return;
  out->Printf("%d %.2lf %d %d %d\r\n", week, milliseconds / kMillisecond, a, b, d);
}

void ExtractMowStatus(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0, value = 0;
  double seconds = 0.0;
  FieldCursor head(c.sentence);
  SkipFields(head, 4).Decimal(week).Comma().Double(seconds);
  if (!head.ok) return;
  // The body's 20th field.
  const char* body = BodyOf(c.sentence);
  const char* field = body ? BehindComma(body, 19) : nullptr;
  if (field == nullptr || !FieldCursor(field).Decimal(value).ok) return;
  out->Printf("%d %lf %d \n", week, seconds, value);
}

void ExtractTropInfo(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0, milliseconds = 0;
  double a = 0.0, b = 0.0, d = 0.0, e = 0.0;
  FieldCursor head(c.sentence);
  StatusHeader(head, week, milliseconds);
  const char* semicolon = SemicolonOf(c.sentence);
  if (!head.ok || semicolon == nullptr) return;
  FieldCursor body(semicolon);
  body.Char(';').SkipField().Comma().Double(a).Comma().Double(b).Comma().Double(d).Comma().Double(
      e);
  if (!body.ok) return;
  out->Printf("%d %.2lf %.6lf %.6lf %.6lf %.6lf\r\n", week, milliseconds / kMillisecond, a, b, d,
              e);
}

void ExtractBase2Bias(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE") || !Contains(c.sentence, ",SOL_COMPUTED")) {
    return;
  }
  int week = 0;
  double seconds = 0.0, x = 0.0, y = 0.0, z = 0.0;
  FieldCursor head(c.sentence);
  SkipFields(head, 5).Decimal(week).Comma().Double(seconds);
  const char* body = BodyOf(c.sentence);
  if (!head.ok || body == nullptr) return;
  FieldCursor r(body);
  SkipFields(r, 6).Double(x).Comma().Double(y).Comma().Double(z);
  if (!r.ok) return;
  out->Printf("%d %.3lf %.4lf %.4lf %.4lf\n", week, seconds, x, y, z);
}

void ExtractSppNavEnu(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE") || !Contains(c.sentence, "SOL_COMPUTED")) {
    return;
  }
  int week = 0, milliseconds = 0;
  double v[6] = {};
  FieldCursor head(c.sentence);
  StatusHeader(head, week, milliseconds);
  const char* semicolon = SemicolonOf(c.sentence);
  if (!head.ok || semicolon == nullptr) return;
  FieldCursor body(semicolon);
  body.Char(';').SkipField().Comma().SkipField();
  for (double& value : v)
    body.Comma().Double(value);
  if (!body.ok) return;
  out->Printf("%d,%.3lf,%.4lf,%.4lf,%.4lf,%.4lf,%.4lf,%.4lf\n", week, milliseconds / kMillisecond,
              v[0], v[1], v[2], v[3], v[4], v[5]);
}

void ExtractVelData(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  LongHeader header;
  const char* semicolon = SemicolonOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || semicolon == nullptr) return;
  // Three leading counts passed over, two integers, three values, one
  // passed over, three more; the last value is passed over.
  int skipped = 0, a = 0, b = 0;
  double v[6] = {};
  double ignored = 0.0;
  FieldCursor r(semicolon);
  r.Char(';').Decimal(skipped).Comma().Decimal(skipped).Comma().Decimal(skipped).Comma();
  r.Decimal(a).Comma().Decimal(b).Comma().Double(v[0]).Comma().Double(v[1]).Comma().Double(v[2]);
  r.Comma().Double(ignored).Comma().Double(v[3]).Comma().Double(v[4]).Comma().Double(v[5]);
  if (!r.ok) return;
  out->Printf("%d,%.3f,%d,%d,%.6lf,%.6lf,%.6lf,%.6lf,%.6lf,%.6lf\n", header.week, header.seconds, a,
              b, v[0], v[1], v[2], v[3], v[4], v[5]);
}

void ExtractOdometer(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  int a = 0, b = 0, ticks = 0, d = 0;
  if (!FieldCursor(body).Decimal(a).Comma().Decimal(b).Comma().Decimal(ticks).Comma().Decimal(d).ok)
    return;
  out->Printf("%i,%.3f,%i,%d,%ld,%d\n", header.week, header.seconds, a, b, static_cast<long>(ticks),
              d);
}

// The tables that -PP opens beside psrpos.txt take no time from their logs;
// their rows carry the newest epoch of the run. Both logs are read behind
// the ';', passing the first field over.
void ExtractTpInfo(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  const char* body = BodyOf(c.sentence);
  if (out == nullptr || body == nullptr) return;
  int a = 0, b = 0, d = 0;
  FieldCursor r(body);
  r.SkipField().Comma().Decimal(a).Comma().Decimal(b).Comma().Decimal(d);
  if (!r.ok) return;
  out->Printf("%.3f,%d,%d,%d\r\n", c.state.currentEpochSeconds, a, b, d);
}

// Per system (GPS, GLONASS, Galileo, BDS) the satellites tracked and used,
// each as five hexadecimal digits; the row keeps the tracked ones.
void ExtractTsvNum(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  const char* body = BodyOf(c.sentence);
  if (out == nullptr || body == nullptr) return;
  int words[8] = {};
  FieldCursor r(body);
  r.SkipField();
  for (int system = 0; system < 4; ++system) {
    r.Comma();
    HexWidth(HexWidth(r, 5, words[2 * system]), 5, words[2 * system + 1]);
  }
  if (!r.ok) return;
  out->Printf("%.3f,%d,%d,%d,%d\r\n", c.state.currentEpochSeconds, words[0], words[2], words[4],
              words[6]);
}

// BASEINFOA is dispatched so that nothing later takes it; its table stays
// empty.
void ExtractBaseInfo(const DispatchContext&) {}

}  // namespace tarnlog
