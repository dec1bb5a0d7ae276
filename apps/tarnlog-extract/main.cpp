// tarnlog-extract <folder> -i <capture> [options...]: the extraction as a
// command, for scripts and benchmarks. It lends the driver what the Static
// page lends by default: "CRC" and "NEMACRC" on, the first board's IMU type.
//
// tarnlog-extract --static <folder> <capture> runs the Static page's full
// 125-entry vector.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "extract/extract_main.h"

int main(int argc, char** argv) {
  bool perfstatHeaderPending = true;
  tarnlog::ExtractSettings settings;
  settings.perfstatHeaderPending = &perfstatHeaderPending;
  tarnlog::ExtractionState& state = tarnlog::SharedExtractionState();

  if (argc == 4 && std::strcmp(argv[1], "--static") == 0) {
    std::vector<std::string> texts = tarnlog::FullExtractionVector(argv[2], argv[3]);
    std::vector<char*> full = tarnlog::ArgvOf(texts);
    tarnlog::ExtractMain(125, full.data(), settings, state);
  } else {
    tarnlog::ExtractMain(argc - 1, argv + 1, settings, state);
  }
  std::fflush(stdout);
  return 0;
}
