#include "pages/dynamic/dynamic_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;
using testing::FileBytes;

// A start folder with the two tools as stand-ins and logs in two folders.
class DynamicPageTest : public testing::StartFolderFixture {
 protected:
  DynamicPageTest() {
    MakeFolder(start_ + "/EXE");
    testing::InstallStandin(start_ + "/EXE", "DynamicDataProcess.exe");
    testing::InstallStandin(start_ + "/EXE", "ExtractAndProcessData.exe");
    for (const char* folder : {"/d", "/e", "/r"})
      MakeFolder(start_ + folder);
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
    // The tool leaves a figure and the FIG folder the script moves it to.
    setenv("TARNLOG_STANDIN_CREATE", "FIG/;p.fig", 1);
  }
  ~DynamicPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    unsetenv("TARNLOG_STANDIN_CREATE");
    SetScriptRunnerPath("");
  }

  // The page with sources /d/a.log, /d/b.log, /e/a.log, /d/c.log and
  // references /r/x.txt, /r/y.txt, /e/b.txt.
  llherroRTKDynamic& Start() {
    llherroRTKDynamic& page = *StartDialog().dynamicPage;
    page.SetStamp("101010");
    for (const char* path : {"/d/a.log", "/d/b.log", "/e/a.log", "/d/c.log"})
      page.AddSourceFile(start_ + path);
    for (const char* path : {"/r/x.txt", "/r/y.txt", "/e/b.txt"})
      page.AddReferenceFile(start_ + path);
    return page;
  }
  static void PickSources(llherroRTKDynamic& page, std::vector<int> rows) {
    page.sourceFiles.selectedRows = std::move(rows);
    page.sourceFiles.onActivated();
  }
  static void PickReferences(llherroRTKDynamic& page, std::vector<int> rows) {
    page.referenceFiles.selectedRows = std::move(rows);
    page.referenceFiles.onActivated();
  }
  void Pair(llherroRTKDynamic& page, int source, int reference) {
    PickSources(page, {source});
    PickReferences(page, {reference});
  }
  // Presses Process and waits for the worker to give the page back.
  void ProcessAndWait(llherroRTKDynamic& page) {
    page.process.Press();
    for (int i = 0; i < 600 && host_.finishedCount == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_EQ(host_.finishedCount, 1);
  }
  // Presses Process and waits for the worker's refusal.
  void ProcessAndWaitForMessage(llherroRTKDynamic& page, const std::string& text) {
    const std::size_t before = host_.MessageTexts().size();
    page.process.Press();
    for (int i = 0; i < 600 && host_.MessageTexts().size() == before; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_EQ(host_.MessageTexts().size(), before + 1);
    EXPECT_EQ(host_.MessageTexts().back(), text);
  }
  std::string Result() const { return start_ + "/d/RTKDynamic101010"; }
};

TEST_F(DynamicPageTest, ListsShowSlotNameTypeAndFolder) {
  llherroRTKDynamic& page = *StartDialog().dynamicPage;
  page.refFileType.Choose(2);
  page.AddReferenceFile(start_ + "/r/x.txt");
  page.srcFileType.Choose(3);
  page.AddSourceFile(start_ + "/d/a.log");
  page.AddSourceFile(start_ + "/d/b.log");
  EXPECT_EQ(page.sourceFiles.rows,
            (Rows{{"1", "a", "Else", start_ + "/d/"}, {"2", "b", "Else", start_ + "/d/"}}));
  EXPECT_EQ(page.referenceFiles.rows, (Rows{{"1", "x", "SiNan", start_ + "/r/"}}));
  EXPECT_EQ(page.sourceFile.text, start_ + "/d/b.log");

  // A selected source row stores the index plus one; a selected reference
  // row the index, with "Else" stored as 0.
  page.sourceFiles.selected = 1;
  page.srcFileType.Choose(0);
  EXPECT_EQ(page.Sources().slots[1].type, 1);
  EXPECT_EQ(page.Sources().slots[0].type, 3);
  EXPECT_EQ(page.NextSourceType(), 0);
  EXPECT_EQ(page.sourceFiles.rows[1][2], "Kestrix");
  page.referenceFiles.selected = 0;
  page.refFileType.Choose(3);
  EXPECT_EQ(page.References().slots[0].type, 0);
  EXPECT_EQ(page.NextReferenceType(), 3);
}

TEST_F(DynamicPageTest, PairingAndItsRefusals) {
  llherroRTKDynamic& page = Start();
  PickSources(page, {});
  PickReferences(page, {0});
  PickSources(page, {1});
  PickSources(page, {0});
  PickReferences(page, {2});  // /d/b.log and /e/b.txt: one name in two folders
  EXPECT_EQ(
      host_.MessageTexts(),
      (Names{"No item was selected!", "You should select Kestrix item this time!",
             "You should select Novatel item this time!", "You could not select the same file"}));
  EXPECT_EQ(page.Pairs().pairCount, 1);
  EXPECT_EQ(page.pairFiles.rows, (Rows{{"1", "b"}}));
  PickReferences(page, {0});
  EXPECT_EQ(page.pairFiles.rows, (Rows{{"1", "b-x"}}));

  // /e/a.log has the name of /d/a.log: with x again it is a repeated pair,
  // with y a new one.
  Pair(page, 0, 1);
  PickSources(page, {2});
  PickReferences(page, {1});
  EXPECT_EQ(host_.MessageTexts().back(), "You Have Choose This Group!");
  EXPECT_EQ(page.Pairs().pairCount, 5);
  PickReferences(page, {0});
  EXPECT_EQ(page.Pairs().pairCount, 6);
  EXPECT_EQ(page.pairFiles.rows, (Rows{{"1", "b-x"}, {"2", "a-y"}, {"3", "a-x"}}));

  // Two sources picked at once make a pair of their own.
  PickSources(page, {0, 3});
  EXPECT_EQ(page.pairFiles.rows.back(), (std::vector<std::string>{"4", "a-c"}));
  EXPECT_EQ(page.Pairs().pairCount, 8);
}

TEST_F(DynamicPageTest, DeletionsOnTheThreeLists) {
  llherroRTKDynamic& page = *StartDialog().dynamicPage;
  page.deleteOneSource.Press();
  page.deleteOneReference.Press();
  page.deleteOnePair.Press();
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please Choose ASCII File Firstly!", "Please Choose Novatel TXT File Firstly!",
                   "Please Choose DD File Firstly!"}));
  host_.messages.clear();

  page.SetStamp("101010");
  for (const char* path : {"/d/a.log", "/d/b.log", "/d/c.log"})
    page.AddSourceFile(start_ + path);
  for (const char* path : {"/r/x.txt", "/r/y.txt"})
    page.AddReferenceFile(start_ + path);
  Pair(page, 0, 0);
  Pair(page, 1, 1);
  Pair(page, 2, 0);
  PickSources(page, {0});
  page.pairFiles.selected = 0;
  page.deleteOnePair.Press();
  EXPECT_EQ(host_.MessageTexts(), (Names{"You should select paired before delete item!"}));
  PickReferences(page, {1});
  page.pairFiles.selected = -1;
  page.deleteOnePair.Press();
  EXPECT_EQ(host_.MessageTexts().back(), "No item was selected!");
  page.pairFiles.selected = 1;
  page.deleteOnePair.Press();
  EXPECT_EQ(page.pairFiles.rows, (Rows{{"1", "a-x"}, {"2", "c-x"}, {"3", "a-y"}}));
  EXPECT_EQ(page.Pairs().pairCount, 6);

  // Rows of a file list move up and keep their numbers; the pairs keep their
  // slot numbers, so pair 1 now means b and x.
  page.sourceFiles.selected = 0;
  page.deleteOneSource.Press();
  EXPECT_EQ(page.sourceFiles.rows,
            (Rows{{"2", "b", "Kestrix", start_ + "/d/"}, {"3", "c", "Kestrix", start_ + "/d/"}}));
  EXPECT_EQ(page.Sources().count, 2);
  page.deleteAllPair.Press();
  EXPECT_TRUE(page.pairFiles.rows.empty());
  EXPECT_EQ(page.Pairs().pairCount, 0);
}

