// What outlives one extraction run, and what the Static page lends it.
// One record each, with one owner, instead of scattered globals: a run reads
// and updates the state it is handed, and callers reset the parts they own
// between runs as the pages say.
#pragma once

#include <array>
#include <cstddef>

#include "extract/nmea/nmea_state.h"
#include "extract/range/range_state.h"
#include "extract/status/status_state.h"

namespace tarnlog {

// The sources whose positions real-value generation averages. Each has three
// sums and three counts that always move together.
enum class SumSource {
  kMatched,   // MATCHEDPOSA
  kMatched2,  // MATCHEDPOS2A
  kMatchedH,  // MATCHEDPOSHA
  kPsrPos,    // PSRPOSA
  kRtkPos,    // RTKPOSA
  kRtkPos2,   // RTKPOS2A
  kBestPos,   // BESTPOSA
  kPppPos,    // PPPPOSA
  kGga,       // GGA
  kCount
};

struct PositionSums {
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  int counts[3] = {0, 0, 0};

  void Add(double lat, double lon, double h) {
    latitude += lat;
    longitude += lon;
    height += h;
    for (int& count : counts)
      ++count;
  }
};

// The newest valid BESTPOSA, read by the #EVENTALL extractor.
struct LastBestPosition {
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;  // ellipsoidal: height plus undulation
  double seconds = 0.0;
  int week = 0;
};

// RTKPOSA run statistics: first and last epoch, and per position type the
// rows with a good (code below 100) and a bad status.
enum class RtkStatType { kNarrowInt, kL1Int, kWideInt, kL1Float, kNarrowFloat, kOther, kCount };
struct RtkRunStatistics {
  double firstSeconds = 0.0;
  int firstWeek = 0;
  double lastSeconds = 0.0;
  std::array<int, static_cast<std::size_t>(RtkStatType::kCount)> good{};
  std::array<int, static_cast<std::size_t>(RtkStatType::kCount)> bad{};
};

struct ExtractionState {
  // Seconds of the newest RANGEA, PSRPOSA, RTKPOSA or BESTPOSA header; never
  // reset, the last writer wins.
  double currentEpochSeconds = 0.0;
  // The first combined BESTNAVA with "SOL_COMPUTED"; cleared by PPSSTATUSA.
  int firstFixWeek = 0;
  double firstFixSeconds = 0.0;
  bool firstFixLatched = false;
  // The last code written to ttff.txt; never reset, so a second run in one
  // process doesn't repeat an unchanged first row.
  int lastTtffCode = -1;
  std::array<PositionSums, static_cast<std::size_t>(SumSource::kCount)> sums{};
  LastBestPosition lastBestPos;
  RtkRunStatistics rtkStatistics;
  NmeaState nmea;      // the NMEA extractors' day cells and GGA state
  RangeState range;    // the latest observation epoch
  StatusState status;  // PERFSTAT, PPS and first-fix bookkeeping

  PositionSums& Sums(SumSource source) { return sums[static_cast<std::size_t>(source)]; }
};

// The process's one extraction state, shared by the pages that extract.
ExtractionState& SharedExtractionState();

// What the Static page lends the driver, and the run's mode.
struct ExtractSettings {
  bool asciiCrc = true;  // the "CRC" box: verify ASCII logs
  bool nmeaCrc = true;   // the "NEMACRC" box: verify NMEA sentences
  int imuType = 0;       // board value of the Static page's selected row
  // Whether the next #PERFSTAT writes the task names; set again at the end of
  // every run that read the whole capture.
  bool* perfstatHeaderPending = nullptr;
  // Real-value generation: only the position set, no default tables.
  bool realValueMode = false;
  // Bytes per mapped view; 0 takes 1000 x the allocation granularity. Tests
  // use small views to put sentences across view ends.
  std::size_t viewSize = 0;
};

}  // namespace tarnlog
