#include "extract/undispatched/range_smoothing.h"

#include <cstring>

#include "extract/range/observation_decoder.h"
#include "extract/undispatched/long_log.h"

namespace tarnlog {
namespace {

constexpr double kSpeedOfLight = 299792458.0;
constexpr double kGpsL1 = 1575.42e6;
constexpr double kGlonassL1 = 1602.0e6;
constexpr double kGlonassL1Step = 0.5625e6;
constexpr double kBeiDouB1 = 1561.098e6;
constexpr double kSecondsPerWeek = 604800.0;
constexpr int kHatchWindow = 100;
constexpr int kBeiDouFileBase = 160;

// Where a channel goes: its file number and wavelength, or a message.
struct Route {
  int file = -1;  // -1: not a smoothed signal
  double wavelength = 0.0;
  const char* error = nullptr;
};

Route RouteOf(const ObservationChannel& ch) {
  Route r;
  switch (ch.system) {
    case SatelliteSystem::kGps:
      if (ch.signalType != 0) return r;
      if (ch.prn < 1 || ch.prn > 32) return {-1, 0.0, "error gps rangsmooth\n"};
      return {ch.prn, kSpeedOfLight / kGpsL1, nullptr};
    case SatelliteSystem::kGlonass:
      if (ch.signalType != 0) return r;
      if (ch.prn < 38 || ch.prn > 61) return {-1, 0.0, "error glonass rang\n"};
      return {ch.prn, kSpeedOfLight / (kGlonassL1 + (ch.frequency - 7.0) * kGlonassL1Step),
              nullptr};
    case SatelliteSystem::kBeiDou:
      // B1I with D1 (signal 0) or D2 (signal 4) navigation data.
      if (ch.signalType != 0 && ch.signalType != 4) return r;
      if (ch.prn < 1 || ch.prn > 63) return {-1, 0.0, "error BD rang\n"};
      return {kBeiDouFileBase + ch.prn, kSpeedOfLight / kBeiDouB1, nullptr};
    default:
      return r;
  }
}

OutFile& FileOf(RangeSmoothing& s, int number) {
  OutFile& file = s.files[number];
  if (!file.IsOpen()) {
    file.Open(s.folder + "//G" + std::to_string(number) + ".rg", FileMode::kBinary);
  }
  return file;
}

void SmoothChannel(const LongHeader& h, const ObservationChannel& ch, const Route& route,
                   RangeSmoothing& s) {
  SmoothingTrack& t = s.tracks[route.file];
  const double carrier = -ch.adr * route.wavelength;
  const double interval =
      t.started ? (static_cast<double>(h.week) - t.week) * kSecondsPerWeek + (h.seconds - t.seconds)
                : 0.0;
  const bool restart = !t.started || interval <= 0.0 || ch.lockTime < t.lockTime || !ch.phaseLocked;
  double pseudorangeChange = 0.0;
  double carrierChange = 0.0;
  if (restart) {
    t.epochs = 1;
    t.smoothed = ch.pseudorange;
  } else {
    pseudorangeChange = ch.pseudorange - t.pseudorange;
    carrierChange = carrier - t.carrier;
    if (t.epochs < kHatchWindow) ++t.epochs;
    const double n = t.epochs;
    t.smoothed = ch.pseudorange / n + (n - 1.0) / n * (t.smoothed + carrierChange);
  }
  FileOf(s, route.file)
      .Printf("%d,%.3lf,%.3lf,%i,%.4lf,%.4lf,%.4lf,%.4lf,%.4lf,%.4lf,%.4lf, %lf, %lf, %lX\n",
              h.week, h.seconds, restart ? 0.0 : interval, ch.prn, ch.pseudorange, carrier,
              -ch.doppler * route.wavelength, pseudorangeChange, carrierChange,
              pseudorangeChange - carrierChange, t.smoothed, ch.cn0, ch.lockTime,
              static_cast<unsigned long>(ch.status));
  t.started = true;
  t.week = h.week;
  t.seconds = h.seconds;
  t.pseudorange = ch.pseudorange;
  t.carrier = carrier;
  t.lockTime = ch.lockTime;
}

}  // namespace

bool SmoothRanges(const char* sentence, RangeSmoothing& smoothing, OutFile& messages) {
  LongLog log;
  if (!OpenLongLog(sentence, "RANGEA", &log)) return false;
  ObservationSet set;
  if (!DecodeObservations(ObservationLayout::kRange, sentence, std::strlen(sentence), &set)) {
    return false;
  }
  for (int i = 0; i < set.channelCount; ++i) {
    const ObservationChannel& ch = set.channels[i];
    const Route route = RouteOf(ch);
    if (route.error != nullptr) {
      messages.Write(route.error);
    } else if (route.file >= 0) {
      SmoothChannel(log.header, ch, route, smoothing);
    }
  }
  return true;
}

}  // namespace tarnlog
