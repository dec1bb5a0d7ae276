// The solution logs that come in several names and header forms: position,
// velocity, DOP, earth-centred and time logs. The context says which name
// and header; the family says which solution the body describes.
#include <cmath>
#include <cstdio>

#include "synthcap/message_writers.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

void WritePositionLog(WriterContext& c, SolutionFamily family) {
  const std::size_t start = BeginLog(c);
  AppendPositionBlock(c.out, SolvePosition(family, c.epoch, c.rng));
  EndLog(c, start);
}

void WriteVelocityLog(WriterContext& c, SolutionFamily family) {
  const std::size_t start = BeginLog(c);
  AppendVelocityBlock(c.out, SolveVelocity(family, c.epoch, c.rng));
  EndLog(c, start);
}

struct Dops {
  double gdop, pdop, hdop, vdop, tdop, htdop, ndop, edop;
};

// Fewer satellites, larger dilutions.
Dops DopsOf(const ReceiverEpoch& e, Rng& rng) {
  const int used = static_cast<int>(e.satellites.size());
  Dops d;
  d.pdop = 0.9 + 9.0 / used + 0.02 * rng.Noise();
  d.hdop = d.pdop * 0.55;
  d.vdop = std::sqrt(d.pdop * d.pdop - d.hdop * d.hdop);
  d.tdop = d.pdop * 0.5;
  d.gdop = std::sqrt(d.pdop * d.pdop + d.tdop * d.tdop);
  d.htdop = std::sqrt(d.hdop * d.hdop + d.tdop * d.tdop);
  d.ndop = d.hdop * 0.7;
  d.edop = std::sqrt(d.hdop * d.hdop - d.ndop * d.ndop);
  return d;
}

void AppendPrnList(std::string& out, const ReceiverEpoch& e) {
  FieldInt(out, static_cast<std::int64_t>(e.satellites.size()));
  for (const Satellite& satellite : e.satellites)
    FieldInt(out, satellite.prn);
}

}  // namespace

void WriteBestPosition(WriterContext& c) {
  WritePositionLog(c, SolutionFamily::kBest);
}
void WriteRtkPosition(WriterContext& c) {
  WritePositionLog(c, SolutionFamily::kRtk);
}
void WritePsrPosition(WriterContext& c) {
  WritePositionLog(c, SolutionFamily::kPseudorange);
}
void WritePppPosition(WriterContext& c) {
  WritePositionLog(c, SolutionFamily::kPpp);
}

void WriteBestVelocity(WriterContext& c) {
  WriteVelocityLog(c, SolutionFamily::kBest);
}
void WriteRtkVelocity(WriterContext& c) {
  WriteVelocityLog(c, SolutionFamily::kRtk);
}
void WritePsrVelocity(WriterContext& c) {
  WriteVelocityLog(c, SolutionFamily::kPseudorange);
}

// gdop, pdop, hdop, htdop, tdop, the cut-off angle and the PRNs used.
void WriteDop(WriterContext& c) {
  const Dops d = DopsOf(c.epoch, c.rng);
  const std::size_t start = BeginLog(c);
  AppendFixed(c.out, d.gdop, 4);
  FieldFixed(c.out, d.pdop, 4);
  FieldFixed(c.out, d.hdop, 4);
  FieldFixed(c.out, d.htdop, 4);
  FieldFixed(c.out, d.tdop, 4);
  FieldFixed(c.out, 5.0, 1);
  AppendPrnList(c.out, c.epoch);
  EndLog(c, start);
}

// The maker's layout: millisecond of the week, gdop, pdop, tdop, vdop,
// hdop, ndop, edop, the cut-off angle, a reserved field and the PRNs.
void WriteSatelliteDop(WriterContext& c) {
  const Dops d = DopsOf(c.epoch, c.rng);
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, c.epoch.millisecond);
  for (const double value : {d.gdop, d.pdop, d.tdop, d.vdop, d.hdop, d.ndop, d.edop})
    FieldFixed(c.out, value, 3);
  FieldFixed(c.out, 5.0, 1);
  Field(c.out, "0");
  AppendPrnList(c.out, c.epoch);
  EndLog(c, start);
}

void WriteXyz(WriterContext& c) {
  const std::size_t start = BeginLog(c);
  AppendXyzBlock(c.out, c.epoch, c.rng);
  EndLog(c, start);
}

// Clock model status, receiver clock offset and its deviation, the UTC
// offset, UTC date and time, and the UTC status.
void WriteTime(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  char text[96];
  const int length =
      std::snprintf(text, sizeof text, "VALID,%.9e,%.9e,%.11f,%d,%d,%d,%d,%d,%d,VALID",
                    1.0e-9 * (2.0 + c.rng.Noise()), 7.5e-8 * (1.0 + 0.1 * c.rng.Noise()),
                    -kLeapSeconds + 1.0e-8 * c.rng.Noise(), utc.year, utc.month, utc.day, utc.hour,
                    utc.minute, utc.millisecond);
  const std::size_t start = BeginLog(c);
  c.out.append(text, static_cast<std::size_t>(length));
  EndLog(c, start);
}

}  // namespace tarnlog::synth
