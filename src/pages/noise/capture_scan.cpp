#include "pages/noise/capture_scan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "extract/little_endian.h"
#include "extract/scan_sentence.h"
#include "platform/files.h"

namespace tarnlog {
namespace {

struct PrefixId {
  std::string_view prefix;
  int id;
};

// Tested in this order; the first prefix that a frame begins with gives its
// id. The NMEA sentences share one id per sentence whatever the talker, as
// the receiver numbers them, but for the two combined-talker sentences it
// numbers apart. The heading antenna's range log is the third observation
// log of the epoch scan. The maker's logs whose numbers we don't know get
// numbers of our own next to it; nothing selects on them.
constexpr PrefixId kPrefixIds[] = {
    {"#RANGEA", 43},
    {"#BASERANGEA", 283},
    {"#RANGECMP", 140},
    {"#GPSEPHEMA", 7},
    {"#BD2EPHEMA", 1047},
    {"#GLOEPHEMERISA", 723},
    {"#PSRPOSA", 47},
    {"#PSRVELA", 100},
    {"#PSRDOPA", 174},
    {"#RTKPOSA", 141},
    // Never reached: the first "#PSRVELA" takes them all.
    {"#PSRVELA", 216},
    {"#RTKDOPA", 952},
    {"#RTKDATAA", 215},
    {"#BESTPOSA", 42},
    {"#BESTVELA", 99},
    {"#PASSCOM1A", 233},
    {"#PASSCOM2A", 234},
    {"#PASSCOM3A", 235},
    {"$GPGGA", 218},
    {"$BDGGA", 218},
    {"$GLGGA", 218},
    {"$GNGGA", 217},
    {"$GPGSA", 221},
    {"$BDGSA", 221},
    {"$GLGSA", 221},
    {"$GNGSA", 221},
    {"$GPGSV", 223},
    {"$GLGSV", 223},
    {"$BDGSV", 223},
    {"$GPRMC", 225},
    {"$BDRMC", 225},
    {"$GNRMC", 225},
    {"$GLRMC", 225},
    {"#VERSIONA", 37},
    {"#TIMEA", 101},
    {"#MATCHEDPOSA", 96},
    {"#IONUTCA", 8},
    {"#BD2IONUTCA", 2010},
    {"#HEADINGA", 971},
    {"$GPHDT", 1045},
    {"$BDHDT", 1045},
    {"$GLHDT", 1045},
    {"$GNHDT", 1044},
    {"#RANGEHA", 6005},
    {"#MATCHEDPOSHA", 6006},
    {"#RTKDATAHA", 6007},
    {"#GYOACC", 6008},
    {"#PVTSOLA", 6009},
    {"#BDSQIONUTCA", 6010},
    {"#BD2B3QSBASINFOA", 6011},
};

// Binary header fields.
constexpr std::size_t kHeaderLengthOffset = 3;
constexpr std::size_t kMessageIdOffset = 4;
constexpr std::size_t kMessageLengthOffset = 8;
constexpr std::size_t kWeekOffset = 14;
constexpr std::size_t kMillisecondOffset = 16;
constexpr std::size_t kShortestTimedHeader = 21;
constexpr unsigned kLowestWeek = 10;

constexpr int kRangeId = 43;
constexpr int kHeadingRangeId = 6005;
constexpr int kBaseRangeId = 283;
constexpr int kRawImuId = 268;
constexpr int kRawImuExtendedId = 1461;

// The IMU check reads the capture in blocks of this size into a buffer of
// twice the size, which also holds the tail carried from the block before.
constexpr std::size_t kImuBlockBytes = 0x19000;
constexpr std::size_t kImuBufferBytes = 0x32000;

constexpr double kWholeSecondTolerance = 1e-6;

bool IsObservationId(int id) {
  return id == kRangeId || id == kHeadingRangeId || id == kBaseRangeId;
}

bool IsWholeSecond(double second) {
  return std::fabs(second - std::round(second)) <= kWholeSecondTolerance;
}

// ---- the time of a text header ----

// The header read with the C library, on a terminated copy: the rule for
// everything the quick reading below leaves to it.
std::optional<GpsWeekSecond> ScanHeaderTime(std::string_view text) {
  const std::string copy(text);
  GpsWeekSecond time;
  if (std::sscanf(copy.c_str(), "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf", &time.week, &time.second) !=
      2) {
    return std::nullopt;
  }
  return time;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Steps over a field of at least one byte and the comma behind it; false
// when the field is empty or no comma follows (where the C library stops
// too).
bool SkipField(std::string_view text, std::size_t& at) {
  const std::size_t comma = text.find(',', at);
  if (comma == std::string_view::npos || comma == at) return false;
  at = comma + 1;
  return true;
}

// Digits, then optionally a point and more digits, directly at `at`; returns
// the end, or `at` when there are no leading digits.
std::size_t PlainNumberEnd(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && IsDigit(text[end]))
    ++end;
  if (end == at) return at;
  if (end < text.size() && text[end] == '.') {
    ++end;
    while (end < text.size() && IsDigit(text[end]))
      ++end;
  }
  return end;
}

// Whether the C library would read on past a plain number at `end`: an
// exponent, or a hex prefix behind a zero.
bool MayCarryOn(std::string_view text, std::size_t end) {
  if (end == text.size()) return false;
  const char c = text[end];
  return c == 'e' || c == 'E' || c == 'x' || c == 'X';
}

// What the quick reading settles: a time, none, or a question for the C
// library.
enum class Quick { kTime, kNoTime, kAsk };

// The header's week and second the way "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf"
// reads them, for the headers a receiver writes: plain digits and points.
// What only the C library can settle (blanks, signs, exponents, long weeks)
// is left to it.
Quick QuickHeaderTime(std::string_view text, GpsWeekSecond& time) {
  // Behind a number a comma goes on with the next field; anything else ends
  // the reading there.
  const auto commaAt = [&](std::size_t at) { return at < text.size() && text[at] == ','; };
  std::size_t at = 0;
  if (!SkipField(text, at) || !SkipField(text, at)) return Quick::kNoTime;
  // The sequence number, "%*d".
  std::size_t end = at;
  while (end < text.size() && IsDigit(text[end]))
    ++end;
  if (end == at) return Quick::kAsk;
  if (!commaAt(end)) return Quick::kNoTime;
  at = end + 1;
  // The idle time, "%*f".
  end = PlainNumberEnd(text, at);
  if (end == at || MayCarryOn(text, end)) return Quick::kAsk;
  if (!commaAt(end)) return Quick::kNoTime;
  at = end + 1;
  // The time status.
  if (!SkipField(text, at)) return Quick::kNoTime;
  // The week, "%d".
  end = at;
  while (end < text.size() && IsDigit(text[end]))
    ++end;
  if (end == at || end - at > 9) return Quick::kAsk;
  if (!commaAt(end)) return Quick::kNoTime;
  int week = 0;
  std::from_chars(text.data() + at, text.data() + end, week);
  at = end + 1;
  // The second, "%lf".
  end = PlainNumberEnd(text, at);
  if (end == at || MayCarryOn(text, end)) return Quick::kAsk;
  double second = 0.0;
  if (std::from_chars(text.data() + at, text.data() + end, second).ec != std::errc()) {
    return Quick::kAsk;
  }
  time = {week, second};
  return Quick::kTime;
}

std::optional<GpsWeekSecond> HeaderTime(std::string_view text) {
  GpsWeekSecond time;
  switch (QuickHeaderTime(text, time)) {
    case Quick::kTime:
      return time;
    case Quick::kNoTime:
      return std::nullopt;
    case Quick::kAsk:
      break;
  }
  return ScanHeaderTime(text);
}

// ---- reading ----

// Reads up to `size` bytes at `offset`, going on after interruptions and
// short reads; returns how many arrived.
std::size_t ReadAt(int fd, char* into, std::size_t size, std::uint64_t offset) {
  std::size_t got = 0;
  while (got < size) {
    const ssize_t n = ::pread(fd, into + got, size - got, static_cast<off_t>(offset + got));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    got += static_cast<std::size_t>(n);
  }
  return got;
}

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int Get() const { return fd_; }

