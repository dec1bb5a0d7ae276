#include "platform/script_text.h"

#include "platform/paths.h"

namespace tarnlog {

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  quoted += text;
  quoted += '"';
  return quoted;
}

std::string DriveLine(std::string_view path) {
  return PathPart(path, 1) + "\n";
}

std::string EnterFolderLine(std::string_view folder) {
  return "cd " + Quoted(folder) + "\n";
}

}  // namespace tarnlog