TEST_F(DynamicPageTest, NoThirtyThirdPair) {
  llherroRTKDynamic& page = *StartDialog().dynamicPage;
  for (int i = 0; i < 33; ++i) {
    page.AddSourceFile(start_ + "/d/s" + std::to_string(i) + ".log");
    page.AddReferenceFile(start_ + "/r/r" + std::to_string(i) + ".txt");
    Pair(page, i, i);
  }
  EXPECT_EQ(page.Pairs().pairCount, 64);
  EXPECT_EQ(page.pairFiles.rows.size(), 32u);
  EXPECT_EQ(page.pairFiles.rows.back(), (std::vector<std::string>{"32", "s31-r31"}));
  // The 33rd source is not taken, so its reference finds no source waiting.
  EXPECT_EQ(host_.MessageTexts(), (Names{"You should select Kestrix item this time!"}));
}

TEST_F(DynamicPageTest, ProcessRefusals) {
  llherroRTKDynamic& page = *StartDialog().dynamicPage;
  ProcessAndWaitForMessage(page, "Please Choose ASCII File Firstly!");
  page.AddSourceFile(start_ + "/d/a.log");
  ProcessAndWaitForMessage(page, "Please Choose Ref File Firstly!");
  page.AddReferenceFile(start_ + "/r/x.txt");
  ProcessAndWaitForMessage(page, "Please Set DD Files Firstly!");
  EXPECT_TRUE(page.process.enabled);
  EXPECT_FALSE(PathExists(Result()));
}

