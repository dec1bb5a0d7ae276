#include "platform/script_runner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

extern char** environ;

namespace tarnlog {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}
bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back()))
    text.remove_suffix(1);
  return text;
}

// Scripts written in text mode may end their lines in "\r\r\n".
std::string_view CutLineEnd(std::string_view line) {
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n'))
    line.remove_suffix(1);
  return line;
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// One whole line on standard error, in a single write.
void Report(std::string_view text) {
  std::string line = "tarnlog-script: ";
  line += text;
  line += '\n';
  const char* data = line.data();
  std::size_t left = line.size();
  while (left > 0) {
    ssize_t written = ::write(STDERR_FILENO, data, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    data += written;
    left -= static_cast<std::size_t>(written);
  }
}

// Nothing, or a letter and a colon: the drive line of a script.
bool IsDriveLine(std::string_view line) {
  return line.size() == 2 && IsLetter(line[0]) && line[1] == ':';
}

// A slash or backslash and one letter, such as "/s" or "\q".
bool IsSwitch(std::string_view word) {
  return word.size() == 2 && (word[0] == '/' || word[0] == '\\') && IsLetter(word[1]);
}

// Folds "." and ".." out of a path by its text, as the shell does with its
// current folder.
std::string Normalize(std::string_view path) {
  const bool absolute = !path.empty() && path.front() == '/';
  std::vector<std::string_view> parts;
  while (!path.empty()) {
    const std::size_t cut = path.find('/');
    std::string_view part = path.substr(0, cut);
    path = cut == std::string_view::npos ? std::string_view() : path.substr(cut + 1);
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      if (!parts.empty() && parts.back() != "..") {
        parts.pop_back();
      } else if (!absolute) {
        parts.push_back(part);
      }
      continue;
    }
    parts.push_back(part);
  }
  std::string result = absolute ? "/" : "";
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) result += '/';
    result += parts[i];
  }
  return result.empty() ? "." : result;
}

// The argument of a command as a path of `folder`: a backslash is a
// separator and a drive letter names nothing on this system.
std::string Resolve(const std::string& folder, std::string_view argument) {
  std::string path(argument);
  std::replace(path.begin(), path.end(), '\\', '/');
  if (path.size() >= 2 && IsLetter(path[0]) && path[1] == ':') path.erase(0, 2);
  if (path.empty()) return folder;
  if (path.front() != '/') path = JoinPath(folder, path);
  return Normalize(path);
}

std::string MakeAbsolute(std::string_view path) {
  if (!path.empty() && path.front() == '/') return Normalize(path);
  std::string here = tarnlog::CurrentFolder();
  if (here.empty()) here += '/';
  return Normalize(path.empty() ? here : JoinPath(here, path));
}

std::vector<std::string> ArgumentsWithoutSwitches(std::string_view rest) {
  std::vector<std::string> words = SplitCommandWords(rest);
  words.erase(std::remove_if(words.begin(), words.end(),
                             [](const std::string& word) { return IsSwitch(word); }),
              words.end());
  return words;
}

// The files (never folders) that a pattern such as "*.TXT" or "JPG\*.fig"
// names, relative to `folder`, as full paths.
std::vector<std::string> MatchingFiles(const std::string& folder, std::string_view pattern) {
  const std::string path = Resolve(folder, pattern);
  const std::size_t cut = path.rfind('/');
  const std::string parent = cut == 0 ? "/" : path.substr(0, cut);
  const std::string name = path.substr(cut + 1);
  std::vector<std::string> files;
  if (name.empty()) return files;
  for (const FolderEntry& entry : ListMatching(parent, name)) {
    if (!entry.isFolder) files.push_back(JoinPath(parent, entry.name));
  }
  return files;
}

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

bool MoveOneFile(const std::string& from, const std::string& to) {
  if (::rename(from.c_str(), to.c_str()) == 0) return true;
  if (errno != EXDEV) return false;
  return CopyFileReplacing(from, to) && RemoveFile(from);
}

