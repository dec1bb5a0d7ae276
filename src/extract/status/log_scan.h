// The pieces of the status and inertial logs' scanf formats that FieldCursor
// has no reader for: text spans ("%[^c]"), skips up to a character
// ("%*[^c]"), floats ("%f") and width-limited hexadecimal ("%02x"), plus the
// two header shapes these logs use. Each reader gives, for any input, what
// sscanf gives, stops at the NUL and turns `ok` false like FieldCursor does.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "extract/field_cursor.h"

namespace tarnlog {

// A piece of the sentence, not copied.
struct TextSpan {
  const char* begin = nullptr;
  std::size_t length = 0;

  bool Equals(const char* word) const {
    return std::strlen(word) == length && std::memcmp(begin, word, length) == 0;
  }
  // strncmp over `count` characters of `word` against the span as a string.
  bool MatchesOver(const char* word, std::size_t count) const {
    for (std::size_t i = 0; i < count; ++i) {
      const char mine = i < length ? begin[i] : '\0';
      if (mine != word[i]) return false;
      if (mine == '\0') return true;
    }
    return true;
  }
};

// "%[^stop]": one or more characters up to `stop` or the end.
inline FieldCursor& Span(FieldCursor& c, char stop, TextSpan& out) {
  if (!c.ok) return c;
  const char* start = c.at;
  while (*c.at != '\0' && *c.at != stop)
    ++c.at;
  c.ok = c.at != start;
  if (c.ok) out = {start, static_cast<std::size_t>(c.at - start)};
  return c;
}

// "%*[^stop]"
inline FieldCursor& SkipUntil(FieldCursor& c, char stop) {
  TextSpan ignored;
  return Span(c, stop, ignored);
}

// `count` times "%*[^,],".
inline FieldCursor& SkipFields(FieldCursor& c, int count) {
  for (int n = 0; n < count && c.ok; ++n)
    c.SkipField().Comma();
  return c;
}

// "%f": converted to float directly, as scanf does.
inline FieldCursor& Float(FieldCursor& c, float& out) {
  if (!c.ok) return c;
  char* end = nullptr;
  const float value = std::strtof(c.at, &end);
  if (end == c.at) {
    c.ok = false;
  } else {
    out = value;
    c.at = end;
  }
  return c;
}

// "%*i"
inline FieldCursor& SkipInt(FieldCursor& c) {
  int ignored = 0;
  return c.Int(ignored);
}

// "%*f" and "%*lf"
inline FieldCursor& SkipNumber(FieldCursor& c) {
  double ignored = 0.0;
  return c.Double(ignored);
}

// "%<width>x": blanks, then at most `width` characters of sign, "0x" and
// hexadecimal digits.
inline FieldCursor& HexWidth(FieldCursor& c, int width, int& out) {
  if (!c.ok) return c;
  const char* p = c.at;
  while (*p == ' ' || (*p >= '\t' && *p <= '\r'))
    ++p;
  int left = width;
  bool negative = false;
  bool any = false;
  if (left > 0 && (*p == '-' || *p == '+')) {
    negative = *p == '-';
    ++p;
    --left;
  }
  if (left > 0 && *p == '0') {
    any = true;
    ++p;
    --left;
    if (left > 0 && (*p == 'x' || *p == 'X')) {
      ++p;
      --left;
    }
  }
  unsigned value = 0;
  for (; left > 0; --left, ++p) {
    const char ch = *p;
    unsigned digit = 0;
    if (ch >= '0' && ch <= '9') {
      digit = static_cast<unsigned>(ch - '0');
    } else if (ch >= 'a' && ch <= 'f') {
      digit = static_cast<unsigned>(ch - 'a' + 10);
    } else if (ch >= 'A' && ch <= 'F') {
      digit = static_cast<unsigned>(ch - 'A' + 10);
    } else {
      break;
    }
    value = value * 16u + digit;
    any = true;
  }
  if (!any) {
    c.ok = false;
    return c;
  }
  out = static_cast<int>(negative ? 0u - value : value);
  c.at = p;
  return c;
}

// The text behind the first ';', or null.
inline const char* BodyOf(const char* sentence) {
  const char* semicolon = std::strchr(sentence, ';');
  return semicolon ? semicolon + 1 : nullptr;
}

// The first ';' itself, for the formats that begin with it; or null.
inline const char* SemicolonOf(const char* sentence) {
  return std::strchr(sentence, ';');
}

// "%*[^,],%*[^,],%*[^,],%*[^,],%d,%d": week and milliseconds of the
// receiver's compact header, whatever the idle field holds. The cursor stays
// behind the milliseconds.
inline FieldCursor& StatusHeader(FieldCursor& c, int& week, int& milliseconds) {
  return SkipFields(c, 4).Decimal(week).Comma().Decimal(milliseconds);
}

// ",%*[^,],%*[^,],%*[^,],%*[^;];": the rest of the compact header behind
// the milliseconds.
inline FieldCursor& HeaderTail(FieldCursor& c) {
  SkipFields(c.Comma(), 3);
  return SkipUntil(c, ';').Char(';');
}

inline bool Contains(const char* sentence, const char* text) {
  return std::strstr(sentence, text) != nullptr;
}

}  // namespace tarnlog