 private:
  int fd_;
};

// Calls `each(epoch)` for every frame of `bytes` that gives a time, in
// order, until it returns false. The bytes are all there is to look at.
template <typename Each>
void ForEachEpoch(const char* bytes, std::size_t size, Each&& each) {
  std::size_t position = 0;
  CaptureFrame frame;
  while (true) {
    const FrameStep step = FrameNextMessage(bytes, size, &position, &frame, true);
    if (step == FrameStep::kNeedMore) return;
    if (step != FrameStep::kFrame) continue;
    const std::optional<FrameEpoch> epoch = EpochOfFrame(frame);
    if (epoch && !each(*epoch)) return;
  }
}

std::optional<GpsWeekSecond> FirstEpoch(const char* bytes, std::size_t size) {
  std::optional<GpsWeekSecond> first;
  ForEachEpoch(bytes, size, [&](const FrameEpoch& epoch) {
    if (!IsObservationId(epoch.messageId) || epoch.time.week == 0 || epoch.time.second < 0.0) {
      return true;
    }
    first = epoch.time;
    return false;
  });
  return first;
}

std::optional<GpsWeekSecond> LastEpoch(const char* bytes, std::size_t size) {
  std::optional<GpsWeekSecond> last;
  ForEachEpoch(bytes, size, [&](const FrameEpoch& epoch) {
    if (IsObservationId(epoch.messageId) && IsWholeSecond(epoch.time.second)) last = epoch.time;
    return true;
  });
  return last;
}

// Whether an IMU frame carries data: a non-zero word among the first three
// 32-bit words of its message and among the next three. Words past the
// message's end count as zero.
bool CarriesImuData(const CaptureFrame& frame) {
  const std::size_t header = static_cast<unsigned char>(frame.bytes[kHeaderLengthOffset]);
  const std::size_t message = LoadLe16(frame.bytes + kMessageLengthOffset);
  std::uint32_t words[6] = {};
  for (std::size_t k = 0; k < 6; ++k) {
    const std::size_t offset = header + 4 * k;
    if (offset + 4 <= header + message && offset + 4 <= frame.length) {
      words[k] = LoadLe32(frame.bytes + offset);
    }
  }
  return (words[0] | words[1] | words[2]) != 0 && (words[3] | words[4] | words[5]) != 0;
}

}  // namespace

