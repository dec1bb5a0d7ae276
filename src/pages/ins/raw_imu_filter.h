// The INS noise page's filter of a receiver log into a raw-IMU table: the
// log is read as blank-separated tokens, and each token that is a whole
// sentence with a good checksum goes to the RAWIMUXA extractor.
#pragma once

#include <cstddef>

#include "platform/files.h"

namespace tarnlog {

// A token of this many bytes or more is dropped whole.
inline constexpr std::size_t kRawImuTokenLimit = 10240;

// Reads `log` to its end and writes a row into `table` for every token that
// begins with '#' or '$', has a star after its first character (the last
// star counts) and passes its CRC-32 ('#') or NMEA checksum ('$'). A
// sentence with a blank inside arrives as two tokens and fails its check.
// A log or table that isn't open gives nothing.
void FilterRawImuLog(InFile& log, OutFile& table);

}  // namespace tarnlog
