#include "platform/saturating.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace tarnlog {
namespace {

TEST(SaturatingTest, TextToIntReadsAsAtoiAndHoldsAtTheEnds) {
  struct Case {
    std::string text;
    int value;
  };
  const std::vector<Case> cases = {
      {"42", 42},
      {"  -17xyz", -17},
      {"+3", 3},
      {"", 0},
      {"abc", 0},
      {"-", 0},
      {"2147483647", INT_MAX},
      {"2147483648", INT_MAX},
      {"-2147483648", INT_MIN},
      {"-2147483649", INT_MIN},
      {"99999999999999999999999999", INT_MAX},
      {"-99999999999999999999999999", INT_MIN},
      {"1e308", 1},
  };
  for (const Case& c : cases)
    EXPECT_EQ(TextToInt(c.text), c.value) << c.text;
}

TEST(SaturatingTest, DoublesCutTowardZeroAndHoldAtTheEnds) {
  EXPECT_EQ(SaturatingInt(3.9), 3);
  EXPECT_EQ(SaturatingInt(-3.9), -3);
  EXPECT_EQ(SaturatingInt(1e308), INT_MAX);
  EXPECT_EQ(SaturatingInt(-1e308), INT_MIN);
  EXPECT_EQ(SaturatingInt(std::numeric_limits<double>::infinity()), INT_MAX);
  EXPECT_EQ(SaturatingInt(std::nan("")), 0);
  EXPECT_EQ(SaturatingInt(2147483647.0), INT_MAX);
  EXPECT_EQ(SaturatingInt(-2147483648.0), INT_MIN);
}

}  // namespace
}  // namespace tarnlog
