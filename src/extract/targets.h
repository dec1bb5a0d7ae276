// The extractor families and the chain rows they serve. A row that names no
// handler of its own takes the handler bound to its main table here; each
// family lists its bindings in its own folder.
#pragma once

#include <span>

#include "extract/dispatch.h"
#include "extract/normalise.h"

namespace tarnlog {

struct TargetBinding {
  TableId table;  // the row's main table (tables[0])
  DispatchHandler handler;
};

std::span<const TargetBinding> VelocityDopTargets();  // velocity/
std::span<const TargetBinding> RangeTargets();        // range/
std::span<const TargetBinding> NmeaTargets();         // nmea/
std::span<const TargetBinding> InsImuTargets();       // ins/
std::span<const TargetBinding> StatusTargets();       // status/

// The velocity half of a split combined log ("BESTVELA", "PSRVELA",
// "RTKVELA", "BESTVEL2A", "PSRVEL2A", "RTKVEL2A"), written in the combined
// form (mode 1) into `table`.
void ExtractCombinedVelocity(const char* velocityName, const NormalisedSentence& velocity,
                             OutFile* table, ExtractionState& state);

}  // namespace tarnlog
