#include "gps_time.h"

#include <cmath>

namespace tarnlog {
namespace {

constexpr double kSecondsPerWeek = 604800.0;
constexpr double kSecondsPerDay = 86400.0;
constexpr long kMjdOfGpsEpoch = 44244;  // 6 January 1980
constexpr long kMjdOf1901 = 15385;      // 1 January 1901
constexpr long kDaysPerFourYears = 1461;

// (unsigned)(seconds * 1000.0 + 0.5) as the x86 conversion gives it, also
// for negative times, without the undefined conversion of a negative double.
unsigned RoundedMilliseconds(double seconds) {
  const double ms = seconds * 1000.0 + 0.5;
  if (!(ms > -9.0e18 && ms < 9.0e18)) return 0;
  return static_cast<unsigned>(static_cast<long long>(ms));
}

// Days since 1 January 1901 split into year and day of year; valid from
// 1901 to 2099, which is all a GPS week can reach.
void SplitDays(long mjd, int* year, int* dayOfYear) {
  const long d = mjd - kMjdOf1901;
  const long q = d / kDaysPerFourYears;
  const long r = d - kDaysPerFourYears * q;
  const long y = r / 365 - r / 1460;
  *year = static_cast<int>(1901 + 4 * q + y);
  *dayOfYear = static_cast<int>(r - 365 * y + 1);
}

// floor() as a long; a time that is no number counts as 0.
long FloorToLong(double value) {
  if (!(value > -1.0e15 && value < 1.0e15)) return 0;
  return static_cast<long>(std::floor(value));
}

bool IsLeapYear(int year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Day of the year on which each month starts, less one.
constexpr int kMonthStarts[2][12] = {
    {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334},
    {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335},
};

}  // namespace

bool GPSTime::operator==(const GPSTime& other) const {
  return week == other.week && RoundedMilliseconds(seconds) == RoundedMilliseconds(other.seconds);
}

bool GPSTime::operator!=(const GPSTime& other) const {
  return !(*this == other);
}

bool GPSTime::operator<(const GPSTime& other) const {
  if (week != other.week) return week < other.week;
  return RoundedMilliseconds(seconds) < RoundedMilliseconds(other.seconds);
}

bool GPSTime::operator>(const GPSTime& other) const {
  return other < *this;
}
bool GPSTime::operator<=(const GPSTime& other) const {
  return !(other < *this);
}
bool GPSTime::operator>=(const GPSTime& other) const {
  return !(*this < other);
}

double GPSTime::operator-(const GPSTime& other) const {
  return (seconds - other.seconds) +
         (static_cast<int>(week) - static_cast<int>(other.week)) * kSecondsPerWeek;
}

GPSTime& GPSTime::operator+=(double addSeconds) {
  seconds += addSeconds;
  if (!std::isfinite(seconds)) return *this;
  // Times far outside any week would take ages one week at a time.
  if (std::fabs(seconds) > 1.0e12) {
    const double weeks = std::floor(seconds / kSecondsPerWeek);
    seconds -= weeks * kSecondsPerWeek;
    week = static_cast<std::uint16_t>(static_cast<long long>(std::fmod(weeks, 65536.0)) + week);
  }
  while (seconds >= kSecondsPerWeek) {
    seconds -= kSecondsPerWeek;
    ++week;
  }
  while (seconds < 0.0) {
    seconds += kSecondsPerWeek;
    --week;
  }
  return *this;
}

GPSTime GPSTime::operator+(double addSeconds) const {
  GPSTime sum(*this);
  sum += addSeconds;
  return sum;
}

ModifiedJulianDate GPSTime::ToModifiedJulianDate() const {
  const double days = std::floor(seconds / kSecondsPerDay);
  ModifiedJulianDate mjd;
  mjd.day = static_cast<long>(week) * 7 + kMjdOfGpsEpoch + FloorToLong(days);
  mjd.fraction = seconds / kSecondsPerDay - days;
  return mjd;
}

YearAndDay GPSTime::ToYearAndDay() const {
  const long mjd =
      FloorToLong(seconds / kSecondsPerDay + static_cast<double>(week) * 7.0 + kMjdOfGpsEpoch);
  YearAndDay result;
  SplitDays(mjd, &result.year, &result.dayOfYear);
  result.dayFraction = seconds / kSecondsPerDay - std::floor(seconds / kSecondsPerDay);
  return result;
}

CalendarTime GPSTime::ToCalendar() const {
  const YearAndDay yearAndDay = ToYearAndDay();
  CalendarTime calendar;
  calendar.year = yearAndDay.year;
  const int(&starts)[12] = kMonthStarts[IsLeapYear(calendar.year) ? 1 : 0];
  for (int month = 11; month >= 0; --month) {
    if (yearAndDay.dayOfYear > starts[month]) {
      calendar.month = month + 1;
      calendar.day = yearAndDay.dayOfYear - starts[month];
      break;
    }
  }
  double secondOfDay = std::fmod(seconds, kSecondsPerDay);
  if (!std::isfinite(secondOfDay)) secondOfDay = 0.0;
  calendar.hour = static_cast<int>(secondOfDay / 3600.0);
  calendar.minute = static_cast<int>((secondOfDay - calendar.hour * 3600.0) / 60.0);
  calendar.seconds = secondOfDay - calendar.hour * 3600.0 - calendar.minute * 60.0;
  return calendar;
}

GPSTime GPSTime::FromCalendar(const CalendarTime& calendar) {
  const long years = calendar.year - 1901;
  const int month = calendar.month < 1 ? 1 : (calendar.month > 12 ? 12 : calendar.month);
  const long dayOfYear = kMonthStarts[IsLeapYear(calendar.year) ? 1 : 0][month - 1] + calendar.day;
  const long mjd = kMjdOf1901 + 365 * years + years / 4 + dayOfYear - 1;
  const long days = mjd - kMjdOfGpsEpoch;
  const long week = days >= 0 ? days / 7 : (days - 6) / 7;
  const double secondOfDay = calendar.hour * 3600.0 + calendar.minute * 60.0 + calendar.seconds;
  return GPSTime(static_cast<std::uint16_t>(week),
                 static_cast<double>(days - week * 7) * kSecondsPerDay + secondOfDay);
}

}  // namespace tarnlog
