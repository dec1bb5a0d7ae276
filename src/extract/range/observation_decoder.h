// One observation log turned into its channels, in one pass over the text,
// with the tallies that the range tables print. The RangePlot page decodes
// with the same function.
//
// Bodies behind the ';', a count and then per channel:
//   RANGEA, BASERANGEA, RANGEHA (10 fields): PRN/slot, GLONASS frequency
//     (number + 7), pseudorange, its deviation, carrier phase (ADR, cycles),
//     its deviation, Doppler (Hz), C/N0 (dB-Hz), lock time (s), tracking
//     status (hex).
//   OBSVMA, OBSVMHA (11 fields): system-frequency, PRN, pseudorange, carrier
//     phase, pseudorange deviation (cm), carrier phase deviation
//     (1/10000 cycle), Doppler, C/N0 (1/100 dB-Hz), reserved, lock time,
//     tracking status (hex). The scaled fields are brought to metres,
//     cycles and dB-Hz here.
// The satellite system, signal type and lock flags come from the tracking
// status word (tracking_status.h). A satellite is a system and PRN; its
// signal count is the number of its channels in the log.
//
// Columns of the observation row (the RANGEA, BASERANGEA and RANGEHA
// tables, and the middle of Obsvm.txt and Obsvmh.txt), behind the seconds,
// in ObservationCounts order:
//    1 channels read
//    2 channels with a C/N0 above 0
//    3 satellites
//    4 satellites tracked on more than one signal
//    5-12 satellites of GPS, GLONASS, SBAS, Galileo, BeiDou, QZSS, NavIC
//         and other systems
//   13 channels with the code locked
//   14 channels with the phase locked
//   15 channels with the parity known
// Obsvm.txt and Obsvmh.txt put the week in front and the header's idle
// value behind them.
//
// Columns of the frequency row (the frequency tables of RANGEA, BASERANGEA
// and RANGEHA):
// week, seconds, mean C/N0 of the channels with a C/N0 above 0, those
// channels, the channels of satellites tracked on more than one signal,
// then the satellites and the satellites on more than one signal
// (FreqhList.txt stops after the satellites).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "extract/range/tracking_status.h"

namespace tarnlog {

enum class ObservationLayout {
  kRange,  // RANGEA, BASERANGEA, RANGEHA
  kObsvm,  // OBSVMA, OBSVMHA
};

// More than any receiver tracks; a longer list is read this far.
inline constexpr int kMaxObservationChannels = 1024;

// Plain values only: the channel array of a set is left as it is until
// written, so that a decode costs the channels present and no more.
struct ObservationChannel {
  int prn;
  // RANGEA: the GLONASS frequency number + 7; OBSVM: its system-frequency
  // field.
  int frequency;
  double pseudorange;       // m
  double pseudorangeSigma;  // m
  double adr;               // cycles
  double adrSigma;          // cycles
  double doppler;           // Hz
  double cn0;               // dB-Hz
  double lockTime;          // s
  std::uint32_t status;     // the tracking status word
  SatelliteSystem system;
  std::uint8_t signalType;
  bool codeLocked;
  bool phaseLocked;
  bool parityKnown;
  std::uint16_t satellite;  // index into ObservationSet::satellites
};

struct ObservedSatellite {
  SatelliteSystem system;
  int prn;
  int signals;  // channels of this satellite in the log
};

struct ObservationTallies {
  int channels = 0;
  int positiveCn0 = 0;
  double cn0Sum = 0.0;  // over the channels with a C/N0 above 0
  int satellites = 0;
  int multiSignalSatellites = 0;
  int multiSignalChannels = 0;  // channels of those satellites
  int codeLocked = 0;
  int phaseLocked = 0;
  int parityKnown = 0;
  std::array<int, kSatelliteSystemCount> satellitesBySystem{};
  std::array<int, kSatelliteSystemCount> channelsBySystem{};

  double MeanCn0() const { return positiveCn0 > 0 ? cn0Sum / positiveCn0 : 0.0; }
};

struct ObservationSet {
  int declared = 0;       // the count the log gives
  bool complete = false;  // every declared channel was read
  int channelCount = 0;
  int satelliteCount = 0;
  ObservationTallies tallies;
  ObservationChannel channels[kMaxObservationChannels];
  ObservedSatellite satellites[kMaxObservationChannels];
};

// Decodes the channels behind the first ';' of `sentence` (NUL-terminated,
// `length` up to the NUL). Reading stops at the declared count, at the
// capacity, or at the first channel that isn't whole: a list shorter than
// its count gives the channels present. False when there is no ';' or no
// count behind it; the set is then empty.
// What a caller needs of each channel: everything, or only what the tallies
// count (PRN, C/N0 and the status word), with the measurements passed over
// as fields (left 0) so that the range tables of long captures stay cheap.
enum class ObservationDetail { kFull, kTallies };

bool DecodeObservations(ObservationLayout layout, const char* sentence, std::size_t length,
                        ObservationSet* set, ObservationDetail detail = ObservationDetail::kFull);

// The fifteen counts of the observation row, in column order.
inline constexpr int kObservationCountColumns = 15;
std::array<int, kObservationCountColumns> ObservationCounts(const ObservationTallies& t);

}  // namespace tarnlog
