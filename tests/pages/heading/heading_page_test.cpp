#include "pages/heading/heading_page.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "pages/heading/heading_scripts.h"
#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using testing::FileBytes;

TEST(HeadingScriptsTest, Bytes) {
  EXPECT_EQ(HeadingControlText({31.5, 121.25, 10.0}, {-1.0000000004, 179.123456789, -5.1234566},
                               {0.0, 0.0, 1e6}),
            "Tpye:BLH\n"
            "Base: 31.500000000 121.250000000 10.000000\n"
            "Rover: -1.000000000 179.123456789 -5.123457\n"
            "Rover2: 0.000000000 0.000000000 1000000.000000\n");

  StaticHeadingScript single{"", "/r/Heading101010/a", "/logs/a.log", "87.5", 12};
  EXPECT_EQ(StaticHeadingScriptText(single),
            "\ncd \"/r/Heading101010/a\"\n"
            "HeadingErrorPro.exe static yes \"/logs/a.log\" "
            "\"/r/Heading101010/a/HeadingControl.txt\"   87.5  12  \n"
            "exit\n");
  single.trueHeading.clear();
  single.fileNumber = 1;
  EXPECT_EQ(StaticHeadingScriptText(single),
            "\ncd \"/r/Heading101010/a\"\n"
            "HeadingErrorPro.exe static yes \"/logs/a.log\" "
            "\"/r/Heading101010/a/HeadingControl.txt\"     1  \n"
            "exit\n");

  const DynamicHeadingScript pair{"",         "/r/H/a-r", "/logs/a.log", "/refs/r.log",
                                  "heading2", "heading"};
  EXPECT_EQ(DynamicHeadingScriptText(pair),
            "\ncd \"/r/H/a-r\" \n"
            "HeadingErrorPro.exe dynamic yes \"/logs/a.log\" \"/refs/r.log\" heading2  heading\n"
            "cd \"/r/H/a-r\"\n"
            "exit\n");

  const HeadingReportScript report{"", "/r/H", "/r/H/HeadingReport.xlsx", "/r/H/DirlistFile.txt"};
  EXPECT_EQ(HeadingReportScriptText(report),
            "\ncd \"/r/H\"\n"
            "GenerateReport.exe Heading \"/r/H/HeadingReport.xlsx\" \"/r/H/DirlistFile.txt\"");
}

// A start folder with the tools as stand-ins, both report templates and
// logs of the same name in two folders.
class HeadingPageTest : public testing::StartFolderFixture {
 protected:
  HeadingPageTest() {
    MakeFolder(start_ + "/EXE");
    for (const char* tool :
         {"HeadingErrorPro.exe", "ExtractAndProcessData.exe", "GenerateReport.exe"}) {
      testing::InstallStandin(start_ + "/EXE", tool);
    }
    testing::WriteBytes(start_ + "/Config/Heading_report.xlsx", "static template");
    testing::WriteBytes(start_ + "/Config/HeadingReport.xlsx", "dynamic template");
    for (const char* log : {"logs/a.log", "logs/b.log", "refs/r.log", "refs/a.log"}) {
      MakeFolder(FolderOf(start_ + "/" + log));
      testing::WriteBytes(start_ + "/" + log, "#HEADINGA\r\n");
    }
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  }
  ~HeadingPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    unsetenv("TARNLOG_STANDIN_COPY");
    SetScriptRunnerPath("");
  }

  Heading& Start() {
    Heading& page = *StartDialog().headingPage;
    page.SetStamp("101010");
    return page;
  }
  std::string Log(const std::string& relative) const { return start_ + "/" + relative; }
  // A double-click on `list` with these rows selected.
  static void Activate(TableField& list, std::vector<int> rows) {
    list.selectedRows = std::move(rows);
    list.onActivated();
  }
  std::vector<testing::StandinCall> Calls() const {
    return testing::ReadStandinLog(start_ + "/calls.log");
  }
};

