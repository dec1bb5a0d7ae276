#include "platform/script_runner.h"

#include <climits>
#include <cstdlib>

#include <gtest/gtest.h>

#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::FileBytes;
using testing::InstallStandin;
using testing::ReadStandinLog;
using testing::RunAndCapture;
using testing::RunResult;
using testing::StandinCall;
using testing::TempFolder;
using testing::WriteBytes;
using Words = std::vector<std::string>;

using testing::Canonical;

TEST(SplitCommandWords, BlanksSeparateAndQuotesGroup) {
  const struct {
    const char* line;
    Words words;
  } cases[] = {
      {"tool.exe \"/data/run 1\" JPG  realvalue.txt 5",
       {"tool.exe", "/data/run 1", "JPG", "realvalue.txt", "5"}},
      {"  a\tb  ", {"a", "b"}},
      {"a \"\" b", {"a", "", "b"}},
      {"x\"y z\"w", {"xy zw"}},
      {"\"unclosed quote", {"unclosed quote"}},
      {"", {}},
      {"   ", {}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(SplitCommandWords(c.line), c.words) << c.line;
}

TEST(ScriptRunner, DriveLinesAndEmptyLinesDoNothingAndExitEnds) {
  TempFolder dir;
  ScriptRunner runner(dir.Path());
  for (const char* line : {"", "\r\n", "\r\r\n", "D:", "d:\r\n", "   "}) {
    EXPECT_TRUE(runner.RunLine(line)) << line;
  }
  EXPECT_EQ(runner.CurrentFolder(), dir.Path());
  for (const char* line : {"exit", "EXIT\r\n", "Exit\r\r\n", "  exit /b"}) {
    EXPECT_FALSE(runner.RunLine(line)) << line;
  }
}

TEST(ScriptRunner, ChangesItsOwnFolderOnly) {
  TempFolder dir;
  ASSERT_TRUE(MakeFolder(dir / "a b") && MakeFolder(dir / "a b/JPG") &&
              MakeFolder(dir / "a b/JPG/FIG"));
  const struct {
    const char* start;
    std::string line;
    const char* expected;
    bool reported;
  } cases[] = {
      {"", "cd \"a b\"", "a b", false},
      {"", "cd a b  \r\n", "a b", false},  // unquoted, trailing blanks cut
      {"", "CD \"a b\\JPG\\FIG\"", "a b/JPG/FIG", false},
      {"a b", "cd JPG\\FIG", "a b/JPG/FIG", false},
      {"", "cd /d \"a b\"", "a b", false},
      {"", "cd \"" + dir / "a b/JPG" + "\"", "a b/JPG", false},
      {"a b/JPG", "cd..", "a b", false},
      {"a b/JPG", "cd ..", "a b", false},
      {"a b/JPG/FIG", "chdir ..\\..", "a b", false},
      {"a b", "cd missing", "a b", true},  // stays where it was
  };
  const std::string before = CurrentFolder();
  for (const auto& c : cases) {
    ScriptRunner runner(dir / c.start);
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(runner.RunLine(c.line));
    const std::string err = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(runner.CurrentFolder(), dir / c.expected) << c.line;
    EXPECT_EQ(!err.empty(), c.reported) << c.line << ": " << err;
  }
  EXPECT_EQ(CurrentFolder(), before);
}

TEST(ScriptRunner, DeleteMatchesCaseInsensitivelyAndIgnoresSwitches) {
  TempFolder dir;
  ASSERT_TRUE(MakeFolder(dir / "sub") && MakeFolder(dir / "d.txt"));
  for (const char* name : {"a.txt", "B.Txt", "c.log", "e.dat", "sub/x.LOG", "sub/y.log", "sub/z"}) {
    WriteBytes(dir / name, "x");
  }
  ScriptRunner runner(dir.Path());
  EXPECT_TRUE(runner.RunLine("del *.TXT"));
  EXPECT_FALSE(PathExists(dir / "a.txt"));
  EXPECT_FALSE(PathExists(dir / "B.Txt"));
  EXPECT_TRUE(PathExists(dir / "c.log"));
  EXPECT_TRUE(IsFolder(dir / "d.txt"));  // folders are never deleted

  EXPECT_TRUE(runner.RunLine("Del sub\\*.log /s \\q"));
  EXPECT_FALSE(PathExists(dir / "sub/x.LOG"));
  EXPECT_FALSE(PathExists(dir / "sub/y.log"));
  EXPECT_TRUE(PathExists(dir / "sub/z"));

  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(runner.RunLine("DEL nothing.* \"" + dir / "e.dat" + "\" c.LOG"));
  const std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_FALSE(PathExists(dir / "e.dat"));
  EXPECT_FALSE(PathExists(dir / "c.log"));
  EXPECT_NE(err.find("nothing.*"), std::string::npos) << err;
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
}

TEST(ScriptRunner, MoveAndCopy) {
  TempFolder dir;
  ASSERT_TRUE(MakeFolder(dir / "FIG") && MakeFolder(dir / "x y"));
  WriteBytes(dir / "a.fig", "fig a");
  WriteBytes(dir / "B.FIG", "fig b");
  WriteBytes(dir / "c.txt", "c text\r\n");
  WriteBytes(dir / "old.txt", "an older, longer text");
  ScriptRunner runner(dir.Path());

  EXPECT_TRUE(runner.RunLine("move *.fig .\\FIG\r\n"));
  EXPECT_EQ(FileBytes(dir / "FIG/a.fig"), "fig a");
  EXPECT_EQ(FileBytes(dir / "FIG/B.FIG"), "fig b");
  EXPECT_FALSE(PathExists(dir / "a.fig"));

  EXPECT_TRUE(runner.RunLine("copy c.txt old.txt"));
  EXPECT_EQ(FileBytes(dir / "old.txt"), "c text\r\n");
  EXPECT_TRUE(runner.RunLine("COPY c.txt \"x y\" /y"));
  EXPECT_EQ(FileBytes(dir / "x y/c.txt"), "c text\r\n");
  EXPECT_TRUE(runner.RunLine("Move c.txt renamed.txt"));
  EXPECT_EQ(FileBytes(dir / "renamed.txt"), "c text\r\n");
  EXPECT_FALSE(PathExists(dir / "c.txt"));

  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(runner.RunLine("move FIG\\*.fig one.fig"));  // two files can't become one
  EXPECT_TRUE(runner.RunLine("move renamed.txt"));
  const std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 2) << err;
  EXPECT_TRUE(PathExists(dir / "FIG/a.fig"));
  EXPECT_FALSE(PathExists(dir / "one.fig"));
  EXPECT_TRUE(PathExists(dir / "renamed.txt"));
}

// The end-to-end cases run the real tarnlog-script, so that its standard
// error and environment are those of a launched script.
RunResult RunScript(const TempFolder& dir, const std::string& text,
                    std::vector<std::string> env = {}) {
  WriteBytes(dir / "run.bat", text);
  env.push_back("TARNLOG_STANDIN_LOG=" + dir / "calls.log");
  return RunAndCapture({testing::ScriptRunnerBinary(), "run.bat"}, dir.Path(), env);
}

class ScriptLineEnds : public ::testing::TestWithParam<const char*> {};

TEST_P(ScriptLineEnds, RunsTheSystemsScriptForm) {
  const std::string end = GetParam();
  TempFolder dir;
  const std::string folder = dir / "run 1";
  ASSERT_TRUE(MakeFolder(folder));
  InstallStandin(folder, "llherroRTK_M.exe");
  const RunResult result =
      RunScript(dir, end + "cd \"" + folder + "\"" + end + "llherroRTK_M.exe \"" + folder +
                         "\" JPG  realvalue.txt 5" + end + "exit" + end +
                         "llherroRTK_M.exe after-exit" + end);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  const std::vector<StandinCall> calls = ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, "llherroRTK_M.exe");
  EXPECT_EQ(calls[0].cwd, Canonical(folder));
  EXPECT_EQ(calls[0].args, (Words{"llherroRTK_M.exe", folder, "JPG", "realvalue.txt", "5"}));
}

