#include "synthcap/receiver_model.h"

#include <algorithm>
#include <cmath>

namespace tarnlog::synth {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegrees = kPi / 180.0;
constexpr double kEarthRadius = 6371000.0;
constexpr int kMinSatellites = 10;  // channel pairs: 20 to 40 RANGEA channels
constexpr int kMaxSatellites = 20;

struct FixChoice {
  FixKind kind;
  double weight;
  double minSeconds, maxSeconds;
  double minSigma, maxSigma;  // horizontal, metres
  double minAge, maxAge;      // differential age, seconds
};

// A survey vehicle's day: mostly fixed RTK, stretches of single and
// differential code positions, some float, and short outages.
constexpr FixChoice kFixChoices[] = {
    {FixKind::kNarrowInt, 0.45, 3, 40, 0.008, 0.03, 0.5, 2.5},
    {FixKind::kSingle, 0.20, 3, 30, 1.0, 3.5, 0, 0},
    {FixKind::kPsrDiff, 0.17, 3, 30, 0.4, 1.2, 1.0, 15.0},
    {FixKind::kNarrowFloat, 0.12, 2, 20, 0.1, 0.6, 0.5, 2.5},
    {FixKind::kNone, 0.06, 1, 6, 0, 0, 0, 0},
};

double Clamp(double value, double low, double high) {
  return std::min(high, std::max(low, value));
}

}  // namespace

std::string_view PositionTypeText(FixKind kind) {
  switch (kind) {
    case FixKind::kNone:
      return "NONE";
    case FixKind::kSingle:
      return "SINGLE";
    case FixKind::kPsrDiff:
      return "PSRDIFF";
    case FixKind::kNarrowFloat:
      return "NARROW_FLOAT";
    case FixKind::kNarrowInt:
      return "NARROW_INT";
  }
  return "NONE";
}

std::string_view SolutionStatusText(FixKind kind) {
  return kind == FixKind::kNone ? "INSUFFICIENT_OBS" : "SOL_COMPUTED";
}

int ReceiverEpoch::SatellitesInSolution() const {
  if (fix == FixKind::kNone) return 0;
  int count = 0;
  for (const Satellite& satellite : satellites)
    count += satellite.elevation > 10.0 ? 1 : 0;
  return count;
}

ReceiverModel::ReceiverModel(std::uint64_t seed, int rateHz) : rng_(seed), rateHz_(rateHz) {
  startWeek_ = 2100 + rng_.Between(0, 400);
  // Start on a whole second somewhere in the week, leaving a day before the
  // rollover so that short captures stay in one week.
  startMillisecond_ = static_cast<std::uint64_t>(rng_.Between(0, 604800 - 86400)) * 1000;
  epoch_.latitude = rng_.Uniform(-60.0, 70.0);
  epoch_.longitude = rng_.Uniform(-179.0, 179.0);
  epoch_.height = rng_.Uniform(-20.0, 2500.0);
  epoch_.undulation = rng_.Uniform(-40.0, 50.0);
  epoch_.track = rng_.Uniform(0.0, 360.0);
  epoch_.stationId = rng_.Between(0, 4095);
  // Placed from the station number, so that the motion's random stream stays
  // as it was without a base.
  const double baseNorth = (epoch_.stationId % 97 - 48) * 60.0;
  const double baseEast = (epoch_.stationId / 97 % 61 - 30) * 80.0;
  epoch_.baseLatitude = epoch_.latitude + baseNorth / kEarthRadius / kDegrees;
  epoch_.baseLongitude =
      epoch_.longitude +
      baseEast / (kEarthRadius * std::cos(epoch_.latitude * kDegrees)) / kDegrees;
  epoch_.baseHeight = epoch_.height - 12.5;
  const bool withGlonass = rng_.Chance(0.7);
  const int count = rng_.Between(kMinSatellites, kMaxSatellites);
  while (static_cast<int>(epoch_.satellites.size()) < count) {
    Satellite satellite = NewSatellite(static_cast<int>(epoch_.satellites.size()));
    if (!withGlonass && satellite.Glonass()) continue;
    epoch_.satellites.push_back(satellite);
  }
}

const ReceiverEpoch& ReceiverModel::Advance() {
  const double dt = 1.0 / rateHz_;
  StepTime();
  if (started_) {
    StepMotion(dt);
    StepSatellites(dt);
  }
  StepSolution(dt);
  started_ = true;
  return epoch_;
}

