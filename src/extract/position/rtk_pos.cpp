// Rows of the RTK family, and RTKPOSA's run statistics and ttff.txt.
#include "extract/position/position_rows.h"

namespace tarnlog {
namespace {

RtkStatType StatTypeOf(int code) {
  switch (code % 100) {
    case 50:
      return RtkStatType::kNarrowInt;
    case 48:
      return RtkStatType::kL1Int;
    case 49:
      return RtkStatType::kWideInt;
    case 32:
      return RtkStatType::kL1Float;
    case 34:
      return RtkStatType::kNarrowFloat;
    default:
      return RtkStatType::kOther;
  }
}

}  // namespace

void WriteRtkPosRow(OutFile* out, const PositionRecord& r, bool extendedColumns) {
  if (out == nullptr) return;
  // tail[0] is the reserved field read with "%d", tail[1] the extended
  // solution status read with "%x".
  if (extendedColumns) {
    out->Printf(
        "%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%i,%.1f,%i,%i,%i\n",
        r.header.week, r.header.seconds, r.code, r.latitude, r.longitude, r.EllipsoidalHeight(),
        r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0], r.satellites[1], r.satellites[2],
        r.satellites[3], r.differentialAge, r.solutionAge, r.tail[1], static_cast<int>(r.hex.last),
        r.header.idle, static_cast<int>(r.hex.secondLast), r.tail[0], r.tail[1]);
  } else {
    out->Printf("%i,%.3f,%i,%.11f,%.11f,%.4f,%.4f,%.4f,%.4f,%i,%i,%i,%i,%.4f,%.4f,%i,%i,%.1f,%i\n",
                r.header.week, r.header.seconds, r.code, r.latitude, r.longitude,
                r.EllipsoidalHeight(), r.sigmas[0], r.sigmas[1], r.sigmas[2], r.satellites[0],
                r.satellites[1], r.satellites[2], r.satellites[3], r.differentialAge, r.solutionAge,
                r.tail[1], static_cast<int>(r.hex.last), r.header.idle,
                static_cast<int>(r.hex.secondLast));
  }
}

void NoteRtkEpoch(WalkEnd end, const PositionRecord& r, int lastTtffCode,
                  RtkRunStatistics& statistics) {
  if (end == WalkEnd::kRejected) return;
  statistics.lastSeconds = r.header.seconds;
  // Until the first ttff.txt row, the first epoch moves with every sentence.
  if (lastTtffCode == -1) {
    statistics.firstSeconds = r.header.seconds;
    statistics.firstWeek = r.header.week;
  }
  if (end == WalkEnd::kHeaderRead) return;
  // Every sentence with a type counts, whether or not it leaves a row.
  const auto type = static_cast<std::size_t>(StatTypeOf(r.code));
  if (r.code < 100) {
    ++statistics.good[type];
  } else {
    ++statistics.bad[type];
  }
}

void NoteTtff(OutFile* ttff, const PositionRecord& r, int& lastTtffCode) {
  // Without a ttff.txt stream the code isn't taken over either, so a later
  // run with the table still writes its first row.
  if (r.code == lastTtffCode || ttff == nullptr || !ttff->IsOpen()) return;
  ttff->Printf("%.2f,%d\n", r.header.seconds, r.code);
  lastTtffCode = r.code;
}

}  // namespace tarnlog
