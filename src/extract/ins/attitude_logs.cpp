// The attitude, gyroscope, magnetometer and wheel logs of the INS board.
#include <cstdlib>
#include <cstring>

#include "extract/ins/ins_extractors.h"
#include "extract/log_fields.h"
#include "extract/status/log_scan.h"

namespace tarnlog {
namespace {

constexpr double kMillisecond = 1000.0;

// The two words behind the ';' of the attitude status logs. The first is a
// number; the second is a number that may carry a text behind it, which the
// row keeps up to the star.
struct AttitudeWords {
  int first = 0;
  int second = 0;
  TextSpan suffix;
};

bool ReadAttitudeWords(const char* sentence, AttitudeWords& w) {
  const char* semicolon = SemicolonOf(sentence);
  if (semicolon == nullptr) return false;
  TextSpan first;
  TextSpan second;
  FieldCursor r(semicolon);
  Span(Span(r.Char(';'), ',', first).Comma(), ',', second);
  if (!r.ok) return false;
  w.first = std::atoi(first.begin);
  char* end = nullptr;
  w.second = static_cast<int>(std::strtol(second.begin, &end, 10));
  const char* stop = end;
  const char* last = second.begin + second.length;
  while (stop < last && *stop != '*' && *stop != '\r' && *stop != '\n')
    ++stop;
  w.suffix = {end, static_cast<std::size_t>(stop - end)};
  return true;
}

void WriteAttitudeRow(OutFile* out, int week, int milliseconds, const AttitudeWords& w) {
  out->Printf("%d,%.3lf,%d,%d%.*s \n", week, milliseconds / kMillisecond, w.first, w.second,
              static_cast<int>(w.suffix.length), w.suffix.begin);
}

}  // namespace

void ExtractImuAtt(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  int week = 0, milliseconds = 0;
  FieldCursor head(c.sentence);
  AttitudeWords w;
  if (!StatusHeader(head, week, milliseconds).ok || !ReadAttitudeWords(c.sentence, w)) return;
  WriteAttitudeRow(out, week, milliseconds, w);
}

void ExtractGyrAtts(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  CompactHeader header;
  AttitudeWords w;
  if (!ReadBriefHeader(c.sentence, &header) || !ReadAttitudeWords(c.sentence, w)) return;
  WriteAttitudeRow(out, header.week, header.milliseconds, w);
  out->Flush();
}

void ExtractRawGyr2(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  CompactHeader header;
  const char* semicolon = SemicolonOf(c.sentence);
  if (!ReadBriefHeader(c.sentence, &header) || semicolon == nullptr) return;
  int x = 0, y = 0, z = 0;
  FieldCursor r(semicolon);
  r.Char(';').SkipField().Comma().SkipField().Comma().Decimal(x).Comma().Decimal(y).Comma().Decimal(
      z);
  if (!r.ok) return;
  out->Printf("%d,%.3lf,%d,%d,%d\r\n", header.week, header.Seconds(), x, y, z);
}

// The third column is 1 when the solution type is SBAS, compared over three
// characters as the receiver's tools do.
void ExtractInsAttCov(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  int week = 0, milliseconds = 0;
  TextSpan type;
  TextSpan second;
  float cov[9] = {};
  FieldCursor r(c.sentence);
  r.SkipField().Comma().Decimal(week).Comma().Decimal(milliseconds).Char(';');
  Span(Span(r, ',', type).Comma(), ',', second);
  for (float& value : cov)
    Float(r.Comma(), value);
  if (!r.ok) return;
  const int sbas = type.MatchesOver("SBAS", 3) ? 1 : 0;
  out->Printf("%d %.3lf %d %.6f %.6f %.6f %.6f %.6f %.6f %.6f %.6f %.6f \n", week,
              milliseconds / kMillisecond, sbas, static_cast<double>(cov[0]),
              static_cast<double>(cov[1]), static_cast<double>(cov[2]), static_cast<double>(cov[3]),
              static_cast<double>(cov[4]), static_cast<double>(cov[5]), static_cast<double>(cov[6]),
              static_cast<double>(cov[7]), static_cast<double>(cov[8]));
  out->Flush();
}

void ExtractRawMagx(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE")) return;
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  int status = 0, x = 0, y = 0, z = 0;
  FieldCursor r(body);
  r.Decimal(status).Comma().SkipField().Comma().Decimal(x).Comma().Decimal(y).Comma().Decimal(z);
  if (!r.ok) return;
  out->Printf("%i %.3lf  %d %d %d %d\n", header.week, header.seconds, status, x, y, z);
}

// Ticks per revolution, wheel velocity, its float form and a reserved field
// are passed over; the row keeps the two counts behind them.
void ExtractTimedWheelData(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  int first = 0, second = 0;
  FieldCursor r(body);
  SkipInt(r).Comma();
  SkipInt(r).Comma();
  SkipNumber(r).Comma();
  SkipInt(r).Comma().Int(first).Comma().Int(second);
  if (!r.ok) return;
  out->Printf("%i,%.3f,%i,%i\n", header.week, header.seconds, first, second);
}

}  // namespace tarnlog