// The run over two pairs and a waiting source: folders, tool copies,
// duration.txt, the scripts with the kinds chosen after the pairs were
// formed, the tool's calls, and the page cleared afterwards.
TEST_F(DynamicPageTest, ProcessWritesEachPairAndRunsItsScript) {
  llherroRTKDynamic& page = Start();
  Pair(page, 1, 0);
  Pair(page, 3, 1);
  PickSources(page, {0});      // waits for a reference: left out
  page.refPosType.Choose(6);   // "All-gga"
  page.refVelType.Choose(12);  // "Canspeed"
  page.refAttType.Choose(8);   // "none"
  page.fromWeek.text = "2301";
  page.fromSeconds.text = "345600.25";
  page.toWeek.text = "2301x";
  page.toSeconds.text = "";
  ProcessAndWait(page);

  const std::string first = Result() + "/b-x";
  const std::string second = Result() + "/c-y";
  const std::vector<FolderEntry> made = ListMatching(Result(), "*");
  ASSERT_EQ(made.size(), 2u);
  EXPECT_EQ(made[0].name, "b-x");
  EXPECT_EQ(made[1].name, "c-y");
  EXPECT_EQ(FileBytes(first + "/duration.txt"), "2301,345600.250\n2301,0.000\n");
  EXPECT_EQ(FileBytes(first + "/RTKDPlot101010.bat"),
            "\r\ncd \"" + first + "\"\r\nDynamicDataProcess.exe \"" + start_ + "/r/x.txt\" \"" +
                start_ + "/d/b.log\" sban canspeed codeangle  1\r\ncd \"" + first +
                "\"\r\nmove *.fig .\\FIG\r\nexit\r\n");
  EXPECT_NE(FileBytes(second + "/RTKDPlot101010.bat").find("codeangle  2\r\n"), std::string::npos);
  EXPECT_TRUE(PathExists(first + "/ExtractAndProcessData.exe"));
  EXPECT_TRUE(PathExists(first + "/FIG/p.fig"));
  EXPECT_FALSE(PathExists(first + "/p.fig"));
  EXPECT_FALSE(PathExists(Result() + "/Dynamic_report.xlsx"));

  std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 2u);
  std::sort(calls.begin(), calls.end(), [](auto& a, auto& b) { return a.cwd < b.cwd; });
  EXPECT_EQ(calls[0].cwd, first);
  EXPECT_EQ(calls[0].args, (Names{"DynamicDataProcess.exe", start_ + "/r/x.txt",
                                  start_ + "/d/b.log", "sban", "canspeed", "codeangle", "1"}));
  EXPECT_EQ(calls[1].args[1], start_ + "/r/y.txt");
  EXPECT_EQ(calls[1].args[2], start_ + "/d/c.log");

  EXPECT_EQ(host_.statuses, (Names{"Status: Processing", "Status: Finished"}));
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_TRUE(page.process.enabled);
  EXPECT_TRUE(page.sourceFiles.rows.empty());
  EXPECT_TRUE(page.pairFiles.rows.empty());
  EXPECT_EQ(page.Pairs().pairCount, 0);
  EXPECT_EQ(page.Sources().count, 0);
  EXPECT_TRUE(page.resultPath.text.empty());
  EXPECT_TRUE(page.sourceFile.text.empty());
}

