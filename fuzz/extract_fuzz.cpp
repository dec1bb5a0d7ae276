// Fuzz target of the extraction.
//
// The first input byte chooses what runs and isn't part of the capture.
//
// Bit 7 clear: the sentence scanner over the bytes until they are used up,
// then the whole driver with every table over the same bytes. Bit 0 turns
// the ASCII CRC check on, bit 1 the NMEA check, bits 2-3 pick the view size
// (the default, or 4, 8 or 16 KiB so that sentences straddle view ends), bit
// 4 the real-value mode, bits 5-6 the scanner's line buffer (100 KiB, or 16,
// 300 or 4096 bytes, so that long sentences are cut to fit). With both
// checks off, as in most seeds, mutated sentences reach the extractors.
//
// Bit 7 set: damage costs only the damaged bytes. The rest of the input is
// cut at every 0xFE byte into pieces of damage; a piece that begins with
// 0xFD, a byte b and a count c stands for (c + 1) KiB of b followed by its
// remaining bytes, so that zero-filled holes and long runs fit in a small
// input. Two good BESTPOSA sentences go in front of every piece and behind
// the last, and the driver runs with `-BP` and both checks on, in the views
// that bits 2-3 pick. Every good sentence must give its row, whatever the
// damage, unless the damage holds a "#PASSCOM" wrapper (which carries what
// follows it up to a line end) or a binary frame that passes its CRC.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "extract/checksums.h"
#include "extract/extract_main.h"
#include "extract/scan_sentence.h"
#include "fuzz_folder.h"
#include "platform/files.h"

namespace {

constexpr std::size_t kLineCapacities[] = {102400, 16, 300, 4096};
constexpr std::size_t kMaxPropertyCapture = 2 << 20;

// The tables are reopened "wb" by every run, so one folder serves all. The
// driver also opens the capture named in the vector; an empty file there
// keeps it from reporting on every input.
const std::string& OutputFolder() {
  static const std::string folder = [] {
    const std::string made = tarnlog::fuzz::Folder();
    tarnlog::fuzz::WriteNew(made + "/capture.log", "");
    return made;
  }();
  return folder;
}

std::size_t ViewSize(std::uint8_t mode) {
  const std::size_t viewChoice = (mode >> 2) & 0x03;
  return viewChoice == 0 ? 0 : std::size_t{2048} << viewChoice;
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
    tarnlog::ScanSentence(cursor, &remaining, &next, line.data(), line.size(), &length, &kind);
    if (next == cursor) {
      // Ran out: nothing may have moved.
      if (remaining != before) std::abort();
      break;
    }
    // Every other outcome takes bytes, and the cursor moves by as many.
    if (remaining >= before || next != cursor + (before - remaining)) std::abort();
    cursor = next;
  }
}

// The driver over `bytes` with the first `argc` of `texts` as its vector.
void RunDriver(const char* bytes, std::size_t size, const tarnlog::ExtractSettings& settings,
               std::vector<std::string> texts, int argc) {
  tarnlog::ExtractionState state;
  std::vector<char*> argv = tarnlog::ArgvOf(texts);
  tarnlog::ExtractFromMemory(argc, argv.data(), bytes, size, settings, state);
}

std::string CapturePath() {
  return OutputFolder() + "/capture.log";
}

// ---- the property ----

std::string GoodBestPos(int second) {
  char body[400];
  std::snprintf(body, sizeof body,
                "BESTPOSA,COM1,0,71.5,FINESTEERING,2163,%d.000,02000000,b1f6,16248;SOL_COMPUTED,"
                "NARROW_INT,51.15043874397,-114.03066788586,1097.6822,-17.0000,WGS84,0.0100,"
                "0.0090,0.0200,\"0\",1.000,0.000,18,18,18,18,00,02,11,01",
                second);
  char crc[16];
  std::snprintf(crc, sizeof crc, "%08x",
                static_cast<unsigned>(tarnlog::Crc32Block(
                    reinterpret_cast<const unsigned char*>(body), std::strlen(body))));
  return std::string("#") + body + "*" + crc + "\r\n";
}

