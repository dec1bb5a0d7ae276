#include "extract/scan_sentence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "extract/checksums.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

constexpr std::size_t kCallerLine = 102400;
constexpr std::size_t kUntouched = static_cast<std::size_t>(-1);

// One call's whole outcome; `cursor` is an offset into the input, or
// kUntouched when the call left it alone.
struct Scan {
  int result = 0;
  std::string line;
  std::size_t length = kUntouched;
  std::size_t cursor = kUntouched;
  std::size_t remaining = 0;
  int kind = 0;
};

Scan ScanOnce(const std::string& bytes, std::size_t capacity = kCallerLine) {
  std::vector<char> line(capacity + 1, '\x7f');  // one guard byte behind
  Scan scan;
  scan.remaining = bytes.size();
  const char* cursor = nullptr;
  scan.result = ScanSentence(bytes.data(), &scan.remaining, &cursor, line.data(), capacity,
                             &scan.length, &scan.kind);
  EXPECT_EQ(line[capacity], '\x7f') << "wrote past the line";
  if (cursor != nullptr) scan.cursor = static_cast<std::size_t>(cursor - bytes.data());
  if (scan.length != kUntouched) scan.line.assign(line.data(), scan.length);

  // The scan without the copy agrees, and its span is what was copied.
  std::size_t remaining = bytes.size();
  const char* found = nullptr;
  std::size_t start = kUntouched, length = kUntouched;
  int kind = 0;
  EXPECT_EQ(FindSentence(bytes.data(), &remaining, &found, &start, &length, &kind), scan.result);
  EXPECT_EQ(remaining, scan.remaining);
  EXPECT_EQ(found, cursor);
  EXPECT_EQ(kind, scan.kind);
  if (found == nullptr) {
    EXPECT_EQ(length, kUntouched);
  } else if (capacity > 0) {
    EXPECT_EQ(bytes.substr(start, std::min(length, capacity - 1)), scan.line);
  }
  return scan;
}

std::uint32_t ByteWiseCrc(const std::string& bytes) {
  std::uint32_t crc = 0;
  for (unsigned char byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
      crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
  }
  return crc;
}

std::string Le32(std::uint32_t value) {
  std::string bytes;
  for (int n = 0; n < 4; ++n)
    bytes.push_back(static_cast<char>(value >> (8 * n)));
  return bytes;
}

// Sync, a 28-byte header with the message length at offset 8, the payload
// and the CRC, little-endian; `crc` replaces the right one.
std::string BinaryFrame(const std::string& payload, std::optional<std::uint32_t> crc = {}) {
  std::string frame(28, '\0');
  frame[0] = '\xAA';
  frame[1] = '\x44';
  frame[2] = '\x12';
  frame[3] = '\x1C';
  frame[4] = '\x2A';  // message id
  frame[8] = static_cast<char>(payload.size() & 0xFF);
  frame[9] = static_cast<char>(payload.size() >> 8);
  frame += payload;
  return frame + Le32(crc ? *crc : ByteWiseCrc(frame));
}

TEST(ScanSentenceTest, NullArgumentsChangeNothing) {
  char line[16];
  std::size_t remaining = 4;
  std::size_t length = 0;
  int kind = 0;
  const char* cursor = nullptr;
  EXPECT_EQ(ScanSentence(nullptr, &remaining, &cursor, line, sizeof line, &length, &kind), -1);
  EXPECT_EQ(ScanSentence("#A\r\n", &remaining, &cursor, nullptr, 0, &length, &kind), -1);
  EXPECT_EQ(FindSentence("#A\r\n", &remaining, &cursor, nullptr, &length, &kind), -1);
  EXPECT_EQ(remaining, 4u);
  EXPECT_EQ(cursor, nullptr);
}

struct FramingCase {
  std::string bytes;
  int result;
  std::string line;  // checked when the call copies
  std::size_t cursor;
  std::size_t remaining;
};

