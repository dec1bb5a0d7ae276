#include "platform/script_runner.h"

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <utility>

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

TEST(ParseScriptLine, CommandsArgumentsAndRefusalsFromTheTextAlone) {
  using C = ScriptCommand;
  const struct {
    std::string line;
    C command;
    Words arguments;
    Words program;
    std::string refusal;
  } cases[] = {
      {"", C::kNothing, {}, {}, ""},
      {"D:\r\r\n", C::kNothing, {}, {}, ""},
      {"@rem \"a\" b", C::kNothing, {}, {}, ""},
      {"exit /b", C::kExit, {}, {}, ""},
      {"cd", C::kShowFolder, {}, {}, ""},
      {"cd \"/data/run 1\"\r\r\n", C::kChangeFolder, {"/data/run 1"}, {}, ""},
      {"CD..", C::kChangeFolder, {".."}, {}, ""},
      {"chdir /d \"x y\" ", C::kChangeFolder, {"x y"}, {}, ""},
      {"cd JPG\\FIG", C::kChangeFolder, {"JPG\\FIG"}, {}, ""},
      {"Del sub\\*.log /s \\q", C::kDelete, {"sub\\*.log"}, {}, ""},
      {"erase \"a b.txt\" C:x", C::kDelete, {"a b.txt", "C:x"}, {}, ""},  // drive-relative
      {"move *.fig .\\FIG\r\n", C::kMove, {"*.fig", ".\\FIG"}, {}, ""},
      {"COPY c.txt \"x y\" /y", C::kCopy, {"c.txt", "x y"}, {}, ""},
      {"\"/opt/EXE/tool x.exe\"  \"a b\" JPG\r\r\n",
       C::kProgram,
       {},
       {"/opt/EXE/tool x.exe", "a b", "JPG"},
       ""},
      {"tool.exe ..\\..\\x C:\\y", C::kProgram, {}, {"tool.exe", "..\\..\\x", "C:\\y"}, ""},
      {"cd\\", C::kChangeFolder, {"\\"}, {}, "cd\\: the root folder of a drive is refused"},
      {"cd \\", C::kChangeFolder, {"\\"}, {}, "cd\\: the root folder of a drive is refused"},
      {"cd\\data", C::kChangeFolder, {"\\data"}, {}, "cd: \\data: a drive-rooted path is refused"},
      {"cd /d C:\\data",
       C::kChangeFolder,
       {"C:\\data"},
       {},
       "cd: C:\\data: a drive-rooted path is refused"},
      {"del C:/x/*", C::kDelete, {"C:/x/*"}, {}, "del: C:/x/*: a drive-rooted path is refused"},
      {"del a.txt \\x\\*",
       C::kDelete,
       {"a.txt", "\\x\\*"},
       {},
       "del: \\x\\*: a drive-rooted path is refused"},
      {"copy a.txt d:\\b",
       C::kCopy,
       {"a.txt", "d:\\b"},
       {},
       "copy: d:\\b: a drive-rooted path is refused"},
      {"del /s", C::kDelete, {}, {}, "del: no file named"},
      {"Move a", C::kMove, {"a"}, {}, "move: line not understood: move a"},
      {"\"\" x", C::kProgram, {}, {"", "x"}, "line not understood: \"\" x"},
      {std::string("del a\0b", 7), C::kNothing, {}, {}, "line not understood: it holds a NUL byte"},
  };
  for (const auto& c : cases) {
    const ScriptLine parsed = ParseScriptLine(c.line);
    EXPECT_EQ(parsed.command, c.command) << c.line;
    EXPECT_EQ(parsed.arguments, c.arguments) << c.line;
    EXPECT_EQ(parsed.programWords, c.program) << c.line;
    EXPECT_EQ(parsed.refusal, c.refusal) << c.line;
  }
}

