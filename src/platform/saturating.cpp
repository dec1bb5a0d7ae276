#include "platform/saturating.h"

#include <climits>
#include <cmath>

namespace tarnlog {

int TextToInt(const char* text) {
  if (text == nullptr) return 0;
  while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
    ++text;
  const bool negative = *text == '-';
  if (*text == '-' || *text == '+') ++text;
  // Counted toward the negative end, whose magnitude is the larger.
  long long value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    value = value * 10 - (*text - '0');
    if (value < INT_MIN) return negative ? INT_MIN : INT_MAX;
  }
  if (negative) return static_cast<int>(value);
  return value == INT_MIN ? INT_MAX : static_cast<int>(-value);
}

int SaturatingInt(double value) {
  if (std::isnan(value)) return 0;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  return static_cast<int>(value);
}

}  // namespace tarnlog
