#include "frame/auto_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "frame/varnel_dlg.h"
#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using testing::FileBytes;

class AutoPageTest : public testing::StartFolderFixture {
 protected:
  AutoPageTest() : StartFolderFixture("Roof,31.5,121.25,10\r\nPier,30,120,5\r\n") {
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
  }
  ~AutoPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
  }

  CAuto& Start() { return *StartDialog().autoPage; }

  // Presses Prosess and waits for the worker's finished notice.
  void ProcessAndWait(CAuto& page) {
    page.prosess.Press();
    for (int i = 0; i < 600 && host_.finishedCount == 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_EQ(host_.finishedCount, 1);
  }
};

TEST_F(AutoPageTest, TheTestFolderFollowsTheLastAddedFile) {
  CAuto& page = Start();
  host_.fileChoices = {{"/x/one.log", "/x/two.LOG"}, {"/y/three.log"}, {"/g/ref.log"}};
  page.add.Press();
  EXPECT_EQ(page.testFolder.text, "/x/");
  page.add.Press();
  page.chooseGoldenFile.Press();
  EXPECT_EQ(page.testFolder.text, "/y/");
  EXPECT_EQ(page.goldenFile.text, "/g/ref.log");
  EXPECT_EQ(page.files.rows[1], (Names{"2", "two.LOG", "Kestrix", "/x/two.LOG"}));
  EXPECT_EQ(host_.chooserFilters,
            (Names{std::string(filters::kLogFiles), std::string(filters::kLogFiles),
                   std::string(filters::kGoldenFile)}));

  for (int i = 3; i < 128; ++i)
    page.AddFile("/z/f.log");
  EXPECT_EQ(page.FileCount(), 128);
  page.AddFile("/w/last.log");  // the 129th
  EXPECT_EQ(page.FileCount(), 128);
  EXPECT_EQ(page.files.rows.size(), 128u);
  EXPECT_EQ(page.testFolder.text, "/z/");
}

TEST_F(AutoPageTest, ListAFillsBothSetsAndListBOnlyItsOwn) {
  CAuto& page = Start();
  EXPECT_EQ(page.realValueA.entries, (Names{"Roof", "Pier"}));
  EXPECT_EQ(page.realValueB.selected, 0);
  EXPECT_EQ(page.realValueACoordinates.latitude.text, "0");
  page.realValueA.Choose(1);
  EXPECT_EQ(page.realValueBCoordinates.longitude.text, "120");
  EXPECT_EQ(page.realA.height, 5);
  page.realValueB.Choose(0);
  EXPECT_EQ(page.realValueACoordinates.latitude.text, "30");
  EXPECT_EQ(page.realValueBCoordinates.latitude.text, "31.5");
  EXPECT_EQ(page.realB.longitude, 121.25);
}

TEST_F(AutoPageTest, RefusalsStartNothing) {
  CAuto& page = Start();
  page.realValueBCoordinates.longitude.text = "-180.5";
  page.prosess.Press();
  page.realValueBCoordinates.longitude.text = "0";
  page.prosess.Press();
  for (int i = 0; i < 100 && host_.messages.size() < 2; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Value out of range: Real Value B Longitude is \"-180.5\", it must lie in "
                   "-180 to 180",
                   "请设置路径！"}));
  EXPECT_EQ(host_.statuses, Names{});
  EXPECT_EQ(host_.finishedCount, 0);
  EXPECT_TRUE(page.prosess.enabled);
}

