// #SLANTSTATUSA: the state of the slant measurement. A sentence that
// reports a static convergence gives a row with the seconds since the first
// such sentence; a sentence whose state is one of the known states gives a
// row with the state's number. One sentence can give both.
#include <iterator>

#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

constexpr double kWeek = 604800.0;

// In the order of their numbers.
constexpr const char* kSlantStates[] = {"WAITING", "STATIC",    "RTKNOFIX",
                                        "MOVING",  "INSBIGERR", "CONVERGENCE"};

int StateNumber(const TextSpan& text) {
  for (int n = 0; n < static_cast<int>(std::size(kSlantStates)); ++n) {
    if (text.Equals(kSlantStates[n])) return n;
  }
  return -1;
}

}  // namespace

void ExtractSlantStatus(const DispatchContext& c) {
  if (!Contains(c.sentence, "FINE")) return;
  int week = 0, milliseconds = 0;
  FieldCursor head(c.sentence);
  if (!StatusHeader(head, week, milliseconds).ok) return;
  const double seconds = milliseconds / 1000.0;
  OutFile* out = c.Table(0);
  StatusState& s = c.state.status;

  if (Contains(c.sentence, "STATIC") && Contains(c.sentence, "CONVERGENCE")) {
    if (!s.convergenceStarted) {
      s.convergenceStarted = true;
      s.convergenceWeek = week;
      s.convergenceSeconds = seconds;
    }
    const double since = (week - s.convergenceWeek) * kWeek + seconds - s.convergenceSeconds;
    if (out != nullptr) out->Printf("%d %.3f %.3f 0 0 0 0 \n", week, seconds, since);
  }

  // ";%[^,],%d,%d,%*[^,],%d"
  const char* semicolon = SemicolonOf(c.sentence);
  if (semicolon == nullptr) return;
  TextSpan state;
  int a = 0, b = 0, d = 0;
  FieldCursor body(semicolon);
  Span(body.Char(';'), ',', state).Comma().Decimal(a).Comma().Decimal(b).Comma().SkipField();
  body.Comma().Decimal(d);
  if (!body.ok) return;
  const int number = StateNumber(state);
  if (number < 0 || out == nullptr) return;
  out->Printf("%d %.3f  %d %d %d %d  1\n", week, seconds, number, a, b, d);
}

}  // namespace tarnlog
