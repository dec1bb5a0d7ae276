// Replays a fuzz entry's corpus without libFuzzer: every file of the folders
// (or the files) named on the command line goes once through
// LLVMFuzzerTestOneInput. A failure shows as a crash or a sanitizer report;
// an empty or missing corpus fails too, so a misnamed folder can't pass.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Replay(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                std::istreambuf_iterator<char>());
  // A copy of exactly the input's size, so that a read past it is caught.
  std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(data.empty() ? nullptr : data.data(), data.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path path = argv[i];
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
      std::vector<std::filesystem::path> files;
      for (const auto& entry : std::filesystem::directory_iterator(path, error)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
      }
      std::sort(files.begin(), files.end());
      for (const auto& file : files)
        replayed += Replay(file) ? 1 : 0;
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
