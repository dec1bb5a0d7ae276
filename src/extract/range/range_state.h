// What the range extractors keep between sentences of a run and between runs.
#pragma once

namespace tarnlog {

struct RangeState {
  // The newest RANGEA, BASERANGEA or RANGEHA header that could be read;
  // never reset, the last writer wins.
  int latestWeek = 0;
  double latestSeconds = 0.0;
  bool latestKnown = false;
};

}  // namespace tarnlog
