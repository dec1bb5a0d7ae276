// #EVENTALL: a time mark with the position at the mark, set against the
// newest BESTPOSA of the run.
//
// The body is six integers (source, polarity, week, whole seconds of the
// week, nanoseconds, event count) and a position block (solution status,
// position type, latitude, longitude, height, undulation, datum, three
// deviations, and what follows them). The row gives the header
// time, the six integers, the mark's position, the seconds from the newest
// BESTPOSA to the mark, the BESTPOSA kept from before the mark and the one
// kept from after it, and the deviations.
//
// BESTPOSA rows and marks arrive in the order the receiver sends them, so
// the newest BESTPOSA can lie on either side of a mark; it replaces the
// record of its side and the other record stays as it was.
#include "extract/log_fields.h"
#include "extract/status/log_scan.h"
#include "extract/status/status_extractors.h"

namespace tarnlog {
namespace {

constexpr double kWeek = 604800.0;
constexpr double kNanosecondsPerSecond = 1000000000.0;

enum Mark { kSource, kPolarity, kWeekOfMark, kWholeSeconds, kNanoseconds, kCount, kMarkFields };

struct EventPosition {
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  double undulation = 0.0;
  float sigmas[3] = {0.0f, 0.0f, 0.0f};
};

}  // namespace

void ExtractEventAll(const DispatchContext& c) {
  LongHeader header;
  const char* semicolon = SemicolonOf(c.sentence);
  if (!ReadLongHeader(c.sentence, &header) || semicolon == nullptr) return;
  int mark[kMarkFields] = {};
  EventPosition p;
  FieldCursor r(semicolon);
  r.Char(';');
  for (int n = 0; n < kMarkFields; ++n) {
    if (n > 0) r.Comma();
    r.Decimal(mark[n]);
  }
  // The status and the type stand in front of the position, whatever the
  // status.
  r.Comma().SkipField().Comma().SkipField();
  r.Comma().Double(p.latitude).Comma().Double(p.longitude).Comma().Double(p.height).Comma();
  r.Double(p.undulation).Comma().SkipField().Comma();
  Float(Float(Float(r, p.sigmas[0]).Comma(), p.sigmas[1]).Comma(), p.sigmas[2]);
  if (!r.ok) return;

  const LastBestPosition& best = c.state.lastBestPos;
  const double markTime =
      mark[kWeekOfMark] * kWeek + mark[kWholeSeconds] + mark[kNanoseconds] / kNanosecondsPerSecond;
  const double sinceBest = markTime - (best.week * kWeek + best.seconds);
  StatusState& s = c.state.status;
  if (best.week != 0) {
    TimedPosition& side = sinceBest >= 0.0 ? s.beforeEvent : s.afterEvent;
    side = {best.week, best.seconds, best.latitude, best.longitude, best.height};
  }

  OutFile* out = c.Table(0);
  if (out == nullptr) return;
  const TimedPosition& before = s.beforeEvent;
  const TimedPosition& after = s.afterEvent;
  out->Printf(
      "%i %.3f %d %d %d %d %d %d %.11f %.11f %.4f %.3f %i %.3f %.11f %.11f %.4f %i %.3f %.11f "
      "%.11f %.4f %.4f %.4f %.4f\n",
      header.week, header.seconds, mark[0], mark[1], mark[2], mark[3], mark[4], mark[5], p.latitude,
      p.longitude, p.height + p.undulation, sinceBest, before.week, before.seconds, before.latitude,
      before.longitude, before.height, after.week, after.seconds, after.latitude, after.longitude,
      after.height, static_cast<double>(p.sigmas[0]), static_cast<double>(p.sigmas[1]),
      static_cast<double>(p.sigmas[2]));
}

}  // namespace tarnlog
