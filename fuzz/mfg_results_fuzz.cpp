// Fuzz target of the production test's result files: the bytes as the
// result file whose last two rows WriteVerdict reads and appends to, then as
// the tables of a folder that TrimResultTableFiles repairs.
//
// The first input byte chooses and isn't part of the file: bits 0-1 pick the
// rover path the rows are matched against, bit 2 turns "OnlyTXT" on, and bit
// 3 splits the bytes into two tables at their middle instead of one.
//
// Seeds: result rows and tables made by hand.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_folder.h"
#include "pages/noise/mfg_results.h"

namespace {

constexpr const char* kRovers[] = {
    "/lab/MFG/Noise101010/KB569--KB570/KB570.bin",
    "/lab/MFG/Noise101010/KM782--KM782--H/KM782.log",
    "K",
    "/lab/MFG/Noise101010/a--b/b.BIN",
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  const std::string result = tarnlog::fuzz::WriteInputFile("MFGResult_MFG.txt", data, size);
  tarnlog::WriteVerdict(result.c_str(), "MFG", kRovers[mode & 0x03]);
  if ((mode & 0x08) != 0) {
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string& folder = tarnlog::fuzz::Folder();
    tarnlog::fuzz::Renew(result);
    tarnlog::fuzz::WriteNew(folder + "/ADR1.txt", bytes.substr(0, bytes.size() / 2));
    tarnlog::fuzz::WriteNew(folder + "/psr2.TXT", bytes.substr(bytes.size() / 2));
  }
  tarnlog::TrimResultTableFiles(tarnlog::fuzz::Folder(), (mode & 0x04) != 0,
                                [](std::string_view) {});
  return 0;
}
