// Fuzz target of the mix logs: the bytes either as a mix log read by one of
// the three KML writers, or as a receiver log read by one of the two mix-log
// builders (which then hand their own mix log to a writer).
//
// The first input byte chooses and isn't part of the file. Bit 7 clear: a
// mix log; bits 0-1 pick the writer (general, INS, trajectory, general) and
// bits 2-6 the colour index and KML type. Bit 7 set: a receiver log; bits
// 0-3 pick the message name, bit 4 the range builder, bit 5 turns both
// checksum tests on, bit 6 thins to 5 Hz with board value 4. With the tests
// off, as in most seeds, mutated lines reach the parsers.
//
// Every file lies in the entry's folder and is removed before the next
// input writes it again: the mix log, its KML and the builders'
// intermediate files (which the builders remove).
//
// Seeds: lines cut from tests/data/ParsingData2.ASC and OnceEachAgain.ASC
// (source and licence in tests/data/README.md), GGA sentences after the
// gpsd project's u-blox F9P recording (BSD-2-Clause), mix-log rows and INS
// and trajectory lines made by hand.
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

#include "fuzz_folder.h"
#include "pages/nmea/kml_writer.h"
#include "pages/nmea/mix_log.h"

namespace {

constexpr const char* kMessageNames[] = {
    "PSRPOS", "RTKPOS", "MATCHEDPOS", "BESTPOS", "GGA",    "BESTNAV", "SPPNAV",
    "DRPVA",  "PosT",   "INSPVAX",    "INSPVAS", "INSPVA", "PPPPOS",  "BESTGNSSPOS",
};

void WriteTrack(std::uint8_t mode, const std::string& mixLog) {
  const int choice = (mode >> 2) & 0x1F;  // 0-31: past every table's end too
  const int colourIndex = choice - 2;     // -2 to 29
  switch (mode & 0x03) {
    case 1:
      tarnlog::WriteInsKml(mixLog, colourIndex, choice % 5, 2);
      break;
    case 2:
      tarnlog::WritePostKml(mixLog, choice);
      break;
    default:
      tarnlog::WriteKml(mixLog, colourIndex, choice, 3);
      break;
  }
}

void BuildMixLog(std::uint8_t mode, const std::string& log) {
  const char* name = kMessageNames[(mode & 0x0F) % std::size(kMessageNames)];
  const bool range = (mode & 0x10) != 0;
  const bool checks = (mode & 0x20) != 0;
  const bool thinned = (mode & 0x40) != 0;
  const auto build = range ? tarnlog::BuildRangeMixLog : tarnlog::BuildPositionMixLog;
  build(log, name, 0, range ? 0 : 1, 2, thinned ? 4 : 1, checks, checks, thinned ? 5 : 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  if ((mode & 0x80) == 0) {
    WriteTrack(mode, tarnlog::fuzz::WriteInputFile("track_Mix.log", data, size));
  } else {
    BuildMixLog(mode, tarnlog::fuzz::WriteInputFile("receiver.log", data, size));
  }
  return 0;
}