// Names in the test folder as a line writes them: {t} the folder, {T} the
// same with backslashes, {s} the script's folder; and {outside}, the reason
// a line reaching out of its tree is refused.
std::string Fill(std::string text, const TempFolder& dir) {
  std::string backslashed = dir.Path();
  std::replace(backslashed.begin(), backslashed.end(), '/', '\\');
  const std::pair<std::string, std::string> names[] = {
      {"{t}", dir.Path()},
      {"{T}", backslashed},
      {"{s}", dir / "tree/sub"},
      {"{outside}", "outside the script's folder tree, line refused"}};
  for (const auto& [key, value] : names) {
    for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at))
      text.replace(at, key.size(), value);
  }
  return text;
}

std::vector<std::string> NamesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const FolderEntry& entry : ListMatching(folder, "*"))
    names.push_back(entry.name);
  return names;
}

// The script lies in tmp/tree/sub and is run from there; tmp and tmp/tree
// are outside its tree and hold the victims. "out" links to tmp and
// "lnk.txt" to tmp/v.txt. Whatever a line does, it stays in tmp.
TEST(ScriptRunnerConfinement, NothingOutsideTheScriptsTreeIsTouched) {
  const struct {
    std::string lines;
    std::string err;  // after "tarnlog-script: "
    bool wentOn;
    bool ownKept;
  } cases[] = {
      {"del ..\\*", "del: ..\\*: {outside}", true, true},
      {"del ..\\..\\v.txt", "del: ..\\..\\v.txt: {outside}", true, true},
      {"Del own.txt ..\\v.txt", "del: ..\\v.txt: {outside}", true, true},
      {"del C:{T}\\v.txt", "del: C:{T}\\v.txt: a drive-rooted path is refused", true, true},
      {"del c:{t}/v.txt", "del: c:{t}/v.txt: a drive-rooted path is refused", true, true},
      {"del {T}\\tree\\v.txt", "del: {T}\\tree\\v.txt: a drive-rooted path is refused", true, true},
      {"cd\\", "cd\\: the root folder of a drive is refused", true, true},
      {"cd ..\\..\r\ndel v.txt", "del: v.txt: {outside}", true, true},
      {"del out\\v.txt", "del: out\\v.txt: {outside}", true, true},
      {"copy own.txt out", "copy: out: {outside}", true, true},
      {"copy own.txt out\\new.txt", "copy: out\\new.txt: {outside}", true, true},
      {"copy own.txt lnk.txt", "copy: lnk.txt: {outside}", true, true},
      {"move ..\\v.txt got.txt", "move: ..\\v.txt: {outside}", true, true},
      {"move own.txt ..\\..\\", "move: ..\\..\\: {outside}", true, true},
      {"copy ..\\v.txt mine.txt", "copy: ..\\v.txt: {outside}", true, true},
      {"cd missing\r\ndel own.txt", "cd: missing: no such folder, the script stops", false, true},
      // Inside the tree everything still goes, also by way of "..".
      {"cd ..\r\ncd sub\r\ndel ..\\sub\\own.txt", "", true, false},
      {"cd {s}\\..\\..\r\ncd {t}/tree/sub\r\nmove own.txt out.txt", "", true, false},
  };
  for (const auto& c : cases) {
    TempFolder dir;
    const std::string sub = dir / "tree/sub";
    ASSERT_TRUE(MakeFolder(dir / "tree") && MakeFolder(sub));
    WriteBytes(dir / "v.txt", "victim");
    WriteBytes(dir / "tree/v.txt", "victim");
    for (const char* name : {"own.txt", "mark.txt"})
      WriteBytes(sub + "/" + name, name);
    ASSERT_EQ(::symlink(dir.Path().c_str(), (sub + "/out").c_str()), 0);
    ASSERT_EQ(::symlink((dir / "v.txt").c_str(), (sub + "/lnk.txt").c_str()), 0);
    const std::string script = sub + "/run.bat";
    WriteBytes(script, Fill(c.lines, dir) + "\r\ncopy \"" + sub + "/mark.txt\" \"" + sub +
                           "/went-on.txt\"\r\n");

    ::testing::internal::CaptureStderr();
    EXPECT_EQ(RunScriptFile(script, sub), 0);
    const std::string err = ::testing::internal::GetCapturedStderr();
    const std::string line = c.lines;
    EXPECT_EQ(err, c.err.empty() ? "" : Fill("tarnlog-script: " + c.err + "\n", dir)) << line;
    EXPECT_EQ(FileBytes(dir / "v.txt"), "victim") << line;
    EXPECT_EQ(FileBytes(dir / "tree/v.txt"), "victim") << line;
    EXPECT_EQ(NamesIn(dir.Path()), (Words{"tree", "v.txt"})) << line;
    EXPECT_EQ(NamesIn(dir / "tree"), (Words{"sub", "v.txt"})) << line;
    EXPECT_EQ(PathExists(sub + "/own.txt"), c.ownKept) << line;
    EXPECT_EQ(PathExists(sub + "/went-on.txt"), c.wentOn) << line;
  }
}

