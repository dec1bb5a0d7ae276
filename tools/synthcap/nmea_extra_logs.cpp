// The less common NMEA sentences: fault detection (GBS), the multi-system
// fix (GNS), the distance to the base (NTR) and the board's own RTK
// sentence.
#include <cmath>

#include "synthcap/local_frame.h"
#include "synthcap/message_writers.h"
#include "synthcap/nmea_fields.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {

// Expected errors of latitude, longitude and altitude, then the satellite
// most likely failed, its probability, bias and deviation, and the system
// and signal ids (NMEA 4.10).
void WriteGbs(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginTalker(c, "GN");
  FieldUtcTime(out, e);
  const Satellite* lowest = &e.satellites.front();
  for (const Satellite& satellite : e.satellites) {
    if (satellite.elevation < lowest->elevation) lowest = &satellite;
  }
  const double sigma = e.fix == FixKind::kNone ? 25.0 : e.sigmaHorizontal;
  FieldFixed(out, sigma * (1.0 + 0.05 * c.rng.Noise()), 3);
  FieldFixed(out, sigma * (0.9 + 0.05 * c.rng.Noise()), 3);
  FieldFixed(out, e.sigmaVertical * (1.0 + 0.05 * c.rng.Noise()), 3);
  FieldInt(out, lowest->Glonass() ? lowest->prn + 27 : lowest->prn);
  FieldFixed(out, 0.001 + 0.01 * c.rng.Unit(), 3);
  FieldFixed(out, 2.0 * c.rng.Noise(), 1);
  FieldFixed(out, 1.0 + 0.2 * c.rng.Unit(), 1);
  FieldInt(out, lowest->Glonass() ? 2 : 1);
  Field(out, "1");
  EndNmea(out, start);
}

// Time, position, a mode letter per system (GPS, GLONASS), satellites,
// HDOP, altitude, geoid separation, differential age and station, and the
// navigational status.
void WriteGns(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginTalker(c, "GN");
  FieldUtcTime(out, e);
  if (e.fix == FixKind::kNone) {
    out += ",,,,,NN,00,99.99,,,,,V";
  } else {
    const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
    FieldLatitudeLongitude(out, p.latitude, p.longitude);
    out += ',';
    out += ModeLetter(e.fix);
    out += TalkerOf(e) == "GN" ? ModeLetter(e.fix) : 'N';
    out += ',';
    AppendPadded(out, static_cast<std::uint32_t>(p.used), 2);
    FieldFixed(out, 0.5 + 6.0 / (p.used + 1), 2);
    FieldFixed(out, p.height, 3);
    FieldFixed(out, p.undulation, 3);
    if (p.stationId >= 0) {
      FieldFixed(out, p.differentialAge, 1);
      out += ',';
      AppendPadded(out, static_cast<std::uint32_t>(p.stationId), 4);
    } else {
      out += ",,";
    }
    Field(out, "S");
  }
  EndNmea(out, start);
}

// Time, GGA quality, the distance to the base, its north, east and up
// parts, the satellites used and the base's station number.
void WriteNtr(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginTalker(c, "GN");
  FieldUtcTime(out, e);
  FieldInt(out, GgaQuality(e.fix));
  const Enu offset = RoverFromBase(e);
  const double noise = e.fix == FixKind::kNone ? 0.0 : e.sigmaHorizontal;
  const double north = offset.north + noise * c.rng.Noise();
  const double east = offset.east + noise * c.rng.Noise();
  const double up = offset.up + noise * 1.8 * c.rng.Noise();
  FieldFixed(out, std::sqrt(north * north + east * east + up * up), 3);
  FieldFixed(out, north, 3);
  FieldFixed(out, east, 3);
  FieldFixed(out, up, 3);
  FieldInt(out, e.SatellitesInSolution());
  out += ',';
  AppendPadded(out, static_cast<std::uint32_t>(e.stationId), 4);
  EndNmea(out, start);
}

// The board's RTK sentence: time, position, ellipsoidal height,
// undulation, the solution's type in words and the satellites used. Its
// type stands one character later than a standard sentence's.
void WriteRtkSentence(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  std::string& out = c.out;
  const std::size_t start = BeginTalker(c, "GNX");
  FieldUtcTime(out, e);
  if (e.fix == FixKind::kNone) {
    out += ",,,,,,,NONE";
  } else {
    const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
    FieldLatitudeLongitude(out, p.latitude, p.longitude);
    FieldFixed(out, p.height + p.undulation, 4);
    FieldFixed(out, p.undulation, 4);
    Field(out, p.type);
  }
  FieldInt(out, e.SatellitesInSolution());
  EndNmea(out, start);
}

}  // namespace tarnlog::synth
