#include "platform/fast_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace tarnlog {
namespace {

std::string Fast(const char* format, ...) {
  char text[1024];
  va_list args;
  va_start(args, format);
  const int n = FastFormat(text, sizeof text, format, args);
  va_end(args);
  return n < 0 ? "<error>" : std::string(text, static_cast<std::size_t>(n));
}

std::string Library(const char* format, ...) {
  char text[1024];
  va_list args;
  va_start(args, format);
  const int n = std::vsnprintf(text, sizeof text, format, args);
  va_end(args);
  return n < 0 ? "<error>" : std::string(text, static_cast<std::size_t>(n));
}

// The tables' own formats, and the awkward corners of each conversion, over
// values that stress rounding: halves, long fractions, huge and tiny, signs.
TEST(FastFormatTest, DoublesMatchTheCLibrary) {
  const char* formats[] = {"%.11f",  "%.4f",     "%.3f",   "%.lf",   "%.1f",  "%.6f",  "%f",
                           "%.2lf",  "%10.3f",   "%-6.9f", "%-5.6f", "%5.3f", "%+.3f", "% .2f",
                           "%08.3f", "%-08.2f|", "%.0f",   "%.15f",  "%.9lf", "%.20f"};
  std::mt19937_64 random(20261123);
  std::vector<double> values{0.0,
                             -0.0,
                             0.5,
                             1.5,
                             2.5,
                             -0.5,
                             83.5,
                             74.5,
                             1e-12,
                             -1e-12,
                             123456789.0000005,
                             1e22,
                             -1e300,
                             5e-324,
                             0.125,
                             0.0005,
                             2.675,
                             1097.6822 - 17.0,
                             51.15043874397,
                             -114.03066788586};
  for (int i = 0; i < 2000; ++i) {
    const double scale = std::pow(10.0, static_cast<int>(random() % 14) - 6);
    values.push_back((static_cast<double>(random() % 2000001) - 1000000.0) / 7.0 * scale);
  }
  for (const char* format : formats) {
    for (double value : values) {
      ASSERT_EQ(Fast(format, value), Library(format, value)) << format << " " << value;
    }
  }
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (double odd : {nan, -nan, inf, -inf})
    EXPECT_EQ(Fast("%8.3f", odd), Library("%8.3f", odd));
}

// Every precision the tables use, over values with few and many digits at
// every magnitude a table holds, including exact halves of the grid.
TEST(FastFormatTest, FixedPrecisionsAtEveryMagnitudeMatchTheCLibrary) {
  std::mt19937_64 random(7);
  char format[16];
  for (int precision = 0; precision <= 13; ++precision) {
    std::snprintf(format, sizeof format, "%%.%df", precision);
    for (int i = 0; i < 4000; ++i) {
      const int exponent = static_cast<int>(random() % 20) - 6;
      const double grid = std::pow(10.0, -precision - 1);
      double value = 0.0;
      switch (i % 4) {
        case 0:  // arbitrary bits
          value = std::ldexp(static_cast<double>(random() >> 11), exponent * 3 - 53);
          break;
        case 1:  // few digits
          value = static_cast<double>(random() % 100000) * std::pow(10.0, exponent - 3);
          break;
        case 2:  // halves of the grid, and just beside them
          value = (static_cast<double>(random() % 100000) + 0.5) * grid * 10.0;
          break;
        default:  // near a carry into a new digit
          value = std::pow(10.0, exponent) - grid * static_cast<double>(random() % 10);
          break;
      }
      if (random() & 1) value = -value;
      ASSERT_EQ(Fast(format, value), Library(format, value)) << format << " " << value;
    }
  }
}

TEST(FastFormatTest, IntegersTextsAndRowsMatchTheCLibrary) {
  for (long long value : {0LL, 1LL, -1LL, 42LL, -2147483648LL, 2147483647LL}) {
    const int i = static_cast<int>(value);
    for (const char* format : {"%i", "%d", "%3d", "%-5d|", "%05d", "%+d", "% d", "%02d", "%x", "%X",
                               "%08x", "%u", "%o"}) {
      EXPECT_EQ(Fast(format, i), Library(format, i)) << format << " " << i;
    }
    EXPECT_EQ(Fast("%lld|%ld", value, static_cast<long>(value)),
              Library("%lld|%ld", value, static_cast<long>(value)));
  }
  EXPECT_EQ(Fast("%hd %hhu", 70000, 300), Library("%hd %hhu", 70000, 300));
  EXPECT_EQ(Fast("***   %.20s\n", "/a/very/long/path/that/is/cut"),
            Library("***   %.20s\n", "/a/very/long/path/that/is/cut"));
  EXPECT_EQ(Fast("%-8s|%8s|%c|%%", "ab", "cd", 'x'), Library("%-8s|%8s|%c|%%", "ab", "cd", 'x'));
  EXPECT_EQ(
      Fast("%i,%.3f,%i,%.11f,%.4f,%.lf,%d\n", 2163, 329760.0, 30, 51.15043874397, 1.3648, 83.5, 0),
      "2163,329760.000,30,51.15043874397,1.3648,84,0\n");
  // What this formatter leaves to the C library still comes out right.
  EXPECT_EQ(Fast("%e %g %#x %*d %.3d", 1234.5, 0.0001, 255, 5, 7, 9),
            Library("%e %g %#x %*d %.3d", 1234.5, 0.0001, 255, 5, 7, 9));
  // Also when the first such conversion comes after others were written.
  EXPECT_EQ(Fast("%d,%.2f,%e|%s", 5, 1.5, 2.5, "x"), Library("%d,%.2f,%e|%s", 5, 1.5, 2.5, "x"));
}

TEST(FastFormatTest, ReportsTheFullLengthWhenTheBufferIsShort) {
  char text[8];
  const std::string expected = Library("%.11f", 51.15043874397);
  auto call = [&](const char* format, ...) {
    va_list args;
    va_start(args, format);
    const int n = FastFormat(text, sizeof text, format, args);
    va_end(args);
    return n;
  };
  EXPECT_EQ(call("%.11f", 51.15043874397), static_cast<int>(expected.size()));
  EXPECT_EQ(std::string(text, sizeof text), expected.substr(0, sizeof text));
}

// Texts past the first buffer come out whole: a "%lf" of a huge double has
// over 300 characters.
TEST(FastFormatTest, FormatStringGivesTheWholeTextAtAnyLength) {
  for (const double value : {0.5, -1e30, 1e308, std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(FormatString("%d,%.3lf\n", 2301, value), Library("%d,%.3lf\n", 2301, value));
    EXPECT_EQ(FormatString("%lf", value), Library("%lf", value));
  }
  EXPECT_EQ(FormatString("%s", ""), "");
  const std::string wide(600, 'x');
  EXPECT_EQ(FormatString("<%s>", wide.c_str()), "<" + wide + ">");
}

}  // namespace
}  // namespace tarnlog
