// Text to date-time values: the order of day, month and year comes from ShortDateFormat.

#include <algorithm>
#include <vector>

#include "DateTimeCodec.h"
#include "SysUtils.h"

namespace orv {

namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }
bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

enum class DateOrder { MDY, DMY, YMD };

// The first of day, month or year in a format decides; month first when none is there.
DateOrder OrderOf(const String& format) {
  for (char c : format) {
    switch (c) {
      case 'd':
      case 'D': return DateOrder::DMY;
      case 'm':
      case 'M': return DateOrder::MDY;
      case 'y':
      case 'Y':
      case 'e':
      case 'E': return DateOrder::YMD;
      default: break;
    }
  }
  return DateOrder::MDY;
}

// The punctuation a format writes between its fields, outside quoted text: text written with
// a format like "yyyy-mm-dd" reads back whatever the settings' separator is.
String LiteralSeparators(const String& format) {
  String separators;
  char quote = 0;
  for (char c : format) {
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (!IsBlank(c) && !IsAsciiLetter(c) && !(c >= '0' && c <= '9') &&
               static_cast<unsigned char>(c) < 0x80 && separators.find(c) == String::npos) {
      separators += c;
    }
  }
  return separators;
}

bool HasBlank(const String& format) {
  for (char c : format)
    if (c == ' ') return true;
  return false;
}

// The words a format writes as text: quoted text, and runs of letters outside ASCII ("г",
// "ཆུ་ཚོད་"). Reading skips them where they stand between or around the numbers.
std::vector<String> LiteralWords(std::initializer_list<const String*> formats) {
  std::vector<String> words;
  auto add = [&words](String& word) {
    if (!word.empty() && std::find(words.begin(), words.end(), word) == words.end())
      words.push_back(word);
    word.clear();
  };
  for (const String* format : formats) {
    String word;
    char quote = 0;
    for (char c : *format) {
      if (quote) {
        if (c != quote && !IsBlank(c)) {
          word += c;
          continue;
        }
        if (c == quote) quote = 0;
        add(word);
      } else if (c == '\'' || c == '"') {
        add(word);
        quote = c;
      } else if (static_cast<unsigned char>(c) >= 0x80) {
        word += c;
      } else {
        add(word);
      }
    }
    add(word);
  }
  // Longest first, so that a word is not taken for its own beginning.
  std::stable_sort(words.begin(), words.end(),
                   [](const String& a, const String& b) { return a.size() > b.size(); });
  return words;
}

uint16_t CurrentYear() {
  uint16_t year, month, day;
  DecodeDate(Date(), year, month, day);
  return year;
}

class DateTimeScanner {
 public:
  DateTimeScanner(const String& text, const TFormatSettings& settings)
      : FText(text), FSettings(settings) {}

  bool AtEnd() const { return FPos >= FText.size(); }

  bool ScanDate(double& date) {
    const DateOrder order = OrderOf(FSettings.ShortDateFormat);
    FSeparators = FSettings.DateSeparator + LiteralSeparators(FSettings.ShortDateFormat);
    FWords = LiteralWords({&FSettings.ShortDateFormat});
    FBlankSeparates = FSettings.DateSeparator == ' ' || HasBlank(FSettings.ShortDateFormat);
    unsigned n1, n2, n3 = 0;
    int len1, len2, len3 = 0;
    int nameAt = 0;  // which item was a month name, if any
    if (!ScanItem(n1, len1, nameAt, 1) || !ScanSeparator() || !ScanItem(n2, len2, nameAt, 2))
      return false;
    unsigned year, month, day;
    if (ScanSeparator()) {
      if (!ScanItem(n3, len3, nameAt, 3)) return false;
      int yearLen;
      switch (order) {
        case DateOrder::MDY: year = n3, yearLen = len3, month = n1, day = n2; break;
        case DateOrder::DMY: year = n3, yearLen = len3, month = n2, day = n1; break;
        default: year = n1, yearLen = len1, month = n2, day = n3;
      }
      if (nameAt && nameAt != (order == DateOrder::MDY ? 1 : 2)) return false;
      if (yearLen <= 2) year = WithCentury(year);
    } else {
      year = CurrentYear();
      if (order == DateOrder::DMY)
        month = n2, day = n1;
      else
        month = n1, day = n2;
      if (nameAt && nameAt != (order == DateOrder::DMY ? 2 : 1)) return false;
    }
    SkipSeparatorsAndWords();
    SkipBlanks();
    if (year > 9999 || month > 12 || day > 31) return false;
    TDateTime value;
    if (!TryEncodeDate(uint16_t(year), uint16_t(month), uint16_t(day), value)) return false;
    date = value;
    return true;
  }

