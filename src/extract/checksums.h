// The checksums of the receiver's sentences.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tarnlog {

// Reflected CRC-32, polynomial 0xEDB88320, register starting at 0 and not
// inverted at the end: the CRC of ASCII logs and binary frames.
std::uint32_t Crc32Block(const void* bytes, std::size_t length);

// Exclusive-or of all bytes: the NMEA checksum.
std::uint8_t NmeaXor(std::size_t length, const void* bytes);

// An ASCII log's "*%08x" checksum: the CRC runs over the bytes between the
// leading '#' or '%' and `starIndex` (the last star), up to a first NUL; the
// stored value is read behind the first star. `starIndex` below 1 or at or
// above 30,720 fails.
bool VerifyAsciiCrc(const char* line, std::size_t length, std::size_t starIndex);

// An NMEA sentence's "*hh": the exclusive-or of the bytes between '$' and the
// star, matched in either letter case. Sentences or star positions past 255
// bytes fail.
bool VerifyNmeaChecksum(const char* line, std::size_t length, std::size_t starIndex);

// The star index both checks take: that of the last star in
// line[0, length), or 0 when there is none. Both checks fail on 0, as they
// do on a star that opens the line.
inline std::size_t LastStarIndex(const char* line, std::size_t length) {
  const void* star = ::memrchr(line, '*', length);
  return star ? static_cast<std::size_t>(static_cast<const char*>(star) - line) : 0;
}

}  // namespace tarnlog