void ReceiverModel::StepTime() {
  if (started_) ++epoch_.index;
  // Rounded from the epoch count so that odd rates (3 Hz) never drift.
  const std::uint64_t elapsed = (epoch_.index * 1000 + rateHz_ / 2) / rateHz_;
  const std::uint64_t total = startMillisecond_ + elapsed;
  const std::uint32_t previousSecond = epoch_.millisecond / 1000;
  epoch_.week = startWeek_ + static_cast<int>(total / kMillisecondsPerWeek);
  epoch_.millisecond = static_cast<std::uint32_t>(total % kMillisecondsPerWeek);
  epoch_.secondStart = !started_ || epoch_.millisecond / 1000 != previousSecond;
  epoch_.secondsSinceStart = elapsed / 1000.0;
  epoch_.idle = Clamp(started_ ? epoch_.idle + rng_.Noise() : rng_.Uniform(40.0, 90.0), 5.0, 99.0);
}

void ReceiverModel::StepMotion(double dt) {
  ReceiverEpoch& e = epoch_;
  e.speed =
      Clamp(e.speed + rng_.Noise() * 0.8 * dt + (rng_.Chance(0.001) ? -e.speed : 0.0), 0.0, 30.0);
  const double turnRate = rng_.Noise() * 4.0;  // degrees per second
  e.track = std::fmod(e.track + turnRate * dt + 360.0, 360.0);
  e.verticalSpeed = Clamp(e.verticalSpeed * 0.9 + rng_.Noise() * 0.05, -2.0, 2.0);
  const double north = e.speed * std::cos(e.track * kDegrees) * dt;
  const double east = e.speed * std::sin(e.track * kDegrees) * dt;
  e.latitude = Clamp(e.latitude + north / kEarthRadius / kDegrees, -80.0, 80.0);
  e.longitude += east / (kEarthRadius * std::cos(e.latitude * kDegrees)) / kDegrees;
  if (e.longitude > 180.0) e.longitude -= 360.0;
  if (e.longitude < -180.0) e.longitude += 360.0;
  e.height += e.verticalSpeed * dt;
  e.distance += e.speed * dt;
  e.attitude[0] = Clamp(e.attitude[0] * 0.95 + rng_.Noise() * 0.2, -15.0, 15.0);
  e.attitude[1] = Clamp(e.attitude[1] * 0.95 + rng_.Noise() * 0.2, -15.0, 15.0);
  e.attitude[2] = e.track;
  e.angularRate[0] = rng_.Noise() * 0.5;
  e.angularRate[1] = rng_.Noise() * 0.5;
  e.angularRate[2] = turnRate;
}

void ReceiverModel::StepSolution(double dt) {
  fixRemaining_ -= dt;
  if (fixRemaining_ > 0.0) return;
  double pick = rng_.Unit();
  const FixChoice* choice = &kFixChoices[0];
  for (const FixChoice& candidate : kFixChoices) {
    choice = &candidate;
    if (pick < candidate.weight) break;
    pick -= candidate.weight;
  }
  fixRemaining_ = rng_.Uniform(choice->minSeconds, choice->maxSeconds);
  epoch_.fix = choice->kind;
  epoch_.sigmaHorizontal = rng_.Uniform(choice->minSigma, choice->maxSigma);
  epoch_.sigmaVertical = epoch_.sigmaHorizontal * rng_.Uniform(1.5, 2.4);
  epoch_.differentialAge = rng_.Uniform(choice->minAge, choice->maxAge);
}

Satellite ReceiverModel::NewSatellite(int channel) {
  Satellite satellite;
  for (;;) {
    const bool glonass = rng_.Chance(0.35);
    satellite.prn = glonass ? rng_.Between(38, 61) : rng_.Between(1, 32);
    const bool taken = std::any_of(epoch_.satellites.begin(), epoch_.satellites.end(),
                                   [&](const Satellite& s) { return s.prn == satellite.prn; });
    if (!taken) break;
  }
  satellite.gloFrequency = satellite.Glonass() ? rng_.Between(0, 13) : 0;
  satellite.channel = channel;
  satellite.range = rng_.Uniform(20.0e6, 25.5e6);
  satellite.rangeRate = rng_.Uniform(-800.0, 800.0);
  satellite.cnoL1 = rng_.Uniform(34.0, 52.0);
  satellite.cnoL2 = satellite.cnoL1 - rng_.Uniform(4.0, 9.0);
  satellite.lockTime = rng_.Uniform(0.0, 5000.0);
  satellite.adrOffsetL1 = rng_.Uniform(-1.0e6, 1.0e6);
  satellite.adrOffsetL2 = rng_.Uniform(-1.0e6, 1.0e6);
  satellite.elevation = rng_.Uniform(5.0, 88.0);
  return satellite;
}

