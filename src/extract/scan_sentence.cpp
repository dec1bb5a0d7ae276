#include "scan_sentence.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "checksums.h"
#include "little_endian.h"

namespace tarnlog {
namespace {

// What a byte means to the scanner. Ordinary bytes are 0 so that the inner
// loop can step over them with one table look-up each.
enum ByteClass : std::uint8_t {
  kOrdinary = 0,
  kSentenceStart = 1,  // '#', '$', '%'
  kLineEnd = 2,        // CR, LF
  kBinarySync = 3,     // 0xAA, the first byte of a binary frame's sync
};

constexpr std::array<std::uint8_t, 256> MakeByteClasses() {
  std::array<std::uint8_t, 256> classes{};
  classes['#'] = kSentenceStart;
  classes['$'] = kSentenceStart;
  classes['%'] = kSentenceStart;
  classes['\r'] = kLineEnd;
  classes['\n'] = kLineEnd;
  classes[0xAA] = kBinarySync;
  return classes;
}
constexpr std::array<std::uint8_t, 256> kByteClasses = MakeByteClasses();

constexpr unsigned char kSync[4] = {0xAA, 0x44, 0x12, 0x1C};
constexpr std::size_t kFrameCrcBytes = 4;
constexpr std::size_t kMessageLengthOffset = 8;

// Sixteen bytes at a time, as the compiler's portable vector extension.
typedef unsigned char Bytes16 __attribute__((vector_size(16)));

// True when none of the sixteen bytes at `p` needs a look.
inline bool AllOrdinary16(const unsigned char* p) {
  Bytes16 v;
  std::memcpy(&v, p, sizeof v);
  // '#', '$' and '%' are 0x23 to 0x25: one unsigned range test.
  const Bytes16 special =
      ((v - static_cast<unsigned char>('#')) < 3) | (v == '\r') | (v == '\n') | (v == 0xAA);
  std::uint64_t halves[2];
  std::memcpy(halves, &special, sizeof halves);
  return (halves[0] | halves[1]) == 0;
}

// Skips ordinary bytes from `i` up to `end`.
inline std::size_t SkipOrdinary(const unsigned char* bytes, std::size_t i, std::size_t end) {
  while (i + 16 <= end && AllOrdinary16(bytes + i))
    i += 16;
  while (i < end && kByteClasses[bytes[i]] == kOrdinary)
    ++i;
  return i;
}

// Copies `length` bytes and a NUL, cut to fit `capacity`; returns the bytes
// copied.
std::size_t CopyLine(const char* from, std::size_t length, char* lineOut, std::size_t capacity) {
  if (capacity == 0) return 0;
  if (length > capacity - 1) length = capacity - 1;
  std::memcpy(lineOut, from, length);
  lineOut[length] = '\0';
  return length;
}

// A '#PASSCOM' wrapper carries whole sentences of another port, so their
// start bytes don't cut it. The open text ends at the current byte or at a
// NUL, whichever comes first.
bool HoldsPasscom(const char* open, std::size_t openLength) {
  const void* nul = std::memchr(open, '\0', openLength);
  if (nul != nullptr) openLength = static_cast<const char*>(nul) - open;
  return std::string_view(open, openLength).find("#PASSCOM") != std::string_view::npos;
}

// The scan itself. `take(from, length)` receives each sentence where it lies;
// the callers decide whether it is copied.
template <typename Take>
[[gnu::always_inline]] inline int Scan(const char* buffer, std::size_t* remaining,
                                       const char** cursorOut, int* kindOut, bool endOfCapture,
                                       Take&& take) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(buffer);
  const std::size_t count = *remaining;
  // From this index on every ordinary byte forces a cut. It counts from the
  // open sentence's start, and from the buffer's start while none is open:
  // garbage in front of a sentence (a zero-filled hole, a torn line) is then
  // cut off by itself and never takes the sentence behind it along.
  std::size_t cutIndex = kForceCutLength;
  // Below this index ordinary bytes need no look.
  std::size_t quietEnd = count < cutIndex ? count : cutIndex;

  bool isOpen = false;
  std::size_t open = 0;
  bool passcom = false;  // once the open text holds "#PASSCOM" it keeps it

