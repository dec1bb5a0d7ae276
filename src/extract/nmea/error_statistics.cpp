// GST (pseudorange error statistics) and GBS (fault detection), read in
// place field by field as "%*[^,]" skips and "%02d%02d%02d.%02d" time.
#include <cstddef>
#include <cstring>

#include "extract/field_cursor.h"
#include "extract/nmea/nmea_extractors.h"
#include "extract/nmea/nmea_fields.h"

namespace tarnlog {
namespace {

constexpr const char* kTalkers = "GNGPBDGLGA";

// The time field at the cursor, which then stands behind it.
bool ReadTime(FieldCursor& cursor, NmeaTime* time) {
  const char* end = nullptr;
  if (!cursor.ok || !ReadNmeaTime(cursor.at, time, &end)) {
    cursor.ok = false;
    return false;
  }
  cursor.at = end;
  return true;
}

FieldCursor& SkipFields(FieldCursor& cursor, int count) {
  for (int i = 0; i < count; ++i)
    cursor.SkipField().Comma();
  return cursor;
}

// The time field as it stands in the sentence, for the GST row.
struct TimeText {
  char text[32] = {};
  explicit TimeText(const char* sentence) {
    const char* field = std::strchr(sentence, ',');
    if (field == nullptr) return;
    ++field;
    std::size_t n = 0;
    while (field[n] != '\0' && field[n] != ',' && n + 1 < sizeof text) {
      text[n] = field[n];
      ++n;
    }
  }
};

}  // namespace

// "%*[^,],%02d%02d%02d.%02d,%*[^,],%*[^,],%*[^,],%*[^,],%lf,%lf,%lf,":
// the deviations of latitude, longitude and altitude.
void ExtractGst(const char* s, OutFile* table, NmeaState& state) {
  if (s == nullptr || !HasTalker(s, kTalkers, "GST,")) return;
  FieldCursor cursor(s);
  NmeaTime time;
  cursor.SkipField().Comma();
  ReadTime(cursor, &time);
  SkipFields(cursor.Comma(), 4);
  double deviations[3] = {};
  cursor.Double(deviations[0]).Comma().Double(deviations[1]).Comma().Double(deviations[2]);
  if (!cursor.ok) return;

  const double seconds = RollDay(state.gst, time.SecondsOfDay(), kNmeaRollover);
  if (table == nullptr) return;
  table->Printf("%d,%.3f,%.3f,%.3f,%.3f,%s\n", state.gst.day, seconds, deviations[0], deviations[1],
                deviations[2], TimeText(s).text);
}

// "%*[^,],%02d%02d%02d.%02d,%*[^,],%*[^,],%*[^,],%d,%lf,%*[^,],%*[^,],%d":
// the failed satellite, its probability, and the system behind the two
// fields that follow; a sentence without the system field gives 0 there.
void ExtractGbs(const char* s, OutFile* table, NmeaState& state) {
  if (s == nullptr || !HasTalker(s, kTalkers, "GBS,")) return;
  FieldCursor cursor(s);
  NmeaTime time;
  cursor.SkipField().Comma();
  ReadTime(cursor, &time);
  SkipFields(cursor.Comma(), 3);
  int satellite = 0;
  double probability = 0.0;
  cursor.Decimal(satellite).Comma().Double(probability);
  if (!cursor.ok) return;
  int system = 0;
  SkipFields(cursor.Comma(), 2).Decimal(system);

  const double seconds = RollDay(state.gbs, time.SecondsOfDay(), kNmeaRollover);
  if (table == nullptr) return;
  table->Printf("%d,%.3f,%.3f,%d,%d\n", state.gbs.day, seconds, probability, satellite, system);
}

}  // namespace tarnlog
