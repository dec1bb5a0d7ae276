// Cutting long recordings into parts before analysis: at every line holding
// a fixed string, or at every boundary of a fixed period of GPS time. Both
// write <folder of the log>/<name>_FixedString or <name>_FixedPeriod, with
// parts Split0.txt, Split1.txt, ... opened for appending, so a second run
// over the same log adds to the earlier parts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace tarnlog {

// The line buffer of the splitters; a line holds at most 10239 bytes and a
// longer one comes through in pieces, each treated as a line.
inline constexpr std::size_t kSplitLineSize = 10240;
// The target of SplitField; a field is cut at 254 characters.
inline constexpr std::size_t kSplitFieldSize = 255;

// Reads byte by byte from `stream` (opened in text mode) into `line`, which
// holds kSplitLineSize bytes, until a line feed or 10239 bytes; zero bytes
// become blanks and the text is terminated. Returns 1 with `length` set, or
// 0 at end of file: bytes taken in that call (a last line without a line
// feed) are lost.
int ReadSplitLine(InFile& stream, char* line, std::size_t& length);

// Copies the text behind the `field`-th comma of `line`, up to the next
// comma or the end of the line, into `target` (kSplitFieldSize bytes,
// cleared first). Returns 1 when the line has that many commas, else 0.
int SplitField(const char* line, char* target, int field);

// A new part at every line containing `text`: the marker line ends its part
// and opens the next one too. 1 on success, 0 when the log can't be opened.
int SplitByFixedString(const std::string& logPath, std::string_view text);

// A new part whenever the GPS time of a line's head, counted from the first
// epoch whose CRC holds, enters another period of `periodSeconds`. 1 on
// success, 0 when the log can't be opened or the period is below 1 second.
int SplitByFixedPeriod(const std::string& logPath, int periodSeconds);

}  // namespace tarnlog
