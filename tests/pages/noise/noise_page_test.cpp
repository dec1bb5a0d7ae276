#include "pages/noise/noise_page.h"

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
using testing::FileBytes;

// The stand-in tools of a noise run, by the names the page copies.
constexpr const char* kNoiseTools[] = {"NoisePlot.exe",           "OfflineProcessor.exe",
                                       "OfflineProcessor_L5.exe", "ExtraData.exe",
                                       "IMUdataGet.exe",          "GyoaccNoiseProcessFCT.exe"};

// A start folder with the noise tools as stand-ins and a folder of captures
// (a real log with one observation epoch, week 1687 second 420261).
class NoisePageTest : public testing::StartFolderFixture {
 protected:
  NoisePageTest() : StartFolderFixture("Roof,31.5,121.25,10\r\nPier,30,120,5\r\n") {
    MakeFolder(start_ + "/EXE");
    for (const char* tool : kNoiseTools)
      testing::InstallStandin(start_ + "/EXE", tool);
    MakeFolder(captures_);
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    setenv("TARNLOG_STANDIN_LOG", (start_ + "/calls.log").c_str(), 1);
    setenv("TARNLOG_STANDIN_SLEEP_MS", "0", 1);
  }
  ~NoisePageTest() override {
    for (const char* name : {"TARNLOG_STANDIN_LOG", "TARNLOG_STANDIN_SLEEP_MS",
                             "TARNLOG_STANDIN_CREATE", "TARNLOG_STANDIN_APPEND"})
      unsetenv(name);
    SetScriptRunnerPath("");
  }

  GenNoise& Start() {
    GenNoise& page = *StartDialog().noisePage;
    page.startSpacing = std::chrono::milliseconds(0);
    return page;
  }
  std::string Capture(const std::string& name) {
    const std::string path = captures_ + "/" + name;
    CopyFileReplacing(testing::SourceDir() + "/tests/data/OnceEachAgain.ASC", path);
    return path;
  }
  void Select(GenNoise& page, std::vector<int> rows) {
    page.binaryFiles.selectedRows = std::move(rows);
    page.OnBinaryListDoubleClick();
    page.binaryFiles.selectedRows.clear();
  }
  std::vector<testing::StandinCall> Calls() const {
    return testing::ReadStandinLog(start_ + "/calls.log");
  }
  static Names CallNames(const std::vector<testing::StandinCall>& calls) {
    Names names;
    for (const auto& call : calls)
      names.push_back(call.name);
    return names;
  }

  // The run's output folder: the tag is renewed by Process.
  std::string Output() const {
    const std::vector<FolderEntry> found = ListMatching(captures_, "Noise*");
    return found.size() == 1 ? captures_ + "/" + found[0].name : "<none>";
  }
  std::string Tag() const { return Output().substr(Output().size() - 6); }

  const std::string captures_ = start_ + "/caps";
};

TEST_F(NoisePageTest, WithoutThePlotterNothingIsSetUp) {
  RemoveFile(start_ + "/EXE/NoisePlot.exe");
  GenNoise& page = *StartDialog().noisePage;
  EXPECT_EQ(host_.MessageTexts(), Names{std::string(kNoisePlotterMissing)});
  EXPECT_TRUE(page.boardType.entries.empty());
  EXPECT_TRUE(page.refCoor.entries.empty());
  EXPECT_EQ(page.elevation.text, "");
}

