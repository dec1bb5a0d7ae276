#include "pages/static/static_run.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace tarnlog {
namespace {

TEST(ResultFolderTest, FirstMatchingRowOfTheTable) {
  struct Case {
    const char* heldRoot;
    const char* typed;
    const char* changePath;
    const char* word;
    bool ppp;
    const char* folder;
  };
  const Case cases[] = {
      {"", "", "", "RTKStatic", false, "/logs//RTKStatic140512"},
      {"", "", "", "Ephema", true, "/logs//Ephema140512_PPP"},
      {"", "", "roof", "RTKStatic", true, "/logs//Static_roof"},
      {"/res", "/typed", "roof", "RTKStatic", true, "/res/RTKStatic140512_PPP"},
      {"/res/a/res/b", "", "", "Ephema", false, "/res/a/res/b/Ephema140512"},
      {"", "/typed", "roof", "RTKStatic", false, "/typedRTKStatic140512"},
      {"", "/typed", "", "Ephema", true, "/typed/Ephema140512_PPP"},
      {"", "/typed", "", "CompareEphem", false, "/typed/CompareEphem140512"},
  };
  for (const Case& c : cases) {
    ResultFolderChoice choice{c.heldRoot, c.typed, c.changePath, "/logs/", c.word, "140512", c.ppp};
    EXPECT_EQ(ResultFolder(choice), c.folder) << c.heldRoot << "|" << c.typed << "|" << c.word;
  }
}

StaticRun RunWith(bool copy, bool delTxt, bool delFig) {
  StaticRun run;
  run.stamp = "091500";
  run.extension = ".log";
  run.analyserPath = "/lab/EXE/llherroRTK_M.exe";
  run.copyFiles = copy;
  run.deleteTables = delTxt;
  run.deleteFigures = delFig;
  return run;
}

StaticFileSlot FileIn(const char* outputFolder, int board, int process) {
  StaticFileSlot file;
  file.name = "rover";
  file.outputFolder = outputFolder;
  file.board = board;
  file.process = process;
  return file;
}

TEST(StaticScriptTest, PlotScriptByProcessAndReportIndex) {
  const StaticRun run = RunWith(false, false, false);
  EXPECT_EQ(PlotScriptText(run, FileIn("/r/S/rover", 0, 0), 0),
            "\ncd \"/r/S/rover\"\n\"/lab/EXE/llherroRTK_M.exe\"  \"/r/S/rover\" JPG  "
            "realvalue.txt 0 0 0\nexit\n");
  EXPECT_EQ(PlotScriptText(run, FileIn("/r/S/rover", 6, 3), 2),
            "\ncd \"/r/S/rover\"\n\"/lab/EXE/llherroRTK_M.exe\"  \"/r/S/rover\" JPG  "
            "realvalue.txt 6 3 2\nexit\n");
  // Ephemeris mode: the analyser unquoted and the single number 5.
  EXPECT_EQ(PlotScriptText(run, FileIn("/r/E/rover", 1, 1), 4),
            "\ncd \"/r/E/rover\"\n/lab/EXE/llherroRTK_M.exe  \"/r/E/rover\" JPG  realvalue.txt "
            "5\nexit\n");
  EXPECT_EQ(PlotScriptPath(run, FileIn("/r/S/rover", 0, 0)), "/r/S/rover/RTKSPlot091500.bat");
}

TEST(StaticScriptTest, CleanupScriptForEveryFlagCombination) {
  const StaticFileSlot file = FileIn("/r/S/rover", 0, 0);
  const std::string enter = "\ncd /r/S/rover\n";
  const std::string figures = "del llherroRTK_M.exe\n\ncd rover\\FIG\ndel *.fig\n";
  struct Case {
    bool copy, delTxt, delFig;
    std::string text;
  };
  const Case cases[] = {
      {false, false, false, enter + figures + "exit\n"},
      {false, true, false, enter + "del *.txt\nexit\n"},
      {false, false, true, figures + "exit\n"},
      {false, true, true, enter + "del *.txt\n" + figures + "exit\n"},
      {true, false, false, enter + "del *.log\n" + enter + figures + "exit\n"},
      {true, true, true, enter + "del *.log\n" + enter + "del *.txt\n" + figures + "exit\n"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CleanupScriptText(RunWith(c.copy, c.delTxt, c.delFig), file), c.text)
        << c.copy << c.delTxt << c.delFig;
  }
}

TEST(StaticScriptTest, ExtractionVectorsByProcess) {
  struct Case {
    int process;
    int count;
    std::vector<std::string> tail;
  };
  const Case cases[] = {
      {0, 125, {"-Sa", "RTK.txt", "-GS"}},
      {1, 9, {"-EB", "bd2ephema.txt", "-EL", "gloephemerisa.txt"}},
      {3, 11, {"psrpos.txt", "-RP", "rtkpos.txt"}},
      {4, 9, {"gngga.txt", "-EV", "event.txt"}},
  };
  for (const Case& c : cases) {
    const ExtractionArguments arguments = ExtractionArgumentsFor(c.process, "/out", "/in.log");
    EXPECT_EQ(arguments.count, c.count);
    ASSERT_GE(arguments.texts.size(), 3u);
    EXPECT_EQ(arguments.texts[0], "/out");
    EXPECT_EQ(arguments.texts[2], "/in.log");
    const std::vector<std::string> tail(arguments.texts.begin() + arguments.count - c.tail.size(),
                                        arguments.texts.begin() + arguments.count);
    EXPECT_EQ(tail, c.tail) << c.process;
  }
}

TEST(StaticScriptTest, RealValueFileElevenDecimalsTextOrNineBinary) {
  testing::TempFolder folder;
  const Coordinates master{31.123456789012, -121.5, 12.25};
  const Coordinates slave{-0.5, 0.25, -3.0000004};
  WriteRealValueFile(folder.Path(), master, slave, false);
  EXPECT_EQ(testing::FileBytes(folder / "realvalue.txt"),
            "31.12345678901,-121.50000000000,12.250000\r\n"
            "-0.50000000000,0.25000000000,-3.000000\r\n");
  WriteRealValueFile(folder.Path(), master, slave, true);
  EXPECT_EQ(testing::FileBytes(folder / "realvalue.txt"),
            "31.123456789,-121.500000000,12.250000\n-0.500000000,0.250000000,-3.000000\n");
}

}  // namespace
}  // namespace tarnlog
