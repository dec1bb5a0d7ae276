// Fuzz target of the extraction: the sentence scanner over the bytes until
// they are used up, then the whole driver with every table over the same
// bytes.
//
// The first input byte chooses the run's settings and isn't part of the
// capture: bit 0 turns the ASCII CRC check on, bit 1 the NMEA check, bits
// 2-3 pick the view size (the default, or 4, 8 or 16 KiB so that sentences
// straddle view ends), bit 4 the real-value mode, bits 5-6 the scanner's
// line buffer (100 KiB, or 16, 300 or 4096 bytes, so that long sentences
// are cut to fit). With both checks off, as in the seed corpus, mutated
// sentences reach the extractors.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "extract/extract_main.h"
#include "extract/scan_sentence.h"

namespace {

constexpr std::size_t kLineCapacities[] = {102400, 16, 300, 4096};

// The tables are reopened "wb" by every run, so one folder serves all; it
// goes when the fuzzer ends normally and stays after a crash. The driver
// also opens the capture named in the vector; an empty file there keeps it
// from reporting on every input.
std::string& OutputFolder() {
  static std::string folder;
  return folder;
}

void RemoveOutputFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(OutputFolder(), ignored);
}

const std::string& MakeOutputFolder() {
  std::string& folder = OutputFolder();
  if (!folder.empty()) return folder;
  std::string pattern = "/tmp/tarnlog-fuzz-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) std::abort();
  if (std::FILE* capture = std::fopen((pattern + "/capture.log").c_str(), "wb")) {
    std::fclose(capture);
  }
  folder = pattern;
  std::atexit(RemoveOutputFolder);
  return folder;
}

void ScanAll(const char* bytes, std::size_t size, std::size_t lineCapacity) {
  // Exactly as large as declared, so that a write past it is caught.
  std::vector<char> line(lineCapacity);
  const char* cursor = bytes;
  std::size_t remaining = size;
  while (remaining > 0) {
    const std::size_t before = remaining;
    const char* next = cursor;
    std::size_t length = 0;
    int kind = 0;
    const int result =
        tarnlog::ScanSentence(cursor, &remaining, &next, line.data(), line.size(), &length, &kind);
    if (result == 0 && remaining == before) break;  // the tail waits for more bytes
    // Every other outcome takes bytes, and the cursor moves by as many.
    if (remaining >= before || next != cursor + (before - remaining)) std::abort();
    cursor = next;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  const char* bytes = reinterpret_cast<const char*>(data + 1);
  const std::size_t length = size - 1;

  ScanAll(bytes, length, kLineCapacities[(mode >> 5) & 0x03]);

  static bool perfstatHeaderPending = true;
  tarnlog::ExtractSettings settings;
  settings.asciiCrc = (mode & 0x01) != 0;
  settings.nmeaCrc = (mode & 0x02) != 0;
  const std::size_t viewChoice = (mode >> 2) & 0x03;
  settings.viewSize = viewChoice == 0 ? 0 : std::size_t{2048} << viewChoice;
  settings.realValueMode = (mode & 0x10) != 0;
  settings.perfstatHeaderPending = &perfstatHeaderPending;
  tarnlog::ExtractionState state;
  const std::string& folder = MakeOutputFolder();
  std::vector<std::string> texts = tarnlog::FullExtractionVector(folder, folder + "/capture.log");
  std::vector<char*> argv = tarnlog::ArgvOf(texts);
  tarnlog::ExtractFromMemory(125, argv.data(), bytes, length, settings, state);
  return 0;
}
