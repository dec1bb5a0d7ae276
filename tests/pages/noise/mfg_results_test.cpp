#include "pages/noise/mfg_results.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "pages/noise/noise_scripts.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/processes.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::TempFolder;
using testing::WriteBytes;

constexpr const char* kRover = "/lab/MFG/Noise101010/KB569--KB570/KB570.bin";

std::string Verdict(const std::string& name, const std::string& word) {
  return "***********" + name + "," + word + ",**************\r\n";
}

TEST(WriteVerdict, RulesOfTheLastTwoRows) {
  const std::string longTail(3000, 'x');
  const struct {
    const char* what;
    std::string rows;
    std::string added;
  } cases[] = {
      {"both NG", "1,KB570,NG,a\n2,KB570,NG,b\n", Verdict("KB570", "NG")},
      {"both Yes", "1,KB570,Yes,\n2,KB570,Yes,\n", Verdict("KB570", "Yes")},
      {"Yes then NG", "1,KB570,Yes,\n2,KB570,NG,\n", Verdict("KB570", "No")},
      {"NG then Yes", "1,KB570,NG,\n2,KB570,Yes,\n", Verdict("KB570", "No")},
      {"neither", "1,KB570,OK,\n2,KB570,OK,\n", Verdict("KB570", "No")},
      {"only the last two count", "1,KB570,NG,\n2,KB570,Yes,\n3,KB570,Yes,\n",
       Verdict("KB570", "Yes")},
      {"the name is the last row's", "1,KB570,Yes,\n2,KB5,Yes,\n", Verdict("KB5", "Yes")},
      {"contained in the rover path", "1,KB5,NG,\n2,KB5,NG,\n", Verdict("KB5", "NG")},
      {"CRLF rows", "1,KB570,NG,\r\n2,KB570,NG,\r\n", Verdict("KB570", "NG")},
      {"no comma after the third field", "1,KB570,Yes\n2,KB570,Yes", Verdict("KB570", "Yes")},
      // An overlong row counts as one line, read as far as 1023 bytes.
      {"overlong last row", "1,KB570,NG,\n2,KB570,NG" + longTail + "\n", Verdict("KB570", "NG")},
      {"previous row names another board", "1,KB571,NG,\n2,KB570,NG,\n", ""},
      {"last row names another board", "1,KB570,NG,\n2,KB571,NG,\n", ""},
      {"one row", "1,KB570,NG,\n", ""},
      {"no rows", "", ""},
      {"two fields", "1,KB570,NG,\n2,KB570\n", ""},
      {"an empty field", "1,KB570,NG,\n2,,NG,\n", ""},
      {"a blank last line", "1,KB570,NG,\n2,KB570,NG,\n\n", ""},
      {"overlong name", "1,KB570,NG,\n2," + longTail + ",NG,\n", ""},
  };
  for (const auto& c : cases) {
    TempFolder dir;
    const std::string result = dir / "MFGResult_MFG.txt";
    WriteBytes(result, c.rows);
    WriteVerdict(result.c_str(), "MFG", kRover);
    EXPECT_EQ(FileBytes(result), c.rows + c.added) << c.what;
  }
}

TEST(WriteVerdict, WithoutArgumentsOrFileNothingHappens) {
  TempFolder dir;
  const std::string result = dir / "MFGResult_MFG.txt";
  const std::string rows = "1,KB570,NG,\n2,KB570,NG,\n";
  WriteBytes(result, rows);
  WriteVerdict(nullptr, "MFG", kRover);
  WriteVerdict(result.c_str(), nullptr, kRover);
  WriteVerdict(result.c_str(), "", kRover);
  WriteVerdict(result.c_str(), "MFG", nullptr);
  WriteVerdict(result.c_str(), "MFG", "");
  WriteVerdict("", "MFG", kRover);
  EXPECT_EQ(FileBytes(result), rows);

  WriteVerdict((dir / "absent.txt").c_str(), "MFG", kRover);
  EXPECT_FALSE(PathExists(dir / "absent.txt"));
  ASSERT_TRUE(MakeFolder(dir / "folder.txt"));
  WriteVerdict((dir / "folder.txt").c_str(), "MFG", kRover);
}

// The production plotter adds its row to the result file; a dual board's two
// runs of a pair, then the verdict, as the production test goes.
TEST(WriteVerdict, RowsOfThePlotterRunsThenTheVerdict) {
  TempFolder dir;
  const std::string result = dir / "MFGResult_MFG.txt";
  SetScriptRunnerPath(testing::ScriptRunnerBinary());
  ::setenv("TARNLOG_STANDIN_APPEND", "NoisePlot.exe:16:7,{rover},Yes,0.3", 1);
  ::setenv("TARNLOG_STANDIN_LOG", (dir / "calls.log").c_str(), 1);
  for (const char* name : {"KB569--KB570", "KB569--KB570--H"}) {
    const std::string pair = dir / name;
    ASSERT_TRUE(MakeFolder(pair));
    testing::InstallStandin(pair, "NoisePlot.exe");
    MfgPlotterScript plot;
    plot.pairFolder = pair;
    plot.boardWord = "KM782";
    plot.elevation = plot.lockTime = plot.cn0 = "1.00";
    plot.baseSize = plot.roverSize = "0.50000";
    plot.subSatNum = plot.subObsNum = plot.subMaxCno = plot.subTotalCno = plot.clockDrift = "1";
    plot.imuState = "0";
    plot.resultPath = result;
    const std::string script = pair + "/NoisePlot101010.bat";
    WriteWholeFile(script, MfgPlotterScriptText(plot), FileMode::kText);
    RunScriptAndWait(script);
  }
  ::unsetenv("TARNLOG_STANDIN_APPEND");
  ::unsetenv("TARNLOG_STANDIN_LOG");
  SetScriptRunnerPath("");

  const auto calls = testing::ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 2u);
  ASSERT_EQ(calls[0].args.size(), 18u);
  EXPECT_EQ(calls[0].args[17], "Tarnlog d240320_o20055");
  WriteVerdict(result.c_str(), "MFG", (dir / "KB570.bin").c_str());
  EXPECT_EQ(FileBytes(result), "7,KB570,Yes,0.3\n7,KB570,Yes,0.3\n" + Verdict("KB570", "Yes"));
}

