// The Get Data work of the Nema page: NMEA sentences, or GGA sentences of a
// time window and fix quality, copied out of a log into a text file beside
// it (the log's name plus a suffix, written in text mode).
#pragma once

#include <string>
#include <string_view>

namespace tarnlog {

enum class GetDataKind {
  kNema,    // "NEMA": every NMEA sentence, by a byte scan of any file
  kGga,     // "GGA": GGA sentences in the time window
  kGgaE4,   // "GGA_E4": ... with quality 4
  kGgaE5,   // "GGA_E5": ... with quality 5
  kGgaE45,  // "GGA_E45": ... with quality 4 or 5
};

// In the order the page runs them.
inline constexpr GetDataKind kGetDataKinds[] = {GetDataKind::kNema, GetDataKind::kGga,
                                                GetDataKind::kGgaE4, GetDataKind::kGgaE5,
                                                GetDataKind::kGgaE45};

inline constexpr int kGetDataSucceeded = 1;
// An input that can't be opened.
inline constexpr int kGetDataFailed = 0;

// The caption of the page's flag: "NEMA", "GGA", "GGA_E4", ...
std::string_view GetDataCaption(GetDataKind kind);

// <drive><dir><name> of the log plus "_NEMA.log", "_GGA.log", "_GGAE4.log",
// "_GGAE5.log" or "_GGAE45.log".
std::string GetDataOutputPath(GetDataKind kind, const std::string& logPath);

// Writes the output of `kind` for one log. The GGA kinds keep sentences
// whose time field's integer lies in [startTime, endTime] and, with
// `nmeaCrc`, whose checksum holds; a line holding two or more "$" ends the
// work there, keeping what was written. "NEMA" looks at neither. Returns
// kGetDataSucceeded, or kGetDataFailed when the log can't be opened; the
// page shows any other value than 1 as the line of the failure.
int GetData(GetDataKind kind, const std::string& logPath, int startTime, int endTime, bool nmeaCrc);

}  // namespace tarnlog
