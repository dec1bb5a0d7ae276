// Reading the header and the trailing fields of a log.
#pragma once

#include <cstddef>

namespace tarnlog {

// The text behind the `count`th comma, or null when there are fewer.
const char* BehindComma(const char* text, int count);

// "#NAME,port,sequence,idle,timeStatus,week,seconds,...;"
struct LongHeader {
  double idle = 0.0;
  int week = 0;
  double seconds = 0.0;
};
// False when week and seconds can't be read.
bool ReadLongHeader(const char* sentence, LongHeader* header);

// "#NAME,idle,system,timeStatus,week,milliseconds,...;" and the brief
// "%NAME,week,milliseconds;": seconds are milliseconds / 1000.0.
struct CompactHeader {
  int idle = 0;
  int week = 0;
  int milliseconds = 0;
  double Seconds() const { return milliseconds / 1000.0; }
};
bool ReadCompactHeader(const char* sentence, CompactHeader* header);
bool ReadBriefHeader(const char* sentence, CompactHeader* header);

// The last two hexadecimal fields before the star, read backwards from each
// star of the sentence (the last star wins). A one-character last field is
// dropped (reads as 0); see the .cpp for the exact rules.
struct TrailingHex {
  unsigned last = 0;
  unsigned secondLast = 0;
};
TrailingHex ReadTrailingHex(const char* sentence, std::size_t length);

}  // namespace tarnlog