TEST_F(NoisePageTest, DefaultsAndRealValues) {
  GenNoise& page = Start();
  EXPECT_TRUE(host_.messages.empty());
  EXPECT_EQ(page.boardType.entries.size(), 33u);
  EXPECT_EQ(page.boardType.entries[32], "KMD782");
  EXPECT_EQ(page.noiseType.entries, (Names{"ALL", "L2C", "L2P", "L5", "KB530"}));
  EXPECT_EQ(page.elevation.text, "5");
  EXPECT_EQ(page.lockTime.text, "-10");
  EXPECT_EQ(page.cn0.text, "20");
  EXPECT_EQ(page.interval.text, "10");
  EXPECT_EQ(page.subTotalCno.text, "0.5");
  EXPECT_EQ(page.refCoor.entries, (Names{"Roof", "Pier"}));
  EXPECT_EQ(page.refCoordinates.latitude.text, "31.5");

  // RefCoor fills both sets and moves InitCoor along; InitCoor only itself.
  page.refCoor.Choose(1);
  EXPECT_EQ(page.initCoor.selected, 1);
  EXPECT_EQ(page.initCoordinates.longitude.text, "120");
  page.initCoor.Choose(0);
  EXPECT_EQ(page.initCoordinates.longitude.text, "121.25");
  EXPECT_EQ(page.refCoordinates.longitude.text, "120");

  // Choosing the tab puts both lists back on entry 0, values as they were.
  page.RefreshOnTabChoice();
  EXPECT_EQ(page.refCoor.selected, 0);
  EXPECT_EQ(page.refCoordinates.longitude.text, "120");

  page.brR.Click();
  page.rhR.Click();
  EXPECT_FALSE(page.brR.checked);
  page.rhR.Click();
  EXPECT_FALSE(page.rhR.checked);
  EXPECT_FALSE(page.brR.checked);
}

TEST_F(NoisePageTest, BoardSelectionSuffixesAndTheDoubledName) {
  GenNoise& page = Start();
  page.AddBinaryFile("/d/a.bin");
  EXPECT_EQ(page.binaryFiles.rows[0], (Names{"1", "a-KB560"}));

  struct Case {
    int board;
    const char* shown;
    int stored;
    int noiseType;
    const char* clockDrift;
  };
  const Case cases[] = {
      {4, "b-KB560", 0, 3, "1"},    {1, "b-KB530", 1, 0, "1"}, {14, "b-KM680", 14, 0, "3"},
      {18, "b-KM682D", 18, 0, "3"}, {20, "bb", 0, 0, "1"},     {32, "bb", 0, 0, "1"},
  };
  page.AddBinaryFile("/d/b.bin");
  for (const Case& c : cases) {
    page.noiseType.Select(2);
    page.boardType.Choose(c.board);
    EXPECT_EQ(page.binaryFiles.rows[1][1], c.shown) << c.board;
    EXPECT_EQ(page.BinaryRows()[1].board, c.stored) << c.board;
    EXPECT_EQ(page.noiseType.selected, c.board > 18 ? 2 : c.noiseType) << c.board;
    EXPECT_EQ(page.clockDrift.text, c.clockDrift) << c.board;
  }
  // A selected row takes the choice; the doubled name is that of the last
  // file added.
  page.binaryFiles.selectedRows = {0};
  page.boardType.Choose(21);
  EXPECT_EQ(page.binaryFiles.rows[0][1], "ab");

  // The list holds 17 files.
  for (int i = 0; i < 20; ++i)
    page.AddBinaryFile("/d/x" + std::to_string(i) + ".bin");
  EXPECT_EQ(page.BinaryCount(), 17);
  EXPECT_EQ(page.binaryFiles.rows.size(), 17u);
}

