// What the status extractors keep between sentences of a run and between runs.
#pragma once

namespace tarnlog {

struct StatusState {};

}  // namespace tarnlog
