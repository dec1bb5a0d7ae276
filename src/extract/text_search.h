// Small text helpers shared by the extractors.
#pragma once

#include <cstddef>

namespace tarnlog {

// The extractors' fail table: ten integers, zeroed at the start of each call.
struct FindTextTable {
  int entries[10] = {};
  void Clear();
};

// 1-based position, counted from `start`, of the first match of `pattern` in
// the NUL-terminated `text + start`; 0 when there is none. The search has the
// shape of Knuth-Morris-Pratt but every caller hands it an all-zero fail
// table, so after a partial match the pattern restarts and the mismatching
// character is not looked at again: "LLOCAL" does not contain "LOCAL".
// The result of a search for "," is the offset of the character behind it.
int FindText(const char* text, const char* pattern, int start, FindTextTable& failTable);

// FindText over the first 100 bytes of a sentence, where the extractors
// look for "UNKNOWN" and "LOCAL": true when it finds `pattern` there.
bool HeadHasText(const char* sentence, std::size_t length, const char* pattern,
                 FindTextTable& failTable);

// 0 when every character up to the NUL is a digit, '.', '-' or '+' (the
// empty text too), -1 otherwise.
int IsNumericText(const char* text);

}  // namespace tarnlog
