// Combined position-and-velocity logs with the compact header, and the
// brief '%' attitude logs.
#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

// The 21-field position block, a comma, then the 8-field velocity block.
void WriteCombinedLog(WriterContext& c, std::string_view name, SolutionFamily family) {
  const std::size_t start = BeginCompactLog(c.out, name, c.epoch);
  AppendPositionBlock(c.out, SolvePosition(family, c.epoch, c.rng));
  c.out += ',';
  AppendVelocityBlock(c.out, SolveVelocity(family, c.epoch, c.rng));
  EndAsciiLog(c.out, start);
}

// Three angles or rates, their deviations where the log has them, and a
// status word.
void WriteAttitudeLog(WriterContext& c, std::string_view name, const double (&values)[3],
                      double sigma, bool withSigma) {
  const std::size_t start = BeginBriefLog(c.out, name, c.epoch);
  AppendFixed(c.out, values[0] + c.rng.Noise() * sigma, 6);
  FieldFixed(c.out, values[1] + c.rng.Noise() * sigma, 6);
  FieldFixed(c.out, values[2] + c.rng.Noise() * sigma, 6);
  if (withSigma) {
    for (int i = 0; i < 3; ++i)
      FieldFixed(c.out, sigma * (1.0 + 0.1 * c.rng.Noise()), 4);
  }
  FieldHex(c.out, c.epoch.fix == FixKind::kNone ? 0x00000004u : 0x00000000u, 8);
  EndAsciiLog(c.out, start);
}

}  // namespace

void WriteBestNav(WriterContext& c) {
  WriteCombinedLog(c, "BESTNAVA", SolutionFamily::kBest);
}
void WriteAdrNav(WriterContext& c) {
  WriteCombinedLog(c, "ADRNAVA", SolutionFamily::kRtk);
}
void WriteSppNav(WriterContext& c) {
  WriteCombinedLog(c, "SPPNAVA", SolutionFamily::kPseudorange);
}
void WritePppNav(WriterContext& c) {
  WriteCombinedLog(c, "PPPNAVA", SolutionFamily::kPpp);
}

void WriteCarAngle(WriterContext& c) {
  WriteAttitudeLog(c, "CANGLEA", c.epoch.attitude, 0.05, true);
}
void WriteAngularVelocity(WriterContext& c) {
  WriteAttitudeLog(c, "ANGVELA", c.epoch.angularRate, 0.01, false);
}
void WriteFilteredAngle(WriterContext& c) {
  WriteAttitudeLog(c, "FANGLEA", c.epoch.attitude, 0.02, true);
}

}  // namespace tarnlog::synth
