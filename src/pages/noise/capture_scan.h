// Scanning a capture for the production test: frames one at a time, their
// message ids and times, the first and last observation epochs, and whether
// the IMU logs carry data. These only frame; the tables of the extraction
// are not involved.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "pages/noise/control_file.h"

namespace tarnlog {

// One frame of a capture buffer, as the extraction's framing cuts it.
struct CaptureFrame {
  int kind = 0;                 // 1 NMEA, 2 ASCII log, 3 binary frame that passed its CRC
  const char* bytes = nullptr;  // inside the scanned buffer, no copy
  std::size_t length = 0;       // line end included, where it has one
};

enum class FrameStep {
  // `frame` holds a frame; the read position moved behind it. A text that
  // the next sentence's start cut short, or that ran to the force-cut
  // length, is a frame too, without a line end.
  kFrame,
  // Bytes that make no frame were passed over: a line end with no text, a
  // run cut at the force-cut length before any start, a text that held a
  // binary frame with a bad CRC.
  kSkipped,
  // The bytes ran out inside a frame, or there are none: nothing moved.
  kNeedMore,
};

// Takes the next frame from `buffer[*position, length)`, moving `*position`
// on. With `endOfCapture` no bytes follow the buffer, so a binary frame cut
// short by its end is as bad as one that fails its CRC.
FrameStep FrameNextMessage(const char* buffer, std::size_t length, std::size_t* position,
                           CaptureFrame* frame, bool endOfCapture = false);

// An ASCII frame's message id from the fixed list of prefixes, tested in
// order; -1 when none matches.
int MessageIdFromPrefix(std::string_view text);

// A frame's message id and time: text frames through the prefix list (-1
// when unlisted) and their header's week and second, binary frames through
// the header's id, week and milliseconds (a header of at least 21 bytes and
// a week of at least 10). Nothing for frames that give no time.
struct FrameEpoch {
  int messageId = -1;
  GpsWeekSecond time;
};
std::optional<FrameEpoch> EpochOfFrame(const CaptureFrame& frame);

// The first observation epoch (ids 43, 6005 and 283) with a week other
// than 0 and a second of at least 0 within the first 1,024,000 bytes, and
// the last one whose second is whole (within 1e-6) within the last
// 1,024,000 bytes (the whole capture when it is no longer). Only frames
// that end inside a window count. Absent when there is none or the capture
// can't be opened; a folder or a FIFO is refused without blocking.
struct EpochRange {
  std::optional<GpsWeekSecond> first;
  std::optional<GpsWeekSecond> last;
};
EpochRange FindEpochRange(const std::string& path);
// The first epoch alone, from the first window only: what a control file
// takes its start from.
std::optional<GpsWeekSecond> FindFirstEpoch(const std::string& path);
inline constexpr std::size_t kEpochWindowBytes = 0xFA000;

// "0": no IMU frame (binary, ids 1461 and 268) seen, or no capture; "1":
// seen, but never with data; "2": a frame with a non-zero word among the
// first three 32-bit words of its message and among the next three (words
// past the message's end count as zero). Reads to the end unless "2" comes.
std::string_view CheckImuData(const std::string& path);

}  // namespace tarnlog
