#include "pages/static/static_page.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "platform/recording_host.h"
#include "platform/stamps.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using testing::FileBytes;

std::int64_t NowNs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

// A start folder with the real values, the report template and a stand-in
// analyser, and two copies of a real receiver log.
class StaticPageTest : public testing::StartFolderFixture {
 protected:
  StaticPageTest() : StartFolderFixture("Roof,31.5,121.25,10\r\nPier,30,120,5\r\n") {
    MakeFolder(start_ + "/EXE");
    testing::WriteBytes(start_ + "/Config/Static_report.xlsx", "template");
    testing::InstallStandin(start_ + "/EXE", "llherroRTK_M.exe");
    const std::string sample = testing::SourceDir() + "/tests/data/OnceEachAgain.ASC";
    CopyFileReplacing(sample, start_ + "/a.log");
    CopyFileReplacing(sample, start_ + "/b.log");
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "400", 1);
  }
  ~StaticPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    unsetenv("TARNLOG_STANDIN_CREATE");
    SetScriptRunnerPath("");
  }

  llherroRTKStatic& Start() {
    llherroRTKStatic& page = *StartDialog().staticPage;
    page.SetStamp("101010");
    return page;
  }
  // Presses Process and waits for the worker's finished notice.
  void ProcessAndWait(llherroRTKStatic& page) {
    page.process.Press();
    for (int i = 0; i < 600 && host_.finishedCount == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_EQ(host_.finishedCount, 1);
  }
  std::string Out(const std::string& relative) const {
    return start_ + "//RTKStatic101010/" + relative;
  }
};

TEST_F(StaticPageTest, ProcessOverlapsExtractionWithOneAnalyserAtATime) {
  llherroRTKStatic& page = Start();
  page.AddFile(start_ + "/a.log");
  page.AddFile(start_ + "/b.log");
  page.slave.Choose(1);
  std::mutex mutex;
  std::vector<std::int64_t> extractionStart(2), extractionEnd(2);
  page.onExtractionStart = [&](std::size_t slot) {
    std::lock_guard<std::mutex> lock(mutex);
    extractionStart[slot] = NowNs();
  };
  page.onExtractionEnd = [&](std::size_t slot) {
    std::lock_guard<std::mutex> lock(mutex);
    extractionEnd[slot] = NowNs();
  };
  ProcessAndWait(page);

  EXPECT_EQ(host_.statuses, (Names{"Status:Processing", "Status:Finished"}));
  EXPECT_TRUE(host_.messages.empty());
  for (const char* name : {"a", "b"}) {
    const std::string out = Out(name);
    EXPECT_EQ(FileBytes(out + "/realvalue.txt"),
              "31.50000000000,121.25000000000,10.000000\r\n"
              "30.00000000000,120.00000000000,5.000000\r\n");
    EXPECT_NE(FileBytes(out + "/bestpos.txt"), "<missing>");
    EXPECT_EQ(FileBytes(out + "/RTKSPlot101010.bat"),
              "\r\ncd \"" + out + "\"\r\n\"" + start_ + "/EXE/llherroRTK_M.exe\"  \"" + out +
                  "\" JPG  realvalue.txt 0 0 0\r\nexit\r\n");
    // Both delete flags off: the clean-up script stays and is not run.
    EXPECT_EQ(FileBytes(out + "/Del101010.bat"), "\r\ncd " + out +
                                                     "\r\ndel llherroRTK_M.exe\r\n\r\ncd " + name +
                                                     "\\FIG\r\ndel *.fig\r\nexit\r\n");
  }
  EXPECT_EQ(FileBytes(Out("Static_report.xlsx")), "<missing>");

  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 2u);
  for (std::size_t k = 0; k < 2; ++k) {
    const std::string out = Out(k == 0 ? "a" : "b");
    EXPECT_EQ(calls[k].cwd, testing::Canonical(out));
    EXPECT_EQ(calls[k].args, (Names{start_ + "/EXE/llherroRTK_M.exe", out, "JPG", "realvalue.txt",
                                    "0", "0", "0"}));
    EXPECT_GE(calls[k].startNs, extractionEnd[k]);
  }
  // The second extraction runs while the first analyser works, and the
  // second analyser waits for the first.
  EXPECT_LT(extractionStart[1], calls[0].endNs);
  EXPECT_GE(calls[1].startNs, calls[0].endNs);

  // The finish resets the list and a new stamp names the next run.
  EXPECT_EQ(page.FileCount(), 0);
  EXPECT_TRUE(page.files.rows.empty());
  EXPECT_EQ(page.LastFilePath(), "");
  EXPECT_EQ(page.HeldRoot(), "");
  EXPECT_NE(page.Stamp(), "101010");
  EXPECT_TRUE(page.process.enabled);
}

