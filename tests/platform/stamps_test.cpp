#include "platform/stamps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnlog {
namespace {

std::tm At(int year, int month, int day, int hour, int minute, int second) {
  std::tm t{};
  t.tm_year = year - 1900;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  t.tm_hour = hour;
  t.tm_min = minute;
  t.tm_sec = second;
  return t;
}

struct StampCase {
  std::tm time;
  std::string timeStamp, hourStamp, fullStamp;
};

TEST(StampsTest, FromFixedTimes) {
  const std::vector<StampCase> cases = {
      {At(2024, 3, 7, 14, 5, 9), "140509", "140000", "20240307140509"},
      {At(1999, 12, 31, 23, 59, 59), "235959", "230000", "19991231235959"},
      {At(2000, 1, 1, 0, 0, 0), "000000", "000000", "20000101000000"},
  };
  for (const StampCase& c : cases) {
    SCOPED_TRACE(c.fullStamp);
    EXPECT_EQ(TimeStamp(c.time), c.timeStamp);
    EXPECT_EQ(HourStamp(c.time), c.hourStamp);
    EXPECT_EQ(FullStamp(c.time), c.fullStamp);
  }
}

}  // namespace
}  // namespace tarnlog
