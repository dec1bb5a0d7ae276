#include "pages/static/ephemeris_compare.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/folders.h"
#include "support/test_support.h"

namespace tarnlog {
namespace {

// A GPS row: week, reference time and the 19 terms 1..19 (plus `shift` on
// the last one).
std::string GpsRow(const std::string& week, const std::string& time, double shift = 0.0) {
  std::string row = week + " " + time;
  for (int term = 1; term <= 19; ++term)
    row += " " + std::to_string(term + (term == 19 ? shift : 0.0));
  return row + "\n";
}

// A result row of `zeros` zero differences and then `tail`.
std::string ResultRow(const char* head, int zeros, const std::string& tail = "") {
  std::string row = head;
  for (int i = 0; i < zeros; ++i)
    row += ",0.000000e+00";
  return row + tail + "\r\n";
}

// Rows pair by equal week and reference time to the millisecond; a time
// too large for any integer pairs only with itself, one that is no number
// with nothing.
TEST(EphemerisCompareTest, RowsPairByWeekAndTimeToTheMillisecond) {
  struct Case {
    const char* what;
    std::string a;
    std::string b;
    std::string result;
  };
  const Case cases[] = {
      {"same", GpsRow("1", "3600"), GpsRow("1", "3600.0004"), ResultRow("7,  3600.000", 19)},
      {"last term differs", GpsRow("1", "3600"), GpsRow("1", "3600", 0.5),
       ResultRow("7,  3600.000", 18, ",5.000000e-01")},
      {"huge time with itself", GpsRow("1", "1e22"), GpsRow("1", "1e22"),
       ResultRow("7,10000000000000000000000.000", 19)},
      {"other week", GpsRow("1", "3600"), GpsRow("2", "3600"), ""},
      {"other millisecond", GpsRow("1", "3600"), GpsRow("1", "3600.002"), ""},
      {"huge times", GpsRow("1", "1e22"), GpsRow("1", "2e22"), ""},
      {"no numbers", GpsRow("1", "nan"), GpsRow("1", "nan"), ""},
      {"short row", "1 3600 5\n", GpsRow("1", "3600"), ""},
  };
  for (const Case& c : cases) {
    testing::TempFolder folder;
    MakeFolder(folder / "a");
    MakeFolder(folder / "b");
    testing::WriteBytes(folder / "a/Sat_7.txt", c.a);
    testing::WriteBytes(folder / "b/Sat_7.txt", c.b);
    EXPECT_TRUE(CompareSatelliteEphemerides(7, folder / "a", folder / "b", folder / "r.txt"))
        << c.what;
    EXPECT_EQ(testing::FileBytes(folder / "r.txt"), c.result) << c.what;
  }
}

TEST(EphemerisCompareTest, MissingTableOrNumberOfNoSystemComparesNothing) {
  testing::TempFolder folder;
  MakeFolder(folder / "a");
  MakeFolder(folder / "b");
  testing::WriteBytes(folder / "a/Sat_7.txt", GpsRow("1", "3600"));
  testing::WriteBytes(folder / "a/Sat_35.txt", GpsRow("1", "3600"));
  testing::WriteBytes(folder / "b/Sat_35.txt", GpsRow("1", "3600"));
  EXPECT_FALSE(CompareSatelliteEphemerides(7, folder / "a", folder / "b", folder / "r.txt"));
  EXPECT_FALSE(CompareSatelliteEphemerides(35, folder / "a", folder / "b", folder / "r.txt"));
  EXPECT_EQ(testing::FileBytes(folder / "r.txt"), "<missing>");
}

}  // namespace
}  // namespace tarnlog
