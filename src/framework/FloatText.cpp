// Floating-point and currency values to text and back.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "NumberDigits.h"
#include "SysUtils.h"

namespace orv {

using detail::DecimalDigits;
using detail::DigitsOf;

namespace {

constexpr int DoublePrecision = 15;
constexpr int FloatPrecision = 7;
constexpr int CurrencyPrecision = 19;

using UInt128 = unsigned __int128;

String FormatDigits(const DecimalDigits& number, TFloatFormat format, int precision, int digits,
                    const TFormatSettings& settings) {
  switch (format) {
    case ffExponent:
      return detail::ExponentText(number, precision, std::clamp(digits, 0, 4), settings);
    case ffFixed: return detail::FixedText(number, digits, 0, settings);
    case ffNumber: return detail::FixedText(number, digits, settings.ThousandSeparator, settings);
    case ffCurrency: return detail::CurrencyText(number, digits, settings);
    default: return detail::GeneralText(number, precision, std::clamp(digits, 0, 4), settings);
  }
}

bool IsFixedLayout(TFloatFormat format) {
  return format == ffFixed || format == ffNumber || format == ffCurrency;
}

// A number as written in text: sign, mantissa digits, the place of the decimal point among
// them, and a decimal exponent. Lexing is shared by the float and currency parsers.
struct NumberText {
  bool Negative = false;
  String Digits;     // all mantissa digits, leading zeros dropped
  int PointPos = 0;  // digits of Digits before the decimal point
  int Exponent = 0;
};

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

bool LexNumber(const String& text, char decimalSeparator, NumberText& number) {
  size_t i = 0, end = text.size();
  while (i < end && IsBlank(text[i])) ++i;
  while (end > i && IsBlank(text[end - 1])) --end;
  if (i < end && (text[i] == '+' || text[i] == '-')) number.Negative = text[i++] == '-';
  bool anyDigit = false, seenPoint = false;
  for (; i < end; ++i) {
    const char c = text[i];
    if (c >= '0' && c <= '9') {
      anyDigit = true;
      if (c == '0' && number.Digits.empty()) {
        if (seenPoint) --number.PointPos;
        continue;
      }
      number.Digits.push_back(c);
      if (!seenPoint) ++number.PointPos;
    } else if (c == decimalSeparator && !seenPoint) {
      seenPoint = true;
    } else {
      break;
    }
  }
  if (!anyDigit) return false;
  if (i < end && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    bool negativeExp = false;
    if (i < end && (text[i] == '+' || text[i] == '-')) negativeExp = text[i++] == '-';
    if (i == end) return false;
    int exponent = 0;
    for (; i < end && text[i] >= '0' && text[i] <= '9'; ++i)
      exponent = std::min(exponent * 10 + (text[i] - '0'), 100000);
    number.Exponent = negativeExp ? -exponent : exponent;
  }
  return i == end;
}

bool ParseNonFinite(const String& text, double& value) {
  const String word = UpperCase(Trim(text));
  if (word == "NAN")
    value = std::numeric_limits<double>::quiet_NaN();
  else if (word == "INF" || word == "+INF")
    value = std::numeric_limits<double>::infinity();
  else if (word == "-INF")
    value = -std::numeric_limits<double>::infinity();
  else
    return false;
  return true;
}

bool ToDouble(const NumberText& number, double& value) {
  if (number.Digits.empty()) {
    value = number.Negative ? -0.0 : 0.0;
    return true;
  }
  const int decimalExponent = number.PointPos + number.Exponent - 1;  // of the first digit
  if (decimalExponent > 400) return false;
  if (decimalExponent < -400) {
    value = number.Negative ? -0.0 : 0.0;
    return true;
  }
  const String plain = "0." + number.Digits + "e" + std::to_string(decimalExponent + 1);
  double magnitude = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), magnitude);
  if (result.ec == std::errc::result_out_of_range) {
    if (decimalExponent > 0) return false;
    magnitude = 0;  // underflow
  } else if (result.ec != std::errc() || std::isinf(magnitude)) {
    return false;
  }
  value = number.Negative ? -magnitude : magnitude;
  return true;
}

