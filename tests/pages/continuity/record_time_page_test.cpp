#include "pages/continuity/record_time_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "pages/continuity/continue_script.h"
#include "pages/continuity/statistics_prn.h"
#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using testing::FileBytes;

// A start folder with a stand-in continuity analyser and two real logs.
class ContinuePageTest : public testing::StartFolderFixture {
 protected:
  ContinuePageTest() {
    MakeFolder(start_ + "/EXE");
    testing::InstallStandin(start_ + "/EXE", "All_continues.exe");
    MakeFolder(start_ + "/logs");
    CopyFileReplacing(testing::SourceDir() + "/tests/data/ParsingData2.ASC",
                      start_ + "/logs/a.log");
    CopyFileReplacing(testing::SourceDir() + "/tests/data/OneEach.ASC", start_ + "/logs/b.log");
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  }
  ~ContinuePageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    SetScriptRunnerPath("");
  }

  CRecordTimeDlg& Start() {
    CRecordTimeDlg& page = *StartDialog().continuePage;
    page.timeStamp.text = "101010";
    return page;
  }
  // Presses Process and waits for the run's last status line.
  void ProcessAndWait(CRecordTimeDlg& page) {
    page.process.Press();
    for (int i = 0; i < 600 && host_.Status() != "Status:Finished"; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_EQ(host_.Status(), "Status:Finished");
    // The worker resets the page right after the status line.
    for (int i = 0; i < 100 && !page.process.enabled; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  // The analysers' records, which they leave as they end, by folder.
  std::vector<testing::StandinCall> CallsByFolder() const {
    std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
    std::sort(calls.begin(), calls.end(),
              [](const auto& a, const auto& b) { return a.cwd < b.cwd; });
    return calls;
  }
  std::string Row(const std::string& stem) const { return start_ + "/logs/Continue101010/" + stem; }
};

TEST_F(ContinuePageTest, MaskFromTheTicks) {
  CRecordTimeDlg& page = Start();
  EXPECT_EQ(page.LogMaskA(), 0u);
  EXPECT_EQ(page.LogMaskB(), 0u);
  page.BuildMask();
  // Every tick on: only the base GGA bit, which has no tick, stays clear.
  EXPECT_EQ(page.LogMaskA(), 0xF7FFFFFFu);
  EXPECT_EQ(page.LogMaskB(), 0xFFFFFFFFu);

  CRecordTimeDlg& fresh = *StartDialog().continuePage;
  fresh.cancelAllLog.Click();
  for (CheckField& tick : fresh.logTypes)
    EXPECT_FALSE(tick.checked) << tick.Caption();
  fresh.FindField("Sbas")->Reset();  // back on
  static_cast<CheckField*>(fresh.FindField("SubFrame"))->checked = true;
  fresh.BuildMask();
  EXPECT_EQ(fresh.LogMaskA(), 0u);
  EXPECT_EQ(fresh.LogMaskB(), 0xFFFE00u | 0x1E0u);
}

// "SelectAllLog" makes both words all ones without reading the other boxes,
// and greys them while it is on.
TEST_F(ContinuePageTest, SelectAllLogDoesNotReadTheOtherBoxes) {
  CRecordTimeDlg& page = Start();
  page.cancelAllLog.Click();
  page.selectAllLog.checked = true;  // set without its click: the boxes stay off
  page.BuildMask();
  EXPECT_EQ(page.LogMaskA(), 0xFFFFFFFFu);
  EXPECT_EQ(page.LogMaskB(), 0xFFFFFFFFu);

  page.selectAllLog.checked = false;
  page.selectAllLog.Click();
  for (CheckField& tick : page.logTypes) {
    EXPECT_TRUE(tick.checked);
    EXPECT_FALSE(tick.enabled);
  }
  page.selectAllLog.Click();
  for (CheckField& tick : page.logTypes)
    EXPECT_TRUE(tick.enabled);
}

TEST_F(ContinuePageTest, RefusalsOfProcessAndDelete) {
  CRecordTimeDlg& page = Start();
  page.deleteOne.Press();
  page.process.Press();
  for (int i = 0; i < 100 && host_.messages.size() < 2; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  page.AddFile(start_ + "/logs/a.log");
  page.deleteOne.Press();
  page.cancelAllLog.Click();
  page.process.Press();
  for (int i = 0; i < 100 && host_.messages.size() < 4; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please Choose ASCII File Firstly!", "Please choose ascii file firstly!",
                   "Please Choose Item to be deleted!", "Please choose LogType !"}));
  EXPECT_FALSE(PathExists(start_ + "/logs/Continue101010"));
}

TEST_F(ContinuePageTest, ListRowsDeleteAndTheHundredRowLimit) {
  CRecordTimeDlg& page = Start();
  page.AddFile(start_ + "/logs/a.log");
  page.AddFile(start_ + "/logs/b.log");
  page.AddFile(start_ + "/logs/c.LOG");
  EXPECT_EQ(page.files.rows[1], (Names{"2", "b", "Kestrix", start_ + "/logs/b.log"}));
  EXPECT_EQ(page.file.text, start_ + "/logs/c.LOG");
  page.files.selected = 0;
  page.deleteOne.Press();
  EXPECT_EQ(page.files.rows.size(), 2u);
  EXPECT_EQ(page.files.rows[0], (Names{"1", "b", "Kestrix", start_ + "/logs/b.log"}));
  EXPECT_EQ(page.Slots()[1].name, "c");

  page.savePath.text = "/somewhere";
  page.deleteAll.Press();
  EXPECT_TRUE(page.files.rows.empty());
  EXPECT_TRUE(page.savePath.text.empty());
  EXPECT_NE(page.timeStamp.text, "101010");

  for (int i = 0; i < 101; ++i)
    page.AddFile(start_ + "/logs/a.log");
  EXPECT_EQ(page.Slots().size(), 100u);
  EXPECT_EQ(page.files.rows.size(), 100u);
  EXPECT_EQ(host_.MessageTexts(), (Names{"At most 100 files can be chosen!"}));
}

// The add-folder helper: "*ap.*" found in any case, the suffix kept only as
// one of the four spellings.
TEST_F(ContinuePageTest, AddFolderKeepsMatchesWithTheFourSuffixes) {
  CRecordTimeDlg& page = Start();
  const std::string folder = start_ + "/caps";
  MakeFolder(folder);
  for (const char* name : {"trap.log", "MAP.Log", "xap.ASC", "yap.asc", "zap.txt", "a.log",
                           "lap.LOG", "trapped.log"}) {
    testing::WriteBytes(folder + "/" + name, "");
  }
  page.AddFolder("");
  EXPECT_TRUE(page.Slots().empty());
  page.AddFolder(folder);
  Names added;
  for (const FileSlotPaths& slot : page.Slots())
    added.push_back(slot.nameWithExtension);
  EXPECT_EQ(added, (Names{"lap.LOG", "MAP.Log", "trap.log", "xap.ASC"}));
}

TEST(ContinueScriptTest, ScriptBytes) {
  EXPECT_EQ(ContinueScriptText("/data/run/Continue101010/a"),
            "\ncd \"/data/run/Continue101010/a\"\n"
            "All_continues.exe \"/data/run/Continue101010/a\"\n \r\n exit\n");
  const ContinueScriptPaths paths = ContinueScriptPathsOf("/r/a", "140000");
  EXPECT_EQ(paths.first, "/r/a/Plot140000.bat");
  EXPECT_EQ(paths.second, "/r/a/Plot1400002.bat");
}

// Rows run at once: each analyser starts as soon as its row is extracted,
// and all are awaited before the page resets itself with the mask left all
// ones, so a second run without a single tick still runs.
TEST_F(ContinuePageTest, ProcessRunsEveryRowAndLeavesTheMaskAllOnes) {
  // The first analyser still runs when the second starts, however slowly
  // the second row is extracted on a loaded machine.
  setenv("TARNLOG_STANDIN_SLEEP_MS", "2000", 1);
  CRecordTimeDlg& page = Start();
  page.AddFile(start_ + "/logs/a.log");
  page.AddFile(start_ + "/logs/b.log");
  page.otherGga.checked = true;
  ProcessAndWait(page);

  const std::vector<testing::StandinCall> calls = CallsByFolder();
  ASSERT_EQ(calls.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string row = Row(i == 0 ? "a" : "b");
    EXPECT_EQ(calls[i].cwd, row);
    EXPECT_EQ(calls[i].args, (Names{"All_continues.exe", row}));
    EXPECT_EQ(FileBytes(row + "/Plot101010.bat"),
              "\r\ncd \"" + row + "\"\r\nAll_continues.exe \"" + row + "\"\r\n \r\r\n exit\r\n");
    EXPECT_EQ(FileBytes(row + "/Plot1010102.bat"), "<missing>");
    EXPECT_NE(FileBytes(row + "/BestPosTime.txt"), "<missing>");
  }
  // Both analysers ran at once.
  EXPECT_LT(calls[1].startNs, calls[0].endNs);
  EXPECT_LT(calls[0].startNs, calls[1].endNs);

  EXPECT_EQ(host_.statuses, (Names{"Status:Processing...", "Status:Finished"}));
  EXPECT_TRUE(page.files.rows.empty());
  EXPECT_TRUE(page.file.text.empty());
  EXPECT_FALSE(page.otherGga.checked);
  EXPECT_EQ(page.LogMaskA(), 0xFFFFFFFFu);
  EXPECT_EQ(page.LogMaskB(), 0xFFFFFFFFu);

  setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  page.timeStamp.text = "202020";
  page.AddFile(start_ + "/logs/a.log");
  page.cancelAllLog.Click();
  host_.statuses.clear();
  ProcessAndWait(page);
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_NE(FileBytes(start_ + "/logs/Continue202020/a/Plot202020.bat"), "<missing>");
}

TEST(StatisticsPrnTest, KeepsLinesThatMoveTimeOnAndStopsAtABadField) {
  testing::TempFolder folder;
  RecordingHost host;
  testing::WriteBytes(folder / "result.txt",
                      "2167 100.0 0.1 5\r\n2167 100.0005 0.1 6\n2167 100.5 0.1 7\n"
                      "2168 0.5 0.2 8\n");
  ASSERT_TRUE(WriteStatisticsPrn(folder / "result.txt", host));
  EXPECT_EQ(FileBytes(folder / "StatisticsPRN.txt"),
            "  2167     100.0000      5\r\n  2167     100.5000      7\r\n"
            "  2168       0.5000      8\r\n");
  EXPECT_EQ(host.MessageTexts(), (Names{"Read file finish!"}));

  using namespace std::string_literals;
  const struct {
    std::string text;
    const char* message;
  } bad[] = {{"x", "Read week error!"},
             {"2167 y", "Read weeksec error!"},
             {"2167 1.0 z", "Read diff time error!"},
             {"2167 1.0 0.1", "Read PRN error!"},
             {"2167 1.0 0.1 3\n\0 4"s, "Read week error!"}};
  for (const auto& c : bad) {
    RecordingHost badHost;
    testing::WriteBytes(folder / "bad.txt", c.text);
    WriteStatisticsPrn(folder / "bad.txt", badHost);
    EXPECT_EQ(badHost.MessageTexts(), (Names{c.message, "Read file finish!"})) << c.text;
  }
  RecordingHost missing;
  EXPECT_FALSE(WriteStatisticsPrn(folder / "none.txt", missing));
}

// The batch run as a test engineer's script makes it: the logs and the word,
// ending by itself once every row's analyser has ended.
TEST_F(ContinuePageTest, BatchRunContinue) {
  const testing::RunResult result = testing::RunAndCapture(
      {testing::TarnlogBinary(), "logs/a.log", "logs/b.log", "Continue"}, start_);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Status:Processing...\n");
  EXPECT_EQ(result.err, "");
  const std::vector<FolderEntry> roots = ListMatching(start_ + "/logs", "Continue*");
  ASSERT_EQ(roots.size(), 1u);
  const std::string stamp = roots[0].name.substr(8);
  ASSERT_EQ(stamp.size(), 6u);
  EXPECT_EQ(stamp.substr(2), "0000");
  const std::vector<testing::StandinCall> calls = CallsByFolder();
  ASSERT_EQ(calls.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string row = start_ + "/logs/" + roots[0].name + (i == 0 ? "/a" : "/b");
    EXPECT_EQ(calls[i].cwd, row);
    EXPECT_EQ(calls[i].args, (Names{"All_continues.exe", row}));
    EXPECT_EQ(FileBytes(row + "/Plot" + stamp + ".bat"),
              "\r\ncd \"" + row + "\"\r\nAll_continues.exe \"" + row + "\"\r\n \r\r\n exit\r\n");
  }
}

// A log that can't be opened stops the run without a word; the batch run
// then ends with status 1 instead of staying behind.
TEST_F(ContinuePageTest, BatchRunWithAMissingLogStops) {
  const testing::RunResult result =
      testing::RunAndCapture({testing::TarnlogBinary(), "logs/none.log", "continue"}, start_);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "Status:Processing...\n");
  EXPECT_EQ(result.err, "tarnlog: CRecordTimeDlg: the run ended before it finished\n");
  EXPECT_TRUE(testing::ReadStandinLog(start_ + "/calls.log").empty());
}

