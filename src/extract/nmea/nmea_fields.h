// The pieces the NMEA extractors share: the sentence split into fields, the
// UTC time field, degrees and minutes, talkers, mode letters and the day
// rollover.
#pragma once

#include <cstddef>

#include "extract/nmea/nmea_state.h"

namespace tarnlog {

// The fields of a sentence up to its checksum star (or line end), split at
// commas; empty fields count. Lives on the stack, no allocation.
class NmeaFields {
 public:
  static constexpr std::size_t kCapacity = 512;
  static constexpr int kMaxFields = 40;

  // False when the sentence is too long for the buffer.
  bool Split(const char* sentence);
  int Count() const { return count_; }
  // The i-th field, or "" beyond the last.
  const char* operator[](int i) const { return i >= 0 && i < count_ ? fields_[i] : ""; }
  // True when each listed field passes IsNumericText.
  bool Numeric(std::initializer_list<int> indices) const;

 private:
  char text_[kCapacity];
  const char* fields_[kMaxFields];
  int count_ = 0;
};

// "%02d%02d%02d.%02d": hours, minutes, seconds and hundredths.
struct NmeaTime {
  int hours = 0;
  int minutes = 0;
  int seconds = 0;
  int hundredths = 0;
  double SecondsOfDay() const { return hours * 3600 + minutes * 60 + seconds + hundredths / 100.0; }
};
// True when all four values are read from `text`; `end` (if given) gets the
// first character behind them.
bool ReadNmeaTime(const char* text, NmeaTime* time, const char** end = nullptr);

// A latitude ("ddmm.mm", 2 degree digits) or longitude ("dddmm.mm", 3) in
// degrees, negative when the hemisphere field is "S" or "W".
double NmeaDegrees(const char* text, int degreeDigits, const char* hemisphere);

// atof over a field (atoi is TextToInt of platform/saturating.h).
double FieldDouble(const char* text);

// True when the sentence begins with '$', one of the two-letter talkers in
// `talkers` (pairs, e.g. "GNGPBD"), and `type`.
bool HasTalker(const char* sentence, const char* talkers, const char* type);
// The talker column: 1 "$GN", 2 "$GP", 3 "$BD" or "$GB", 4 "$GL", 0 otherwise.
int TalkerNumber(const char* sentence);

// A mode indicator letter as the GGA quality it stands for: "N" 0, "A" 1,
// "D" 2, "P" 3, "R" 4, "F" 5, "E" 6, "M" 7, "S" 8, anything else 0.
int ModeNumber(const char* text);

// The seconds column for a time of day. The day counter steps up when the
// table's last seconds lie more than `threshold` ahead of the new time on
// the current day; the result is stored as the last seconds.
double RollDay(NmeaDayCells& cells, double secondsOfDay, double threshold);

// GGA keeps a tight threshold; the other tables a loose one.
inline constexpr double kGgaRollover = 8000.0;
inline constexpr double kNmeaRollover = 80000.0;

}  // namespace tarnlog
