// The script runner: carries out the system's .bat scripts line by line, as
// the Windows command shell would for the few commands the scripts use.
//
//   ""  or "D:"            nothing (a Linux drive is empty)
//   cd <dir>, cd "<dir>", cd.., cd ..
//   del / Del <pattern>... wildcards matched case-insensitively; /s-style
//                          switches ignored
//   move <pattern> <dir>, copy <from> <to>
//   exit                   ends the script
//   anything else          a program line: the first word is looked up in the
//                          current folder first, then on PATH; double quotes
//                          group words and are removed
//
// A backslash inside the argument of the built-in commands counts as a
// separator. A program that can't be found, or a line that isn't understood,
// gives one line on standard error and the script goes on.
//
// Where the Windows shell would reach anywhere, the runner keeps a script to
// its own folder tree: del, move and copy act only below the tree root (the
// folder the script file lies in, with links and ".." resolved), source
// files and target alike. A line that would reach outside it, a drive-rooted
// path ("C:\...", "C:/...", "\...") in a command's argument, or "cd\" is
// refused with one line on standard error and the script goes on. A cd that
// fails stops the script, since every later line would run in the wrong
// folder. Program lines are not confined: they run the laboratory's tools.
//
// Script files are read a line at a time; a line longer than the shell's
// 8191 characters is refused whole and the script goes on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

// The longest line the Windows command shell takes, line end not counted.
inline constexpr std::size_t kMaxScriptLineLength = 8191;

// Splits a command line into words as the Windows shell hands them to a
// program: blanks separate, double quotes group and are removed.
std::vector<std::string> SplitCommandWords(std::string_view line);

enum class ScriptCommand {
  kNothing,       // empty line, drive line, rem
  kShowFolder,    // cd alone: prints the current folder
  kChangeFolder,  // cd <dir>
  kDelete,        // del, erase
  kMove,
  kCopy,
  kExit,
  kProgram,
};

// One script line as its text alone decides it; nothing on disk is looked at.
struct ScriptLine {
  ScriptCommand command = ScriptCommand::kNothing;
  // Built-in commands: quotes removed, switches dropped. cd: the one folder;
  // del: the patterns; move and copy: the pattern and the target.
  std::vector<std::string> arguments;
  // Program lines: the program as written, then its arguments.
  std::vector<std::string> programWords;
  // Not empty when the line is refused from its text (a drive-rooted path,
  // "cd\", a line not understood): this goes to standard error, nothing runs.
  std::string refusal;
};

// Reads one line (its line end, if any, cut or still there).
ScriptLine ParseScriptLine(std::string_view line);

class ScriptRunner {
 public:
  // Starts in `currentFolder`; del, move and copy stay below `treeRoot`
  // (taken with its links resolved; a root that doesn't exist confines
  // everything). Without a root the start folder is the root.
  explicit ScriptRunner(std::string currentFolder);
  ScriptRunner(std::string currentFolder, const std::string& treeRoot);

  // Runs one line (its line end, if any, already cut or still there).
  // Returns false when the line was `exit`, or when the runner had stopped
  // before it. A cd that fails stops the runner: Stopped() then holds and
  // no later line runs.
  bool RunLine(std::string_view line);

  bool Stopped() const { return stopped_; }
  const std::string& CurrentFolder() const { return currentFolder_; }

 private:
  void ChangeFolder(const ScriptLine& line);
  void Delete(const ScriptLine& line);
  void MoveOrCopy(const ScriptLine& line);

  std::string currentFolder_;
  std::string treeRoot_;
  bool stopped_ = false;
};

// Runs a whole script file from `startFolder`, confined to the tree of the
// folder the script lies in; stops at `exit`, a failed cd or the end.
// Returns 0, or 1 when the file can't be read (also when it is no regular
// file: a folder, a FIFO, a device).
int RunScriptFile(const std::string& scriptPath, const std::string& startFolder);

// Runs one program with `words` (words[0] the program as written) in
// `folder` and waits for it. Returns false when no program was found.
bool RunProgram(const std::vector<std::string>& words, const std::string& folder);

}  // namespace tarnlog