TEST_F(StaticPageTest, UnreadableLogSkipsItsSlotAndCleanUpRunsWithAFlag) {
  llherroRTKStatic& page = Start();
  page.AddFile(start_ + "/gone.log");
  page.AddFile(start_ + "/b.log");
  page.delTxtFiles.checked = true;
  page.generateReport.checked = true;
  ProcessAndWait(page);

  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].args.back(), "2");  // report index: slot number from 1
  EXPECT_EQ(FileBytes(Out("Static_report.xlsx")), "template");
  EXPECT_TRUE(IsFolder(Out("gone")));
  EXPECT_EQ(FileBytes(Out("gone/RTKSPlot101010.bat")), "<missing>");
  // "del *.txt" ran in each folder and the clean-up script is gone.
  EXPECT_EQ(FileBytes(Out("b/bestpos.txt")), "<missing>");
  EXPECT_EQ(FileBytes(Out("b/realvalue.txt")), "<missing>");
  EXPECT_EQ(FileBytes(Out("b/Del101010.bat")), "<missing>");
  EXPECT_NE(FileBytes(Out("b/RTKSPlot101010.bat")), "<missing>");
}

TEST_F(StaticPageTest, ProcessRefusals) {
  llherroRTKStatic& page = Start();
  page.process.Press();
  for (int i = 0; i < 100 && host_.messages.empty(); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  page.AddFile(start_ + "/a.log");
  page.Transfer();
  page.process.Press();
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please Choose ASCII File Firstly!",
                   "Please click transfer button, transfer the value to original"}));
  EXPECT_EQ(host_.statuses, Names{});
  EXPECT_EQ(page.realValueCoordinates.latitude.text, "31*30#0.000000&");
}

TEST_F(StaticPageTest, FileListKeepsBoardValuesWithTheSlotNumbers) {
  llherroRTKStatic& page = Start();
  page.boardType.Choose(3);
  page.AddFile("/x/one.log");
  page.boardType.Choose(9);
  page.AddFile("/x/two.LOG");
  page.AddFile("/x/three.log");
  EXPECT_EQ(page.files.rows[1], (Names{"2", "two", "Kestrix", "/x/two.LOG"}));
  page.processType.Choose(4);
  page.files.selected = 0;
  page.Find<ActionField>("Delete One Item")->Press();
  EXPECT_EQ(page.FileCount(), 2);
  EXPECT_EQ(page.Slots()[0].path, "/x/two.LOG");
  EXPECT_EQ(page.Slots()[0].board, 3);  // the value stayed with slot 0
  EXPECT_EQ(page.Slots()[1].process, 4);
  EXPECT_EQ(page.Slots()[0].folder, "/x/");

  page.Find<ActionField>("Delete All Item")->Press();
  page.Find<ActionField>("Delete One Item")->Press();
  EXPECT_EQ(host_.MessageTexts(), Names{"Please Choose ASCII File Firstly!"});
  EXPECT_EQ(page.boardType.selected, 0);
  EXPECT_EQ(page.Slots()[1].board, 9);

  for (int i = 0; i < 101; ++i)
    page.AddFile("/x/f.log");
  EXPECT_EQ(page.FileCount(), 100);
  EXPECT_EQ(host_.MessageTexts().back(), "At most 100 files can be chosen!");
}

