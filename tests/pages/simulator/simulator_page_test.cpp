#include "pages/simulator/simulator_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;
using testing::FileBytes;

// A start folder with both tools as stand-ins that take 300 ms a call.
class SimulatorPageTest : public testing::StartFolderFixture {
 protected:
  SimulatorPageTest() {
    testing::InstallStandin(start_ + "/EXE", "SimulatorDataProcess.exe");
    testing::InstallStandin(start_ + "/EXE", "ExtractAndProcessData.exe");
    MakeFolder(start_ + "/d");
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "300", 1);
  }
  ~SimulatorPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    SetScriptRunnerPath("");
  }

  // The page with the truth file and /d/a.log, /d/b.log.
  SimulatorProDlg& Start() {
    SimulatorProDlg& page = *StartDialog().simulatorPage;
    page.smltFile.text = start_ + "/truth.csv";
    page.AddSourceFile(start_ + "/d/a.log");
    page.AddSourceFile(start_ + "/d/b.log");
    return page;
  }
  // The run's root inside the first log's folder: "Simulator" and the
  // fourteen digits of the stamp.
  std::string Root() const {
    const std::vector<FolderEntry> made = ListMatching(start_ + "/d", "Simulator*");
    if (made.size() != 1 || made[0].name.size() != 23) return "<no single root>";
    return start_ + "/d/" + made[0].name;
  }
  // The calls of one tool in the order they started.
  std::vector<testing::StandinCall> Calls(std::string_view name) const {
    std::vector<testing::StandinCall> calls;
    for (testing::StandinCall& call : testing::ReadStandinLog(start_ + "/calls.log")) {
      if (call.name == name) calls.push_back(std::move(call));
    }
    std::sort(calls.begin(), calls.end(), [](auto& a, auto& b) { return a.startNs < b.startNs; });
    return calls;
  }
};

TEST_F(SimulatorPageTest, FieldsAndTheLogList) {
  SimulatorProDlg& page = *StartDialog().simulatorPage;
  EXPECT_EQ(page.smltType.entries, (Names{"三院模拟器", "四院模拟器", "司博伦模拟器"}));
  EXPECT_EQ(page.utcDiff.text, "16");
  EXPECT_FALSE(page.startTime.visible);
  page.smltType.Choose(2);
  EXPECT_TRUE(page.startTime.visible);
  page.smltType.Choose(1);
  EXPECT_FALSE(page.startTime.visible);
  // Typing the GPS difference moves the UTC one, except for an empty field
  // and a lone sign.
  for (const auto& [typed, utc] : std::vector<std::pair<std::string, std::string>>{
           {"0", "18"}, {"-", "18"}, {"-2.5", "15.5"}, {"", "15.5"}, {"x", "18"}}) {
    page.gpstDiff.Edit(typed);
    EXPECT_EQ(page.utcDiff.text, utc) << typed;
  }

  host_.fileChoices.push_back({start_ + "/truth.csv"});
  page.Find<ActionField>("OpenSmltFile")->Press();
  host_.fileChoices.push_back({start_ + "/d/a.log", "d/b.log", start_ + "/d/a.log"});
  page.Find<ActionField>("OpenASCⅡ")->Press();
  EXPECT_EQ(page.smltFile.text, start_ + "/truth.csv");
  EXPECT_EQ(host_.chooserFilters, (Names{"All Files (*.*)|*.*|ASCII Files (*.log)|*.log||",
                                         "ASCII Files (*.log)|*.log|All Files (*.*)|*.*||"}));
  EXPECT_EQ(page.sourceFiles.rows, (Rows{{"1", "a.log", "ASCII", start_ + "/d/a.log"},
                                         {"2", "b.log", "ASCII", start_ + "/d/b.log"}}));
  EXPECT_EQ(page.asciiFile.text, start_ + "/d/b.log");
  page.deleteOne.Press();
  page.sourceFiles.selected = 0;
  page.deleteOne.Press();
  EXPECT_EQ(page.sourceFiles.rows, (Rows{{"1", "b.log", "ASCII", start_ + "/d/b.log"}}));
  page.deleteAll.Press();
  page.deleteOne.Press();
  EXPECT_EQ(host_.MessageTexts(), (Names{"Please open another File!", "No item was selected!",
                                         "No File in ASCII FILE LIST!"}));
}

