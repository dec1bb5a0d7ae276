#include "pages/continuity/continue_script.h"

#include "platform/paths.h"

namespace tarnlog {

ContinueScriptPaths ContinueScriptPathsOf(const std::string& rowFolder, const std::string& stamp) {
  return {JoinPath(rowFolder, "Plot" + stamp + ".bat"),
          JoinPath(rowFolder, "Plot" + stamp + "2.bat")};
}

std::string ContinueScriptText(const std::string& rowFolder) {
  const std::string quoted = "\"" + rowFolder + "\"";
  std::string text = SplitPath(rowFolder).drive;
  text += "\ncd " + quoted + "\n";
  text += "All_continues.exe " + quoted + "\n \r\n ";
  // continue_analysis.exe gets no line: it is neither copied nor run, and
  // stays for manual use.
  text += "exit\n";
  return text;
}

}  // namespace tarnlog
