// Fuzz target of the CompareEphema reader: two receivers' Sat_<N>.txt, in
// output folders of the entry's own, compared into a fresh result file.
//
// The first input byte chooses the satellite and isn't part of the tables:
// its value modulo 3 picks GPS 7, GLONASS 40 or BDS 170.
// The rest is split at its first NUL byte: receiver A's table before it,
// B's after it; with no NUL both receivers hold the same table.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_folder.h"
#include "pages/static/ephemeris_compare.h"

namespace {

constexpr int kSatellites[] = {7, 40, 170};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int number = kSatellites[data[0] % 3];
  const std::string_view tables(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::size_t split = tables.find('\0');
  const std::string_view a = tables.substr(0, split);
  const std::string_view b = split == std::string_view::npos ? a : tables.substr(split + 1);

  const std::string& folder = tarnlog::fuzz::Folder({"a", "b"});
  const std::string name = "/Sat_" + std::to_string(number) + ".txt";
  tarnlog::fuzz::WriteNew(folder + "/a" + name, a);
  tarnlog::fuzz::WriteNew(folder + "/b" + name, b);
  const std::string result = folder + "/Result.txt";
  tarnlog::fuzz::Renew(result);  // appended to: one input's rows only
  tarnlog::CompareSatelliteEphemerides(number, folder + "/a", folder + "/b", result);
  return 0;
}
