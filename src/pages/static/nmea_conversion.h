// The Static page's conversions of NMEA recordings (boards "Trimble",
// "NEMA" and "GGA") into the position table the analyser reads: one record
// per accepted epoch, written in text mode beside the copied log, named
// after it with the extension ".txt".
#pragma once

#include <string>

namespace tarnlog {

// Board "GGA": every "$GNGGA", "$GPGGA" and "$BDGGA" sentence whose held
// fix quality is above 0 gives a record closed by `dayOfWeek` (Monday-Sunday
// as 0-6) and the time of day. `nmeaCrc` turns the checksum test on.
void ConvertGgaLog(const std::string& logPath, bool nmeaCrc, int dayOfWeek);

// Boards "Trimble" and "NEMA": GGA positions stamped with GPS week and
// seconds of week from the ZDA date, written when both sentences of an epoch
// agree to the tenth of a second.
void ConvertNmeaWithZdaLog(const std::string& logPath, bool nmeaCrc);

// The table written beside `logPath`: its extension replaced by ".txt".
std::string ConvertedTablePath(const std::string& logPath);

}  // namespace tarnlog