TEST_F(HeadingPageTest, PairingAndDeletionTexts) {
  Heading& page = Start();
  page.deleteOneSource.Press();
  page.deleteOneReference.Press();
  page.deleteOnePair.Press();
  page.type.Choose(kHeadingDynamic);
  page.AddSource(Log("logs/a.log"));
  page.AddSource(Log("logs/b.log"));
  page.AddReference(Log("refs/r.log"));
  page.AddReference(Log("refs/a.log"));
  EXPECT_EQ(page.sourceFiles.rows[1], (Names{"2", "b", start_ + "/logs/"}));

  Activate(page.referenceFiles, {0});  // no source waits
  Activate(page.sourceFiles, {0});
  Activate(page.sourceFiles, {1});     // a source already waits
  Activate(page.referenceFiles, {1});  // a.log against refs/a.log: one name
  Activate(page.referenceFiles, {0});  // a-r
  Activate(page.sourceFiles, {0});
  Activate(page.referenceFiles, {0});  // a-r again
  Activate(page.referenceFiles, {1});  // still a against a
  EXPECT_EQ(page.Pairs().pairCount, 3);
  page.pairList.selected = 0;
  page.deleteOnePair.Press();  // a source waits
  Activate(page.sourceFiles, {});
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please Choose Source File Firstly!", "Please Choose Ref File Firstly!",
                   "Please Choose DD File Firstly!", "You should select log item this time!",
                   "You should select Reffer item this time!", "You could not select the same file",
                   "You Have Choose This Group!", "You could not select the same file",
                   "You should select paired before delete item!", "No item was selected!"}));

  // A different pair with the same source is taken.
  host_.messages.clear();
  page.AddReference(Log("logs/b.log"));
  Activate(page.referenceFiles, {2});
  Activate(page.sourceFiles, {1});
  Activate(page.referenceFiles, {0});
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(page.pairList.rows, (std::vector<Names>{{"1", "a-r"}, {"2", "a-b"}, {"3", "b-r"}}));
  EXPECT_EQ(page.Pairs().pairCount, 6);

  page.pairList.selected = 0;
  page.deleteOnePair.Press();
  EXPECT_EQ(page.pairList.rows, (std::vector<Names>{{"1", "a-b"}, {"2", "b-r"}}));
  EXPECT_EQ(page.Pairs().pairCount, 4);
  EXPECT_EQ(page.Pairs().pairs[1].name, "b-r");

  page.resultFolder.text = "/somewhere";
  const std::string stamp = page.Stamp();
  page.clearAll.Press();
  EXPECT_EQ(page.Sources().count, 0);
  EXPECT_EQ(page.References().count, 0);
  EXPECT_EQ(page.Pairs().pairCount, 0);
  EXPECT_TRUE(page.pairList.rows.empty());
  EXPECT_TRUE(page.resultFolder.text.empty());
  EXPECT_NE(page.Stamp(), stamp);
  EXPECT_TRUE(host_.messages.empty());
}

