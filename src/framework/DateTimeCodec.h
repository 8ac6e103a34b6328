#pragma once
// The split of a date-time value into a day number and the milliseconds of the day, shared by
// decoding, formatting and parsing.

#include "SysUtils.h"

namespace orv::detail {

constexpr int64_t MSecsPerDayInt = 86400000;

// Days counted from 0001-01-01 as day 1, and the time of day. The day is the whole part of the
// value; the time is its fraction, taken as it stands also for values before 1899-12-30.
struct DayAndTime {
  int64_t Day = 0;
  int64_t MSecOfDay = 0;
};
DayAndTime SplitDateTime(double value);

// A date and a time joined: the time is added away from zero, as the platform keeps the time
// in the fraction also for days before 1899-12-30.
inline double ComposeDateTime(double date, double time) {
  return date < 0 ? date - time : date + time;
}

}  // namespace orv::detail
