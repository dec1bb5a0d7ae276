// printf formatting without the C library's slow paths: the tables are
// millions of rows of "%.11f"-style numbers. Conversions this formatter
// covers (d i u x X o c s f F %, with flags - + space 0, widths and
// precisions) give exactly the bytes vsnprintf gives in the "C" locale;
// formats with anything else are handed to vsnprintf whole.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>

namespace tarnlog {

// Writes at most `capacity` bytes (no terminator) and returns the full
// length the text needs, or -1 on a format error. When the result exceeds
// `capacity`, the caller retries with a larger buffer and a fresh va_list.
int FastFormat(char* out, std::size_t capacity, const char* format, va_list args);

// snprintf through FastFormat: the text is cut to capacity - 1 bytes and
// always terminated; returns the full length it needed.
int FormatText(char* out, std::size_t capacity, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// The whole formatted text, of any length, as a string (empty on a format
// error): for the control files and scripts the pages write.
std::string FormatString(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace tarnlog