TEST_F(AutoPageTest, NoTestTickedWritesTheConfigurationAndFinishes) {
  CAuto& page = Start();
  page.AddFile(start_ + "/logs/a.log");
  page.AddFile(start_ + "/logs/b.log");
  page.realValueA.Choose(1);
  page.realValueB.Choose(0);
  page.realValueBCoordinates.height.text = "12.5";
  page.runStatic.checked = page.runContinue.checked = page.runNoise.checked = false;
  MakeFolder(start_ + "/logs");
  ProcessAndWait(page);

  EXPECT_EQ(host_.statuses, Names{"Status: Finished"});
  const std::string config = start_ + "/logs/AutoTestConfig/";
  EXPECT_EQ(FileBytes(config + "filelist.ini"), "FileList:2\r\na.log\r\nb.log\r\n\r\n");
  EXPECT_EQ(FileBytes(config + "realvalue.ini"),
            "30.0000000000,120.0000000000,5.0000000000\r\n"
            "31.5000000000,121.2500000000,12.5000000000\r\n");
  EXPECT_EQ(FileBytes(config + "mode.ini"),
            "Static,0\r\nDynamic,0\r\nNoise,0\r\nInitial,0\r\nContinue,0\r\nNmea,0\r\n"
            "RangePlot,0\r\n");
  EXPECT_EQ(page.Config().filePaths[1], start_ + "/logs/b.log");
  EXPECT_TRUE(page.prosess.enabled && page.add.enabled && page.chooseGoldenFile.enabled);
  EXPECT_EQ(FileBytes(start_ + "/calls.log"), "<missing>");
}

// Each ticked test is one copy of the program, awaited before the next.
TEST_F(AutoPageTest, TicksRunOneCopyEachInOrder) {
  setenv("TARNLOG_STANDIN_SLEEP_MS", "100", 1);
  CAuto& page = Start();
  page.copyProgram = testing::InstallStandin(start_, "copy");
  page.AddFile(start_ + "/logs/a.log");
  MakeFolder(start_ + "/logs");
  ProcessAndWait(page);

  EXPECT_EQ(host_.statuses,
            (Names{"Status: Process RTKStatic......", "Status: Process Continue......",
                   "Status: Process Noise......", "Status: Finished"}));
  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 3u);
  const std::string folder = start_ + "/logs/";
  EXPECT_EQ(calls[0].args, (Names{page.copyProgram, "-RS", "-PATH", folder}));
  EXPECT_EQ(calls[1].args, (Names{page.copyProgram, "-CT", "-PATH", folder}));
  EXPECT_EQ(calls[2].args, (Names{page.copyProgram, "-N", "-PATH", folder}));
  EXPECT_EQ(calls[0].cwd, testing::Canonical(start_));
  EXPECT_GE(calls[1].startNs, calls[0].endNs);
  EXPECT_GE(calls[2].startNs, calls[1].endNs);
  EXPECT_EQ(FileBytes(folder + "AutoTestConfig/mode.ini").substr(0, 26),
            "Static,1\r\nDynamic,0\r\nNoise");
}

// The copies as a test engineer's script starts them: the program itself,
// in a start folder with its real values and a stand-in analyser, over a
// test folder of two logs, named relative to the start folder as a script
// in that folder names it.
class AutomaticTestRunTest : public testing::StartFolderFixture {
 protected:
  AutomaticTestRunTest() : StartFolderFixture("Roof,31.5,121.25,10\r\nPier,30,120,5\r\n") {
    MakeFolder(start_ + "/EXE");
    testing::InstallStandin(start_ + "/EXE", "llherroRTK_M.exe");
    MakeFolder(start_ + "/logs");
    MakeFolder(config_);
    const std::string sample = testing::SourceDir() + "/tests/data/OnceEachAgain.ASC";
    CopyFileReplacing(sample, start_ + "/logs/a.log");
    CopyFileReplacing(sample, start_ + "/logs/b.log");
    WriteConfig("FileList:2\na.log\nb.log\n", "1,2,3\n4,5,6\n");
  }

  void WriteConfig(const std::string& list, const std::string& realValues) {
    testing::WriteBytes(config_ + "filelist.ini", list);
    testing::WriteBytes(config_ + "realvalue.ini", realValues);
  }
  void WriteModes(const std::string& modes) { testing::WriteBytes(config_ + "mode.ini", modes); }

  testing::RunResult Run(const char* switchText, const char* folder = "logs") {
    return testing::RunAndCapture(
        {"timeout", "120", testing::TarnlogBinary(), switchText, "-PATH", folder}, start_,
        standinEnv_);
  }

