#include "pages/nmea/mix_lines.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "extract/checksums.h"
#include "platform/saturating.h"

namespace tarnlog {
namespace {

struct NamedMessage {
  const char* name;
  MixMessage message;
};

// In the order they are tested; the first seven serve both builders.
constexpr NamedMessage kMessageNames[] = {
    {"PSRPOS", MixMessage::kPsrPos},
    {"RTKPOS", MixMessage::kRtkPos},
    {"MATCHEDPOS", MixMessage::kMatchedPos},
    {"BESTPOS", MixMessage::kBestPos},
    {"GGA", MixMessage::kGga},
    {"BESTNAV", MixMessage::kBestNav},
    {"SPPNAV", MixMessage::kSppNav},
    {"DRPVA", MixMessage::kDrPva},
    {"PosT", MixMessage::kPosT},
    {"INSPVAX", MixMessage::kInsPvax},
    {"INSPVAS", MixMessage::kInsPvas},
    {"INSPVA", MixMessage::kInsPva},
    {"PPPPOS", MixMessage::kPppPos},
    {"BESTGNSSPOS", MixMessage::kBestGnssPos},
};
constexpr int kSharedNames = 7;

// The long header up to the body, then the position block. The type text is
// held to 63 characters; a longer one leaves the line unread.
constexpr const char* kLongPositionFormat =
    "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf,%*[^,],%*[^,],%*d;%*[^,],%63[^,],%lf,%lf,%lf,%lf,%*[^,],"
    "%*f,%*f,%*f,%*[^,],%lf,%*f,%d";
// BESTNAV and SPPNAV have the compact header, with milliseconds of week.
constexpr const char* kCompactPositionFormat =
    "%*[^,],%*[^,],%*[^,],%*[^,],%d,%d,%*d,%*d,%*d,%*d;%*[^,],%63[^,],%lf,%lf,%lf,%lf,%*[^,],%*f,"
    "%*f,%*f,%*[^,],%lf,%*f,%d";

constexpr const char* kGgaFormat =
    "%*[^,],%02d%02d%lf,%02d%lf,%c,%03d%lf,%c,%d,%d,%lf,%lf,%*c,%lf,%*c,%d";
// Up to the geoid separation; the differential age is often empty.
constexpr int kGgaNeededFields = 14;

// Long header, then INS status, position type, latitude, longitude, height,
// and for DRPVA the two ages, for INSPVAX the undulation; then three
// velocities and three angles.
constexpr const char* kDrPvaFormat =
    "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf,%*[^,],%*[^,],%*d;%*[^,],%*[^,],%lf,%lf,%lf,%lf,%lf,%lf,"
    "%lf,%lf,%lf,%lf,%lf";
constexpr const char* kInsPvaxFormat =
    "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf,%*[^,],%*[^,],%*d;%*[^,],%*[^,],%lf,%lf,%lf,%lf,%lf,%lf,"
    "%lf,%lf,%lf,%lf";
// INSPVAA repeats week and seconds in its body; the status ends the body.
constexpr const char* kInsPvaFormat =
    "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf,%*[^,],%*[^,],%*d;%*[^,],%*[^,],%lf,%lf,%lf,%lf,%lf,%lf,"
    "%lf,%lf,%lf,%63[^*]";
// The brief INSPVASA header holds the seconds, read as a float; the week
// comes from the body.
constexpr const char* kInsPvasFormat =
    "%*[^,],%*[^,],%f;%d,%*[^,],%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%63[^*]";

constexpr const char* kRangeHeaderFormat = "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf";
constexpr const char* kObservationFormat = "%d,%*d,%*f,%*f,%*f,%*f,%*f,%*f,%*f,%08x%n";

bool Contains(const char* text, const char* word) {
  return std::strstr(text, word) != nullptr;
}

// Index of the last star, which bounds the CRC's span, or 0 without one.
std::size_t LastStar(const char* line) {
  const char* star = std::strrchr(line, '*');
  return star == nullptr ? 0 : static_cast<std::size_t>(star - line);
}

// Counter pairs: the pseudorange counter; the carrier counter follows it.
enum Pair : int {
  kGpsL1 = 0,
  kGpsL2 = 2,
  kBdsB1 = 4,
  kBdsB2 = 6,
  kBdsB3 = 8,
  kGloL1 = 10,
  kGloL2 = 12,
  kNoPair = -1,
};

// The status word's system (bits 16-18) as the counting knows it: GPS 0 and
// GLONASS 1 stay, BeiDou 4 becomes 2, Galileo 3 becomes 4, and the rest 7.
int RemapSystem(std::uint32_t system) {
  switch (system) {
    case 0:
      return 0;
    case 1:
      return 1;
    case 3:
      return 4;
    case 4:
      return 2;
    default:
      return 7;
  }
}

Pair PairOf(int system, std::uint32_t signal) {
  switch (system) {
    case 0:
      if (signal == 0) return kGpsL1;
      if (signal == 5 || signal == 9 || signal == 14 || signal == 17) return kGpsL2;
      return kNoPair;
    case 2:
      if (signal == 0) return kBdsB1;
      if (signal == 17) return kBdsB2;
      if (signal == 2 || signal == 21) return kBdsB3;
      return kNoPair;
    case 1:
      if (signal == 0) return kGloL1;
      if (signal == 1 || signal == 5) return kGloL2;
      return kNoPair;
    default:
      return kNoPair;
  }
}

}  // namespace

MixMessage MatchMixMessage(std::string_view name, bool positionOnlyNames) {
  const int count = positionOnlyNames ? static_cast<int>(std::size(kMessageNames)) : kSharedNames;
  for (int n = 0; n < count; ++n) {
    if (name.find(kMessageNames[n].name) != std::string_view::npos) return kMessageNames[n].message;
  }
  return MixMessage::kNone;
}

bool IsInsMessage(MixMessage message) {
  return message == MixMessage::kDrPva || message == MixMessage::kInsPva ||
         message == MixMessage::kInsPvax || message == MixMessage::kInsPvas;
}

std::string_view LogHead(MixMessage message) {
  switch (message) {
    case MixMessage::kPsrPos:
      return "#PSRPOSA";
    case MixMessage::kRtkPos:
      return "#RTKPOSA";
    case MixMessage::kMatchedPos:
      return "#MATCHEDPOSA";
    case MixMessage::kBestPos:
      return "#BESTPOSA";
    case MixMessage::kBestNav:
      return "#BESTNAVA";
    case MixMessage::kSppNav:
      return "#SPPNAVA";
    case MixMessage::kDrPva:
      return "#DRPVAA";
    case MixMessage::kInsPvax:
      return "#INSPVAXA";
    case MixMessage::kInsPvas:
      return "%INSPVASA";
    case MixMessage::kInsPva:
      return "#INSPVAA";
    case MixMessage::kPppPos:
      return "#PPPPOSA";
    case MixMessage::kBestGnssPos:
      return "#BESTGNSSPOSA";
    default:
      return {};
  }
}

bool AcceptAsciiLine(const char* line, std::size_t length, std::string_view head,
                     std::size_t starTailLimit, bool asciiCrc) {
  if (head.empty() || line[0] != head[0]) return false;
  const std::string headText(head);
  if (!Contains(line, headText.c_str()) || Contains(line, "LOGLIST")) return false;
  // A line cut short or running into the next message fails here: its
  // first star is far from its end, or missing.
  const char* star = std::strchr(line, '*');
  if (star == nullptr || std::strlen(star) >= starTailLimit) return false;
  return !asciiCrc || VerifyAsciiCrc(line, length, LastStar(line));
}

int SolutionStatus(MixMessage message, const char* type, const char* line) {
  if (Contains(line, "INSUFFICIENT_OBS")) return 0;
  const auto is = [type](const char* word) { return std::strcmp(type, word) == 0; };
  const bool best = message == MixMessage::kBestPos;
  const bool ppp = message == MixMessage::kPppPos;
  if (is("PSRDIFF") || (best && (is("INS_PSRDIFF") || Contains(line, "SOL_COMPUTED,SBAS,")))) {
    return 2;
  }
  if (is("L1_INT") || is("WIDE_INT") || is("NARROW_INT") || (ppp && is("PPP"))) return 4;
  if (is("L1_FLOAT") || is("IONOFREE_FLOAT") || is("NARROW_FLOAT") ||
      (ppp && is("PPP_CONVERGING"))) {
    return 5;
  }
  const bool insAided = best || message == MixMessage::kBestNav || message == MixMessage::kSppNav;
  // "INS" is the type that the line shows as "INS,".
  if (insAided && (is("INS") || is("INS_PSRSP") || is("INS_PSRDIFF") || is("INS_RTKFIXED"))) {
    return 6;
  }
  return 1;
}

bool ReadPositionLine(MixMessage message, const char* line, MixFix& fix) {
  if (!Contains(line, "SOL_COMPUTED")) return false;
  char type[64] = {};
  double undulation = 0.0;
  int fields = 0;
  if (message == MixMessage::kBestNav || message == MixMessage::kSppNav) {
    int milliseconds = 0;
    fields =
        std::sscanf(line, kCompactPositionFormat, &fix.week, &milliseconds, type, &fix.latitude,
                    &fix.longitude, &fix.height, &undulation, &fix.age, &fix.satellites);
    fix.second = milliseconds * 0.001;
  } else {
    fields = std::sscanf(line, kLongPositionFormat, &fix.week, &fix.second, type, &fix.latitude,
                         &fix.longitude, &fix.height, &undulation, &fix.age, &fix.satellites);
  }
  if (fields != 9) return false;
  fix.height += undulation;
  fix.hdop = 0.0;
  fix.status = SolutionStatus(message, type, line);
  return true;
}

bool ReadGgaLine(const char* line, std::size_t length, bool nmeaCrc, MixFix& fix) {
  // Held anywhere in the line: a sentence behind a port stamp such as
  // "[COM1]" is read too. The fields are counted from the first comma. Most
  // lines of a log hold no "GGA", so that is looked for first.
  if (!Contains(line, "GGA")) return false;
  const char* star = std::strchr(line, '*');
  if (star == nullptr) return false;
  if (nmeaCrc && !VerifyNmeaChecksum(line, length, static_cast<std::size_t>(star - line))) {
    return false;
  }
  int latitudeDegrees = 0;
  double latitudeMinutes = 0.0;
  char north = 0;
  int longitudeDegrees = 0;
  double longitudeMinutes = 0.0;
  char east = 0;
  double separation = 0.0;
  int age = 0;
  MixFix read;
  const int fields =
      std::sscanf(line, kGgaFormat, &read.hours, &read.minutes, &read.seconds, &latitudeDegrees,
                  &latitudeMinutes, &north, &longitudeDegrees, &longitudeMinutes, &east,
                  &read.status, &read.satellites, &read.hdop, &read.height, &separation, &age);
  if (fields < kGgaNeededFields) return false;
  read.latitude = latitudeDegrees + latitudeMinutes / 60.0;
  if (north == 'S') read.latitude = -read.latitude;
  read.longitude = longitudeDegrees + longitudeMinutes / 60.0;
  if (east == 'W') read.longitude = -read.longitude;
  read.height += separation;
  read.age = age;
  read.week = 0;
  read.second = read.hours * 3600.0 + read.minutes * 60.0 + read.seconds;
  fix = read;
  return true;
}

std::string UtcColumn(int hours, int minutes, double seconds) {
  char text[64];
  std::snprintf(text, sizeof text, "%02d%02d%06.3lf", hours, minutes, seconds);
  return text;
}

std::string JoinedUtcColumn(double secondOfWeek, int boardValue) {
  constexpr double kLeapSeconds = 18.0;
  constexpr int kSiNanBoard = 4;
  double t = std::fmod(secondOfWeek, 86400.0) - kLeapSeconds;
  if (boardValue == kSiNanBoard) {
    if (t <= 1.0) t += 86400.0;
    t -= 1.0;
  }
  const int hours = SaturatingInt(t / 3600.0);
  const int minutes = SaturatingInt((t - hours * 3600.0) / 60.0);
  return UtcColumn(hours, minutes, t - hours * 3600.0 - minutes * 60.0);
}

bool ReadInsLine(MixMessage message, const char* line, InsFix& fix) {
  if (Contains(line, "INS_SOLUTION_GOOD")) {
    fix.status = 3;
  } else if (Contains(line, "INS_SOLUTION_FREE")) {
    fix.status = 6;
  } else if (Contains(line, "INS_ALIGNMENT_COMPLETE")) {
    fix.status = 7;
  } else {
    return false;
  }
  if (Contains(line, "UNKNOWN")) return false;
  double* v = fix.velocity;
  double* a = fix.attitude;
  char word[64] = {};
  bool read = false;
  switch (message) {
    case MixMessage::kDrPva:
      read = std::sscanf(line, kDrPvaFormat, &fix.week, &fix.second, &fix.latitude, &fix.longitude,
                         &fix.height, &fix.drAge, &fix.solAge, &v[0], &v[1], &v[2], &a[0], &a[1],
                         &a[2]) == 13;
      break;
    case MixMessage::kInsPvax: {
      double undulation = 0.0;
      read =
          std::sscanf(line, kInsPvaxFormat, &fix.week, &fix.second, &fix.latitude, &fix.longitude,
                      &fix.height, &undulation, &v[0], &v[1], &v[2], &a[0], &a[1], &a[2]) == 12;
      fix.height += undulation;
      break;
    }
    case MixMessage::kInsPva:
      read = std::sscanf(line, kInsPvaFormat, &fix.week, &fix.second, &fix.latitude, &fix.longitude,
                         &fix.height, &v[0], &v[1], &v[2], &a[0], &a[1], &a[2], word) == 12;
      break;
    case MixMessage::kInsPvas: {
      float seconds = 0.0f;
      read = std::sscanf(line, kInsPvasFormat, &seconds, &fix.week, &fix.latitude, &fix.longitude,
                         &fix.height, &v[0], &v[1], &v[2], &a[0], &a[1], &a[2], word) == 12;
      fix.second = seconds;
      break;
    }
    default:
      break;
  }
  return read && fix.latitude >= 0.0000001;
}

bool KeepEpoch(double second, int frequency) {
  if (frequency <= 0) return true;
  const int interval = 1000 / frequency;
  if (interval <= 0) return true;
  char text[64];
  std::snprintf(text, sizeof text, "%.2lf", second - std::floor(second));
  const int milliseconds = SaturatingInt(std::atof(text) * 1000.0);
  return milliseconds % interval == 0;
}

void CountObservation(std::uint32_t statusWord, int counts[kSignalCounts]) {
  const bool pseudorange = (statusWord & 0x1000u) != 0;
  const bool carrier = (statusWord & 0x800u) != 0 && (statusWord & 0x400u) != 0;
  const std::uint32_t signal = (statusWord & 0x3E00000u) >> 21;
  const int system = RemapSystem((statusWord & 0x70000u) >> 16);
  const Pair pair = PairOf(system, signal);
  if (pair == kNoPair) return;
  if (pseudorange) ++counts[pair];
  if (carrier) ++counts[pair + 1];
}

bool ReadRangeLine(const char* line, std::size_t length, bool asciiCrc, RangeTally& tally) {
  if (line[0] != '#' || !Contains(line, "#RANGEA") || !Contains(line, "*") ||
      !Contains(line, "FINE")) {
    return false;
  }
  if (asciiCrc && !VerifyAsciiCrc(line, length, LastStar(line))) return false;
  RangeTally read;
  if (std::sscanf(line, kRangeHeaderFormat, &read.week, &read.second) != 2) return false;
  const char* body = std::strchr(line, ';');
  if (body == nullptr || std::sscanf(body + 1, "%d", &read.observations) != 1) return false;
  const char* at = std::strchr(body, ',');
  for (int n = 0; n < read.observations && at != nullptr; ++n) {
    int prn = 0;
    unsigned word = 0;
    int used = 0;
    if (std::sscanf(at + 1, kObservationFormat, &prn, &word, &used) != 2) break;
    CountObservation(word, read.counts);
    at += 1 + used;
    if (*at != ',') break;
  }
  tally = read;
  return true;
}

}  // namespace tarnlog
