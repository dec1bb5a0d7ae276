// Whole runs of the driver: tables opened, views and blocks, checks, and the
// combined logs, through ExtractMain and ExtractFromMemory.
#include "extract/extract_main.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "extract/tables.h"
#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;

std::string Logged(const std::string& body) {
  return testing::WithAsciiCrc(body);
}

const std::string kPublicBestPos =
    "#BESTPOSA,COM1,0,83.5,FINESTEERING,2163,329760.000,02400000,b1f6,65535;SOL_COMPUTED,SINGLE,"
    "51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,1.3648,1.1806,3.1112,\"\",0.000,"
    "0.000,18,18,18,0,00,02,11,01*c3194e35\r\n";
const std::string kPublicBestPosRow =
    "2163,329760.000,30,51.15043874397,-114.03066788586,1080.6822,1.3648,1.1806,3.1112,18,18,18,"
    "0,0.0000,0.0000,1,84,17,-17.0000,0\n";

std::string BestPosAt(int seconds, const std::string& extra = "") {
  char body[512];
  std::snprintf(body, sizeof body,
                "BESTPOSA,COM1,0,71.5,FINESTEERING,2163,%d.000,02000000,b1f6,16248;SOL_COMPUTED,"
                "NARROW_INT,51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,0.0100,"
                "0.0090,0.0200,\"0\",1.000,0.000,18,18,18,18,00,02,11,01%s",
                seconds, extra.c_str());
  return Logged(body);
}

class ExtractRunTest : public ::testing::Test {
 protected:
  // Runs the capture with `options` into the folder and returns stdout.
  std::string RunFile(const std::string& capture, std::vector<std::string> options,
                      ExtractSettings settings = {}) {
    testing::WriteBytes(folder / "cap.log", capture);
    std::vector<std::string> texts{folder.Path(), "-i", folder / "cap.log"};
    texts.insert(texts.end(), options.begin(), options.end());
    std::vector<char*> argv = ArgvOf(texts);
    settings.perfstatHeaderPending = &perfstatPending;
    ::testing::internal::CaptureStdout();
    ExtractMain(static_cast<int>(texts.size()), argv.data(), settings, state);
    return ::testing::internal::GetCapturedStdout();
  }
  void RunMemory(const std::string& capture, std::vector<std::string> options,
                 ExtractSettings settings = {}) {
    std::vector<std::string> texts{folder.Path(), "-i", "memory"};
    texts.insert(texts.end(), options.begin(), options.end());
    std::vector<char*> argv = ArgvOf(texts);
    ::testing::internal::CaptureStdout();
    ExtractFromMemory(static_cast<int>(texts.size()), argv.data(), capture.data(), capture.size(),
                      settings, state);
    ::testing::internal::GetCapturedStdout();
  }
  std::string Table(const std::string& name) const { return FileBytes(folder / name); }

  TempFolder folder;
  ExtractionState state;
  bool perfstatPending = false;
};

TEST_F(ExtractRunTest, EmptyCaptureLeavesEveryTableEmpty) {
  RunFile("", {"-BP", "bestpos.txt"});
  EXPECT_EQ(Table("bestpos.txt"), "");
  EXPECT_EQ(Table("BstPosXY.txt"), "");
  for (std::string_view name : kDefaultTableNames)
    EXPECT_EQ(Table(std::string(name)), "") << name;
  EXPECT_TRUE(perfstatPending);
}

TEST_F(ExtractRunTest, MissingCaptureIsReportedAndTablesStayEmpty) {
  std::vector<std::string> texts{folder.Path(), "-i", folder / "absent.log", "-BP"};
  std::vector<char*> argv = ArgvOf(texts);
  ::testing::internal::CaptureStdout();
  ExtractMain(4, argv.data(), ExtractSettings{}, state);
  const std::string printed = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(printed,
            "Cannot open  read  file:\n***   " + (folder / "absent.log").substr(0, 20) + "\n");
  EXPECT_EQ(Table("bestpos.txt"), "");
}

TEST_F(ExtractRunTest, PublicBestPosGivesItsRow) {
  RunFile(kPublicBestPos, {"-BP", "bestpos.txt"});
  EXPECT_EQ(Table("bestpos.txt"), kPublicBestPosRow);
  // North of the equator: one grid row.
  const std::string grid = Table("BstPosXY.txt");
  EXPECT_EQ(std::count(grid.begin(), grid.end(), '\n'), 1);
}

TEST_F(ExtractRunTest, ChecksumBoxesDecideWhatIsDropped) {
  std::string broken = kPublicBestPos;
  broken[100] = broken[100] == '1' ? '2' : '1';
  RunFile(broken, {"-BP"});
  EXPECT_EQ(Table("bestpos.txt"), "");
  ExtractSettings noCrc;
  noCrc.asciiCrc = false;
  RunFile(broken, {"-BP"}, noCrc);
  EXPECT_NE(Table("bestpos.txt"), "");
}

TEST_F(ExtractRunTest, SentencesAcrossBlocksAndViewsArriveWhole) {
  // About 450 KB of position logs of uneven length, so that sentences
  // straddle the 204,800-byte blocks and every small view's end.
  std::string capture;
  int sentences = 0;
  for (int second = 0; capture.size() < 450000; ++second, ++sentences) {
    capture += BestPosAt(second, std::string(static_cast<std::size_t>(second % 37), ' '));
    if (second % 5 == 0) capture += "$GPGGA,junk-without-star\r\n";
  }
  RunFile(capture, {"-BP"});
  const std::string whole = Table("bestpos.txt");
  EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), sentences);
  for (std::size_t view : {4096u, 8192u, 65536u}) {
    SCOPED_TRACE(view);
    ExtractSettings small;
    small.viewSize = view;
    RunMemory(capture, {"-BP"}, small);
    EXPECT_EQ(Table("bestpos.txt"), whole);
  }
}

