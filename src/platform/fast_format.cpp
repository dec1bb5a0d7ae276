#include "platform/fast_format.h"

#include <locale.h>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace tarnlog {
namespace {

struct Conversion {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool zero = false;
  int width = 0;
  int precision = -1;
  int lengthLongs = 0;    // 1: l, 2: ll
  int lengthShorts = 0;   // 1: h, 2: hh
  bool sizeLike = false;  // z, j, t
  char letter = 0;
};

// Parses one conversion after its '%'; false for anything handed to
// vsnprintf (the '#' flag, '*', L, n, p and the e/g/a families).
bool ParseConversion(const char*& p, Conversion& conversion) {
  // The tables' own forms first: "%d", "%i" and "%.Nf".
  if (p[0] == 'd' || p[0] == 'i') {
    conversion.letter = *p++;
    return true;
  }
  if (p[0] == '.' && p[1] >= '0' && p[1] <= '9') {
    if (p[2] == 'f') {
      conversion.precision = p[1] - '0';
      conversion.letter = 'f';
      p += 3;
      return true;
    }
    if (p[2] >= '0' && p[2] <= '9' && p[3] == 'f') {
      conversion.precision = (p[1] - '0') * 10 + (p[2] - '0');
      conversion.letter = 'f';
      p += 4;
      return true;
    }
  }
  for (;; ++p) {
    if (*p == '-')
      conversion.left = true;
    else if (*p == '+')
      conversion.plus = true;
    else if (*p == ' ')
      conversion.space = true;
    else if (*p == '0')
      conversion.zero = true;
    else if (*p == '#' || *p == '\'')
      return false;
    else
      break;
  }
  if (*p == '*') return false;
  while (*p >= '0' && *p <= '9')
    conversion.width = conversion.width * 10 + (*p++ - '0');
  if (*p == '.') {
    ++p;
    if (*p == '*') return false;
    conversion.precision = 0;
    while (*p >= '0' && *p <= '9')
      conversion.precision = conversion.precision * 10 + (*p++ - '0');
  }
  for (;; ++p) {
    if (*p == 'l')
      ++conversion.lengthLongs;
    else if (*p == 'h')
      ++conversion.lengthShorts;
    else if (*p == 'z' || *p == 'j' || *p == 't')
      conversion.sizeLike = true;
    else
      break;
  }
  conversion.letter = *p;
  switch (*p) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
      // Integer precisions are rare in the tables; leave them to the C library.
      if (conversion.precision >= 0) return false;
      break;
    case 'f':
    case 'F':
    case 'c':
    case 's':
    case '%':
      break;
    default:
      return false;
  }
  ++p;
  return true;
}

class Sink {
 public:
  Sink(char* out, std::size_t capacity) : out_(out), capacity_(capacity) {}
  void Put(const char* bytes, std::size_t n) {
    if (size_ < capacity_) {
      const std::size_t take = std::min(n, capacity_ - size_);
      // Rows are made of many short pieces: two overlapping fixed-size
      // copies cost less than a call to memcpy or a loop.
      char* to = out_ + size_;
      if (take >= 8 && take <= 16) {
        std::memcpy(to, bytes, 8);
        std::memcpy(to + take - 8, bytes + take - 8, 8);
      } else if (take >= 4 && take < 8) {
        std::memcpy(to, bytes, 4);
        std::memcpy(to + take - 4, bytes + take - 4, 4);
      } else if (take < 4) {
        for (std::size_t k = 0; k < take; ++k)
          to[k] = bytes[k];
      } else {
        std::memcpy(to, bytes, take);
      }
    }
    size_ += n;
  }
  void PutChar(char c) {
    if (size_ < capacity_) out_[size_] = c;
    ++size_;
  }
  void Fill(char c, int n) {
    for (int i = 0; i < n; ++i, ++size_) {
      if (size_ < capacity_) out_[size_] = c;
    }
  }
  std::size_t Size() const { return size_; }

 private:
  char* out_;
  std::size_t capacity_;
  std::size_t size_ = 0;
};

