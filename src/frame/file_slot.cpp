#include "frame/file_slot.h"

#include "platform/folders.h"
#include "platform/paths.h"

namespace tarnlog {

FileSlotPaths FileSlotPathsOf(const std::string& path, std::string* extension) {
  FileSlotPaths paths;
  paths.path = AbsolutePath(path);
  const PathParts parts = SplitPath(paths.path);
  paths.folder = parts.drive + parts.folder;
  paths.name = parts.name;
  paths.nameWithExtension = parts.name + parts.extension;
  if (extension) *extension = parts.extension;
  return paths;
}

}  // namespace tarnlog