FrameStep FrameNextMessage(const char* buffer, std::size_t length, std::size_t* position,
                           CaptureFrame* frame, bool endOfCapture) {
  if (buffer == nullptr || position == nullptr || frame == nullptr || *position >= length) {
    return FrameStep::kNeedMore;
  }
  const char* from = buffer + *position;
  std::size_t remaining = length - *position;
  const char* cursor = from;
  std::size_t start = 0;
  std::size_t size = 0;
  int kind = kNoSentence;
  FindSentence(from, &remaining, &cursor, &start, &size, &kind, endOfCapture);
  if (cursor == from) return FrameStep::kNeedMore;
  *position = static_cast<std::size_t>(cursor - buffer);
  // Kind 0 is damage: a run cut before any start, or a text that held a
  // binary frame with a bad CRC.
  if (kind == kNoSentence || size == 0) return FrameStep::kSkipped;
  *frame = {kind, from + start, size};
  return FrameStep::kFrame;
}

int MessageIdFromPrefix(std::string_view text) {
  for (const PrefixId& entry : kPrefixIds) {
    if (text.starts_with(entry.prefix)) return entry.id;
  }
  return -1;
}

std::optional<FrameEpoch> EpochOfFrame(const CaptureFrame& frame) {
  if (frame.bytes == nullptr) return std::nullopt;
  if (frame.kind == kBinaryFrame) {
    if (frame.length < kShortestTimedHeader ||
        static_cast<unsigned char>(frame.bytes[kHeaderLengthOffset]) < kShortestTimedHeader) {
      return std::nullopt;
    }
    const unsigned week = LoadLe16(frame.bytes + kWeekOffset);
    if (week < kLowestWeek) return std::nullopt;
    FrameEpoch epoch;
    epoch.messageId = static_cast<int>(LoadLe16(frame.bytes + kMessageIdOffset));
    epoch.time = {static_cast<int>(week), LoadLe32(frame.bytes + kMillisecondOffset) * 0.001};
    return epoch;
  }
  if (frame.kind != kNmeaSentence && frame.kind != kAsciiLog) return std::nullopt;
  // The text ends at the frame's end or at a NUL inside it.
  std::string_view text(frame.bytes, frame.length);
  text = text.substr(0, text.find('\0'));
  const std::optional<GpsWeekSecond> time = HeaderTime(text);
  if (!time) return std::nullopt;
  return FrameEpoch{MessageIdFromPrefix(text), *time};
}

