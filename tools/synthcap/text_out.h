// Appending numbers and fields to a capture buffer without printf: a capture
// of a gibibyte holds hundreds of millions of numbers, and the synthesizer
// has to keep well ahead of the extraction it feeds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnlog::synth {

void AppendInt(std::string& out, std::int64_t value);
// `value` rounded to `decimals` places (0 to 12), printed like "%.*f".
// Values must stay below 9e18 once scaled.
void AppendFixed(std::string& out, double value, int decimals);
// Lower-case hexadecimal, zero-padded to `digits`.
void AppendHex(std::string& out, std::uint32_t value, int digits);
void AppendUpperHex(std::string& out, std::uint32_t value, int digits);
// Zero-padded decimal of exactly `digits` digits (for clock fields).
void AppendPadded(std::string& out, std::uint32_t value, int digits);

// The same with a separating comma in front, which is how body fields go.
inline void Field(std::string& out, std::string_view text) {
  out += ',';
  out += text;
}
inline void FieldInt(std::string& out, std::int64_t value) {
  out += ',';
  AppendInt(out, value);
}
inline void FieldFixed(std::string& out, double value, int decimals) {
  out += ',';
  AppendFixed(out, value, decimals);
}
inline void FieldHex(std::string& out, std::uint32_t value, int digits) {
  out += ',';
  AppendHex(out, value, digits);
}

}  // namespace tarnlog::synth