void ReceiverModel::StepSatellites(double dt) {
  std::vector<Satellite>& satellites = epoch_.satellites;
  for (Satellite& s : satellites) {
    s.range += s.rangeRate * dt;
    s.rangeRate += rng_.Noise() * 0.05;
    s.lockTime += dt;
    s.cnoL1 = Clamp(s.cnoL1 + rng_.Noise() * 0.1, 25.0, 55.0);
    s.cnoL2 = Clamp(s.cnoL2 + rng_.Noise() * 0.1, 20.0, 50.0);
    s.elevation = Clamp(s.elevation + rng_.Noise() * 0.001, 1.0, 89.0);
  }
  if (!epoch_.secondStart) return;
  // Once a second a satellite may set or rise.
  const int count = static_cast<int>(satellites.size());
  if (rng_.Chance(0.05) && count > kMinSatellites) {
    satellites.erase(satellites.begin() + rng_.Below(static_cast<std::uint32_t>(count)));
  } else if (rng_.Chance(0.05) && count < kMaxSatellites) {
    int channel = 0;
    while (std::any_of(satellites.begin(), satellites.end(),
                       [&](const Satellite& s) { return s.channel == channel; })) {
      ++channel;
    }
    const bool withGlonass = std::any_of(satellites.begin(), satellites.end(),
                                         [](const Satellite& s) { return s.Glonass(); });
    Satellite satellite = NewSatellite(channel);
    if (withGlonass || !satellite.Glonass()) {
      satellite.lockTime = 0.0;
      satellites.push_back(satellite);
    }
  }
}

CivilTime UtcOf(int week, std::uint32_t millisecond) {
  const std::int64_t total =
      static_cast<std::int64_t>(week) * kMillisecondsPerWeek + millisecond - kLeapSeconds * 1000;
  const std::int64_t dayMs = 86400000;
  // Days since 1970-01-01; the GPS epoch 1980-01-06 is day 3657.
  std::int64_t days = total / dayMs + 3657;
  const std::int64_t ofDay = total % dayMs;
  // Civil date from a day count (the proleptic Gregorian calendar).
  days += 719468;
  const std::int64_t era = days / 146097;
  const std::int64_t dayOfEra = days - era * 146097;
  const std::int64_t yearOfEra =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const std::int64_t monthIndex = (5 * dayOfYear + 2) / 153;
  CivilTime time;
  time.day = static_cast<int>(dayOfYear - (153 * monthIndex + 2) / 5 + 1);
  time.month = static_cast<int>(monthIndex < 10 ? monthIndex + 3 : monthIndex - 9);
  time.year = static_cast<int>(yearOfEra + era * 400 + (time.month <= 2 ? 1 : 0));
  time.hour = static_cast<int>(ofDay / 3600000);
  time.minute = static_cast<int>(ofDay / 60000 % 60);
  time.millisecond = static_cast<int>(ofDay % 60000);
  return time;
}

void GeodeticToEcef(double latitudeDeg, double longitudeDeg, double height, double xyz[3]) {
  constexpr double kSemiMajor = 6378137.0;
  constexpr double kFlattening = 1.0 / 298.257223563;
  constexpr double kE2 = kFlattening * (2.0 - kFlattening);
  const double lat = latitudeDeg * kDegrees;
  const double lon = longitudeDeg * kDegrees;
  const double sinLat = std::sin(lat);
  const double n = kSemiMajor / std::sqrt(1.0 - kE2 * sinLat * sinLat);
  xyz[0] = (n + height) * std::cos(lat) * std::cos(lon);
  xyz[1] = (n + height) * std::cos(lat) * std::sin(lon);
  xyz[2] = (n * (1.0 - kE2) + height) * sinLat;
}

}  // namespace tarnlog::synth
