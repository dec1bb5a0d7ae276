#include "pages/timing/pps_reacquisition_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;
using testing::FileBytes;

constexpr char kTwoPoints[] = "Roof,31.5,121.25,10\r\nMast,29.75,119.5,40.125\r\n";
// Config/parameter.txt as the start folders hold it, in a Control.txt.
constexpr char kParameterLines[] = "Threshold 30\r\nInterval 1\r\n\r\n";

// A start folder with the four tools as stand-ins and logs and CSV files in
// logs/.
class InitialPageTest : public testing::StartFolderFixture {
 protected:
  InitialPageTest() : StartFolderFixture(kTwoPoints) {
    for (const char* tool : {"PPS.exe", "Reacq_TTFF_DataProcess.exe", "TTFF_analysis.exe",
                             "ExtractAndProcessData.exe"})
      testing::InstallStandin(start_ + "/EXE", tool);
    MakeFolder(Logs());
    for (const char* name : {"a_TTFF.log", "b_REA.log", "c.csv", "d.CSV", "e.Csv"})
      testing::WriteBytes(Logs() + "/" + name, std::string("data of ") + name);
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  }
  ~InitialPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    SetScriptRunnerPath("");
  }

  std::string Logs() const { return start_ + "/logs"; }
  PPSReacquisition& Start() { return *StartDialog().initialPage; }
  void AddLog(PPSReacquisition& page, const std::string& name) {
    page.filePath.text = Logs() + "/" + name;
    page.add.Press();
  }
  // Chooses a CSV file; a refusal before the chooser leaves no answer
  // behind.
  void OpenCsv(PPSReacquisition& page, const std::string& name) {
    host_.fileChoices.push_back({Logs() + "/" + name});
    page.openPpsCsvFile.Press();
    host_.fileChoices.clear();
  }
  // The one folder in `folder` matching `pattern`, with its stamp of six
  // digits after `prefix`.
  std::string StampedFolder(const std::string& folder, const std::string& prefix) {
    const std::vector<FolderEntry> found = ListMatching(folder, prefix + "*");
    EXPECT_EQ(found.size(), 1u);
    if (found.size() != 1) return "<none>";
    const std::string stamp = found[0].name.substr(prefix.size());
    EXPECT_EQ(stamp.size(), 6u);
    EXPECT_EQ(stamp.find_first_not_of("0123456789"), std::string::npos);
    return folder + "/" + found[0].name;
  }
  std::vector<testing::StandinCall> CallsInOrder() const {
    std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
    std::sort(calls.begin(), calls.end(), [](auto& a, auto& b) { return a.startNs < b.startNs; });
    return calls;
  }
};

TEST_F(InitialPageTest, TheTwoChoicesEnableTheirFields) {
  PPSReacquisition& page = Start();
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(page.ParameterText(), "Threshold 30\nInterval 1\n");
  EXPECT_EQ(page.realValue.entries, (Names{"Roof", "Mast"}));
  EXPECT_EQ(page.SetKind(), InitialSetKind::kNone);

  EXPECT_TRUE(page.onTime.enabled);
  EXPECT_FALSE(page.offTime.enabled);
  page.signal.Choose(1);
  EXPECT_FALSE(page.onTime.enabled);
  EXPECT_TRUE(page.offTime.enabled);

  EXPECT_EQ(page.RealValueLabel(), "RealValue");
  EXPECT_FALSE(page.roverPos.enabled);
  EXPECT_FALSE(page.roverCoordinates.latitude.enabled);
  for (const int heading : {4, 5}) {
    page.logType.Choose(heading);
    EXPECT_EQ(page.RealValueLabel(), "BasePos");
    EXPECT_TRUE(page.roverPos.enabled);
    EXPECT_TRUE(page.roverCoordinates.height.enabled);
  }
  page.logType.Choose(6);
  EXPECT_EQ(page.RealValueLabel(), "RealValue");
  EXPECT_FALSE(page.roverPos.enabled);

  // A rover pick leaves the true position alone.
  page.roverPos.Choose(1);
  EXPECT_EQ(page.roverCoordinates.height.text, "40.125");
  EXPECT_EQ(page.realCoordinates.height.text, "10");
}

TEST_F(InitialPageTest, StartWithoutParameterFileSaysSoTwiceAndStops) {
  RemoveFile(start_ + "/Config/parameter.txt");
  PPSReacquisition& page = Start();
  EXPECT_EQ(host_.MessageTexts(), (Names{"请确认parameter.txt文件存在！", "请检查parameter.txt"}));
  EXPECT_EQ(page.ParameterText(), "");
  EXPECT_TRUE(page.realValue.entries.empty());
}

