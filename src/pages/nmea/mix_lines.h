// Reading the lines of a receiver log that the mix logs are built from:
// which message a name asks for, which lines are accepted, and what a
// position, GGA, INS or RANGEA line gives.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarnlog {

// Both builders read the log line by line through a buffer of this size, so
// a longer line arrives in pieces, none of which passes the checks.
inline constexpr std::size_t kMixLineSize = 1024;

enum class MixMessage {
  kPsrPos,
  kRtkPos,
  kMatchedPos,
  kBestPos,
  kGga,
  kBestNav,
  kSppNav,
  kDrPva,
  kPosT,
  kInsPvax,
  kInsPvas,
  kInsPva,
  kPppPos,
  kBestGnssPos,
  kNone,
};

// The first name contained in `name`, tested in the order PSRPOS, RTKPOS,
// MATCHEDPOS, BESTPOS, GGA, BESTNAV, SPPNAV and, with `positionOnlyNames`,
// then DRPVA, PosT, INSPVAX, INSPVAS, INSPVA, PPPPOS, BESTGNSSPOS (INSPVAX
// and INSPVAS come before INSPVA, which they contain). kNone when none is.
MixMessage MatchMixMessage(std::string_view name, bool positionOnlyNames);

bool IsInsMessage(MixMessage message);

// The head a line must contain, such as "#PSRPOSA"; INSPVAS lines begin with
// '%'. Empty for GGA and PosT, which are not ASCII logs.
std::string_view LogHead(MixMessage message);

// The star-to-end rule of a position line: the position-only builder wants
// the text from the first star to the end of the line under 20 characters,
// the range builder at most 20.
inline constexpr std::size_t kPositionStarTail = 20;
inline constexpr std::size_t kRangeStarTail = 21;

// The common checks of an ASCII log line (NUL-terminated, `length` bytes):
// it begins with the head's first character ('#' or '%'), contains `head`
// and not "LOGLIST", has a star whose text to the end of the line is shorter
// than `starTailLimit`, and, with `asciiCrc`, its CRC-32 holds.
bool AcceptAsciiLine(const char* line, std::size_t length, std::string_view head,
                     std::size_t starTailLimit, bool asciiCrc);

// One epoch of a position message or of GGA. `height` is ellipsoidal.
struct MixFix {
  int week = 0;
  double second = 0.0;  // second of week; time of day for GGA
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  int satellites = 0;
  double hdop = 0.0;  // GGA only; the ASCII logs carry none
  int status = 0;
  double age = 0.0;
  // GGA only: the time of the sentence.
  int hours = 0;
  int minutes = 0;
  double seconds = 0.0;
};

// The status code of a solution type: 0 for a line holding
// "INSUFFICIENT_OBS" (whatever the type), 2 differential, 4 fixed, 5 float,
// 6 INS-aided (BESTPOS, BESTNAV and SPPNAV only), 1 for everything else.
// The groups are tested in that order and the words compared whole, so a
// BESTPOS "INS_PSRDIFF" is 2 and a BESTNAV one 6.
int SolutionStatus(MixMessage message, const char* type, const char* line);

// A position line that passed AcceptAsciiLine and holds "SOL_COMPUTED":
// its nine fields (week, second, type, latitude, longitude, height,
// undulation, age, satellites) and the status code. False when the line
// lacks "SOL_COMPUTED" or gives fewer fields.
bool ReadPositionLine(MixMessage message, const char* line, MixFix& fix);

// A GGA sentence: a line that holds "GGA" and a star anywhere (so also
// behind a port stamp), with a valid checksum when `nmeaCrc` is set, and its
// fields up to the geoid separation (the age may be empty). The status is
// the quality. The checksum runs from the line's second byte, so a stamped
// sentence passes only with the check off.
bool ReadGgaLine(const char* line, std::size_t length, bool nmeaCrc, MixFix& fix);

// "%02d%02d%06.3lf": the UTC column.
std::string UtcColumn(int hours, int minutes, double seconds);

// The UTC column of a row of the range builder, from its second of week:
// modulo 86400, less 18 leap seconds; with board value 4 (SiNan) one second
// more, after a result at or below 1.0 has wrapped by 86400.
std::string JoinedUtcColumn(double secondOfWeek, int boardValue);

// One epoch of DRPVA, INSPVA, INSPVAX or INSPVAS.
struct InsFix {
  int week = 0;
  double second = 0.0;
  double drAge = 0.0;   // DRPVA only
  double solAge = 0.0;  // DRPVA only
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  int status = 0;
  double velocity[3] = {};  // north, east, up
  double attitude[3] = {};  // roll, pitch, azimuth
};

// An INS line that passed AcceptAsciiLine. Only three INS words give a row:
// "INS_SOLUTION_GOOD" 3, "INS_SOLUTION_FREE" 6, "INS_ALIGNMENT_COMPLETE" 7;
// a line with none of them, with "UNKNOWN", with a latitude below 0.0000001
// or with too few fields gives none.
bool ReadInsLine(MixMessage message, const char* line, InsFix& fix);

// Epoch thinning: with `frequency` above 0, an epoch stays only when its
// fraction of a second, rounded to hundredths through "%.2lf" and taken as
// whole milliseconds, is a multiple of 1000 / frequency milliseconds.
bool KeepEpoch(double second, int frequency);

// Signal counts in the column order of the mix log: GPS L1 and L2, BD2 B1,
// B2 and B3, GLONASS L1 and L2, each as a pseudorange and a carrier count.
inline constexpr int kSignalCounts = 14;

struct RangeTally {
  int week = 0;
  double second = 0.0;
  int observations = 0;  // ulObs, the count the log gives
  int counts[kSignalCounts] = {};
};

// Adds one observation's tracking status word to `counts`.
void CountObservation(std::uint32_t statusWord, int counts[kSignalCounts]);

// A "#RANGEA" line with a star and "FINE" (and a valid CRC with
// `asciiCrc`): its time and the counts of its observations. Observations
// past the first one that can't be read are not counted.
bool ReadRangeLine(const char* line, std::size_t length, bool asciiCrc, RangeTally& tally);

}  // namespace tarnlog
