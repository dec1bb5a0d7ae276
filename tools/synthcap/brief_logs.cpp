// Brief '%' logs: the attitude and rate words of the vehicle bus, raw gyro
// counts and the attitude covariance.
#include <cstdint>

#include "synthcap/message_writers.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

// A 16-bit word as its two bytes in hexadecimal, low byte first.
void AppendLittleEndian16(std::string& out, int value) {
  const std::uint32_t word = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
  AppendHex(out, word & 0xFF, 2);
  AppendHex(out, word >> 8, 2);
}

int Hundredths(double value) {
  return static_cast<int>(value * 100.0 + (value < 0 ? -0.5 : 0.5));
}

// Three words in hundredths of a degree (or degree per second) and a status
// word, as the bus carries them.
void WriteBusWords(WriterContext& c, const double (&values)[3], double sigma) {
  const std::size_t start = BeginLog(c);
  for (const double value : values) {
    AppendLittleEndian16(c.out, Hundredths(value + c.rng.Noise() * sigma));
    c.out += ',';
  }
  AppendLittleEndian16(c.out, c.epoch.fix == FixKind::kNone ? 4 : 0);
  EndLog(c, start);
}

}  // namespace

void WriteCarAngle(WriterContext& c) {
  // The bus carries the azimuth from -180 to 180 degrees.
  const double* attitude = c.epoch.attitude;
  const double azimuth = attitude[2] > 180.0 ? attitude[2] - 360.0 : attitude[2];
  const double values[3] = {attitude[0], attitude[1], azimuth};
  WriteBusWords(c, values, 0.05);
}
void WriteAngularVelocity(WriterContext& c) {
  WriteBusWords(c, c.epoch.angularRate, 0.01);
}
void WriteFilteredAngle(WriterContext& c) {
  const double* attitude = c.epoch.attitude;
  const double azimuth = attitude[2] > 180.0 ? attitude[2] - 360.0 : attitude[2];
  const double values[3] = {attitude[0], attitude[1], azimuth};
  WriteBusWords(c, values, 0.02);
}

// Status, temperature, then the three rate counts (last before the star).
void WriteRawGyro(WriterContext& c) {
  const std::size_t start = BeginLog(c);
  c.out += "0";
  FieldFixed(c.out, 36.5 + 0.2 * c.rng.Noise(), 1);
  for (const double rate : c.epoch.angularRate)
    FieldInt(c.out, static_cast<std::int64_t>(rate * 160.0 + 3.0 * c.rng.Noise()));
  EndLog(c, start);
}

// The source of the attitude, the INS status, and the 3x3 covariance of
// roll, pitch and azimuth in square degrees.
void WriteAttitudeCovariance(WriterContext& c) {
  const bool good = c.epoch.fix != FixKind::kNone;
  const double variance = good ? 0.0004 : 0.04;
  const double cross = variance * 0.1 * c.rng.Noise();
  const double matrix[9] = {variance, cross, 0.0, cross, variance, 0.0, 0.0, 0.0, variance * 4.0};
  const std::size_t start = BeginLog(c);
  c.out += "GNSS";
  Field(c.out, good ? "INS_SOLUTION_GOOD" : "INS_HIGH_VARIANCE");
  for (const double value : matrix)
    FieldFixed(c.out, value, 6);
  EndLog(c, start);
}

}  // namespace tarnlog::synth
