#include "extract/sentence_stream.h"

#include <algorithm>
#include <cstring>

#include "extract/scan_sentence.h"

namespace tarnlog {

SentenceStream::SentenceStream(std::size_t carrySize, std::size_t lineCapacity)
    : carrySize_(carrySize),
      lineCapacity_(lineCapacity),
      carry_(carrySize + 1),
      line_(lineCapacity + 1) {}

void SentenceStream::Feed(const char* bytes, std::size_t size, SentenceSink& sink) {
  while (size > 0) {
    if (carryLength_ == 0) {
      // Nothing carried: scan the block in place and carry only its tail.
      const std::size_t used = Scan(bytes, size, sink);
      CarryTail(bytes + used, size - used);
      return;
    }
    // The carried tail with the block behind it, as one buffer.
    const std::size_t take = std::min(size, carrySize_ - carryLength_);
    std::memcpy(carry_.data() + carryLength_, bytes, take);
    const std::size_t total = carryLength_ + take;
    const std::size_t used = Scan(carry_.data(), total, sink);
    bytes += take;
    size -= take;
    std::memmove(carry_.data(), carry_.data() + used, total - used);
    carryLength_ = total - used;
    // A full buffer always yields a sentence (the force cut sees to it);
    // should it not, the carry is dropped rather than looping.
    if (take == 0 && used == 0) carryLength_ = 0;
  }
}

void SentenceStream::Finish(SentenceSink& sink) {
  if (carryLength_ > 0) Scan(carry_.data(), carryLength_, sink, /*endOfCapture=*/true);
  carryLength_ = 0;
}

void SentenceStream::CarryTail(const char* tail, std::size_t length) {
  if (length > carrySize_) {  // a tail is never this long; keep the newest bytes
    tail += length - carrySize_;
    length = carrySize_;
  }
  std::memcpy(carry_.data(), tail, length);
  carryLength_ = length;
}

std::size_t SentenceStream::Scan(const char* buffer, std::size_t size, SentenceSink& sink,
                                 bool endOfCapture) {
  const char* cursor = buffer;
  std::size_t remaining = size;
  char* line = line_.data();
  while (remaining > 0) {
    line[0] = '\0';
    int kind = 0;
    std::size_t length = 0;
    const char* next = cursor;
    const int result =
        ScanSentence(cursor, &remaining, &next, line, lineCapacity_, &length, &kind, endOfCapture);
    // Ran out: the tail waits for the next block.
    if (next == cursor) break;
    cursor = next;
    // A completed sentence of kind 0 is damage (a force-cut run without
    // line ends, or a sentence with a bad binary frame inside): it is
    // dropped, and the scan goes on behind it so that nothing valid after
    // the damage is lost.
    if (result == kNoSentence) continue;
    sink.Accept(line, std::min(length, lineCapacity_));
  }
  return static_cast<std::size_t>(cursor - buffer);
}

}  // namespace tarnlog