// The first file decides the page's sets; a file of the other kind is
// refused until Delete All Item.
TEST_F(InitialPageTest, FirstFileDecidesTheKindOfSets) {
  PPSReacquisition& page = Start();
  AddLog(page, "a_TTFF.log");
  EXPECT_EQ(page.SetKind(), InitialSetKind::kReacquisition);
  OpenCsv(page, "c.csv");
  page.deleteAll.Press();
  EXPECT_EQ(page.SetKind(), InitialSetKind::kNone);
  EXPECT_TRUE(page.files.rows.empty());

  OpenCsv(page, "c.csv");
  EXPECT_EQ(page.SetKind(), InitialSetKind::kPps);
  page.openFile.Press();
  AddLog(page, "a_TTFF.log");
  OpenCsv(page, "e.Csv");
  OpenCsv(page, "c.csv");
  OpenCsv(page, "d.CSV");
  EXPECT_EQ(
      host_.MessageTexts(),
      (Names{"You should choose reacquisition files! This is pps files set!",
             "You should choose pps csv files! This is reacquisition files set!",
             "You should choose pps csv files! This is reacquisition files set!",
             "File format error! You should use *.csv or *.CSV", "File Already be Selected!"}));
  EXPECT_EQ(page.files.rows,
            (Rows{{"1", "c.csv", "", "", "", Logs()}, {"2", "d.CSV", "", "", "", Logs()}}));
  // No chooser is shown for a refused kind; the log chooser never.
  EXPECT_EQ(host_.chooserFilters, Names(4, "CSV Files (*.csv)|*.csv|All Files (*.*)|*.*||"));
}

TEST_F(InitialPageTest, AddRefusesRepeatedSetsAndKeepsOthers) {
  PPSReacquisition& page = Start();
  page.add.Press();
  EXPECT_EQ(host_.MessageTexts(), (Names{"Please Choose ASCII File Firstly!"}));
  host_.messages.clear();

  AddLog(page, "a_TTFF.log");
  page.onTime.text = "60";  // only the time differs: the same set
  AddLog(page, "a_TTFF.log");
  page.processType.Choose(1);
  AddLog(page, "a_TTFF.log");
  page.chipType.Choose(1);
  page.logType.Choose(4);
  page.roverPos.Choose(1);
  AddLog(page, "a_TTFF.log");
  page.realCoordinates.longitude.text = "180.5";
  AddLog(page, "b_REA.log");
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Already Exists a same Process Set!",
                   "Value out of range: RealValue Longitude is \"180.5\", it must lie in -180 to "
                   "180"}));
  EXPECT_EQ(page.files.rows, (Rows{{"1", "a_TTFF.log", "gga", "TTFF", "N2", Logs()},
                                   {"2", "a_TTFF.log", "gga", "REACQ", "N2", Logs()},
                                   {"3", "a_TTFF.log", "headinga", "REACQ", "N1", Logs()}}));
  const TestSet& heading = page.Sets()[2];
  EXPECT_DOUBLE_EQ(heading.real.latitude, 31.5);
  EXPECT_DOUBLE_EQ(heading.rover.height, 40.125);
  EXPECT_DOUBLE_EQ(page.Sets()[0].rover.height, 0.0);
  EXPECT_FLOAT_EQ(page.Sets()[1].time, 60.0f);

  // The disconnected phase takes "OffTime".
  page.realCoordinates.longitude.text = "121";
  page.signal.Choose(1);
  page.offTime.text = "12.5";
  AddLog(page, "b_REA.log");
  EXPECT_EQ(page.Sets()[3].connect, 0);
  EXPECT_FLOAT_EQ(page.Sets()[3].time, 12.5f);

  // Delete One frees its entry; the others keep their numbers.
  page.deleteOne.Press();
  EXPECT_EQ(host_.MessageTexts().back(), "No item was selected!");
  page.files.selected = 0;
  page.deleteOne.Press();
  ASSERT_EQ(page.files.rows.size(), 3u);
  EXPECT_EQ(page.files.rows[0][0], "2");
  EXPECT_EQ(page.SetKind(), InitialSetKind::kReacquisition);
}

