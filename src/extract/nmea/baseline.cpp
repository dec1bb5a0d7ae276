// NTR, the rover-to-base baseline ("$--NTR,time,quality,distance,north,
// east,up,station"), and the receiver's own "$...RTK," sentence ("time,lat,
// N,lon,E,height,second value,text,number").
#include "extract/nmea/nmea_extractors.h"
#include "extract/nmea/nmea_fields.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

constexpr int kNtrFields = 8;
constexpr int kRtkFields = 10;

}  // namespace

void ExtractNtr(const char* s, OutFile* table, NmeaState& state) {
  if (s == nullptr || !HasTalker(s, "GNGPBD", "NTR,")) return;
  NmeaFields f;
  if (!f.Split(s) || f.Count() < kNtrFields) return;
  NmeaTime time;
  if (!ReadNmeaTime(f[1], &time)) return;

  const double seconds = RollDay(state.ntr, time.SecondsOfDay(), kNmeaRollover);
  if (table == nullptr) return;
  table->Printf("%.3f,%d,%.3f,%.3f,%.3f,%.3f,%d,%s\n", seconds, TextToInt(f[2]), FieldDouble(f[3]),
                FieldDouble(f[4]), FieldDouble(f[5]), FieldDouble(f[6]), TextToInt(f[7]), f[1]);
}

// The chain hands over any sentence with "RTK," at its fifth character.
void ExtractRtk(const char* s, OutFile* table, NmeaState& state) {
  if (s == nullptr || s[0] != '$') return;
  NmeaFields f;
  if (!f.Split(s) || f.Count() < kRtkFields) return;
  NmeaTime time;
  if (!ReadNmeaTime(f[1], &time)) return;

  const double seconds = RollDay(state.rtk, time.SecondsOfDay(), kNmeaRollover);
  if (table == nullptr) return;
  table->Printf("%d,%.3f,%.11f,%.11f,%.4f,%.4f,%s,%d\n", state.rtk.day, seconds,
                NmeaDegrees(f[2], 2, f[3]), NmeaDegrees(f[4], 3, f[5]), FieldDouble(f[6]),
                FieldDouble(f[7]), f[8], TextToInt(f[9]));
}

}  // namespace tarnlog
