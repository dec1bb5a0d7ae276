// Little-endian words of a binary frame, read byte by byte so that any
// alignment serves.
#pragma once

#include <cstdint>

namespace tarnlog {

inline std::uint32_t LoadLe16(const void* at) {
  const auto* p = static_cast<const unsigned char*>(at);
  return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8;
}

inline std::uint32_t LoadLe32(const void* at) {
  const auto* p = static_cast<const unsigned char*>(at);
  return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
         static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}

}  // namespace tarnlog
