// The range extractors: one observation log reduced to one row of counts in
// its observation table and, for the RANGE logs, one summary row in its
// frequency table (columns in observation_decoder.h).
#pragma once

#include <cstddef>

#include "extract/range/range_state.h"
#include "platform/files.h"

namespace tarnlog {

enum class RangeLog {
  kRange,      // RANGEA
  kBaseRange,  // BASERANGEA
  kRangeH,     // RANGEHA: its frequency row has no multi-signal satellites
};

// Rows only when the header's idle value is above 0 and at most 100; the
// header's epoch is stored in `state` either way. A null or closed stream
// takes nothing.
void ExtractRange(RangeLog log, const char* sentence, std::size_t length, OutFile* table,
                  OutFile* frequencies, RangeState& state);

enum class ObsvmLog {
  kObsvm,   // OBSVMA
  kObsvmH,  // OBSVMHA
};

// The maker's own observation log with its compact header: one row, with no
// idle test; a count of 0 gives a row of zeros.
void ExtractObsvm(ObsvmLog log, const char* sentence, std::size_t length, OutFile* table);

}  // namespace tarnlog