TEST_F(NoisePageTest, FormingPairs) {
  GenNoise& page = Start();
  for (const char* path : {"/d/a.bin", "/d/b.bin", "/e/a.bin", "/d/c.bin"})
    page.AddBinaryFile(path);

  Select(page, {});
  EXPECT_EQ(host_.MessageTexts(), Names{"No item was selected!"});

  Select(page, {0, 1});
  EXPECT_EQ(page.ddFiles.rows, (std::vector<Names>{{"1", "a-b"}}));
  EXPECT_EQ(page.Pairs()[0].name, "a-b");

  // Two files of one name in different folders count as the same file: the
  // pair stays open with its first member, and the next choice completes it.
  Select(page, {0});
  Select(page, {2});
  EXPECT_EQ(host_.MessageTexts().back(), "You could not select the same file");
  EXPECT_EQ(page.SelectionCount(), 3);
  Select(page, {3});
  EXPECT_EQ(page.ddFiles.rows[1], (Names{"2", "a-c"}));
  EXPECT_EQ(page.Selections()[3], 3);

  // Three rows at once: a pair and an open member, and no same-file check.
  Select(page, {1, 0, 3});
  EXPECT_EQ(page.SelectionCount(), 7);
  EXPECT_EQ(page.ddFiles.rows[2], (Names{"3", "a"}));
  EXPECT_EQ(page.ddFiles.rows[3], (Names{"4", "c"}));

  // 32 pairs at most.
  for (int i = 0; i < 40; ++i)
    Select(page, {i % 2, 3});
  EXPECT_EQ(page.SelectionCount(), 64);
  EXPECT_EQ(page.ddFiles.rows.size(), 32u);
}

TEST_F(NoisePageTest, Deletions) {
  GenNoise& page = Start();
  page.DeleteOneBinary();
  page.DeleteOneDD();
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"Please Choose Binary File Firstly!", "Please Set DD Files Firstly!"}));

  page.AddBinaryFile("/d/a.bin");
  page.boardType.Choose(1);
  page.AddBinaryFile("/d/b.bin");
  page.boardType.Choose(3);
  page.AddBinaryFile("/d/c.bin");
  page.DeleteOneBinary();
  EXPECT_EQ(host_.MessageTexts().back(), "No item was selected!");
  page.binaryFiles.selected = 0;
  page.DeleteOneBinary();
  EXPECT_EQ(page.binaryFiles.rows, (std::vector<Names>{{"1", "b-KB541"}, {"2", "c-KB541"}}));
  EXPECT_EQ(page.BinaryRows()[0].path, "/d/b.bin");
  // The board indices stay where they were.
  EXPECT_EQ(page.BinaryRows()[0].board, 1);
  EXPECT_EQ(page.BinaryRows()[1].board, 3);

  Select(page, {0, 1});
  Select(page, {1});
  Select(page, {0});
  page.ddFiles.selected = 0;
  page.DeleteOneDD();
  EXPECT_EQ(page.ddFiles.rows, (std::vector<Names>{{"1", "c-b"}}));
  EXPECT_EQ(page.SelectionCount(), 2);
  page.ddFiles.selected = 0;
  page.DeleteOneDD();
  EXPECT_TRUE(page.ddFiles.rows.empty());
  EXPECT_EQ(page.SelectionCount(), 0);
  EXPECT_EQ(page.Pairs()[0].name, "");
}

TEST_F(NoisePageTest, ProcessChecksInOrder) {
  GenNoise& page = Start();
  page.Process();
  page.AddBinaryFile(Capture("a.bin"));
  struct Case {
    const char* gps;
    const char* glo;
    const char* bd2;
    const char* message;
  };
  const Case cases[] = {
      {"33", "0", "0", "Please Check GPS Ref PRN , 1~37"},
      {"-1", "0", "0", "Please Check GPS Ref PRN , 1~37"},
      {"32", "37", "0", "Please Check GLONASS PRN, 38~69"},
      {"1", "62", "0", "Please Check GLONASS PRN, 38~69"},
      {"0", "61", "224", "Please Check BD2 Ref PRN, 161-223"},
      {"0", "38", "160", "Please Check BD2 Ref PRN, 161-223"},
      {"32", "61", "223", "Please Set DD Files Firstly!"},
  };
  for (const Case& c : cases) {
    page.gpsPrn.text = c.gps;
    page.gloPrn.text = c.glo;
    page.bd2Prn.text = c.bd2;
    page.Process();
    EXPECT_EQ(host_.MessageTexts().back(), c.message) << c.gps << c.glo << c.bd2;
  }
  EXPECT_EQ(host_.MessageTexts().front(), "Please Choose Binary File Firstly!");
  EXPECT_EQ(Output(), "<none>");

  // xyz turns the RefCoor triple into degrees before the checks.
  page.refCoordinates.latitude.text = "-2853445.926";
  page.refCoordinates.longitude.text = "4667466.476";
  page.refCoordinates.height.text = "3268291.272";
  page.refXyz.checked = true;
  page.initXyz.checked = true;
  page.Process();
  EXPECT_EQ(page.refCoordinates.latitude.text.substr(0, 7), "31.0250");
  EXPECT_EQ(page.refCoordinates.longitude.text.substr(0, 7), "121.439");
  EXPECT_EQ(page.initCoordinates.latitude.text, "31.5");
}