  bool ScanTime(double& time) {
    FSeparators = FSettings.TimeSeparator + LiteralSeparators(FSettings.LongTimeFormat) +
                  LiteralSeparators(FSettings.ShortTimeFormat);
    FWords = LiteralWords({&FSettings.LongTimeFormat, &FSettings.ShortTimeFormat});
    SkipWords();
    int baseHour = ScanAmPm();
    SkipWords();
    unsigned hour, min = 0, sec = 0, msec = 0;
    int digits;
    if (!ScanNumber(hour, digits)) return false;
    if (ScanTimePart(min) && ScanTimePart(sec) &&
        ScanOneOf(String(1, FSettings.DecimalSeparator) + "." + FSeparators) &&
        !ScanNumber(msec, digits))
      return false;
    SkipSeparatorsAndWords();
    if (baseHour < 0) baseHour = ScanAmPm();
    SkipWords();
    if (baseHour >= 0) {
      if (hour == 0 || hour > 12) return false;
      hour = hour % 12 + baseHour;
    }
    SkipBlanks();
    if (hour > 23 || min > 59 || sec > 59 || msec > 999) return false;
    TDateTime value;
    if (!TryEncodeTime(uint16_t(hour), uint16_t(min), uint16_t(sec), uint16_t(msec), value))
      return false;
    time = value;
    return true;
  }

 private:
  bool SkipBlanks() {
    const size_t start = FPos;
    while (FPos < FText.size() && IsBlank(FText[FPos])) ++FPos;
    return FPos > start;
  }

  // Digits as the platform reads them: it stops once the number reaches four digits' worth.
  bool ScanNumber(unsigned& number, int& digits) {
    SkipBlanks();
    const size_t start = FPos;
    unsigned n = 0;
    while (FPos < FText.size() && FText[FPos] >= '0' && FText[FPos] <= '9' && n < 1000)
      n = n * 10 + unsigned(FText[FPos++] - '0');
    if (FPos == start) return false;
    number = n;
    digits = static_cast<int>(FPos - start);
    return true;
  }

  bool ScanOneOf(const String& chars) {
    SkipBlanks();
    if (FPos < FText.size() && FText[FPos] != 0 && chars.find(FText[FPos]) != String::npos) {
      ++FPos;
      return true;
    }
    return false;
  }

  bool ScanSeparator() {
    const bool blanks = SkipBlanks();
    return ScanOneOf(FSeparators) || SkipWords() || (blanks && FBlankSeparates && !AtEnd());
  }

  // A separator (or the words of "13 h 05 min") and the next number. Without a number after
  // it the separator belongs to the text that ends the time ("13:05 ч.").
  bool ScanTimePart(unsigned& number) {
    const size_t start = FPos;
    int digits;
    if ((ScanOneOf(FSeparators) | SkipWords()) && ScanNumber(number, digits)) return true;
    FPos = start;
    return false;
  }

  // What a format writes after its last number: "." of "4.3.2011.", "г." of "4.03.2011 г.".
  void SkipSeparatorsAndWords() {
    while (ScanOneOf(FSeparators) || SkipWords()) continue;
  }

  bool SkipWords() {
    bool any = false;
    for (bool more = true; more;) {
      more = false;
      for (const String& word : FWords)
        if (ScanString(word)) {
          any = more = true;
          break;
        }
    }
    return any;
  }

