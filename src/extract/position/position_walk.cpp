#include "extract/position/position_walk.h"

#include <algorithm>
#include <cstring>

#include "extract/field_cursor.h"

namespace tarnlog {
namespace {

// "SOL_COMPUTED," is 13 characters; the status compare uses the first 11.
constexpr int kComputedSkip = 13;
constexpr int kComputedCompare = 11;
constexpr int kInsufficientCompare = 12;
constexpr int kTimeStatusBuffer = 32;

// The fifth header field, copied as "%[^,]" into a short buffer and compared
// with "FINE" over four characters.
bool HasFineTimeStatus(const char* sentence, FindTextTable& table) {
  const int field = SkipCommas(sentence, 0, 4, table);
  if (field < 0) return false;
  char status[kTimeStatusBuffer] = {};
  int n = 0;
  for (const char* c = sentence + field; *c != '\0' && *c != ',' && n < kTimeStatusBuffer - 1;
       ++c) {
    status[n++] = *c;
  }
  return n > 0 && std::strncmp(status, "FINE", 4) == 0;
}

// Behind the deviations: the station, the two ages and the four satellite
// counts, then the family's trailing integers. False when a needed field
// can't be read.
bool ReadCountsAndTail(const WalkRules& rules, const char* sentence, int field, PositionRecord* r) {
  const char* at = sentence + field;
  FieldCursor cursor(at);
  if (rules.station == StationRead::kAlwaysQuoted || *at == '"') {
    // Step over the two quote marks and the comma behind them.
    const char* open = std::strchr(at, '"');
    if (open == nullptr) return false;
    const char* close = std::strchr(open + 1, '"');
    if (close == nullptr || close[1] == '\0') return false;
    cursor = FieldCursor(close + 2);
  } else {
    cursor.Int(r->station).Comma();
  }
  cursor.Double(r->differentialAge).Comma().Double(r->solutionAge);
  for (int& count : r->satellites)
    cursor.Comma().Int(count);
  if (!cursor.ok) return false;

  switch (rules.tail) {
    case TailRead::kNone:
      break;
    case TailRead::kReservedAndExtStatus:
      cursor.Comma().Decimal(r->tail[0]).Comma().Hex(r->tail[1]);
      break;
    case TailRead::kThreeIntegers:
      for (int& value : r->tail)
        cursor.Comma().Int(value);
      break;
  }
  return true;
}

}  // namespace

bool HasLogName(const char* sentence, const char* name) {
  return sentence[0] != '\0' && std::strncmp(sentence + 1, name, std::strlen(name)) == 0;
}

bool HeadHasUnknown(const char* sentence, std::size_t length, FindTextTable& table) {
  return HeadHasText(sentence, length, "UNKNOWN", table);
}

int SkipCommas(const char* sentence, int start, int count, FindTextTable& table) {
  int at = start;
  for (int i = 0; i < count; ++i) {
    const int step = FindText(sentence, ",", at, table);
    if (step == 0) return -1;
    at += step;
  }
  return at;
}

bool HasChars(const char* sentence, int start, int count) {
  return static_cast<int>(strnlen(sentence + start, static_cast<std::size_t>(count))) == count;
}

bool LocateType(const char* sentence, int body, int* type, int* statusCode, FindTextTable& table) {
  if (std::strncmp(sentence + body, "SOL_COMPUTED", kComputedCompare) == 0) {
    if (!HasChars(sentence, body, kComputedSkip)) return false;
    *type = body + kComputedSkip;
    *statusCode = 0;
    return true;
  }
  const int step = FindText(sentence, ",", body, table);
  if (step == 0) return false;
  *type = body + step;
  *statusCode = 100;
  return true;
}

WalkEnd WalkPositionSentence(const WalkRules& rules, const char* s, std::size_t length,
                             PositionRecord* r) {
  *r = PositionRecord{};
  r->station = rules.stationDefault;
  if (s == nullptr || length == 0 || !HasLogName(s, rules.name)) return WalkEnd::kRejected;

  FindTextTable table;
  table.Clear();
  if (HeadHasUnknown(s, length, table)) return WalkEnd::kRejected;
  if (rules.status == StatusRule::kFixedOffset && !HasFineTimeStatus(s, table)) {
    return WalkEnd::kRejected;
  }
  if (!ReadLongHeader(s, &r->header)) return WalkEnd::kRejected;
  if (rules.headerInteger) {
    // "%i,%lf,%i" from the week: the field behind the seconds.
    const int field = SkipCommas(s, 0, 7, table);
    if (field >= 0) FieldCursor(s + field).Int(r->headerInteger);
  }

  const int semicolon = FindText(s, ";", 0, table);
  if (semicolon == 0) return WalkEnd::kHeaderRead;
  const int body = semicolon;  // the index behind the ';'
  if (rules.insufficientObs) {
    r->insufficientObs = std::strncmp(s + body, "INSUFFICIENT_OBS", kInsufficientCompare) == 0;
  }

  int type = 0;
  int statusCode = 0;
  if (rules.status == StatusRule::kFixedOffset) {
    if (!HasChars(s, body, kComputedSkip)) return WalkEnd::kHeaderRead;
    type = body + kComputedSkip;
  } else if (!LocateType(s, body, &type, &statusCode, table)) {
    return WalkEnd::kHeaderRead;
  }
  const PositionTypeMatch match = MatchPositionType(rules.codes, s + type);
  r->code = statusCode + match.code;

  int latitude = 0;
  if (rules.status == StatusRule::kFixedOffset) {
    const int step = FindText(s, ",", type, table);
    if (step == 0) return WalkEnd::kTypeMatched;
    latitude = type + step;
  } else {
    if (!HasChars(s, type, match.skip)) return WalkEnd::kTypeMatched;
    latitude = type + match.skip;
  }

  FieldCursor position(s + latitude);
  position.Double(r->latitude)
      .Comma()
      .Double(r->longitude)
      .Comma()
      .Double(r->height)
      .Comma()
      .Double(r->undulation);
  if (!position.ok || r->code == 0) return WalkEnd::kTypeMatched;
  if (rules.positionOnly) return WalkEnd::kComplete;

  int sigmas = 0;
  const int datum = FindText(s, "WGS84", latitude, table);
  if (datum != 0) {
    const int found = latitude + datum;  // one behind the 'W'
    if (rules.sigmaLead == SigmaLead::kNextComma) {
      const int step = FindText(s, ",", found, table);
      if (step == 0) return WalkEnd::kTypeMatched;
      sigmas = found + step;
    } else {
      if (!HasChars(s, found, 5)) return WalkEnd::kTypeMatched;
      sigmas = found + 5;
    }
  } else {
    sigmas = SkipCommas(s, latitude, 5, table);
    if (sigmas < 0) return WalkEnd::kTypeMatched;
  }

  FieldCursor deviations(s + sigmas);
  deviations.Double(r->sigmas[0]).Comma().Double(r->sigmas[1]).Comma().Double(r->sigmas[2]);
  if (!deviations.ok) return WalkEnd::kTypeMatched;
  if (rules.station == StationRead::kQuotedOrPlain) {
    // A numeric station in quotes; "" leaves the default.
    deviations.Comma().Char('"').Decimal(r->station);
  }

  const int station = SkipCommas(s, sigmas, 3, table);
  if (station < 0 || !ReadCountsAndTail(rules, s, station, r)) return WalkEnd::kTypeMatched;

  r->hex = ReadTrailingHex(s, length);
  return WalkEnd::kComplete;
}

}  // namespace tarnlog
