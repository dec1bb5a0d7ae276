#include "extract/status/status_extractors.h"
#include "extract/targets.h"

namespace tarnlog {

std::span<const TargetBinding> StatusTargets() {
  using T = TableId;
  static constexpr TargetBinding kBindings[] = {
      {T::kHwStatus, ExtractHwStatus},
      {T::kEnvInfo, ExtractEnvInfo},
      {T::kRxStatus, ExtractRxStatus},
      {T::kSlantAp, ExtractSlantAp},
      {T::kFreqJamStatus, ExtractFreqJamStatus},
      {T::kMowStatus, ExtractMowStatus},
      {T::kTropInfo, ExtractTropInfo},
      {T::kPpsStatus, ExtractPpsStatus},
      {T::kMatchBias, ExtractBase2Bias},
      {T::kOdometer, ExtractOdometer},
      {T::kVelData, ExtractVelData},
      {T::kSppNavEnu, ExtractSppNavEnu},
      {T::kTpfInfo, ExtractTpInfo},
      {T::kTsvNum, ExtractTsvNum},
      {T::kAlignBslnEnu, ExtractAlignBaseline},
      {T::kBslnXyz, ExtractBaselineXyz},
      {T::kClkDt, ExtractClockData},
      {T::kAgric, ExtractAgric},
      {T::kBaseInfo, ExtractBaseInfo},
      {T::kPerfstat, ExtractPerfstat},
      {T::kSlantStatus, ExtractSlantStatus},
      {T::kEvent, ExtractEventAll},
      {T::kCangle, ExtractCarAngle},
      {T::kFangle, ExtractCarAngle},
      {T::kAngVel, ExtractCarAngle},
  };
  return kBindings;
}

}  // namespace tarnlog
