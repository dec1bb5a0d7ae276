// The channel tracking status word that closes every observation of a
// RANGEA, BASERANGEA, RANGEHA, OBSVMA and OBSVMHA log.
//
// Bit layout as the receiver maker documents it (NovAtel OEM7 Commands and
// Logs Reference Manual, RANGE log, table "Channel Tracking Status"; the
// maker's own OBSVM log carries the same word):
//   0-4   tracking state            5-9   channel number
//   10    phase lock                11    parity known
//   12    code locked               13-15 correlator type
//   16-18 satellite system          19    reserved
//   20    grouping                  21-25 signal type
//   26    reserved                  27    primary L1 channel
//   28    carrier phase measurement 29    digital filtering
//   30    PRN lock                  31    channel assignment (forced)
#pragma once

#include <cstdint>

namespace tarnlog {

// Bits 16-18, in the word's own numbering.
enum class SatelliteSystem : std::uint8_t {
  kGps = 0,
  kGlonass = 1,
  kSbas = 2,
  kGalileo = 3,
  kBeiDou = 4,
  kQzss = 5,
  kNavic = 6,
  kOther = 7,
};
inline constexpr int kSatelliteSystemCount = 8;

struct TrackingStatus {
  int trackingState = 0;
  int channel = 0;
  bool phaseLocked = false;
  bool parityKnown = false;
  bool codeLocked = false;
  int correlator = 0;
  SatelliteSystem system = SatelliteSystem::kGps;
  bool grouped = false;
  // Numbered per system: 0 is L1 C/A for GPS, GLONASS, SBAS and QZSS and
  // B1I (D1) for BeiDou; 2 is E1C for Galileo.
  int signalType = 0;
  bool primaryL1 = false;
  bool phaseMeasurement = false;
  bool digitalFilter = false;
  bool prnLocked = false;
  bool forcedAssignment = false;
};

constexpr TrackingStatus DecodeTrackingStatus(std::uint32_t word) {
  TrackingStatus s;
  s.trackingState = static_cast<int>(word & 0x1Fu);
  s.channel = static_cast<int>((word >> 5) & 0x1Fu);
  s.phaseLocked = (word >> 10) & 1u;
  s.parityKnown = (word >> 11) & 1u;
  s.codeLocked = (word >> 12) & 1u;
  s.correlator = static_cast<int>((word >> 13) & 0x7u);
  s.system = static_cast<SatelliteSystem>((word >> 16) & 0x7u);
  s.grouped = (word >> 20) & 1u;
  s.signalType = static_cast<int>((word >> 21) & 0x1Fu);
  s.primaryL1 = (word >> 27) & 1u;
  s.phaseMeasurement = (word >> 28) & 1u;
  s.digitalFilter = (word >> 29) & 1u;
  s.prnLocked = (word >> 30) & 1u;
  s.forcedAssignment = (word >> 31) & 1u;
  return s;
}

}  // namespace tarnlog