  // The result folder of the Static copy's run, beside the logs.
  std::vector<FolderEntry> ResultFolders() const {
    return ListMatching(start_ + "/logs", "RTKStatic*");
  }

  void ExpectStaticResults() {
    const std::vector<FolderEntry> roots = ResultFolders();
    ASSERT_EQ(roots.size(), 1u);
    const std::string root = start_ + "/logs/" + roots[0].name;
    for (const char* name : {"a", "b"}) {
      EXPECT_EQ(FileBytes(root + "/" + name + "/realvalue.txt"),
                "31.50000000000,121.25000000000,10.000000\r\n"
                "31.50000000000,121.25000000000,10.000000\r\n");
      EXPECT_NE(FileBytes(root + "/" + name + "/bestpos.txt"), "<missing>");
    }
    const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].cwd, testing::Canonical(root + "/a"));
    EXPECT_EQ(calls[1].cwd, testing::Canonical(root + "/b"));
  }

  const std::string config_ = start_ + "/logs/AutoTestConfig/";
  // The environment of every copy a test starts, for the stand-ins it calls.
  std::vector<std::string> standinEnv_ = {"TARNLOG_STANDIN_LOG=" + start_ + "/calls.log",
                                          "TARNLOG_STANDIN_SLEEP_MS=0"};
};

TEST_F(AutomaticTestRunTest, StaticCopyRunsTheListedLogsAndEnds) {
  WriteModes("Static,1\n");
  const testing::RunResult run = Run("-RS");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Status:Processing\nStatus:Finished\n");
  EXPECT_EQ(run.err, "");
  ExpectStaticResults();
}

// Off in mode.ini, or a configuration that can't be read: the copy ends at
// once and makes nothing.
TEST_F(AutomaticTestRunTest, StaticCopyWithItsTestOffEndsAtOnce) {
  struct Case {
    const char* what;
    std::string modes;
    const char* folder;
  };
  const Case cases[] = {
      {"flag off", "Static,0\nContinue,1\nNoise,1\n", "logs"},
      {"flag 2", "Static,2\n", "logs"},
      {"no realvalue.ini", "Static,1\n", "logs"},
      {"no configuration", "Static,1\n", "elsewhere"},
  };
  for (const Case& c : cases) {
    WriteModes(c.modes);
    if (std::string(c.what) == "no realvalue.ini") RemoveFile(config_ + "realvalue.ini");
    const testing::RunResult run = Run("-RS", c.folder);
    EXPECT_EQ(run.status, 0) << c.what << ": " << run.err;
    EXPECT_EQ(run.out, "") << c.what;
    EXPECT_EQ(run.err, "") << c.what;
    EXPECT_TRUE(ResultFolders().empty()) << c.what;
    EXPECT_EQ(FileBytes(start_ + "/calls.log"), "<missing>") << c.what;
  }
}

// -AUTO keeps the page's ticks, all on, and the folder's configuration as
// it stands: the Static copy runs its logs, the Continue and Noise copies
// follow in that order, and the run ends by itself whatever they did.
TEST_F(AutomaticTestRunTest, AutoRunStartsTheCopiesInOrderAndEnds) {
  WriteModes("Static,1\n");
  const std::string listBefore = FileBytes(config_ + "filelist.ini");
  const testing::RunResult run = Run("-AUTO");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Status: Process RTKStatic......\n"
            "Status:Processing\nStatus:Finished\n"
            "Status: Process Continue......\n"
            "Status: Process Noise......\n"
            "Status: Finished\n");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(FileBytes(config_ + "filelist.ini"), listBefore);
  EXPECT_EQ(FileBytes(config_ + "mode.ini"), "Static,1\n");
  ExpectStaticResults();
}

