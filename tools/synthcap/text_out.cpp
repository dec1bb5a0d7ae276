#include "synthcap/text_out.h"

namespace tarnlog::synth {
namespace {

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3,  1e4,  1e5, 1e6,
                                   1e7, 1e8, 1e9, 1e10, 1e11, 1e12};

// Writes the digits of `value` backwards from `end`; returns the first.
char* DigitsBackwards(char* end, std::uint64_t value) {
  do {
    *--end = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value != 0);
  return end;
}

void AppendHexDigits(std::string& out, std::uint32_t value, int digits, const char* alphabet) {
  char text[8];
  for (int i = digits - 1; i >= 0; --i) {
    text[i] = alphabet[value & 0xF];
    value >>= 4;
  }
  out.append(text, static_cast<std::size_t>(digits));
}

}  // namespace

void AppendInt(std::string& out, std::int64_t value) {
  char text[24];
  char* const end = text + sizeof text;
  const std::uint64_t magnitude =
      value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  char* first = DigitsBackwards(end, magnitude);
  if (value < 0) *--first = '-';
  out.append(first, static_cast<std::size_t>(end - first));
}

void AppendFixed(std::string& out, double value, int decimals) {
  const bool negative = value < 0;
  const double scaled = (negative ? -value : value) * kPowersOfTen[decimals] + 0.5;
  std::uint64_t units = static_cast<std::uint64_t>(scaled);
  char text[40];
  char* const end = text + sizeof text;
  char* first = end;
  for (int i = 0; i < decimals; ++i) {
    *--first = static_cast<char>('0' + units % 10);
    units /= 10;
  }
  if (decimals > 0) *--first = '.';
  first = DigitsBackwards(first, units);
  // A value that rounds to zero keeps its sign, as printf does.
  if (negative) *--first = '-';
  out.append(first, static_cast<std::size_t>(end - first));
}

void AppendHex(std::string& out, std::uint32_t value, int digits) {
  AppendHexDigits(out, value, digits, "0123456789abcdef");
}

void AppendUpperHex(std::string& out, std::uint32_t value, int digits) {
  AppendHexDigits(out, value, digits, "0123456789ABCDEF");
}

void AppendPadded(std::string& out, std::uint32_t value, int digits) {
  char text[10];
  for (int i = digits - 1; i >= 0; --i) {
    text[i] = static_cast<char>('0' + value % 10);
    value /= 10;
  }
  out.append(text, static_cast<std::size_t>(digits));
}

}  // namespace tarnlog::synth
