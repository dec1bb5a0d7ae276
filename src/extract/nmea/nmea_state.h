// What the nmea extractors keep between sentences of a run and between runs.
#pragma once

namespace tarnlog {

struct NmeaState {};

}  // namespace tarnlog
