#pragma once
// Format settings, text, numbers and dates as the platform handles them.

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>

#include "System.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Format settings

struct TFormatSettings {
  char DecimalSeparator = '.';
  char ThousandSeparator = ',';
  char DateSeparator = '/';
  char TimeSeparator = ':';
  char ListSeparator = ',';
  String ShortDateFormat = "MM/dd/yyyy";
  String LongDateFormat = "dddd, dd MMMMM yyyy";
  String ShortTimeFormat = "hh:nn";
  String LongTimeFormat = "hh:nn:ss";
  String TimeAMString = "AM";
  String TimePMString = "PM";
  String CurrencyString = "\xC2\xA4";  // the generic currency sign
  uint8_t CurrencyFormat = 0;          // 0 "$1", 1 "1$", 2 "$ 1", 3 "1 $"
  uint8_t NegCurrFormat = 0;           // 0 "($1)" ... 15, as the platform numbers them
  uint8_t CurrencyDecimals = 2;
  uint16_t TwoDigitYearCenturyWindow = 50;
  std::array<String, 12> ShortMonthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::array<String, 12> LongMonthNames{"January", "February", "March",     "April",
                                        "May",     "June",     "July",      "August",
                                        "September", "October", "November", "December"};
  std::array<String, 7> ShortDayNames{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  std::array<String, 7> LongDayNames{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};

  // The invariant settings above.
  static TFormatSettings Invariant();
  // The settings of a locale ("de_DE", "en_US.UTF-8"); the process locale (LC_ALL, LC_TIME,
  // LC_NUMERIC, LANG) when empty; the invariant settings for "C", "POSIX" or an unknown locale.
  static TFormatSettings Create(const String& locale = "");
};

// The process-wide settings every conversion without explicit settings uses. Started from the
// process locale, else the invariant values.
extern TFormatSettings FormatSettings;

// ---------------------------------------------------------------------------------------------
// Integers

String IntToStr(int64_t value);
String UIntToStr(uint64_t value);
String IntToHex(int64_t value, int digits);
// Decimal, or hexadecimal with a leading "$", "0x" or "0X"; leading and trailing blanks are
// ignored. EConvertError "'%s' is not a valid integer value" otherwise.
int32_t StrToInt(const String& text);
int64_t StrToInt64(const String& text);
int32_t StrToIntDef(const String& text, int32_t def);
int64_t StrToInt64Def(const String& text, int64_t def);
bool TryStrToInt(const String& text, int32_t& value);
bool TryStrToInt64(const String& text, int64_t& value);
bool TryStrToUInt64(const String& text, uint64_t& value);

// ---------------------------------------------------------------------------------------------
// Booleans: "True"/"False" with UseBoolStrs, else "-1"/"0". Parsing accepts either, any case,
// and any number (non-zero is true).

String BoolToStr(bool value, bool useBoolStrs = false);
bool StrToBool(const String& text);  // EConvertError "'%s' is not a valid boolean value"
bool TryStrToBool(const String& text, bool& value);

// ---------------------------------------------------------------------------------------------
// Floating point and currency

enum TFloatFormat { ffGeneral, ffExponent, ffFixed, ffNumber, ffCurrency };

// 15 significant digits (7 for float), the shortest text, exponent where the platform uses one.
String FloatToStr(double value);
String FloatToStr(double value, const TFormatSettings& settings);
String FloatToStr(float value);
String FloatToStr(float value, const TFormatSettings& settings);
String FloatToStrF(double value, TFloatFormat format, int precision, int digits);
String FloatToStrF(double value, TFloatFormat format, int precision, int digits,
                   const TFormatSettings& settings);
// Picture formats: "0", "#", ".", ",", "E+"/"E-", quoted text and ";" sections.
String FormatFloat(const String& format, double value);
String FormatFloat(const String& format, double value, const TFormatSettings& settings);
String FormatCurr(const String& format, Currency value);
String FormatCurr(const String& format, Currency value, const TFormatSettings& settings);
// The settings' decimal separator; no thousands separators; blanks around are ignored; an
// exponent is accepted. EConvertError "'%s' is not a valid floating point value" otherwise.
double StrToFloat(const String& text);
double StrToFloat(const String& text, const TFormatSettings& settings);
double StrToFloatDef(const String& text, double def);
bool TryStrToFloat(const String& text, double& value);
bool TryStrToFloat(const String& text, double& value, const TFormatSettings& settings);

String CurrToStr(Currency value);
String CurrToStr(Currency value, const TFormatSettings& settings);
String CurrToStrF(Currency value, TFloatFormat format, int digits);
String CurrToStrF(Currency value, TFloatFormat format, int digits, const TFormatSettings& settings);
// Exact: the text's digits are taken as they stand, rounded half to even past four decimals.
// EConvertError "'%s' is not a valid floating point value" otherwise.
Currency StrToCurr(const String& text);
Currency StrToCurr(const String& text, const TFormatSettings& settings);
bool TryStrToCurr(const String& text, Currency& value);
bool TryStrToCurr(const String& text, Currency& value, const TFormatSettings& settings);

// ---------------------------------------------------------------------------------------------
// Dates and times (TDateTime: days since 1899-12-30, the time of day as the fraction)

constexpr double DateDelta = 693594;  // days from 0001-01-01 to 1899-12-31
constexpr double MSecsPerDay = 86400000.0;

bool IsLeapYear(uint16_t year);
uint16_t DaysInAMonth(uint16_t year, uint16_t month);
// EConvertError "Invalid argument to date encode" / "Invalid argument to time encode".
TDateTime EncodeDate(uint16_t year, uint16_t month, uint16_t day);
TDateTime EncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec);
bool TryEncodeDate(uint16_t year, uint16_t month, uint16_t day, TDateTime& value);
bool TryEncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec, TDateTime& value);
void DecodeDate(TDateTime value, uint16_t& year, uint16_t& month, uint16_t& day);
void DecodeTime(TDateTime value, uint16_t& hour, uint16_t& min, uint16_t& sec, uint16_t& msec);
int DayOfWeek(TDateTime value);  // 1 = Sunday
TDateTime Date();
TDateTime Time();
TDateTime Now();