TEST_F(HeadingPageTest, TypeKeepsTheListOfOneFlowAndShowsItsControls) {
  Heading& page = Start();
  EXPECT_TRUE(page.trueHeading.visible);
  EXPECT_TRUE(page.ant2Coordinates.height.visible);
  EXPECT_FALSE(page.referenceFiles.visible);
  EXPECT_FALSE(page.FindField("Open", kHeadingRefList)->visible);
  EXPECT_FALSE(page.sourceKind.visible);
  EXPECT_TRUE(page.sourceFiles.visible);

  page.type.Choose(kHeadingDynamic);
  EXPECT_FALSE(page.trueHeading.visible);
  EXPECT_FALSE(page.base.visible);
  EXPECT_TRUE(page.pairList.visible);
  EXPECT_TRUE(page.deleteAllPairs.visible);
  EXPECT_TRUE(page.referenceKind.visible);

  // Back to Static with no file, then with the first file Static.
  page.type.Choose(kHeadingStatic);
  EXPECT_TRUE(host_.messages.empty());
  page.AddSource(Log("logs/a.log"));
  page.type.Choose(kHeadingDynamic);
  page.AddSource(Log("logs/b.log"));
  page.type.Choose(kHeadingStatic);
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(page.Sources().slots[1].type, kHeadingDynamic);

  // First and current file Dynamic: refused, and the list goes back.
  page.clearAll.Press();
  page.type.Choose(kHeadingDynamic);
  page.AddSource(Log("logs/a.log"));
  page.AddReference(Log("refs/r.log"));
  page.type.Choose(kHeadingStatic);
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"You could only process dynamic or static data at the same time!"}));
  EXPECT_EQ(page.type.selected, kHeadingDynamic);
  EXPECT_TRUE(page.referenceFiles.visible);
  EXPECT_FALSE(page.trueHeading.visible);

  // Each list stops at 100 files, without a word.
  for (int i = 0; i < 101; ++i)
    page.AddReference(Log("refs/r.log"));
  EXPECT_EQ(page.References().count, 100);
  EXPECT_EQ(page.referenceFiles.rows.size(), 100u);
  EXPECT_EQ(host_.messages.size(), 1u);

  // SaveAs names and makes the result folder.
  host_.folderChoices.push_back(start_ + "/out/");
  MakeFolder(start_ + "/out");
  page.saveAs.Press();
  EXPECT_EQ(page.resultFolder.text, start_ + "/out/Heading" + page.Stamp());
  EXPECT_TRUE(IsFolder(page.resultFolder.text));
  EXPECT_EQ(host_.chooserFilters, (Names{"Select a folder"}));
}

TEST_F(HeadingPageTest, RefusedRuns) {
  Heading& page = Start();
  page.generateReport.checked = true;
  page.process.Press();
  page.type.Choose(kHeadingDynamic);
  page.AddSource(Log("logs/a.log"));
  page.process.Press();
  page.AddReference(Log("refs/r.log"));
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please Choose ASCII File Firstly!", "Please Choose Ref File Firstly!",
                   "Please Set DD Files Firstly!"}));
  EXPECT_FALSE(page.generateReport.checked);
  EXPECT_TRUE(page.process.enabled);
  EXPECT_TRUE(host_.statuses.empty());
  EXPECT_FALSE(PathExists(start_ + "/logs/Heading101010"));
}

// Each log in its own folder, one after the other, the static template
// copied although "GenerateReport" is off; the page is cleared afterwards.
TEST_F(HeadingPageTest, StaticFlow) {
  setenv("TARNLOG_STANDIN_SLEEP_MS", "100", 1);
  Heading& page = Start();
  page.AddSource(Log("logs/a.log"));
  page.AddSource(Log("logs/b.log"));
  page.trueHeading.text = "87.5";
  page.ant1Coordinates.latitude.text = "95";  // no range check
  page.ant2Coordinates.height.text = "x";
  page.process.Press();

  const std::string result = start_ + "/logs/Heading101010";
  EXPECT_EQ(FileBytes(result + "/Heading_report.xlsx"), "static template");
  EXPECT_FALSE(PathExists(result + "/GenerateReport.exe"));
  const std::vector<testing::StandinCall> calls = Calls();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_LT(calls[0].endNs, calls[1].startNs);
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string stem = i == 0 ? "a" : "b";
    const std::string folder = result + "/" + stem;
    const std::string number = std::to_string(i + 1);
    EXPECT_EQ(calls[i].cwd, folder);
    EXPECT_EQ(calls[i].args,
              (Names{"HeadingErrorPro.exe", "static", "yes", Log("logs/" + stem + ".log"),
                     folder + "/HeadingControl.txt", "87.5", number}));
    EXPECT_EQ(FileBytes(folder + "/HeadingControl.txt"),
              "Tpye:BLH\r\nBase: 31.500000000 121.250000000 10.000000\r\n"
              "Rover: 95.000000000 121.250000000 10.000000\r\n"
              "Rover2: 31.500000000 121.250000000 0.000000\r\n");
    EXPECT_EQ(FileBytes(folder + "/Plot101010.bat"),
              "\r\ncd \"" + folder + "\"\r\nHeadingErrorPro.exe static yes \"" +
                  Log("logs/" + stem + ".log") + "\" \"" + folder +
                  "/HeadingControl.txt\"   87.5  " + number + "  \r\nexit\r\n");
    EXPECT_TRUE(PathExists(folder + "/ExtractAndProcessData.exe"));
  }
  EXPECT_EQ(host_.statuses, (Names{"Status: Processing", "Status: Finished"}));
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(page.Sources().count, 0);
  EXPECT_TRUE(page.sourceFiles.rows.empty());
  EXPECT_TRUE(page.resultFolder.text.empty());
  EXPECT_NE(page.Stamp(), "101010");
  EXPECT_TRUE(page.process.enabled);

  // A folder that can't be made is named, and the run goes on.
  page.resultFolder.text = start_ + "/none/deeper";
  page.AddSource(Log("logs/a.log"));
  page.AddSource(Log("logs/b.log"));
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(), (Names{"Creat Folder" + start_ + "/none/deeper/ais Failed!",
                                         "Creat Folder" + start_ + "/none/deeper/bis Failed!"}));
  EXPECT_EQ(host_.Status(), "Status: Finished");
  EXPECT_EQ(Calls().size(), 2u);
}

