// What the range extractors keep between sentences of a run and between runs.
#pragma once

namespace tarnlog {

struct RangeState {};

}  // namespace tarnlog
