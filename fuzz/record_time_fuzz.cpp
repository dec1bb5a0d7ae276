// Fuzz target of the record-time extraction: the bytes behind the first as
// a receiver log, through the filter, the classifier and the writer into a
// folder of time files, with every log type wanted.
//
// The first byte sets the options (bit 0 is not used): bit 1 the NMEA
// checksum, bit 2 "Other_GGA", bits 3-4 the view size (the mapping's own,
// or 4, 8 or 16 KiB so that sentences straddle views), bit 5 a block-read
// limit of 0 so that the log goes through the mapping's slices instead of
// the blocks.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "extract/record_time/record_time.h"
#include "fuzz_folder.h"
#include "platform/folders.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  // One extractor for every input, as the Continue page keeps one for its
  // rows: each log must start its counts afresh.
  static tarnlog::RecordTimeExtractor extractor;
  // The time files are truncated by every open, so one folder serves all
  // inputs; it is memory-backed where it can be, so rewriting costs no
  // flush.
  const std::string log = tarnlog::fuzz::Folder() + "/log.txt";
  tarnlog::fuzz::WriteNew(log, std::string_view(reinterpret_cast<const char*>(data) + 1, size - 1));
  tarnlog::RecordTimeOptions options;
  options.logMaskA = options.logMaskB = tarnlog::kAllLogTypes;
  options.nmeaCrcCheck = (mode & 0x02) != 0;
  options.otherGga = (mode & 0x04) != 0;
  const std::size_t viewChoice = (mode >> 3) & 0x03;
  options.viewSize = viewChoice == 0 ? 0 : std::size_t{2048} << viewChoice;
  if (mode & 0x20) options.blockReadLimit = 0;
  const std::string times = tarnlog::fuzz::Folder() + "/times";
  tarnlog::MakeFolder(times);
  if (!extractor.OpenTimeFiles(log, times, options)) std::abort();
  extractor.Extract();
  extractor.CloseTimeFiles();
  return 0;
}
