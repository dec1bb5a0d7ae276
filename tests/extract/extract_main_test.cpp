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
