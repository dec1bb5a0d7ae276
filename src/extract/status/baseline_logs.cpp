// The baseline logs of the heading receiver and AGRICA.
#include <cstdlib>
#include <cstring>

#include "extract/log_fields.h"
#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

struct Baseline {
  double a = 0.0, b = 0.0, c = 0.0;
  int station = 0;  // the master's ID, quoted in the log
  int tracked = 0;
  int used = 0;
};

// "%lf,%lf,%lf," and then, behind three deviations, "\"%d\",%d,%d". The
// ENU logs read the deviations as numbers and pass the rover's ID over
// before the quoted master ID; the XYZ logs pass three fields over.
FieldCursor& BaselineFields(FieldCursor& r, Baseline& b, bool enu) {
  r.Double(b.a).Comma().Double(b.b).Comma().Double(b.c).Comma();
  if (enu) {
    for (int n = 0; n < 3; ++n)
      SkipNumber(r).Comma();
    r.SkipField().Comma();
  } else {
    SkipFields(r, 3);
  }
  return r.Char('"').Decimal(b.station).Char('"').Comma().Decimal(b.tracked).Comma().Decimal(
      b.used);
}

// AGRICA's body, split at commas: the fields the row takes.
constexpr int kAgricStatusField = 8;
constexpr int kAgricHeadingField = 19;
constexpr int kAgricLatitudeField = 29;
constexpr int kAgricLongitudeField = 30;
constexpr int kAgricHeightField = 31;
constexpr int kAgricFieldsNeeded = 32;

}  // namespace

// Only BSLNENUHD2A reaches here from the chain (its ALIGNBSLNENUA row tests
// a misspelt name); the last column tells the two logs apart.
void ExtractAlignBaseline(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "SOL_COMPUTED")) return;
  LongHeader header;
  const char* semicolon = SemicolonOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || semicolon == nullptr) return;
  Baseline b;
  FieldCursor r(semicolon);
  r.Char(';').SkipField().Comma().SkipField().Comma();
  if (!BaselineFields(r, b, true).ok) return;
  const int log = Contains(c.sentence, "ALIGNBSLNENUA") ? 1 : 2;
  out->Printf("%d,%.3f,%.4f,%.4f,%.4f,%d,%d,%d,%d \r\n", header.week, header.seconds, b.a, b.b, b.c,
              b.station, b.tracked, b.used, log);
}

void ExtractBaselineXyz(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || !Contains(c.sentence, "FINE") || !Contains(c.sentence, "SOL_COMPUTED")) {
    return;
  }
  LongHeader header;
  const char* body = BodyOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || body == nullptr) return;
  Baseline b;
  FieldCursor r(body);
  r.SkipField().Comma().SkipField().Comma();
  if (!BaselineFields(r, b, false).ok) return;
  const int log = Contains(c.sentence, "BSLNXYZHD2A") ? 2 : 1;
  out->Printf("%i,%.3f,%.4f,%.4f,%.4f,%d,%d,%d,%d\n", header.week, header.seconds, b.a, b.b, b.c,
              b.station, b.tracked, b.used, log);
}

// Fields are taken as atoi and atof take them: an unreadable one is 0.
void ExtractAgric(const DispatchContext& c) {
  OutFile* out = c.Table(0);
  if (out == nullptr || Contains(c.sentence, "UNKNOWN")) return;
  int week = 0, milliseconds = 0;
  FieldCursor head(c.sentence);
  const char* body = BodyOf(c.sentence);
  if (!StatusHeader(head, week, milliseconds).ok || body == nullptr) return;
  const char* fields[kAgricFieldsNeeded];
  int count = 0;
  for (const char* at = body; count < kAgricFieldsNeeded;) {
    fields[count++] = at;
    at = std::strchr(at, ',');
    if (at == nullptr) break;
    ++at;
  }
  if (count < kAgricFieldsNeeded) return;
  out->Printf("%d,%.3lf,%d,%.11f,%.11f,%.4lf,%.2f\n", week, milliseconds / 1000.0,
              std::atoi(fields[kAgricStatusField]), std::atof(fields[kAgricLatitudeField]),
              std::atof(fields[kAgricLongitudeField]), std::atof(fields[kAgricHeightField]),
              std::atof(fields[kAgricHeadingField]));
  out->Flush();
}

}  // namespace tarnlog