// Sign, then digits, padded to the width as printf pads numbers.
void PutNumber(Sink& sink, const Conversion& conversion, char sign, const char* digits,
               std::size_t n) {
  const int length = static_cast<int>(n) + (sign ? 1 : 0);
  const int pad = conversion.width > length ? conversion.width - length : 0;
  if (!conversion.left && !conversion.zero) sink.Fill(' ', pad);
  if (sign) sink.PutChar(sign);
  if (!conversion.left && conversion.zero) sink.Fill('0', pad);
  sink.Put(digits, n);
  if (conversion.left) sink.Fill(' ', pad);
}

char SignFor(bool negative, const Conversion& conversion) {
  if (negative) return '-';
  if (conversion.plus) return '+';
  if (conversion.space) return ' ';
  return 0;
}

void PutSigned(Sink& sink, const Conversion& conversion, long long value) {
  char digits[24] = {};
  const unsigned long long magnitude = value < 0 ? 0ull - static_cast<unsigned long long>(value)
                                                 : static_cast<unsigned long long>(value);
  const auto result = std::to_chars(digits, digits + sizeof digits, magnitude);
  PutNumber(sink, conversion, SignFor(value < 0, conversion), digits,
            static_cast<std::size_t>(result.ptr - digits));
}

void PutUnsigned(Sink& sink, Conversion conversion, unsigned long long value) {
  char digits[32];
  const int base = conversion.letter == 'x' || conversion.letter == 'X' ? 16
                   : conversion.letter == 'o'                           ? 8
                                                                        : 10;
  const auto result = std::to_chars(digits, digits + sizeof digits, value, base);
  if (conversion.letter == 'X') {
    for (char* c = digits; c < result.ptr; ++c) {
      if (*c >= 'a' && *c <= 'f') *c = static_cast<char>(*c - 'a' + 'A');
    }
  }
  conversion.plus = conversion.space = false;  // no sign for unsigned conversions
  PutNumber(sink, conversion, 0, digits, static_cast<std::size_t>(result.ptr - digits));
}

// "%.Nf" of a non-negative value as the integer nearest value * 10^N. The
// product is within half an ulp of the exact one (10^N is exact up to 22),
// so away from a half the two round to the same integer; below 2^52 an ulp
// is at most a half. Returns 0 where the product is too large or too close
// to a half to decide.
std::size_t ScaledInteger(double magnitude, int precision, char* out) {
  static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  if (precision > 15) return 0;
  const double scaled = magnitude * kPowers[precision];
  if (!(scaled < 4503599627370496.0)) return 0;                     // 2^52
  const auto truncated = static_cast<std::uint64_t>(scaled);        // floor, as it is not negative
  const double fraction = scaled - static_cast<double>(truncated);  // exact below 2^52
  // scaled * 2^-52 is at least one ulp of scaled: a safe margin.
  const double ulp = scaled * 2.220446049250313e-16;
  if (std::fabs(fraction - 0.5) <= ulp) return 0;
  std::uint64_t rounded = fraction > 0.5 ? truncated + 1 : truncated;
  // Digits from the right: the fraction, the point, then the integer part.
  char text[40];
  char* end = text + sizeof text;
  char* p = end;
  static constexpr char kPairs[] =
      "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
      "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
      "8081828384858687888990919293949596979899";
  int k = 0;
  for (; k + 2 <= precision; k += 2) {
    const auto pair = static_cast<std::size_t>(rounded % 100) * 2;
    rounded /= 100;
    *--p = kPairs[pair + 1];
    *--p = kPairs[pair];
  }
  if (k < precision) {
    *--p = static_cast<char>('0' + rounded % 10);
    rounded /= 10;
  }
  if (precision > 0) *--p = '.';
  while (rounded >= 100) {
    const auto pair = static_cast<std::size_t>(rounded % 100) * 2;
    rounded /= 100;
    *--p = kPairs[pair + 1];
    *--p = kPairs[pair];
  }
  if (rounded >= 10) {
    const auto pair = static_cast<std::size_t>(rounded) * 2;
    *--p = kPairs[pair + 1];
    *--p = kPairs[pair];
  } else {
    *--p = static_cast<char>('0' + rounded);
  }
  const auto n = static_cast<std::size_t>(end - p);
  std::memcpy(out, p, n);
  return n;
}

