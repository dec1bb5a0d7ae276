// Observation logs: RANGEA and its like for the rover, the reference station
// and the heading antenna, and the maker's OBSVMA layout. They carry two
// observations (L1 and L2) per tracked satellite: 20 to 40 channels.
#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr double kSpeedOfLight = 299792458.0;

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

// Tracking status: phase locked, code locked, parity known, the channel in
// bits 5-9, the satellite system in bits 16-18 and the signal type in bits
// 21-25.
std::uint32_t TrackingStatus(const Satellite& s, bool l2) {
  const std::uint32_t channel = static_cast<std::uint32_t>(s.channel) << 5;
  const std::uint32_t system = s.Glonass() ? 0x00010000 : 0;
  if (!l2) return 0x08109c04 | system | channel;
  const std::uint32_t l2Signal = s.Glonass() ? 0x00a00000 : 0x01200000;
  return 0x00109c0b | l2Signal | system | channel;
}

// One RANGEA observation: PRN, GLONASS frequency, pseudorange and its
// deviation, carrier phase and its deviation, Doppler, C/No, lock time and
// the channel tracking status.
void AppendRangeObservation(std::string& out, const Satellite& s, bool l2, double wavelength,
                            double range, double lockTime, Rng& rng) {
  const double cno = l2 ? s.cnoL2 : s.cnoL1;
  FieldInt(out, s.prn);
  FieldInt(out, s.gloFrequency);
  FieldFixed(out, range + (l2 ? 2.1 : 0.0) + rng.Noise() * 0.3, 3);
  FieldFixed(out, (l2 ? 0.07 : 0.03) + (52.0 - cno) * 0.004, 3);
  FieldFixed(out, (l2 ? s.adrOffsetL2 : s.adrOffsetL1) - range / wavelength, 6);
  FieldFixed(out, 0.006 + (52.0 - cno) * 0.0004, 3);
  FieldFixed(out, -s.rangeRate / wavelength, 3);
  FieldFixed(out, cno, 1);
  FieldFixed(out, lockTime, 3);
  FieldHex(out, TrackingStatus(s, l2), 8);
}

void WriteRangeLog(WriterContext& c, double (*extraRange)(const Satellite&), double extraLock) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, static_cast<std::int64_t>(e.satellites.size() * 2));
  for (const Satellite& s : e.satellites) {
    double l1 = 0.0, l2 = 0.0;
    Wavelengths(s, l1, l2);
    const double range = s.range + extraRange(s);
    AppendRangeObservation(c.out, s, false, l1, range, s.lockTime + extraLock, c.rng);
    AppendRangeObservation(c.out, s, true, l2, range, s.lockTime + extraLock, c.rng);
  }
  EndLog(c, start);
}

double NoExtraRange(const Satellite&) {
  return 0.0;
}
// A few kilometres away: up to two kilometres more or less, fixed per PRN.
double BaseExtraRange(const Satellite& s) {
  return (s.prn * 373 % 4001) - 2000.0;
}
// 1.2 metres away: a metre more or less.
double HeadingExtraRange(const Satellite& s) {
  return (s.prn % 9 - 4) * 0.27;
}

// One observation of the maker's layout: system and frequency, PRN,
// pseudorange, carrier phase, their deviations in centimetres and in 1/10000
// cycle, Doppler, C/No in 1/100 dB-Hz, a reserved field, lock time and the
// channel tracking status.
void AppendObsvmObservation(std::string& out, const Satellite& s, bool l2, double wavelength,
                            double range) {
  const double cno = l2 ? s.cnoL2 : s.cnoL1;
  FieldInt(out, (s.Glonass() ? 16 : 0) + (l2 ? 1 : 0));
  FieldInt(out, s.prn);
  FieldFixed(out, range + (l2 ? 2.1 : 0.0), 3);
  FieldFixed(out, -((l2 ? s.adrOffsetL2 : s.adrOffsetL1) - range / wavelength), 3);
  FieldInt(out, static_cast<std::int64_t>(3.0 + (52.0 - cno) * 0.4));
  FieldInt(out, static_cast<std::int64_t>(60.0 + (52.0 - cno) * 4.0));
  FieldFixed(out, -s.rangeRate / wavelength, 3);
  FieldInt(out, static_cast<std::int64_t>(cno * 100.0));
  Field(out, "0");
  FieldFixed(out, s.lockTime, 1);
  FieldHex(out, TrackingStatus(s, l2), 8);
}

void WriteObsvmLog(WriterContext& c, double (*extraRange)(const Satellite&)) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, static_cast<std::int64_t>(e.satellites.size() * 2));
  for (const Satellite& s : e.satellites) {
    double l1 = 0.0, l2 = 0.0;
    Wavelengths(s, l1, l2);
    AppendObsvmObservation(c.out, s, false, l1, s.range + extraRange(s));
    AppendObsvmObservation(c.out, s, true, l2, s.range + extraRange(s));
  }
  EndLog(c, start);
}

// The same observations as RANGEA in binary: PRN and GLONASS frequency as
// 16-bit words, pseudorange and carrier phase as doubles, the rest as floats
// and the tracking status last, 44 bytes each.
void AppendBinaryRangeObservation(std::string& out, const Satellite& s, bool l2, double wavelength,
                                  Rng& rng) {
  const double cno = l2 ? s.cnoL2 : s.cnoL1;
  PutU16(out, static_cast<std::uint16_t>(s.prn));
  PutU16(out, static_cast<std::uint16_t>(s.gloFrequency));
  PutF64(out, s.range + (l2 ? 2.1 : 0.0) + rng.Noise() * 0.3);
  PutF32(out, static_cast<float>((l2 ? 0.07 : 0.03) + (52.0 - cno) * 0.004));
  PutF64(out, (l2 ? s.adrOffsetL2 : s.adrOffsetL1) - s.range / wavelength);
  PutF32(out, static_cast<float>(0.006 + (52.0 - cno) * 0.0004));
  PutF32(out, static_cast<float>(-s.rangeRate / wavelength));
  PutF32(out, static_cast<float>(cno));
  PutF32(out, static_cast<float>(s.lockTime));
  PutU32(out, TrackingStatus(s, l2));
}

}  // namespace

void WriteRangeBinary(WriterContext& c) {
  constexpr std::uint16_t kRangeId = 43;
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginBinaryFrame(c.out, kRangeId, e);
  PutU32(c.out, static_cast<std::uint32_t>(e.satellites.size() * 2));
  for (const Satellite& s : e.satellites) {
    double l1 = 0.0, l2 = 0.0;
    Wavelengths(s, l1, l2);
    AppendBinaryRangeObservation(c.out, s, false, l1, c.rng);
    AppendBinaryRangeObservation(c.out, s, true, l2, c.rng);
  }
  EndBinaryFrame(c.out, start);
}

void WriteRange(WriterContext& c) {
  WriteRangeLog(c, NoExtraRange, 0.0);
}
void WriteBaseRange(WriterContext& c) {
  WriteRangeLog(c, BaseExtraRange, 3600.0);
}
void WriteHeadingRange(WriterContext& c) {
  WriteRangeLog(c, HeadingExtraRange, 0.0);
}
void WriteObservations(WriterContext& c) {
  WriteObsvmLog(c, NoExtraRange);
}
void WriteHeadingObservations(WriterContext& c) {
  WriteObsvmLog(c, HeadingExtraRange);
}

}  // namespace tarnlog::synth