TEST_F(InitialPageTest, HundredSetsAtMost) {
  PPSReacquisition& page = Start();
  std::vector<std::string> chosen;
  for (int i = 0; i < 101; ++i)
    chosen.push_back(Logs() + "/" + std::to_string(i) + ".log");
  host_.fileChoices.push_back(chosen);
  page.openFile.Press();
  EXPECT_EQ(page.files.rows.size(), 100u);
  EXPECT_EQ(host_.MessageTexts(), (Names{"Too Many Files to Process! The Max file number is 16!"}));
  EXPECT_EQ(host_.chooserFilters, (Names{"LOG Files (*.log)|*.log|All Files (*.*)|*.*||"}));
  AddLog(page, "a_TTFF.log");
  page.deleteAll.Press();
  for (int i = 0; i < 100; ++i)
    OpenCsv(page, std::to_string(i) + ".csv");
  OpenCsv(page, "c.csv");
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Too Many Files to Process! The Max file number is 16!",
                   "Too Many Files to Process! The Max file number is 16!",
                   "Two Many files be selected! The Max File Number is 16!"}));
}

TEST_F(InitialPageTest, ProcessAndSavePathRefusals) {
  PPSReacquisition& page = Start();
  page.setSavePath.Press();
  page.process.Press();
  AddLog(page, "a_TTFF.log");
  page.files.selected = 0;
  page.deleteOne.Press();
  page.process.Press();
  page.deleteAll.Press();
  OpenCsv(page, "c.csv");
  page.files.selected = 0;
  page.deleteOne.Press();
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please choose file firstly", "Please choose file firstly!",
                   "Please Choose ASCII File and Set Control Parameter!",
                   "Please choose *csv file first!"}));
  EXPECT_TRUE(page.process.enabled);
  EXPECT_TRUE(testing::ReadStandinLog(start_ + "/calls.log").empty());
}

// Both "Method" values: a folder per file with PPS.exe, CSVPro.bat and
// CSVDel.bat in the root, run and removed, and PPS.exe removed again.
TEST_F(InitialPageTest, PpsRunCallsTheToolPerFile) {
  for (const int method : {0, 1}) {
    SCOPED_TRACE(method);
    RemoveFile(start_ + "/calls.log");
    const std::string root = start_ + "/pps" + std::to_string(method);
    MakeFolder(root);
    PPSReacquisition& page = Start();
    OpenCsv(page, "c.csv");
    OpenCsv(page, "d.CSV");
    page.method.Choose(method);
    page.copyDataFiles.checked = method == 1;
    host_.folderChoices.push_back(root);
    page.setSavePath.Press();
    host_.statuses.clear();
    page.process.Press();

    const std::string result = StampedFolder(root, "PPS");
    const std::vector<testing::StandinCall> calls = CallsInOrder();
    ASSERT_EQ(calls.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
      const std::string stem = i == 0 ? "c" : "d";
      const std::string csv = Logs() + "/" + stem + (i == 0 ? ".csv" : ".CSV");
      const std::string folder = result + "/" + stem;
      EXPECT_EQ(calls[i].cwd, folder);
      EXPECT_EQ(calls[i].args, (Names{"PPS.exe", folder, csv, stem, std::to_string(method + 1)}));
      EXPECT_FALSE(PathExists(folder + "/PPS.exe"));
      EXPECT_EQ(PathExists(folder + "/" + stem + (i == 0 ? ".csv" : ".CSV")), method == 1);
    }
    EXPECT_FALSE(PathExists(root + "/CSVPro.bat"));
    EXPECT_FALSE(PathExists(root + "/CSVDel.bat"));
    EXPECT_EQ(host_.statuses, (Names{"Status: Copy All The Files", "Status: Processing Files",
                                     "Status: Finished"}));
    EXPECT_TRUE(page.files.rows.empty());
    EXPECT_TRUE(page.savePath.text.empty());
    EXPECT_TRUE(page.filePath.text.empty());
    EXPECT_EQ(page.SetKind(), InitialSetKind::kNone);
    EXPECT_TRUE(page.process.enabled);
  }
}