// Damage in a capture costs only the damaged bytes: whatever lies in front of
// a run of good sentences, each of them gives its row, wherever the damage
// falls against the blocks and the views.
TEST_F(ExtractRunTest, DamageCostsOnlyTheDamagedBytes) {
  std::string badSync = "\xAA\x44\x12\x1C";
  const std::string zeros50(50, '\0');
  // A sync whose header claims a 60,000-byte message: the frame covers the
  // sentences behind it and fails its CRC.
  std::string longFrame = badSync + std::string(24, '\0');
  longFrame[8] = '\x60';
  longFrame[9] = '\xEA';
  std::string noLineEnds(40000, '\0');
  for (std::size_t i = 0; i < noLineEnds.size(); ++i)
    noLineEnds[i] = static_cast<char>('&' + i % 80);  // no '#', '$', '%', CR, LF or 0xAA
  struct Damage {
    const char* what;
    std::string bytes;
  };
  const std::vector<Damage> damages = {
      {"bad sync inside an open sentence", "#JUNK," + badSync + zeros50 + "\r\n"},
      {"zero-filled hole at the limit", std::string(23553, '\0')},
      {"zero-filled hole just short of the limit", std::string(23400, '\0')},
      {"zero-filled hole over several blocks", std::string(500000, '\0')},
      {"garbage without line ends", noLineEnds},
      {"torn sentence before a hole", "#BESTPOSA,COM1,0,7" + std::string(30000, '\0')},
      {"sync claiming a long frame", longFrame},
  };
  std::string after;
  int afterCount = 0;
  for (; after.size() < 450000; ++afterCount)
    after += BestPosAt(1000 + afterCount);
  // Offsets of the damage: the start, across the first block end, across a
  // 64 KiB view end, and across the carry buffer's size.
  for (const std::size_t offset : {0u, 204700u, 65530u, 409590u}) {
    std::string before;
    int beforeCount = 0;
    for (; before.size() + 230 < offset; ++beforeCount)
      before += BestPosAt(beforeCount);
    for (const Damage& damage : damages) {
      SCOPED_TRACE(std::string(damage.what) + " at " + std::to_string(offset));
      const std::string capture = before + damage.bytes + after;
      const auto rows = [&] {
        const std::string table = Table("bestpos.txt");
        return std::count(table.begin(), table.end(), '\n');
      };
      RunFile(capture, {"-BP"});
      EXPECT_EQ(rows(), beforeCount + afterCount);
      for (std::size_t view : {4096u, 65536u}) {
        ExtractSettings small;
        small.viewSize = view;
        RunMemory(capture, {"-BP"}, small);
        EXPECT_EQ(rows(), beforeCount + afterCount) << "views of " << view;
      }
    }
  }
  // At the capture's end a sync whose frame would reach past it hides
  // nothing behind it either.
  const std::string tail = BestPosAt(7) + BestPosAt(8);
  RunFile(after + longFrame + tail, {"-BP"});
  const std::string table = Table("bestpos.txt");
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), afterCount + 2);
}

TEST_F(ExtractRunTest, CombinedLogIsSplitIntoLongHeaderSentences) {
  const std::string bestNav = Logged(
      "BESTNAVA,83,GPS,FINE,2163,329760000,0,0,18,12;SOL_COMPUTED,NARROW_INT,51.15043874397,"
      "-114.03066788586,1097.6822,-17.0000,WGS84,0.0100,0.0090,0.0200,\"0\",1.000,0.000,18,18,18,"
      "18,00,02,11,01,SOL_COMPUTED,DOPPLER_VELOCITY,0.150,0.000,0.0123,123.4,0.0021,0.0");
  RunFile(bestNav, {"-BP"});
  EXPECT_EQ(Table("bestnavpos.txt"),
            "2163,329760.000,50,51.15043874397,-114.03066788586,1080.6822,0.0100,0.0090,0.0200,"
            "18,18,18,18,1.0000,0.0000,1,83,17,-17.0000,0\n");
  EXPECT_EQ(state.firstFixWeek, 2163);
  EXPECT_DOUBLE_EQ(state.firstFixSeconds, 329760.0);
  // Nothing goes to the native table.
  EXPECT_EQ(Table("bestpos.txt"), "");

  // Without -BP the position half is not given.
  ExtractionState fresh;
  state = fresh;
  RunFile(bestNav, {"-RP", "rtkpos.txt"});
  EXPECT_EQ(Table("bestnavpos.txt"), "");
}

TEST_F(ExtractRunTest, RealValueModeWritesOnlyThePositionSet) {
  ExtractSettings generate;
  generate.realValueMode = true;
  RunFile(kPublicBestPos + "$GPGST,1*00\r\n", {"-BP", "-1", "range.txt", "FreqList.txt"}, generate);
  EXPECT_EQ(Table("bestpos.txt"), kPublicBestPosRow);
  EXPECT_EQ(Table("range.txt"), "");
  EXPECT_EQ(Table("gst.txt"), "<missing>");
}

}  // namespace
}  // namespace tarnlog
