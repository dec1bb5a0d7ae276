#include "platform/processes.h"

#include <climits>
#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>

#include "platform/batch_host.h"
#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::InstallStandin;
using testing::ReadStandinLog;
using testing::StandinCall;
using testing::TempFolder;
using testing::WriteBytes;
using Words = std::vector<std::string>;

using testing::Canonical;

// Launches go through LaunchScript in this process, so the children take
// their settings from this process's environment.
class ProcessesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* path = std::getenv("PATH");
    savedPath_ = path != nullptr ? path : "/usr/bin:/bin";
    SetScriptRunnerPath(testing::ScriptRunnerBinary());
    ::setenv("TARNLOG_STANDIN_LOG", log_.c_str(), 1);
    ::unsetenv("TARNLOG_STANDIN_SLEEP_MS");
  }
  void TearDown() override {
    SetScriptRunnerPath("");
    ::setenv("PATH", savedPath_.c_str(), 1);
    ::unsetenv("TARNLOG_STANDIN_LOG");
    ::unsetenv("TARNLOG_STANDIN_SLEEP_MS");
    ::unsetenv("TARNLOG_SCRIPT_RUNNER");
  }

  // A result folder with its own copy of the tool and a script in the
  // system's form that runs it with `arg`.
  std::string MakeJob(const std::string& name, const std::string& arg) {
    const std::string folder = dir_ / name;
    EXPECT_TRUE(MakeFolder(folder));
    InstallStandin(folder, "tool.exe");
    const std::string script = folder + "/run.bat";
    WriteBytes(script, "\r\ncd \"" + folder + "\"\r\ntool.exe " + arg + "\r\nexit\r\n");
    return script;
  }

  TempFolder dir_;
  std::string log_ = dir_ / "calls.log";
  std::string savedPath_;
};

TEST_F(ProcessesTest, FanOutRunsTheScriptsTogether) {
  ::setenv("TARNLOG_STANDIN_SLEEP_MS", "300", 1);
  RunScriptsFanOut({MakeJob("job 1", "one"), MakeJob("job 2", "two")});
  const std::vector<StandinCall> calls = ReadStandinLog(log_);
  ASSERT_EQ(calls.size(), 2u);  // both awaited before the return
  EXPECT_LT(calls[0].startNs, calls[1].endNs);
  EXPECT_LT(calls[1].startNs, calls[0].endNs);
}

TEST_F(ProcessesTest, SequentialRunsWaitInOrder) {
  ::setenv("TARNLOG_STANDIN_SLEEP_MS", "100", 1);
  RunScriptAndWait(MakeJob("job 1", "one"));
  ASSERT_EQ(ReadStandinLog(log_).size(), 1u);
  RunScriptAndWait(MakeJob("job 2", "two"));
  const std::vector<StandinCall> calls = ReadStandinLog(log_);
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].args.back(), "one");
  EXPECT_EQ(calls[1].args.back(), "two");
  EXPECT_LE(calls[0].endNs, calls[1].startNs);
}

TEST_F(ProcessesTest, AFailedLaunchIsWaitedForAtOnce) {
  SetScriptRunnerPath(dir_ / "no-such-runner");
  const std::string script = MakeJob("job 1", "one");
  ChildProcess child = LaunchScript(script);
  EXPECT_FALSE(child.Started());
  WaitChild(child);
  EXPECT_EQ(child.pid, -1);
  RunScriptsFanOut({script, script});
  RunScriptAndWait(script);
  EXPECT_TRUE(ReadStandinLog(log_).empty());

  ChildProcess never;
  WaitChild(never);
  EXPECT_EQ(never.pid, -1);
}

