// Fuzz target of the extraction's option parser over arbitrary argument
// vectors: the input cut at every NUL byte gives the arguments, held in a
// vector of exactly argc entries and its null, as a process gets them, so
// that a read past the null is caught. Every table the parser names must lie
// in the output folder.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "extract/extract_options.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> texts;
  std::string text;
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == 0) {
      texts.push_back(text);
      text.clear();
    } else {
      text += static_cast<char>(data[i]);
    }
  }
  if (!text.empty() || texts.empty()) texts.push_back(text);

  std::vector<char*> argv;
  for (std::string& arg : texts)
    argv.push_back(arg.data());
  argv.push_back(nullptr);
  const int argc = static_cast<int>(texts.size());

  // The complaints go to standard output; keep the fuzzer's quiet.
  std::FILE* saved = stdout;
  static std::FILE* sink = std::fopen("/dev/null", "w");
  if (sink) stdout = sink;
  const tarnlog::ExtractOptions options = tarnlog::ParseExtractOptions(argc, argv.data());
  stdout = saved;

  const std::string prefix = options.outputFolder + "/";
  for (std::size_t i = 0; i < tarnlog::kTableCount; ++i) {
    if (!options.wanted[i]) continue;
    if (options.paths[i].compare(0, prefix.size(), prefix) != 0) std::abort();
  }
  if (options.outputCount < 0) std::abort();
  return 0;
}