  bool ScanString(const String& symbol) {
    SkipBlanks();
    if (symbol.empty() || FText.size() - FPos < symbol.size() ||
        !AnsiSameText(FText.substr(FPos, symbol.size()), symbol))
      return false;
    FPos += symbol.size();
    return true;
  }

  // 0 after an AM marker, 12 after a PM marker, -1 when there is none.
  int ScanAmPm() {
    if (ScanString(FSettings.TimeAMString) || ScanString("AM")) return 0;
    if (ScanString(FSettings.TimePMString) || ScanString("PM")) return 12;
    return -1;
  }

  // A number, or a month name; `nameAt` remembers the item that was a name.
  bool ScanItem(unsigned& number, int& digits, int& nameAt, int item) {
    if (ScanNumber(number, digits)) return true;
    for (const auto* names : {&FSettings.LongMonthNames, &FSettings.ShortMonthNames})
      for (unsigned m = 0; m < 12; ++m)
        if (ScanString((*names)[m])) {
          number = m + 1;
          digits = 0;
          nameAt = item;
          return true;
        }
    return false;
  }

  unsigned WithCentury(unsigned year) const {
    const int window = FSettings.TwoDigitYearCenturyWindow;
    const int centuryBase = CurrentYear() - window;
    year += centuryBase / 100 * 100;
    if (window > 0 && static_cast<int>(year) < centuryBase) year += 100;
    return year;
  }

  const String& FText;
  const TFormatSettings& FSettings;
  size_t FPos = 0;
  String FSeparators;          // of the part being read
  std::vector<String> FWords;  // the same
  bool FBlankSeparates = false;
};

[[noreturn]] void Invalid(const String& text, const char* what) {
  throw EConvertError("'" + text + "' is not a valid " + what);
}

}  // namespace

bool TryStrToDate(const String& text, TDateTime& value, const TFormatSettings& settings) {
  DateTimeScanner scanner(text, settings);
  double date = 0;
  if (!scanner.ScanDate(date) || !scanner.AtEnd()) return false;
  value = date;
  return true;
}

bool TryStrToTime(const String& text, TDateTime& value, const TFormatSettings& settings) {
  DateTimeScanner scanner(text, settings);
  double time = 0;
  if (!scanner.ScanTime(time) || !scanner.AtEnd()) return false;
  value = time;
  return true;
}

bool TryStrToDateTime(const String& text, TDateTime& value, const TFormatSettings& settings) {
  DateTimeScanner scanner(text, settings);
  double date = 0, time = 0;
  if (!scanner.ScanDate(date) || !(scanner.AtEnd() || (scanner.ScanTime(time) && scanner.AtEnd())))
    return TryStrToTime(text, value, settings);
  value = detail::ComposeDateTime(date, time);
  return true;
}

bool TryStrToDate(const String& text, TDateTime& value) {
  return TryStrToDate(text, value, FormatSettings);
}
bool TryStrToTime(const String& text, TDateTime& value) {
  return TryStrToTime(text, value, FormatSettings);
}
bool TryStrToDateTime(const String& text, TDateTime& value) {
  return TryStrToDateTime(text, value, FormatSettings);
}

TDateTime StrToDate(const String& text, const TFormatSettings& settings) {
  TDateTime value;
  if (!TryStrToDate(text, value, settings)) Invalid(text, "date");
  return value;
}
TDateTime StrToTime(const String& text, const TFormatSettings& settings) {
  TDateTime value;
  if (!TryStrToTime(text, value, settings)) Invalid(text, "time");
  return value;
}
TDateTime StrToDateTime(const String& text, const TFormatSettings& settings) {
  TDateTime value;
  if (!TryStrToDateTime(text, value, settings)) Invalid(text, "date and time");
  return value;
}

TDateTime StrToDate(const String& text) { return StrToDate(text, FormatSettings); }
TDateTime StrToTime(const String& text) { return StrToTime(text, FormatSettings); }
TDateTime StrToDateTime(const String& text) { return StrToDateTime(text, FormatSettings); }

}  // namespace orv