TEST(ScanSentenceTest, LineEndsStartsAndCuts) {
  const std::vector<FramingCase> cases = {
      // Three kinds of line end, counted in the length.
      {"#A,1\r\n#B", 2, "#A,1\r\n", 6, 2},
      {"#A,1\n#B", 2, "#A,1\n", 5, 2},
      {"#A,1\r#B", 2, "#A,1\r", 5, 2},
      {"#A,1\n\r", 2, "#A,1\n", 5, 1},
      {"#A,1\r", 2, "#A,1\r", 5, 0},  // a CR as the last byte is a lone CR
      {"$GPGGA,1\r\n", 1, "$GPGGA,1\r\n", 10, 0},
      {"%BRIEF,1,2\n", 2, "%BRIEF,1,2\n", 11, 0},
      // A line end with no sentence open is skipped, with what went before.
      {"\r\n#A\r\n", -2, "", 2, 4},
      {"\n", -2, "", 1, 0},
      {"\r", -2, "", 1, 0},
      {"junk\r\n#A", -2, "", 6, 2},
      // A new start byte cuts the open sentence; scanning resumes at it.
      {"#A,1#B,2\r\n", -2, "#A,1", 4, 6},
      {"$GP,1$GP,2\r\n", -2, "$GP,1", 5, 7},
      {"#A,1%B\n", -2, "#A,1", 4, 3},
      {"#A,1$GPGGA\n", -2, "#A,1", 4, 7},
      // A #PASSCOM wrapper keeps the sentences it carries.
      {"#PASSCOMA,COM1;#BESTPOSA,x\r\n", 2, "#PASSCOMA,COM1;#BESTPOSA,x\r\n", 28, 0},
      {"#PASSCOMA,COM1;$GPGGA,1*00\n", 2, "#PASSCOMA,COM1;$GPGGA,1*00\n", 27, 0},
      {"#PASSCOMA,1;#B,x%C,y$D\r\n", 2, "#PASSCOMA,1;#B,x%C,y$D\r\n", 24, 0},
      {"#XPASSCOM;#B\r\n", -2, "#XPASSCOM;", 10, 4},
      // Only the open text counts, not the sentence that starts here or later.
      {"#A,#PASSCOMA\r\n", -2, "#A,", 3, 11},
      {"#A,%B#PASSCOM\r\n", -2, "#A,", 3, 12},
  };
  for (const FramingCase& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.bytes));
    const Scan scan = ScanOnce(c.bytes);
    EXPECT_EQ(scan.result, c.result);
    EXPECT_EQ(scan.line, c.line);
    EXPECT_EQ(scan.length, c.line.size());
    EXPECT_EQ(scan.cursor, c.cursor);
    EXPECT_EQ(scan.remaining, c.remaining);
  }
}

TEST(ScanSentenceTest, RunningOutLeavesEverythingForTheNextBlock) {
  for (const std::string bytes : {"", "#A,1", "junk", "$GP", "#A,\xAA\x44\x12"}) {
    SCOPED_TRACE(::testing::PrintToString(bytes));
    const Scan scan = ScanOnce(bytes);
    EXPECT_EQ(scan.result, 0);
    EXPECT_EQ(scan.cursor, kUntouched);
    EXPECT_EQ(scan.remaining, bytes.size());
  }
}

TEST(ScanSentenceTest, ForceCutAtTheLimit) {
  const std::string x(40000, 'x');
  struct Case {
    std::string bytes;
    int result;
    std::size_t lineStart;  // in the input
    std::size_t cursor;
  };
  const std::vector<Case> cases = {
      // No sentence: the run is cut from the buffer's start, kind 0.
      {x.substr(0, 23553), 0, 0, 23553},
      {x.substr(0, 30000), 0, 0, 23553},
      // An open sentence is cut 23,553 bytes from its own start, so bytes
      // in front of it never shorten it.
      {"#" + x.substr(0, 30000), 2, 0, 23553},
      {x.substr(0, 100) + "$" + x.substr(0, 30000), 1, 100, 100 + 23553},
      {x.substr(0, 23552) + "#" + x.substr(0, 30000), 2, 23552, 23552 + 23553},
      // A line end on the limit's byte still ends the line.
      {"#" + x.substr(0, 23551) + "\r\n", 2, 0, 23554},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.bytes.size());
    const Scan scan = ScanOnce(c.bytes);
    EXPECT_EQ(scan.result, c.result);
    EXPECT_EQ(scan.cursor, c.cursor);
    EXPECT_EQ(scan.remaining, c.bytes.size() - c.cursor);
    EXPECT_EQ(scan.line, c.bytes.substr(c.lineStart, c.cursor - c.lineStart));
  }
  // One byte short of the limit: nothing happens yet.
  const Scan shortRun = ScanOnce(x.substr(0, 23552));
  EXPECT_EQ(shortRun.result, 0);
  EXPECT_EQ(shortRun.remaining, 23552u);
  EXPECT_EQ(shortRun.cursor, kUntouched);
}

