// The path texts a page keeps for each file of its list. A page's slot
// record derives from it and adds its own values, so moving a file's texts
// up the list, or clearing them, leaves those values where they are.
#pragma once

#include <string>

namespace tarnlog {

struct FileSlotPaths {
  std::string path;    // as added; a relative path is taken from the current folder
  std::string folder;  // drive and folder, with the trailing separator
  std::string name;    // without extension
  std::string nameWithExtension;
};

// The four texts of `path`, with its extension apart (the pages keep the
// extension of the file added last).
FileSlotPaths FileSlotPathsOf(const std::string& path, std::string* extension = nullptr);

}  // namespace tarnlog
