// The script that runs the continuity analyser in one row's folder.
#pragma once

#include <string>

namespace tarnlog {

struct ContinueScriptPaths {
  std::string first;   // <row folder>/Plot<stamp>.bat, written and launched
  std::string second;  // <row folder>/Plot<stamp>2.bat, launched but never written
};

ContinueScriptPaths ContinueScriptPathsOf(const std::string& rowFolder, const std::string& stamp);

// The text before text-mode translation: the folder's drive with no line
// end of its own, the cd into the folder, the analyser with the folder as
// its one argument followed by a blank, CR LF and a blank, then "exit".
std::string ContinueScriptText(const std::string& rowFolder);

}  // namespace tarnlog
