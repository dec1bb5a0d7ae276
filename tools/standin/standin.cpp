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
//
// Two switches act only when the stand-in runs under the name they give, so
// that the several tools of one run can share an environment:
//
//   TARNLOG_STANDIN_APPEND="<call name>:<arg index>:<text>"
//     appends <text> and a '\n' to the file argv[<arg index>] names, as the
//     production plotter adds its row to the result file. "{rover}" in the
//     text stands for the rover of the pair folder argv[1]: its last element
//     "base--rover" or "base--rover--H" gives the text between the first
//     "--" and the next, and a name without "--" gives itself.
//   TARNLOG_STANDIN_COPY="<call name>:<arg index>:<suffix>"
//     copies the file argv[<arg index>] to the same path with its suffix
//     (from the last '.' of its last element, the dot included) replaced by
//     <suffix>, as Converter.exe leaves its ".BIN" beside the source.
//
// An index past the arguments, or a file that can't be read or written,
// does nothing.
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

// Writes `bytes` to `path`, opened with `how` (O_TRUNC or O_APPEND). A file
// that can't be opened or written keeps what it got: the record still shows
// the call.
void WriteToFile(const std::string& path, const std::string& bytes, int how) {
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | how, 0666);
  if (fd < 0) return;
  const char* data = bytes.data();
  std::size_t left = bytes.size();
  while (left > 0) {
    const ssize_t written = write(fd, data, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    data += written;
    left -= static_cast<std::size_t>(written);
  }
  close(fd);
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
    WriteToFile(name, "made by " + callName + "\n", O_TRUNC);
  }
}

std::string BaseName(const std::string& path) {
  const std::size_t cut = path.rfind('/');
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

// A switch "<call name>:<arg index>:<text>" that names this call: the
// argument it points at and the text; false when it is for another tool or
// points past the arguments.
bool SwitchOfCall(const char* variable, const std::string& callName, int argc, char** argv,
                  std::string& argument, std::string& text) {
  const char* value = std::getenv(variable);
  if (value == nullptr) return false;
  const std::string setting = value;
  const std::size_t nameEnd = setting.find(':');
  if (nameEnd == std::string::npos || setting.compare(0, nameEnd, callName) != 0) return false;
  const std::size_t indexEnd = setting.find(':', nameEnd + 1);
  if (indexEnd == std::string::npos) return false;
  const std::string indexText = setting.substr(nameEnd + 1, indexEnd - nameEnd - 1);
  char* end = nullptr;
  const long index = std::strtol(indexText.c_str(), &end, 10);
  if (indexText.empty() || *end != '\0' || index < 0 || index >= argc) return false;
  argument = argv[index];
  text = setting.substr(indexEnd + 1);
  return true;
}

// The rover of a pair folder "base--rover" or "base--rover--H".
std::string RoverOfPairFolder(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/')
    folder.pop_back();
  const std::string name = BaseName(folder);
  const std::size_t first = name.find("--");
  if (first == std::string::npos) return name;
  const std::size_t from = first + 2;
  const std::size_t next = name.find("--", from);
  return name.substr(from, next == std::string::npos ? std::string::npos : next - from);
}

void AppendLine(const std::string& callName, int argc, char** argv) {
  std::string target;
  std::string text;
  if (!SwitchOfCall("TARNLOG_STANDIN_APPEND", callName, argc, argv, target, text)) return;
  const std::string rover = argc > 1 ? RoverOfPairFolder(argv[1]) : std::string();
  for (std::size_t at = text.find("{rover}"); at != std::string::npos;
       at = text.find("{rover}", at + rover.size())) {
    text.replace(at, 7, rover);
  }
  WriteToFile(target, text + "\n", O_APPEND);
}

void CopyWithSuffix(const std::string& callName, int argc, char** argv) {
  std::string source;
  std::string suffix;
  if (!SwitchOfCall("TARNLOG_STANDIN_COPY", callName, argc, argv, source, suffix)) return;
  const std::size_t nameStart = source.size() - BaseName(source).size();
  const std::size_t dot = source.rfind('.');
  const std::string target =
      (dot == std::string::npos || dot < nameStart ? source : source.substr(0, dot)) + suffix;
  if (target == source) return;
  const int in = open(source.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) return;
  std::string bytes;
  char block[65536];
  for (ssize_t got = read(in, block, sizeof block); got != 0; got = read(in, block, sizeof block)) {
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) break;
    bytes.append(block, static_cast<std::size_t>(got));
  }
  close(in);
  WriteToFile(target, bytes, O_TRUNC);
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
  AppendLine(callName, argc, argv);
  CopyWithSuffix(callName, argc, argv);

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
  WriteToFile(logPath, record, O_APPEND);
  return 0;
}