class TrimTables : public ::testing::Test {
 protected:
  bool Trim(bool onlyTxt) {
    return TrimResultTableFiles(dir_.Path(), onlyTxt,
                                [this](std::string_view text) { messages_.emplace_back(text); });
  }
  // Lines of the given lengths, each with the line end.
  static std::string Lines(const std::vector<std::size_t>& lengths, const char* end = "\n") {
    std::string text;
    for (std::size_t length : lengths)
      text += std::string(length, 'a') + end;
    return text;
  }

  TempFolder dir_;
  std::vector<std::string> messages_;
};

TEST_F(TrimTables, LinesOfAnotherLengthThanTheSecondGo) {
  const struct {
    const char* what;
    std::string before;
    std::string after;
  } cases[] = {
      {"short and long", "aaa\nbbb\ncc\nddd\neeee\nfff\n", "aaa\r\nbbb\r\nddd\r\nfff\r\n"},
      {"CRLF counts as one end", "aaa\r\nbbb\r\nc\r\nddd\r\n", "aaa\r\nbbb\r\nddd\r\n"},
      {"a last line without end", "aaa\nbbb\nccc", "aaa\r\nbbb\r\n"},
      {"all alike stay as they are", "aaa\nbbb\nccc\n", "aaa\nbbb\nccc\n"},
      {"one line", "aaaaaaa\n", "aaaaaaa\n"},
      {"empty", "", ""},
      // Lengths count at most 1024 bytes, the line end included.
      {"lengths are capped", Lines({1500, 2000, 1023, 1100, 1022}),
       Lines({1500, 2000, 1023, 1100}, "\r\n")},
  };
  for (const auto& c : cases) {
    WriteBytes(dir_ / "ADR1.txt", c.before);
    EXPECT_TRUE(Trim(false)) << c.what;
    EXPECT_EQ(FileBytes(dir_ / "ADR1.txt"), c.after) << c.what;
  }
  EXPECT_TRUE(messages_.empty());
  EXPECT_FALSE(PathExists(dir_ / "instead.txt"));
}

TEST_F(TrimTables, OnlyTxtTakesTheLastLine) {
  WriteBytes(dir_ / "a.txt", "aaa\nbbb\ncccc\nddd\n");
  WriteBytes(dir_ / "b.txt", "aaa\n");
  EXPECT_TRUE(Trim(true));
  EXPECT_EQ(FileBytes(dir_ / "a.txt"), "aaa\r\nbbb\r\ncccc\r\n");
  EXPECT_EQ(FileBytes(dir_ / "b.txt"), "aaa\n");
  EXPECT_TRUE(messages_.empty());
}

TEST_F(TrimTables, FirstTwoLinesDifferingLeaveTheTable) {
  WriteBytes(dir_ / "a.txt", "header\nbbb\nc\n");
  for (bool onlyTxt : {false, true}) {
    messages_.clear();
    WriteBytes(dir_ / "b.TXT", "aaa\nbbb\nc\n");
    EXPECT_TRUE(Trim(onlyTxt));
    EXPECT_EQ(messages_, std::vector<std::string>{std::string(kTrimLinesDiffer)});
    EXPECT_EQ(FileBytes(dir_ / "a.txt"), "header\nbbb\nc\n");
    EXPECT_EQ(FileBytes(dir_ / "b.TXT"), "aaa\r\nbbb\r\n");
  }
}

TEST_F(TrimTables, ThePlotterTablesAndOtherFilesAreLeft) {
  const std::string ragged = "aaa\nbbb\nc\n";
  const char* kept[] = {"half_cycle_glo.txt", "half_cycle.txt",  "pvt.txt",
                        "control.txt",        "big_psr_res.txt", "a.log"};
  for (const char* name : kept)
    WriteBytes(dir_ / name, ragged);
  ASSERT_TRUE(MakeFolder(dir_ / "JPG.txt"));
  EXPECT_TRUE(Trim(false));
  for (const char* name : kept)
    EXPECT_EQ(FileBytes(dir_ / name), ragged) << name;
  EXPECT_TRUE(messages_.empty());
}

TEST_F(TrimTables, AThousandAndTwentyFourLinesToDeleteStopTheRun) {
  // The tables go in name order: a.txt before b.txt before c.txt.
  std::vector<std::size_t> lengths(2, 3);
  lengths.insert(lengths.end(), 1023, 1);
  const std::string within = Lines(lengths);
  lengths.push_back(1);
  const std::string beyond = Lines(lengths);
  WriteBytes(dir_ / "a.txt", within);
  WriteBytes(dir_ / "b.txt", beyond);
  WriteBytes(dir_ / "c.txt", "aaa\nbbb\nc\n");
  EXPECT_FALSE(Trim(false));
  EXPECT_EQ(messages_, std::vector<std::string>{std::string(kTrimTooManyLines)});
  EXPECT_EQ(FileBytes(dir_ / "a.txt"), "aaa\r\naaa\r\n");
  EXPECT_EQ(FileBytes(dir_ / "b.txt"), beyond);
  EXPECT_EQ(FileBytes(dir_ / "c.txt"), "aaa\nbbb\nc\n");
}

}  // namespace
}  // namespace tarnlog
