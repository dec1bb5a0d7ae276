// The receiver's combined logs carry a position and a velocity block behind
// one compact header. The driver rebuilds long-header sentences from them in
// memory, so the ordinary extractors read them; they are never written.
#pragma once

#include <cstddef>

#include "extract/log_fields.h"

namespace tarnlog {

inline constexpr std::size_t kNormalisedCapacity = 1024;

struct NormalisedSentence {
  char text[kNormalisedCapacity] = {};
  std::size_t length = 0;
};

// "#<name>,COM1,0,<idle>,FINE,<week>,<milliseconds / 1000.0 as %.3lf>,929473751,3,18;"
// followed by `body`; cut to the buffer.
void BuildNormalised(const char* name, const CompactHeader& header, const char* body,
                     std::size_t bodyLength, NormalisedSentence* out);

// Splits behind the ';': the position block is the 21 fields before the 21st
// comma and ends in "*abcdef12\r\n"; the velocity block is all behind that
// comma, star and checksum included. False when the header can't be read or
// the sentence has no 21st comma.
bool SplitCombined(const char* sentence, const char* positionName, const char* velocityName,
                   CompactHeader* header, NormalisedSentence* position,
                   NormalisedSentence* velocity);

// Single-block logs: the new header and the whole body behind the ';'.
bool NormaliseSingle(const char* sentence, const char* name, NormalisedSentence* out);

}  // namespace tarnlog
