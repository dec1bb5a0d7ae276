// The smoothing form of RANGEA: one file per satellite, "<folder>//G<n>.rg",
// with a row per epoch of the satellite's first civil signal (GPS L1 C/A,
// GLONASS L1 C/A, BeiDou B1I) and the differences to the satellite's prior
// epoch. n is the PRN for GPS (1-32) and GLONASS (38-61, slot + 37) and
// 160 + PRN for BeiDou (161-223), so that no two satellites share a file.
//
// Row: week, seconds, interval since the satellite's prior row, PRN,
// pseudorange, carrier range (-ADR x wavelength), range rate (-Doppler x
// wavelength), pseudorange change, carrier range change, their difference
// (code minus carrier), the carrier-smoothed pseudorange (a Hatch filter
// over up to 100 epochs), C/N0, lock time and the tracking status word.
// The smoothing starts over, with interval and changes 0, on a satellite's
// first epoch, when time doesn't advance, when the lock time falls, or
// when the phase isn't locked.
#pragma once

#include <array>
#include <string>

#include "platform/files.h"

namespace tarnlog {

inline constexpr int kSmoothingFiles = 224;  // file numbers 0-223

struct SmoothingTrack {
  bool started = false;
  int week = 0;
  double seconds = 0.0;
  double pseudorange = 0.0;
  double carrier = 0.0;
  double lockTime = 0.0;
  double smoothed = 0.0;
  int epochs = 0;
};

struct RangeSmoothing {
  std::string folder;  // files are opened there on a satellite's first row
  std::array<SmoothingTrack, kSmoothingFiles> tracks{};
  std::array<OutFile, kSmoothingFiles> files;
};

// One RANGEA. A channel of those signals whose PRN is out of its system's
// range writes "error gps rangsmooth\n", "error glonass rang\n" or
// "error BD rang\n" into `messages` instead. False when the sentence isn't a
// readable RANGEA.
bool SmoothRanges(const char* sentence, RangeSmoothing& smoothing, OutFile& messages);

}  // namespace tarnlog
