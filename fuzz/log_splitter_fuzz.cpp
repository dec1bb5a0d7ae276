// Fuzz target of the log splitters: the bytes as a log read line by line
// with every line's first fields cut out, then split by a fixed string and
// by a fixed period.
//
// The first input byte chooses and isn't part of the log: bits 0-1 the
// marker ("[COM1]", "#BESTPOSA", "GGA" or two blanks), bits 2-4 the period
// of the page's list. The parts are appended to; the next input starts
// from an empty folder.
//
// Seeds: lines cut from tests/data/ParsingData2.ASC and OnceEachAgain.ASC
// (source and licence in tests/data/README.md), port stamps, zero bytes and
// an overlong line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz_folder.h"
#include "pages/nmea/log_splitter.h"
#include "platform/files.h"

namespace {

constexpr std::string_view kMarkers[] = {"[COM1]", "#BESTPOSA", "GGA", "  "};
constexpr int kPeriods[] = {3600, 7200, 10800, 14400, 21600, 28800, 43200, 86400};
// Week and seconds are the fifth and sixth; a few past them too.
constexpr int kFieldsRead = 8;

void ReadLines(const std::string& log) {
  tarnlog::InFile in;
  if (!in.Open(log, tarnlog::FileMode::kText)) std::abort();
  // Exactly as large as declared, so that a write past them is caught.
  std::vector<char> line(tarnlog::kSplitLineSize);
  std::vector<char> field(tarnlog::kSplitFieldSize);
  std::size_t length = 0;
  while (tarnlog::ReadSplitLine(in, line.data(), length) == 1) {
    if (length >= tarnlog::kSplitLineSize) std::abort();
    for (int n = 0; n < kFieldsRead; ++n) {
      if (tarnlog::SplitField(line.data(), field.data(), n) == 0) break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  const std::string log = tarnlog::fuzz::WriteInputFile("run.log", data, size);
  ReadLines(log);
  tarnlog::SplitByFixedString(log, kMarkers[mode & 0x03]);
  tarnlog::SplitByFixedPeriod(log, kPeriods[(mode >> 2) & 0x07]);
  return 0;
}
