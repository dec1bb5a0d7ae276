// Numbers read from outside text into integers. The system reads such text
// with plain conversions (atoi, a cast of atof); out of the target's range
// those are undefined, so here they saturate at the range's ends instead.
// Text that is no number still gives 0, and not-a-number gives 0.
#pragma once

#include <string>

namespace tarnlog {

// atoi's reading (leading blanks, a sign, the digits that follow), with a
// value beyond int's range held at INT_MIN or INT_MAX.
int TextToInt(const char* text);
inline int TextToInt(const std::string& text) {
  return TextToInt(text.c_str());
}

// A double cut toward zero as a cast does, held at INT_MIN or INT_MAX
// beyond them; not-a-number gives 0.
int SaturatingInt(double value);

}  // namespace tarnlog
