#include "extract/normalise.h"

#include <cstring>
#include "platform/fast_format.h"

namespace tarnlog {
namespace {

void Append(NormalisedSentence* out, const char* bytes, std::size_t length) {
  const std::size_t room = kNormalisedCapacity - 1 - out->length;
  const std::size_t take = length < room ? length : room;
  std::memcpy(out->text + out->length, bytes, take);
  out->length += take;
  out->text[out->length] = '\0';
}

}  // namespace

void BuildNormalised(const char* name, const CompactHeader& header, const char* body,
                     std::size_t bodyLength, NormalisedSentence* out) {
  const int written =
      FormatText(out->text, kNormalisedCapacity, "#%s,COM1,0,%d,FINE,%d,%.3lf,929473751,3,18;",
                 name, header.idle, header.week, header.Seconds());
  out->length = written < 0 ? 0
                : static_cast<std::size_t>(written) >= kNormalisedCapacity
                    ? kNormalisedCapacity - 1
                    : static_cast<std::size_t>(written);
  Append(out, body, bodyLength);
}

bool SplitCombined(const char* sentence, const char* positionName, const char* velocityName,
                   CompactHeader* header, NormalisedSentence* position,
                   NormalisedSentence* velocity) {
  if (!ReadCompactHeader(sentence, header)) return false;
  const char* body = std::strchr(sentence, ';');
  if (!body) return false;
  ++body;
  const char* cut = body;
  for (int commas = 0; commas < 21; ++commas) {
    cut = std::strchr(cut, ',');
    if (!cut) return false;
    if (commas < 20) ++cut;
  }
  BuildNormalised(positionName, *header, body, static_cast<std::size_t>(cut - body), position);
  static constexpr char kTail[] = "*abcdef12\r\n";
  Append(position, kTail, sizeof kTail - 1);
  if (velocity) {
    const char* rest = cut + 1;
    BuildNormalised(velocityName, *header, rest, std::strlen(rest), velocity);
  }
  return true;
}

bool NormaliseSingle(const char* sentence, const char* name, NormalisedSentence* out) {
  CompactHeader header;
  if (!ReadCompactHeader(sentence, &header)) return false;
  const char* body = std::strchr(sentence, ';');
  if (!body) return false;
  ++body;
  BuildNormalised(name, header, body, std::strlen(body), out);
  return true;
}

}  // namespace tarnlog
