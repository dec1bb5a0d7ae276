// Inertial, dead-reckoning, wheel and event logs, from the vehicle's motion:
// attitude and rates from the receiver model, raw sensor counts at fixed
// scale factors (0.25 mg and 0.01 deg/s per count, 10 nT per count for the
// magnetometer, a 1.96 m wheel with 1024 ticks).
#include <cmath>

#include "synthcap/message_writers.h"
#include "synthcap/sentence_frame.h"
#include "synthcap/solution_blocks.h"
#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr double kDegrees = 3.14159265358979323846 / 180.0;
constexpr double kGravity = 9.80665;
constexpr double kAccelerationPerCount = kGravity * 0.25e-3;
constexpr double kRatePerCount = 0.01;
constexpr double kWheelCircumference = 1.96;
constexpr int kTicksPerRevolution = 1024;

struct Velocity {
  double north, east, up;
};

Velocity VelocityOf(const ReceiverEpoch& e) {
  return {e.speed * std::cos(e.track * kDegrees), e.speed * std::sin(e.track * kDegrees),
          e.verticalSpeed};
}

const char* InsStatus(const ReceiverEpoch& e) {
  if (e.secondsSinceStart < 30.0) return "INS_ALIGNING";
  return e.fix == FixKind::kNone ? "INS_HIGH_VARIANCE" : "INS_SOLUTION_GOOD";
}

const char* InsPositionType(FixKind kind) {
  switch (kind) {
    case FixKind::kNarrowInt:
      return "INS_RTKFIXED";
    case FixKind::kNarrowFloat:
      return "INS_RTKFLOAT";
    case FixKind::kPsrDiff:
      return "INS_PSRDIFF";
    case FixKind::kSingle:
      return "INS_PSRSP";
    case FixKind::kNone:
      return "INS";
  }
  return "INS";
}

// The INS smooths the receiver's noise: a tenth of the fix's deviation.
void AppendInsPosition(WriterContext& c, bool ellipsoidal) {
  const ReceiverEpoch& e = c.epoch;
  const double sigma = (e.fix == FixKind::kNone ? 2.0 : e.sigmaHorizontal) * 0.1;
  FieldFixed(c.out, e.latitude + c.rng.Noise() * sigma / 111320.0, 11);
  FieldFixed(c.out, e.longitude + c.rng.Noise() * sigma / 111320.0, 11);
  FieldFixed(c.out, e.height + (ellipsoidal ? e.undulation : 0.0) + c.rng.Noise() * sigma, 4);
}

void AppendVelocityAndAttitude(WriterContext& c, int decimals) {
  const Velocity v = VelocityOf(c.epoch);
  for (const double component : {v.north, v.east, v.up})
    FieldFixed(c.out, component, 4);
  for (const double angle : c.epoch.attitude)
    FieldFixed(c.out, angle, decimals);
}

// Vehicle-frame accelerations (forward, right, down) and rates, in counts.
struct ImuCounts {
  std::int64_t acceleration[3];
  std::int64_t rate[3];
};

ImuCounts ImuCountsOf(const ReceiverEpoch& e, Rng& rng) {
  const double lateral = e.speed * e.angularRate[2] * kDegrees;
  const double accelerations[3] = {0.05 * rng.Noise(), lateral + 0.05 * rng.Noise(),
                                   -kGravity + 0.05 * rng.Noise()};
  ImuCounts counts;
  for (int i = 0; i < 3; ++i) {
    counts.acceleration[i] = std::llround(accelerations[i] / kAccelerationPerCount);
    counts.rate[i] = std::llround((e.angularRate[i] + 0.005 * rng.Noise()) / kRatePerCount);
  }
  return counts;
}

// Z, -Y and X of acceleration, then of rate.
void AppendImuCounts(std::string& out, const ImuCounts& counts) {
  for (const std::int64_t* triple : {counts.acceleration, counts.rate}) {
    FieldInt(out, triple[2]);
    FieldInt(out, -triple[1]);
    FieldInt(out, triple[0]);
  }
}

constexpr std::uint16_t kRawImuId = 268;
constexpr std::uint16_t kRawImuExtendedId = 1461;
constexpr std::uint32_t kImuStatus = 0x00000077;

// The six counts of a binary IMU frame, in the order of the ASCII logs.
void PutImuCounts(std::string& out, const ImuCounts& counts) {
  for (const std::int64_t* triple : {counts.acceleration, counts.rate}) {
    PutU32(out, static_cast<std::uint32_t>(triple[2]));
    PutU32(out, static_cast<std::uint32_t>(-triple[1]));
    PutU32(out, static_cast<std::uint32_t>(triple[0]));
  }
}

