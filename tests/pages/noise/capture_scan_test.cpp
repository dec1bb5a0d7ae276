#include "pages/noise/capture_scan.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "extract/checksums.h"
#include "support/test_support.h"
#include "synthcap/synth.h"

namespace tarnlog {
namespace {

using testing::TempFolder;
using testing::WithAsciiCrc;
using testing::WriteBytes;

constexpr std::size_t kWindow = kEpochWindowBytes;
constexpr std::size_t kImuBlock = 0x19000;

std::string Le(std::uint32_t value, int bytes) {
  std::string out;
  for (int n = 0; n < bytes; ++n)
    out.push_back(static_cast<char>(value >> (8 * n)));
  return out;
}

// A binary frame: sync, a 28-byte header with id, message length, week and
// milliseconds, the message, and its CRC (spoilt with `goodCrc` false).
std::string Binary(int id, int week, std::uint32_t ms, const std::string& message = "",
                   bool goodCrc = true) {
  std::string frame = "\xAA\x44\x12\x1C" + Le(id, 2) + std::string(2, '\0') +
                      Le(static_cast<std::uint32_t>(message.size()), 2) + std::string(4, '\0') +
                      Le(week, 2) + Le(ms, 4) + std::string(8, '\0') + message;
  return frame + Le(Crc32Block(frame.data(), frame.size()) ^ (goodCrc ? 0u : 1u), 4);
}

std::string Words(const std::vector<std::uint32_t>& words) {
  std::string out;
  for (const std::uint32_t word : words)
    out += Le(word, 4);
  return out;
}

std::string Imu(int id, const std::vector<std::uint32_t>& words, bool goodCrc = true) {
  return Binary(id, 2163, 1000, Words(words), goodCrc);
}

// A long-header log ("#" + name) with the given week and second texts.
std::string Long(const std::string& name, const std::string& week, const std::string& second) {
  return WithAsciiCrc(name + ",COM1,0,71.5,FINESTEERING," + week + "," + second +
                      ",02000000,b1f6,16248;1,2,3");
}

// `size` bytes that make no frame: lines of z's.
std::string Pad(std::size_t size) {
  std::string out;
  while (size > 0) {
    const std::size_t line = std::min<std::size_t>(size, 1000);
    out += std::string(line - 1, 'z') + "\n";
    size -= line;
  }
  return out;
}

// Every frame of `bytes`, read in blocks of `block` bytes with the unread
// tail carried in front of the next block, as the IMU check reads.
std::vector<std::string> Frames(const std::string& bytes, std::size_t block = 0) {
  if (block == 0) block = bytes.size() + 1;
  std::vector<std::string> frames;
  std::string held;
  for (std::size_t at = 0; at <= bytes.size(); at += block) {
    held += bytes.substr(at, block);
    const bool end = at + block > bytes.size();
    std::size_t position = 0;
    CaptureFrame frame;
    FrameStep step;
    while ((step = FrameNextMessage(held.data(), held.size(), &position, &frame, end)) !=
           FrameStep::kNeedMore) {
      if (step == FrameStep::kFrame) {
        EXPECT_GE(frame.kind, 1);
        EXPECT_LE(frame.kind, 3);
        frames.emplace_back(frame.bytes, frame.length);
      }
    }
    held.erase(0, position);
  }
  return frames;
}

std::string Capture(const std::string& mix, std::uint64_t size) {
  SynthOptions options;
  options.size = size;
  options.mix = mix;
  return SynthesizeCapture(options);
}

TEST(CaptureScanTest, MessageIdsFollowTheListOrder) {
  const std::vector<std::pair<std::string, int>> cases = {
      {"#RANGEA,COM1", 43},
      {"#RANGECMPA,COM1", 140},
      {"#RANGEHA,COM1", 6005},
      {"#BASERANGEA,", 283},
      {"#RANGE,COM1", -1},
      {"#PSRVELA,COM1", 100},
      {"#RTKPOSA,", 141},
      {"#RTKDATAA,", 215},
      {"#RTKDATAHA,", 6007},
      {"#MATCHEDPOSA,", 96},
      {"#MATCHEDPOSHA,", 6006},
      {"#PASSCOM1A,", 233},
      {"#PASSCOM2A,", 234},
      {"#PASSCOM3A,", 235},
      {"#PASSCOM4A,", -1},
      {"#IONUTCA,", 8},
      {"#BD2IONUTCA,", 2010},
      {"#BDSQIONUTCA,", 6010},
      {"$GPGGA,", 218},
      {"$GNGGA,", 217},
      {"$BDGSV,", 223},
      {"$GNHDT,", 1044},
      {"$GLHDT,", 1045},
      {"#GYOACCA,", 6008},
      {"#BD2B3QSBASINFOA", 6011},
      {"%RANGEA,", -1},
      {"RANGEA,", -1},
      {"#rangea,", -1},
      {"", -1},
  };
  for (const auto& [text, id] : cases)
    EXPECT_EQ(MessageIdFromPrefix(text), id) << text;
}

TEST(CaptureScanTest, EpochOfFrameReadsTextHeadersAsTheFormatDoes) {
  struct Case {
    std::string text;
    std::optional<std::pair<int, double>> time;
  };
  const std::vector<Case> cases = {
      {Long("RANGEA", "2163", "100.250"), std::pair{2163, 100.25}},
      {"#RANGEA,COM1,0,71.5,FINE,2163,7", std::pair{2163, 7.0}},
      // What only the C library settles: blanks, signs, exponents, hex, and
      // its leniency with a dangling exponent.
      {"#RANGEA,COM1, 0,+71.5,FINE, 2163,1.5e2,x", std::pair{2163, 150.0}},
      {"#RANGEA,COM1,0,71.5,FINE,2163,0x10;", std::pair{2163, 16.0}},
      {"#RANGEA,COM1,0,71.5,FINE,-3,-0.5;", std::pair{-3, -0.5}},
      {"#RANGEA,COM1,0,71.5e,FINE,2163,100.0", std::pair{2163, 100.0}},
      {"#RANGEA,COM1,0,71.5,FINE,2163,100.5e,", std::pair{2163, 100.5}},
      // No time.
      {"#BESTNAVA,71,GPS,FINE,2163,100250,0,0,18,12;1*00", std::nullopt},
      {"%CANGLEA,2163,100250;1*00", std::nullopt},
      {"$GPGGA,235213.00,1438.02,N,03854.26,W,5,17,0.83,1736.9,M,-27.0,M,1.6,3532*7E",
       std::nullopt},
      {"#RANGEA,,0,71.5,FINE,2163,100.0,", std::nullopt},
      {"#RANGEA,COM1,0,71.5,FINE,2163;100.0", std::nullopt},
      {"#RANGEA,COM1,0,71.5,FINE,2163,", std::nullopt},
      {std::string("#RANGEA,COM1") + '\0' + ",0,71.5,FINE,2163,1.0", std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const std::optional<FrameEpoch> epoch =
        EpochOfFrame({c.text[0] == '$' ? 1 : 2, c.text.data(), c.text.size()});
    ASSERT_EQ(epoch.has_value(), c.time.has_value());
    if (!epoch) continue;
    EXPECT_EQ(epoch->messageId, MessageIdFromPrefix(c.text));
    EXPECT_EQ(epoch->time.week, c.time->first);
    EXPECT_EQ(epoch->time.second, c.time->second);
  }
}

TEST(CaptureScanTest, EpochOfFrameReadsBinaryHeaders) {
  const std::string good = Binary(1461, 2163, 604799999);
  const std::optional<FrameEpoch> epoch = EpochOfFrame({3, good.data(), good.size()});
  ASSERT_TRUE(epoch);
  EXPECT_EQ(epoch->messageId, 1461);
  EXPECT_EQ(epoch->time.week, 2163);
  EXPECT_DOUBLE_EQ(epoch->time.second, 604799.999);
  EXPECT_TRUE(EpochOfFrame({3, Binary(43, 10, 0).data(), 32}));
  const std::string early = Binary(43, 9, 5000);
  EXPECT_FALSE(EpochOfFrame({3, early.data(), early.size()}));
  EXPECT_FALSE(EpochOfFrame({3, good.data(), 20}));
}

TEST(CaptureScanTest, DamageCostsOnlyTheDamagedBytes) {
  const std::vector<std::string> good = {
      Long("RANGEA", "2163", "1.000"),   Binary(43, 2163, 2000, "obs"),
      WithAsciiCrc("GPGGA,1,2", '$'),    Imu(268, {1, 2, 3, 4, 5, 6}),
      Long("BESTPOSA", "2163", "3.000"),
  };
  std::string truncated = Binary(43, 2163, 9000, std::string(500, 'o'));
  truncated.resize(200);
  const std::vector<std::string> damage = {
      Binary(43, 2163, 1000, "bad", false),  // bad CRC
      truncated + "\r\n",                    // a frame cut short mid-way
      std::string(30000, 'x'),               // a run without line ends
      std::string(4000, '\0'),               // a zero-filled hole
      "#RANGEA,COM1,0,71.5,FI",              // a text cut by the next start
  };
  std::string bytes;
  for (std::size_t n = 0; n < damage.size(); ++n) {
    for (const std::string& frame : good)
      bytes += frame;
    bytes += damage[n];
  }
  for (const std::string& frame : good)
    bytes += frame;
  bytes += truncated;  // cut short by the capture's end

  const std::vector<std::string> frames = Frames(bytes);
  for (const std::string& frame : good)
    EXPECT_EQ(std::count(frames.begin(), frames.end(), frame), 6) << frame;
  // The cut text comes as a frame of its own, without a line end.
  EXPECT_EQ(std::count(frames.begin(), frames.end(), damage.back()), 1);
  // In small blocks, with each tail carried, the binary frames are the same
  // (a text's CR on a block's end would end it there, as in the extraction).
  const std::vector<std::string> blockwise = Frames(bytes, 997);
  for (const std::string& frame : {good[1], good[3]})
    EXPECT_EQ(std::count(blockwise.begin(), blockwise.end(), frame), 6);
}

TEST(CaptureScanTest, FrameNextMessageWaitsAtAnUnfinishedFrame) {
  const std::string frame = Binary(43, 2163, 1000, "obs");
  for (const std::string& bytes : {std::string(), frame.substr(0, 30), std::string("#RANGEA,1")}) {
    std::size_t position = 0;
    CaptureFrame out;
    EXPECT_EQ(FrameNextMessage(bytes.data(), bytes.size(), &position, &out), FrameStep::kNeedMore);
    EXPECT_EQ(position, 0u);
  }
  const std::string bytes = "\r\n" + frame;
  std::size_t position = 0;
  CaptureFrame out;
  EXPECT_EQ(FrameNextMessage(bytes.data(), bytes.size(), &position, &out), FrameStep::kSkipped);
  EXPECT_EQ(position, 2u);
  EXPECT_EQ(FrameNextMessage(bytes.data(), bytes.size(), &position, &out), FrameStep::kFrame);
  EXPECT_EQ(out.kind, 3);
  EXPECT_EQ(out.bytes, bytes.data() + 2);
  EXPECT_EQ(position, bytes.size());
}

std::string RangeText(const EpochRange& range) {
  const auto one = [](const std::optional<GpsWeekSecond>& t) {
    return t ? std::to_string(t->week) + ":" + std::to_string(t->second) : std::string("-");
  };
  return one(range.first) + " " + one(range.last);
}

std::string EpochsOf(const TempFolder& folder, const std::string& bytes) {
  WriteBytes(folder / "capture.bin", bytes);
  return RangeText(FindEpochRange(folder / "capture.bin"));
}

TEST(CaptureScanTest, EpochWindowsAtBothEnds) {
  TempFolder folder;
  const std::string first = Binary(43, 2000, 10000, "obs");  // 2000:10
  const std::string firstText = Long("RANGEA", "2000", "11.000");
  const std::string last = Binary(283, 2000, 90000, "obs");  // 2000:90
  const std::string lastText = Long("RANGEHA", "2000", "91.000");
  const auto ending = [&](const std::string& frame, std::size_t end) {
    return Pad(end - frame.size()) + frame;
  };
  // The first window: a frame ending on its last byte counts, one byte
  // later it doesn't (the last window still sees it). A text whose CR is
  // the window's last byte ends there.
  EXPECT_EQ(EpochsOf(folder, ending(first, kWindow) + Pad(3 * kWindow)), "2000:10.000000 -");
  EXPECT_EQ(EpochsOf(folder, ending(first, kWindow + 1)), "- 2000:10.000000");
  EXPECT_EQ(EpochsOf(folder, ending(firstText, kWindow + 1) + Pad(3 * kWindow)),
            "2000:11.000000 -");
  EXPECT_EQ(EpochsOf(folder, ending(firstText, kWindow + 2) + Pad(3 * kWindow)), "- -");
  // The last window: a frame that starts on its first byte counts, one byte
  // earlier it doesn't.
  const std::string early = Pad(10) + Long("RANGEA", "2000", "50.000");
  EXPECT_EQ(EpochsOf(folder, early + Pad(2 * kWindow) + last + Pad(kWindow - last.size())),
            "2000:50.000000 2000:90.000000");
  EXPECT_EQ(EpochsOf(folder, early + Pad(2 * kWindow) + lastText + Pad(kWindow - lastText.size())),
            "2000:50.000000 2000:91.000000");
  for (const std::string& frame : {last, lastText}) {
    EXPECT_EQ(
        EpochsOf(folder, early + Pad(2 * kWindow - 1) + frame + Pad(kWindow + 1 - frame.size())),
        "2000:50.000000 -");
  }
}

TEST(CaptureScanTest, FirstAndLastEpochRules) {
  TempFolder folder;
  struct Case {
    std::vector<std::string> frames;
    std::string range;
  };
  const std::vector<Case> cases = {
      // A week of 0 or a negative second is no first epoch; any whole
      // second of an observation id is a last one.
      {{Long("RANGEA", "0", "5.000"), Long("RANGEA", "2000", "-1.000"), Binary(43, 9, 3000),
        Binary(6005, 2000, 7500), Long("BASERANGEA", "2000", "8.0000004"),
        Long("RANGEA", "2000", "8.500"), Long("BESTPOSA", "2000", "9.000"),
        Imu(268, {1, 2, 3, 4, 5, 6})},
       "2000:7.500000 2000:8.000000"},
      {{Binary(43, 2000, 100000), Long("RANGEA", "2000", "100.000002")},
       "2000:100.000000 2000:100.000000"},
      {{Long("RANGECMPA", "2000", "1.000"), Binary(42, 2000, 2000)}, "- -"},
      {{}, "- -"},
  };
  for (const Case& c : cases) {
    std::string bytes;
    for (const std::string& frame : c.frames)
      bytes += frame;
    EXPECT_EQ(EpochsOf(folder, bytes), c.range) << bytes.size();
  }
  // A synthesized capture of binary and ASCII frames, shorter than the
  // window: RANGEA comes first in every epoch, RANGEB closes the last.
  const std::string mixed = Capture("RANGEA,GGA,RANGEB,RAWIMUB,BESTPOSB", 300000);
  WriteBytes(folder / "mixed.bin", mixed);
  const EpochRange range = FindEpochRange(folder / "mixed.bin");
  ASSERT_TRUE(range.first && range.last);
  EXPECT_GT(range.last->second, range.first->second);
  EXPECT_EQ(range.last->second, static_cast<int>(range.last->second));
}

TEST(CaptureScanTest, ImuDataVerdicts) {
  TempFolder folder;
  const std::string nothing = Binary(43, 2163, 1000, "obs") + Long("RAWIMUA", "2163", "1.000");
  struct Case {
    std::string bytes;
    std::string verdict;
  };
  const std::vector<Case> cases = {
      {nothing, "0"},
      {Imu(268, {0, 0, 0, 0, 0, 0}), "1"},
      {Imu(1461, {1, 2, 3, 0, 0, 0}) + Imu(268, {0, 0, 0, 0, 0, 9}), "1"},
      {Imu(268, {0, 0, 7, 0, 0, 9}), "2"},
      {Imu(1461, {5, 0, 0, 5, 0, 0}), "2"},
      {Imu(268, {5, 0, 0}) + Imu(268, {5, 0, 0, 5}), "2"},  // past the message: zero
      {Imu(268, {5, 0, 0}), "1"},
      {Imu(268, {1, 2, 3, 4, 5, 6}, false), "0"},  // a bad CRC doesn't count
      {Imu(268, {1, 2, 3, 4, 5, 6}, false) + Imu(1461, {0, 0, 0, 0, 0, 0}), "1"},
      // Data words across the first block's end, and data far behind a
      // run of silent frames.
      {Pad(kImuBlock - 40) + Imu(268, {1, 2, 3, 4, 5, 6}), "2"},
      {Pad(3 * kImuBlock + 17) + Imu(268, {0, 0, 0, 0, 0, 0}) + Pad(5 * kImuBlock) +
           Imu(1461, {0, 0, 1, 1, 0, 0}),
       "2"},
      {Capture("RANGEB,RAWIMUB:zero,RAWIMUXB:zero,GGA", 500000), "1"},
      {Capture("RANGEB,RAWIMUXB", 200000), "2"},
      {Capture("RANGEA,RANGEB,RAWIMUA", 200000), "0"},
  };
  for (const Case& c : cases) {
    WriteBytes(folder / "imu.bin", c.bytes);
    EXPECT_EQ(CheckImuData(folder / "imu.bin"), c.verdict) << c.bytes.size();
  }
}

TEST(CaptureScanTest, NoCaptureGivesNothingWithoutBlocking) {
  TempFolder folder;
  ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
  for (const std::string& path : {folder / "missing.bin", folder.Path(), folder / "fifo"}) {
    EXPECT_EQ(RangeText(FindEpochRange(path)), "- -") << path;
    EXPECT_EQ(CheckImuData(path), "0") << path;
  }
}

}  // namespace
}  // namespace tarnlog