std::optional<GpsWeekSecond> FindFirstEpoch(const std::string& path) {
  struct stat info {};
  const Descriptor file(OpenRegularFileForReading(path, &info));
  if (file.Get() < 0) return std::nullopt;
  std::vector<char> window(static_cast<std::size_t>(
      std::min<std::uint64_t>(static_cast<std::uint64_t>(info.st_size), kEpochWindowBytes)));
  return FirstEpoch(window.data(), ReadAt(file.Get(), window.data(), window.size(), 0));
}

EpochRange FindEpochRange(const std::string& path) {
  EpochRange range;
  struct stat info {};
  const Descriptor file(OpenRegularFileForReading(path, &info));
  if (file.Get() < 0) return range;
  const std::uint64_t size = static_cast<std::uint64_t>(info.st_size);
  std::vector<char> window(
      static_cast<std::size_t>(std::min<std::uint64_t>(size, kEpochWindowBytes)));

  std::size_t got = ReadAt(file.Get(), window.data(), window.size(), 0);
  range.first = FirstEpoch(window.data(), got);
  // A capture no longer than the window is the window: the same bytes serve
  // the last epoch.
  if (size > kEpochWindowBytes) {
    got = ReadAt(file.Get(), window.data(), window.size(), size - kEpochWindowBytes);
  }
  range.last = LastEpoch(window.data(), got);
  return range;
}

std::string_view CheckImuData(const std::string& path) {
  InFile file;
  if (!file.Open(path, FileMode::kBinary)) return "0";
  std::vector<char> buffer(kImuBufferBytes);
  std::size_t held = 0;
  bool seen = false;
  bool atEnd = false;
  while (!atEnd) {
    const std::size_t room = std::min(kImuBlockBytes, buffer.size() - held);
    const std::size_t got = file.Read(buffer.data() + held, room);
    held += got;
    atEnd = got < room;
    std::size_t position = 0;
    CaptureFrame frame;
    FrameStep step;
    while ((step = FrameNextMessage(buffer.data(), held, &position, &frame, atEnd)) !=
           FrameStep::kNeedMore) {
      if (step != FrameStep::kFrame || frame.kind != kBinaryFrame) continue;
      const std::uint32_t id = LoadLe16(frame.bytes + kMessageIdOffset);
      if (id != kRawImuId && id != kRawImuExtendedId) continue;
      seen = true;
      if (CarriesImuData(frame)) return "2";
    }
    // A full buffer always yields a frame, so the tail fits behind the
    // next block; should it not, it is dropped rather than looping.
    if (position == 0 && held == buffer.size()) position = held;
    std::memmove(buffer.data(), buffer.data() + position, held - position);
    held -= position;
  }
  return seen ? "1" : "0";
}

}  // namespace tarnlog
