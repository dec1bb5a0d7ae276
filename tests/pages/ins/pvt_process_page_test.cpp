#include "pages/ins/pvt_process_page.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "pages/ins/raw_imu_sentences.h"
#include "pages/start_folder_fixture.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using Names = std::vector<std::string>;
using testing::FileBytes;
using testing::kRawImuBody;
using testing::kRawImuxBody;
using testing::Replaced;
using testing::WithAsciiCrc;

// The page writes its tables in text mode.
const std::string kRawImuxRow = testing::kRawImuxRowText + "\r\n";

// A start folder with the tool as a stand-in and two logs.
class PvtProcessPageTest : public testing::StartFolderFixture {
 protected:
  PvtProcessPageTest() {
    testing::InstallStandin(start_ + "/EXE", "InsMeasProc.exe");
    MakeFolder(start_ + "/logs");
    MakeFolder(start_ + "/out");
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    // Source: a RAWIMUA, two RAWIMUXA (the second a second later), one with
    // a bad CRC and one with a blank inside. Reference: one RAWIMUXA.
    testing::WriteBytes(start_ + "/logs/dut.log",
                        WithAsciiCrc(kRawImuBody) + WithAsciiCrc(kRawImuxBody) +
                            WithAsciiCrc(Replaced(kRawImuxBody, "431250.000", "431251.000")) +
                            WithAsciiCrc(kRawImuxBody, '#', "\r\n", false) +
                            WithAsciiCrc(Replaced(kRawImuxBody, "COM1", "COM 1")));
    testing::WriteBytes(start_ + "/logs/ref.log", "$GPGGA,1*00\r\n" + WithAsciiCrc(kRawImuxBody));
  }
  ~PvtProcessPageTest() override {
    unsetenv("TARNLOG_STANDIN_LOG");
    SetScriptRunnerPath("");
  }

  PVTProcess& Start() {
    PVTProcess& page = *StartDialog().insPage;
    host_.fileChoices.push_back({start_ + "/logs/ref.log", start_ + "/logs/dut.log"});
    page.openSource.Press();
    host_.fileChoices.push_back({start_ + "/logs/ref.log"});
    page.openReference.Press();
    page.save.text = start_ + "/out";
    return page;
  }
  // The one result folder below `save`.
  static std::string Result(const std::string& save) {
    const std::vector<FolderEntry> made = ListMatching(save, "InsMeasProc-dut-ref-*");
    if (made.size() != 1 || made[0].name.size() != 26) return "<no single result>";
    return save + "/" + made[0].name;
  }
};

TEST_F(PvtProcessPageTest, ProcessFiltersBothLogsAndRunsTheTool) {
  PVTProcess& page = Start();
  EXPECT_EQ(host_.chooserFilters,
            (Names(2, "LOG Files (*.log)|*.log|(*.LOG)|*.log|All Files (*.*)|*.*||")));
  EXPECT_EQ(page.sourceLog.text, start_ + "/logs/dut.log");
  EXPECT_EQ(page.configFile.text, "可选");
  // The stream opened on choice is what Process reads.
  RemoveFile(start_ + "/logs/ref.log");
  page.process.Press();

  const std::string result = Result(start_ + "/out");
  EXPECT_EQ(FileBytes(result + "/SrcRawimux.txt"),
            kRawImuxRow + Replaced(kRawImuxRow, "431250.000", "431251.000"));
  EXPECT_EQ(FileBytes(result + "/RefRawimux.txt"), kRawImuxRow);
  EXPECT_EQ(FileBytes(result + "/InsMeasProcPlot.bat"),
            "\r\ncd " + result + "\r\nInsMeasProc.exe SrcRawimux.txt RefRawimux.txt\r\nexit\r\n");
  const std::vector<testing::StandinCall> calls = testing::ReadStandinLog(start_ + "/calls.log");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].cwd, result);
  EXPECT_EQ(calls[0].exe, result + "/InsMeasProc.exe");
  EXPECT_EQ(calls[0].args, (Names{"InsMeasProc.exe", "SrcRawimux.txt", "RefRawimux.txt"}));

  EXPECT_TRUE(host_.messages.empty());
  EXPECT_TRUE(page.process.enabled);
  EXPECT_TRUE(page.sourceLog.text.empty());
  EXPECT_TRUE(page.referenceLog.text.empty());
  EXPECT_TRUE(page.configFile.text.empty());
  EXPECT_EQ(page.save.text, start_ + "/out");
}

TEST_F(PvtProcessPageTest, MissingLogStopsSilentlyWithProcessOff) {
  PVTProcess& page = *StartDialog().insPage;
  page.ChooseSourceLog(start_ + "/logs/dut.log");
  page.save.text = start_ + "/out";
  page.process.Press();
  EXPECT_FALSE(page.process.enabled);
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_TRUE(ListMatching(start_ + "/out", "*").empty());
}

// Without the tool in EXE the tables are there, nothing runs and Process
// comes back; a result folder that can't be made stops at the script with
// Process off.
TEST_F(PvtProcessPageTest, CopyAndScriptFailures) {
  RemoveFile(start_ + "/EXE/InsMeasProc.exe");
  PVTProcess& page = Start();
  page.process.Press();
  const std::string result = Result(start_ + "/out");
  EXPECT_EQ(FileBytes(result + "/RefRawimux.txt"), kRawImuxRow);
  EXPECT_TRUE(PathExists(result + "/InsMeasProcPlot.bat"));
  EXPECT_EQ(host_.MessageTexts(), (Names{"copy InsMeasProc.exe error!"}));
  EXPECT_TRUE(page.process.enabled);
  EXPECT_FALSE(page.sourceLog.text.empty());
  EXPECT_FALSE(PathExists(start_ + "/calls.log"));

  testing::WriteBytes(start_ + "/plain", "");
  page.save.text = start_ + "/plain";
  page.process.Press();
  EXPECT_EQ(host_.MessageTexts().back(), "Open bat file error!");
  EXPECT_FALSE(page.process.enabled);
}

}  // namespace
}  // namespace tarnlog
