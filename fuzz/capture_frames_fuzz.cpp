// Fuzz target of the production test's capture scan.
//
// The input is a capture. It is framed whole: every frame must lie inside
// the input and move the position on, its id and time are read, and a text
// frame's time must be what the C library reads from its header with the
// header format. Then the input is written as a file and the epoch range
// and the IMU check run on it; on a capture this small (one block, one
// window) their answers must be those of the frames found in memory.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz_folder.h"
#include "pages/noise/capture_scan.h"

namespace {

using tarnlog::CaptureFrame;
using tarnlog::FrameEpoch;
using tarnlog::FrameStep;
using tarnlog::GpsWeekSecond;

void Fail(const char* what) {
  std::fprintf(stderr, "capture_frames: %s\n", what);
  std::abort();
}

bool SameTime(const std::optional<GpsWeekSecond>& a, const std::optional<GpsWeekSecond>& b) {
  if (a.has_value() != b.has_value()) return false;
  return !a || (a->week == b->week && std::memcmp(&a->second, &b->second, sizeof a->second) == 0);
}

// The header's time as the C library reads it.
std::optional<GpsWeekSecond> LibraryTime(const CaptureFrame& frame) {
  const std::string text(frame.bytes, ::strnlen(frame.bytes, frame.length));
  GpsWeekSecond time;
  if (std::sscanf(text.c_str(), "%*[^,],%*[^,],%*d,%*f,%*[^,],%d,%lf", &time.week, &time.second) !=
      2) {
    return std::nullopt;
  }
  return time;
}

bool IsObservation(int id) {
  return id == 43 || id == 6005 || id == 283;
}

std::uint32_t Le(const char* p, int bytes) {
  std::uint32_t value = 0;
  for (int n = bytes - 1; n >= 0; --n)
    value = value << 8 | static_cast<unsigned char>(p[n]);
  return value;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const char* bytes = reinterpret_cast<const char*>(data);
  tarnlog::EpochRange expected;
  std::string_view imu = "0";
  std::size_t position = 0;
  CaptureFrame frame;
  FrameStep step;
  while ((step = tarnlog::FrameNextMessage(bytes, size, &position, &frame, true)) !=
         FrameStep::kNeedMore) {
    if (position > size) Fail("the position ran past the bytes");
    if (step != FrameStep::kFrame) continue;
    if (frame.length == 0 || frame.bytes < bytes || frame.bytes + frame.length > bytes + position) {
      Fail("a frame outside the bytes taken");
    }
    tarnlog::MessageIdFromPrefix(std::string_view(frame.bytes, frame.length));
    const std::optional<FrameEpoch> epoch = tarnlog::EpochOfFrame(frame);
    if (frame.kind != 3) {
      const std::optional<GpsWeekSecond> time =
          epoch ? std::optional<GpsWeekSecond>(epoch->time) : std::nullopt;
      if (!SameTime(time, LibraryTime(frame))) Fail("a header time unlike the library's");
    }
    if (epoch && IsObservation(epoch->messageId)) {
      if (!expected.first && epoch->time.week != 0 && epoch->time.second >= 0.0) {
        expected.first = epoch->time;
      }
      if (std::fabs(epoch->time.second - std::round(epoch->time.second)) <= 1e-6) {
        expected.last = epoch->time;
      }
    }
    if (frame.kind == 3 && imu != "2") {
      const std::uint32_t id = Le(frame.bytes + 4, 2);
      if (id == 268 || id == 1461) {
        const std::size_t header = static_cast<unsigned char>(frame.bytes[3]);
        const std::size_t end = header + Le(frame.bytes + 8, 2);
        std::uint32_t words[6] = {};
        for (std::size_t k = 0; k < 6 && header + 4 * k + 4 <= end; ++k)
          words[k] = Le(frame.bytes + header + 4 * k, 4);
        const bool data = (words[0] | words[1] | words[2]) && (words[3] | words[4] | words[5]);
        imu = data ? "2" : "1";
      }
    }
  }

  const std::string path = tarnlog::fuzz::Folder() + "/capture.bin";
  tarnlog::fuzz::WriteNew(path, std::string_view(bytes, size));
  const tarnlog::EpochRange range = tarnlog::FindEpochRange(path);
  if (size <= tarnlog::kEpochWindowBytes &&
      (!SameTime(range.first, expected.first) || !SameTime(range.last, expected.last))) {
    Fail("an epoch range unlike the frames'");
  }
  if (size <= 0x19000 && tarnlog::CheckImuData(path) != imu)
    Fail("an IMU verdict unlike the frames'");
  return 0;
}
