// The sentence loop that both extractions run over a capture: blocks go in
// one after another, an unfinished tail is carried in front of the next
// block, and every sentence the scanner completes goes to a sink. Damage
// costs only the damaged bytes: a force-cut run or a sentence that held a
// bad binary frame is dropped and the scan goes on behind it.
#pragma once

#include <cstddef>
#include <vector>

namespace tarnlog {

// Receives each completed sentence: `line` is the NUL-terminated copy,
// `length` the bytes copied (line end included).
class SentenceSink {
 public:
  virtual void Accept(char* line, std::size_t length) = 0;

 protected:
  ~SentenceSink() = default;
};

class SentenceStream {
 public:
  // `carrySize` holds a carried tail and one block behind it; sentences
  // are copied into a line of `lineCapacity` bytes and cut to fit.
  SentenceStream(std::size_t carrySize, std::size_t lineCapacity);

  // Scans `size` bytes that follow whatever was carried; the unread tail is
  // carried to the next call.
  void Feed(const char* bytes, std::size_t size, SentenceSink& sink);

  // At the capture's end: a binary frame that the carried tail cuts short
  // is bad, and what it seemed to cover is scanned. A sentence without its
  // line end stays unread, as one cut short anywhere else.
  void Finish(SentenceSink& sink);

 private:
  void CarryTail(const char* tail, std::size_t length);
  // The sentence loop over `size` bytes; returns how many were used.
  std::size_t Scan(const char* buffer, std::size_t size, SentenceSink& sink,
                   bool endOfCapture = false);

  std::size_t carrySize_;
  std::size_t lineCapacity_;
  std::vector<char> carry_;
  std::size_t carryLength_ = 0;
  std::vector<char> line_;
};

}  // namespace tarnlog
