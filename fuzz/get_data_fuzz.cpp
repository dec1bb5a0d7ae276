// Fuzz target of Get Data: the bytes as a log through every kind, the byte
// scan for NMEA sentences and the four GGA selections.
//
// The first input byte chooses and isn't part of the log: bits 0-1 the time
// window (the page's defaults, a five-second window, an empty one, or all of
// int), bit 2 the NMEA checksum test. Each kind rewrites its own output file
// in the entry's folder.
//
// Seeds: GGA and RMC sentences after the gpsd project's u-blox F9P
// recording (BSD-2-Clause), among binary bytes and lines cut from
// tests/data/ParsingData2.ASC and OnceEachAgain.ASC (tests/data/README.md).
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz_folder.h"
#include "pages/nmea/get_data.h"

namespace {

struct Window {
  int start;
  int end;
};
constexpr Window kWindows[] = {{0, 1000000}, {100000, 100004}, {1000000, 0}, {INT_MIN, INT_MAX}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  const std::string log = tarnlog::fuzz::WriteInputFile("run.log", data, size);
  const Window window = kWindows[mode & 0x03];
  const bool nmeaCrc = (mode & 0x04) != 0;
  for (tarnlog::GetDataKind kind : tarnlog::kGetDataKinds) {
    if (tarnlog::GetData(kind, log, window.start, window.end, nmeaCrc) !=
        tarnlog::kGetDataSucceeded) {
      std::abort();  // the log was just written
    }
  }
  return 0;
}
