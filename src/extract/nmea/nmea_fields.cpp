#include "extract/nmea/nmea_fields.h"

#include <cstdlib>
#include <cstring>

#include "extract/read_number.h"
#include "extract/text_search.h"

namespace tarnlog {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// sscanf's "%02d": blanks, then at most two characters of sign and digits.
bool ReadTwoDigits(const char*& at, int& out) {
  const char* p = at;
  while (IsBlank(*p))
    ++p;
  int width = 2;
  bool negative = false;
  if (*p == '+' || *p == '-') {
    negative = *p == '-';
    ++p;
    --width;
  }
  int value = 0;
  int digits = 0;
  for (; width > 0 && *p >= '0' && *p <= '9'; --width, ++p, ++digits)
    value = value * 10 + (*p - '0');
  if (digits == 0) return false;
  out = negative ? -value : value;
  at = p;
  return true;
}

}  // namespace

bool NmeaFields::Split(const char* sentence) {
  count_ = 0;
  if (sentence == nullptr) return false;
  std::size_t n = 0;
  for (; sentence[n] != '\0' && sentence[n] != '*' && sentence[n] != '\r' && sentence[n] != '\n';
       ++n) {
    if (n + 1 >= kCapacity) return false;
    text_[n] = sentence[n];
  }
  text_[n] = '\0';
  fields_[count_++] = text_;
  for (std::size_t i = 0; i < n && count_ < kMaxFields; ++i) {
    if (text_[i] == ',') {
      text_[i] = '\0';
      fields_[count_++] = text_ + i + 1;
    }
  }
  return true;
}

bool NmeaFields::Numeric(std::initializer_list<int> indices) const {
  for (int i : indices) {
    if (IsNumericText((*this)[i]) != 0) return false;
  }
  return true;
}

bool ReadNmeaTime(const char* text, NmeaTime* time, const char** end) {
  const char* at = text;
  NmeaTime t;
  if (!ReadTwoDigits(at, t.hours) || !ReadTwoDigits(at, t.minutes) ||
      !ReadTwoDigits(at, t.seconds) || *at != '.') {
    return false;
  }
  ++at;
  if (!ReadTwoDigits(at, t.hundredths)) return false;
  *time = t;
  if (end != nullptr) *end = at;
  return true;
}

double FieldDouble(const char* text) {
  double value = 0.0;
  ReadDouble(text, &value);
  return value;
}

double NmeaDegrees(const char* text, int degreeDigits, const char* hemisphere) {
  char degrees[4] = {};
  int n = 0;
  while (n < degreeDigits && n < 3 && text[n] != '\0') {
    degrees[n] = text[n];
    ++n;
  }
  const double value = FieldDouble(degrees) + FieldDouble(text + n) / 60.0;
  return hemisphere[0] == 'S' || hemisphere[0] == 'W' ? -value : value;
}

bool HasTalker(const char* sentence, const char* talkers, const char* type) {
  if (sentence[0] != '$') return false;
  for (const char* t = talkers; t[0] != '\0' && t[1] != '\0'; t += 2) {
    if (sentence[1] == t[0] && sentence[2] == t[1]) {
      return std::strncmp(sentence + 3, type, std::strlen(type)) == 0;
    }
  }
  return false;
}

int TalkerNumber(const char* sentence) {
  if (std::strncmp(sentence, "$GN", 3) == 0) return 1;
  if (std::strncmp(sentence, "$GP", 3) == 0) return 2;
  if (std::strncmp(sentence, "$BD", 3) == 0 || std::strncmp(sentence, "$GB", 3) == 0) return 3;
  if (std::strncmp(sentence, "$GL", 3) == 0) return 4;
  return 0;
}

int ModeNumber(const char* text) {
  static constexpr char kLetters[] = "NADPRFEMS";
  if (text[0] == '\0') return 0;
  const char* found = std::strchr(kLetters, text[0]);
  return found == nullptr ? 0 : static_cast<int>(found - kLetters);
}

double RollDay(NmeaDayCells& cells, double secondsOfDay, double threshold) {
  if (cells.lastSeconds - (cells.day * 86400.0 + secondsOfDay) > threshold) ++cells.day;
  cells.lastSeconds = cells.day * 86400.0 + secondsOfDay;
  return cells.lastSeconds;
}

}  // namespace tarnlog