bool IsRegularFile(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

// A file of `folder` named `name`, exactly or else without regard to case,
// as the Windows file system finds it.
std::string FindInFolder(const std::string& folder, const std::string& name) {
  const std::string exact = JoinPath(folder, name);
  if (IsRegularFile(exact)) return exact;
  if (name.find_first_of("*?") != std::string::npos) return {};
  for (const FolderEntry& entry : ListMatching(folder, name)) {
    if (!entry.isFolder) return JoinPath(folder, entry.name);
  }
  return {};
}

bool HasExtension(std::string_view word) {
  const std::size_t lastSeparator = word.find_last_of("/\\");
  const std::string_view name =
      lastSeparator == std::string_view::npos ? word : word.substr(lastSeparator + 1);
  return name.find('.') != std::string_view::npos;
}

// The file that a program line's first word names: a path when it holds a
// separator, else the current folder, then PATH, then "<word>.exe" here.
std::string FindProgram(const std::string& word, const std::string& folder) {
  const bool bare = !HasExtension(word);
  if (word.find_first_of("/\\") != std::string::npos) {
    const std::string path = Resolve(folder, word);
    if (IsRegularFile(path)) return path;
    if (bare && IsRegularFile(path + ".exe")) return path + ".exe";
    return {};
  }
  if (std::string local = FindInFolder(folder, word); !local.empty()) return local;
  if (const char* searchPath = std::getenv("PATH")) {
    std::string_view rest = searchPath;
    while (true) {
      const std::size_t cut = rest.find(':');
      const std::string_view entry = rest.substr(0, cut);
      if (!entry.empty()) {
        const std::string candidate = MakeAbsolute(JoinPath(entry, word));
        if (IsRegularFile(candidate) && ::access(candidate.c_str(), X_OK) == 0) return candidate;
      }
      if (cut == std::string_view::npos) break;
      rest.remove_prefix(cut + 1);
    }
  }
  if (bare) return FindInFolder(folder, word + ".exe");
  return {};
}

// A Windows executable begins with "MZ".
bool IsWindowsExecutable(const std::string& path) {
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  char head[2] = {};
  const bool windows = ::read(fd, head, 2) == 2 && head[0] == 'M' && head[1] == 'Z';
  ::close(fd);
  return windows;
}

}  // namespace

std::vector<std::string> SplitCommandWords(std::string_view line) {
  std::vector<std::string> words;
  std::string word;
  bool inWord = false;
  bool quoted = false;
  for (char c : line) {
    if (c == '"') {
      quoted = !quoted;
      inWord = true;  // "" alone is an empty word
      continue;
    }
    if (!quoted && (IsBlank(c) || c == '\r' || c == '\n')) {
      if (inWord) words.push_back(std::move(word));
      word.clear();
      inWord = false;
      continue;
    }
    word += c;
    inWord = true;
  }
  if (inWord) words.push_back(std::move(word));
  return words;
}

ScriptRunner::ScriptRunner(std::string currentFolder)
    : currentFolder_(MakeAbsolute(currentFolder)) {}

namespace {

// cd takes the rest of its line, so that an unquoted folder may hold blanks.
void ChangeFolder(std::string& currentFolder, std::string_view rest) {
  std::string dir;
  for (char c : TrimBlanks(rest)) {
    if (c != '"') dir += c;
  }
  std::string_view wanted = TrimBlanks(dir);
  if (wanted.size() >= 2 && IsSwitch(wanted.substr(0, 2)) &&
      (wanted.size() == 2 || IsBlank(wanted[2]))) {
    wanted = TrimBlanks(wanted.substr(2));  // "cd /d <dir>"
  }
  if (wanted.empty()) {
    const std::string line = currentFolder + "\n";
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
    return;
  }
  const std::string target = Resolve(currentFolder, wanted);
  if (!IsFolder(target)) {
    Report("cd: " + std::string(wanted) + ": no such folder");
    return;
  }
  currentFolder = target;
}

void DeleteFiles(const std::string& folder, std::string_view rest) {
  const std::vector<std::string> patterns = ArgumentsWithoutSwitches(rest);
  if (patterns.empty()) Report("del: no file named");
  for (const std::string& pattern : patterns) {
    const std::vector<std::string> files = MatchingFiles(folder, pattern);
    if (files.empty()) Report("del: could not find " + Resolve(folder, pattern));
    for (const std::string& file : files) {
      if (!RemoveFile(file)) Report("del: can't remove " + file);
    }
  }
}

// move and copy: every file that the pattern names goes into the target
// folder, or, when the target is no folder, the one file goes to that name.
void MoveOrCopy(const std::string& folder, std::string_view command, std::string_view rest) {
  const std::vector<std::string> args = ArgumentsWithoutSwitches(rest);
  const std::string name(command);
  if (args.size() != 2) {
    Report(name + ": line not understood: " + name + std::string(rest));
    return;
  }
  const std::vector<std::string> files = MatchingFiles(folder, args[0]);
  if (files.empty()) {
    Report(name + ": could not find " + Resolve(folder, args[0]));
    return;
  }
  const std::string target = Resolve(folder, args[1]);
  const bool intoFolder = IsFolder(target);
  if (!intoFolder && files.size() > 1) {
    Report(name + ": several files can't go to one file " + target);
    return;
  }
  const bool move = name == "move";
  for (const std::string& file : files) {
    const std::string to = intoFolder ? JoinPath(target, NameOf(file)) : target;
    const bool done = move ? MoveOneFile(file, to) : CopyFileReplacing(file, to);
    if (!done) Report(name + ": can't " + name + " " + file + " to " + to);
  }
}

}  // namespace

