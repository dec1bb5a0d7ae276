#include "platform/script_runner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

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
  std::replace(line.begin(), line.end(), '\n', ' ');  // a name may hold one
  line += '\n';
  WriteAll(STDERR_FILENO, line.data(), line.size());
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

constexpr std::string_view kDriveRootedRefused = "a drive-rooted path is refused";
constexpr std::string_view kOutsideRefused = "outside the script's folder tree, line refused";

// "C:\...", "C:/..." and "\..." start at the root of a drive, which a script
// has no business with.
bool IsDriveRooted(std::string_view word) {
  if (!word.empty() && word.front() == '\\') return true;
  return word.size() >= 3 && IsLetter(word[0]) && word[1] == ':' &&
         (word[2] == '\\' || word[2] == '/');
}

// The path with every link and dot resolved, or empty when it doesn't exist.
std::string RealPath(const std::string& path) {
  char* real = ::realpath(path.c_str(), nullptr);
  if (real == nullptr) return {};
  std::string result(real);
  std::free(real);
  return result;
}

// Both paths real ones; an empty root holds nothing.
bool InsideTree(const std::string& root, const std::string& realPath) {
  if (root.empty()) return false;
  if (root == "/") return true;
  return realPath.compare(0, root.size(), root) == 0 &&
         (realPath.size() == root.size() || realPath[root.size()] == '/');
}

// Where an argument of del, move or copy points: the folder it names, with
// its links resolved (empty when there is no such folder), and the name or
// pattern in it. The command then acts on the real folder it checked.
struct Place {
  std::string shown;  // as the line resolves it, for messages
  std::string realFolder;
  std::string name;
};

// `folder` is absolute, and so is every path resolved from it.
Place PlaceOf(const std::string& folder, std::string_view argument) {
  Place place;
  place.shown = Resolve(folder, argument);
  const std::size_t cut = place.shown.rfind('/');
  place.realFolder = RealPath(cut == 0 ? "/" : place.shown.substr(0, cut));
  place.name = place.shown.substr(cut + 1);
  return place;
}

// A place whose folder exists and lies outside the tree. One whose folder
// doesn't exist holds nothing to act on and is reported as not found.
bool OutsideTree(const std::string& root, const Place& place) {
  return !place.realFolder.empty() && !InsideTree(root, place.realFolder);
}

// The files (never folders) that a place such as "*.TXT" or "JPG\*.fig"
// names, as full paths.
std::vector<std::string> FilesAt(const Place& place) {
  std::vector<std::string> files;
  if (place.realFolder.empty() || place.name.empty()) return files;
  for (const FolderEntry& entry : ListMatching(place.realFolder, place.name)) {
    if (!entry.isFolder) files.push_back(JoinPath(place.realFolder, entry.name));
  }
  return files;
}

