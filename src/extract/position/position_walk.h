// The field walk that the BESTPOS, RTK, MATCHED, PSR and PPP logs share, with
// the differences between the families as rules, and the small pieces the
// family files and BESTXYZA use besides.
#pragma once

#include <cstddef>

#include "extract/log_fields.h"
#include "extract/solution_code.h"
#include "extract/text_search.h"

namespace tarnlog {

// How the solution status decides where the position type starts.
enum class StatusRule {
  // "SOL_COMPUTED": the type is 13 characters behind the ';'; any other
  // status: behind the next comma, and the code starts at 100.
  kSolutionComputed,
  // PSR and PPP: the type is always 13 characters behind the ';', latitude
  // behind the comma after it, and the status adds nothing. The time status
  // (fifth header field) must begin with "FINE".
  kFixedOffset,
};

// Where the standard deviations start once "WGS84" is found.
enum class SigmaLead {
  kNextComma,  // behind the comma that follows the datum (BESTPOS)
  kFiveOn,     // five characters on from the found position
};

enum class StationRead {
  // A numeric station in quotes is read behind the deviations; an unquoted
  // station field is read as the number itself.
  kQuotedOrPlain,
  // Two quote marks are stepped over whatever the field holds.
  kAlwaysQuoted,
};

// What is read behind the four satellite counts. These fields are read as
// far as they go; an unreadable one stays 0 and doesn't cost the row.
enum class TailRead {
  kNone,
  kReservedAndExtStatus,  // "%d,%x": the reserved field, the extended status
  kThreeIntegers,         // "%i,%i,%i"
};

struct WalkRules {
  const char* name;  // the log name as it follows the leading '#'
  PositionFamily codes;
  StatusRule status;
  SigmaLead sigmaLead;
  StationRead station;
  TailRead tail;
  int stationDefault;    // the station number when the field holds none
  bool headerInteger;    // the header is read "%i,%lf,%i" (the MATCHED logs)
  bool positionOnly;     // the walk ends with latitude to undulation
  bool insufficientObs;  // notes "INSUFFICIENT_OBS" for the last-position store
};

struct PositionRecord {
  LongHeader header;
  int headerInteger = 0;  // the receiver status field, read with "%i"
  int code = 0;
  bool insufficientObs = false;
  double latitude = 0.0;
  double longitude = 0.0;
  double height = 0.0;
  double undulation = 0.0;
  double sigmas[3] = {0.0, 0.0, 0.0};  // latitude, longitude, height
  int station = 0;
  double differentialAge = 0.0;
  double solutionAge = 0.0;
  int satellites[4] = {0, 0, 0, 0};  // tracked, used, used on L1, multi-frequency
  int tail[3] = {0, 0, 0};           // by TailRead, in the order read
  TrailingHex hex;

  double EllipsoidalHeight() const { return height + undulation; }
};

// How far a walk got. The RTKPOSA statistics count epochs and types of
// sentences that leave no row.
enum class WalkEnd {
  kRejected,     // wrong log, "UNKNOWN" in the head, time status, or no header
  kHeaderRead,   // week, seconds and idle are in the record
  kTypeMatched,  // the code is in the record too
  kComplete,     // every field the row needs is in the record
};

WalkEnd WalkPositionSentence(const WalkRules& rules, const char* sentence, std::size_t length,
                             PositionRecord* record);

// True when `sentence` begins, behind its first character, with `name`.
bool HasLogName(const char* sentence, const char* name);
// True when the first 100 bytes hold "UNKNOWN" (by FindText).
bool HeadHasUnknown(const char* sentence, std::size_t length, FindTextTable& table);
// The index behind the `count`-th comma from `start`, or -1 when there are
// fewer commas.
int SkipCommas(const char* sentence, int start, int count, FindTextTable& table);
// True when the `count` characters from `start` are all before the NUL.
bool HasChars(const char* sentence, int start, int count);

// The solution status at `body`: the index where the type starts and the
// code the status contributes (0 or 100); false when the type can't be found.
bool LocateType(const char* sentence, int body, int* type, int* statusCode, FindTextTable& table);

}  // namespace tarnlog
