// GPS week and seconds of week, compared to the nearest millisecond.
#pragma once

#include <cstdint>

namespace tarnlog {

struct ModifiedJulianDate {
  long day = 0;
  double fraction = 0.0;
};

struct YearAndDay {
  int year = 0;
  int dayOfYear = 0;  // from 1
  double dayFraction = 0.0;
};

struct CalendarTime {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;    // 1 to 31
  int hour = 0;
  int minute = 0;
  double seconds = 0.0;
};

class GPSTime {
 public:
  GPSTime() = default;
  GPSTime(std::uint16_t week, double seconds) : week(week), seconds(seconds) {}
  virtual ~GPSTime() = default;
  GPSTime(const GPSTime&) = default;
  GPSTime& operator=(const GPSTime&) = default;

  // By week, then by (unsigned)(seconds * 1000.0 + 0.5).
  bool operator==(const GPSTime& other) const;
  bool operator!=(const GPSTime& other) const;
  bool operator<(const GPSTime& other) const;
  bool operator>(const GPSTime& other) const;
  bool operator<=(const GPSTime& other) const;
  bool operator>=(const GPSTime& other) const;

  // (a.seconds - b.seconds) + (a.week - b.week) * 604800.0
  double operator-(const GPSTime& other) const;
  // Adds seconds and carries whole weeks either way.
  GPSTime& operator+=(double addSeconds);
  GPSTime operator+(double addSeconds) const;

  ModifiedJulianDate ToModifiedJulianDate() const;
  YearAndDay ToYearAndDay() const;
  CalendarTime ToCalendar() const;
  // The inverse of ToCalendar, for dates from 1980 to 2099 (the clock is
  // taken as GPS time: no leap seconds).
  static GPSTime FromCalendar(const CalendarTime& calendar);

  std::uint16_t week = 0;
  double seconds = 0.0;
};

}  // namespace tarnlog
