// SQL time stamps: validation, dates, text, time-zone offsets and the time-stamp variants.
// Time-zone arithmetic works on a linear count of milliseconds, not on TDateTime, whose time
// fraction counts backwards before 1899-12-30.

#include "SqlTimSt.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <ostream>

#include "Variants.h"

namespace orv {

const TSQLTimeStamp NullSQLTimeStamp{};
const TSQLTimeStampOffset NullSQLTimeStampOffset{};

namespace {

constexpr int64_t MsPerDay = 86400000;
constexpr int64_t UnixEpochDays = 25569;  // 1970-01-01 as a TDateTime

bool IsBlank(const TSQLTimeStamp& ts) { return ts == NullSQLTimeStamp; }

TSQLTimeStamp WallClock(const TSQLTimeStampOffset& ts) {
  return {ts.Year, ts.Month, ts.Day, ts.Hour, ts.Minute, ts.Second, ts.Fractions};
}

TSQLTimeStampOffset WithOffset(const TSQLTimeStamp& ts, int minutes) {
  return {ts.Year,      ts.Month,
          ts.Day,       ts.Hour,
          ts.Minute,    ts.Second,
          ts.Fractions, static_cast<int16_t>(minutes / 60),
          static_cast<int16_t>(minutes % 60)};
}

int64_t FloorDiv(int64_t a, int64_t b) { return a / b - ((a % b != 0) && ((a < 0) != (b < 0))); }

int64_t LinearMs(const TSQLTimeStamp& ts) {
  CheckSqlTimeStamp(ts);
  const auto days = static_cast<int64_t>(EncodeDate(ts.Year, ts.Month, ts.Day).Val);
  return days * MsPerDay + ((int64_t(ts.Hour) * 60 + ts.Minute) * 60 + ts.Second) * 1000 +
         ts.Fractions;
}

TSQLTimeStamp FromLinearMs(int64_t ms) {
  const int64_t days = FloorDiv(ms, MsPerDay);
  int64_t rest = ms - days * MsPerDay;
  TSQLTimeStamp ts;
  uint16_t year, month, day;
  DecodeDate(TDateTime(static_cast<double>(days)), year, month, day);
  ts.Year = static_cast<int16_t>(year);
  ts.Month = month;
  ts.Day = day;
  ts.Fractions = static_cast<uint32_t>(rest % 1000);
  rest /= 1000;
  ts.Second = static_cast<uint16_t>(rest % 60);
  rest /= 60;
  ts.Minute = static_cast<uint16_t>(rest % 60);
  ts.Hour = static_cast<uint16_t>(rest / 60);
  return ts;
}

// Minutes east of UTC of the process's local zone at a UTC instant.
int LocalOffsetAtUtc(int64_t utcMs) {
  const time_t seconds = static_cast<time_t>(FloorDiv(utcMs - UnixEpochDays * MsPerDay, 1000));
  tm local{};
  if (!localtime_r(&seconds, &local)) return 0;
  return static_cast<int>(local.tm_gmtoff / 60);
}

// The same for a local wall-clock time: the offset at the instant that wall clock shows.
int LocalOffsetAtLocal(int64_t localMs) {
  const int guess = LocalOffsetAtUtc(localMs);
  return LocalOffsetAtUtc(localMs - int64_t(guess) * 60000);
}

String OffsetText(int minutes) {
  const int magnitude = std::abs(minutes);
  char text[16];
  std::snprintf(text, sizeof text, "%c%02d:%02d", minutes < 0 ? '-' : '+', magnitude / 60,
                magnitude % 60);
  return text;
}

// "+hh:mm", "-hh:mm", "+hhmm", "+hh"; false for anything else.
bool ParseOffset(const String& text, int& minutes) {
  if (text.size() < 3 || (text[0] != '+' && text[0] != '-')) return false;
  String digits;
  for (size_t i = 1; i < text.size(); ++i) {
    if (text[i] == ':' && i == 3) continue;
    if (text[i] < '0' || text[i] > '9') return false;
    digits += text[i];
  }
  if (digits.size() != 2 && digits.size() != 4) return false;
  const int hours = std::stoi(digits.substr(0, 2));
  const int mins = digits.size() == 4 ? std::stoi(digits.substr(2)) : 0;
  if (hours > 14 || mins > 59) return false;
  minutes = (text[0] == '-' ? -1 : 1) * (hours * 60 + mins);
  return true;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Validation and dates

bool IsSQLTimeStampValid(const TSQLTimeStamp& ts) {
  if (IsBlank(ts)) return true;
  return ts.Year >= 1 && ts.Month >= 1 && ts.Month <= 12 && ts.Day >= 1 &&
         ts.Day <= DaysInAMonth(ts.Year, ts.Month) && ts.Hour < 24 && ts.Minute < 60 &&
         ts.Second < 60 && ts.Fractions < 1000;
}

void CheckSqlTimeStamp(const TSQLTimeStamp& ts) {
  if (IsBlank(ts)) return;
  if (ts.Year < 1 || ts.Month < 1 || ts.Month > 12 || ts.Day < 1 ||
      ts.Day > DaysInAMonth(ts.Year, ts.Month))
    throw EConvertError("Invalid argument to date encode");
  if (ts.Hour >= 24 || ts.Minute >= 60 || ts.Second >= 60 || ts.Fractions >= 1000)
    throw EConvertError("Invalid argument to time encode");
}

TSQLTimeStamp DateTimeToSQLTimeStamp(TDateTime value) {
  // The date from the whole days, the time from the fraction, which counts forwards from
  // midnight on either side of day 0; a fraction that rounds to a whole day is the next day.
  double days = std::trunc(value.Val);
  auto ms = static_cast<int64_t>(std::llround(std::fabs(value.Val - days) * MsPerDay));
  if (ms >= MsPerDay) {
    ms -= MsPerDay;
    days += 1;
  }
  TSQLTimeStamp ts = FromLinearMs(static_cast<int64_t>(days) * MsPerDay);
  ts.Fractions = static_cast<uint32_t>(ms % 1000);
  ts.Second = static_cast<uint16_t>(ms / 1000 % 60);
  ts.Minute = static_cast<uint16_t>(ms / 60000 % 60);
  ts.Hour = static_cast<uint16_t>(ms / 3600000);
  return ts;
}

TDateTime SQLTimeStampToDateTime(const TSQLTimeStamp& ts) {
  if (IsBlank(ts)) return TDateTime();
  CheckSqlTimeStamp(ts);
  const double date = EncodeDate(ts.Year, ts.Month, ts.Day).Val;
  const double time =
      EncodeTime(ts.Hour, ts.Minute, ts.Second, static_cast<uint16_t>(ts.Fractions)).Val;
  return date < 0 ? date - time : date + time;
}

// ---------------------------------------------------------------------------------------------
// Text

String SQLTimeStampToStr(const String& format, const TSQLTimeStamp& ts,
                         const TFormatSettings& settings) {
  const String pattern =
      format.empty() ? settings.ShortDateFormat + " " + settings.LongTimeFormat : format;
  return FormatDateTime(pattern, SQLTimeStampToDateTime(ts), settings);
}

String SQLTimeStampToStr(const String& format, const TSQLTimeStamp& ts) {
  return SQLTimeStampToStr(format, ts, FormatSettings);
}

bool TryStrToSQLTimeStamp(const String& text, TSQLTimeStamp& ts, const TFormatSettings& settings) {
  TDateTime value;
  if (!TryStrToDateTime(text, value, settings)) return false;
  ts = DateTimeToSQLTimeStamp(value);
  return true;
}

bool TryStrToSQLTimeStamp(const String& text, TSQLTimeStamp& ts) {
  return TryStrToSQLTimeStamp(text, ts, FormatSettings);
}

TSQLTimeStamp StrToSQLTimeStamp(const String& text, const TFormatSettings& settings) {
  return DateTimeToSQLTimeStamp(StrToDateTime(text, settings));
}

TSQLTimeStamp StrToSQLTimeStamp(const String& text) {
  return StrToSQLTimeStamp(text, FormatSettings);
}

// ---------------------------------------------------------------------------------------------
// Offsets

int SQLTimeStampOffsetMinutes(const TSQLTimeStampOffset& ts) {
  return ts.TimeZoneHour * 60 + ts.TimeZoneMinute;
}

TSQLTimeStampOffset ConvertSQLTimeStampOffset(const TSQLTimeStampOffset& ts, int tzHour,
                                              int tzMinute) {
  const TSQLTimeStamp wall = WallClock(ts);
  if (IsBlank(wall)) return ts;
  const int target = tzHour * 60 + tzMinute;
  const int64_t ms = LinearMs(wall) + (int64_t(target) - SQLTimeStampOffsetMinutes(ts)) * 60000;
  return WithOffset(FromLinearMs(ms), target);
}

TSQLTimeStamp SQLTimeStampOffsetToSQLTimeStamp(const TSQLTimeStampOffset& ts) {
  const TSQLTimeStamp wall = WallClock(ts);
  if (IsBlank(wall)) return NullSQLTimeStamp;
  const int64_t utc = LinearMs(wall) - int64_t(SQLTimeStampOffsetMinutes(ts)) * 60000;
  return FromLinearMs(utc + int64_t(LocalOffsetAtUtc(utc)) * 60000);
}

TSQLTimeStampOffset SQLTimeStampToSQLTimeStampOffset(const TSQLTimeStamp& ts) {
  if (IsBlank(ts)) return NullSQLTimeStampOffset;
  return WithOffset(ts, LocalOffsetAtLocal(LinearMs(ts)));
}

TDateTime SQLTimeStampOffsetToDateTime(const TSQLTimeStampOffset& ts) {
  return SQLTimeStampToDateTime(SQLTimeStampOffsetToSQLTimeStamp(ts));
}

TSQLTimeStampOffset DateTimeToSQLTimeStampOffset(TDateTime value) {
  return SQLTimeStampToSQLTimeStampOffset(DateTimeToSQLTimeStamp(value));
}

TSQLTimeStampOffset DateTimeToSQLTimeStampOffset(TDateTime value, int tzHour, int tzMinute) {
  return WithOffset(DateTimeToSQLTimeStamp(value), tzHour * 60 + tzMinute);
}

String SQLTimeStampOffsetToStr(const String& format, const TSQLTimeStampOffset& ts,
                               const TFormatSettings& settings) {
  return SQLTimeStampToStr(format, WallClock(ts), settings) + " " +
         OffsetText(SQLTimeStampOffsetMinutes(ts));
}

String SQLTimeStampOffsetToStr(const String& format, const TSQLTimeStampOffset& ts) {
  return SQLTimeStampOffsetToStr(format, ts, FormatSettings);
}

bool TryStrToSQLTimeStampOffset(const String& text, TSQLTimeStampOffset& ts,
                                const TFormatSettings& settings) {
  const String trimmed = Trim(text);
  String clock = trimmed;
  int minutes = 0;
  bool hasOffset = false;
  if (!trimmed.empty() && (trimmed.back() == 'Z' || trimmed.back() == 'z')) {
    clock = Trim(trimmed.substr(0, trimmed.size() - 1));
    hasOffset = true;
  } else if (const size_t blank = trimmed.rfind(' '); blank != String::npos &&
             ParseOffset(trimmed.substr(blank + 1), minutes)) {
    clock = Trim(trimmed.substr(0, blank));
    hasOffset = true;
  }
  TSQLTimeStamp wall;
  if (!TryStrToSQLTimeStamp(clock, wall, settings)) return false;
  ts = hasOffset ? WithOffset(wall, minutes) : SQLTimeStampToSQLTimeStampOffset(wall);
  return true;
}

bool TryStrToSQLTimeStampOffset(const String& text, TSQLTimeStampOffset& ts) {
  return TryStrToSQLTimeStampOffset(text, ts, FormatSettings);
}

TSQLTimeStampOffset StrToSQLTimeStampOffset(const String& text, const TFormatSettings& settings) {
  TSQLTimeStampOffset ts;
  if (!TryStrToSQLTimeStampOffset(text, ts, settings))
    throw EConvertError("'" + text + "' is not a valid date and time");
  return ts;
}

TSQLTimeStampOffset StrToSQLTimeStampOffset(const String& text) {
  return StrToSQLTimeStampOffset(text, FormatSettings);
}

// ---------------------------------------------------------------------------------------------
// Variants and printing

Variant VarSQLTimeStampCreate(const TSQLTimeStamp& ts) { return Variant(ts); }
Variant VarSQLTimeStampCreate(TDateTime value) { return Variant(DateTimeToSQLTimeStamp(value)); }
Variant VarSQLTimeStampCreate(const String& text) { return Variant(StrToSQLTimeStamp(text)); }
TSQLTimeStamp VarToSQLTimeStamp(const Variant& value) { return value.AsSQLTimeStamp(); }

Variant VarSQLTimeStampOffsetCreate(const TSQLTimeStampOffset& ts) { return Variant(ts); }
Variant VarSQLTimeStampOffsetCreate(TDateTime value) {
  return Variant(DateTimeToSQLTimeStampOffset(value));
}
Variant VarSQLTimeStampOffsetCreate(const String& text) {
  return Variant(StrToSQLTimeStampOffset(text));
}
TSQLTimeStampOffset VarToSQLTimeStampOffset(const Variant& value) {
  return value.AsSQLTimeStampOffset();
}

std::ostream& operator<<(std::ostream& os, const TSQLTimeStamp& ts) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%03u", ts.Year, ts.Month,
                ts.Day, ts.Hour, ts.Minute, ts.Second, static_cast<unsigned>(ts.Fractions));
  return os << text;
}

std::ostream& operator<<(std::ostream& os, const TSQLTimeStampOffset& ts) {
  return os << WallClock(ts) << ' ' << OffsetText(SQLTimeStampOffsetMinutes(ts));
}

}  // namespace orv