TEST(ScanSentenceTest, CopyIsBoundedByTheCallersLine) {
  const Scan scan = ScanOnce("#ABCDEFGH\r\n#", 4);
  EXPECT_EQ(scan.result, 2);
  EXPECT_EQ(scan.line, "#AB");
  EXPECT_EQ(scan.cursor, 11u);
  EXPECT_EQ(ScanOnce("#A\r\n", 0).cursor, 4u);
}

TEST(ScanSentenceTest, GoodBinaryFrameIsTakenWhole) {
  // Line ends, start bytes and sync bytes inside a frame don't matter, and a
  // message longer than 255 bytes needs both length bytes.
  std::string payload(300, 'p');
  payload.replace(10, 7, "#\r\n$%\xAA\n");
  for (const std::string& body : {std::string("abc"), payload, std::string()}) {
    const std::string frame = BinaryFrame(body);
    const std::string bytes = "ab" + frame + "#A\r\n";
    SCOPED_TRACE(body.size());
    const Scan scan = ScanOnce(bytes);
    EXPECT_EQ(scan.result, 3);
    EXPECT_EQ(scan.kind, 3);
    EXPECT_EQ(scan.line, frame);
    EXPECT_EQ(scan.cursor, 2 + frame.size());
    EXPECT_EQ(scan.remaining, 4u);
  }
}

TEST(ScanSentenceTest, ShortBinaryTailWaitsForMoreBytes) {
  const std::string frame = BinaryFrame(std::string(40, 'p'));
  for (std::size_t keep : {frame.size() - 1, std::size_t{30}, std::size_t{20}, std::size_t{4}}) {
    SCOPED_TRACE(keep);
    const std::string bytes = "x" + frame.substr(0, keep);
    const Scan scan = ScanOnce(bytes);
    EXPECT_EQ(scan.result, 0);
    EXPECT_EQ(scan.remaining, bytes.size());
    EXPECT_EQ(scan.cursor, kUntouched);
  }
}

TEST(ScanSentenceTest, BadBinaryFrameIsSearchedByteByByte) {
  // A good frame inside the body of a bad one is found: the scan goes on
  // behind the bad frame's first sync byte, not behind the bad frame.
  const std::string inner = BinaryFrame(std::string(16, 'q'));
  const std::string outerBody = "pp" + inner + std::string(8, 'p');
  const std::string outer = BinaryFrame(outerBody, 0x21444142u);  // "BAD!"
  ASSERT_NE(ByteWiseCrc(outer.substr(0, outer.size() - 4)), 0x21444142u);
  const std::string bytes = "z" + outer + "#A\r\n";
  const Scan scan = ScanOnce(bytes);
  EXPECT_EQ(scan.result, 3);
  EXPECT_EQ(scan.line, inner);
  EXPECT_EQ(scan.cursor, 1 + 28 + 2 + inner.size());

  // With nothing inside, the next sentence is the one behind the frame.
  const std::string bad = BinaryFrame(std::string(16, 'q'), 0x21444142u);
  const Scan next = ScanOnce(bad + "#A\r\n");
  EXPECT_EQ(next.result, 2);
  EXPECT_EQ(next.line, "#A\r\n");

  // A bad frame inside an open sentence leaves its kind at 0, and the
  // sentence is taken all the same: the cursor tells it from running out.
  const std::string open = "#A," + bad + "\r\n";
  const Scan cut = ScanOnce(open + "#B\r\n");
  EXPECT_EQ(cut.result, 0);
  EXPECT_EQ(cut.kind, 0);
  EXPECT_EQ(cut.line, open);
  EXPECT_EQ(cut.cursor, open.size());
  EXPECT_EQ(cut.remaining, 4u);
}

TEST(ScanSentenceTest, FrameCutShortByTheCaptureEndIsBad) {
  // A sync whose frame would reach past the capture's end is searched
  // through like a bad frame, so the sentences it seemed to cover are read.
  std::string frame = BinaryFrame(std::string(2000, 'p'));
  frame.resize(100);
  const std::string bytes = frame + "\r\n#A\r\n";
  std::vector<char> line(kCallerLine);
  std::vector<std::string> lines;
  const char* cursor = bytes.data();
  std::size_t remaining = bytes.size();
  EXPECT_EQ(ScanOnce(bytes).result, 0);  // waits while more may come
  while (remaining > 0) {
    std::size_t length = 0;
    int kind = 0;
    const char* next = cursor;
    ScanSentence(cursor, &remaining, &next, line.data(), line.size(), &length, &kind, true);
    if (next == cursor) break;
    cursor = next;
    if (kind == 2) lines.emplace_back(line.data(), length);
  }
  EXPECT_EQ(lines, std::vector<std::string>{"#A\r\n"});
}