// RAWIMUB (week, seconds, status and the six counts) or RAWIMUXB (IMU
// information and type bytes, the week as a 16-bit word, then the same);
// `silent` writes a body of zeros, as an IMU that delivers nothing.
void WriteImuFrame(WriterContext& c, std::uint16_t id, bool silent) {
  constexpr std::size_t kBodyBytes = 40;
  const ReceiverEpoch& e = c.epoch;
  const ImuCounts counts = ImuCountsOf(e, c.rng);
  const std::size_t start = BeginBinaryFrame(c.out, id, e);
  if (silent) {
    c.out.append(kBodyBytes, '\0');
  } else {
    if (id == kRawImuExtendedId) {
      PutU8(c.out, 0);
      PutU8(c.out, 13);
      PutU16(c.out, static_cast<std::uint16_t>(e.week));
    } else {
      PutU32(c.out, static_cast<std::uint32_t>(e.week));
    }
    PutF64(c.out, e.Seconds());
    PutU32(c.out, kImuStatus);
    PutImuCounts(c.out, counts);
  }
  EndBinaryFrame(c.out, start);
}

}  // namespace

// Week, seconds, position, velocity, roll, pitch, azimuth, INS status.
void WriteInsPva(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, e.week);
  FieldFixed(c.out, e.Seconds(), 3);
  AppendInsPosition(c, true);
  AppendVelocityAndAttitude(c, 9);
  Field(c.out, InsStatus(e));
  EndLog(c, start);
}

// INS status, position type, position and undulation, velocity, attitude,
// the nine deviations, the extended status and the seconds since the last
// update.
void WriteInsPvaExtended(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const double sigma = (e.fix == FixKind::kNone ? 2.0 : e.sigmaHorizontal) * 0.1;
  const std::size_t start = BeginLog(c);
  c.out += InsStatus(e);
  Field(c.out, InsPositionType(e.fix));
  AppendInsPosition(c, false);
  FieldFixed(c.out, e.undulation, 4);
  AppendVelocityAndAttitude(c, 9);
  for (const double deviation :
       {sigma, sigma * 0.9, sigma * 1.8, 0.02, 0.02, 0.03, 0.01, 0.01, 0.05})
    FieldFixed(c.out, deviation, 4);
  FieldHex(c.out, 0x00000000u, 8);
  FieldInt(c.out, e.fix == FixKind::kNone ? static_cast<std::int64_t>(e.idle) % 60 : 0);
  EndLog(c, start);
}

// Status and position type, position, speed and track, velocity and
// attitude, three deviations, satellites, differential age and the three
// angular rates.
void WriteDeadReckoning(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const PositionSolution p = SolvePosition(SolutionFamily::kBest, e, c.rng);
  const Velocity v = VelocityOf(e);
  const std::size_t start = BeginLog(c);
  c.out += p.status;
  Field(c.out, p.type);
  FieldFixed(c.out, e.latitude, 11);
  FieldFixed(c.out, e.longitude, 11);
  FieldFixed(c.out, e.height, 4);
  FieldFixed(c.out, e.speed, 6);
  FieldFixed(c.out, e.track, 6);
  for (const double value : {v.north, v.east, v.up, e.attitude[0], e.attitude[1], e.attitude[2]})
    FieldFixed(c.out, value, 11);
  for (const double sigma : p.sigma)
    FieldFixed(c.out, sigma, 4);
  FieldInt(c.out, p.used);
  FieldFixed(c.out, p.differentialAge, 2);
  for (const double rate : e.angularRate)
    FieldFixed(c.out, rate, 7);
  EndLog(c, start);
}

// IMU information, IMU type, week, seconds, status and the six counts.
void WriteRawImuExtended(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const ImuCounts counts = ImuCountsOf(e, c.rng);
  const std::size_t start = BeginLog(c);
  c.out += "00,13";
  FieldInt(c.out, e.week);
  FieldFixed(c.out, e.Seconds(), 6);
  FieldHex(c.out, 0x00000077u, 8);
  AppendImuCounts(c.out, counts);
  EndLog(c, start);
}

// Week, seconds, status and the six counts.
void WriteRawImu(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const ImuCounts counts = ImuCountsOf(e, c.rng);
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, e.week);
  FieldFixed(c.out, e.Seconds(), 6);
  FieldHex(c.out, 0x00000077u, 8);
  AppendImuCounts(c.out, counts);
  EndLog(c, start);
}

