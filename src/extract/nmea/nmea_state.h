// What the nmea extractors keep between sentences of a run and between runs.
#pragma once

#include <initializer_list>

namespace tarnlog {

// NMEA time has no week: each table counts days itself, so that its seconds
// column (day times 86,400 plus the seconds of the UTC day) runs on across
// midnight. `lastSeconds` is that column's last value.
struct NmeaDayCells {
  int day = 0;
  double lastSeconds = 0.0;
};

struct NmeaState {
  NmeaDayCells gga;
  double ggaAltitude = 0.0;  // the last GGA's altitude; VTG rows carry it
  NmeaDayCells ggaSecond;    // shared by GGAH and GGABASE2
  NmeaDayCells gns;
  NmeaDayCells gst;
  NmeaDayCells gbs;
  NmeaDayCells rmc;
  NmeaDayCells ntr;
  NmeaDayCells rtk;

  // GGA tallies for the whole process; never reset.
  int gpggaSentences = 0;  // "$GPGGA" sentences read
  int ggaFixRows = 0;      // rows written, quality above 0
  int ggaRtkFixes = 0;     // quality 4

  // The callers start every capture file with fresh day cells: day 0, no
  // last seconds, and no GGA altitude for VTG. The tallies stay.
  void ResetDays() {
    for (NmeaDayCells* cells : {&gga, &ggaSecond, &gns, &gst, &gbs, &rmc, &ntr, &rtk})
      *cells = NmeaDayCells{};
    ggaAltitude = 0.0;
  }
};

}  // namespace tarnlog