bool ScriptRunner::RunLine(std::string_view rawLine) {
  std::string_view line = TrimBlanks(CutLineEnd(rawLine));
  if (!line.empty() && line.front() == '@') line = TrimBlanks(line.substr(1));
  if (line.empty() || IsDriveLine(line)) return true;

  std::size_t wordEnd = 0;
  while (wordEnd < line.size() && IsLetter(line[wordEnd]))
    ++wordEnd;
  const std::string command = LowerAscii(line.substr(0, wordEnd));
  const std::string_view rest = line.substr(wordEnd);
  const char next = rest.empty() ? ' ' : rest.front();

  // "cd.." and "cd\dir" need no blank after the command word.
  if ((command == "cd" || command == "chdir") &&
      (IsBlank(next) || next == '.' || next == '\\' || next == '/')) {
    ChangeFolder(currentFolder_, rest);
    return true;
  }
  if (IsBlank(next)) {
    if (command == "exit") return false;
    if (command == "rem") return true;
    if (command == "del" || command == "erase") {
      DeleteFiles(currentFolder_, rest);
      return true;
    }
    if (command == "move" || command == "copy") {
      MoveOrCopy(currentFolder_, command, rest);
      return true;
    }
  }

  const std::vector<std::string> words = SplitCommandWords(line);
  if (words.empty() || words.front().empty()) {
    Report("line not understood: " + std::string(line));
  } else if (!RunProgram(words, currentFolder_)) {
    Report(words.front() + ": no such program");
  }
  return true;
}

bool RunProgram(const std::vector<std::string>& words, const std::string& folder) {
  if (words.empty() || words.front().empty()) return false;
  const std::string program = FindProgram(words.front(), folder);
  if (program.empty()) return false;

  std::vector<std::string> argv;
  const char* exeRunner = std::getenv("TARNLOG_EXE_RUNNER");
  const bool throughRunner =
      exeRunner != nullptr && *exeRunner != '\0' && IsWindowsExecutable(program);
  if (throughRunner) {
    argv = SplitCommandWords(exeRunner);
    argv.push_back(program);
  } else {
    argv.push_back(words.front());  // the name as written, as the shell passes it
  }
  argv.insert(argv.end(), words.begin() + 1, words.end());
  std::vector<char*> argPointers;
  for (std::string& arg : argv)
    argPointers.push_back(arg.data());
  argPointers.push_back(nullptr);

  // The child gets the script's folder; this process keeps its own.
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  pid_t pid = -1;
  const int error =
      throughRunner
          ? posix_spawnp(&pid, argPointers.front(), &actions, nullptr, argPointers.data(), environ)
          : posix_spawn(&pid, program.c_str(), &actions, nullptr, argPointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) {
    Report(words.front() + ": can't start " + (throughRunner ? argv.front() : program) + ": " +
           std::strerror(error));
    return true;
  }
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  return true;
}

int RunScriptFile(const std::string& scriptPath, const std::string& startFolder) {
  std::string bytes;
  if (!ReadWholeFile(scriptPath, bytes)) {
    Report("can't read " + scriptPath);
    return 1;
  }
  ScriptRunner runner(startFolder);
  std::size_t pos = 0;
  while (pos < bytes.size()) {
    std::size_t end = bytes.find('\n', pos);
    if (end == std::string::npos) end = bytes.size();
    const std::string_view line(bytes.data() + pos, end - pos);
    pos = end + 1;
    if (!runner.RunLine(line)) break;
  }
  return 0;
}

}  // namespace tarnlog
