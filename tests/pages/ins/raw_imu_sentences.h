// The raw-IMU sentences both INS page tests feed, without lead and
// checksum, and the row the RAWIMUXA one gives (ADIS16488 counts).
#pragma once

#include <string>

namespace tarnlog::testing {

inline const std::string kRawImuxBody =
    "RAWIMUXA,COM1,0,81.5,FINESTEERING,2210,431250.000,024c0020,3fd1,43495;04,7,2210,431249.995,"
    "00170705,81920000,0,0,3276800,-65536,0";
inline const std::string kRawImuBody =
    "RAWIMUA,COM1,0,81.5,FINESTEERING,2210,431250.000,024c0020,3fd1,43495;2210,431249.995,"
    "00000077,327680000,0,-327680000,4096000,0,0";
// Without its line end.
inline const std::string kRawImuxRowText =
    "2210 431250.000 2210 431249.995 9.807 0.000 0.000 1.000000 -0.020000 0.000000 1509125 9.807 "
    "1.000";

inline std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  text.replace(text.find(from), from.size(), to);
  return text;
}

}  // namespace tarnlog::testing
