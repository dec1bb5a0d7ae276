// Walking a capture as the extractions walk it: mapped views of a fixed
// size, each handed on in blocks, one view mapped at a time so that the
// resident size stays that of a view whatever the capture's size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tarnlog {

// Windows maps views at multiples of its 64 KiB allocation granularity; the
// same view size keeps the same blocks.
inline constexpr std::size_t kAllocationGranularity = 65536;
inline constexpr std::size_t kViewSize = 1000 * kAllocationGranularity;

// Maps views of a descriptor for WalkViews; the descriptor stays the
// caller's. A view is released when the next is asked for, when a length of
// 0 is asked for, and at the end.
class MappedViews {
 public:
  explicit MappedViews(int fd) : fd_(fd) {}
  ~MappedViews() { Release(); }
  MappedViews(const MappedViews&) = delete;
  MappedViews& operator=(const MappedViews&) = delete;

  // The bytes [offset, offset + length), or null when they can't be mapped
  // (or `length` is 0, which only releases).
  const char* operator()(std::uint64_t offset, std::size_t length);

 private:
  void Release();

  int fd_;
  void* mapped_ = nullptr;
  std::size_t mappedLength_ = 0;
};

// Views of bytes already in memory, handed out as a mapping's would be
// (for the fuzzers and the tests).
struct MemoryViews {
  const char* bytes;
  const char* operator()(std::uint64_t offset, std::size_t length) const {
    return length ? bytes + offset : nullptr;
  }
};

// Hands `fileSize` bytes to `block` in views of `viewSize` (0: kViewSize)
// cut into blocks of at most `blockSize`; `view(offset, length)` gives a
// view's bytes and `view(offset, 0)` releases it. False when a view could
// not be had.
template <typename ViewSource, typename BlockSink>
bool WalkViews(std::uint64_t fileSize, std::size_t viewSize, std::size_t blockSize,
               ViewSource&& view, BlockSink&& block) {
  if (viewSize == 0) viewSize = kViewSize;
  for (std::uint64_t offset = 0; offset < fileSize; offset += viewSize) {
    const std::size_t length =
        static_cast<std::size_t>(std::min<std::uint64_t>(viewSize, fileSize - offset));
    const char* bytes = view(offset, length);
    if (!bytes) return false;
    for (std::size_t at = 0; at < length; at += blockSize) {
      block(bytes + at, std::min(blockSize, length - at));
    }
    view(offset, 0);  // release
  }
  return true;
}

}  // namespace tarnlog