TEST_F(SimulatorPageTest, ProcessRefusals) {
  SimulatorProDlg& page = *StartDialog().simulatorPage;
  page.AddSourceFile(start_ + "/d/a.log");
  PressAndWaitForMessage(page.startProcess, "Please Choose Simulator File First!");
  page.deleteAll.Press();
  page.smltFile.text = start_ + "/truth.csv";
  PressAndWaitForMessage(page.startProcess, "Please Choose Source File First!");
  page.AddSourceFile(start_ + "/d/a.log");
  page.smltType.Choose(2);
  page.startTime.text = "-0.001";
  PressAndWaitForMessage(page.startProcess, "Please Enter Right Start GPS SOW!");
  EXPECT_TRUE(host_.statuses.empty());
  EXPECT_TRUE(page.startProcess.enabled);
  EXPECT_TRUE(ListMatching(start_ + "/d", "Simulator*").empty());
}

// Without the report every log's script starts before the first ends, after
// the middle file is made; then the page's reset.
TEST_F(SimulatorPageTest, RunWithoutReportStartsAllLogsAtOnce) {
  SimulatorProDlg& page = Start();
  page.gpstDiff.Edit("1.5");
  page.utcDiff.text = "-17.25";
  PressAndWaitForFinish(page.startProcess);

  const std::string root = Root();
  const std::string middle = root + "/SmltMiddleFile.txt";
  const std::vector<testing::StandinCall> extract = Calls("ExtractAndProcessData.exe");
  ASSERT_EQ(extract.size(), 1u);
  EXPECT_EQ(extract[0].args, (Names{start_ + "/EXE/ExtractAndProcessData.exe",
                                    start_ + "/truth.csv", "-smlt", "-3", middle}));
  EXPECT_FALSE(PathExists(root + "/SmltPreprocess.bat"));
  EXPECT_EQ(FileBytes(root + "/a/ProcessFile.bat"),
            "\r\r\ncd \"" + root + "/a\"\r\r\nSimulatorDataProcess.exe \"" + root + "/a\" \"" +
                start_ + "/d/a.log\" \"" + middle + "\" -1.500000 17.250000  1\r\r\nexit\r\r\n");
  EXPECT_TRUE(PathExists(root + "/b/ExtractAndProcessData.exe"));
  EXPECT_FALSE(PathExists(root + "/Simulator_report.xlsx"));

  const std::vector<testing::StandinCall> calls = Calls("SimulatorDataProcess.exe");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_LT(extract[0].endNs, calls[0].startNs);
  EXPECT_LT(calls[1].startNs, calls[0].endNs);
  for (const testing::StandinCall& call : calls) {
    const std::string name = call.cwd.substr(call.cwd.size() - 1);
    EXPECT_EQ(call.cwd, root + "/" + name);
    EXPECT_EQ(call.args,
              (Names{"SimulatorDataProcess.exe", root + "/" + name, start_ + "/d/" + name + ".log",
                     middle, "-1.500000", "17.250000", name == "a" ? "1" : "2"}));
  }

  EXPECT_EQ(host_.statuses, (Names{"Status: Processing...", "Status: Finished!"}));
  EXPECT_TRUE(page.sourceFiles.rows.empty());
  EXPECT_EQ(page.gpstDiff.text, "0");
  EXPECT_EQ(page.utcDiff.text, "16");
  EXPECT_TRUE(page.smltFile.text.empty());
  for (Field* field : page.Fields())
    EXPECT_TRUE(field->enabled) << field->Caption();
}

// With the report the logs run one after the other, and the workbook is
// copied into the root; a start time of 0 passes, and the reset hides it.
TEST_F(SimulatorPageTest, RunWithReportTakesOneLogAtATime) {
  testing::WriteBytes(start_ + "/Config/Simulator_report.xlsx", "workbook");
  SimulatorProDlg& page = Start();
  page.smltType.Choose(2);
  page.generateReport.checked = true;
  PressAndWaitForFinish(page.startProcess);

  const std::string root = Root();
  EXPECT_EQ(FileBytes(root + "/Simulator_report.xlsx"), "workbook");
  EXPECT_EQ(Calls("ExtractAndProcessData.exe").at(0).args,
            (Names{start_ + "/EXE/ExtractAndProcessData.exe", start_ + "/truth.csv", "-smlt", "-s",
                   "-st", "0.000000", root + "/SmltMiddleFile.txt"}));
  const std::vector<testing::StandinCall> calls = Calls("SimulatorDataProcess.exe");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_LT(calls[0].endNs, calls[1].startNs);
  EXPECT_EQ(std::vector(calls[1].args.begin() + 4, calls[1].args.end()),
            (Names{"-0.000000", "-16.000000", "2"}));

  EXPECT_EQ(page.smltType.selected, 0);
  EXPECT_FALSE(page.startTime.visible);
  EXPECT_FALSE(page.generateReport.checked);
}

}  // namespace
}  // namespace tarnlog