// "%.Nf" of a non-negative value from its shortest round-trip digits, which
// are much cheaper than the exact expansion. While the N-decimal grid (and
// the digit behind it) needs at most 15 significant digits, the value lies
// closer to its shortest digits than a tenth of the grid step, so rounding
// those digits rounds the value the same way; only an exact half in the
// shortest digits is left undecided. Returns 0 where the exact path must
// answer.
std::size_t RoundShortest(double magnitude, int precision, char* out) {
  if (!(magnitude < 1e14)) return 0;
  int integerDigits = 1;
  for (double limit = 10.0; magnitude >= limit && integerDigits < 15; limit *= 10.0) {
    ++integerDigits;
  }
  if (integerDigits + precision + 1 > 15) return 0;
  char shortest[64];
  const auto result =
      std::to_chars(shortest, shortest + sizeof shortest, magnitude, std::chars_format::fixed);
  if (result.ec != std::errc()) return 0;
  const char* end = result.ptr;
  const char* point = std::find(static_cast<const char*>(shortest), end, '.');
  const char* fraction = point == end ? end : point + 1;
  const int fractionDigits = static_cast<int>(end - fraction);
  // The integer part, then the fraction cut or padded to the precision.
  std::size_t n = static_cast<std::size_t>(point - shortest);
  std::memcpy(out, shortest, n);
  if (precision > 0) out[n++] = '.';
  for (int k = 0; k < precision; ++k)
    out[n++] = k < fractionDigits ? fraction[k] : '0';
  if (fractionDigits <= precision) return n;
  const char dropped = fraction[precision];
  bool roundUp = dropped > '5';
  if (dropped == '5') {
    if (fractionDigits == precision + 1) return 0;  // an exact half: ask the exact path
    roundUp = true;  // more digits follow, and the shortest digits never end in 0
  }
  if (!roundUp) return n;
  // Carry from the last kept digit leftwards, over the point.
  for (std::size_t k = n; k-- > 0;) {
    if (out[k] == '.') continue;
    if (out[k] != '9') {
      ++out[k];
      return n;
    }
    out[k] = '0';
    if (k == 0) {
      std::memmove(out + 1, out, n);
      out[0] = '1';
      return n + 1;
    }
  }
  return n;
}

void PutFixed(Sink& sink, const Conversion& conversion, double value) {
  const int precision = conversion.precision < 0 ? 6 : conversion.precision;
  if (!std::isfinite(value) || precision > 60) {
    // Rare: let the C library spell infinities and not-a-numbers.
    char text[512];
    char format[32];
    std::snprintf(format, sizeof format, "%%%s%s%s%s%d.%d%c", conversion.left ? "-" : "",
                  conversion.plus ? "+" : "", conversion.space ? " " : "",
                  conversion.zero ? "0" : "", conversion.width, precision, conversion.letter);
    const int n = std::snprintf(text, sizeof text, format, value);
    if (n > 0) sink.Put(text, std::min<std::size_t>(static_cast<std::size_t>(n), sizeof text - 1));
    return;
  }
  char digits[400];
  const bool negative = std::signbit(value);
  const double magnitude = negative ? -value : value;
  std::size_t length = ScaledInteger(magnitude, precision, digits);
  if (length == 0) length = RoundShortest(magnitude, precision, digits);
  if (length == 0) {
    const auto result = std::to_chars(digits, digits + sizeof digits, magnitude,
                                      std::chars_format::fixed, precision);
    length = static_cast<std::size_t>(result.ptr - digits);
  }
  PutNumber(sink, conversion, SignFor(negative, conversion), digits, length);
}

void PutText(Sink& sink, const Conversion& conversion, const char* text, std::size_t n) {
  const int pad =
      conversion.width > static_cast<int>(n) ? conversion.width - static_cast<int>(n) : 0;
  if (!conversion.left) sink.Fill(' ', pad);
  sink.Put(text, n);
  if (conversion.left) sink.Fill(' ', pad);
}

constexpr int kNotCovered = -2;

