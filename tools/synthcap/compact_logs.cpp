// The maker's combined logs with the compact header: a position block and a
// velocity block in one sentence, and the clock log.
#include "synthcap/message_writers.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

// The 21-field position block, a comma, then the 8-field velocity block.
void WriteCombinedLog(WriterContext& c, SolutionFamily family) {
  const std::size_t start = BeginLog(c);
  AppendPositionBlock(c.out, SolvePosition(family, c.epoch, c.rng));
  c.out += ',';
  AppendVelocityBlock(c.out, SolveVelocity(family, c.epoch, c.rng));
  EndLog(c, start);
}

}  // namespace

void WriteBestNav(WriterContext& c) {
  WriteCombinedLog(c, SolutionFamily::kBest);
}
void WriteAdrNav(WriterContext& c) {
  WriteCombinedLog(c, SolutionFamily::kRtk);
}
void WriteSppNav(WriterContext& c) {
  WriteCombinedLog(c, SolutionFamily::kPseudorange);
}
void WritePppNav(WriterContext& c) {
  WriteCombinedLog(c, SolutionFamily::kPpp);
}

// Seventeen integers (clock and UTC status, leap seconds, the UTC date and
// time, which systems' clocks are valid, satellites used, the PPS state),
// then the clock offset and drift in metres and metres per second and the
// offset's deviation: twenty fields, the short form of the log.
void WriteClockData(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  const bool fixed = e.fix != FixKind::kNone;
  bool glonass = false;
  for (const Satellite& satellite : e.satellites)
    glonass |= satellite.Glonass();
  const int integers[17] = {fixed ? 0 : 1,
                            1,
                            kLeapSeconds,
                            utc.year,
                            utc.month,
                            utc.day,
                            utc.hour,
                            utc.minute,
                            utc.millisecond / 1000,
                            utc.millisecond % 1000,
                            1,
                            0,
                            glonass ? 1 : 0,
                            0,
                            e.SatellitesInSolution(),
                            fixed ? 1 : 0,
                            0};
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, integers[0]);
  for (int i = 1; i < 17; ++i)
    FieldInt(c.out, integers[i]);
  FieldFixed(c.out, 120.0 + 0.3 * e.secondsSinceStart + c.rng.Noise(), 3);
  FieldFixed(c.out, 0.3 + 0.01 * c.rng.Noise(), 3);
  FieldFixed(c.out, fixed ? 0.8 + 0.1 * c.rng.Unit() : 0.0, 3);
  EndLog(c, start);
}

}  // namespace tarnlog::synth
