#include "extract/read_number.h"

#include <cctype>
#include <charconv>
#include <cstdlib>
#include <cstring>

namespace tarnlog {

const char* ReadDouble(const char* text, double* value) {
  const char* p = text;
  while (std::isspace(static_cast<unsigned char>(*p)))
    ++p;
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
