#include "extract/read_number.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace tarnlog {
namespace {

// ReadDouble must read exactly what strtod reads: the same value, bit for
// bit, and the same end.
void ExpectAsStrtod(const std::string& text) {
  char* libraryEnd = nullptr;
  const double expected = std::strtod(text.c_str(), &libraryEnd);
  double value = 12345.0;
  const char* end = ReadDouble(text.c_str(), &value);
  EXPECT_EQ(end - text.c_str(), libraryEnd - text.c_str()) << text;
  if (libraryEnd != text.c_str()) {
    EXPECT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << text << " " << value;
  }
}

TEST(ReadDoubleTest, OddFormsReadAsStrtodReadsThem) {
  for (const char* text : {"0",
                           "-0",
                           "+5",
                           "+-5",
                           "-",
                           ".",
                           "5.",
                           ".5",
                           "-.5",
                           " \t7.25,",
                           "1e5",
                           "1e",
                           "1E-3x",
                           "0x1p3",
                           "inf",
                           "-nan",
                           "infinity",
                           "00000000000000000001.5",
                           "123456789012345",
                           "1234567890123456",
                           "0.1000000000000000000000001",
                           "1.0000000000000000000000",
                           "-114.03066788586",
                           "51.15043874397,",
                           "1097.6822*",
                           "9007199254740993",
                           "1e400",
                           "4.9e-324",
                           "abc",
                           ""}) {
    ExpectAsStrtod(text);
  }
}

TEST(ReadDoubleTest, TableNumbersReadAsStrtodReadsThem) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 200000; ++i) {
    std::string text = (random() & 1) ? "-" : "";
    const int integerDigits = static_cast<int>(random() % 10);
    const int fractionDigits = static_cast<int>(random() % 16);
    for (int k = 0; k < integerDigits; ++k)
      text += static_cast<char>('0' + random() % 10);
    if (fractionDigits > 0 || integerDigits == 0) text += '.';
    for (int k = 0; k < fractionDigits; ++k)
      text += static_cast<char>('0' + random() % 10);
    text += ",";
    ExpectAsStrtod(text);
  }
}

}  // namespace
}  // namespace tarnlog
