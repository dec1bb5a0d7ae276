#include "extract/range/range_extractors.h"

#include "extract/log_fields.h"
#include "extract/position/position_walk.h"
#include "extract/range/observation_decoder.h"
#include "extract/text_search.h"

namespace tarnlog {
namespace {

const char* LogName(RangeLog log) {
  switch (log) {
    case RangeLog::kRange:
      return "RANGEA";
    case RangeLog::kBaseRange:
      return "BASERANGEA";
    case RangeLog::kRangeH:
      return "RANGEHA";
  }
  return "";
}

bool IdleInRange(double idle) {
  return idle > 0.0 && idle <= 100.0;
}

void WriteObservationRow(OutFile* out, double seconds, const ObservationTallies& t) {
  if (out == nullptr) return;
  const auto n = ObservationCounts(t);
  out->Printf("%.3f, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d \n", seconds, n[0],
              n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8], n[9], n[10], n[11], n[12], n[13],
              n[14]);
}

void WriteFrequencyRow(OutFile* out, RangeLog log, const LongHeader& h,
                       const ObservationTallies& t) {
  if (out == nullptr) return;
  if (log == RangeLog::kRangeH) {
    out->Printf("%i,%.4lf,%.1f, %d, %d, %d\n", h.week, h.seconds, t.MeanCn0(), t.positiveCn0,
                t.multiSignalChannels, t.satellites);
  } else {
    out->Printf("%i,%.4lf,%.1f, %d, %d,%i ,%d\n", h.week, h.seconds, t.MeanCn0(), t.positiveCn0,
                t.multiSignalChannels, t.satellites, t.multiSignalSatellites);
  }
}

}  // namespace

void ExtractRange(RangeLog log, const char* sentence, std::size_t length, OutFile* table,
                  OutFile* frequencies, RangeState& state) {
  if (sentence == nullptr || !HasLogName(sentence, LogName(log))) return;
  FindTextTable findTable;
  findTable.Clear();
  if (HeadHasUnknown(sentence, length, findTable)) return;
  LongHeader header;
  if (!ReadLongHeader(sentence, &header)) return;
  state.latestWeek = header.week;
  state.latestSeconds = header.seconds;
  state.latestKnown = true;
  if (!IdleInRange(header.idle)) return;

  // The set is large; its channel array is only written as far as it's read.
  ObservationSet set;
  DecodeObservations(ObservationLayout::kRange, sentence, length, &set,
                     ObservationDetail::kTallies);
  WriteObservationRow(table, header.seconds, set.tallies);
  WriteFrequencyRow(frequencies, log, header, set.tallies);
}

void ExtractObsvm(ObsvmLog log, const char* sentence, std::size_t length, OutFile* table) {
  CompactHeader header;
  if (sentence == nullptr || table == nullptr || !ReadCompactHeader(sentence, &header)) return;
  ObservationSet set;
  DecodeObservations(ObservationLayout::kObsvm, sentence, length, &set);
  const auto n = ObservationCounts(set.tallies);
  if (log == ObsvmLog::kObsvm) {
    table->Printf("%d,%.3f, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d %d\n",
                  header.week, header.Seconds(), n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7],
                  n[8], n[9], n[10], n[11], n[12], n[13], n[14], header.idle);
  } else {
    table->Printf("%d, %.3f, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d, %d  %d\n",
                  header.week, header.Seconds(), n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7],
                  n[8], n[9], n[10], n[11], n[12], n[13], n[14], header.idle);
  }
}

}  // namespace tarnlog
