#include "extract/read_number.h"

#include <cctype>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tarnlog {
namespace {

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Plain decimals of at most 15 digits ("-114.03066788586"): the digits as an
// integer are exact in a double, and so is 10^k for k <= 22, so their one
// division is rounded exactly as strtod rounds. Returns null where the text
// is anything else.
const char* ReadPlainDecimal(const char* p, double* value) {
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  std::uint64_t mantissa = 0;
  int digits = 0;
  int fractionDigits = 0;
  const char* start = p;
  for (; *p >= '0' && *p <= '9'; ++p) {
    mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    if (mantissa != 0) ++digits;
  }
  const bool integerPart = p != start;
  if (*p == '.') {
    ++p;
    const char* fraction = p;
    for (; *p >= '0' && *p <= '9'; ++p) {
      mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
      if (mantissa != 0) ++digits;
      ++fractionDigits;
      if (fractionDigits > 22) return nullptr;
    }
    if (!integerPart && p == fraction) return nullptr;
  } else if (!integerPart) {
    return nullptr;
  }
  // Exponents, hexadecimal, inf and nan, and long numbers go the slow way.
  if (digits > 15 || *p == 'e' || *p == 'E' || *p == 'x' || *p == 'X') return nullptr;
  const double magnitude = static_cast<double>(mantissa) / kPowersOfTen[fractionDigits];
  *value = negative ? -magnitude : magnitude;
  return p;
}

}  // namespace

const char* ReadDouble(const char* text, double* value) {
  const char* p = text;
  while (std::isspace(static_cast<unsigned char>(*p)))
    ++p;
  if (const char* end = ReadPlainDecimal(p, value)) return end;
  // from_chars takes no '+' and reads no hexadecimal in its general form;
  // those, numbers out of range and anything overlong go to strtod.
  const bool plus = *p == '+';
  const char* number = plus ? p + 1 : p;
  const char* digits = *number == '-' ? number + 1 : number;
  const bool hexadecimal = digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X');
  if (!hexadecimal && !(plus && *number == '-')) {
    constexpr std::size_t kLongest = 64;
    const char* last = number + strnlen(number, kLongest);
    const auto result = std::from_chars(number, last, *value);
    if (result.ec == std::errc() &&
        (result.ptr < last || static_cast<std::size_t>(last - number) < kLongest)) {
      return result.ptr;
    }
  }
  char* end = nullptr;
  *value = std::strtod(text, &end);
  return end;
}

}  // namespace tarnlog
