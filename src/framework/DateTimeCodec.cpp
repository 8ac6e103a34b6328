// Dates and times to and from their parts.

#include "DateTimeCodec.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

namespace orv {

namespace detail {

DayAndTime SplitDateTime(double value) {
  // Beyond year 9999 either way there is nothing to decode; the guard keeps the cast defined.
  if (!std::isfinite(value) || std::fabs(value) > 1e8) return {};
  const auto msecs = static_cast<int64_t>(std::nearbyint(value * MSecsPerDay));
  return {static_cast<int64_t>(DateDelta) + msecs / MSecsPerDayInt,
          (msecs < 0 ? -msecs : msecs) % MSecsPerDayInt};
}

}  // namespace detail

namespace {

constexpr uint16_t MonthDays[2][12] = {{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31},
                                       {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}};

}  // namespace

bool IsLeapYear(uint16_t year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

uint16_t DaysInAMonth(uint16_t year, uint16_t month) {
  if (month < 1 || month > 12) return 0;
  return MonthDays[IsLeapYear(year)][month - 1];
}

bool TryEncodeDate(uint16_t year, uint16_t month, uint16_t day, TDateTime& value) {
  if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 ||
      day > DaysInAMonth(year, month))
    return false;
  int64_t dayOfYear = day;
  for (int m = 1; m < month; ++m) dayOfYear += DaysInAMonth(year, m);
  const int64_t y = year - 1;
  value = static_cast<double>(y * 365 + y / 4 - y / 100 + y / 400 + dayOfYear -
                              static_cast<int64_t>(DateDelta));
  return true;
}

TDateTime EncodeDate(uint16_t year, uint16_t month, uint16_t day) {
  TDateTime value;
  if (!TryEncodeDate(year, month, day, value))
    throw EConvertError("Invalid argument to date encode");
  return value;
}

bool TryEncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec, TDateTime& value) {
  if (hour >= 24 || min >= 60 || sec >= 60 || msec >= 1000) return false;
  value = (hour * 3600000.0 + min * 60000.0 + sec * 1000.0 + msec) / MSecsPerDay;
  return true;
}

TDateTime EncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec) {
  TDateTime value;
  if (!TryEncodeTime(hour, min, sec, msec, value))
    throw EConvertError("Invalid argument to time encode");
  return value;
}

void DecodeDate(TDateTime value, uint16_t& year, uint16_t& month, uint16_t& day) {
  year = month = day = 0;
  int64_t days = detail::SplitDateTime(value).Day;
  if (days <= 0) return;
  constexpr int64_t D1 = 365, D4 = D1 * 4 + 1, D100 = D4 * 25 - 1, D400 = D100 * 4 + 1;
  days -= 1;
  int64_t y = 1 + days / D400 * 400;
  days %= D400;
  int64_t i = days / D100;
  days %= D100;
  if (i == 4) --i, days += D100;  // the last day of a 400-year cycle
  y += i * 100;
  y += days / D4 * 4;
  days %= D4;
  i = days / D1;
  days %= D1;
  if (i == 4) --i, days += D1;  // the last day of a leap cycle
  y += i;
  year = static_cast<uint16_t>(y);
  month = 1;
  for (uint16_t length; days >= (length = DaysInAMonth(year, month)); ++month) days -= length;
  day = static_cast<uint16_t>(days + 1);
}

void DecodeTime(TDateTime value, uint16_t& hour, uint16_t& min, uint16_t& sec, uint16_t& msec) {
  int64_t msecs = detail::SplitDateTime(value).MSecOfDay;
  hour = static_cast<uint16_t>(msecs / 3600000);
  msecs %= 3600000;
  min = static_cast<uint16_t>(msecs / 60000);
  msecs %= 60000;
  sec = static_cast<uint16_t>(msecs / 1000);
  msec = static_cast<uint16_t>(msecs % 1000);
}

int DayOfWeek(TDateTime value) {
  const int64_t day = detail::SplitDateTime(value).Day;
  return static_cast<int>((day % 7 + 7) % 7) + 1;
}

TDateTime Now() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  const auto msec =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
  std::tm local{};
  localtime_r(&seconds, &local);
  const double date =
      EncodeDate(static_cast<uint16_t>(local.tm_year + 1900),
                 static_cast<uint16_t>(local.tm_mon + 1), static_cast<uint16_t>(local.tm_mday));
  // A leap second shows as the last second of its minute.
  const double time =
      EncodeTime(static_cast<uint16_t>(local.tm_hour), static_cast<uint16_t>(local.tm_min),
                 static_cast<uint16_t>(std::min(local.tm_sec, 59)),
                 static_cast<uint16_t>(msec < 0 ? 0 : msec));
  return date + time;
}

TDateTime Date() { return std::floor(Now().Val); }

TDateTime Time() {
  const double now = Now();
  return now - std::floor(now);
}

}  // namespace orv
