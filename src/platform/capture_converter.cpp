#include "platform/capture_converter.h"

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/processes.h"

namespace tarnlog {

std::string ConvertCapture(const std::string& startFolder, const std::string& path,
                           ConvertTarget target) {
  const PathParts parts = SplitPath(path);
  const std::string stem = parts.drive + parts.folder + parts.name;
  const std::string script = stem + ".bat";
  const bool binary = target == ConvertTarget::kBinary;
  // One line and no line end: the converter is all the script runs.
  WriteWholeFile(script,
                 startFolder + "/EXE/Converter.exe " + path + " -batch" + (binary ? " -b" : " -a"),
                 FileMode::kText);
  RunScriptAndWait(script);
  // The del may only reach the folder the script was written in.
  RunCommandLine("del " + script, parts.drive + parts.folder);
  return stem + (binary ? ".BIN" : ".ASC");
}

}  // namespace tarnlog