// Sets on two logs run one after the other in table order, each in its
// own folder with the tools, Control.txt and InitialCommamd.bat; "Copy
// Data Files" copies the log, and "GenerateReport" the report template.
TEST_F(InitialPageTest, ReacquisitionRunWritesAndRunsEverySet) {
  setenv("TARNLOG_STANDIN_SLEEP_MS", "200", 1);
  testing::WriteBytes(start_ + "/Config/Init_report.xlsx", "template");
  PPSReacquisition& page = Start();
  AddLog(page, "b_REA.log");  // entry 0, deleted below
  page.processType.Choose(1);
  page.logType.Choose(5);
  page.roverPos.Choose(1);
  page.testTimes.text = "7";
  page.onTime.text = "30.9";
  AddLog(page, "a_TTFF.log");
  page.logType.Choose(3);
  page.signal.Choose(1);
  page.offTime.text = "15";
  AddLog(page, "b_REA.log");
  page.files.selected = 0;
  page.deleteOne.Press();
  page.copyDataFiles.checked = true;
  page.generateReport.checked = true;
  host_.statuses.clear();
  page.process.Press();

  const std::string result = StampedFolder(Logs(), "ReacqInitial");
  const std::string first = result + "/a_TTFF_heading2a";
  const std::string second = result + "/b_REA_bestposa";
  EXPECT_EQ(FileBytes(first + "/Control.txt"),
            std::string("TestType: REACQ\r\nLogType: heading2a\r\nChipType: N2\r\nTestTimes: 7\r\n"
                        "OnTime: 30\r\nOffTime: 0\r\n"
                        "Base: 31.500000000 121.250000000 10.000000\r\n"
                        "Rover: 29.750000000 119.500000000 40.125000\r\n") +
                kParameterLines);
  EXPECT_EQ(FileBytes(first + "/InitialCommamd.bat"),
            "\r\ncd \"" + first + "\"\r\nReacq_TTFF_DataProcess.exe \"" + Logs() +
                "/a_TTFF.log\" \"" + first + "/Control.txt\"  2\r\nexit");
  for (const std::string& folder : {first, second}) {
    for (const char* tool : {"TTFF_analysis.exe", "ExtractAndProcessData.exe"})
      EXPECT_TRUE(PathExists(folder + "/" + tool)) << tool;
  }
  EXPECT_EQ(FileBytes(first + "/a_TTFF.log"), "data of a_TTFF.log");
  EXPECT_EQ(FileBytes(result + "/Init_report.xlsx"), "template");

  const std::vector<testing::StandinCall> calls = CallsInOrder();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].cwd, first);
  EXPECT_EQ(calls[0].args, (Names{"Reacq_TTFF_DataProcess.exe", Logs() + "/a_TTFF.log",
                                  first + "/Control.txt", "2"}));
  EXPECT_EQ(calls[1].cwd, second);
  EXPECT_EQ(calls[1].args, (Names{"Reacq_TTFF_DataProcess.exe", Logs() + "/b_REA.log",
                                  second + "/Control.txt", "3"}));
  EXPECT_LT(calls[0].endNs, calls[1].startNs);

  EXPECT_EQ(host_.statuses, (Names{"Status: Processing", "Status: Finished"}));
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_TRUE(page.generateReport.checked);
  EXPECT_TRUE(page.files.rows.empty());
  EXPECT_EQ(page.SetKind(), InitialSetKind::kNone);
  EXPECT_TRUE(page.process.enabled);
}

// Without a report the box is ticked afterwards all the same; a log with no
// "." gives an output folder of "_" and the log type, and two sets that
// differ in process type only share one folder, the later Control.txt
// standing.
TEST_F(InitialPageTest, SharedOutputFolderAndTheRootByProcessTypes) {
  testing::WriteBytes(Logs() + "/plain", "no dot");
  PPSReacquisition& page = Start();
  AddLog(page, "plain");
  page.processType.Choose(1);
  AddLog(page, "plain");
  const std::string base = start_ + "/out";
  MakeFolder(base);
  page.savePath.text = base;
  page.process.Press();
  const std::string folder = StampedFolder(base, "Initial") + "/_gga";
  EXPECT_EQ(FileBytes(folder + "/Control.txt").substr(0, 17), "TestType: REACQ\r\n");
  EXPECT_EQ(testing::ReadStandinLog(start_ + "/calls.log").size(), 2u);
  EXPECT_TRUE(page.generateReport.checked);
  EXPECT_FALSE(PathExists(folder + "/Init_report.xlsx"));
  EXPECT_FALSE(PathExists(folder + "/plain"));

  page.processType.Choose(0);
  AddLog(page, "a_TTFF.log");
  page.process.Press();
  StampedFolder(Logs(), "TTFFInitial");
}

