// Starting and awaiting child programs and scripts, and ending the process.
//
// A script (a ".bat" file) is run by the program's own script runner,
// tarnlog-script, as a child process, so that a fan-out runs in parallel and
// each script is awaited by its process id. There is no time-out anywhere and
// a child's exit code is never read.
#pragma once

#include <sys/types.h>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

// A started child, or a launch that failed (pid <= 0): waiting on that
// returns at once.
struct ChildProcess {
  pid_t pid = -1;
  bool Started() const { return pid > 0; }
};

// Launches a script without a console: through the script runner, in the
// current folder of the process, standard output discarded. A script that
// is not a regular file fails to launch.
ChildProcess LaunchScript(const std::string& scriptPath);

// Waits without limit for the child and releases it; a failed launch
// returns at once. The record is cleared.
void WaitChild(ChildProcess& child);

// Sequential form: launch, wait, release, go on.
void RunScriptAndWait(const std::string& scriptPath);

// Fan-out form: launch all in order, then wait on each in list order.
void RunScriptsFanOut(const std::vector<std::string>& scriptPaths);

// `system`-style run: one command line, interpreted as a script line in the
// current folder, blocking until it ends. Output goes to the console. Its
// del, move and copy act only inside `treeRoot`, as a script's do inside its
// own folder: the caller names the run's folder (for the del of a converter
// script, the folder of the input beside which it lies).
void RunCommandLine(std::string_view commandLine, const std::string& treeRoot);

// The running program's own path (/proc/self/exe), cut after `limit` bytes;
// empty when it can't be read.
std::string OwnProgramPath(std::size_t limit);

// Where the script runner lives: $TARNLOG_SCRIPT_RUNNER, else tarnlog-script
// beside the running executable, else the name alone (found on PATH).
std::string ScriptRunnerPath();
// Tests and the window may point the launches at a runner of their own.
void SetScriptRunnerPath(std::string path);

// Self-termination of a headless run: ends the process at once with status 0,
// without the page's clean-up and without further output.
[[noreturn]] void SelfTerminate();

// Ends a headless run that can't reach its self-termination: one line on
// standard error saying why (when `why` is not empty), then the status.
[[noreturn]] void EndProcess(int status, std::string_view why);

}  // namespace tarnlog