// Two pairs of a two-folder board: every processor starts before the first
// ends, each plotter follows its own processor, and with both clean-up
// flags off Del<tag>.bat is left unrun.
TEST_F(NoisePageTest, PairsRunTheirProcessorsTogetherAndPlotEachAsItEnds) {
  GenNoise& page = Start();
  page.AddBinaryFile(Capture("base.bin"));
  page.AddBinaryFile(Capture("rov1.bin"));
  page.AddBinaryFile(Capture("rov2.bin"));
  Select(page, {0, 1});
  Select(page, {0, 2});
  page.startSpacing = std::chrono::milliseconds(100);
  setenv("TARNLOG_STANDIN_SLEEP_MS", "600", 1);
  page.Process();

  const std::string pair1 = Output() + "/base-rov1";
  const std::string pair2 = Output() + "/base-rov2";
  EXPECT_EQ(FileBytes(pair1 + "/GPSGAL/control.txt"),
            "SetRefCoor 31.500000000 121.250000000 10.000000\r\n"
            "SetMatchedInterval 10\r\nSetEleMask 5.000000\r\nSetElECNO 20.000000\r\n"
            "SetUseGloInRTK false\r\nSetUseBD2InRTK false\r\nSETRECEIVERTYPE KESTRIX\r\n");
  EXPECT_NE(FileBytes(pair2 + "/BD2GLO/OfflineProcessor.exe"), "<missing>");
  EXPECT_NE(FileBytes(pair1 + "/NoisePlot.exe"), "<missing>");
  EXPECT_NE(FileBytes(pair1 + "/Del" + Tag() + ".bat"), "<missing>");
  EXPECT_NE(FileBytes(pair1 + "/Noise" + Tag() + ".bat"), "<missing>");

  const std::vector<testing::StandinCall> calls = Calls();
  ASSERT_EQ(CallNames(calls),
            (Names{"OfflineProcessor.exe", "OfflineProcessor.exe", "OfflineProcessor.exe",
                   "OfflineProcessor.exe", "NoisePlot.exe", "NoisePlot.exe"}))
      << FileBytes(start_ + "/calls.log");
  std::vector<testing::StandinCall> processors(calls.begin(), calls.begin() + 4);
  std::sort(processors.begin(), processors.end(),
            [](const auto& a, const auto& b) { return a.startNs < b.startNs; });
  EXPECT_EQ(processors[0].cwd, testing::Canonical(pair1 + "/GPSGAL"));
  EXPECT_EQ(processors[0].args, (Names{"OfflineProcessor.exe", "-c", "control.txt", "-b",
                                       captures_ + "/base.bin", "-r", captures_ + "/rov1.bin"}));
  // The second pair's processor starts while the first pair's still runs.
  EXPECT_LT(processors[1].startNs, processors[0].endNs);
  const auto& plot1 = calls[4].cwd == testing::Canonical(pair1) ? calls[4] : calls[5];
  EXPECT_EQ(plot1.args,
            (Names{"NoisePlot.exe", pair1, "KM360", "5.00", "1", "-10.00", "20.00", "1"}));
  for (const auto& processor : processors) {
    if (processor.cwd.rfind(testing::Canonical(pair1), 0) == 0) {
      EXPECT_GE(plot1.startNs, processor.endNs);
    }
  }
  // The run ends cleared.
  EXPECT_EQ(page.BinaryCount(), 0);
  EXPECT_EQ(host_.Status(), "Status: Finished");
  EXPECT_TRUE(page.process.enabled);
}

