// The receiver's long-header ASCII logs.
#include <cmath>
#include <cstdio>

#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr double kSpeedOfLight = 299792458.0;
constexpr double kDegrees = 3.14159265358979323846 / 180.0;

void WritePositionLog(WriterContext& c, std::string_view name, SolutionFamily family) {
  const std::size_t start = BeginLongLog(c.out, name, c.epoch);
  AppendPositionBlock(c.out, SolvePosition(family, c.epoch, c.rng));
  EndAsciiLog(c.out, start);
}

void WriteVelocityLog(WriterContext& c, std::string_view name, SolutionFamily family) {
  const std::size_t start = BeginLongLog(c.out, name, c.epoch);
  AppendVelocityBlock(c.out, SolveVelocity(family, c.epoch, c.rng));
  EndAsciiLog(c.out, start);
}

// Dilutions of precision: gdop, pdop, hdop, htdop, tdop, the cut-off angle
// and the satellites used.
void WriteDopLog(WriterContext& c, std::string_view name) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLongLog(c.out, name, e);
  const int used = static_cast<int>(e.satellites.size());
  const double pdop = 0.9 + 9.0 / used + 0.02 * c.rng.Noise();
  const double hdop = pdop * 0.55;
  const double tdop = pdop * 0.5;
  AppendFixed(c.out, std::sqrt(pdop * pdop + tdop * tdop), 4);
  FieldFixed(c.out, pdop, 4);
  FieldFixed(c.out, hdop, 4);
  FieldFixed(c.out, std::sqrt(hdop * hdop + tdop * tdop), 4);
  FieldFixed(c.out, tdop, 4);
  FieldFixed(c.out, 5.0, 1);
  FieldInt(c.out, used);
  for (const Satellite& satellite : e.satellites)
    FieldInt(c.out, satellite.prn);
  EndAsciiLog(c.out, start);
}

// Carrier wavelengths in metres of the L1 and L2 signals of a satellite.
void Wavelengths(const Satellite& satellite, double& l1, double& l2) {
  if (!satellite.Glonass()) {
    l1 = kSpeedOfLight / 1575.42e6;
    l2 = kSpeedOfLight / 1227.60e6;
    return;
  }
  const int k = satellite.gloFrequency - 7;
  l1 = kSpeedOfLight / (1602.0e6 + k * 0.5625e6);
  l2 = kSpeedOfLight / (1246.0e6 + k * 0.4375e6);
}

// One RANGEA observation: PRN, GLONASS frequency, pseudorange and its
// deviation, carrier phase and its deviation, Doppler, C/No, lock time and
// the channel tracking status.
void AppendObservation(std::string& out, const Satellite& s, bool l2, double wavelength,
                       double adrOffset, double cno, std::uint32_t status, Rng& rng) {
  FieldInt(out, s.prn);
  FieldInt(out, s.gloFrequency);
  FieldFixed(out, s.range + (l2 ? 2.1 : 0.0) + rng.Noise() * 0.3, 3);
  FieldFixed(out, (l2 ? 0.07 : 0.03) + (52.0 - cno) * 0.004, 3);
  FieldFixed(out, adrOffset - s.range / wavelength, 6);
  FieldFixed(out, 0.006 + (52.0 - cno) * 0.0004, 3);
  FieldFixed(out, -s.rangeRate / wavelength, 3);
  FieldFixed(out, cno, 1);
  FieldFixed(out, s.lockTime, 3);
  FieldHex(out, status, 8);
}

}  // namespace

void WriteBestPos(WriterContext& c) {
  WritePositionLog(c, "BESTPOSA", SolutionFamily::kBest);
}
void WriteRtkPos(WriterContext& c) {
  WritePositionLog(c, "RTKPOSA", SolutionFamily::kRtk);
}
void WritePsrPos(WriterContext& c) {
  WritePositionLog(c, "PSRPOSA", SolutionFamily::kPseudorange);
}
void WriteMatchedPos(WriterContext& c) {
  WritePositionLog(c, "MATCHEDPOSA", SolutionFamily::kRtk);
}
void WritePppPos(WriterContext& c) {
  WritePositionLog(c, "PPPPOSA", SolutionFamily::kPpp);
}

void WriteBestVel(WriterContext& c) {
  WriteVelocityLog(c, "BESTVELA", SolutionFamily::kBest);
}
void WriteRtkVel(WriterContext& c) {
  WriteVelocityLog(c, "RTKVELA", SolutionFamily::kRtk);
}
void WritePsrVel(WriterContext& c) {
  WriteVelocityLog(c, "PSRVELA", SolutionFamily::kPseudorange);
}

