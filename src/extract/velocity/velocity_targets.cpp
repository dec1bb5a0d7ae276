#include "extract/targets.h"

namespace tarnlog {

std::span<const TargetBinding> VelocityDopTargets() {
  return {};
}

}  // namespace tarnlog

namespace tarnlog {

void ExtractCombinedVelocity(const char*, const NormalisedSentence&, OutFile*, ExtractionState&) {}

}  // namespace tarnlog
