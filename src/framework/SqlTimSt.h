#pragma once
// SQL time stamps: a date and time held as its parts (TSQLTimeStamp), optionally with the offset
// of its time zone (TSQLTimeStampOffset), and their conversions to dates, text and variants.

#include <cstdint>
#include <iosfwd>

#include "SysUtils.h"

namespace orv {

class Variant;

struct TSQLTimeStamp {
  int16_t Year = 0;
  uint16_t Month = 0;
  uint16_t Day = 0;
  uint16_t Hour = 0;
  uint16_t Minute = 0;
  uint16_t Second = 0;
  uint32_t Fractions = 0;  // milliseconds

  friend bool operator==(const TSQLTimeStamp&, const TSQLTimeStamp&) = default;
};

struct TSQLTimeStampOffset {
  int16_t Year = 0;
  uint16_t Month = 0;
  uint16_t Day = 0;
  uint16_t Hour = 0;
  uint16_t Minute = 0;
  uint16_t Second = 0;
  uint32_t Fractions = 0;  // milliseconds
  int16_t TimeZoneHour = 0;
  int16_t TimeZoneMinute = 0;  // carries the sign of the offset too: -03:30 is -3 and -30

  friend bool operator==(const TSQLTimeStampOffset&, const TSQLTimeStampOffset&) = default;
};

extern const TSQLTimeStamp NullSQLTimeStamp;  // all parts zero: no date
extern const TSQLTimeStampOffset NullSQLTimeStampOffset;

// True when the parts make a valid date and time (Fractions below 1000), or are all zero.
bool IsSQLTimeStampValid(const TSQLTimeStamp& ts);
// EConvertError "Invalid argument to date encode" / "Invalid argument to time encode" when not.
void CheckSqlTimeStamp(const TSQLTimeStamp& ts);

// Milliseconds rounded, as DecodeTime splits a date. The blank time stamp is the date 0.
TSQLTimeStamp DateTimeToSQLTimeStamp(TDateTime value);
TDateTime SQLTimeStampToDateTime(const TSQLTimeStamp& ts);

// `format` empty: ShortDateFormat, a blank and LongTimeFormat of the current settings.
String SQLTimeStampToStr(const String& format, const TSQLTimeStamp& ts);
String SQLTimeStampToStr(const String& format, const TSQLTimeStamp& ts,
                         const TFormatSettings& settings);
// Parses what StrToDateTime accepts, keeping milliseconds; EConvertError as StrToDateTime.
TSQLTimeStamp StrToSQLTimeStamp(const String& text);
TSQLTimeStamp StrToSQLTimeStamp(const String& text, const TFormatSettings& settings);
bool TryStrToSQLTimeStamp(const String& text, TSQLTimeStamp& ts);
bool TryStrToSQLTimeStamp(const String& text, TSQLTimeStamp& ts, const TFormatSettings& settings);

// Time zones: a time stamp with an offset shows the wall clock of its zone. Conversions to a
// plain date or time stamp give the process's local time of the same instant; conversions
// from one take it as local time and attach the local zone's offset at that time.
TSQLTimeStampOffset DateTimeToSQLTimeStampOffset(TDateTime value);
// `value` as the wall clock of the zone given.
TSQLTimeStampOffset DateTimeToSQLTimeStampOffset(TDateTime value, int tzHour, int tzMinute);
TDateTime SQLTimeStampOffsetToDateTime(const TSQLTimeStampOffset& ts);
TSQLTimeStampOffset SQLTimeStampToSQLTimeStampOffset(const TSQLTimeStamp& ts);
TSQLTimeStamp SQLTimeStampOffsetToSQLTimeStamp(const TSQLTimeStampOffset& ts);
// The same instant on the clock of another zone.
TSQLTimeStampOffset ConvertSQLTimeStampOffset(const TSQLTimeStampOffset& ts, int tzHour,
                                              int tzMinute);
// Minutes east of UTC: TimeZoneHour * 60 + TimeZoneMinute.
int SQLTimeStampOffsetMinutes(const TSQLTimeStampOffset& ts);

// The text of the wall clock as SQLTimeStampToStr gives it, a blank and the offset "+hh:mm".
String SQLTimeStampOffsetToStr(const String& format, const TSQLTimeStampOffset& ts);
String SQLTimeStampOffsetToStr(const String& format, const TSQLTimeStampOffset& ts,
                               const TFormatSettings& settings);
// A date and time as StrToSQLTimeStamp reads it, then an optional offset "+hh:mm", "-hh:mm",
// "+hhmm", "+hh" or "Z"; without one the local zone's offset.
TSQLTimeStampOffset StrToSQLTimeStampOffset(const String& text);
TSQLTimeStampOffset StrToSQLTimeStampOffset(const String& text, const TFormatSettings& settings);
bool TryStrToSQLTimeStampOffset(const String& text, TSQLTimeStampOffset& ts);
bool TryStrToSQLTimeStampOffset(const String& text, TSQLTimeStampOffset& ts,
                                const TFormatSettings& settings);

// The time-stamp variants (type codes VarSQLTimeStamp() and VarSQLTimeStampOffset(), declared
// in Variants.h). The converters accept any variant the coercions accept.
Variant VarSQLTimeStampCreate(const TSQLTimeStamp& ts);
Variant VarSQLTimeStampCreate(TDateTime value);
Variant VarSQLTimeStampCreate(const String& text);
TSQLTimeStamp VarToSQLTimeStamp(const Variant& value);
Variant VarSQLTimeStampOffsetCreate(const TSQLTimeStampOffset& ts);
Variant VarSQLTimeStampOffsetCreate(TDateTime value);
Variant VarSQLTimeStampOffsetCreate(const String& text);
TSQLTimeStampOffset VarToSQLTimeStampOffset(const Variant& value);

std::ostream& operator<<(std::ostream& os, const TSQLTimeStamp& ts);
std::ostream& operator<<(std::ostream& os, const TSQLTimeStampOffset& ts);

}  // namespace orv
