// The stand-in for every external analysis program in the tests. Copied or
// linked under a tool's name, it leaves one record per call in the file named
// by $TARNLOG_STANDIN_LOG:
//
//   call <name it was called under>
//   exe <the file that ran>
//   cwd <working folder>
//   start <CLOCK_MONOTONIC ns at start>
//   end <CLOCK_MONOTONIC ns just before the record is written>
//   arg <argv[0]>
//   arg <argv[1]> ...
//   .
//
// $TARNLOG_STANDIN_SLEEP_MS makes it wait first; $TARNLOG_STANDIN_CREATE
// (';'-separated, relative to the working folder, "name/" for a folder) names
// the results it leaves behind. It always ends with status 0.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

std::int64_t MonotonicNs() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

void SleepMs(long ms) {
  timespec left{ms / 1000, (ms % 1000) * 1000000};
  while (nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
}

std::string ReadLink(const char* path) {
  char buffer[4096];
  const ssize_t size = readlink(path, buffer, sizeof buffer);
  return size > 0 ? std::string(buffer, static_cast<std::size_t>(size)) : std::string();
}

std::string WorkingFolder() {
  char buffer[4096];
  return getcwd(buffer, sizeof buffer) != nullptr ? std::string(buffer) : std::string();
}

// Makes every folder on the way to `path` (the last element too when it is
// a folder).
void MakeParents(const std::string& path, bool includingLast) {
  for (std::size_t cut = path.find('/', 1); cut != std::string::npos;
       cut = path.find('/', cut + 1)) {
    mkdir(path.substr(0, cut).c_str(), 0777);
  }
  if (includingLast) mkdir(path.c_str(), 0777);
}

void CreateResults(const std::string& list, const std::string& callName) {
  std::size_t from = 0;
  while (from <= list.size()) {
    std::size_t cut = list.find(';', from);
    if (cut == std::string::npos) cut = list.size();
    const std::string name = list.substr(from, cut - from);
    from = cut + 1;
    if (name.empty()) continue;
    if (name.back() == '/') {
      MakeParents(name.substr(0, name.size() - 1), true);
      continue;
    }
    MakeParents(name, false);
    const int fd = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) continue;
    const std::string text = "made by " + callName + "\n";
    if (write(fd, text.data(), text.size()) < 0) {
      // nothing to do: the record still shows the call
    }
    close(fd);
  }
}

std::string BaseName(const std::string& path) {
  const std::size_t cut = path.rfind('/');
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

}  // namespace

int main(int argc, char** argv) {
  const std::int64_t start = MonotonicNs();
  const std::string callName = BaseName(argc > 0 ? argv[0] : "");

  if (const char* sleepMs = std::getenv("TARNLOG_STANDIN_SLEEP_MS")) {
    const long ms = std::strtol(sleepMs, nullptr, 10);
    if (ms > 0) SleepMs(ms);
  }
  if (const char* create = std::getenv("TARNLOG_STANDIN_CREATE")) {
    CreateResults(create, callName);
  }

  const char* logPath = std::getenv("TARNLOG_STANDIN_LOG");
  if (logPath == nullptr || *logPath == '\0') return 0;

  std::string record = "call " + callName + "\n";
  record += "exe " + ReadLink("/proc/self/exe") + "\n";
  record += "cwd " + WorkingFolder() + "\n";
  record += "start " + std::to_string(start) + "\n";
  record += "end " + std::to_string(MonotonicNs()) + "\n";
  for (int i = 0; i < argc; ++i)
    record += "arg " + std::string(argv[i]) + "\n";
  record += ".\n";

  // One write to an O_APPEND file: records of parallel calls never interleave.
  const int fd = open(logPath, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (fd < 0) return 0;
  const char* data = record.data();
  std::size_t left = record.size();
  while (left > 0) {
    const ssize_t written = write(fd, data, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    data += written;
    left -= static_cast<std::size_t>(written);
  }
  close(fd);
  return 0;
}
