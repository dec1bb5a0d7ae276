#include "pages/ins/raw_imu_filter.h"

#include <gtest/gtest.h>

#include "pages/ins/raw_imu_sentences.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

using testing::kRawImuBody;
using testing::kRawImuxBody;
using testing::WithAsciiCrc;
using testing::WithNmeaChecksum;

const std::string kRawImuxRow = testing::kRawImuxRowText + "\n";

// A RAWIMUXA sentence of exactly `size` bytes, star and CRC included: the
// last count is padded with leading zeros.
std::string RawImuxOfSize(std::size_t size) {
  std::string body = kRawImuxBody;
  body.insert(body.size() - 1, size - body.size() - 10, '0');
  return WithAsciiCrc(body, '#', "");
}

struct FilterCase {
  const char* what;
  std::string log;
  std::string table;
};

std::string Filter(const std::string& log) {
  testing::TempFolder folder;
  testing::WriteBytes(folder / "in.log", log);
  InFile in;
  OutFile out;
  EXPECT_TRUE(in.Open(folder / "in.log", FileMode::kText));
  EXPECT_TRUE(out.Open(folder / "out.txt", FileMode::kBinary));
  FilterRawImuLog(in, out);
  out.Close();
  return testing::FileBytes(folder / "out.txt");
}

TEST(RawImuFilterTest, KeepsWholeCheckedTokens) {
  const std::string good = WithAsciiCrc(kRawImuxBody, '#', "");
  const std::string split = testing::Replaced(kRawImuxBody, "COM1", "COM 1");
  const std::vector<FilterCase> cases{
      {"one sentence", WithAsciiCrc(kRawImuxBody), kRawImuxRow},
      {"blanks of any kind around it", "\t\v " + good + "\f\r", kRawImuxRow},
      {"two in one line", good + " " + good + "\n", kRawImuxRow + kRawImuxRow},
      {"RAWIMUA fails the extractor's reading", WithAsciiCrc(kRawImuBody), ""},
      {"bad CRC", WithAsciiCrc(kRawImuxBody, '#', "\r\n", false), ""},
      {"a blank inside", WithAsciiCrc(split), ""},
      {"no star", "#" + kRawImuxBody + "\r\n", ""},
      {"'%' lead", WithAsciiCrc(kRawImuxBody, '%'), ""},
      {"a good NMEA sentence has no raw IMU", WithNmeaChecksum("GPGGA,FINE,1,2"), ""},
      {"a NUL ends the token's text", good + std::string("\0garbage", 8), kRawImuxRow},
      {"garbage glued in front", "x" + good, ""},
      {"the last star counts", good + "*", ""},
      {"empty log", "", ""},
      {"blanks only", " \r\n\t", ""},
      {"longest kept", RawImuxOfSize(kRawImuTokenLimit - 1), kRawImuxRow},
      {"too long", RawImuxOfSize(kRawImuTokenLimit) + " " + good, kRawImuxRow},
      {"far too long", std::string(100000, '#') + "\n" + good, kRawImuxRow},
  };
  for (const FilterCase& c : cases)
    EXPECT_EQ(Filter(c.log), c.table) << c.what;
}

}  // namespace
}  // namespace tarnlog
