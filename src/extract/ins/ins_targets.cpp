#include "extract/targets.h"

namespace tarnlog {

std::span<const TargetBinding> InsImuTargets() {
  return {};
}

}  // namespace tarnlog
