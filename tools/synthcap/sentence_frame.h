// The frames around a message body: the header forms a receiver writes and
// the checksum tails that close them. Each Begin returns the offset of the
// sentence's first byte in `out`; the matching End closes that sentence.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "synthcap/receiver_model.h"

namespace tarnlog::synth {

// "#NAME,COM1,0,<idle>,FINESTEERING,<week>,<seconds>,02000000,b1f6,16248;",
// or with another time status.
std::size_t BeginLongLog(std::string& out, std::string_view name, const ReceiverEpoch& epoch,
                         std::string_view timeStatus = "FINESTEERING");
// "#NAME,<idle>,GPS,FINE,<week>,<milliseconds>,0,0,18,12;"
std::size_t BeginCompactLog(std::string& out, std::string_view name, const ReceiverEpoch& epoch);
// "%NAME,<week>,<milliseconds>;"
std::size_t BeginBriefLog(std::string& out, std::string_view name, const ReceiverEpoch& epoch);
// "*%08x" with the CRC-32 of the bytes between the leading '#' or '%' and
// the star, then CR LF.
void EndAsciiLog(std::string& out, std::size_t start);

// "$" and the talker and sentence name, such as "GNGGA".
std::size_t BeginNmea(std::string& out, std::string_view address);
// "*hh", the exclusive-or of the bytes between '$' and the star, then CR LF.
void EndNmea(std::string& out, std::size_t start);

// Sync bytes AA 44 12, header length 28, and the rest of the binary header
// with the message length left open.
inline constexpr std::size_t kBinaryHeaderLength = 28;
std::size_t BeginBinaryFrame(std::string& out, std::uint16_t messageId, const ReceiverEpoch& epoch);
// Fills in the message length and appends the little-endian CRC-32 of
// header and payload.
void EndBinaryFrame(std::string& out, std::size_t start);

// Little-endian binary fields for frame payloads.
void PutU8(std::string& out, std::uint8_t value);
void PutU16(std::string& out, std::uint16_t value);
void PutU32(std::string& out, std::uint32_t value);
void PutF32(std::string& out, float value);
void PutF64(std::string& out, double value);

}  // namespace tarnlog::synth
