#include "pages/ins/ins_meas_script.h"

#include "platform/paths.h"

namespace tarnlog {

// The folder is the save text and the name joined by a separator. An empty
// save text thus names a folder at the file system's root, as the system's
// "\InsMeasProc-..." lands at the root of the current drive.
std::string InsResultFolder(std::string_view save, std::string_view sourceName,
                            std::string_view referenceName, std::string_view stamp) {
  std::string name = "InsMeasProc-";
  name.append(sourceName).append("-").append(referenceName).append("-").append(stamp);
  return JoinPath(save, name);
}

std::string InsMeasProcPlotText(std::string_view drive, std::string_view folder) {
  std::string text(drive);
  text.append("\ncd ").append(folder).append("\n").append(kInsMeasProcLine).append("\nexit\n");
  return text;
}

}  // namespace tarnlog