std::string ExpandPiece(std::string_view piece) {
  if (piece.size() < 3 || static_cast<unsigned char>(piece[0]) != 0xFD) return std::string(piece);
  const std::size_t run = (static_cast<std::size_t>(static_cast<unsigned char>(piece[2])) + 1)
                          << 10;
  return std::string(run, piece[1]) + std::string(piece.substr(3));
}

// Whether a binary frame that passes its CRC starts anywhere in `bytes`.
bool HoldsGoodFrame(const std::string& bytes) {
  static const char kSync[] = "\xAA\x44\x12\x1C";
  for (std::size_t at = bytes.find(kSync); at != std::string::npos;
       at = bytes.find(kSync, at + 1)) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data() + at);
    const std::size_t available = bytes.size() - at;
    if (available < 10 || available < p[3]) continue;
    const std::size_t crcEnd = p[3] + (p[8] | static_cast<std::size_t>(p[9]) << 8);
    if (available < crcEnd + 4) continue;
    const std::uint32_t stored = p[crcEnd] | p[crcEnd + 1] << 8 | p[crcEnd + 2] << 16 |
                                 static_cast<std::uint32_t>(p[crcEnd + 3]) << 24;
    if (tarnlog::Crc32Block(p, crcEnd) == stored) return true;
  }
  return false;
}

void CheckDamageCostsOnlyItself(std::uint8_t mode, const char* bytes, std::size_t size) {
  std::string capture;
  std::set<int> expected;
  bool excluded = false;
  int second = 0;
  const auto addGood = [&] {
    for (int k = 0; k < 2; ++k, ++second) {
      capture += GoodBestPos(second);
      expected.insert(second);
    }
  };
  std::string_view rest(bytes, size);
  while (capture.size() < kMaxPropertyCapture) {
    const std::size_t cut = rest.find('\xFE');
    const std::string damage = ExpandPiece(rest.substr(0, cut));
    if (damage.find("#PASSCOM") != std::string::npos) excluded = true;
    addGood();
    capture += damage;
    if (cut == std::string_view::npos) break;
    rest.remove_prefix(cut + 1);
  }
  addGood();
  if (HoldsGoodFrame(capture)) excluded = true;

  tarnlog::ExtractSettings settings;
  settings.viewSize = ViewSize(mode);
  RunDriver(capture.data(), capture.size(), settings, {OutputFolder(), "-i", CapturePath(), "-BP"},
            4);
  if (excluded) return;

  std::string table;
  if (!tarnlog::ReadWholeFile(OutputFolder() + "/bestpos.txt", table)) std::abort();
  std::set<int> found;
  for (std::size_t at = 0; at < table.size();) {
    const std::size_t comma = table.find(',', at);
    if (comma == std::string::npos) break;
    found.insert(std::atoi(table.c_str() + comma + 1));
    const std::size_t end = table.find('\n', at);
    at = end == std::string::npos ? table.size() : end + 1;
  }
  for (int good : expected) {
    if (found.count(good) == 0) {
      std::fprintf(stderr, "good BESTPOSA of second %d gave no row\n", good);
      std::abort();
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  const char* bytes = reinterpret_cast<const char*>(data + 1);
  const std::size_t length = size - 1;
  if (mode & 0x80) {
    CheckDamageCostsOnlyItself(mode, bytes, length);
    return 0;
  }

  ScanAll(bytes, length, kLineCapacities[(mode >> 5) & 0x03]);

  static bool perfstatHeaderPending = true;
  tarnlog::ExtractSettings settings;
  settings.asciiCrc = (mode & 0x01) != 0;
  settings.nmeaCrc = (mode & 0x02) != 0;
  settings.viewSize = ViewSize(mode);
  settings.realValueMode = (mode & 0x10) != 0;
  settings.perfstatHeaderPending = &perfstatHeaderPending;
  RunDriver(bytes, length, settings, tarnlog::FullExtractionVector(OutputFolder(), CapturePath()),
            125);
  return 0;
}
