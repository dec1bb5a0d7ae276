// Solution mix logs: one comma-separated row per epoch of a receiver log,
// with the position, its status code and the signals tracked, written as
// <folder>/<name>_Mix.log beside the log and then turned into a KML track.
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

inline constexpr std::string_view kMixLogHeader =
    "Week   Second     UTCTime   Latitude     Longtitude   Height       SN   HDOP    Status  Age  "
    "\t\tulObs   GPSL1PSR GPSL1ADR GPSL2PSR GPSL2ADR BD2B1PSR BD2B1ADR BD2B2PSR BD2B2ADR BD2B3PSR "
    "BD2B3ADR GLOL1PSR GLOL1ADR GLOL2PSR GLOL2ADR";

// <folder of the log>/<name of the log>_Mix.log
std::string MixLogPath(const std::string& logPath);

// The arguments of both builders, as the Nema page hands them over.
//   messageName  "PSRPOS", "RTKPOS", "MATCHEDPOS", "BESTPOS", "GGA",
//                "BESTNAV" or "SPPNAV"; the position-only builder also takes
//                "DRPVA", "PosT", "INSPVAX", "INSPVAS", "INSPVA", "PPPPOS"
//                and "BESTGNSSPOS". Matched by substring in that order.
//   colourIndex, kmlType, lineWidth   handed to the KML writer
//   boardValue   1 to 5; 4 (SiNan) shifts the UTC column of joined rows
//   asciiCrc     test the CRC-32 of each ASCII log
//   nmeaCrc      test the checksum of each NMEA sentence
//   frequency    0 keeps every epoch; above 0, epochs are thinned to it
// Both return 1 when the mix log and its KML were written, and 0 when the
// log can't be opened, a file can't be created, the name is none of the
// above, or the KML writer fails.

// The position message joined with "#RANGEA" observations by epoch.
int BuildRangeMixLog(const std::string& logPath, std::string_view messageName, int colourIndex,
                     int kmlType, int lineWidth, int boardValue, bool asciiCrc, bool nmeaCrc,
                     int frequency);

// The position message alone, with every signal count 0.
int BuildPositionMixLog(const std::string& logPath, std::string_view messageName, int colourIndex,
                        int kmlType, int lineWidth, int boardValue, bool asciiCrc, bool nmeaCrc,
                        int frequency);

}  // namespace tarnlog
