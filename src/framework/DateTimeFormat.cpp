// Date-time values to text through the platform's format specifiers.

#include <cstring>

#include "DateTimeCodec.h"
#include "SysUtils.h"

namespace orv {

namespace {

char ToUpperAscii(char c) { return (c >= 'a' && c <= 'z') ? char(c - 'a' + 'A') : c; }

bool StartsWithNoCase(const char* text, const char* prefix) {
  for (; *prefix; ++text, ++prefix)
    if (ToUpperAscii(*text) != ToUpperAscii(*prefix)) return false;
  return true;
}

class DateTimeWriter {
 public:
  DateTimeWriter(TDateTime value, const TFormatSettings& settings)
      : FSettings(settings), FValue(value) {
    DecodeDate(value, FYear, FMonth, FDay);
    DecodeTime(value, FHour, FMin, FSec, FMSec);
  }

  // Settings' formats may name each other ("c" holds ShortDateFormat); two levels are enough
  // and stop a format that names itself.
  void Append(const char* format) {
    if (FLevel >= 2) return;
    ++FLevel;
    char lastToken = ' ';
    bool use12Hour = false;
    while (*format) {
      const char starter = *format++;
      char token = ToUpperAscii(starter);
      if (token >= 'A' && token <= 'Z') {
        if (token == 'M' && lastToken == 'H') token = 'N';  // "m" after "h" is minutes
        lastToken = token;
      }
      int count = 1;
      auto takeCount = [&] {
        for (; *format == starter; ++format) ++count;
      };
      switch (token) {
        case 'Y':
          takeCount();
          if (count <= 2)
            AppendNumber(FYear % 100, 2);
          else
            AppendNumber(FYear, 4);
          break;
        case 'E':  // the year of the era: the year itself in the Gregorian calendar
          takeCount();
          AppendNumber(FYear, count >= 2 ? 2 : 1);
          break;
        case 'M':
          takeCount();
          if (count <= 2)
            AppendNumber(FMonth, count);
          else if (FMonth >= 1)
            FText += count == 3 ? FSettings.ShortMonthNames[FMonth - 1]
                                : FSettings.LongMonthNames[FMonth - 1];
          break;
        case 'D':
          takeCount();
          AppendDay(count);
          break;
        case 'H':
          takeCount();
          if (!use12Hour) use12Hour = AmPmFollows(format);
          AppendNumber(use12Hour ? (FHour % 12 == 0 ? 12 : FHour % 12) : FHour,
                       count > 2 ? 2 : count);
          break;
        case 'N':
          takeCount();
          AppendNumber(FMin, count > 2 ? 2 : count);
          break;
        case 'S':
          takeCount();
          AppendNumber(FSec, count > 2 ? 2 : count);
          break;
        case 'Z':
          takeCount();
          AppendNumber(FMSec, count > 3 ? 3 : count);
          break;
        case 'T':
          takeCount();
          Append(count == 1 ? FSettings.ShortTimeFormat.c_str() : FSettings.LongTimeFormat.c_str());
          break;
        case 'A': format = AppendAmPm(format - 1, use12Hour); break;
        case 'C':
          takeCount();
          Append(FSettings.ShortDateFormat.c_str());
          if (FHour || FMin || FSec || FMSec) {
            FText += ' ';
            Append(FSettings.LongTimeFormat.c_str());
          }
          break;
        case '/':
          if (FSettings.DateSeparator) FText += FSettings.DateSeparator;
          break;
        case ':':
          if (FSettings.TimeSeparator) FText += FSettings.TimeSeparator;
          break;
        case '\'':
        case '"': {
          const char* close = std::strchr(format, starter);
          const size_t length = close ? size_t(close - format) : std::strlen(format);
          FText.append(format, length);
          format += length + (close ? 1 : 0);
          break;
        }
        default: FText += starter;
      }
    }
    --FLevel;
  }

  String Take() { return std::move(FText); }

 private:
  void AppendNumber(unsigned value, int minDigits) {
    const String digits = std::to_string(value);
    if (static_cast<int>(digits.size()) < minDigits) FText.append(minDigits - digits.size(), '0');
    FText += digits;
  }

  void AppendDay(int count) {
    const int weekDay = DayOfWeek(FValue) - 1;
    switch (count) {
      case 1:
      case 2: AppendNumber(FDay, count); break;
      case 3: FText += FSettings.ShortDayNames[weekDay]; break;
      case 4: FText += FSettings.LongDayNames[weekDay]; break;
      case 5: Append(FSettings.ShortDateFormat.c_str()); break;
      default: Append(FSettings.LongDateFormat.c_str());
    }
  }

  // Whether an AM/PM marker comes before the next hour specifier: it makes the hour 12-hour.
  static bool AmPmFollows(const char* format) {
    bool quoted = false;
    for (; *format; ++format) {
      const char c = *format;
      if (c == '\'' || c == '"')
        quoted = !quoted;
      else if (quoted)
        continue;
      else if (c == 'H' || c == 'h')
        return false;
      else if (c == 'A' || c == 'a')
        return StartsWithNoCase(format, "AM/PM") || StartsWithNoCase(format, "A/P") ||
               StartsWithNoCase(format, "AMPM");
    }
    return false;
  }

  // At an "a": the markers "am/pm" and "a/p" (in the case written), "ampm" (the settings'
  // strings), "aaa"/"aaaa" (day names); any other "a" is itself. Returns where to go on.
  const char* AppendAmPm(const char* at, bool& use12Hour) {
    const bool pm = FHour >= 12;
    if (StartsWithNoCase(at, "AM/PM")) {
      FText.append(at + (pm ? 3 : 0), 2);
      use12Hour = true;
      return at + 5;
    }
    if (StartsWithNoCase(at, "A/P")) {
      FText += at[pm ? 2 : 0];
      use12Hour = true;
      return at + 3;
    }
    if (StartsWithNoCase(at, "AMPM")) {
      FText += pm ? FSettings.TimePMString : FSettings.TimeAMString;
      use12Hour = true;
      return at + 4;
    }
    const int weekDay = DayOfWeek(FValue) - 1;
    if (StartsWithNoCase(at, "AAAA")) {
      FText += FSettings.LongDayNames[weekDay];
      return at + 4;
    }
    if (StartsWithNoCase(at, "AAA")) {
      FText += FSettings.ShortDayNames[weekDay];
      return at + 3;
    }
    FText += *at;
    return at + 1;
  }

  const TFormatSettings& FSettings;
  TDateTime FValue;
  uint16_t FYear, FMonth, FDay, FHour, FMin, FSec, FMSec;
  int FLevel = 0;
  String FText;
};

}  // namespace

String FormatDateTime(const String& format, TDateTime value, const TFormatSettings& settings) {
  DateTimeWriter writer(value, settings);
  writer.Append(format.empty() ? "C" : format.c_str());
  return writer.Take();
}

String FormatDateTime(const String& format, TDateTime value) {
  return FormatDateTime(format, value, FormatSettings);
}

String DateToStr(TDateTime value, const TFormatSettings& settings) {
  return FormatDateTime("ddddd", value, settings);
}
String DateToStr(TDateTime value) { return DateToStr(value, FormatSettings); }

String TimeToStr(TDateTime value, const TFormatSettings& settings) {
  return FormatDateTime("tt", value, settings);
}
String TimeToStr(TDateTime value) { return TimeToStr(value, FormatSettings); }

String DateTimeToStr(TDateTime value, const TFormatSettings& settings) {
  return FormatDateTime("c", value, settings);
}
String DateTimeToStr(TDateTime value) { return DateTimeToStr(value, FormatSettings); }

}  // namespace orv
