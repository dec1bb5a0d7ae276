// Fuzz target of the INS noise page's filter of a log into a raw-IMU table.
//
// The first input byte chooses and isn't part of the log. Bit 0 clear: the
// rest is the log. Bit 0 set: damage costs only the damaged bytes: a line
// end and a good RAWIMUXA sentence follow the rest, and the table must end
// with that sentence's row, whatever came before.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz_folder.h"
#include "pages/ins/raw_imu_filter.h"

namespace {

constexpr std::string_view kGoodSentence =
    "#RAWIMUXA,COM1,0,81.5,FINESTEERING,2210,431250.000,024c0020,3fd1,43495;04,7,2210,431249.995,"
    "00170705,81920000,0,0,3276800,-65536,0*47bed311\r\n";
constexpr std::string_view kGoodRow =
    "2210 431250.000 2210 431249.995 9.807 0.000 0.000 1.000000 -0.020000 0.000000 1509125 9.807 "
    "1.000\r\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const bool damage = (data[0] & 0x01) != 0;
  const std::string& folder = tarnlog::fuzz::Folder();
  std::string log(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (damage) log.append("\n").append(kGoodSentence);
  tarnlog::fuzz::WriteNew(folder + "/in.log", log);
  tarnlog::fuzz::Renew(folder + "/table.txt");
  {
    tarnlog::InFile in;
    tarnlog::OutFile table;
    if (!in.Open(folder + "/in.log", tarnlog::FileMode::kText) ||
        !table.Open(folder + "/table.txt", tarnlog::FileMode::kText)) {
      std::abort();
    }
    tarnlog::FilterRawImuLog(in, table);
  }
  if (damage) {
    std::string table;
    if (!tarnlog::ReadWholeFile(folder + "/table.txt", table) || table.size() < kGoodRow.size() ||
        table.compare(table.size() - kGoodRow.size(), kGoodRow.size(), kGoodRow) != 0) {
      std::fprintf(stderr, "raw_imu_filter: the good sentence behind the damage gave no row\n");
      std::abort();
    }
  }
  return 0;
}