// Sensor number, status, and the earth's field in the vehicle's axes.
void WriteRawMagnetometer(WriterContext& c) {
  const double heading = c.epoch.attitude[2] * kDegrees;
  const double horizontal = 2000.0, vertical = 4500.0;  // tens of nT
  const std::size_t start = BeginLog(c);
  c.out += "1";
  FieldHex(c.out, 0, 8);
  FieldInt(c.out, std::llround(horizontal * std::cos(heading) + 5.0 * c.rng.Noise()));
  FieldInt(c.out, std::llround(-horizontal * std::sin(heading) + 5.0 * c.rng.Noise()));
  FieldInt(c.out, std::llround(vertical + 5.0 * c.rng.Noise()));
  EndLog(c, start);
}

// Status, azimuth in hundredths of a degree, pitch and roll in degrees.
void WriteAttitude(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, e.fix == FixKind::kNone ? 0 : 1);
  FieldInt(c.out, std::llround(e.attitude[2] * 100.0));
  FieldFixed(c.out, e.attitude[1] + 0.02 * c.rng.Noise(), 3);
  FieldFixed(c.out, e.attitude[0] + 0.02 * c.rng.Noise(), 3);
  EndLog(c, start);
}

// Ticks per revolution, wheel velocity in ticks per second (whole and
// fractional), two reserved fields and the cumulative ticks.
void WriteTimedWheelData(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const double ticksPerSecond = e.speed / kWheelCircumference * kTicksPerRevolution;
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, kTicksPerRevolution);
  FieldInt(c.out, std::llround(ticksPerSecond));
  FieldFixed(c.out, ticksPerSecond, 3);
  c.out += ",0,0";
  FieldInt(c.out, std::llround(e.distance / kWheelCircumference * kTicksPerRevolution));
  EndLog(c, start);
}

// Status, speed in mm/s, distance in mm and direction (0 forward).
void WriteOdometer(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::size_t start = BeginLog(c);
  AppendInt(c.out, 1);
  FieldInt(c.out, std::llround(e.speed * 1000.0));
  FieldInt(c.out, std::llround(e.distance * 1000.0));
  Field(c.out, "0");
  EndLog(c, start);
}

// Source, status, a reserved field, week and millisecond of the velocity,
// north, east and up velocity with the speed, and their deviations.
void WriteVelocityData(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const Velocity v = VelocityOf(e);
  const double sigma = e.fix == FixKind::kNone ? 0.5 : 0.02;
  const std::size_t start = BeginLog(c);
  c.out += "1,0,0";
  FieldInt(c.out, e.week);
  FieldInt(c.out, e.millisecond);
  for (const double value : {v.north, v.east, v.up, e.speed})
    FieldFixed(c.out, value + 0.01 * c.rng.Noise(), 6);
  for (int i = 0; i < 4; ++i)
    FieldFixed(c.out, sigma * (1.0 + 0.1 * c.rng.Unit()), 6);
  EndLog(c, start);
}

// A time mark 37 ms before the epoch: source, polarity, week, whole seconds
// and nanoseconds, the event count, then the position block.
void WriteEvent(WriterContext& c) {
  const ReceiverEpoch& e = c.epoch;
  const std::uint32_t millisecond = e.millisecond >= 37 ? e.millisecond - 37 : e.millisecond;
  const std::size_t start = BeginLog(c);
  c.out += "1,1";
  FieldInt(c.out, e.week);
  FieldInt(c.out, millisecond / 1000);
  FieldInt(c.out, millisecond % 1000 * 1000000 + c.rng.Between(0, 999999));
  FieldInt(c.out, static_cast<std::int64_t>(e.secondsSinceStart) + 1);
  c.out += ',';
  AppendPositionBlock(c.out, SolvePosition(SolutionFamily::kBest, e, c.rng));
  EndLog(c, start);
}

void WriteRawImuBinary(WriterContext& c) {
  WriteImuFrame(c, kRawImuId, false);
}
void WriteSilentRawImuBinary(WriterContext& c) {
  WriteImuFrame(c, kRawImuId, true);
}
void WriteRawImuExtendedBinary(WriterContext& c) {
  WriteImuFrame(c, kRawImuExtendedId, false);
}
void WriteSilentRawImuExtendedBinary(WriterContext& c) {
  WriteImuFrame(c, kRawImuExtendedId, true);
}

}  // namespace tarnlog::synth
