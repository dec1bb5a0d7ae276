// Replays a fuzz entry's corpus without libFuzzer: every file of the folders
// (or the files) named on the command line goes once through
// LLVMFuzzerTestOneInput. A failure shows as a crash or a sanitizer report;
// an empty or missing corpus fails too, so a misnamed folder can't pass.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/folders.h"
#include "platform/paths.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Replay(const std::string& file) {
  std::string bytes;
  if (!tarnlog::ReadWholeFile(file, bytes)) return false;
  // A copy of exactly the input's size, so that a read past it is caught.
  const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(data.empty() ? nullptr : data.data(), data.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string path = argv[i];
    if (tarnlog::IsFolder(path)) {
      for (const tarnlog::FolderEntry& entry : tarnlog::ListMatching(path, "*")) {
        if (!entry.isFolder) replayed += Replay(tarnlog::JoinPath(path, entry.name)) ? 1 : 0;
      }
    } else if (Replay(path)) {
      ++replayed;
    } else {
      std::fprintf(stderr, "replay: can't read %s\n", argv[i]);
      return 1;
    }
  }
  std::printf("replayed %zu inputs\n", replayed);
  return replayed > 0 ? 0 : 1;
}
