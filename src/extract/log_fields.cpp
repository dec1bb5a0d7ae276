#include "extract/log_fields.h"

#include "extract/field_cursor.h"

#include <cstdlib>
#include <cstring>

namespace tarnlog {

const char* BehindComma(const char* text, int count) {
  for (int n = 0; n < count; ++n) {
    text = std::strchr(text, ',');
    if (text == nullptr) return nullptr;
    ++text;
  }
  return text;
}

namespace {

// A field of at most two characters, kept as its own text.
struct ShortField {
  char text[3] = {};

  void Take(const char* from, std::size_t length) {
    std::memcpy(text, from, length);
    text[length] = '\0';
  }
  // "%x", failing to 0.
  unsigned AsHex() const {
    char* end = nullptr;
    const unsigned long value = std::strtoul(text, &end, 16);
    return end == text ? 0 : static_cast<unsigned>(value);
  }
};

}  // namespace

bool ReadLongHeader(const char* sentence, LongHeader* header) {
  if (sentence == nullptr || header == nullptr) return false;
  const char* idle = BehindComma(sentence, 3);
  if (idle == nullptr) return false;
  FieldCursor(idle).Double(header->idle);
  const char* week = BehindComma(idle, 2);
  if (week == nullptr) return false;
  return FieldCursor(week).Int(header->week).Comma().Double(header->seconds).ok;
}

bool ReadCompactHeader(const char* sentence, CompactHeader* header) {
  if (sentence == nullptr || header == nullptr) return false;
  // "%*[^,],%d,%*[^,],%*[^,],%d,%d"
  FieldCursor cursor(sentence);
  return cursor.SkipField()
      .Comma()
      .Decimal(header->idle)
      .Comma()
      .SkipField()
      .Comma()
      .SkipField()
      .Comma()
      .Decimal(header->week)
      .Comma()
      .Decimal(header->milliseconds)
      .ok;
}

bool ReadBriefHeader(const char* sentence, CompactHeader* header) {
  if (sentence == nullptr || header == nullptr) return false;
  // "%*[^,],%d,%d"
  FieldCursor cursor(sentence);
  return cursor.SkipField().Comma().Decimal(header->week).Comma().Decimal(header->milliseconds).ok;
}

// For a star at p, with the last field one character long (a comma at p-2)
// that field is dropped and the second-last field is the one or two
// characters before it; otherwise the last field is the two characters at
// p-2 and, when a comma stands at p-3, the second-last field is the one or
// two characters before that. The last star of the sentence decides; a star
// too close to the start to have fields in front of it is passed over.
TrailingHex ReadTrailingHex(const char* sentence, std::size_t length) {
  ShortField last;
  ShortField secondLast;
  if (sentence != nullptr) {
    const std::size_t n = strnlen(sentence, length);
    const char* s = sentence;
    for (const void* found = std::memchr(s, '*', n); found != nullptr;
         found = std::memchr(static_cast<const char*>(found) + 1, '*',
                             n - (static_cast<const char*>(found) + 1 - s))) {
      const std::size_t p = static_cast<std::size_t>(static_cast<const char*>(found) - s);
      if (p < 5) continue;
      if (s[p - 2] == ',') {
        last.Take("", 0);
        if (s[p - 4] != ',') {
          secondLast.Take(s + p - 4, 2);
        } else {
          secondLast.Take(s + p - 3, 1);
        }
      } else {
        last.Take(s + p - 2, 2);
        if (s[p - 3] == ',' && s[p - 5] != ',') {
          secondLast.Take(s + p - 5, 2);
        } else if (s[p - 3] == ',' && s[p - 5] == ',') {
          secondLast.Take(s + p - 4, 1);
        }
      }
    }
  }
  return {last.AsHex(), secondLast.AsHex()};
}

}  // namespace tarnlog
