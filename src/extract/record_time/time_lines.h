// The forms of the time files' lines.
#pragma once

#include "extract/record_time/line_values.h"
#include "extract/record_time/log_types.h"
#include "platform/files.h"

namespace tarnlog::record_time {

// A classified line in its type's form. For the time-of-day form,
// `dayCounter` is the days counted so far and `running` the seconds since
// the log's first day began.
void WriteTypeLine(OutFile& file, Form form, const LineValues& values, int dayCounter,
                   double running);

// "%6d %12.4lf %d\n": a subframe's line in its satellite's file.
void WriteSatelliteLine(OutFile& file, const LineValues& values);

// A direct type's line.
void WriteDirectLine(OutFile& file, DirectForm form, const DirectValues& values);

// The base delay: the latest rover time, the base time and the rover time's
// lead, a week added where the weeks differ.
void WriteBaseDelay(OutFile& file, int roverWeek, double roverSeconds, int baseWeek,
                    double baseSeconds);

}  // namespace tarnlog::record_time