// A copy writes through a link, so a destination that is one counts where
// it points; a dangling one can't be shown to stay inside.
bool WritesInside(const std::string& root, const std::string& destination) {
  struct stat info {};
  if (::lstat(destination.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return true;
  const std::string real = RealPath(destination);
  return !real.empty() && InsideTree(root, real);
}

// The folder a script file lies in: the root of the tree it may touch once
// its links and dots are resolved.
std::string FolderOfScript(const std::string& scriptPath) {
  const std::string folder = FolderOf(MakeAbsolute(scriptPath));
  return folder.empty() ? "/" : folder;
}

std::string NameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

bool MoveOneFile(const std::string& from, const std::string& to) {
  if (::rename(from.c_str(), to.c_str()) == 0) return true;
  if (errno != EXDEV) return false;
  return CopyFileReplacing(from, to) && RemoveFile(from);
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

// cd takes the rest of its line, so that an unquoted folder may hold blanks.
void ParseChangeFolder(std::string_view rest, ScriptLine& parsed) {
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
    parsed.command = ScriptCommand::kShowFolder;
    return;
  }
  parsed.command = ScriptCommand::kChangeFolder;
  parsed.arguments.emplace_back(wanted);
  if (wanted == "\\") {
    parsed.refusal = "cd\\: the root folder of a drive is refused";
  } else if (IsDriveRooted(wanted)) {
    parsed.refusal = "cd: " + std::string(wanted) + ": " + std::string(kDriveRootedRefused);
  }
}

void RefuseDriveRooted(const std::string& name, ScriptLine& parsed) {
  if (!parsed.refusal.empty()) return;
  for (const std::string& argument : parsed.arguments) {
    if (IsDriveRooted(argument)) {
      parsed.refusal = name + ": " + argument + ": " + std::string(kDriveRootedRefused);
      return;
    }
  }
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

ScriptLine ParseScriptLine(std::string_view rawLine) {
  ScriptLine parsed;
  std::string_view line = TrimBlanks(CutLineEnd(rawLine));
  if (!line.empty() && line.front() == '@') line = TrimBlanks(line.substr(1));
  if (line.empty() || IsDriveLine(line)) return parsed;
  // No file name or argument can hold one; the text after it would be lost
  // on the way to the system.
  if (line.find('\0') != std::string_view::npos) {
    parsed.refusal = "line not understood: it holds a NUL byte";
    return parsed;
  }

  std::size_t wordEnd = 0;
  while (wordEnd < line.size() && IsLetter(line[wordEnd]))
    ++wordEnd;
  const std::string command = LowerAscii(line.substr(0, wordEnd));
  const std::string_view rest = line.substr(wordEnd);
  const char next = rest.empty() ? ' ' : rest.front();

  // "cd.." and "cd\dir" need no blank after the command word.
  if ((command == "cd" || command == "chdir") &&
      (IsBlank(next) || next == '.' || next == '\\' || next == '/')) {
    ParseChangeFolder(rest, parsed);
    return parsed;
  }
  if (IsBlank(next)) {
    if (command == "exit") {
      parsed.command = ScriptCommand::kExit;
      return parsed;
    }
    if (command == "rem") return parsed;
    if (command == "del" || command == "erase") {
      parsed.command = ScriptCommand::kDelete;
      parsed.arguments = ArgumentsWithoutSwitches(rest);
      if (parsed.arguments.empty()) parsed.refusal = "del: no file named";
      RefuseDriveRooted("del", parsed);
      return parsed;
    }
    if (command == "move" || command == "copy") {
      parsed.command = command == "move" ? ScriptCommand::kMove : ScriptCommand::kCopy;
      parsed.arguments = ArgumentsWithoutSwitches(rest);
      if (parsed.arguments.size() != 2) {
        parsed.refusal = command + ": line not understood: " + command + std::string(rest);
      }
      RefuseDriveRooted(command, parsed);
      return parsed;
    }
  }

  parsed.command = ScriptCommand::kProgram;
  parsed.programWords = SplitCommandWords(line);
  if (parsed.programWords.empty() || parsed.programWords.front().empty()) {
    parsed.refusal = "line not understood: " + std::string(line);
  }
  return parsed;
}

ScriptRunner::ScriptRunner(std::string currentFolder)
    : currentFolder_(MakeAbsolute(currentFolder)), treeRoot_(RealPath(currentFolder_)) {}

ScriptRunner::ScriptRunner(std::string currentFolder, const std::string& treeRoot)
    : currentFolder_(MakeAbsolute(currentFolder)), treeRoot_(RealPath(treeRoot)) {}

bool ScriptRunner::RunLine(std::string_view text) {
  if (stopped_) return false;
  const ScriptLine line = ParseScriptLine(text);
  if (!line.refusal.empty()) {
    Report(line.refusal);
    return true;
  }
  switch (line.command) {
    case ScriptCommand::kNothing:
      break;
    case ScriptCommand::kShowFolder: {
      const std::string shown = currentFolder_ + "\n";
      std::fwrite(shown.data(), 1, shown.size(), stdout);
      std::fflush(stdout);
      break;
    }
    case ScriptCommand::kChangeFolder:
      ChangeFolder(line);
      break;
    case ScriptCommand::kDelete:
      Delete(line);
      break;
    case ScriptCommand::kMove:
    case ScriptCommand::kCopy:
      MoveOrCopy(line);
      break;
    case ScriptCommand::kExit:
      stopped_ = true;
      return false;
    case ScriptCommand::kProgram:
      if (!RunProgram(line.programWords, currentFolder_)) {
        Report(line.programWords.front() + ": no such program");
      }
      break;
  }
  return true;
}

void ScriptRunner::ChangeFolder(const ScriptLine& line) {
  const std::string& wanted = line.arguments.front();
  const std::string target = Resolve(currentFolder_, wanted);
  if (!IsFolder(target)) {
    Report("cd: " + wanted + ": no such folder, the script stops");
    stopped_ = true;
    return;
  }
  currentFolder_ = target;
}

void ScriptRunner::Delete(const ScriptLine& line) {
  // Every pattern is placed before anything goes, so that a line reaching
  // outside deletes nothing at all.
  std::vector<Place> places;
  for (const std::string& pattern : line.arguments) {
    places.push_back(PlaceOf(currentFolder_, pattern));
    if (OutsideTree(treeRoot_, places.back())) {
      Report("del: " + pattern + ": " + std::string(kOutsideRefused));
      return;
    }
  }
  for (const Place& place : places) {
    const std::vector<std::string> files = FilesAt(place);
    if (files.empty()) Report("del: could not find " + place.shown);
    for (const std::string& file : files) {
      if (!RemoveFile(file)) Report("del: can't remove " + file);
    }
  }
}

// move and copy: every file that the pattern names goes into the target
// folder, or, when the target is no folder, the one file goes to that name.
void ScriptRunner::MoveOrCopy(const ScriptLine& line) {
  const bool move = line.command == ScriptCommand::kMove;
  const std::string name = move ? "move" : "copy";
  const std::string& pattern = line.arguments[0];
  const std::string& targetText = line.arguments[1];
  const auto refuse = [&](const std::string& argument) {
    Report(name + ": " + argument + ": " + std::string(kOutsideRefused));
  };

  const Place from = PlaceOf(currentFolder_, pattern);
  if (OutsideTree(treeRoot_, from)) return refuse(pattern);
  const std::string target = Resolve(currentFolder_, targetText);
  const bool intoFolder = IsFolder(target);
  // Into a folder the files keep their names; else the one file takes the
  // target's name in the target's folder.
  const Place to =
      intoFolder ? Place{target, RealPath(target), {}} : PlaceOf(currentFolder_, targetText);
  if (OutsideTree(treeRoot_, to)) return refuse(targetText);

  const std::vector<std::string> files = FilesAt(from);
  if (files.empty()) {
    Report(name + ": could not find " + from.shown);
    return;
  }
  if (!intoFolder && files.size() > 1) {
    Report(name + ": several files can't go to one file " + target);
    return;
  }
  if (to.realFolder.empty()) {
    Report(name + ": can't " + name + " " + files.front() + " to " + target);
    return;
  }
  std::vector<std::string> destinations;
  for (const std::string& file : files) {
    destinations.push_back(JoinPath(to.realFolder, intoFolder ? NameOf(file) : to.name));
    if (!WritesInside(treeRoot_, destinations.back())) return refuse(targetText);
  }
  for (std::size_t i = 0; i < files.size(); ++i) {
    const bool done = move ? MoveOneFile(files[i], destinations[i])
                           : CopyFileReplacing(files[i], destinations[i]);
    if (!done) Report(name + ": can't " + name + " " + files[i] + " to " + destinations[i]);
  }
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
  InFile file;
  if (!file.Open(scriptPath, FileMode::kText)) {
    Report("can't read " + scriptPath);
    return 1;
  }
  ScriptRunner runner(startFolder, FolderOfScript(scriptPath));
  // Room for the longest line, the CR that text mode leaves of a "\r\r\n"
  // end, the LF and the closing NUL. Whatever the file, no more is held.
  char chunk[kMaxScriptLineLength + 3];
  std::size_t lineNumber = 0;
  while (!runner.Stopped()) {
    bool cut = false;
    const std::size_t length = file.ReadLineSkippingRest(chunk, sizeof chunk, &cut);
    if (length == 0) break;
    ++lineNumber;
    std::string_view body(chunk, length);
    if (body.back() == '\n') body.remove_suffix(1);
    if (!body.empty() && body.back() == '\r') body.remove_suffix(1);
    // The rest of a cut line is skipped with it, never run.
    if (cut || body.size() > kMaxScriptLineLength) {
      Report("line " + std::to_string(lineNumber) + ": longer than " +
             std::to_string(kMaxScriptLineLength) + " characters, skipped");
      continue;
    }
    runner.RunLine(body);
  }
  return 0;
}

}  // namespace tarnlog