void WritePsrDop(WriterContext& c) {
  WriteDopLog(c, "PSRDOPA");
}
void WriteRtkDop(WriterContext& c) {
  WriteDopLog(c, "RTKDOPA");
}

// Position and velocity in earth-centred coordinates with their deviations.
void WriteBestXyz(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
  const VelocitySolution v = SolveVelocity(SolutionFamily::kBest, e, c.rng);
  double xyz[3] = {0.0, 0.0, 0.0};
  double velocity[3] = {0.0, 0.0, 0.0};
  if (p.tracked > 0 && p.status == "SOL_COMPUTED") {
    GeodeticToEcef(p.latitude, p.longitude, p.height + p.undulation, xyz);
    const double lat = p.latitude * kDegrees, lon = p.longitude * kDegrees;
    const double east = v.horizontalSpeed * std::sin(v.track * kDegrees);
    const double north = v.horizontalSpeed * std::cos(v.track * kDegrees);
    const double up = v.verticalSpeed;
    velocity[0] = -std::sin(lon) * east - std::sin(lat) * std::cos(lon) * north +
                  std::cos(lat) * std::cos(lon) * up;
    velocity[1] = std::cos(lon) * east - std::sin(lat) * std::sin(lon) * north +
                  std::cos(lat) * std::sin(lon) * up;
    velocity[2] = std::cos(lat) * north + std::sin(lat) * up;
  }
  const std::size_t start = BeginLongLog(c.out, "BESTXYZA", e);
  std::string& out = c.out;
  out += p.status;
  Field(out, p.type);
  for (double coordinate : xyz)
    FieldFixed(out, coordinate, 4);
  for (double sigma : p.sigma)
    FieldFixed(out, sigma, 4);
  Field(out, v.status);
  Field(out, v.type);
  for (double component : velocity)
    FieldFixed(out, component, 4);
  for (int i = 0; i < 3; ++i)
    FieldFixed(out, p.status == "SOL_COMPUTED" ? 0.02 : 0.0, 4);
  out += ',';
  AppendStationId(out, p.stationId);
  FieldFixed(out, v.latency, 3);
  FieldFixed(out, p.differentialAge, 3);
  FieldFixed(out, p.solutionAge, 3);
  FieldInt(out, p.tracked);
  FieldInt(out, p.used);
  FieldInt(out, p.usedL1);
  FieldInt(out, p.usedMulti);
  Field(out, "0");
  FieldHex(out, p.extendedStatus, 2);
  FieldHex(out, p.galileoBeidouMask, 2);
  FieldHex(out, p.gpsGlonassMask, 2);
  EndAsciiLog(out, start);
}

// Clock model status, receiver clock offset and its deviation, the UTC
// offset, UTC date and time, and the UTC status.
void WriteTime(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLongLog(c.out, "TIMEA", e);
  const CivilTime utc = UtcOf(e.week, e.millisecond);
  char text[96];
  const int length =
      std::snprintf(text, sizeof text, "VALID,%.9e,%.9e,%.11f,%d,%d,%d,%d,%d,%d,VALID",
                    1.0e-9 * (2.0 + c.rng.Noise()), 7.5e-8 * (1.0 + 0.1 * c.rng.Noise()),
                    -kLeapSeconds + 1.0e-8 * c.rng.Noise(), utc.year, utc.month, utc.day, utc.hour,
                    utc.minute, utc.millisecond);
  c.out.append(text, static_cast<std::size_t>(length));
  EndAsciiLog(c.out, start);
}

// Two observations (L1 and L2) per tracked satellite: 20 to 40 channels.
void WriteRange(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLongLog(c.out, "RANGEA", e);
  AppendInt(c.out, static_cast<std::int64_t>(e.satellites.size() * 2));
  for (const Satellite& s : e.satellites) {
    double l1 = 0.0, l2 = 0.0;
    Wavelengths(s, l1, l2);
    // Tracking status: phase locked, code locked, parity known, the channel
    // in bits 5-9, the satellite system in bits 16-18 and the signal type
    // in bits 21-25.
    const std::uint32_t channel = static_cast<std::uint32_t>(s.channel) << 5;
    const std::uint32_t system = s.Glonass() ? 0x00010000 : 0;
    const std::uint32_t l2Signal = s.Glonass() ? 0x00a00000 : 0x01200000;
    AppendObservation(c.out, s, false, l1, s.adrOffsetL1, s.cnoL1, 0x08109c04 | system | channel,
                      c.rng);
    AppendObservation(c.out, s, true, l2, s.adrOffsetL2, s.cnoL2,
                      0x00109c0b | l2Signal | system | channel, c.rng);
  }
  EndAsciiLog(c.out, start);
}

}  // namespace tarnlog::synth