TEST_F(ProcessesTest, LaunchesTheSystemsScriptFormWithoutAConsole) {
  SetScriptRunnerPath("");
  ::setenv("TARNLOG_SCRIPT_RUNNER", testing::ScriptRunnerBinary().c_str(), 1);
  const std::string folder = dir_ / "Static 140000";
  const std::string tools = dir_ / "path tools";
  ASSERT_TRUE(MakeFolder(folder) && MakeFolder(tools));
  InstallStandin(folder, "llherroRTK_M.exe");
  const std::string noisePlot = InstallStandin(tools, "NoisePlot.exe");
  ::setenv("PATH", (tools + ":" + savedPath_).c_str(), 1);
  const std::string script = folder + "/llherroRTK_M.bat";
  WriteBytes(script, "\r\ncd \"" + folder + "\"\r\nllherroRTK_M.exe \"" + folder +
                         "\" JPG  realvalue.txt 5\r\ncd\r\nNoisePlot.exe -x\r\nexit\r\n");

  ::testing::internal::CaptureStdout();
  ChildProcess child = LaunchScript(script);
  ASSERT_TRUE(child.Started());
  WaitChild(child);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");  // "cd" alone printed nowhere
  EXPECT_EQ(child.pid, -1);

  const std::vector<StandinCall> calls = ReadStandinLog(log_);
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].cwd, Canonical(folder));
  EXPECT_EQ(calls[0].args, (Words{"llherroRTK_M.exe", folder, "JPG", "realvalue.txt", "5"}));
  EXPECT_EQ(calls[1].exe, Canonical(noisePlot));
  EXPECT_EQ(calls[1].cwd, Canonical(folder));
}

TEST_F(ProcessesTest, CommandLinesRunHereAndBlock) {
  const std::string script = dir_ / "capture.bat";
  WriteBytes(script, "converter line");
  // Outside the folder it is given, a del deletes nothing.
  TempFolder elsewhere;
  RunCommandLine("del \"" + script + "\"", elsewhere.Path());
  EXPECT_TRUE(PathExists(script));
  RunCommandLine("del \"" + script + "\"", dir_.Path());
  EXPECT_FALSE(PathExists(script));

  const std::string tool = InstallStandin(dir_.Path(), "Converter.exe");
  RunCommandLine("\"" + tool + "\" input.log -batch -b", dir_.Path());
  const std::vector<StandinCall> calls = ReadStandinLog(log_);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].cwd, Canonical(CurrentFolder()));
  EXPECT_EQ(calls[0].args, (Words{tool, "input.log", "-batch", "-b"}));
}

TEST_F(ProcessesTest, TheRunnerIsFoundByOverrideThenEnvironment) {
  SetScriptRunnerPath("");
  ::setenv("TARNLOG_SCRIPT_RUNNER", "/opt/lab/tarnlog-script", 1);
  EXPECT_EQ(ScriptRunnerPath(), "/opt/lab/tarnlog-script");
  SetScriptRunnerPath("/elsewhere/runner");
  EXPECT_EQ(ScriptRunnerPath(), "/elsewhere/runner");
  SetScriptRunnerPath("");
  ::unsetenv("TARNLOG_SCRIPT_RUNNER");
  const std::string fallback = ScriptRunnerPath();
  EXPECT_EQ(fallback.substr(fallback.rfind('/') + 1), "tarnlog-script");
}

TEST(EndingARun, StatusAndReason) {
  EXPECT_EXIT(EndProcess(2, "no mode word matched"), ::testing::ExitedWithCode(2),
              "^tarnlog: no mode word matched\n$");
  EXPECT_EXIT(EndProcess(1, ""), ::testing::ExitedWithCode(1), "^$");
  EXPECT_EXIT(
      {
        std::fputs("pending", stderr);
        SelfTerminate();
      },
      ::testing::ExitedWithCode(0), "^pending$");
}

TEST(BatchHost, MessagesAreOneLineOnStandardErrorAndCountAsOk) {
  BatchHost host;
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(host.ShowMessage("first\r\nsecond\nthird", "", MessageButtons::kOkCancel),
            MessageAnswer::kOk);
  host.ShowMessage("Make DIR is Failed! Enter OK continue.", "Static", MessageButtons::kOk);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "first second third\nStatic: Make DIR is Failed! Enter OK continue.\n");

  ::testing::internal::CaptureStdout();
  host.SetStatus("Status:Processing...");
  host.SetStatus("Status: Finished!");
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "Status:Processing...\nStatus: Finished!\n");

  EXPECT_TRUE(host.ChooseFiles("*.log").empty());
  EXPECT_FALSE(host.ChooseFolder("Select a folder").has_value());
  int ran = 0;
  host.PostFinished([&ran] { ++ran; });
  EXPECT_EQ(ran, 1);
}

}  // namespace
}  // namespace tarnlog
