#include "extract/record_time/time_lines.h"

namespace tarnlog::record_time {

void WriteTypeLine(OutFile& file, Form form, const LineValues& v, int dayCounter, double running) {
  switch (form) {
    case Form::kHeaderPair:
      file.Printf("%6d %12.4lf %d %d\n", v.week, v.seconds, v.first, v.second);
      return;
    case Form::kTimeOfDay:
      file.Printf("%4d %12.4lf %02d%02d%07.4lf\n", dayCounter + 1, running, v.hours, v.minutes,
                  v.daySeconds);
      return;
    case Form::kHeading:
      file.Printf("%6d %12.4lf %d %d %d\n", v.week, v.seconds, v.second, v.more[0], v.first);
      return;
    case Form::kEvent:
      file.Printf("%6d %12.4lf %d %d %d %d %d \n", v.week, v.seconds, v.second, v.first, v.more[0],
                  v.more[1], v.more[2]);
      return;
    case Form::kTimeOnly:
      file.Printf("%6d %12.4lf \n", v.week, v.seconds);
      return;
    case Form::kSsr:
      file.Printf("%6d %12.4lf %d  %d\n", v.week, v.seconds, v.more[0], v.more[1]);
      return;
    case Form::kOneValue:
      file.Printf("%6d %12.4lf %d\n", v.week, v.seconds, v.signal);
      return;
  }
}

void WriteSatelliteLine(OutFile& file, const LineValues& v) {
  file.Printf("%6d %12.4lf %d\n", v.week, v.seconds, v.satellite);
}

void WriteDirectLine(OutFile& file, DirectForm form, const DirectValues& v) {
  switch (form) {
    case DirectForm::kTime:
      file.Printf("%d  %.3lf\r\n", v.week, v.seconds);
      return;
    case DirectForm::kEvent:
      file.Printf("%d  %.3lf  0  %d  %4d  %6d  %d\r\n", v.week, v.seconds, v.more[0], v.more[1],
                  v.more[2], v.more[3]);
      return;
    case DirectForm::kBlock:
      file.Printf("%d  %.3lf  %d  999\r\n", v.week, v.seconds, v.more[0]);
      return;
    case DirectForm::kSecondBase:
      file.Printf("%d  %.3lf %d  %d\r\n", v.week, v.seconds, v.more[0], v.more[1]);
      return;
  }
}

void WriteBaseDelay(OutFile& file, int roverWeek, double roverSeconds, int baseWeek,
                    double baseSeconds) {
  double lead = roverSeconds - baseSeconds;
  if (roverWeek != baseWeek) lead += 604800.0;
  file.Printf("%d  %.3lf, %d %.3lf  %.3lf\r\n", roverWeek, roverSeconds, baseWeek, baseSeconds,
              lead);
}

}  // namespace tarnlog::record_time
