// GGA and the sentences that share its layout (GGAH, GGABASE2), and GNS:
// "$--GGA,time,lat,N,lon,E,quality,satellites,HDOP,altitude,M,geoid,M,age,
// station" and "$--GNS,time,lat,N,lon,E,mode,satellites,HDOP,altitude,
// geoid,age,station[,status]".
#include <cstdlib>
#include <cstring>

#include "extract/nmea/nmea_extractors.h"
#include "extract/nmea/nmea_fields.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

struct GgaMember {
  const char* type;  // what follows the talker
  double threshold;
};

constexpr GgaMember kGgaMembers[] = {
    {"GGA,", kGgaRollover},
    {"GGAH,", kNmeaRollover},
    {"GGABASE2,", kNmeaRollover},
};

constexpr const char* kGgaTalkers = "GNGPBDGBGLGA";
constexpr const char* kGnsTalkers = "GNGPBDGLGA";
constexpr int kGgaFields = 15;
constexpr int kGnsFields = 13;

// The checksum text behind the first star, "%x"; unreadable text reads as 0.
bool ChecksumInRange(const char* sentence) {
  const char* star = std::strchr(sentence, '*');
  if (star == nullptr) return false;
  const unsigned long checksum = std::strtoul(star + 1, nullptr, 16);
  return checksum <= 0xFF;
}

}  // namespace

void ExtractGga(GgaKind kind, const char* s, OutFile* table, ExtractionState& state) {
  if (s == nullptr) return;
  const GgaMember& member = kGgaMembers[static_cast<int>(kind)];
  if (!HasTalker(s, kGgaTalkers, member.type) || !ChecksumInRange(s)) return;
  NmeaFields f;
  if (!f.Split(s) || f.Count() < kGgaFields) return;

  NmeaState& nmea = state.nmea;
  const bool gga = kind == GgaKind::kGga;
  if (gga && std::strncmp(s, "$GPGGA", 6) == 0) ++nmea.gpggaSentences;
  NmeaTime time;
  if (!ReadNmeaTime(f[1], &time)) return;

  const double latitude = NmeaDegrees(f[2], 2, f[3]);
  const double longitude = NmeaDegrees(f[4], 3, f[5]);
  const int quality = TextToInt(f[6]);
  const int satellites = TextToInt(f[7]);
  const double hdop = FieldDouble(f[8]);
  const double altitude = FieldDouble(f[9]);
  const double geoid = FieldDouble(f[11]);
  const double age = FieldDouble(f[13]);
  const double height = altitude + geoid;

  NmeaDayCells& cells = gga ? nmea.gga : nmea.ggaSecond;
  const double seconds = RollDay(cells, time.SecondsOfDay(), member.threshold);
  if (gga) {
    nmea.ggaAltitude = altitude;
    if (quality == 4) {
      state.Sums(SumSource::kGga).Add(latitude, longitude, height);
      ++nmea.ggaRtkFixes;
    }
  }
  if (quality <= 0) return;
  if (gga) ++nmea.ggaFixRows;
  if (table == nullptr) return;
  table->Printf("%d,%.3f,%.11f,%.11f,%.4f,%.2f,%d,%d,%.1f,%.4f,%s,%d\n", cells.day, seconds,
                latitude, longitude, height, hdop, quality, satellites, age, geoid, f[14],
                TalkerNumber(s));
}

void ExtractGns(const char* s, OutFile* table, NmeaState& state) {
  if (s == nullptr || !HasTalker(s, kGnsTalkers, "GNS,")) return;
  NmeaFields f;
  if (!f.Split(s) || f.Count() < kGnsFields) return;
  if (!f.Numeric({1, 2, 4, 7, 8, 9, 10, 11})) return;
  NmeaTime time;
  if (!ReadNmeaTime(f[1], &time)) return;

  const double latitude = NmeaDegrees(f[2], 2, f[3]);
  const double longitude = NmeaDegrees(f[4], 3, f[5]);
  const double altitude = FieldDouble(f[9]);
  const double geoid = FieldDouble(f[10]);
  const double seconds = RollDay(state.gns, time.SecondsOfDay(), kNmeaRollover);
  if (table == nullptr) return;
  table->Printf("%d,%.3f,%.11f,%.11f,%.4f,%.2f,%d,%d,%d,%.4f,%s,%d\n", state.gns.day, seconds,
                latitude, longitude, altitude + geoid, FieldDouble(f[8]), ModeNumber(f[6]),
                TextToInt(f[7]), TextToInt(f[11]), geoid, f[12], TalkerNumber(s));
}

}  // namespace tarnlog
