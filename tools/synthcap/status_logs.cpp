// The receiver's housekeeping logs: status words, hardware and environment
// monitors, jamming, the PPS, the reference station, the task loads and the
// satellite counts.
#include <cmath>

#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

bool Fixed(const ReceiverEpoch& e) {
  return e.fix != FixKind::kNone;
}

bool Rtk(const ReceiverEpoch& e) {
  return e.fix == FixKind::kNarrowInt || e.fix == FixKind::kNarrowFloat;
}

int GlonassCount(const ReceiverEpoch& e) {
  int count = 0;
  for (const Satellite& satellite : e.satellites)
    count += satellite.Glonass() ? 1 : 0;
  return count;
}

void AppendIntegers(std::string& out, std::initializer_list<std::int64_t> values) {
  bool first = true;
  for (const std::int64_t value : values) {
    if (!first) out += ',';
    AppendInt(out, value);
    first = false;
  }
}

}  // namespace

// The error word, the number of status groups (4), and per group the
// status word with its priority, set and clear masks.
void WriteRxStatus(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::uint32_t status = 0x02000000u | (Fixed(e) ? 0u : 0x00040000u);
  const std::size_t start = BeginLog(c);
  c.out += "00000000,4";
  const std::uint32_t groups[4][4] = {{status, 0x00000000, 0x00000000, 0x00000000},
                                      {0x00000008, 0x00000000, 0x00000000, 0x00000000},
                                      {0x00000000, 0x00000000, 0x00000000, 0x00000000},
                                      {0x00000000, 0x00000000, 0x00000000, 0x00000000}};
  for (const auto& group : groups) {
    for (const std::uint32_t word : group)
      FieldHex(c.out, word, 8);
  }
  EndLog(c, start);
}

// Monitor count, board temperature, core and antenna supply voltages, the
// antenna state, antenna current, three reserved fields and a status word.
void WriteHwStatus(WriterContext& c) {
  const double temperature = 42.0 + 0.002 * c.epoch.secondsSinceStart + 0.1 * c.rng.Noise();
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, 4);
  FieldFixed(c.out, temperature, 2);
  FieldFixed(c.out, 1.2 + 0.005 * c.rng.Noise(), 3);
  FieldFixed(c.out, 3.3 + 0.01 * c.rng.Noise(), 3);
  Field(c.out, "ANT_OK");
  FieldFixed(c.out, 0.045 + 0.001 * c.rng.Noise(), 3);
  c.out += ",0,0,0";
  FieldHex(c.out, 0, 8);
  EndLog(c, start);
}

// Sensor state, air temperature, relative humidity and pressure in hPa.
void WriteEnvInfo(WriterContext& c) {
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, 1);
  FieldFixed(c.out, 21.0 + 0.2 * c.rng.Noise(), 2);
  FieldInt(c.out, 55 + c.rng.Between(-2, 2));
  FieldInt(c.out, static_cast<std::int64_t>(1013.0 * std::exp(-c.epoch.height / 8400.0)));
  Field(c.out, "0");
  EndLog(c, start);
}

// Per band its name and whether a jammer is seen there.
void WriteJamStatus(WriterContext& c) {
  const std::size_t start = BeginLog(c);
  bool first = true;
  for (const char* band : {"GPSL1", "GPSL2", "GLOG1", "GLOG2", "BDSB1", "BDSB3"}) {
    if (!first) c.out += ',';
    c.out += band;
    FieldInt(c.out, c.rng.Chance(0.02) ? 1 : 0);
    first = false;
  }
  EndLog(c, start);
}

// A mower's working state in 24 integers: mode, blade, satellites, fix
// quality, battery, speed in cm/s, heading in 1/10 degree, area, errors.
void WriteMowerStatus(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLog(c);
  const std::int64_t seconds = static_cast<std::int64_t>(e.secondsSinceStart);
  AppendIntegers(c.out, {e.speed > 0.2 ? 2 : 1,
                         e.speed > 0.2 ? 1 : 0,
                         e.SatellitesInSolution(),
                         Rtk(e) ? 4 : (Fixed(e) ? 1 : 0),
                         100 - seconds / 600 % 80,
                         static_cast<std::int64_t>(e.speed * 100.0),
                         static_cast<std::int64_t>(e.track * 10.0),
                         static_cast<std::int64_t>(e.distance),
                         seconds,
                         0,
                         0,
                         0,
                         0,
                         0,
                         0,
                         0,
                         0,
                         0,
                         0,
                         1,
                         0,
                         0,
                         0,
                         0});
  EndLog(c, start);
}

// Model state, zenith hydrostatic, wet and total delays and the total's
// deviation, in metres.
void WriteTroposphere(WriterContext& c) {
  const double hydrostatic = 2.3 * std::exp(-c.epoch.height / 7000.0);
  const double wet = 0.15 + 0.01 * c.rng.Noise();
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, Fixed(c.epoch) ? 1 : 0);
  FieldFixed(c.out, hydrostatic, 6);
  FieldFixed(c.out, wet, 6);
  FieldFixed(c.out, hydrostatic + wet, 6);
  FieldFixed(c.out, 0.012 + 0.001 * c.rng.Unit(), 6);
  Field(c.out, "0");
  EndLog(c, start);
}

