#include "text_search.h"

#include <cstring>

namespace tarnlog {

void FindTextTable::Clear() {
  for (int& entry : entries)
    entry = 0;
}

int FindText(const char* text, const char* pattern, int start, FindTextTable& failTable) {
  if (text == nullptr || pattern == nullptr || start < 0) return 0;
  const char* searched = text + start;
  const int patternLength = static_cast<int>(std::strlen(pattern));
  if (patternLength == 0) return 0;
  // A one-character pattern can't restart: its first occurrence is the
  // answer, as strchr finds it (the extractors walk fields this way).
  if (patternLength == 1) {
    const char* hit = std::strchr(searched, pattern[0]);
    return hit ? static_cast<int>(hit - searched) + 1 : 0;
  }
  // This search finds a subset of what a plain search finds, so a text
  // without the pattern anywhere is answered at the speed of strstr.
  if (std::strstr(searched, pattern) == nullptr) return 0;

  constexpr int kTableSize = sizeof failTable.entries / sizeof failTable.entries[0];
  int i = 0;  // in the text
  int j = 0;  // in the pattern
  while (searched[i] != '\0') {
    if (searched[i] == pattern[j]) {
      ++i;
      ++j;
      if (j == patternLength) return i - patternLength + 1;
    } else {
      // The mismatching character is passed over, not tried again against
      // the restarted pattern.
      if (j > 0) {
        const int next = j < kTableSize ? failTable.entries[j] : 0;
        j = next >= 0 && next < j ? next : 0;
      }
      ++i;
    }
  }
  return 0;
}

int IsNumericText(const char* text) {
  if (text == nullptr) return 0;
  for (const char* p = text; *p != '\0'; ++p) {
    const char c = *p;
    if (!((c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+')) return -1;
  }
  return 0;
}

bool HeadHasText(const char* sentence, std::size_t length, const char* pattern,
                 FindTextTable& failTable) {
  constexpr std::size_t kHeadBytes = 100;
  const std::size_t n = strnlen(sentence, length < kHeadBytes ? length : kHeadBytes);
  // FindText finds no more than a plain search, and most heads hold neither
  // text at all.
  if (!memmem(sentence, n, pattern, std::strlen(pattern))) return false;
  char head[kHeadBytes + 1];
  std::memcpy(head, sentence, n);
  head[n] = '\0';
  return FindText(head, pattern, 0, failTable) != 0;
}

}  // namespace tarnlog