INSTANTIATE_TEST_SUITE_P(AllForms, ScriptLineEnds, ::testing::Values("\n", "\r\n", "\r\r\n"));

TEST(ScriptRunnerProgram, AMissingProgramIsReportedAndTheScriptGoesOn) {
  TempFolder dir;
  InstallStandin(dir.Path(), "tool.exe");
  const RunResult result = RunScript(dir, "nosuch.exe a\r\nfrobnicate\r\ntool.exe b\r\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 2) << result.err;
  EXPECT_EQ(result.err.rfind("tarnlog-script: ", 0), 0u) << result.err;
  EXPECT_NE(result.err.find("nosuch.exe"), std::string::npos) << result.err;
  EXPECT_NE(result.err.find("frobnicate"), std::string::npos) << result.err;
  const std::vector<StandinCall> calls = ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].args, (Words{"tool.exe", "b"}));
}

TEST(ScriptRunnerProgram, TheCurrentFolderComesBeforePath) {
  TempFolder dir;
  ASSERT_TRUE(MakeFolder(dir / "bin") && MakeFolder(dir / "work"));
  const std::string onPath = InstallStandin(dir / "bin", "tool.exe");
  const std::string local = InstallStandin(dir / "work", "tool.exe");
  const std::string bare = InstallStandin(dir / "work", "NoisePlot.exe");
  const char* path = std::getenv("PATH");
  const RunResult result =
      RunScript(dir,
                "cd work\ntool.exe 1\ncd ..\ntool.exe 2\nwork\\tool.exe 3\ncd work\nNoisePlot 4\n"
                "TOOL.EXE 5\n",
                {"PATH=" + dir / "bin" + ":" + (path ? path : "/usr/bin:/bin")});
  EXPECT_EQ(result.err, "");
  const std::vector<StandinCall> calls = ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 5u);
  const std::string expected[] = {local, onPath, local, bare, local};
  for (std::size_t i = 0; i < calls.size(); ++i) {
    EXPECT_EQ(calls[i].exe, Canonical(expected[i])) << i;
    EXPECT_EQ(calls[i].args.back(), std::to_string(i + 1));
  }
  EXPECT_EQ(calls[1].cwd, Canonical(dir.Path()));
  EXPECT_EQ(calls[3].args.front(), "NoisePlot");  // the name as written
}

