// A forward reader over the fields of a sentence that gives, for valid
// input, what sscanf gives with "%lf", "%i", "%d", "%x" and literal
// characters, without formatting machinery and never past the NUL.
//
// Like sscanf, the reads stop at the first one that fails: what was read
// before keeps its value, what follows stays untouched, and `ok` turns false.
#pragma once

#include <cstdlib>

#include "extract/read_number.h"

namespace tarnlog {

struct FieldCursor {
  const char* at;
  bool ok = true;

  explicit FieldCursor(const char* start) : at(start) {}

  // "%lf"
  FieldCursor& Double(double& out) {
    if (!ok) return *this;
    double value = 0.0;
    const char* end = ReadDouble(at, &value);
    return Take(end, [&] { out = value; });
  }
  // "%i": decimal, octal with a leading 0, hexadecimal with 0x.
  FieldCursor& Int(int& out) { return Integer(out, 0); }
  // "%d"
  FieldCursor& Decimal(int& out) { return Integer(out, 10); }
  // "%x", stored as the int the tables print.
  FieldCursor& Hex(int& out) {
    if (!ok) return *this;
    char* end = nullptr;
    const unsigned long value = std::strtoul(at, &end, 16);
    return Take(end, [&] { out = static_cast<int>(static_cast<unsigned>(value)); });
  }
  // A literal character of the format.
  FieldCursor& Char(char expected) {
    if (ok && *at == expected) {
      ++at;
    } else {
      ok = false;
    }
    return *this;
  }
  FieldCursor& Comma() { return Char(','); }
  // "%*[^,]": one or more characters up to a comma or the end.
  FieldCursor& SkipField() {
    if (!ok) return *this;
    const char* start = at;
    while (*at != '\0' && *at != ',')
      ++at;
    ok = at != start;
    return *this;
  }

 private:
  FieldCursor& Integer(int& out, int base) {
    if (!ok) return *this;
    // Plain decimals of up to nine digits, the common case, read here; a
    // leading 0 (octal or hexadecimal for "%i"), blanks, '+' and long
    // numbers go to strtol.
    const char* p = at;
    const bool negative = *p == '-';
    if (negative) ++p;
    if (*p >= '1' && *p <= '9') {
      long value = 0;
      const char* digits = p;
      while (*p >= '0' && *p <= '9' && p - digits < 9)
        value = value * 10 + (*p++ - '0');
      if (!(*p >= '0' && *p <= '9')) {
        out = static_cast<int>(negative ? -value : value);
        at = p;
        return *this;
      }
    }
    char* end = nullptr;
    const long value = std::strtol(at, &end, base);
    return Take(end, [&] { out = static_cast<int>(value); });
  }
  template <typename Store>
  FieldCursor& Take(const char* end, Store store) {
    if (end == at) {
      ok = false;
    } else {
      store();
      at = end;
    }
    return *this;
  }
};

}  // namespace tarnlog
