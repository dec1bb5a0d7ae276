#include "pages/static/nmea_conversion.h"

#include <cmath>
#include <cstring>

#include "extract/checksums.h"
#include "extract/nmea/nmea_fields.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

// A line is read into 1024 bytes; the rest of a longer one goes with it.
constexpr std::size_t kLineLimit = 1024;
// GPS time runs ahead of UTC by the leap seconds since 1980 (18 since 2017).
constexpr double kGpsLeapSeconds = 18.0;
constexpr double kSecondsPerWeek = 604800.0;

// The line's fields, when its last star lies after the line's start and
// inside it, and the checksum holds when asked for.
bool TakeSentence(const char* line, bool nmeaCrc, NmeaFields& fields) {
  const char* star = std::strrchr(line, '*');
  if (!star || star == line) return false;
  const std::size_t starIndex = static_cast<std::size_t>(star - line);
  if (nmeaCrc && !VerifyNmeaChecksum(line, std::strlen(line), starIndex)) return false;
  return fields.Split(line);
}

bool StartsWithAny(const char* line, std::initializer_list<const char*> heads) {
  for (const char* head : heads) {
    if (std::strncmp(line, head, std::strlen(head)) == 0) return true;
  }
  return false;
}

// ddmm.mmmm to degrees: whole degrees by division by 100, the rest are
// minutes. Hemisphere letters are not read.
double Degrees(double ddmm) {
  const double whole = std::trunc(ddmm / 100.0);
  return whole + (ddmm - whole * 100.0) / 60.0;
}

double TimeOfDay(double hhmmss) {
  const double hours = std::trunc(hhmmss / 10000.0);
  const double minutes = std::trunc((hhmmss - hours * 10000.0) / 100.0);
  return hours * 3600.0 + minutes * 60.0 + (hhmmss - hours * 10000.0 - minutes * 100.0);
}

// hhmmss.ss to whole tenths, the way both sentences' times are compared.
// Cut in doubles: any time read compares without an integer's range, and a
// time that is no number agrees with none.
double Tenths(double hhmmss) {
  return std::trunc((hhmmss * 100.0 + 5.0) / 10.0);
}

struct GgaFix {
  double hhmmss = 0.0;
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;  // antenna altitude plus geoid separation
  int satellites = 0;
  double hdop = 0.0;
  int quality = 0;
  int differentialAge = 0;
};

GgaFix ReadGga(const NmeaFields& fields) {
  GgaFix fix;
  fix.hhmmss = FieldDouble(fields[1]);
  fix.latitude = Degrees(FieldDouble(fields[2]));
  fix.longitude = Degrees(FieldDouble(fields[4]));
  fix.quality = TextToInt(fields[6]);
  fix.satellites = TextToInt(fields[7]);
  fix.hdop = FieldDouble(fields[8]);
  fix.height = FieldDouble(fields[9]) + FieldDouble(fields[11]);
  fix.differentialAge = SaturatingInt(FieldDouble(fields[13]));
  return fix;
}

void WriteRecord(OutFile& out, const GgaFix& fix, int quality, int closingInteger,
                 double closingSeconds) {
  out.Printf("%.3f   %-6.9f   %-6.9f   %-5.6f   %3d   %5.3f\t%3d\t%3d", TimeOfDay(fix.hhmmss),
             fix.latitude, fix.longitude, fix.height, fix.satellites, fix.hdop, quality,
             fix.differentialAge);
  out.Printf("    %d   %9.1f \n", closingInteger, closingSeconds);
}

// Seconds of the GPS week of a ZDA's UTC date and time.
struct WeekSeconds {
  int week = 0;
  double seconds = 0.0;
};

// Month and day are taken as they come, so the sums are made wide enough
// for any int.
long DaysFromCivil(long year, long month, long day) {
  year -= month <= 2 ? 1 : 0;
  const long era = (year >= 0 ? year : year - 399) / 400;
  const long yearOfEra = year - era * 400;
  const long dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const long dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;  // days since 1970-01-01
}

WeekSeconds ZdaWeekSeconds(const NmeaFields& fields) {
  const long gpsEpochDays = DaysFromCivil(1980, 1, 6);
  const long days =
      DaysFromCivil(TextToInt(fields[4]), TextToInt(fields[3]), TextToInt(fields[2])) -
      gpsEpochDays;
  WeekSeconds result;
  result.week = SaturatingInt(static_cast<double>(days / 7));
  result.seconds =
      static_cast<double>(days % 7) * 86400.0 + TimeOfDay(FieldDouble(fields[1])) + kGpsLeapSeconds;
  // Past the week's end the seconds are taken back, the week is not raised.
  if (result.seconds > kSecondsPerWeek) result.seconds -= kSecondsPerWeek;
  return result;
}

}  // namespace

std::string ConvertedTablePath(const std::string& logPath) {
  const PathParts parts = SplitPath(logPath);
  return parts.drive + parts.folder + parts.name + ".txt";
}

void ConvertGgaLog(const std::string& logPath, bool nmeaCrc, int dayOfWeek) {
  InFile in;
  if (!in.Open(logPath, FileMode::kText)) return;
  OutFile out;
  if (!out.Open(ConvertedTablePath(logPath), FileMode::kText)) return;
  char line[kLineLimit];
  int heldQuality = 0;
  while (in.ReadLineSkippingRest(line, sizeof line)) {
    if (!StartsWithAny(line, {"$GNGGA", "$GPGGA", "$BDGGA"})) continue;
    NmeaFields fields;
    if (!TakeSentence(line, nmeaCrc, fields)) continue;
    const GgaFix fix = ReadGga(fields);
    if (fix.quality >= 0 && fix.quality <= 5) heldQuality = fix.quality;
    if (heldQuality <= 0) continue;
    WriteRecord(out, fix, heldQuality, dayOfWeek, TimeOfDay(fix.hhmmss));
  }
}

void ConvertNmeaWithZdaLog(const std::string& logPath, bool nmeaCrc) {
  InFile in;
  if (!in.Open(logPath, FileMode::kText)) return;
  OutFile out;
  if (!out.Open(ConvertedTablePath(logPath), FileMode::kText)) return;
  char line[kLineLimit];
  GgaFix fix;
  bool positionHeld = false;
  double zdaTime = 0.0;
  WeekSeconds gpsTime;
  while (in.ReadLineSkippingRest(line, sizeof line)) {
    const bool gga = StartsWithAny(line, {"$GNGGA", "$GPGGA"});
    const bool zda = StartsWithAny(line, {"$GNZDA", "$GPZDA"});
    if (!gga && !zda) continue;
    NmeaFields fields;
    if (!TakeSentence(line, nmeaCrc, fields)) continue;
    if (gga) {
      fix = ReadGga(fields);
      positionHeld = true;
    } else {
      if (!positionHeld) continue;
      zdaTime = FieldDouble(fields[1]);
      gpsTime = ZdaWeekSeconds(fields);
    }
    if (fix.quality > 0 && gpsTime.seconds != 0.0 && Tenths(fix.hhmmss) == Tenths(zdaTime)) {
      WriteRecord(out, fix, fix.quality, gpsTime.week, gpsTime.seconds);
    }
  }
}

}  // namespace tarnlog