TEST_F(StaticPageTest, SaveFolderChoicesStandOneBehindTheOther) {
  llherroRTKStatic& page = Start();
  host_.folderChoices = {std::string("/r1"), std::string("/r2")};
  page.Find<ActionField>("Set Save Path")->Press();
  page.Find<ActionField>("Set Save Path")->Press();
  EXPECT_EQ(page.HeldRoot(), "/r1/r2");
  EXPECT_EQ(page.Find<TextField>("Set Save Path")->text, "/r2");
  EXPECT_EQ(host_.chooserFilters, (Names{"请选择需要的目录", "请选择需要的目录"}));
}

TEST_F(StaticPageTest, GenerateFillsMasterAndResetsThePage) {
  llherroRTKStatic& page = Start();
  page.generate.Press();
  page.AddFile(start_ + "/a.log");
  page.generate.Press();
  page.meanSources[1].checked = true;  // RTKPOS
  page.meanSources[3].checked = true;  // BESTPOS
  page.generate.Press();
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please choose ascii file firstly!",
                   "Please choose checkbox, MatchedPos PSRPos RTKFlag BESTFlag!", "处理完成"}));
  EXPECT_EQ(host_.statuses, (Names{"Status: Generating realvalue", "Status: Finished!"}));
  EXPECT_NE(FileBytes(start_ + "/MeanValue.txt"), "<missing>");
  EXPECT_EQ(FileBytes(start_ + "/bestpos.txt"), "<missing>");
  // The sample has no fixed BESTPOSA: the mean is not a number, and the
  // Master set takes it as it is.
  EXPECT_TRUE(std::isnan(page.masterValue.latitude));
  EXPECT_EQ(page.masterCoordinates.latitude.text, page.realValueCoordinates.latitude.text);
  EXPECT_FALSE(page.meanSources[1].checked);
  EXPECT_TRUE(page.meanSources[3].checked);
  EXPECT_EQ(page.realValueType.selected, -1);
  EXPECT_EQ(page.FileCount(), 0);
}

// A run from the command line whose check fails ends at once with status 1
// and one line: the check's message and, for a coordinate, the field, its
// text and its range. Nothing is made.
TEST_F(StaticPageTest, BatchRunFailedCheckEndsWithOneLineNamingTheField) {
  struct Case {
    const char* realValues;  // Config/AllRealValue.txt, or null for the fixture's
    Names args;
    std::string err;
  };
  const std::string head = "tarnlog: llherroRTKStatic: ";
  const Case cases[] = {
      {nullptr,
       {"a.log", "nan", "121.25", "10", "30", "120", "5", "0", "STATIC"},
       head + "Value out of range: Master Latitude is \"nan\", it must lie in -90 to 90\n"},
      {nullptr,
       {"a.log", "31.5", "121.25", "10", "30", "1e308", "5", "0", "static"},
       head + "Value out of range: Slave Longitude is \"1e+308\", it must lie in -180 to 180\n"},
      {"Bad,nan,0,0\r\nRoof,31.5,121.25,10\r\n",
       {"a.log", "31.5", "121.25", "10", "30", "120", "5", "0", "STATIC"},
       head + "Value out of range: Real Value Latitude is \"nan\", it must lie in -90 to 90\n"},
      {"Far,0,-180.5,0\r\n",
       {"a.log", "31.5", "121.25", "10", "30", "120", "5", "0", "STATIC"},
       head +
           "Value out of range: Real Value Longitude is \"-180.5\", it must lie in -180 to 180\n"},
      {nullptr,
       {"31.5", "121.25", "10", "30", "120", "5", "0", "STATIC"},
       head + "Please Choose ASCII File Firstly!\n"},
  };
  for (const Case& c : cases) {
    if (c.realValues) testing::WriteBytes(start_ + "/Config/AllRealValue.txt", c.realValues);
    Names argv{testing::TarnlogBinary()};
    argv.insert(argv.end(), c.args.begin(), c.args.end());
    const testing::RunResult result = testing::RunAndCapture(argv, start_);
    EXPECT_EQ(result.status, 1) << c.err;
    EXPECT_EQ(result.err, c.err);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(ListMatching(start_, "RTKStatic*").empty()) << c.err;
  }
}

