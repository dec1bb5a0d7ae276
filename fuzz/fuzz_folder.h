// The temporary folder of a fuzz entry: made under /tmp at the first input,
// removed with everything in it when the fuzzer ends normally (it stays
// after a crash, beside the input that caused it).
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tarnlog::fuzz {

inline std::string& FolderPath() {
  static std::string folder;
  return folder;
}

inline void RemoveFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(FolderPath(), ignored);
}

// The folder, with `subfolders` made inside it at the first call.
inline const std::string& Folder(std::initializer_list<const char*> subfolders = {}) {
  std::string& folder = FolderPath();
  if (!folder.empty()) return folder;
  std::string pattern = "/tmp/tarnlog-fuzz-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) std::abort();
  for (const char* subfolder : subfolders)
    std::filesystem::create_directory(pattern + "/" + subfolder);
  folder = pattern;
  std::atexit(RemoveFolder);
  return folder;
}

}  // namespace tarnlog::fuzz