// The laboratory's everyday run: "Static" and "Continue" on. The Continue
// copy ends by itself once its analysers have ended, so the run goes on to
// the Noise copy and ends, with every Static call before every Continue one.
TEST_F(AutomaticTestRunTest, AutoRunWithStaticAndContinue) {
  testing::InstallStandin(start_ + "/EXE", "All_continues.exe");
  WriteModes("Static,1\r\nDynamic,0\r\nNoise,0\r\nContinue,1\r\n");
  const testing::RunResult run = Run("-AUTO");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Status: Process RTKStatic......\n"
            "Status:Processing\nStatus:Finished\n"
            "Status: Process Continue......\n"
            "Status:Processing...\nStatus:Finished\n"
            "Status: Process Noise......\n"
            "Status: Finished\n");
  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 4u);
  const std::vector<FolderEntry> rows = ListMatching(start_ + "/logs", "Continue*");
  ASSERT_EQ(rows.size(), 1u);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(calls[i].name, i < 2 ? "llherroRTK_M.exe" : "All_continues.exe");
    if (i >= 2) {
      const std::string row = testing::Canonical(start_ + "/logs/" + rows[0].name) +
                              (calls[i].cwd.back() == 'a' ? "/a" : "/b");
      EXPECT_EQ(calls[i].cwd, row);
      EXPECT_EQ(calls[i].args, (std::vector<std::string>{"All_continues.exe", row}));
    }
  }
  EXPECT_LT(std::max(calls[0].endNs, calls[1].endNs), std::min(calls[2].startNs, calls[3].startNs));
  EXPECT_NE(FileBytes(start_ + "/logs/" + rows[0].name + "/a/BestPosTime.txt"), "<missing>");
}

TEST_F(AutomaticTestRunTest, AutoRunWithoutAFolderEndsWithItsMessage) {
  const testing::RunResult run = testing::RunAndCapture(
      {"timeout", "60", testing::TarnlogBinary(), "-AUTO", "x", "y"}, start_);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "tarnlog: CAuto: 请设置路径！\n");
}

// The noise copy over a test folder of captures named as the laboratory
// names them: each listed log is prepared by the converter into a ".BIN"
// capture beside it, the prepared captures are paired, and the copy ends.
class NoiseRunTest : public AutomaticTestRunTest {
 protected:
  NoiseRunTest() {
    for (const char* tool :
         {"Converter.exe", "NoisePlot.exe", "OfflineProcessor.exe", "ExtraData.exe",
          "IMUdataGet.exe", "GyoaccNoiseProcessFCT.exe", "All_continues.exe"})
      testing::InstallStandin(start_ + "/EXE", tool);
    const std::string sample = testing::SourceDir() + "/tests/data/OnceEachAgain.ASC";
    for (const char* name : {"xcap.log", "ycap.log", "gcap.log"})
      CopyFileReplacing(sample, start_ + "/logs/" + name);
    WriteConfig("FileList:2\r\nxcap.log\r\nycap.log\r\n\r\nGoldenFile:\r\ngcap.log\r\n",
                "1,2,3\n4,5,6\n");
    standinEnv_.insert(standinEnv_.end(),
                       {"TARNLOG_STANDIN_COPY=Converter.exe:1:.BIN",
                        "TARNLOG_STANDIN_CREATE=ADR1.txt;PSR1.txt;pvt.txt;JPG/",
                        "TARNLOG_STANDIN_APPEND=NoisePlot.exe:16:1,{rover},Yes,"});
  }

  // The calls of one tool, in the order they ended.
  std::vector<testing::StandinCall> CallsOf(const std::string& name) const {
    std::vector<testing::StandinCall> calls;
    for (const auto& call : testing::ReadStandinLog(start_ + "/calls.log"))
      if (call.name == name) calls.push_back(call);
    return calls;
  }