// The platform's format specifiers: c d dd ddd dddd ddddd dddddd e ee m mm mmm mmmm yy yyyy
// h hh n nn s ss z zzz t tt am/pm a/p ampm / : 'text' "text"; "m" after "h" means minutes.
String FormatDateTime(const String& format, TDateTime value);
String FormatDateTime(const String& format, TDateTime value, const TFormatSettings& settings);
String DateToStr(TDateTime value);  // ShortDateFormat
String DateToStr(TDateTime value, const TFormatSettings& settings);
String TimeToStr(TDateTime value);  // LongTimeFormat
String TimeToStr(TDateTime value, const TFormatSettings& settings);
String DateTimeToStr(TDateTime value);  // date, blank, time; no time at exactly midnight
String DateTimeToStr(TDateTime value, const TFormatSettings& settings);
// Parsing follows the order of day, month and year in ShortDateFormat, accepts the settings'
// separators, month names, two-digit years within TwoDigitYearCenturyWindow and AM/PM markers.
// EConvertError "'%s' is not a valid date" / "... time" / "... date and time" otherwise.
TDateTime StrToDate(const String& text);
TDateTime StrToDate(const String& text, const TFormatSettings& settings);
TDateTime StrToTime(const String& text);
TDateTime StrToTime(const String& text, const TFormatSettings& settings);
TDateTime StrToDateTime(const String& text);
TDateTime StrToDateTime(const String& text, const TFormatSettings& settings);
bool TryStrToDate(const String& text, TDateTime& value);
bool TryStrToDate(const String& text, TDateTime& value, const TFormatSettings& settings);
bool TryStrToTime(const String& text, TDateTime& value);
bool TryStrToTime(const String& text, TDateTime& value, const TFormatSettings& settings);
bool TryStrToDateTime(const String& text, TDateTime& value);
bool TryStrToDateTime(const String& text, TDateTime& value, const TFormatSettings& settings);

// ---------------------------------------------------------------------------------------------
// Format: "%[index:][-][width][.precision]type", type one of d u e f g n m p s x, "*" takes a
// width or precision from the arguments, "%%" is a percent sign. EConvertError
// "Format '%s' invalid or incompatible with argument" when the format and arguments disagree.

