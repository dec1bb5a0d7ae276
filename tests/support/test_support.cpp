#include "support/test_support.h"

#include "extract/checksums.h"

#include <fcntl.h>
#include <ftw.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

extern char** environ;

namespace tarnlog::testing {
namespace {

int RemoveEntry(const char* path, const struct stat* /*info*/, int /*flag*/, FTW* /*ftw*/) {
  std::remove(path);
  return 0;
}

// The environment of a child: ours, with `extra` "NAME=value" entries added
// or replacing ours.
std::vector<std::string> ChildEnvironment(const std::vector<std::string>& extra) {
  std::vector<std::string> entries;
  auto nameOf = [](const std::string& entry) { return entry.substr(0, entry.find('=')); };
  for (char** item = environ; *item != nullptr; ++item) {
    const std::string entry = *item;
    bool replaced = false;
    for (const std::string& added : extra)
      replaced = replaced || nameOf(added) == nameOf(entry);
    if (!replaced) entries.push_back(entry);
  }
  entries.insert(entries.end(), extra.begin(), extra.end());
  return entries;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts)
    pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

TempFolder::TempFolder() {
  const char* base = std::getenv("TMPDIR");
  std::string pattern = (base != nullptr && *base != '\0') ? base : "/tmp";
  // No mode word in the name: an automatic-test call's last argument is the
  // test folder, and a word in it would start that mode as well.
  pattern += "/tarnlog-scratch-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    ADD_FAILURE() << "can't make a scratch folder: " << std::strerror(errno);
    return;
  }
  path_ = pattern;
}

TempFolder::~TempFolder() {
  if (!path_.empty()) ::nftw(path_.c_str(), RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
}

std::string TempFolder::operator/(const std::string& relative) const {
  return path_ + "/" + relative;
}

std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return "<missing>";
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out) ADD_FAILURE() << "can't write " << path;
}

std::string StandinBinary() {
  return TARNLOG_STANDIN_BIN;
}
std::string ScriptRunnerBinary() {
  return TARNLOG_SCRIPT_RUNNER_BIN;
}
std::string TarnlogBinary() {
  return TARNLOG_BIN;
}
std::string SourceDir() {
  return TARNLOG_SOURCE_DIR;
}

std::string InstallStandin(const std::string& folder, const std::string& name) {
  const std::string path = folder + "/" + name;
  WriteBytes(path, FileBytes(StandinBinary()));
  if (::chmod(path.c_str(), 0755) != 0) ADD_FAILURE() << "can't make " << path << " executable";
  return path;
}

void PlaceStartFiles(const std::string& startFolder) {
  ::mkdir((startFolder + "/EXE").c_str(), 0777);
  WriteBytes(startFolder + "/EXE/NoisePlot.exe", "");
  ::mkdir((startFolder + "/Config").c_str(), 0777);
  WriteBytes(startFolder + "/Config/parameter.txt", kStartParameterText);
}

std::vector<StandinCall> ReadStandinLog(const std::string& logPath) {
  std::vector<StandinCall> calls;
  std::string bytes = FileBytes(logPath);
  if (bytes == "<missing>") bytes.clear();  // no call yet
  std::istringstream in(bytes);
  std::string line;
  StandinCall call;
  bool open = false;
  auto valueOf = [&line](std::string_view key) { return line.substr(key.size()); };
  while (std::getline(in, line)) {
    if (line.rfind("call ", 0) == 0) {
      call = StandinCall{};
      call.name = valueOf("call ");
      open = true;
    } else if (!open) {
      continue;
    } else if (line.rfind("exe ", 0) == 0) {
      call.exe = valueOf("exe ");
    } else if (line.rfind("cwd ", 0) == 0) {
      call.cwd = valueOf("cwd ");
    } else if (line.rfind("start ", 0) == 0) {
      call.startNs = std::strtoll(valueOf("start ").c_str(), nullptr, 10);
    } else if (line.rfind("end ", 0) == 0) {
      call.endNs = std::strtoll(valueOf("end ").c_str(), nullptr, 10);
    } else if (line.rfind("arg ", 0) == 0) {
      call.args.push_back(valueOf("arg "));
    } else if (line == ".") {
      calls.push_back(call);
      open = false;
    }
  }
  return calls;
}

RunResult RunAndCapture(const std::vector<std::string>& argv, const std::string& folder,
                        const std::vector<std::string>& extraEnv) {
  RunResult result;
  if (argv.empty()) return result;
  // Everything the child needs is made before the fork.
  std::vector<std::string> args = argv;
  std::vector<std::string> env = ChildEnvironment(extraEnv);
  std::vector<char*> argPointers = Pointers(args);
  std::vector<char*> envPointers = Pointers(env);

  int outPipe[2];
  int errPipe[2];
  if (::pipe2(outPipe, O_CLOEXEC) != 0) return result;
  if (::pipe2(errPipe, O_CLOEXEC) != 0) {
    ::close(outPipe[0]);
    ::close(outPipe[1]);
    return result;
  }
  const pid_t pid = ::fork();
  if (pid == 0) {
    const int nullIn = ::open("/dev/null", O_RDONLY);
    if (nullIn >= 0) ::dup2(nullIn, STDIN_FILENO);
    ::dup2(outPipe[1], STDOUT_FILENO);
    ::dup2(errPipe[1], STDERR_FILENO);
    if (!folder.empty() && ::chdir(folder.c_str()) != 0) ::_exit(126);
    ::execvpe(argPointers[0], argPointers.data(), envPointers.data());
    ::_exit(127);
  }
  ::close(outPipe[1]);
  ::close(errPipe[1]);
  if (pid < 0) {
    ::close(outPipe[0]);
    ::close(errPipe[0]);
    return result;
  }

  // Both pipes are drained together, so a child that fills one never blocks.
  pollfd fds[2] = {{outPipe[0], POLLIN, 0}, {errPipe[0], POLLIN, 0}};
  std::string* sinks[2] = {&result.out, &result.err};
  int openCount = 2;
  while (openCount > 0) {
    if (::poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      char buffer[4096];
      const ssize_t got = ::read(fds[i].fd, buffer, sizeof buffer);
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) {
        ::close(fds[i].fd);
        fds[i].fd = -1;
        --openCount;
        continue;
      }
      sinks[i]->append(buffer, static_cast<std::size_t>(got));
    }
  }
  for (const pollfd& fd : fds) {
    if (fd.fd >= 0) ::close(fd.fd);
  }
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  result.status = WIFEXITED(status)     ? WEXITSTATUS(status)
                  : WIFSIGNALED(status) ? 128 + WTERMSIG(status)
                                        : -1;
  return result;
}

std::string Canonical(const std::string& path) {
  char resolved[PATH_MAX];
  return ::realpath(path.c_str(), resolved) != nullptr ? resolved : path;
}

std::string WithAsciiCrc(const std::string& body, char lead, const std::string& tail, bool holds) {
  char crc[16];
  std::snprintf(crc, sizeof crc, "%08x",
                static_cast<unsigned>(Crc32Block(body.data(), body.size()) ^ (holds ? 0u : 1u)));
  return lead + body + "*" + crc + tail;
}

std::string WithNmeaChecksum(const std::string& body, const std::string& tail, bool holds) {
  char sum[8];
  std::snprintf(sum, sizeof sum, "%02X",
                static_cast<unsigned>(NmeaXor(body.size(), body.data()) ^ (holds ? 0u : 1u)));
  return "$" + body + "*" + sum + tail;
}

}  // namespace tarnlog::testing