  // The golden capture against each other capture, one after the other.
  void ExpectNoiseResults() {
    const std::string logs = testing::Canonical(start_ + "/logs");
    const std::vector<testing::StandinCall> converter = CallsOf("Converter.exe");
    ASSERT_EQ(converter.size(), 3u);
    EXPECT_EQ(converter[0].args,
              (Names{start_ + "/EXE/Converter.exe", logs + "/xcap.log", "-batch", "-b"}));
    EXPECT_EQ(converter[2].args[1], logs + "/gcap.log");
    for (const char* name : {"xcap", "ycap", "gcap"}) {
      EXPECT_EQ(FileBytes(logs + "/" + name + ".BIN"), FileBytes(logs + "/" + name + ".log"));
      EXPECT_EQ(FileBytes(logs + "/" + name + ".bat"), "<missing>");
    }
    const std::vector<FolderEntry> outputs = ListMatching(logs, "Noise*");
    ASSERT_EQ(outputs.size(), 1u);
    const std::string output = logs + "/" + outputs[0].name;
    const std::vector<testing::StandinCall> plots = CallsOf("NoisePlot.exe");
    ASSERT_EQ(plots.size(), 2u);
    EXPECT_EQ(plots[0].args[1], output + "/gcap--xcap");
    EXPECT_EQ(plots[1].args[1], output + "/gcap--ycap");
    EXPECT_EQ(plots[0].args[16], logs + "/MFGResult_logs.txt");
    EXPECT_LE(plots[0].endNs, plots[1].startNs);
    const std::vector<testing::StandinCall> processors = CallsOf("OfflineProcessor.exe");
    ASSERT_EQ(processors.size(), 4u);
    EXPECT_EQ(processors[0].cwd, output + "/gcap--xcap/GPSGAL");
    EXPECT_EQ(processors[0].args, (Names{"OfflineProcessor.exe", "-c", "control.txt", "-b",
                                         logs + "/gcap.BIN", "-r", logs + "/xcap.BIN"}));
    EXPECT_NE(FileBytes(output + "/gcap--xcap/GPSGAL/control.txt")
                  .find("SetStartTime 1687 420261.000000\r\n"),
              std::string::npos);
    EXPECT_EQ(FileBytes(logs + "/MFGResult_logs.txt"), "1,xcap,Yes,\n1,ycap,Yes,\n");
  }
};

TEST_F(NoiseRunTest, NoiseCopyPreparesPairsAndEnds) {
  WriteModes("Noise,1\r\n");
  const testing::RunResult run = Run("-N");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "Status: Processing\nStatus: Finished\n");
  // The script runner's own complaints may stand there (the clean-up
  // deletes the processor copies twice), but no message of the page.
  EXPECT_EQ(run.err.find("tarnlog:"), std::string::npos) << run.err;
  ExpectNoiseResults();
}

// No capture named as the laboratory names them: the copy says so and ends.
TEST_F(NoiseRunTest, NoiseCopyWithoutCapturesEndsWithItsMessage) {
  WriteModes("Noise,1\r\n");
  WriteConfig("FileList:2\r\na.log\r\nb.log\r\n", "1,2,3\n4,5,6\n");
  const testing::RunResult run = Run("-N");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "tarnlog: GenNoise: Command line error!\n");
  EXPECT_EQ(FileBytes(start_ + "/logs/a.BIN"), FileBytes(start_ + "/logs/a.log"));
  EXPECT_TRUE(ListMatching(start_ + "/logs", "Noise*").empty());
}

// All three tests ticked: Static, Continue and Noise run in that order, and
// the AUTO run ends by itself.
TEST_F(NoiseRunTest, AutoRunWithAllThreeTests) {
  WriteModes("Static,1\r\nNoise,1\r\nContinue,1\r\n");
  const testing::RunResult run = Run("-AUTO");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Status: Process RTKStatic......\n"
            "Status:Processing\nStatus:Finished\n"
            "Status: Process Continue......\n"
            "Status:Processing...\nStatus:Finished\n"
            "Status: Process Noise......\n"
            "Status: Processing\nStatus: Finished\n"
            "Status: Finished\n");
  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  Names order;
  for (const auto& call : calls)
    if (order.empty() || order.back() != call.name) order.push_back(call.name);
  EXPECT_EQ(order,
            (Names{"llherroRTK_M.exe", "All_continues.exe", "Converter.exe", "OfflineProcessor.exe",
                   "NoisePlot.exe", "OfflineProcessor.exe", "NoisePlot.exe"}));
  ExpectNoiseResults();
}

}  // namespace
}  // namespace tarnlog
