#include "checksums.h"

#include <array>
#include <cstdio>
#include <cstring>

#include "little_endian.h"

namespace tarnlog {
namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320u;

// Sixteen tables for slicing-by-16: table[0] is the usual byte-wise table,
// and table[k] carries a byte's contribution over k further zero bytes.
constexpr std::size_t kSlices = 16;
using CrcTables = std::array<std::array<std::uint32_t, 256>, kSlices>;

constexpr CrcTables MakeCrcTables() {
  CrcTables tables{};
  for (std::uint32_t n = 0; n < 256; ++n) {
    std::uint32_t crc = n;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 1) ? (crc >> 1) ^ kPolynomial : crc >> 1;
    tables[0][n] = crc;
  }
  for (std::uint32_t n = 0; n < 256; ++n) {
    for (std::size_t k = 1; k < kSlices; ++k) {
      const std::uint32_t previous = tables[k - 1][n];
      tables[k][n] = (previous >> 8) ^ tables[0][previous & 0xFF];
    }
  }
  return tables;
}
constexpr CrcTables kCrcTables = MakeCrcTables();

// The span of the text behind `from`, at most `limit` bytes, that ends
// before a NUL.
std::size_t TextLength(const char* from, std::size_t limit) {
  const void* nul = std::memchr(from, '\0', limit);
  return nul == nullptr ? limit : static_cast<std::size_t>(static_cast<const char*>(nul) - from);
}

int HexDigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Reads `text` (`length` bytes, no NUL needed) as "%08x" would; false when
// nothing converts.
bool ReadHex8(const char* text, std::size_t length, std::uint32_t* value) {
  // The usual case: eight hex digits.
  if (length >= 8) {
    std::uint32_t result = 0;
    std::size_t n = 0;
    for (; n < 8; ++n) {
      const int digit = HexDigitValue(text[n]);
      if (digit < 0) break;
      result = result << 4 | static_cast<std::uint32_t>(digit);
    }
    if (n == 8) {
      *value = result;
      return true;
    }
  }
  // Anything else goes through the C library on a bounded copy: leading
  // blanks don't count towards the width, so they are passed over first.
  std::size_t start = 0;
  while (start < length && (text[start] == ' ' || (text[start] >= '\t' && text[start] <= '\r'))) {
    ++start;
  }
  char copy[9] = {};
  const std::size_t take = length - start < 8 ? length - start : 8;
  std::memcpy(copy, text + start, take);
  unsigned int read = 0;
  if (std::sscanf(copy, "%x", &read) != 1) return false;
  *value = read;
  return true;
}

}  // namespace

std::uint32_t Crc32Block(const void* bytes, std::size_t length) {
  const auto* p = static_cast<const unsigned char*>(bytes);
  const auto& t = kCrcTables;
  std::uint32_t crc = 0;
  while (length >= kSlices) {
    const std::uint32_t low = crc ^ LoadLe32(p);
    crc = t[15][low & 0xFF] ^ t[14][(low >> 8) & 0xFF] ^ t[13][(low >> 16) & 0xFF] ^
          t[12][low >> 24] ^ t[11][p[4]] ^ t[10][p[5]] ^ t[9][p[6]] ^ t[8][p[7]] ^ t[7][p[8]] ^
          t[6][p[9]] ^ t[5][p[10]] ^ t[4][p[11]] ^ t[3][p[12]] ^ t[2][p[13]] ^ t[1][p[14]] ^
          t[0][p[15]];
    p += kSlices;
    length -= kSlices;
  }
  while (length-- > 0)
    crc = (crc >> 8) ^ t[0][(*p++ ^ crc) & 0xFF];
  return crc;
}

std::uint8_t NmeaXor(std::size_t length, const void* bytes) {
  const auto* p = static_cast<const unsigned char*>(bytes);
  unsigned char result = 0;
  for (std::size_t i = 0; i < length; ++i)
    result ^= p[i];
  return result;
}

bool VerifyAsciiCrc(const char* line, std::size_t length, std::size_t starIndex) {
  constexpr std::size_t kStarLimit = 30720;
  if (line == nullptr || starIndex < 1 || starIndex >= kStarLimit || length < 1) return false;
  // The span between the leading '#' or '%' and the star, cut at a NUL.
  std::size_t span = starIndex - 1;
  if (span > length - 1) span = length - 1;
  const std::uint32_t computed = Crc32Block(line + 1, TextLength(line + 1, span));

  const std::size_t text = TextLength(line, length);
  const void* star = std::memchr(line, '*', text);
  if (star == nullptr) return false;
  const char* stored = static_cast<const char*>(star) + 1;
  std::uint32_t value = 0;
  if (!ReadHex8(stored, static_cast<std::size_t>(line + text - stored), &value)) return false;
  return value == computed;
}

bool VerifyNmeaChecksum(const char* line, std::size_t length, std::size_t starIndex) {
  constexpr std::size_t kLimit = 255;
  if (line == nullptr || starIndex > kLimit || length > kLimit || starIndex < 1) return false;
  const std::size_t span = starIndex - 1 < length ? starIndex - 1 : (length > 0 ? length - 1 : 0);
  const unsigned sum = NmeaXor(span, line + 1);
  // "%02X" and "%02x" of the sum.
  static constexpr char kUpper[] = "0123456789ABCDEF";
  static constexpr char kLower[] = "0123456789abcdef";
  const char upper[3] = {kUpper[sum >> 4], kUpper[sum & 15], '\0'};
  const char lower[3] = {kLower[sum >> 4], kLower[sum & 15], '\0'};
  // The two characters behind the star, as far as the sentence has them.
  char stored[3] = {};
  for (std::size_t n = 0; n < 2; ++n) {
    const std::size_t at = starIndex + 1 + n;
    if (at >= length || line[at] == '\0') break;
    stored[n] = line[at];
  }
  return std::strncmp(stored, upper, 2) == 0 || std::strncmp(stored, lower, 2) == 0;
}

}  // namespace tarnlog