// PPS state (3 locked to a fix, 1 free running), time reference, period in
// milliseconds, pulse width in microseconds and the offset in ns.
void WritePpsStatus(WriterContext& c) {
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, Fixed(c.epoch) ? 3 : 1);
  Field(c.out, "GPS");
  FieldInt(c.out, 1000);
  FieldInt(c.out, 500);
  FieldFixed(c.out, Fixed(c.epoch) ? 5.0 * c.rng.Noise() : 0.0, 2);
  EndLog(c, start);
}

// The reference station in use: state, earth-centred position and number.
void WriteBaseInfo(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  double xyz[3];
  GeodeticToEcef(e.baseLatitude, e.baseLongitude, e.baseHeight + e.undulation, xyz);
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, e.differentialAge > 0.0 ? 1 : 0);
  for (const double coordinate : xyz)
    FieldFixed(c.out, coordinate, 4);
  c.out += ",\"";
  AppendPadded(c.out, static_cast<std::uint32_t>(e.stationId), 4);
  c.out += "\",0,0";
  EndLog(c, start);
}

// The tilt survey's state in words, satellites, fix quality, whether the
// tilt filter has converged and the seconds it has run.
void WriteSlantStatus(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const char* state = !Fixed(e)       ? "WAITING"
                      : e.speed < 0.2 ? "STATIC"
                      : !Rtk(e)       ? "RTKNOFIX"
                                      : "MOVING";
  const std::size_t start = BeginLog(c);
  c.out += state;
  FieldInt(c.out, e.SatellitesInSolution());
  FieldInt(c.out, Rtk(e) ? 4 : (Fixed(e) ? 1 : 0));
  Field(c.out, e.secondsSinceStart < 300.0 ? "CONVERGENCE" : "CONVERGED");
  FieldInt(c.out, static_cast<std::int64_t>(e.secondsSinceStart));
  EndLog(c, start);
}

// Per task its quoted name, the times it ran and its share of the processor
// in percent; the idle task takes what the others leave. The loop count of
// the storage task closes the list. The board writes it with the time status
// "FINE" once the clock is steered.
void WritePerformance(WriterContext& c) {
  static constexpr const char* kTasks[] = {
      "GSPMain",         "IDLE",         "SerialPort0_IO",  "SerialPort1_IO", "SerialPort2_IO",
      "Tmr Svc",         "StartGsp",     "GSPBBPackage",    "commist1",       "SerialPort1_Msg",
      "SerialPort2_Msg", "GSPBBMessage", "GspMatchedRTKDe", "commist2",       "GspEventDev",
      "SerialPort0_Msg", "GspNVM",       "GspRTCMDecoder"};
  const ReceiverEpoch& e = c.epoch;
  const std::int64_t seconds = static_cast<std::int64_t>(e.secondsSinceStart);
  const double busy = 100.0 - e.idle;
  // The task loads come with the compact header, whose time status is the
  // ",FINE," the extractor looks for.
  const std::size_t start = BeginCompactLog(c.out, c.name, e);
  for (int i = 0; i < 18; ++i) {
    if (i > 0) c.out += ',';
    c.out += '"';
    c.out += kTasks[i];
    c.out += '"';
    FieldInt(c.out, (seconds + 1) * (i == 1 ? 1000 : 20 + 7 * i));
    const double share = i == 1 ? e.idle : i == 0 ? busy * 0.5 : busy * 0.5 / 16.0;
    FieldFixed(c.out, share, 2);
  }
  c.out += ",NVMLOOPCOUNT:";
  AppendInt(c.out, seconds * 10);
  EndLog(c, start);
}

// The time pulse output: its source, whether it is enabled, the satellites
// it is steered by and its period in milliseconds.
void WriteTimePulseInfo(WriterContext& c) {
  const std::size_t start = BeginLog(c);
  c.out += "TP1";
  FieldInt(c.out, Fixed(c.epoch) ? 1 : 0);
  FieldInt(c.out, c.epoch.SatellitesInSolution());
  FieldInt(c.out, 1000);
  EndLog(c, start);
}

// Per system (GPS, GLONASS, Galileo, BDS) the satellites tracked and used,
// each as five hexadecimal digits.
void WriteSatelliteCounts(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const int glonass = GlonassCount(e);
  const int gps = static_cast<int>(e.satellites.size()) - glonass;
  const int used = e.SatellitesInSolution();
  const int usedGlonass = used * glonass / static_cast<int>(e.satellites.size());
  const std::uint32_t counts[4][2] = {
      {static_cast<std::uint32_t>(gps), static_cast<std::uint32_t>(used - usedGlonass)},
      {static_cast<std::uint32_t>(glonass), static_cast<std::uint32_t>(usedGlonass)},
      {0, 0},
      {0, 0}};
  const std::size_t start = BeginLog(c);
  c.out += "ALL";
  for (const auto& system : counts) {
    c.out += ',';
    AppendHex(c.out, system[0], 5);
    AppendHex(c.out, system[1], 5);
  }
  EndLog(c, start);
}

}  // namespace tarnlog::synth