// "-CT -PATH <folder>": the configuration's files are run as the Continue
// page's list, and the copy ends by itself afterwards; with the test's flag
// off it ends at once.
TEST_F(ContinuePageTest, AutomaticTestCopy) {
  const std::string tests = start_ + "/logs";
  AutoTestConfig config;
  config.path = tests;
  config.fileCount = 2;
  config.fileNames[0] = "a.log";
  config.fileNames[1] = "b.log";
  config.runContinue = 1;
  ASSERT_TRUE(config.Save());
  testing::RunResult result =
      testing::RunAndCapture({testing::TarnlogBinary(), "-CT", "-PATH", tests}, start_);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Status:Processing...\nStatus:Finished\n");
  EXPECT_EQ(result.err, "tarnlog: CRecordTimeDlg: the continuity test has finished\n");
  EXPECT_EQ(testing::ReadStandinLog(start_ + "/calls.log").size(), 2u);

  config.runContinue = 0;
  ASSERT_TRUE(config.Save());
  RemoveFile(start_ + "/calls.log");
  result = testing::RunAndCapture({testing::TarnlogBinary(), "-CT", "-PATH", tests}, start_);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(testing::ReadStandinLog(start_ + "/calls.log").empty());
}

}  // namespace
}  // namespace tarnlog
