#include "pages/noise/noise_scripts.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

constexpr const char* kPair = "/lab/Noise101010/a--b";
constexpr const char* kBase = "/lab/caps/a.bin";
constexpr const char* kRover = "/lab/caps/b.bin";

const char* const kBlockGpsBd2 =
    "\r\ncd \"/lab/Noise101010/a--b/GPSBD2\"\r\n"
    "OfflineProcessor_KB530.exe -c control.txt -b \"/lab/caps/a.bin\" -r \"/lab/caps/b.bin\"\r\n"
    "move ADR*.txt ..\r\nmove PSR*.txt ..\r\nmove pvt.txt ..\r\n";

ProcessorScript PairRun(const std::string& pair) {
  ProcessorScript script;
  script.pairFolder = pair;
  script.basePath = kBase;
  script.roverPath = kRover;
  return script;
}

TEST(ProcessorScript, PipelineForms) {
  ProcessorScript script = PairRun(kPair);
  script.processorName = "OfflineProcessor_KB530.exe";
  script.systemFolders = NoiseSystemFolders(board::kKB530);
  EXPECT_EQ(ProcessorScriptText(script), std::string(kBlockGpsBd2) + "exit\r\n");

  script.processorName = "OfflineProcessor.exe";
  script.systemFolders = NoiseSystemFolders(board::kKB560);
  script.selfNoise = true;
  EXPECT_EQ(ProcessorScriptText(script),
            "\r\ncd \"/lab/Noise101010/a--b/GPSGAL\"\r\n"
            "OfflineProcessor.exe -c control.txt -r \"/lab/caps/b.bin\"\r\n"
            "move ADR*.txt ..\r\nmove PSR*.txt ..\r\nmove pvt.txt ..\r\n"
            "\r\ncd \"/lab/Noise101010/a--b/BD2GLO\"\r\n"
            "OfflineProcessor.exe -c control.txt -r \"/lab/caps/b.bin\"\r\n"
            "move ADR*.txt ..\r\nmove PSR*.txt ..\r\nmove pvt.txt ..\r\n"
            "exit\r\n");

  // A drive, where a path has one, opens the script without a line end.
  script.drive = "D:";
  script.systemFolders = {};
  EXPECT_EQ(ProcessorScriptText(script), "D:exit\r\n");
}

TEST(ProcessorScript, ProductionFormsNameTheFixedProcessorAndReturnToThePair) {
  ProcessorScript script = PairRun(kPair);
  script.processorName = "OfflineProcessor_KB530.exe";  // copied under the fixed name
  script.systemFolders = MfgSystemFolders(board::kKB530);
  script.production = true;
  const std::string block =
      "\r\ncd \"/lab/Noise101010/a--b/GPSBD2\"\r\n"
      "OfflineProcessor.exe -c control.txt -b \"/lab/caps/a.bin\" -r \"/lab/caps/b.bin\"\r\n"
      "move ADR*.txt ..\r\nmove PSR*.txt ..\r\nmove pvt.txt ..\r\n";
  const std::string back = "\r\ncd  \"/lab/Noise101010/a--b\"\r\n";
  EXPECT_EQ(ProcessorScriptText(script), block + back + "exit\r\n");

  script.extraData = true;
  EXPECT_EQ(ProcessorScriptText(script),
            block + back +
                "ExtraData.exe  \"/lab/Noise101010/a--b//\" \"/lab/caps/b.bin\"\r\n"
                "exit\r\n");
}

TEST(PlotterScript, PipelineLine) {
  PlotterScript script;
  script.pairFolder = "/lab/Noise 1/a--b";
  script.plotterName = "NoisePlot_IRNSS_SBAS.exe";
  script.boardWord = "KB560";
  script.elevation = "15.00";
  script.lockTime = "5.00";
  script.cn0 = "30.00";
  script.pairNumber = 12;
  EXPECT_EQ(PlotterScriptText(script),
            "\ncd \"/lab/Noise 1/a--b\"\n"
            "NoisePlot_IRNSS_SBAS.exe \"/lab/Noise 1/a--b\"  \"KB560\" 15.00 1 5.00 30.00    12 \n"
            "exit\n");
}