// Self-noise of three files: a folder named after each, the -r form, and
// with "OnlyTXT" no plotter and no clean-up.
TEST_F(NoisePageTest, SelfNoiseWithOnlyTxt) {
  GenNoise& page = Start();
  page.boardType.Choose(1);
  for (const char* name : {"a.bin", "b.bin", "c.bin"})
    page.AddBinaryFile(Capture(name));
  page.rhR.Click();
  page.onlyTxt.checked = true;
  page.Process();

  for (const char* name : {"a", "b", "c"}) {
    const std::string pair = Output() + "/" + name;
    EXPECT_EQ(FileBytes(pair + "/Noise" + Tag() + ".bat"),
              "\r\r\ncd \"" + pair + "/GPSBD2\"\r\r\nOfflineProcessor.exe -c control.txt -r \"" +
                  captures_ + "/" + name +
                  ".bin\"\r\r\nmove ADR*.txt ..\r\r\nmove PSR*.txt ..\r\r\nmove pvt.txt "
                  "..\r\r\nexit\r\r\n");
    EXPECT_NE(FileBytes(pair + "/NoisePlot" + Tag() + ".bat"), "<missing>");
    EXPECT_EQ(FileBytes(pair + "/Del" + Tag() + ".bat"), "<missing>");
    EXPECT_NE(FileBytes(pair + "/GPSBD2/control.txt").find("SETRANGEH\r\n"), std::string::npos);
  }
  EXPECT_EQ(CallNames(Calls()), Names(3, "OfflineProcessor.exe"));
  EXPECT_FALSE(page.rhR.checked);
}

// "Time" on: the start comes from the pair's rover; the end an hour on.
TEST_F(NoisePageTest, TimeFromTheRover) {
  GenNoise& page = Start();
  page.boardType.Choose(6);
  page.AddBinaryFile(Capture("a.bin"));
  testing::WriteBytes(captures_ + "/b.bin", "");
  page.AddBinaryFile(captures_ + "/b.bin");
  Select(page, {1});
  Select(page, {0});
  page.timeFromRover.checked = true;
  page.scene.Select(1);
  page.delTxt.checked = true;
  page.Process();
  EXPECT_EQ(FileBytes(Output() + "/b-a/GPSGLO/control.txt"),
            "SetMatchedInterval 10\r\nSetEleMask 5.000000\r\nSetElECNO 20.000000\r\n"
            "SetStartTime 1687 420261.000000\r\nSetEndTime 1687 423861.000000\r\n"
            "SetUseBD2InRTK false\r\nSetUseGalInRTK false\r\nSETRECEIVERTYPE KESTRIX\r\n");
  EXPECT_EQ(page.startWeek.text, "1687");
  // "Del TXT" removed the processor script and ran the clean-up.
  EXPECT_EQ(FileBytes(Output() + "/b-a/Noise101010.bat"), "<missing>");
  EXPECT_EQ(FileBytes(Output() + "/b-a/Del101010.bat"), "<missing>");
}