// Scales the digits to units of 1/10000, rounding half to even on everything past that.
bool ToCurrency(const NumberText& number, Currency& value) {
  const String& digits = number.Digits;
  const int64_t len = static_cast<int64_t>(digits.size());
  const int64_t shift = int64_t(number.PointPos) + number.Exponent + 4 - len;
  if (len == 0 || len + shift < 0) {  // zero, or too small to reach half a unit
    value = Currency();
    return true;
  }
  const int64_t used = std::min(len, len + shift);
  if (used + std::max<int64_t>(shift, 0) > 19) return false;  // at least 10^19 units
  UInt128 magnitude = 0;
  for (int64_t i = 0; i < used; ++i) magnitude = magnitude * 10 + unsigned(digits[i] - '0');
  for (int64_t i = 0; i < shift; ++i) magnitude *= 10;
  if (used < len) {
    const char first = digits[used];
    const bool pastHalf = digits.find_first_not_of('0', used + 1) != String::npos;
    if (first > '5' || (first == '5' && (pastHalf || (magnitude & 1)))) ++magnitude;
  }
  const UInt128 limit = UInt128(std::numeric_limits<int64_t>::max()) + (number.Negative ? 1 : 0);
  if (magnitude > limit) return false;
  const uint64_t bits = static_cast<uint64_t>(magnitude);
  value = Currency::FromRaw(static_cast<int64_t>(number.Negative ? 0 - bits : bits));
  return true;
}

[[noreturn]] void InvalidFloat(const String& text) {
  throw EConvertError("'" + text + "' is not a valid floating point value");
}

}  // namespace

String FloatToStrF(double value, TFloatFormat format, int precision, int digits,
                   const TFormatSettings& settings) {
  if (String special = detail::NonFiniteText(value); !special.empty()) return special;
  precision = std::clamp(precision, 1, 18);
  digits = std::clamp(digits, 0, 18);
  DecimalDigits number = DigitsOf(value, precision);
  if (!IsFixedLayout(format)) return FormatDigits(number, format, precision, digits, settings);
  // Too many digits before the point for the precision: the general layout takes over.
  if (number.Exponent > precision) return FormatDigits(number, ffGeneral, precision, 0, settings);
  number = DigitsOf(value, precision, digits);
  return FormatDigits(number, format, precision, digits, settings);
}

String FloatToStrF(double value, TFloatFormat format, int precision, int digits) {
  return FloatToStrF(value, format, precision, digits, FormatSettings);
}

String FloatToStr(double value, const TFormatSettings& settings) {
  return FloatToStrF(value, ffGeneral, DoublePrecision, 0, settings);
}
String FloatToStr(double value) { return FloatToStr(value, FormatSettings); }
String FloatToStr(float value, const TFormatSettings& settings) {
  return FloatToStrF(value, ffGeneral, FloatPrecision, 0, settings);
}
String FloatToStr(float value) { return FloatToStr(value, FormatSettings); }

String CurrToStrF(Currency value, TFloatFormat format, int digits,
                  const TFormatSettings& settings) {
  digits = std::clamp(digits, 0, 18);
  if (format == ffGeneral || format == ffExponent) {
    const int precision = format == ffGeneral ? CurrencyPrecision : DoublePrecision;
    DecimalDigits number = DigitsOf(value);
    detail::RoundDigits(number, precision, detail::NoDecimalLimit);
    return FormatDigits(number, format, precision, digits, settings);
  }
  return FormatDigits(DigitsOf(value, digits), format, CurrencyPrecision, digits, settings);
}

String CurrToStrF(Currency value, TFloatFormat format, int digits) {
  return CurrToStrF(value, format, digits, FormatSettings);
}
String CurrToStr(Currency value, const TFormatSettings& settings) {
  return CurrToStrF(value, ffGeneral, 0, settings);
}
String CurrToStr(Currency value) { return CurrToStr(value, FormatSettings); }

bool TryStrToFloat(const String& text, double& value, const TFormatSettings& settings) {
  NumberText number;
  if (LexNumber(text, settings.DecimalSeparator, number)) return ToDouble(number, value);
  return ParseNonFinite(text, value);
}

bool TryStrToFloat(const String& text, double& value) {
  return TryStrToFloat(text, value, FormatSettings);
}

double StrToFloat(const String& text, const TFormatSettings& settings) {
  double value = 0;
  if (!TryStrToFloat(text, value, settings)) InvalidFloat(text);
  return value;
}

double StrToFloat(const String& text) { return StrToFloat(text, FormatSettings); }

double StrToFloatDef(const String& text, double def) {
  double value = 0;
  return TryStrToFloat(text, value) ? value : def;
}

bool TryStrToCurr(const String& text, Currency& value, const TFormatSettings& settings) {
  NumberText number;
  return LexNumber(text, settings.DecimalSeparator, number) && ToCurrency(number, value);
}

bool TryStrToCurr(const String& text, Currency& value) {
  return TryStrToCurr(text, value, FormatSettings);
}

Currency StrToCurr(const String& text, const TFormatSettings& settings) {
  Currency value;
  if (!TryStrToCurr(text, value, settings)) InvalidFloat(text);
  return value;
}

Currency StrToCurr(const String& text) { return StrToCurr(text, FormatSettings); }

}  // namespace orv
