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
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnlog {

// Splits a command line into words as the Windows shell hands them to a
// program: blanks separate, double quotes group and are removed.
std::vector<std::string> SplitCommandWords(std::string_view line);

class ScriptRunner {
 public:
  explicit ScriptRunner(std::string currentFolder);

  // Runs one line (its line end, if any, already cut or still there).
  // Returns false when the line was `exit`.
  bool RunLine(std::string_view line);

  const std::string& CurrentFolder() const { return currentFolder_; }

 private:
  std::string currentFolder_;
};

// Runs a whole script file from `startFolder`; stops at `exit` or the end.
// Returns 0, or 1 when the file can't be read.
int RunScriptFile(const std::string& scriptPath, const std::string& startFolder);

// Runs one program with `words` (words[0] the program as written) in
// `folder` and waits for it. Returns false when no program was found.
bool RunProgram(const std::vector<std::string>& words, const std::string& folder);

}  // namespace tarnlog