// The production run over a folder: the ring of three captures, one after
// the other, with the plotter's 17 arguments.
TEST_F(NoisePageTest, ProductionRingOfThree) {
  GenNoise& page = Start();
  for (const char* name : {"c.bin", "a.log", "b.BIN", "notes.txt"})
    Capture(name);
  page.mfgFolder.text = captures_ + "/";
  page.MFGProcess();

  const std::vector<testing::StandinCall> calls = Calls();
  Names folders;
  for (const auto& call : calls) {
    if (call.name == "NoisePlot.exe") folders.push_back(call.args[1]);
  }
  EXPECT_EQ(folders, (Names{Output() + "/a--b", Output() + "/b--c", Output() + "/c--a"}));
  const auto plot = std::find_if(calls.begin(), calls.end(),
                                 [](const auto& c) { return c.name == "NoisePlot.exe"; });
  ASSERT_NE(plot, calls.end());
  EXPECT_EQ(plot->args, (Names{"NoisePlot.exe", Output() + "/a--b", "KB560", "5.00", "0", "-10.00",
                               "20.00", "0.02246", "0.02246", "10", "20", "2", "0.5", "1", "0", "0",
                               captures_ + "/MFGResult_caps.txt", "Tarnlog d240320_o20055"}));
  // Production control files start at the capture's first epoch.
  EXPECT_NE(FileBytes(Output() + "/a--b/GPSGAL/control.txt")
                .find("SetStartTime 1687 420261.000000\r\nSetEndTime 1687 423861.000000\r\n"),
            std::string::npos);
  EXPECT_FALSE(page.MfgFlag());
  EXPECT_EQ(host_.Status(), "Status: Finished");
}

TEST_F(NoisePageTest, ProductionCountsAndPairsOfTwo) {
  GenNoise& page = Start();
  page.mfgFolder.text = captures_;
  page.MFGProcess();
  Capture("a.bin");
  page.MFGProcess();
  EXPECT_EQ(host_.MessageTexts(),
            (Names{"No binary files in the choosing folder, please check the path!",
                   "Only 1 binary file in the choosing folder, make sure more than 2!"}));
  // A refusal at the count leaves the production flag on.
  EXPECT_TRUE(page.MfgFlag());

  // Two captures of a dual board: one pair, run twice, then the verdict.
  Capture("b.bin");
  page.boardType.Choose(8);
  setenv("TARNLOG_STANDIN_APPEND", "NoisePlot.exe:16:1,{rover},Yes,", 1);
  page.MFGProcess();
  Names folders;
  for (const auto& call : Calls())
    if (call.name == "NoisePlot.exe") folders.push_back(call.args[1]);
  EXPECT_EQ(folders, (Names{Output() + "/a--b", Output() + "/a--b--H"}));
  EXPECT_EQ(FileBytes(captures_ + "/MFGResult_caps.txt"),
            "1,b,Yes,\n1,b,Yes,\n***********b,Yes,**************\r\n");
}

TEST_F(NoisePageTest, ProductionTakesAHundredCapturesAndRefusesMore) {
  GenNoise& page = Start();
  for (int i = 0; i < 101; ++i)
    testing::WriteBytes(captures_ + "/c" + std::to_string(1000 + i) + ".bin", "");
  page.mfgFolder.text = captures_;
  page.MFGProcess();
  EXPECT_EQ(host_.MessageTexts(), Names{"Make sure no more than 100 binary files in the path!"});
  RemoveFile(captures_ + "/c1100.bin");
  page.MFGProcess();
  EXPECT_EQ(host_.messages.size(), 1u);
  // Every ring step ran the processor in both system folders, then the
  // plotter.
  EXPECT_EQ(Calls().size(), 300u);
}

// With a golden file a dual board runs each other capture against it, the
// RANGEH run second; "OnlyRH" is off again afterwards.
TEST_F(NoisePageTest, ProductionGoldenPairingForADualBoard) {
  GenNoise& page = Start();
  for (const char* name : {"gold.bin", "a.bin", "b.bin"})
    Capture(name);
  page.mfgFolder.text = captures_;
  page.goldenFile.text = captures_ + "/gold.bin";
  page.boardType.Choose(20);
  page.MFGProcess();
  Names folders;
  for (const auto& call : Calls())
    if (call.name == "NoisePlot.exe") folders.push_back(call.args[1]);
  EXPECT_EQ(folders, (Names{Output() + "/gold--a", Output() + "/gold--a--H", Output() + "/gold--b",
                            Output() + "/gold--b--H"}));
  EXPECT_FALSE(page.onlyRh.checked);
}

}  // namespace
}  // namespace tarnlog