// The batch run as a test script makes it: the TTFF pass takes the paths
// holding "TTFF", the REACQ pass those holding "REA"; a path with neither
// is skipped. With the heading log types the rover's three positions come
// before the files.
TEST_F(InitialPageTest, BatchRunTest) {
  testing::WriteBytes(start_ + "/Config/Init_report.xlsx", "template");
  for (const char* name : {"a_TTFF.log", "b_REA.log", "x.log", "c_ttff_rea.log"})
    testing::WriteBytes(start_ + "/" + name, "log");
  const struct {
    Names args;
    Names folders;  // in call order
    Names controlHeads;
    Names numbers;
  } cases[] = {
      {{"3", "3", "0", "120_120", "10_10", "5_5", "31.5", "121.25", "10", "a_TTFF.log", "b_REA.log",
        "test"},
       {"a_TTFF_bestposa", "b_REA_bestposa"},
       {"TestType: TTFF\r\nLogType: bestposa\r\nChipType: N2\r\nTestTimes: 5\r\nOnTime: 120\r\n"
        "OffTime: 0\r\nRealPos: 31.500000000 121.250000000 10.000000\r\n",
        "TestType: REACQ\r\nLogType: bestposa\r\nChipType: N2\r\nTestTimes: 5\r\nOnTime: 120\r\n"
        "OffTime: 0\r\nRealPos: 31.500000000 121.250000000 10.000000\r\n"},
       {"1", "2"}},
      {{"4", "1", "1", "90_30", "10_20", "5_6", "31.5", "121.25", "10", "30", "120", "-5", "x.log",
        "c_ttff_rea.log", "b_REA.log", "TEST"},
       {"c_ttff_rea_headinga", "c_ttff_rea_psrposa", "b_REA_psrposa"},
       {"TestType: TTFF\r\nLogType: headinga\r\nChipType: N1\r\nTestTimes: 5\r\nOnTime: 90\r\n"
        "OffTime: 0\r\nBase: 31.500000000 121.250000000 10.000000\r\n"
        "Rover: 30.000000000 120.000000000 -5.000000\r\n",
        "TestType: REACQ\r\nLogType: psrposa\r\nChipType: N1\r\nTestTimes: 6\r\nOnTime: 30\r\n"
        "OffTime: 0\r\nRealPos: 31.500000000 121.250000000 10.000000\r\n",
        "TestType: REACQ\r\nLogType: psrposa\r\nChipType: N1\r\nTestTimes: 6\r\nOnTime: 30\r\n"
        "OffTime: 0\r\nRealPos: 31.500000000 121.250000000 10.000000\r\n"},
       {"1", "2", "3"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args[0]);
    RemoveFile(start_ + "/calls.log");
    Names argv{testing::TarnlogBinary()};
    argv.insert(argv.end(), c.args.begin(), c.args.end());
    const testing::RunResult run = testing::RunAndCapture(argv, start_);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "Status: Processing\nStatus: Finished\n");
    EXPECT_EQ(run.err, "");

    const std::string result = StampedFolder(start_, "Initial");
    EXPECT_EQ(FileBytes(result + "/Init_report.xlsx"), "template");
    const std::vector<testing::StandinCall> calls = CallsInOrder();
    ASSERT_EQ(calls.size(), c.folders.size());
    for (std::size_t i = 0; i < calls.size(); ++i) {
      const std::string folder = result + "/" + c.folders[i];
      const std::string log = c.folders[i].substr(0, c.folders[i].rfind('_')) + ".log";
      EXPECT_EQ(calls[i].cwd, folder);
      EXPECT_EQ(calls[i].args, (Names{"Reacq_TTFF_DataProcess.exe", start_ + "/" + log,
                                      folder + "/Control.txt", c.numbers[i]}));
      EXPECT_EQ(FileBytes(folder + "/Control.txt"), c.controlHeads[i] + kParameterLines);
      EXPECT_TRUE(PathExists(folder + "/TTFF_analysis.exe"));
      EXPECT_FALSE(PathExists(folder + "/" + log));
    }
    // Both runs of one hour may share a stamp only by chance; the next run
    // lists its own folder.
    std::filesystem::remove_all(result);
  }
}

// A run that adds no set ends on the check with status 1; a true position
// out of range refuses every set first.
TEST_F(InitialPageTest, BatchRunWithoutSetsEndsWithStatusOne) {
  testing::WriteBytes(start_ + "/a_TTFF.log", "log");
  const struct {
    Names args;
    std::string err;
  } cases[] = {
      {{"0", "0", "0", "1_1", "1_1", "1_1", "31.5", "121.25", "10", "x.log", "test"},
       "tarnlog: PPSReacquisition: Please Choose ASCII File and Set Control Parameter!\n"},
      {{"0", "0", "0", "1_1", "1_1", "1_1", "95", "121.25", "10", "a_TTFF.log", "test"},
       "Value out of range: RealValue Latitude is \"95\", it must lie in -90 to 90\n"
       "tarnlog: PPSReacquisition: Please Choose ASCII File and Set Control Parameter!\n"},
  };
  for (const auto& c : cases) {
    Names argv{testing::TarnlogBinary()};
    argv.insert(argv.end(), c.args.begin(), c.args.end());
    const testing::RunResult run = testing::RunAndCapture(argv, start_);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, c.err);
    EXPECT_TRUE(ListMatching(start_, "*Initial*").empty());
  }
}

}  // namespace
}  // namespace tarnlog