class FormatArg {
 public:
  enum class Kind { Int, UInt, Float, Curr, Str, WStr, Ptr };
  template <class I, std::enable_if_t<std::is_integral_v<I> && std::is_signed_v<I> &&
                                          !std::is_same_v<I, char>, int> = 0>
  FormatArg(I v) : FKind(Kind::Int), FInt(v), FBits(sizeof(I) * 8) {}
  template <class I, std::enable_if_t<std::is_integral_v<I> && std::is_unsigned_v<I> &&
                                          !std::is_same_v<I, bool>, int> = 0>
  FormatArg(I v) : FKind(Kind::UInt), FUInt(v), FBits(sizeof(I) * 8) {}
  FormatArg(char c) : FKind(Kind::Str), FStr(1, c) {}
  FormatArg(double v) : FKind(Kind::Float), FFloat(v) {}
  FormatArg(float v) : FKind(Kind::Float), FFloat(v) {}
  FormatArg(long double v) : FKind(Kind::Float), FFloat(static_cast<double>(v)) {}
  template <class Tag>
  FormatArg(TDateTimeBase<Tag> v) : FKind(Kind::Float), FFloat(v.Val) {}
  FormatArg(Currency v) : FKind(Kind::Curr), FCurr(v) {}
  FormatArg(const char* s) : FKind(Kind::Str), FStr(s ? s : "") {}
  FormatArg(const String& s) : FKind(Kind::Str), FStr(s) {}
  FormatArg(const WideString& s) : FKind(Kind::WStr), FWStr(s) {}
  FormatArg(const void* p) : FKind(Kind::Ptr), FPtr(p) {}
  FormatArg(std::nullptr_t) : FKind(Kind::Ptr) {}

  Kind GetKind() const { return FKind; }
  int64_t AsInt() const { return FInt; }
  uint64_t AsUInt() const { return FUInt; }
  double AsFloat() const { return FFloat; }
  Currency AsCurr() const { return FCurr; }
  const String& AsStr() const { return FStr; }
  const WideString& AsWStr() const { return FWStr; }
  const void* AsPtr() const { return FPtr; }
  // The width of the integer passed: "%u" and "%x" show a negative value in that many bits.
  int GetBits() const { return FBits; }

 private:
  Kind FKind;
  int64_t FInt = 0;
  uint64_t FUInt = 0;
  double FFloat = 0;
  Currency FCurr;
  String FStr;
  WideString FWStr;
  const void* FPtr = nullptr;
  int FBits = 64;
};

String Format(const String& format, std::initializer_list<FormatArg> args);
String Format(const String& format, std::initializer_list<FormatArg> args,
              const TFormatSettings& settings);

// ---------------------------------------------------------------------------------------------
// Text

String Utf16ToUtf8(const WideString& text);  // unpaired surrogates become U+FFFD
WideString Utf8ToUtf16(const String& text);  // invalid bytes become U+FFFD
// The longest prefix of at most `maxBytes` bytes that does not split a code point.
String Utf8Truncate(const String& text, size_t maxBytes);

String Trim(const String& text);  // drops characters up to the blank at both ends
String TrimLeft(const String& text);
String TrimRight(const String& text);
String UpperCase(const String& text);  // ASCII letters only
String LowerCase(const String& text);
int CompareStr(const String& a, const String& b);  // ordinal: <0, 0, >0
bool SameStr(const String& a, const String& b);
int CompareText(const String& a, const String& b);  // ASCII letters compared without case
bool SameText(const String& a, const String& b);
// Locale-aware (ICU collation of the process locale): "Text" ignores case but not accents.
int AnsiCompareText(const String& a, const String& b);
// The same on text where it lies (a variant's text, a slice), without copying it.
int AnsiCompareText(std::string_view a, std::string_view b);
bool AnsiSameText(const String& a, const String& b);
int AnsiCompareStr(const String& a, const String& b);
bool AnsiSameStr(const String& a, const String& b);
String AnsiUpperCase(const String& text);
String AnsiLowerCase(const String& text);
int AnsiCompareText(const WideString& a, const WideString& b);
int AnsiCompareStr(const WideString& a, const WideString& b);
WideString WideUpperCase(const WideString& text);
WideString WideLowerCase(const WideString& text);

String QuotedStr(const String& text);  // 'it''s'
String AnsiQuotedStr(const String& text, char quote);
// Drops the quotes around a quoted text and undoubles those inside; other text as it stands.
String AnsiDequotedStr(const String& text, char quote);

enum TReplaceFlag : uint8_t { rfReplaceAll = 1, rfIgnoreCase = 2 };
String StringReplace(const String& text, const String& from, const String& to, unsigned flags);

// ---------------------------------------------------------------------------------------------
// File names and files

constexpr char PathDelim = '/';
String ExtractFileName(const String& path);
String ExtractFilePath(const String& path);  // with the trailing delimiter
String ExtractFileExt(const String& path);   // with the dot
String ChangeFileExt(const String& path, const String& ext);
String IncludeTrailingPathDelimiter(const String& path);
bool FileExists(const String& path);  // a regular file, not a directory
bool DirectoryExists(const String& path);
bool DeleteFile(const String& path);
bool RenameFile(const String& from, const String& to);

}  // namespace orv
