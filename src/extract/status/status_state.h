// What the status extractors keep between sentences of a run and between runs.
#pragma once

namespace tarnlog {

// A position with its time, as #EVENTALL keeps it.
struct TimedPosition {
  int week = 0;
  double seconds = 0.0;
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;  // ellipsoidal
};

struct StatusState {
  // #SLANTSTATUSA: the time of the first sentence that reports a static
  // convergence; the convergence rows count from it.
  bool convergenceStarted = false;
  int convergenceWeek = 0;
  double convergenceSeconds = 0.0;
  // #EVENTALL: the newest BESTPOSA at or before an event, and the newest one
  // found already past an event when that event arrived.
  TimedPosition beforeEvent;
  TimedPosition afterEvent;
};

}  // namespace tarnlog
