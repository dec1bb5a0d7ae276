#include "extract/record_time/line_values.h"

#include <cstring>
#include <string_view>

#include "extract/field_cursor.h"
#include "extract/gps_time.h"
#include "extract/log_fields.h"
#include "extract/read_number.h"
#include "extract/status/log_scan.h"

namespace tarnlog::record_time {
namespace {

// The `index`th field of the body (from 0), up to its comma, the star or
// the line end; empty when the body has fewer fields or the field is empty.
std::string_view BodyField(const char* body, int index) {
  const char* at = body;
  for (int n = 0; n < index; ++n) {
    at = std::strpbrk(at, ",*");
    if (at == nullptr || *at == '*') return {};
    ++at;
  }
  return std::string_view(at, std::strcspn(at, ",*\r\n"));
}

// "%d" of a body field.
bool FieldInt(const char* body, int index, int& value) {
  const std::string_view field = BodyField(body, index);
  return !field.empty() && FieldCursor(field.data()).Decimal(value).ok;
}

// The long header's week and seconds, then the two hexadecimal words
// behind the seconds, in one pass.
bool ReadHeaderWords(const char* line, LineValues& values) {
  const char* week = BehindComma(line, 5);
  return week != nullptr && FieldCursor(week)
                                .Int(values.week)
                                .Comma()
                                .Double(values.seconds)
                                .Comma()
                                .Hex(values.first)
                                .Comma()
                                .Hex(values.second)
                                .ok;
}

// The long header's week and seconds.
bool ReadLongTime(const char* line, int& week, double& seconds) {
  LongHeader header;
  if (!ReadLongHeader(line, &header)) return false;
  week = header.week;
  seconds = header.seconds;
  return true;
}

// The compact header's week, and its milliseconds as seconds.
bool ReadCompactTime(const char* line, int& week, double& seconds) {
  CompactHeader header;
  if (!ReadCompactHeader(line, &header)) return false;
  week = header.week;
  seconds = header.Seconds();
  return true;
}

// Two decimal digits.
bool TwoDigits(const char*& at, int& value) {
  if (at[0] < '0' || at[0] > '9' || at[1] < '0' || at[1] > '9') return false;
  value = (at[0] - '0') * 10 + (at[1] - '0');
  at += 2;
  return true;
}

// A GGA's time "hhmmss.ss": hours, minutes, seconds and hundredths, each
// two digits; a fraction of one digit counts as tenths. Hours past 23,
// minutes or seconds past 59 are no time.
bool ReadGgaTime(const char* line, LineValues& values) {
  const char* at = BehindComma(line, 1);
  if (at == nullptr) return false;
  int seconds = 0;
  if (!TwoDigits(at, values.hours) || !TwoDigits(at, values.minutes) || !TwoDigits(at, seconds) ||
      *at++ != '.' || *at < '0' || *at > '9') {
    return false;
  }
  int hundredths = (*at++ - '0') * 10;
  if (*at >= '0' && *at <= '9') hundredths += *at - '0';
  if (values.hours > 23 || values.minutes > 59 || seconds > 59) return false;
  values.daySeconds = seconds + hundredths / 100.0;
  return true;
}

// An RMC's time: "%02d%02d%lf".
bool ReadClockTime(const char* at, LineValues& values) {
  if (at == nullptr || !TwoDigits(at, values.hours) || !TwoDigits(at, values.minutes)) return false;
  return ReadDouble(at, &values.daySeconds) != at;
}

// "$AHGH,hhmmss.ss,dd,mm,yyyy,...": the time and date as UTC writes them,
// to GPS week and seconds.
bool ReadAhgh(const char* line, LineValues& values) {
  if (!ReadClockTime(BehindComma(line, 1), values)) return false;
  CalendarTime date;
  const char* day = BehindComma(line, 2);
  FieldCursor cursor(day ? day : "");
  cursor.Decimal(date.day).Comma().Decimal(date.month).Comma().Decimal(date.year);
  if (!cursor.ok || date.year < 1980 || date.year > 2099 || date.month < 1 || date.month > 12 ||
      date.day < 1 || date.day > 31 || values.hours > 23 || values.minutes > 59) {
    return false;
  }
  date.hour = values.hours;
  date.minute = values.minutes;
  date.seconds = values.daySeconds;
  const GPSTime time = GPSTime::FromCalendar(date);
  values.week = time.week;
  values.seconds = time.seconds;
  return true;
}

}  // namespace

bool ReadLineValues(const LogType& type, const char* line, LineValues& values) {
  values = LineValues{};
  switch (type.reading) {
    case Reading::kGga:
      return ReadGgaTime(line, values);
    case Reading::kRmc:
      return ReadClockTime(BehindComma(line, 1), values);
    case Reading::kAhgh:
      return ReadAhgh(line, values);
    case Reading::kCompactTime:
      return ReadCompactTime(line, values.week, values.seconds);
    case Reading::kLongTime:
      return ReadLongTime(line, values.week, values.seconds);
    default:
      break;
  }
  const bool words = type.reading != Reading::kSolution && type.reading != Reading::kSsr &&
                     type.reading != Reading::kGalileoSignal && type.reading != Reading::kBd3Signal;
  if (words ? !ReadHeaderWords(line, values) : !ReadLongTime(line, values.week, values.seconds)) {
    return false;
  }
  if (type.reading == Reading::kHeaderWords) return true;
  const char* body = BodyOf(line);
  if (body == nullptr) return false;
  switch (type.reading) {
    case Reading::kSolution: {
      const std::string_view status = BodyField(body, 0);
      const std::string_view kind = BodyField(body, 1);
      if (status.empty() || kind.empty()) return false;
      // A word the tables don't know still gives its line, with -1.
      values.first = SolutionStatusNumber(status);
      values.second = PositionTypeNumber(kind);
      return true;
    }
    case Reading::kGpsSubframe:  // decode number, PRN, subframe id, ...
      return FieldInt(body, 1, values.satellite);
    case Reading::kGloString:  // slot, frequency, string, ...
      return FieldInt(body, 0, values.satellite);
    case Reading::kBdsSubframe: {  // channel, PRN, signal word, ...
      const std::string_view word = BodyField(body, 2);
      if (!FieldInt(body, 1, values.satellite) || word.empty()) return false;
      values.signal = BeiDouSignalNumber(word);
      return true;
    }
    case Reading::kHeading: {  // the station id, quoted, ninth of the body
      const std::string_view field = BodyField(body, 8);
      return field.size() > 1 && field[0] == '"' &&
             FieldCursor(field.data() + 1).Decimal(values.more[0]).ok;
    }
    case Reading::kEvent:
      return FieldInt(body, 0, values.more[0]) && FieldInt(body, 1, values.more[1]) &&
             FieldInt(body, 2, values.more[2]);
    case Reading::kSsr: {  // system letter, entry count, ...
      const std::string_view system = BodyField(body, 0);
      if (system.empty() || !FieldInt(body, 1, values.more[1])) return false;
      values.more[0] = SystemNumber(system[0]);
      return true;
    }
    case Reading::kGalileoSignal:  // channel, PRN, signal word, ...
    case Reading::kBd3Signal: {
      const std::string_view word = BodyField(body, 2);
      if (word.empty()) return false;
      values.signal = type.reading == Reading::kGalileoSignal ? GalileoSignalNumber(word)
                                                              : Bd3SignalNumber(word);
      return true;
    }
    default:
      return false;
  }
}

bool ReadDirectValues(const char* line, DirectValues& values) {
  values = DirectValues{};
  if (ReadCompactTime(line, values.week, values.seconds)) {
    const char* more = BehindComma(line, 6);
    FieldCursor cursor(more ? more : "");
    for (int k = 0; k < 4 && cursor.ok; ++k) {
      if (k > 0) cursor.Comma();
      cursor.Decimal(values.more[k]);
    }
    return true;
  }
  if (!ReadLongTime(line, values.week, values.seconds)) return false;
  if (const char* words = BehindComma(line, 7)) {
    FieldCursor(words).Hex(values.more[0]).Comma().Hex(values.more[1]);
  }
  return true;
}

}  // namespace tarnlog::record_time
