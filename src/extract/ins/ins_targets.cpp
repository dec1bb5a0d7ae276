#include "extract/ins/ins_extractors.h"
#include "extract/targets.h"

namespace tarnlog {

std::span<const TargetBinding> InsImuTargets() {
  using T = TableId;
  static constexpr TargetBinding kBindings[] = {
      {T::kInspva, ExtractInsPva},
      {T::kInspvax, ExtractInsPvax},
      {T::kDrpva, ExtractDrPva},
      {T::kImuAtt, ExtractImuAtt},
      {T::kGyrAtts, ExtractGyrAtts},
      {T::kRawGyr2, ExtractRawGyr2},
      {T::kInsAttCov, ExtractInsAttCov},
      {T::kRawMagx, ExtractRawMagx},
      {T::kRawImux, ExtractRawImuxRow},
      {T::kRawImu, ExtractRawImu},
      {T::kTimedWheelData, ExtractTimedWheelData},
  };
  return kBindings;
}

}  // namespace tarnlog
