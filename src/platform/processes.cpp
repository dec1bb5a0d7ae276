#include "platform/processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "platform/folders.h"
#include "platform/paths.h"
#include "platform/script_runner.h"

extern char** environ;

namespace tarnlog {
namespace {

constexpr const char* kRunnerName = "tarnlog-script";

std::mutex& RunnerMutex() {
  static std::mutex mutex;
  return mutex;
}

std::string& RunnerOverride() {
  static std::string path;
  return path;
}

// The whole path or nothing.
std::string OwnExecutable() {
  constexpr std::size_t kLimit = 4096;
  std::string self = OwnProgramPath(kLimit);
  if (self.size() >= kLimit) self.clear();
  return self;
}

}  // namespace

std::string OwnProgramPath(std::size_t limit) {
  std::vector<char> buffer(limit);
  const ssize_t size = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
  if (size <= 0) return {};
  return std::string(buffer.data(), static_cast<std::size_t>(size));
}

std::string ScriptRunnerPath() {
  {
    std::lock_guard<std::mutex> lock(RunnerMutex());
    if (!RunnerOverride().empty()) return RunnerOverride();
  }
  if (const char* fromEnvironment = std::getenv("TARNLOG_SCRIPT_RUNNER");
      fromEnvironment != nullptr && *fromEnvironment != '\0') {
    return fromEnvironment;
  }
  const std::string self = OwnExecutable();
  if (!self.empty()) {
    const std::string beside = JoinPath(FolderOf(self), kRunnerName);
    if (::access(beside.c_str(), X_OK) == 0) return beside;
  }
  return kRunnerName;
}

void SetScriptRunnerPath(std::string path) {
  std::lock_guard<std::mutex> lock(RunnerMutex());
  RunnerOverride() = std::move(path);
}

ChildProcess LaunchScript(const std::string& scriptPath) {
  // A script that isn't there fails to launch, as the shell's start of a
  // missing file does: no process, and its wait returns at once.
  if (!IsRegularFile(scriptPath)) return {};
  std::string runner = ScriptRunnerPath();
  std::string script = scriptPath;
  char* argv[] = {runner.data(), script.data(), nullptr};

  // No console: what the script prints goes nowhere; its errors still show.
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t pid = -1;
  const bool byPath = runner.find('/') != std::string::npos;
  const int error = byPath ? posix_spawn(&pid, runner.c_str(), &actions, nullptr, argv, environ)
                           : posix_spawnp(&pid, runner.c_str(), &actions, nullptr, argv, environ);
  posix_spawn_file_actions_destroy(&actions);
  ChildProcess child;
  if (error == 0) child.pid = pid;
  return child;
}

void WaitChild(ChildProcess& child) {
  if (child.pid > 0) {
    int status = 0;
    while (::waitpid(child.pid, &status, 0) < 0 && errno == EINTR) {
    }
  }
  child.pid = -1;
}

void RunScriptAndWait(const std::string& scriptPath) {
  ChildProcess child = LaunchScript(scriptPath);
  WaitChild(child);
}

void RunScriptsFanOut(const std::vector<std::string>& scriptPaths) {
  std::vector<ChildProcess> children;
  children.reserve(scriptPaths.size());
  for (const std::string& path : scriptPaths)
    children.push_back(LaunchScript(path));
  for (ChildProcess& child : children)
    WaitChild(child);
}

void RunCommandLine(std::string_view commandLine, const std::string& treeRoot) {
  ScriptRunner runner(CurrentFolder(), treeRoot);
  runner.RunLine(commandLine);
}

void SelfTerminate() {
  std::fflush(stdout);
  std::fflush(stderr);
  ::_exit(0);
}

void EndProcess(int status, std::string_view why) {
  if (!why.empty()) {
    std::string line = "tarnlog: ";
    line += why;
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
  }
  std::fflush(stdout);
  std::fflush(stderr);
  ::_exit(status);
}

}  // namespace tarnlog
