#include "extract/gps_time.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarnlog {
namespace {

struct OrderCase {
  GPSTime a;
  GPSTime b;
  int order;  // -1: a before b, 0: the same millisecond, 1: a after b
};

TEST(GPSTimeTest, ComparesByWeekThenRoundedMilliseconds) {
  const std::vector<OrderCase> cases = {
      {{1000, 1.0004}, {1000, 1.0}, 0},
      {{1000, 1.0006}, {1000, 1.0}, 1},
      {{1000, 0.9996}, {1000, 1.0}, 0},
      {{1000, 0.9994}, {1000, 1.0}, -1},
      {{1000, 12.345}, {1000, 12.345}, 0},
      {{1001, 0.0}, {1000, 604799.999}, 1},
      // The week decides even when the seconds run past a week.
      {{999, 604900.0}, {1000, 0.0}, -1},
  };
  for (const OrderCase& c : cases) {
    SCOPED_TRACE(::testing::Message()
                 << c.a.week << "/" << c.a.seconds << " vs " << c.b.week << "/" << c.b.seconds);
    EXPECT_EQ(c.a == c.b, c.order == 0);
    EXPECT_EQ(c.a != c.b, c.order != 0);
    EXPECT_EQ(c.a < c.b, c.order < 0);
    EXPECT_EQ(c.a > c.b, c.order > 0);
    EXPECT_EQ(c.a <= c.b, c.order <= 0);
    EXPECT_EQ(c.a >= c.b, c.order >= 0);
  }
}

TEST(GPSTimeTest, DifferenceSpansWeeks) {
  EXPECT_DOUBLE_EQ(GPSTime(1001, 10.0) - GPSTime(1000, 604790.0), 20.0);
  EXPECT_DOUBLE_EQ(GPSTime(1000, 604790.0) - GPSTime(1001, 10.0), -20.0);
  EXPECT_DOUBLE_EQ(GPSTime(1000, 5.5) - GPSTime(1000, 2.0), 3.5);
}

struct AddCase {
  GPSTime start;
  double add;
  int week;
  double seconds;
};

TEST(GPSTimeTest, AddingCarriesWeeksBothWays) {
  const std::vector<AddCase> cases = {
      {{1000, 604799.0}, 2.0, 1001, 1.0},
      {{1000, 604799.0}, 1.0, 1001, 0.0},
      {{1000, 1.0}, -2.0, 999, 604799.0},
      {{1000, 1.0}, -1.0, 1000, 0.0},
      {{1000, 100.0}, 3 * 604800.0, 1003, 100.0},
      {{1000, 100.0}, -2 * 604800.0 - 200.0, 997, 604700.0},
  };
  for (const AddCase& c : cases) {
    SCOPED_TRACE(c.add);
    GPSTime sum = c.start + c.add;
    EXPECT_EQ(sum.week, c.week);
    EXPECT_DOUBLE_EQ(sum.seconds, c.seconds);
    GPSTime inPlace = c.start;
    inPlace += c.add;
    EXPECT_EQ(inPlace.week, c.week);
    EXPECT_DOUBLE_EQ(inPlace.seconds, c.seconds);
  }
}

TEST(GPSTimeTest, ModifiedJulianDateAndDayOfYear) {
  const ModifiedJulianDate epoch = GPSTime(0, 0.0).ToModifiedJulianDate();
  EXPECT_EQ(epoch.day, 44244);
  EXPECT_DOUBLE_EQ(epoch.fraction, 0.0);
  // Thursday 10 May 2012, 20:38:48.
  const ModifiedJulianDate mjd = GPSTime(1687, 419928.0).ToModifiedJulianDate();
  EXPECT_EQ(mjd.day, 56057);
  EXPECT_NEAR(mjd.fraction, (20 * 3600 + 38 * 60 + 48) / 86400.0, 1e-12);

  const YearAndDay start = GPSTime(0, 0.0).ToYearAndDay();
  EXPECT_EQ(start.year, 1980);
  EXPECT_EQ(start.dayOfYear, 6);
  const YearAndDay may = GPSTime(1687, 419928.0).ToYearAndDay();
  EXPECT_EQ(may.year, 2012);
  EXPECT_EQ(may.dayOfYear, 131);
  EXPECT_NEAR(may.dayFraction, mjd.fraction, 1e-12);
}

struct CalendarCase {
  GPSTime time;
  int year, month, day, hour, minute;
  double seconds;
};

TEST(GPSTimeTest, CalendarAcrossLeapDaysBothWays) {
  const std::vector<CalendarCase> cases = {
      {{0, 0.0}, 1980, 1, 6, 0, 0, 0.0},
      {{1677, 259199.5}, 2012, 2, 28, 23, 59, 59.5},
      {{1677, 259200.0}, 2012, 2, 29, 0, 0, 0.0},
      {{1677, 345600.0}, 2012, 3, 1, 0, 0, 0.0},
      {{1729, 431999.0}, 2013, 2, 28, 23, 59, 59.0},
      {{1729, 432000.0}, 2013, 3, 1, 0, 0, 0.0},
      {{1051, 172800.0}, 2000, 2, 29, 0, 0, 0.0},  // divisible by 400
      {{1721, 134055.25}, 2012, 12, 31, 13, 14, 15.25},
      {{1687, 419928.0}, 2012, 5, 10, 20, 38, 48.0},
  };
  for (const CalendarCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.time.week << "/" << c.time.seconds);
    const CalendarTime calendar = c.time.ToCalendar();
    EXPECT_EQ(calendar.year, c.year);
    EXPECT_EQ(calendar.month, c.month);
    EXPECT_EQ(calendar.day, c.day);
    EXPECT_EQ(calendar.hour, c.hour);
    EXPECT_EQ(calendar.minute, c.minute);
    EXPECT_NEAR(calendar.seconds, c.seconds, 1e-9);
    const GPSTime back = GPSTime::FromCalendar(calendar);
    EXPECT_EQ(back.week, c.time.week);
    EXPECT_NEAR(back.seconds, c.time.seconds, 1e-6);
  }
}

}  // namespace
}  // namespace tarnlog