TEST(ScriptRunnerConfinement, InProcessTheRootIsGivenOrTheStartFolder) {
  TempFolder dir;
  ASSERT_TRUE(MakeFolder(dir / "a") && MakeFolder(dir / "a/b"));
  WriteBytes(dir / "a/x.txt", "x");
  ScriptRunner confined(dir / "a/b");
  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(confined.RunLine("del ..\\x.txt"));
  EXPECT_NE(::testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(PathExists(dir / "a/x.txt"));

  ScriptRunner wider(dir / "a/b", dir / "a");
  EXPECT_TRUE(wider.RunLine("del ..\\x.txt"));
  EXPECT_FALSE(PathExists(dir / "a/x.txt"));

  ScriptRunner stopped(dir.Path());
  ::testing::internal::CaptureStderr();
  EXPECT_TRUE(stopped.RunLine("cd nowhere"));
  EXPECT_TRUE(stopped.Stopped());
  EXPECT_FALSE(stopped.RunLine("cd a"));  // no line runs after it
  ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(stopped.CurrentFolder(), dir.Path());
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

TEST(ScriptRunnerProgram, AnOverlongLineIsSkippedWholeAndTheScriptGoesOn) {
  TempFolder dir;
  InstallStandin(dir.Path(), "tool.exe");
  const std::string longest = "tool.exe " + std::string(kMaxScriptLineLength - 9, 'a');
  const std::string script = longest + "\r\r\n" +                             // runs
                             longest + "b\n" +                                // one too many
                             std::string(30000, ' ') + "tool.exe tail\r\n" +  // its tail neither
                             "tool.exe next\r\n" +                            // runs
                             "tool.exe " + std::string(kMaxScriptLineLength, 'c');  // at the end
  const RunResult result = RunScript(dir, script);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "tarnlog-script: line 2: longer than 8191 characters, skipped\n"
            "tarnlog-script: line 3: longer than 8191 characters, skipped\n"
            "tarnlog-script: line 5: longer than 8191 characters, skipped\n");
  const std::vector<StandinCall> calls = ReadStandinLog(dir / "calls.log");
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].args, (Words{"tool.exe", std::string(kMaxScriptLineLength - 9, 'a')}));
  EXPECT_EQ(calls[1].args, (Words{"tool.exe", "next"}));
}

TEST(ScriptRunnerProgram, ANonRegularScriptEndsAtOnce) {
  TempFolder dir;
  ASSERT_EQ(::mkfifo((dir / "fifo.bat").c_str(), 0600), 0);
  ASSERT_TRUE(MakeFolder(dir / "folder.bat"));
  for (const std::string& path : {dir / "fifo.bat", dir / "folder.bat", std::string("/dev/null")}) {
    const RunResult result = RunAndCapture({testing::ScriptRunnerBinary(), path}, dir.Path());
    EXPECT_EQ(result.status, 1) << path;
    EXPECT_EQ(result.err, "tarnlog-script: can't read " + path + "\n");
  }
}

}  // namespace
}  // namespace tarnlog
