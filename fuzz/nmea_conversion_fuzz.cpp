// Fuzz target of the Static page's NMEA conversions: the input is the log
// of a "GGA", "Trimble" or "NEMA" board, converted in a folder of the
// entry's own into the table beside it.
//
// The first input byte chooses the run and isn't part of the log: bit 0
// picks the conversion with ZDA (else GGA alone), bit 1 turns the checksum
// test on, bits 2-4 give the "DayOfWeek" value. With the test off, as in
// most seeds, mutated sentences reach the field reading.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_folder.h"
#include "pages/static/nmea_conversion.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  // The table beside the log goes with the folder's last input.
  const std::string log = tarnlog::fuzz::WriteInputFile("rover.log", data, size);
  const bool nmeaCrc = (mode & 0x02) != 0;
  if ((mode & 0x01) != 0) {
    tarnlog::ConvertNmeaWithZdaLog(log, nmeaCrc);
  } else {
    tarnlog::ConvertGgaLog(log, nmeaCrc, (mode >> 2) & 0x07);
  }
  return 0;
}