int FastFormatCovered(char* out, std::size_t capacity, const char* format, va_list args) {
  Sink sink(out, capacity);
  const char* p = format;
  while (*p) {
    // The literal text up to the next conversion, mostly a single comma.
    while (*p != '\0' && *p != '%')
      sink.PutChar(*p++);
    if (*p == '\0') break;
    ++p;
    Conversion conversion;
    if (!ParseConversion(p, conversion)) return kNotCovered;
    switch (conversion.letter) {
      case '%':
        sink.PutChar('%');
        break;
      case 'c': {
        const char c = static_cast<char>(va_arg(args, int));
        const int pad = conversion.width > 1 ? conversion.width - 1 : 0;
        if (!conversion.left) sink.Fill(' ', pad);
        sink.PutChar(c);
        if (conversion.left) sink.Fill(' ', pad);
        break;
      }
      case 's': {
        const char* text = va_arg(args, const char*);
        if (!text) text = "(null)";
        const std::size_t n = conversion.precision >= 0
                                  ? strnlen(text, static_cast<std::size_t>(conversion.precision))
                                  : std::strlen(text);
        PutText(sink, conversion, text, n);
        break;
      }
      case 'f':
      case 'F':
        PutFixed(sink, conversion, va_arg(args, double));
        break;
      case 'd':
      case 'i': {
        long long value;
        if (conversion.lengthLongs >= 2 || conversion.sizeLike)
          value = va_arg(args, long long);
        else if (conversion.lengthLongs == 1)
          value = va_arg(args, long);
        else
          value = va_arg(args, int);
        if (conversion.lengthShorts == 1) value = static_cast<short>(value);
        if (conversion.lengthShorts >= 2) value = static_cast<signed char>(value);
        PutSigned(sink, conversion, value);
        break;
      }
      default: {  // u x X o
        unsigned long long value;
        if (conversion.lengthLongs >= 2 || conversion.sizeLike)
          value = va_arg(args, unsigned long long);
        else if (conversion.lengthLongs == 1)
          value = va_arg(args, unsigned long);
        else
          value = va_arg(args, unsigned);
        if (conversion.lengthShorts == 1) value = static_cast<unsigned short>(value);
        if (conversion.lengthShorts >= 2) value = static_cast<unsigned char>(value);
        PutUnsigned(sink, conversion, value);
        break;
      }
    }
  }
  return static_cast<int>(sink.Size());
}

}  // namespace

namespace {

int LibraryFormat(char* out, std::size_t capacity, const char* format, va_list args) {
  static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
  const locale_t previous = cLocale ? uselocale(cLocale) : static_cast<locale_t>(0);
  const int n = std::vsnprintf(out, capacity, format, args);
  if (previous) uselocale(previous);
  return n;
}

}  // namespace

int FastFormat(char* out, std::size_t capacity, const char* format, va_list args) {
  // A conversion this formatter doesn't cover hands the whole format, from
  // its first argument, to the C library.
  va_list fromStart;
  va_copy(fromStart, args);
  const int n = FastFormatCovered(out, capacity, format, args);
  const int result = n == kNotCovered ? LibraryFormat(out, capacity, format, fromStart) : n;
  va_end(fromStart);
  return result;
}

std::string FormatString(const char* format, ...) {
  char buffer[256];
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  const int length = FastFormat(buffer, sizeof buffer, format, args);
  va_end(args);
  std::string text;
  if (length > 0 && static_cast<std::size_t>(length) <= sizeof buffer) {
    text.assign(buffer, static_cast<std::size_t>(length));
  } else if (length > 0) {
    text.resize(static_cast<std::size_t>(length));
    FastFormat(text.data(), text.size(), format, again);
  }
  va_end(again);
  return text;
}

int FormatText(char* out, std::size_t capacity, const char* format, ...) {
  if (capacity == 0) return 0;
  va_list args;
  va_start(args, format);
  const int length = FastFormat(out, capacity - 1, format, args);
  va_end(args);
  const std::size_t end = length < 0 ? 0 : std::min(static_cast<std::size_t>(length), capacity - 1);
  out[end] = '\0';
  return length;
}

}  // namespace tarnlog
