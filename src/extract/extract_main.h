// ExtractMain: one receiver capture to a folder of per-message text tables.
//
//   argv[0]  the output folder, no trailing separator
//   argv[1]  "-i"
//   argv[2]  the capture
//   argv[3…] options naming the tables (see extract_options.h)
//
// Returns 0 in every case; callers look at the files.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "extract/extraction_state.h"

namespace tarnlog {

// The run as the pages call it, with the process's shared state and the
// settings the Static page lends.
int ExtractMain(int argc, char** argv, const ExtractSettings& settings, ExtractionState& state);

// What a run could not do. The pages learn nothing from a run; the
// project's own command ends with a failure status on either.
struct ExtractOutcome {
  bool captureRead = false;  // the capture was opened and read to its end
  int unwritableTables = 0;  // tables that could not be opened or written whole
};

// ExtractMain with its outcome.
ExtractOutcome RunExtraction(int argc, char** argv, const ExtractSettings& settings,
                             ExtractionState& state);

// The same sentence loop and dispatch over bytes already in memory, fed in
// blocks as the mapped views are (for the fuzzer and the tests).
int ExtractFromMemory(int argc, char** argv, const char* bytes, std::size_t size,
                      const ExtractSettings& settings, ExtractionState& state);

// The Static page's full vector: 126 texts of which the first 125 are
// passed as argc, so "-GS" arrives last and its value "GNS.txt" lies one
// past argc.
std::vector<std::string> FullExtractionVector(const std::string& outputFolder,
                                              const std::string& capturePath);

// argv pointers over `texts` (which must outlive them), with one past the
// end still readable as the parser expects.
std::vector<char*> ArgvOf(std::vector<std::string>& texts);

}  // namespace tarnlog