// Pairs in order with the report: its template and tool, the folder list
// the tool reads, and the three files gone afterwards.
TEST_F(HeadingPageTest, DynamicFlowWithReport) {
  setenv("TARNLOG_STANDIN_COPY", "GenerateReport.exe:3:.seen", 1);
  Heading& page = Start();
  page.type.Choose(kHeadingDynamic);
  page.AddSource(Log("logs/a.log"));
  page.AddSource(Log("logs/b.log"));
  page.AddReference(Log("refs/r.log"));
  Activate(page.sourceFiles, {0});
  Activate(page.referenceFiles, {0});
  Activate(page.sourceFiles, {1});
  Activate(page.referenceFiles, {0});
  page.sourceKind.Choose(1);
  page.generateReport.checked = true;
  page.process.Press();

  const std::string result = start_ + "/logs/Heading101010";
  const std::vector<testing::StandinCall> calls = Calls();
  ASSERT_EQ(calls.size(), 3u);
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string stem = i == 0 ? "a" : "b";
    const std::string folder = result + "/" + stem + "-r";
    EXPECT_EQ(calls[i].cwd, folder);
    EXPECT_EQ(calls[i].args,
              (Names{"HeadingErrorPro.exe", "dynamic", "yes", Log("logs/" + stem + ".log"),
                     Log("refs/r.log"), "heading2", "heading"}));
    EXPECT_EQ(FileBytes(folder + "/Plot101010.bat"),
              "\r\ncd \"" + folder + "\" \r\nHeadingErrorPro.exe dynamic yes \"" +
                  Log("logs/" + stem + ".log") + "\" \"" + Log("refs/r.log") +
                  "\" heading2  heading\r\ncd \"" + folder + "\"\r\nexit\r\n");
    EXPECT_FALSE(PathExists(folder + "/HeadingControl.txt"));
  }
  EXPECT_LT(calls[0].endNs, calls[1].startNs);
  EXPECT_LT(calls[1].endNs, calls[2].startNs);
  EXPECT_EQ(calls[2].cwd, result);
  EXPECT_EQ(calls[2].args, (Names{"GenerateReport.exe", "Heading", result + "/HeadingReport.xlsx",
                                  result + "/DirlistFile.txt"}));
  EXPECT_EQ(FileBytes(result + "/DirlistFile.seen"), result + "/a-r\r\n" + result + "/b-r\r\n");
  EXPECT_EQ(FileBytes(result + "/HeadingReport.xlsx"), "dynamic template");
  for (const char* gone :
       {"DirlistFile.txt", "GenerateReport.bat", "GenerateReport.exe", "Heading_report.xlsx"}) {
    EXPECT_FALSE(PathExists(result + "/" + gone)) << gone;
  }
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_FALSE(page.generateReport.checked);
  EXPECT_EQ(page.Pairs().pairCount, 0);
  EXPECT_EQ(host_.statuses, (Names{"Status: Processing", "Status: Finished"}));
}