// With the report the pairs run one after the other; without it all at
// once. The stand-in's time marks show which.
TEST_F(DynamicPageTest, ReportRunsPairsInTurnOtherwiseAllAtOnce) {
  setenv("TARNLOG_STANDIN_SLEEP_MS", "300", 1);
  testing::WriteBytes(start_ + "/Config/Dynamic_report.xlsx", "template");
  for (const bool report : {true, false}) {
    SCOPED_TRACE(report);
    RemoveFile(start_ + "/calls.log");
    host_.finishedCount = 0;
    llherroRTKDynamic& page = Start();
    const std::string stamp = report ? "111111" : "222222";
    page.SetStamp(stamp);
    Pair(page, 0, 0);
    Pair(page, 1, 1);
    page.generateReport.checked = report;
    ProcessAndWait(page);
    std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
    ASSERT_EQ(calls.size(), 2u);
    std::sort(calls.begin(), calls.end(), [](auto& a, auto& b) { return a.startNs < b.startNs; });
    const std::string result = start_ + "/d/RTKDynamic" + stamp;
    if (report) {
      EXPECT_LT(calls[0].endNs, calls[1].startNs);
      EXPECT_EQ(calls[0].cwd, result + "/a-x");
      EXPECT_EQ(FileBytes(result + "/Dynamic_report.xlsx"), "template");
    } else {
      EXPECT_LT(calls[1].startNs, calls[0].endNs);
      EXPECT_FALSE(PathExists(result + "/Dynamic_report.xlsx"));
    }
    EXPECT_FALSE(PathExists(result + "/DirlistFile.txt"));
  }
}

// The chosen folder gets "RTKDynamic" and the stamp below it; a pair folder
// that can't be made is named in the message and the run goes on.
TEST_F(DynamicPageTest, ChosenFolderAndAFailedPairFolder) {
  llherroRTKDynamic& page = Start();
  MakeFolder(start_ + "/out");
  host_.folderChoices.push_back(start_ + "/out");
  page.saveAs.Press();
  const std::string result = start_ + "/out/RTKDynamic101010";
  EXPECT_EQ(page.resultPath.text, result);
  EXPECT_EQ(host_.chooserFilters, (Names{"Select a folder"}));
  ASSERT_TRUE(IsFolder(result));
  testing::WriteBytes(result + "/a-x", "in the way");
  Pair(page, 0, 0);
  Pair(page, 1, 1);
  ProcessAndWait(page);
  EXPECT_EQ(host_.MessageTexts(), (Names{"Creat Folder" + result + "/a-xis Failed!"}));
  EXPECT_EQ(host_.Status(), "Status: Finished");
  EXPECT_EQ(testing::ReadStandinLog(start_ + "/calls.log").size(), 1u);
  EXPECT_TRUE(PathExists(result + "/b-y/RTKDPlot101010.bat"));
}

}  // namespace
}  // namespace tarnlog