TEST(PlotterScript, ProductionLineHasItsSeventeenArguments) {
  MfgPlotterScript script;
  script.pairFolder = kPair;
  script.roverPath = kRover;
  script.boardWord = "KM782V";
  script.elevation = "10.00";
  script.lockTime = "0.50";
  script.cn0 = "25.00";
  script.baseSize = "1.00000";
  script.roverSize = "0.99902";
  script.subSatNum = "10";
  script.subObsNum = "20";
  script.subMaxCno = "2";
  script.subTotalCno = "0.5";
  script.clockDrift = "3";
  script.imuState = "2";
  script.resultPath = "/lab/MFGResult_caps.txt";
  const std::string line =
      "NoisePlot.exe \"/lab/Noise101010/a--b\" \"KM782V\" 10.00 0 0.50 25.00 1.00000 0.99902 "
      "10 20 2 0.5 3 2 0 \"/lab/MFGResult_caps.txt\"   \"Tarnlog d240320_o20055\"\n";
  EXPECT_EQ(MfgPlotterScriptText(script), "\ncd \"/lab/Noise101010/a--b\"\n" + line + "exit\n");

  script.imuTools = true;
  EXPECT_EQ(MfgPlotterScriptText(script),
            "\ncd \"/lab/Noise101010/a--b\"\n"
            "IMUdataGet.exe -r /lab/caps/b.bin -c config.txt\r\n"
            "GyoaccNoiseProcessFCT.exe\r\n" +
                line + "exit\n");
}

