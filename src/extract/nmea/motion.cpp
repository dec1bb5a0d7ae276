// RMC and VTG: "$--RMC,time,status,lat,N,lon,E,speed,course,date,
// variation,E,mode[,status]" and "$--VTG,course,T,course,M,knots,N,km/h,K,
// mode". Their numeric fields must be numeric text, or the sentence is
// dropped.
#include "extract/nmea/nmea_extractors.h"
#include "extract/nmea/nmea_fields.h"

namespace tarnlog {
namespace {

constexpr int kRmcFields = 12;
constexpr int kVtgFields = 9;

}  // namespace

void ExtractRmc(const char* s, OutFile* table, NmeaState& state) {
  if (s == nullptr || !HasTalker(s, "GNGPBDGLGA", "RMC,")) return;
  NmeaFields f;
  if (!f.Split(s) || f.Count() < kRmcFields) return;
  if (!f.Numeric({1, 3, 5, 7, 8, 9, 10})) return;
  // A receiver warning has no usable fix.
  if (f[2][0] == 'V') return;
  NmeaTime time;
  if (!ReadNmeaTime(f[1], &time)) return;

  const double seconds = RollDay(state.rmc, time.SecondsOfDay(), kNmeaRollover);
  if (table == nullptr) return;
  table->Printf("%.3f,%.11f,%.11f,%.5f,%.3f,%.1f,%d,%s,%s,%d\n", seconds,
                NmeaDegrees(f[3], 2, f[4]), NmeaDegrees(f[5], 3, f[6]), FieldDouble(f[7]),
                FieldDouble(f[8]), FieldDouble(f[10]), ModeNumber(f[12]), f[9], f[1],
                TalkerNumber(s));
}

// VTG has no time of its own: it takes the last GGA's seconds and altitude.
void ExtractVtg(const char* s, OutFile* table, const NmeaState& state) {
  if (s == nullptr || !HasTalker(s, "GNGPBD", "VTG,")) return;
  NmeaFields f;
  if (!f.Split(s) || f.Count() < kVtgFields) return;
  if (!f.Numeric({1, 3, 5, 7})) return;
  if (table == nullptr) return;
  table->Printf("%.3f,%.3f,%.3f,%.5f,%.5f,%d,%.3f\n", state.gga.lastSeconds, FieldDouble(f[1]),
                FieldDouble(f[3]), FieldDouble(f[5]), FieldDouble(f[7]), ModeNumber(f[9]),
                state.ggaAltitude);
}

}  // namespace tarnlog