  // Hands the bytes [from, end) over as a sentence and moves past `next`.
  auto finish = [&](std::size_t from, std::size_t end, std::size_t next) {
    take(from, end - from);
    *cursorOut = buffer + next;
    *remaining = count - next;
  };

  std::size_t i = 0;
  while (true) {
    i = SkipOrdinary(bytes, i, quietEnd);
    if (i >= count) return kNoSentence;
    const unsigned char byte = bytes[i];
    switch (kByteClasses[byte]) {
      case kSentenceStart:
        if (!isOpen) {
          isOpen = true;
          open = i;
          passcom = false;
          *kindOut = byte == '$' ? kNmeaSentence : kAsciiLog;
          cutIndex = open + kForceCutLength;
          quietEnd = count < cutIndex ? count : cutIndex;
        } else {
          if (!passcom) passcom = HoldsPasscom(buffer + open, i - open);
          if (!passcom) {
            finish(open, i, i);
            return kScanSkippedOrCut;
          }
        }
        ++i;
        continue;
      case kLineEnd: {
        const std::size_t endLength =
            (byte == '\r' && i + 1 < count && bytes[i + 1] == '\n') ? 2 : 1;
        if (!isOpen) {
          finish(i, i, i + endLength);
          return kScanSkippedOrCut;
        }
        finish(open, i + endLength, i + endLength);
        return *kindOut;
      }
      case kBinarySync:
        if (i + 3 < count && std::memcmp(bytes + i, kSync, sizeof kSync) == 0) {
          *kindOut = kBinaryFrame;
          const std::size_t available = count - i;
          const std::size_t headerLength = bytes[i + 3];
          std::size_t frameLength = 0;
          std::size_t crcEnd = 0;
          if (available >= headerLength && available >= kMessageLengthOffset + 2) {
            const std::size_t messageLength = LoadLe16(bytes + i + kMessageLengthOffset);
            crcEnd = headerLength + messageLength;
            frameLength = crcEnd + kFrameCrcBytes;
          }
          if (frameLength == 0 || available < frameLength) {
            // More bytes may complete the frame; at the capture's end none
            // will, and the frame is as bad as one that fails its CRC.
            if (!endOfCapture) return kNoSentence;
            *kindOut = kNoSentence;
            ++i;
            continue;
          }
          if (Crc32Block(bytes + i, crcEnd) == LoadLe32(bytes + i + crcEnd)) {
            finish(i, i + frameLength, i + frameLength);
            return kBinaryFrame;
          }
          *kindOut = kNoSentence;
          ++i;
          continue;
        }
        break;
      default:
        break;
    }
    // An ordinary byte (or a sync byte that begins no frame).
    if (i >= cutIndex) {
      if (!isOpen) {
        isOpen = true;
        open = 0;
      }
      finish(open, i + 1, i + 1);
      return *kindOut;
    }
    ++i;
  }
}

}  // namespace

int FindSentence(const char* buffer, std::size_t* remaining, const char** cursorOut,
                 std::size_t* startOut, std::size_t* lengthOut, int* kindOut, bool endOfCapture) {
  if (buffer == nullptr || remaining == nullptr || cursorOut == nullptr || startOut == nullptr ||
      lengthOut == nullptr || kindOut == nullptr) {
    return kScanBadArguments;
  }
  return Scan(buffer, remaining, cursorOut, kindOut, endOfCapture,
              [&](std::size_t from, std::size_t length) {
                *startOut = from;
                *lengthOut = length;
              });
}

int ScanSentence(const char* buffer, std::size_t* remaining, const char** cursorOut, char* lineOut,
                 std::size_t lineCapacity, std::size_t* lengthOut, int* kindOut,
                 bool endOfCapture) {
  if (buffer == nullptr || lineOut == nullptr || remaining == nullptr || cursorOut == nullptr ||
      lengthOut == nullptr || kindOut == nullptr) {
    return kScanBadArguments;
  }
  return Scan(buffer, remaining, cursorOut, kindOut, endOfCapture,
              [&](std::size_t from, std::size_t length) {
                *lengthOut = CopyLine(buffer + from, length, lineOut, lineCapacity);
              });
}

}  // namespace tarnlog