// A board position out of int's range, or no number, selects no board; the
// run then goes on with the first board.
TEST_F(StaticPageTest, BatchRunBoardPositionOutOfRangeTakesTheFirstBoard) {
  setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  for (const char* board : {"1e308", "-1e308", "nan"}) {
    RemoveFile(start_ + "/calls.log");  // this run's calls alone
    const testing::RunResult result =
        testing::RunAndCapture({testing::TarnlogBinary(), "a.log", "31.5", "121.25", "10", "30",
                                "120", "5", board, "STATIC"},
                               start_);
    EXPECT_EQ(result.status, 0) << board << ": " << result.err;
    const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
    ASSERT_FALSE(calls.empty()) << board;
    const Names& args = calls.back().args;
    EXPECT_EQ(Names(args.end() - 3, args.end()), (Names{"0", "0", "1"})) << board;
  }
}

// A FIFO given as a log is refused when it is opened, copied (the NMEA
// boards) or probed: its slot is skipped as an unreadable log is, and the
// run goes on to the next file and ends instead of waiting for a writer.
TEST_F(StaticPageTest, BatchRunWithAFifoAsALogEndsAtOnce) {
  setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  ASSERT_EQ(mkfifo((start_ + "/pipe.log").c_str(), 0600), 0);
  for (const char* board : {"0", "4"}) {
    const testing::RunResult result =
        testing::RunAndCapture({"timeout", "60", testing::TarnlogBinary(), "pipe.log", "a.log",
                                "31.5", "121.25", "10", "30", "120", "5", board, "STATIC"},
                               start_);
    EXPECT_EQ(result.status, 0) << board << ": " << result.err;
    EXPECT_EQ(result.out, "Status:Processing\nStatus:Finished\n");
    EXPECT_EQ(result.err, "");
    const std::vector<FolderEntry> roots = ListMatching(start_, "RTKStatic*");
    ASSERT_EQ(roots.size(), 1u);
    const std::string root = start_ + "/" + roots[0].name;
    EXPECT_NE(FileBytes(root + "/pipe/realvalue.txt"), "<missing>");
    EXPECT_EQ(FileBytes(root + "/pipe/RTKSPlot" + roots[0].name.substr(9) + ".bat"), "<missing>");
    EXPECT_NE(FileBytes(root + "/a/RTKSPlot" + roots[0].name.substr(9) + ".bat"), "<missing>");
    EXPECT_EQ(FileBytes(root + "/pipe/pipe.log"), "<missing>") << board;
    // Out of the way, so that the next run's folder holds only its own.
    ASSERT_EQ(std::rename(root.c_str(), (start_ + "/board" + board).c_str()), 0);
  }
}

// The "DayOfWeek" text closes every GGA record; out of int's range it is
// held at the range's end.
TEST_F(StaticPageTest, DayOfWeekOutOfRangeIsHeldAtTheEnd) {
  llherroRTKStatic& page = Start();
  testing::WriteBytes(start_ + "/rover.log",
                      testing::WithNmeaChecksum("GPGGA,123519.00,3112.0000,N,12130.0000,E,4,12,0.9,"
                                                "10.5,M,-5.25,M,1.0,0000"));
  page.boardType.Choose(4);
  page.AddFile(start_ + "/rover.log");
  page.dayOfWeek.text = "99999999999";
  ProcessAndWait(page);
  EXPECT_EQ(FileBytes(Out("rover/rover.txt")),
            "45319.000   31.200000000   121.500000000   5.250000    12   0.900\t  4\t  1"
            "    2147483647     45319.0 \r\n");
}

