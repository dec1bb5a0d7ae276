// The position extractors: one row of a comma-separated table per usable
// sentence, plus the side effects the tables' readers rely on (sums,
// LastBestPos, ttff.txt, the XY grid tables, RTK run statistics).
#pragma once

#include <cstddef>

#include "extract/extraction_state.h"
#include "platform/files.h"

namespace tarnlog {

enum class PositionLog {
  kBestPos,          // BESTPOSA
  kBestPos1,         // BESTPOS1A
  kBestPos2,         // BESTPOS2A
  kBestPosBase2,     // BESTPOSBASE2A
  kBestGnssPos,      // BESTGNSSPOSA
  kRtkPos,           // RTKPOSA
  kRtkPos2,          // RTKPOS2A
  kRtkPosBase2,      // RTKPOSBASE2A
  kMatchedPos,       // MATCHEDPOSA
  kMatchedPos2,      // MATCHEDPOS2A
  kMatchedPosH,      // MATCHEDPOSHA
  kMatchedPosBase2,  // MATCHEDPOSBASE2A
  kPsrPos,           // PSRPOSA
  kPsrPos2,          // PSRPOS2A
  kMPsrPos,          // MPSRPOSA
  kPsrPosBase2,      // PSRPOSBASE2A
  kPppPos,           // PPPPOSA
  kMPppPos,          // MPPPPOSA
};

// Where a position extractor writes. A null or closed stream takes nothing.
struct PositionTables {
  OutFile* table = nullptr;
  OutFile* grid = nullptr;  // BstPosXY.txt for BESTPOSA, RtkPosXY.txt for RTKPOSA
  OutFile* ttff = nullptr;  // ttff.txt for RTKPOSA
};

// `sentence` is NUL-terminated and keeps its line end; `origin` is 0 for a
// native log and 1 for one normalised from a combined log.
void ExtractPosition(PositionLog log, const char* sentence, std::size_t length,
                     const PositionTables& tables, ExtractionState& state, int origin);

// BESTXYZA: position and velocity blocks; `mode` 0, 1 or 2 is the last column.
void ExtractBestXyz(const char* sentence, std::size_t length, OutFile* table, int mode);

}  // namespace tarnlog
