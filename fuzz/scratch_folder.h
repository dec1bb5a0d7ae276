// The temporary folder of one fuzz entry: made once under /tmp, removed when
// the fuzzer ends normally (it stays after a crash, beside the input). The
// readers under test take a path, so each input is written there as a file.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace tarnlog::fuzz {

inline std::string& ScratchFolderPath() {
  static std::string folder;
  return folder;
}

inline void RemoveScratchFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(ScratchFolderPath(), ignored);
}

inline const std::string& ScratchFolder() {
  std::string& folder = ScratchFolderPath();
  if (!folder.empty()) return folder;
  std::string pattern = "/tmp/tarnlog-fuzz-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) std::abort();
  folder = pattern;
  std::atexit(RemoveScratchFolder);
  return folder;
}

// Empties the scratch folder, then writes the input behind its first byte
// (the mode, which the entry reads itself) there as the file `name` and
// returns its path. `size` is at least 1. Every file of an input is thus
// new: ext4 writes a file truncated and rewritten back to disk when it is
// closed, which would cost milliseconds an input.
inline std::string WriteInputFile(const std::string& name, const std::uint8_t* data,
                                  std::size_t size) {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(ScratchFolder(), ignored))
    std::filesystem::remove_all(entry.path(), ignored);
  const std::string path = ScratchFolder() + "/" + name;
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) std::abort();
  if (size > 1 && std::fwrite(data + 1, 1, size - 1, file) != size - 1) std::abort();
  std::fclose(file);
  return path;
}

}  // namespace tarnlog::fuzz
