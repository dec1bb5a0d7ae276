// #PPSSTATUSA and the time to first PPS. The driver records the first fix
// from BESTNAVA; the first PPS that reports state 3 after it gives the
// seconds from that fix, once. A state below 2 ends the latch, so that a
// later fix is measured again.
#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

constexpr double kWeek = 604800.0;
constexpr int kPpsLocked = 3;
constexpr int kPpsLost = 2;

}  // namespace

void ExtractPpsStatus(const DispatchContext& c) {
  if (!Contains(c.sentence, "FINE")) return;
  int week = 0, milliseconds = 0;
  FieldCursor head(c.sentence);
  StatusHeader(head, week, milliseconds);
  const char* semicolon = SemicolonOf(c.sentence);
  if (!head.ok || semicolon == nullptr) return;
  int state = 0, value = 0;
  FieldCursor body(semicolon);
  body.Char(';').Decimal(state).Comma().SkipField().Comma().Decimal(value);
  if (!body.ok) return;

  const double seconds = milliseconds / 1000.0;
  ExtractionState& s = c.state;
  double firstPps = 0.0;
  if (s.firstFixSeconds > 0.0 && state == kPpsLocked && !s.firstFixLatched) {
    firstPps = (week - s.firstFixWeek) * kWeek + seconds - s.firstFixSeconds;
    s.firstFixLatched = true;
  } else if (state < kPpsLost && s.firstFixLatched) {
    s.firstFixLatched = false;
    s.firstFixWeek = 0;
  }
  if (OutFile* out = c.Table(0)) {
    out->Printf("%d %.3lf %d %d  %.2lf\r\n", week, seconds, state, value, firstPps);
  }
}

}  // namespace tarnlog
