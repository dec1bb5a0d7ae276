#include "extract/targets.h"

namespace tarnlog {

std::span<const TargetBinding> NmeaTargets() {
  return {};
}

}  // namespace tarnlog
