// Reading a number as "%lf" reads it, fast: the tables hold millions of
// decimal numbers and strtod's general path is slow.
#pragma once

namespace tarnlog {

// Reads a double as strtod does (leading blanks, sign, decimal, hexadecimal,
// inf and nan) and returns the end of what was read, or `text` when nothing
// was. Decimal text takes a correctly rounded fast path, as strtod rounds.
const char* ReadDouble(const char* text, double* value);

}  // namespace tarnlog
