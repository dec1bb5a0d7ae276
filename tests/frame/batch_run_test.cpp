// The headless program as a calling script sees it: exit status, standard
// output and standard error.
#include <gtest/gtest.h>

#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::RunAndCapture;
using testing::TarnlogBinary;

// A start folder as the program expects it, with its real values.
void MakeStartFolder(const testing::TempFolder& folder) {
  MakeFolder(folder / "Config");
  testing::WriteBytes(folder / "Config/AllRealValue.txt", "Roof,31.5,121.25,10\r\n");
  testing::PlaceStartFiles(folder.Path());
}

int CountLines(const std::string& text) {
  int lines = 0;
  for (char c : text)
    lines += c == '\n' ? 1 : 0;
  return lines;
}

TEST(BatchRunTest, NoModeWordEndsWithStatusTwoAndOneLine) {
  testing::TempFolder folder;
  MakeStartFolder(folder);
  const testing::RunResult run = RunAndCapture({TarnlogBinary(), "a", "b"}, folder.Path());
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(CountLines(run.err), 1) << run.err;
  EXPECT_NE(run.err.find("no mode word"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("\"b\""), std::string::npos) << run.err;
  EXPECT_EQ(run.out, "");
}

TEST(BatchRunTest, MfgNeverMatches) {
  testing::TempFolder folder;
  MakeStartFolder(folder);
  const testing::RunResult run = RunAndCapture({TarnlogBinary(), "x", "y", "MFG"}, folder.Path());
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("\"mfg\""), std::string::npos) << run.err;
}

TEST(BatchRunTest, WordOfAPageWithoutItsModeEndsWithStatusTwo) {
  testing::TempFolder folder;
  MakeStartFolder(folder);
  const testing::RunResult run =
      RunAndCapture({TarnlogBinary(), "a.log", "0", "0", "single", "RANGEPLOT"}, folder.Path());
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(CountLines(run.err), 1) << run.err;
  EXPECT_NE(run.err.find("\"rangeplot\""), std::string::npos) << run.err;
}

TEST(BatchRunTest, IgnoredSwitchIsNamedInTheEndingLine) {
  testing::TempFolder folder;
  MakeStartFolder(folder);
  const testing::RunResult run =
      RunAndCapture({TarnlogBinary(), "-RS", "-PATH", folder.Path(), "extra"}, folder.Path());
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(CountLines(run.err), 1) << run.err;
  EXPECT_NE(run.err.find("-RS ignored"), std::string::npos) << run.err;
}

TEST(BatchRunTest, VersionAndHelp) {
  const testing::RunResult version = RunAndCapture({TarnlogBinary(), "--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out, "Tarnlog Version 3.2 (Tarnlog d240320_o20055)\n");
  const testing::RunResult help = RunAndCapture({TarnlogBinary(), "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("usage: tarnlog"), std::string::npos);
}

TEST(BatchRunTest, StartWithoutWindowPrintsRealValuesAndTabs) {
  testing::TempFolder folder;
  MakeStartFolder(folder);
  // A single argument is read and ignored.
  const testing::RunResult run = RunAndCapture({TarnlogBinary(), "ignored"}, folder.Path());
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("  Roof,31.500000000,121.250000000,10.0000\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  10 INS (PVTProcess)\n  11 AUTO (CAuto)\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.err.find("window is not built"), std::string::npos);
}

}  // namespace
}  // namespace tarnlog
