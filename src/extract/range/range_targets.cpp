#include "extract/range/range_extractors.h"
#include "extract/targets.h"

namespace tarnlog {
namespace {

template <RangeLog kLog>
void RunRange(const DispatchContext& c) {
  ExtractRange(kLog, c.sentence, c.length, c.Table(0), c.Table(1), c.state.range);
}

// The chain names the frequency table of -1 (-2) beside Obsvm.txt
// (Obsvmh.txt); these logs write no frequency row.
template <ObsvmLog kLog>
void RunObsvm(const DispatchContext& c) {
  ExtractObsvm(kLog, c.sentence, c.length, c.Table(0));
}

constexpr TargetBinding kBindings[] = {
    {TableId::kRange, RunRange<RangeLog::kRange>},
    {TableId::kBaseRange, RunRange<RangeLog::kBaseRange>},
    {TableId::kRangeH, RunRange<RangeLog::kRangeH>},
    {TableId::kObsvm, RunObsvm<ObsvmLog::kObsvm>},
    {TableId::kObsvmh, RunObsvm<ObsvmLog::kObsvmH>},
};

}  // namespace

std::span<const TargetBinding> RangeTargets() {
  return kBindings;
}

}  // namespace tarnlog
