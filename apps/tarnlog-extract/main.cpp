// tarnlog-extract <folder> -i <capture> [options...]: the extraction as a
// command, for scripts and benchmarks. It lends the driver what the Static
// page lends by default: "CRC" and "NEMACRC" on, the first board's IMU type.
//
// tarnlog-extract --static <folder> <capture> runs the Static page's full
// 125-entry vector.
//
// Unlike the pages, which look at the files, a script needs a status: 1 when
// the capture could not be read or a table could not be opened or written
// whole (the complaints on standard output are the system's own), else 0.
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

  tarnlog::ExtractOutcome outcome;
  if (argc == 4 && std::strcmp(argv[1], "--static") == 0) {
    std::vector<std::string> texts = tarnlog::FullExtractionVector(argv[2], argv[3]);
    std::vector<char*> full = tarnlog::ArgvOf(texts);
    outcome = tarnlog::RunExtraction(125, full.data(), settings, state);
  } else {
    outcome = tarnlog::RunExtraction(argc - 1, argv + 1, settings, state);
  }
  std::fflush(stdout);
  return outcome.captureRead && outcome.unwritableTables == 0 ? 0 : 1;
}