// A driver's loop: blocks of `blockSize` bytes, the unused tail carried in
// front of the next block. Returns the kind and the text without its line
// end of every completed sentence.
std::vector<std::pair<int, std::string>> ScanInBlocks(const std::string& capture,
                                                      std::size_t blockSize) {
  std::vector<std::pair<int, std::string>> sentences;
  std::vector<char> line(kCallerLine);
  std::string buffer;
  for (std::size_t at = 0; at < capture.size() || !buffer.empty();) {
    const bool last = at + blockSize >= capture.size();
    buffer += capture.substr(at, blockSize);
    at += blockSize;
    const char* cursor = buffer.data();
    std::size_t remaining = buffer.size();
    while (true) {
      std::size_t length = 0;
      int kind = 0;
      const int result =
          ScanSentence(cursor, &remaining, &cursor, line.data(), line.size(), &length, &kind);
      if (result == 0 && remaining == buffer.size() - (cursor - buffer.data())) break;
      if (result > 0) {
        std::string text(line.data(), length);
        if (kind != 3) text.erase(text.find_last_not_of("\r\n") + 1);
        sentences.emplace_back(result, text);
      }
    }
    buffer.erase(0, cursor - buffer.data());
    if (last) break;
  }
  return sentences;
}

std::string OneEach() {
  return testing::FileBytes(testing::SourceDir() + "/tests/data/OneEach.ASC");
}

TEST(ScanSentenceTest, RecordedCaptureGivesEveryLogWithAGoodCrc) {
  const std::string capture = OneEach();
  ASSERT_EQ(capture.size(), 2233u);
  const std::vector<std::string> names = {"#SENDA",     "#BESTPOSA",    "#BESTUTMA", "#SENDA",
                                          "#BSLNXYZA",  "#SENDA",       "#SENDA",    "#BESTVELA",
                                          "#RXSTATUSA", "#RXHWLEVELSA", "#SENDA",    "#PSRXYZA",
                                          "#BESTXYZA",  "#SENDA",       "#SENDA"};
  std::vector<char> line(kCallerLine);
  const char* cursor = capture.data();
  std::size_t remaining = capture.size();
  std::size_t total = 0;
  std::vector<std::string> seen;
  int result = 0;
  while (true) {
    std::size_t length = 0;
    int kind = 0;
    result = ScanSentence(cursor, &remaining, &cursor, line.data(), line.size(), &length, &kind);
    if (result <= 0) break;
    const std::string text(line.data(), length);
    EXPECT_EQ(result, 2);
    EXPECT_EQ(text.substr(text.size() - 2), "\r\n");
    EXPECT_TRUE(VerifyAsciiCrc(line.data(), length, text.rfind('*'))) << text;
    seen.push_back(text.substr(0, text.find(',')));
    total += length;
  }
  EXPECT_EQ(result, 0);
  EXPECT_EQ(remaining, 0u);
  EXPECT_EQ(total, capture.size());
  EXPECT_EQ(seen, names);
}

TEST(ScanSentenceTest, BlockSizeDoesNotChangeTheSentences) {
  // The recording, with an NMEA sentence, LF-only lines, a binary frame and
  // junk between lines mixed in.
  const std::string recording = OneEach();
  const std::size_t split = recording.find("#BESTUTMA");
  const std::string capture = recording.substr(0, split) + "$GPGGA,1,2*00\n" +
                              BinaryFrame("payload\r\n") + "junk\n" + recording.substr(split) +
                              "%BRIEF,1,2*00\n";
  const auto whole = ScanInBlocks(capture, capture.size());
  ASSERT_EQ(whole.size(), 18u);
  EXPECT_EQ(whole[2], std::make_pair(1, std::string("$GPGGA,1,2*00")));
  EXPECT_EQ(whole[3].first, 3);
  EXPECT_EQ(whole.back(), std::make_pair(2, std::string("%BRIEF,1,2*00")));
  for (std::size_t blockSize : {1, 2, 3, 7, 64, 100, 1000}) {
    SCOPED_TRACE(blockSize);
    EXPECT_EQ(ScanInBlocks(capture, blockSize), whole);
  }
}

}  // namespace
}  // namespace tarnlog