TEST(ScriptRunnerProgram, WindowsExecutablesGoThroughTheExeRunner) {
  TempFolder dir;
  ASSERT_TRUE(MakeFolder(dir / "bin"));
  const std::string wine = InstallStandin(dir / "bin", "wine");
  InstallStandin(dir.Path(), "tool.exe");
  WriteBytes(dir / "win.exe", std::string("MZ\x90\0not for this system", 22));
  const std::string script = "win.exe \"a b\" c\ntool.exe d\n";

  RunResult result = RunScript(dir, script, {"TARNLOG_EXE_RUNNER=" + wine});
  EXPECT_EQ(result.err, "");
  std::vector<StandinCall> calls = ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].name, "wine");
  EXPECT_EQ(calls[0].args, (Words{wine, Canonical(dir / "win.exe"), "a b", "c"}));
  EXPECT_EQ(calls[0].cwd, Canonical(dir.Path()));
  EXPECT_EQ(calls[1].args, (Words{"tool.exe", "d"}));  // not a Windows file: run itself

  ASSERT_TRUE(RemoveFile(dir / "calls.log"));
  result = RunScript(dir, script, {"TARNLOG_EXE_RUNNER="});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  EXPECT_NE(result.err.find("win.exe"), std::string::npos) << result.err;
  calls = ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, "tool.exe");
}

TEST(ScriptRunnerProgram, UsageAndUnreadableScripts) {
  TempFolder dir;
  RunResult result = RunAndCapture({testing::ScriptRunnerBinary()}, dir.Path());
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("usage"), std::string::npos);
  result = RunAndCapture({testing::ScriptRunnerBinary(), "absent.bat"}, dir.Path());
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("absent.bat"), std::string::npos);
}

}  // namespace
}  // namespace tarnlog
