// One writer per message kind. Each appends exactly one complete sentence
// (or binary frame) for the epoch to `out`. Writers of a family of logs
// that share a body take the log's name and header form from the context,
// so that one writer serves, say, every position log of the RTK family.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "synthcap/prng.h"
#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

enum class SentenceForm { kLongLog, kCompactLog, kBriefLog, kNmea, kBinary };

struct WriterContext {
  const ReceiverEpoch& epoch;
  Rng& rng;  // measurement noise
  std::string& out;
  std::string_view name;  // "BESTPOSA"; for NMEA the sentence type, "GGA"
  SentenceForm form;
};

using MessageWriter = void (*)(WriterContext&);

// The header of the context's form with its name ('#', '%' logs only), and
// the CRC tail that closes it. BeginLog returns the sentence's start.
std::size_t BeginLog(const WriterContext& c);
void EndLog(const WriterContext& c, std::size_t start);

// Position, velocity, DOP, XYZ and time logs, by solution family
// (long_logs.cpp).
void WriteBestPosition(WriterContext& c);
void WriteRtkPosition(WriterContext& c);
void WritePsrPosition(WriterContext& c);
void WritePppPosition(WriterContext& c);
void WriteBestVelocity(WriterContext& c);
void WriteRtkVelocity(WriterContext& c);
void WritePsrVelocity(WriterContext& c);
void WriteDop(WriterContext& c);           // gdop to tdop, cut-off, the PRNs
void WriteSatelliteDop(WriterContext& c);  // the maker's seven-DOP body
void WriteXyz(WriterContext& c);
void WriteTime(WriterContext& c);

// Combined position-and-velocity logs (compact_logs.cpp).
void WriteBestNav(WriterContext& c);
void WriteAdrNav(WriterContext& c);
void WriteSppNav(WriterContext& c);
void WritePppNav(WriterContext& c);
void WriteClockData(WriterContext& c);

// Observation logs (observation_logs.cpp).
void WriteRange(WriterContext& c);
void WriteBaseRange(WriterContext& c);
void WriteHeadingRange(WriterContext& c);
void WriteObservations(WriterContext& c);
void WriteHeadingObservations(WriterContext& c);

// NMEA (nmea_logs.cpp, nmea_extra_logs.cpp).
void WriteGga(WriterContext& c);
void WriteHeadingGga(WriterContext& c);
void WriteBase2Gga(WriterContext& c);
void WriteRmc(WriterContext& c);
void WriteVtg(WriterContext& c);
void WriteGst(WriterContext& c);
void WriteGbs(WriterContext& c);
void WriteGns(WriterContext& c);
void WriteNtr(WriterContext& c);
void WriteRtkSentence(WriterContext& c);

// Brief '%' logs (brief_logs.cpp).
void WriteCarAngle(WriterContext& c);
void WriteAngularVelocity(WriterContext& c);
void WriteFilteredAngle(WriterContext& c);
void WriteRawGyro(WriterContext& c);
void WriteAttitudeCovariance(WriterContext& c);

// Receiver housekeeping (status_logs.cpp).
void WriteRxStatus(WriterContext& c);
void WriteHwStatus(WriterContext& c);
void WriteEnvInfo(WriterContext& c);
void WriteJamStatus(WriterContext& c);
void WriteMowerStatus(WriterContext& c);
void WriteTroposphere(WriterContext& c);
void WritePpsStatus(WriterContext& c);
void WriteBaseInfo(WriterContext& c);
void WriteSlantStatus(WriterContext& c);
void WritePerformance(WriterContext& c);
void WriteTimePulseInfo(WriterContext& c);
void WriteSatelliteCounts(WriterContext& c);

// Inertial, wheel and event logs (ins_logs.cpp).
void WriteInsPva(WriterContext& c);
void WriteInsPvaExtended(WriterContext& c);
void WriteDeadReckoning(WriterContext& c);
void WriteRawImuExtended(WriterContext& c);
void WriteRawImu(WriterContext& c);
void WriteRawMagnetometer(WriterContext& c);
void WriteAttitude(WriterContext& c);  // compact or brief
void WriteTimedWheelData(WriterContext& c);
void WriteOdometer(WriterContext& c);
void WriteVelocityData(WriterContext& c);
void WriteEvent(WriterContext& c);

// Baselines and the maker's combined solutions (baseline_logs.cpp).
void WriteSlantAntenna(WriterContext& c);
void WriteEnuBaseline(WriterContext& c);
void WriteXyzBaseline(WriterContext& c);
void WriteBase2Bias(WriterContext& c);
void WriteSppEnu(WriterContext& c);
void WriteAgric(WriterContext& c);
void WritePvtSolution(WriterContext& c);

// Binary frames (binary_frames.cpp).
void WriteBestPosBinary(WriterContext& c);
void WriteRangeCompressedBinary(WriterContext& c);
// RANGEB (observation_logs.cpp) and the IMU frames RAWIMUB and RAWIMUXB
// (ins_logs.cpp); the silent forms carry a body of zeros.
void WriteRangeBinary(WriterContext& c);
void WriteRawImuBinary(WriterContext& c);
void WriteSilentRawImuBinary(WriterContext& c);
void WriteRawImuExtendedBinary(WriterContext& c);
void WriteSilentRawImuExtendedBinary(WriterContext& c);

}  // namespace tarnlog::synth
