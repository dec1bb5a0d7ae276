// The classifier's reads: what each type's line gives for its time line. A
// line whose read doesn't deliver every value its type needs is dropped.
#pragma once

#include "extract/record_time/log_types.h"

namespace tarnlog::record_time {

struct LineValues {
  int week = 0;
  double seconds = 0.0;
  // The two header words (receiver status, reserved word) or, for the
  // solution logs, the numbers of the solution status and type.
  int first = 0;
  int second = 0;
  // Further values: the three event values; the station id of a heading;
  // the system number and entry count of an SSR log.
  int more[3] = {};
  int satellite = 0;  // PRN or slot of a subframe, 0 when not read
  int signal = 0;     // a signal word's number
  // NMEA time of day.
  int hours = 0;
  int minutes = 0;
  double daySeconds = 0.0;  // seconds of the minute, with their fraction
};

// Reads `line` (NUL-terminated) as a line of `type`; false when it doesn't
// give everything the type needs.
bool ReadLineValues(const LogType& type, const char* line, LineValues& values);

// Direct types: the compact header's week and milliseconds, or, where the
// compact header can't be read, the long header's week and seconds. `more`
// takes the header's integers behind the time as far as there are any (the
// compact header's four fields; the long header's two hexadecimal words),
// 0 for the rest. False when neither header can be read.
struct DirectValues {
  int week = 0;
  double seconds = 0.0;
  int more[4] = {};
};
bool ReadDirectValues(const char* line, DirectValues& values);

}  // namespace tarnlog::record_time