// The whole run from the command line in a scratch start folder.
TEST_F(StaticPageTest, CompareEphemaRefusesThenComparesTheTwoReceivers) {
  llherroRTKStatic& page = Start();
  page.AddFile(start_ + "/a.log");
  page.processType.Choose(2);  // stored in the files present only
  page.process.Press();
  page.boardType.Choose(1);
  page.AddFile(start_ + "/b.log");
  page.processType.Choose(2);
  page.process.Press();
  EXPECT_EQ(page.FileCount(), 0);  // the board refusal clears the list
  EXPECT_EQ(host_.MessageTexts(), (Names{"Please make sure you have choose 2 files!",
                                         "Please make sure the board type is kestrix!"}));
  host_.messages.clear();
  host_.statuses.clear();

  page.SetStamp("101010");
  page.boardType.Choose(0);
  page.AddFile(start_ + "/a.log");
  page.AddFile(start_ + "/b.log");
  page.processType.Choose(2);
  const std::string root = start_ + "//CompareEphem101010/";
  const std::string row = "1 3600 5 0.01 0.5 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16\n";
  for (const char* name : {"a", "b"}) {
    MakeFolder(root);
    MakeFolder(root + name);
    testing::WriteBytes(root + name + "/Sat_7.txt",
                        name[0] == 'a' ? row
                                       : "1 3600 5 0.01 0.5 1 2 3 4 5 6 7 8 9 10 11 12 13 "
                                         "14 15 16.5\n1 7200 5\n");
  }
  page.process.Press();
  EXPECT_EQ(host_.statuses, (Names{"Status:Processing", "Status:Finished"}));
  std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 2u);
  // The two analysers run side by side and may end in either order.
  if (calls[0].args.size() > 1 && calls[0].args[1] == root + "b") std::swap(calls[0], calls[1]);
  for (const char* name : {"a", "b"}) {
    const testing::StandinCall& call = calls[name[0] == 'a' ? 0 : 1];
    EXPECT_EQ(call.args, (Names{"llherroRTK_M.exe", root + name, "JPG", "realvalue.txt", "5"}));
    EXPECT_EQ(call.exe, testing::Canonical(root + name + "/llherroRTK_M.exe"));
  }
  EXPECT_EQ(FileBytes(root + "a/realvalue.txt"),
            "31.500000000,121.250000000,10.000000\n31.500000000,121.250000000,10.000000\n");
  EXPECT_NE(FileBytes(root + "a/gpsephema.txt"), "<missing>");
  std::string differences = "7,  3600.000";
  for (int i = 0; i < 18; ++i)
    differences += ",0.000000e+00";
  EXPECT_EQ(FileBytes(root + "Result101010.txt"), differences + ",5.000000e-01\r\n");
}

TEST_F(StaticPageTest, BatchRunMakesTheHourFolderAndEndsWithStatusZero) {
  const std::string previousHour = HourStamp();
  const testing::RunResult result =
      testing::RunAndCapture({testing::TarnlogBinary(), "a.log", "b.log", "31.5", "121.25", "10",
                              "30", "120", "5", "0", "STATIC"},
                             start_);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Status:Processing\nStatus:Finished\n");
  std::string stamp = HourStamp();  // the run's hour, unless it just turned
  if (!IsFolder(start_ + "/RTKStatic" + stamp)) stamp = previousHour;
  const std::string root = start_ + "/RTKStatic" + stamp;
  for (const char* name : {"a", "b"}) {
    EXPECT_EQ(FileBytes(root + "/" + name + "/realvalue.txt"),
              "31.50000000000,121.25000000000,10.000000\r\n"
              "30.00000000000,120.00000000000,5.000000\r\n");
    EXPECT_NE(FileBytes(root + "/" + name + "/bestpos.txt"), "<missing>");
  }
  EXPECT_EQ(FileBytes(root + "/Static_report.xlsx"), "template");
  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].cwd, testing::Canonical(root + "/a"));
  EXPECT_EQ(calls[1].args,
            (Names{start_ + "/EXE/llherroRTK_M.exe", start_ + "//RTKStatic" + stamp + "/b", "JPG",
                   "realvalue.txt", "0", "0", "2"}));
}

}  // namespace
}  // namespace tarnlog
