#include "LocaleSettings.h"

#include <unicode/uchar.h>
#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>
#include <unicode/ures.h>
#include <unicode/utf16.h>

#include <memory>

namespace orv::detail {

namespace {

struct NumberFormatCloser {
  void operator()(UNumberFormat* format) const { unum_close(format); }
};
struct DateFormatCloser {
  void operator()(UDateFormat* format) const { udat_close(format); }
};
using NumberFormatPtr = std::unique_ptr<UNumberFormat, NumberFormatCloser>;
using DateFormatPtr = std::unique_ptr<UDateFormat, DateFormatCloser>;

constexpr int32_t TextCapacity = 256;

NumberFormatPtr OpenNumberFormat(UNumberFormatStyle style, const String& locale) {
  UErrorCode status = U_ZERO_ERROR;
  NumberFormatPtr format(unum_open(style, nullptr, 0, locale.c_str(), nullptr, &status));
  if (U_FAILURE(status)) format.reset();
  return format;
}

DateFormatPtr OpenDateFormat(UDateFormatStyle timeStyle, UDateFormatStyle dateStyle,
                             const String& locale) {
  UErrorCode status = U_ZERO_ERROR;
  // A fixed zone: the patterns and names do not depend on it, and no zone lookup is needed.
  DateFormatPtr format(
      udat_open(timeStyle, dateStyle, locale.c_str(), u"UTC", -1, nullptr, -1, &status));
  if (U_FAILURE(status)) format.reset();
  return format;
}

std::u16string NumberSymbol(const UNumberFormat* format, UNumberFormatSymbol symbol) {
  UChar buffer[TextCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = unum_getSymbol(format, symbol, buffer, TextCapacity, &status);
  return U_SUCCESS(status) ? std::u16string(buffer, std::min(length, TextCapacity)) : u"";
}

std::u16string NumberPattern(const UNumberFormat* format) {
  UChar buffer[TextCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = unum_toPattern(format, false, buffer, TextCapacity, &status);
  return U_SUCCESS(status) ? std::u16string(buffer, std::min(length, TextCapacity)) : u"";
}

std::u16string DatePattern(const UDateFormat* format) {
  UChar buffer[TextCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = udat_toPattern(format, false, buffer, TextCapacity, &status);
  return U_SUCCESS(status) ? std::u16string(buffer, std::min(length, TextCapacity)) : u"";
}

String DateSymbol(const UDateFormat* format, UDateFormatSymbolType type, int32_t index) {
  UChar buffer[TextCapacity];
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = udat_getSymbols(format, type, index, buffer, TextCapacity, &status);
  return U_SUCCESS(status) ? Utf16ToUtf8(std::u16string(buffer, std::min(length, TextCapacity)))
                           : String();
}

bool IsSpaceLike(UChar32 c) { return c == ' ' || c == 0xA0 || c == 0x202F || u_isUWhiteSpace(c); }

// Invisible marks such as the right-to-left mark around Arabic separators: plain text does not
// need them and they would stand between a date's numbers and its separators.
bool IsFormatMark(UChar32 c) { return u_charType(c) == U_FORMAT_CHAR; }

// A one-character setting from a locale's symbol: ASCII as it is, spaces as a blank, the
// typographic apostrophe as "'"; anything else keeps the fallback.
char AsciiSetting(const std::u16string& symbol, char fallback) {
  if (symbol.size() != 1) return fallback;
  const char16_t c = symbol[0];
  if (c > ' ' && c < 0x80) return static_cast<char>(c);
  if (IsSpaceLike(c)) return ' ';
  if (c == 0x2019 || c == 0x2018) return '\'';
  return fallback;
}

// The shape of a currency pattern: "$" for the sign, "1" for the amount, blanks, "-" and
// parentheses; e.g. "#,##0.00 ¤" is "1 $".
std::string CurrencyShape(const std::u16string& pattern) {
  std::string shape;
  bool quoted = false;
  for (char16_t c : pattern) {
    if (c == '\'')
      quoted = !quoted;
    else if (quoted)
      continue;
    else if (c == 0xA4)
      shape += '$';
    else if (c == '#' || c == '0' || c == ',' || c == '.' || (c >= '1' && c <= '9')) {
      if (shape.empty() || shape.back() != '1') shape += '1';
    } else if (c == '-' || c == '(' || c == ')')
      shape += static_cast<char>(c);
    else if (IsSpaceLike(c) && !shape.empty() && shape.back() != ' ')
      shape += ' ';
  }
  while (!shape.empty() && shape.back() == ' ') shape.pop_back();
  return shape;
}

int IndexOf(const std::string& shape, std::initializer_list<const char*> shapes) {
  int index = 0;
  for (const char* candidate : shapes) {
    if (shape == candidate) return index;
    ++index;
  }
  return -1;
}

void ReadCurrencyPattern(TFormatSettings& settings, const std::u16string& pattern) {
  const size_t split = pattern.find(u';');
  const std::string positive = CurrencyShape(pattern.substr(0, split));
  const std::string negative =
      split == std::u16string::npos ? "-" + positive : CurrencyShape(pattern.substr(split + 1));
  const int positiveIndex = IndexOf(positive, {"$1", "1$", "$ 1", "1 $"});
  const int negativeIndex =
      IndexOf(negative, {"($1)", "-$1", "$-1", "$1-", "(1$)", "-1$", "1-$", "1$-", "-1 $", "-$ 1",
                         "1 $-", "$ 1-", "$ -1", "1- $", "($ 1)", "(1 $)"});
  if (positiveIndex >= 0) settings.CurrencyFormat = static_cast<uint8_t>(positiveIndex);
  if (negativeIndex >= 0) settings.NegCurrFormat = static_cast<uint8_t>(negativeIndex);
}

// The first separator a pattern puts between two of its fields: the locale's date or time
// separator. Zero when it has none that fits in a character setting.
char16_t PatternSeparator(const std::u16string& pattern) {
  bool quoted = false, afterField = false;
  for (char16_t c : pattern) {
    if (c == '\'')
      quoted = !quoted;
    else if (quoted || IsFormatMark(c))
      continue;
    else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
      afterField = true;
    else if (afterField && !IsSpaceLike(c) && c != ',')
      return c < 0x80 ? c : 0;
  }
  return 0;
}

// One run of a pattern letter in the platform's letters; empty for fields it has no letter for.
String PlatformField(char16_t letter, int count, bool fullYear) {
  auto pick = [count](std::initializer_list<const char*> byCount) {
    const char* chosen = "";
    int n = 1;
    for (const char* field : byCount)
      if (n++ <= count) chosen = field;
    return String(chosen);
  };
  switch (letter) {
    case 'y':
    case 'Y':
    case 'u': return count == 2 && !fullYear ? "yy" : "yyyy";
    case 'M':
    case 'L': return pick({"m", "mm", "mmm", "mmmm"});
    case 'd': return pick({"d", "dd"});
    case 'E': return pick({"ddd", "ddd", "ddd", "dddd"});
    case 'c':
    case 'e': return pick({"", "", "ddd", "dddd"});
    case 'H':
    case 'h':
    case 'K':
    case 'k': return pick({"h", "hh"});
    case 'm': return pick({"n", "nn"});
    case 's': return pick({"s", "ss"});
    case 'S': return "zzz";
    case 'a':
    case 'b':
    case 'B': return "AMPM";
    default: return {};
  }
}

// Builds platform text from literal characters, quoting those the platform would read as
// specifiers.
class LiteralWriter {
 public:
  explicit LiteralWriter(String& out) : FOut(out) {}
  ~LiteralWriter() { Close(); }

  void Add(UChar32 c) {
    if (IsFormatMark(c)) return;
    const bool special = c < 0x80 && ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                                      c == '/' || c == ':' || c == '\'');
    if (c == '"') {
      Close();
      FOut += "'\"'";
    } else if (special) {
      if (!FOpen) FOut += '"';
      FOpen = true;
      FOut += static_cast<char>(c);
    } else {
      Close();
      if (IsSpaceLike(c))
        FOut += ' ';
      else
        FOut += Utf16ToUtf8(std::u16string(1, static_cast<char16_t>(c)));
    }
  }

  void Close() {
    if (FOpen) FOut += '"';
    FOpen = false;
  }

 private:
  String& FOut;
  bool FOpen = false;
};

String Tidy(String format) {
  while (!format.empty() && (format.back() == ' ' || format.back() == ',')) format.pop_back();
  size_t start = format.find_first_not_of(' ');
  format.erase(0, start == String::npos ? format.size() : start);
  for (size_t at; (at = format.find("  ")) != String::npos;) format.erase(at, 1);
  return format;
}

}  // namespace

String PlatformDateFormat(const std::u16string& pattern, char16_t dateSeparator,
                          char16_t timeSeparator, bool fullYear) {
  String out;
  {
    LiteralWriter literal(out);
    for (size_t i = 0; i < pattern.size();) {
      const char16_t c = pattern[i];
      if (c == '\'') {
        if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {  // '' is one quote
          literal.Add('\'');
          i += 2;
          continue;
        }
        const size_t close = pattern.find(u'\'', i + 1);
        const size_t end = close == std::u16string::npos ? pattern.size() : close;
        for (size_t j = i + 1; j < end; ++j) literal.Add(pattern[j]);
        i = end + 1;
      } else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
        size_t run = i;
        while (run < pattern.size() && pattern[run] == c) ++run;
        literal.Close();
        out += PlatformField(c, static_cast<int>(run - i), fullYear);
        i = run;
      } else {
        literal.Close();
        if (dateSeparator && c == dateSeparator)
          out += '/';
        else if (timeSeparator && c == timeSeparator)
          out += ':';
        else
          literal.Add(c);
        ++i;
      }
    }
  }
  return Tidy(std::move(out));
}

String IcuLocaleName(const String& posixName) {
  const String name = posixName.substr(0, posixName.find_first_of(".@"));
  if (name.empty() || name == "C" || name == "POSIX") return {};
  char canonical[ULOC_FULLNAME_CAPACITY];
  UErrorCode status = U_ZERO_ERROR;
  uloc_canonicalize(name.c_str(), canonical, sizeof canonical, &status);
  if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING) return {};
  status = U_ZERO_ERROR;
  UResourceBundle* bundle = ures_open(nullptr, canonical, &status);
  if (bundle) ures_close(bundle);
  if (U_FAILURE(status) || status == U_USING_DEFAULT_WARNING) return {};
  return canonical;
}

void ReadLocaleNumbers(TFormatSettings& settings, const String& icuLocale) {
  if (icuLocale.empty()) return;
  if (NumberFormatPtr decimal = OpenNumberFormat(UNUM_DECIMAL, icuLocale)) {
    settings.DecimalSeparator =
        AsciiSetting(NumberSymbol(decimal.get(), UNUM_DECIMAL_SEPARATOR_SYMBOL), '.');
    const char otherThanDecimal = settings.DecimalSeparator == ',' ? '.' : ',';
    settings.ThousandSeparator =
        AsciiSetting(NumberSymbol(decimal.get(), UNUM_GROUPING_SEPARATOR_SYMBOL), otherThanDecimal);
    if (settings.ThousandSeparator == settings.DecimalSeparator)
      settings.ThousandSeparator = otherThanDecimal;
    settings.ListSeparator = settings.DecimalSeparator == ',' ? ';' : ',';
  }
  if (NumberFormatPtr currency = OpenNumberFormat(UNUM_CURRENCY, icuLocale)) {
    const String sign = Utf16ToUtf8(NumberSymbol(currency.get(), UNUM_CURRENCY_SYMBOL));
    if (!sign.empty()) settings.CurrencyString = sign;
    const int32_t decimals = unum_getAttribute(currency.get(), UNUM_MAX_FRACTION_DIGITS);
    if (decimals >= 0 && decimals <= 18) settings.CurrencyDecimals = static_cast<uint8_t>(decimals);
    ReadCurrencyPattern(settings, NumberPattern(currency.get()));
  }
}

void ReadLocaleDates(TFormatSettings& settings, const String& icuLocale) {
  if (icuLocale.empty()) return;
  DateFormatPtr shortDate = OpenDateFormat(UDAT_NONE, UDAT_SHORT, icuLocale);
  DateFormatPtr longDate = OpenDateFormat(UDAT_NONE, UDAT_FULL, icuLocale);
  DateFormatPtr shortTime = OpenDateFormat(UDAT_SHORT, UDAT_NONE, icuLocale);
  DateFormatPtr longTime = OpenDateFormat(UDAT_MEDIUM, UDAT_NONE, icuLocale);
  if (!shortDate || !longDate || !shortTime || !longTime) return;

  const std::u16string shortDatePattern = DatePattern(shortDate.get());
  const std::u16string shortTimePattern = DatePattern(shortTime.get());
  const std::u16string longTimePattern = DatePattern(longTime.get());
  const char16_t dateSeparator = PatternSeparator(shortDatePattern);
  char16_t timeSeparator = PatternSeparator(shortTimePattern);
  if (!timeSeparator) timeSeparator = PatternSeparator(longTimePattern);
  if (dateSeparator) settings.DateSeparator = static_cast<char>(dateSeparator);
  if (timeSeparator) settings.TimeSeparator = static_cast<char>(timeSeparator);
  // Without a separator of its own the locale keeps the invariant one, and a pattern that
  // writes that character still means the separator.
  const char16_t dateMark = static_cast<unsigned char>(settings.DateSeparator);
  const char16_t timeMark = static_cast<unsigned char>(settings.TimeSeparator);

  settings.ShortDateFormat = PlatformDateFormat(shortDatePattern, dateMark, 0, true);
  settings.LongDateFormat = PlatformDateFormat(DatePattern(longDate.get()), 0, 0, true);
  settings.ShortTimeFormat = PlatformDateFormat(shortTimePattern, 0, timeMark, false);
  settings.LongTimeFormat = PlatformDateFormat(longTimePattern, 0, timeMark, false);

  const UDateFormat* names = longDate.get();
  settings.TimeAMString = DateSymbol(names, UDAT_AM_PMS, 0);
  settings.TimePMString = DateSymbol(names, UDAT_AM_PMS, 1);
  for (int m = 0; m < 12; ++m) {
    settings.LongMonthNames[m] = DateSymbol(names, UDAT_MONTHS, m);
    settings.ShortMonthNames[m] = DateSymbol(names, UDAT_SHORT_MONTHS, m);
  }
  for (int d = 0; d < 7; ++d) {  // ICU counts weekdays from 1 = Sunday
    settings.LongDayNames[d] = DateSymbol(names, UDAT_WEEKDAYS, d + 1);
    settings.ShortDayNames[d] = DateSymbol(names, UDAT_SHORT_WEEKDAYS, d + 1);
  }
}

}  // namespace orv::detail