TEST(CaptureSize, WholeKilobytesThenMegabytes) {
  const struct {
    unsigned long long bytes;
    const char* text;
  } cases[] = {
      {0, "0.00000"},
      {1023, "0.00000"},
      {1024, "0.00098"},
      {2047, "0.00098"},
      {1048575, "0.99902"},
      {1048576, "1.00000"},
      {5ULL << 30, "5120.00000"},
      {~0ULL, "17592186044416.00000"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CaptureSizeText(c.bytes), c.text) << c.bytes;
}

// The clean-up texts look at the pair folder for the kept tables, so these
// cases make one.
class CleanupText : public ::testing::Test {
 protected:
  CleanupScript Script(bool delTxt, bool delFig) const {
    CleanupScript script;
    script.pairFolder = pair_;
    script.delTxt = delTxt;
    script.delFig = delFig;
    return script;
  }
  std::string Enter(const std::string& folder) const { return "\ncd " + folder + "\n"; }
  // The "Del TXT" part with the tables it moves aside and back.
  std::string DelTxt(const std::vector<std::string>& kept) const {
    std::string aside;
    std::string back;
    for (const std::string& name : kept) {
      const std::string there = pair_ + "/" + name;
      const std::string inJpg = pair_ + "/JPG/" + name;
      aside += "copy " + there + " " + inJpg + "\n";
      back += "copy " + inJpg + " " + there + "\ndel " + inJpg + "\n";
    }
    return Enter(pair_) + aside + "del *.txt\ndel OfflineProcessor.exe\n" + back;
  }

  TempFolder dir_;
  std::string pair_ = dir_.Path();
  std::string leftBehind_ = Enter(pair_) +
                            "cd GPSGAL\ndel OfflineProcessor.exe\ncd..\n"
                            "cd BD2GLO\ndel OfflineProcessor.exe\ncd..\n"
                            "\ncd JPG\ndel *.fig\nexit\n";
};

TEST_F(CleanupText, PipelineForms) {
  const std::string delTxt = DelTxt({});
  const std::string delFig = "del NoisePlot.exe\n" + Enter(pair_ + "/JPG") + "del *.fig\n";
  EXPECT_EQ(NoiseCleanupText(Script(false, false)), leftBehind_);
  EXPECT_EQ(NoiseCleanupText(Script(true, false)), delTxt + "exit\n");
  EXPECT_EQ(NoiseCleanupText(Script(false, true)), delFig + "exit\n");
  EXPECT_EQ(NoiseCleanupText(Script(true, true)), delTxt + delFig + "exit\n");

  CleanupScript sbas = Script(false, false);
  sbas.sbasIrnss = true;
  sbas.lastExtension = ".Bin";
  const std::string sbasPart = Enter(pair_) + "del *.Bin\n";
  EXPECT_EQ(NoiseCleanupText(sbas), sbasPart + leftBehind_);
  sbas.delFig = true;
  EXPECT_EQ(NoiseCleanupText(sbas), sbasPart + delFig + "exit\n");
}

TEST_F(CleanupText, KeptTablesAreThoseThereWhenTheTextIsMade) {
  WriteBytes(pair_ + "/half_cycle.txt", "x");
  WriteBytes(pair_ + "/half_cycle_glo.txt", "x");
  ASSERT_TRUE(MakeFolder(pair_ + "/big_psr_res.txt"));  // anything of the name counts
  EXPECT_EQ(NoiseCleanupText(Script(true, false)),
            DelTxt({"half_cycle.txt", "half_cycle_glo.txt", "big_psr_res.txt"}) + "exit\n");
  RemoveFile(pair_ + "/half_cycle.txt");
  ::rmdir((pair_ + "/big_psr_res.txt").c_str());
  EXPECT_EQ(NoiseCleanupText(Script(true, false)), DelTxt({"half_cycle_glo.txt"}) + "exit\n");
}

TEST_F(CleanupText, ProductionForms) {
  const std::string start = Enter(pair_) +
                            "cd BD2GLO\ndel OfflineProcessor.exe \\s \\q\ncd ..\n"
                            "cd GPSGAL\ndel OfflineProcessor.exe \\s \\q\ncd ..\n";
  const std::string delFig = "del NoisePlot.exe\n" + Enter(pair_) + "cd JPG\\FIG\ndel *.fig\n";
  WriteBytes(pair_ + "/big_psr_res.txt", "x");
  const std::string delTxt = DelTxt({"big_psr_res.txt"});
  EXPECT_EQ(MfgCleanupText(Script(false, false)), start + leftBehind_);
  EXPECT_EQ(MfgCleanupText(Script(true, false)), start + delTxt + "exit\n");
  EXPECT_EQ(MfgCleanupText(Script(false, true)), start + delFig + "exit\n");
  EXPECT_EQ(MfgCleanupText(Script(true, true)), start + delTxt + delFig + "exit\n");
}

// The production scripts as the runner carries them out in a pair folder:
// the processor in each system folder, ExtraData.exe in the pair folder,
// then the clean-up of both flags.
TEST_F(CleanupText, ProductionScriptsRunInThePairFolder) {
  const std::string log = dir_ / "calls.log";
  const std::string pair = dir_ / "KB569--KB570";
  for (const char* folder : {"", "/GPSGAL", "/BD2GLO", "/JPG", "/JPG/FIG"})
    ASSERT_TRUE(MakeFolder(pair + folder));
  for (const char* folder : {"/GPSGAL", "/BD2GLO"})
    testing::InstallStandin(pair + folder, "OfflineProcessor.exe");
  testing::InstallStandin(pair, "ExtraData.exe");
  testing::InstallStandin(pair, "NoisePlot.exe");
  SetScriptRunnerPath(testing::ScriptRunnerBinary());
  ::setenv("TARNLOG_STANDIN_LOG", log.c_str(), 1);

  ProcessorScript run = PairRun(pair);
  run.systemFolders = MfgSystemFolders(board::kKM782);
  run.production = true;
  run.extraData = true;
  const std::string script = pair + "/Noise101010.bat";
  WriteWholeFile(script, ProcessorScriptText(run), FileMode::kText);
  RunScriptAndWait(script);
  const auto calls = testing::ReadStandinLog(log);
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[0].cwd, testing::Canonical(pair + "/GPSGAL"));
  EXPECT_EQ(calls[0].args, (std::vector<std::string>{"OfflineProcessor.exe", "-c", "control.txt",
                                                     "-b", kBase, "-r", kRover}));
  EXPECT_EQ(calls[1].cwd, testing::Canonical(pair + "/BD2GLO"));
  EXPECT_EQ(calls[2].cwd, testing::Canonical(pair));
  EXPECT_EQ(calls[2].args, (std::vector<std::string>{"ExtraData.exe", pair + "//", kRover}));

  WriteBytes(pair + "/half_cycle.txt", "kept");
  WriteBytes(pair + "/ADR1.txt", "gone");
  WriteBytes(pair + "/JPG/FIG/a.fig", "gone");
  WriteBytes(pair + "/JPG/b.fig", "kept");
  CleanupScript cleanup;
  cleanup.pairFolder = pair;
  cleanup.delTxt = cleanup.delFig = true;
  const std::string del = pair + "/Del101010.bat";
  WriteWholeFile(del, MfgCleanupText(cleanup), FileMode::kText);
  RunScriptAndWait(del);
  ::unsetenv("TARNLOG_STANDIN_LOG");
  SetScriptRunnerPath("");
  for (const char* gone : {"/GPSGAL/OfflineProcessor.exe", "/BD2GLO/OfflineProcessor.exe",
                           "/NoisePlot.exe", "/ADR1.txt", "/JPG/FIG/a.fig", "/JPG/half_cycle.txt"})
    EXPECT_FALSE(PathExists(pair + gone)) << gone;
  EXPECT_EQ(FileBytes(pair + "/half_cycle.txt"), "kept");
  EXPECT_EQ(FileBytes(pair + "/JPG/b.fig"), "kept");
}

}  // namespace
}  // namespace tarnlog
