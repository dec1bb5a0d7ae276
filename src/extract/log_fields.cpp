#include "log_fields.h"

#include <cstdio>
#include <cstring>

namespace tarnlog {
namespace {

// The text behind the `count`th comma, or null when there are fewer.
const char* BehindComma(const char* text, int count) {
  for (int n = 0; n < count; ++n) {
    text = std::strchr(text, ',');
    if (text == nullptr) return nullptr;
    ++text;
  }
  return text;
}

// A field of at most two characters, kept as its own text.
struct ShortField {
  char text[3] = {};

  void Take(const char* from, std::size_t length) {
    std::memcpy(text, from, length);
    text[length] = '\0';
  }
  unsigned AsHex() const {
    unsigned value = 0;
    if (std::sscanf(text, "%x", &value) != 1) return 0;
    return value;
  }
};

}  // namespace

bool ReadLongHeader(const char* sentence, LongHeader* header) {
  if (sentence == nullptr || header == nullptr) return false;
  const char* idle = BehindComma(sentence, 3);
  if (idle == nullptr) return false;
  std::sscanf(idle, "%lf", &header->idle);
  const char* week = BehindComma(idle, 2);
  if (week == nullptr) return false;
  return std::sscanf(week, "%i,%lf", &header->week, &header->seconds) == 2;
}

bool ReadCompactHeader(const char* sentence, CompactHeader* header) {
  if (sentence == nullptr || header == nullptr) return false;
  return std::sscanf(sentence, "%*[^,],%d,%*[^,],%*[^,],%d,%d", &header->idle, &header->week,
                     &header->milliseconds) == 3;
}

bool ReadBriefHeader(const char* sentence, CompactHeader* header) {
  if (sentence == nullptr || header == nullptr) return false;
  return std::sscanf(sentence, "%*[^,],%d,%d", &header->week, &header->milliseconds) == 2;
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
    for (std::size_t p = 0; p < length && sentence[p] != '\0'; ++p) {
      if (sentence[p] != '*' || p < 5) continue;
      const char* s = sentence;
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