// A folder list that can't be written turns the report off: the message,
// then the pairs run and the report tool doesn't.
TEST_F(HeadingPageTest, DynamicFlowGoesOnWithoutReport) {
  Heading& page = Start();
  const std::string result = start_ + "/out";
  MakeFolder(result);
  MakeFolder(result + "/DirlistFile.txt");
  page.resultFolder.text = result;
  page.type.Choose(kHeadingDynamic);
  page.AddSource(Log("logs/a.log"));
  page.AddReference(Log("refs/r.log"));
  Activate(page.sourceFiles, {0});
  Activate(page.referenceFiles, {0});
  page.generateReport.checked = true;
  page.process.Press();

  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Error occur when generating report,clock ok to continue without report!"}));
  const std::vector<testing::StandinCall> calls = Calls();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, "HeadingErrorPro.exe");
  EXPECT_EQ(calls[0].cwd, result + "/a-r");
  EXPECT_FALSE(PathExists(result + "/GenerateReport.bat"));
  EXPECT_TRUE(IsFolder(result + "/DirlistFile.txt"));
  EXPECT_EQ(host_.Status(), "Status: Finished");
}

// The batch run as a test script makes it: logs, Base, ANT1 and ANT2 as
// texts, and the word; it ends by itself after the run.
TEST_F(HeadingPageTest, BatchRunHeading) {
  const testing::RunResult result = testing::RunAndCapture(
      {testing::TarnlogBinary(), "logs/a.log", "logs/b.log", "31.5", "121.25", "10", "1e1", "-2",
       "abc", "0.5", "0.25", "7", "MyHeadingRun"},
      start_);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Status: Processing\nStatus: Finished\n");
  EXPECT_EQ(result.err, "");
  const std::vector<FolderEntry> roots = ListMatching(start_ + "/logs", "Heading*");
  ASSERT_EQ(roots.size(), 1u);
  const std::string stamp = roots[0].name.substr(7);
  ASSERT_EQ(stamp.size(), 6u);
  const std::vector<testing::StandinCall> calls = Calls();
  ASSERT_EQ(calls.size(), 2u);
  for (std::size_t i = 0; i < 2; ++i) {
    const std::string stem = i == 0 ? "a" : "b";
    const std::string folder = start_ + "/logs/" + roots[0].name + "/" + stem;
    const std::string number = std::to_string(i + 1);
    EXPECT_EQ(calls[i].cwd, folder);
    EXPECT_EQ(calls[i].args,
              (Names{"HeadingErrorPro.exe", "static", "yes", Log("logs/" + stem + ".log"),
                     folder + "/HeadingControl.txt", number}));
    EXPECT_EQ(FileBytes(folder + "/HeadingControl.txt"),
              "Tpye:BLH\r\nBase: 31.500000000 121.250000000 10.000000\r\n"
              "Rover: 10.000000000 -2.000000000 0.000000\r\n"
              "Rover2: 0.500000000 0.250000000 7.000000\r\n");
    EXPECT_EQ(FileBytes(folder + "/Plot" + stamp + ".bat"),
              "\r\ncd \"" + folder + "\"\r\nHeadingErrorPro.exe static yes \"" +
                  Log("logs/" + stem + ".log") + "\" \"" + folder + "/HeadingControl.txt\"     " +
                  number + "  \r\nexit\r\n");
  }
  EXPECT_LT(calls[0].endNs, calls[1].startNs);
}

TEST_F(HeadingPageTest, BatchRunWithoutALogEndsWithStatusOne) {
  const testing::RunResult result = testing::RunAndCapture(
      {testing::TarnlogBinary(), "1", "2", "3", "4", "5", "6", "7", "8", "9", "heading"}, start_);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "tarnlog: Heading: Please Choose ASCII File Firstly!\n");
  EXPECT_TRUE(Calls().empty());
}

}  // namespace
}  // namespace tarnlog
