// The temporary folder of a fuzz entry: made at the first input, in memory
// (/dev/shm) where there is such a folder, else under /tmp; removed with
// everything in it when the fuzzer ends normally (it stays after a crash,
// beside the input that caused it).
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/files.h"

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
  std::error_code error;
  std::string pattern = std::filesystem::is_directory("/dev/shm", error)
                            ? "/dev/shm/tarnlog-fuzz-XXXXXX"
                            : "/tmp/tarnlog-fuzz-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) std::abort();
  for (const char* subfolder : subfolders)
    std::filesystem::create_directory(pattern + "/" + subfolder);
  folder = pattern;
  std::atexit(RemoveFolder);
  return folder;
}

// Removes a file that the next step writes again. Rewriting a file over its
// old blocks makes the file system flush it on close, which costs
// milliseconds an input; a new file doesn't.
inline void Renew(const std::string& path) {
  ::unlink(path.c_str());
}

// Writes `bytes` as a new file of that name.
inline void WriteNew(const std::string& path, std::string_view bytes) {
  Renew(path);
  WriteWholeFile(path, bytes, FileMode::kBinary);
}

// Empties the folder, then writes the input behind its first byte (the mode,
// which the entry reads itself) there as the new file `name` and returns its
// path. `size` is at least 1. Every file of an input is thus new, as with
// Renew, also those the reader under test appends to.
inline std::string WriteInputFile(const std::string& name, const std::uint8_t* data,
                                  std::size_t size) {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(Folder(), ignored))
    std::filesystem::remove_all(entry.path(), ignored);
  const std::string path = Folder() + "/" + name;
  WriteNew(path, std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  return path;
}

}  // namespace tarnlog::fuzz
