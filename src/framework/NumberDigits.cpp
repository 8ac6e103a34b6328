#include "NumberDigits.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace orv::detail {

namespace {

constexpr int MaxPrecision = 18;

void StripTrailingZeros(DecimalDigits& number) {
  const auto last = number.Digits.find_last_not_of('0');
  number.Digits.erase(last == String::npos ? 0 : last + 1);
  if (number.Digits.empty()) number.Exponent = 0;
}

String ZeroPadded(unsigned value, int minDigits) {
  String text = std::to_string(value);
  if (static_cast<int>(text.size()) < minDigits) text.insert(0, minDigits - text.size(), '0');
  return text;
}

// The digits before and after the decimal point, the integer part at least "0".
std::pair<String, String> SplitAtPoint(const DecimalDigits& number) {
  const int len = static_cast<int>(number.Digits.size());
  if (number.Exponent <= 0) return {"0", String(-number.Exponent, '0') + number.Digits};
  if (number.Exponent >= len) return {number.Digits + String(number.Exponent - len, '0'), ""};
  return {number.Digits.substr(0, number.Exponent), number.Digits.substr(number.Exponent)};
}

}  // namespace

DecimalDigits DigitsOf(double value, int precision, int decimals) {
  DecimalDigits number;
  number.Negative = std::signbit(value);
  if (value == 0 || !std::isfinite(value)) return number;
  // 18 significant digits, as the platform's extended type carries them, then our own rounding
  // so that ties go away from zero as the platform's do.
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.*e", MaxPrecision - 1, std::fabs(value));
  const char* exp = std::strchr(buffer, 'e');
  number.Digits.reserve(MaxPrecision);
  for (const char* p = buffer; p != exp; ++p)
    if (*p != '.') number.Digits.push_back(*p);
  number.Exponent = std::atoi(exp + 1) + 1;
  StripTrailingZeros(number);
  RoundDigits(number, precision, decimals);
  return number;
}

DecimalDigits DigitsOf(Currency value, int decimals) {
  DecimalDigits number;
  const int64_t raw = value.Raw();
  number.Negative = raw < 0;
  // Through unsigned so that the most negative value has a magnitude.
  const uint64_t magnitude = raw < 0 ? 0 - static_cast<uint64_t>(raw) : static_cast<uint64_t>(raw);
  if (magnitude == 0) return number;
  number.Digits = std::to_string(magnitude);
  number.Exponent = static_cast<int>(number.Digits.size()) - 4;
  StripTrailingZeros(number);
  RoundDigits(number, 19, decimals);
  return number;
}

void RoundDigits(DecimalDigits& number, int precision, int decimals) {
  const int keep = std::min(precision, number.Exponent + std::min(decimals, NoDecimalLimit));
  if (keep >= static_cast<int>(number.Digits.size())) return;
  if (keep < 0) {
    number.Digits.clear();
    number.Exponent = 0;
    return;
  }
  const bool roundUp = number.Digits[keep] >= '5';
  number.Digits.resize(keep);
  if (roundUp) {
    int i = keep - 1;
    for (; i >= 0 && number.Digits[i] == '9'; --i) number.Digits[i] = '0';
    if (i >= 0) {
      ++number.Digits[i];
    } else {
      number.Digits.insert(number.Digits.begin(), '1');
      ++number.Exponent;
    }
  }
  StripTrailingZeros(number);
}

String NonFiniteText(double value) {
  if (std::isnan(value)) return "NAN";
  if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
  return {};
}

String GroupThousands(const String& digits, char separator) {
  if (separator == 0 || digits.size() <= 3) return digits;
  String result;
  result.reserve(digits.size() + digits.size() / 3);
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) result.push_back(separator);
    result.push_back(digits[i]);
  }
  return result;
}

String GeneralText(const DecimalDigits& number, int precision, int expDigits,
                   const TFormatSettings& settings) {
  if (number.IsZero()) return "0";
  String text = number.Negative ? "-" : "";
  if (number.Exponent > precision || number.Exponent < -3) {
    text += number.Digits[0];
    if (number.Digits.size() > 1) {
      text += settings.DecimalSeparator;
      text.append(number.Digits, 1);
    }
    const int exponent = number.Exponent - 1;
    text += exponent < 0 ? "E-" : "E";
    return text + ZeroPadded(std::abs(exponent), expDigits);
  }
  auto [whole, fraction] = SplitAtPoint(number);
  text += whole;
  if (!fraction.empty()) text += settings.DecimalSeparator + fraction;
  return text;
}

String ExponentText(const DecimalDigits& number, int precision, int expDigits,
                    const TFormatSettings& settings) {
  String digits = number.Digits;
  digits.resize(std::max(precision, 1), '0');
  String text = number.Negative && !number.IsZero() ? "-" : "";
  text += digits[0];
  if (digits.size() > 1) {
    text += settings.DecimalSeparator;
    text.append(digits, 1);
  }
  const int exponent = number.IsZero() ? 0 : number.Exponent - 1;
  text += exponent < 0 ? "E-" : "E+";
  return text + ZeroPadded(std::abs(exponent), expDigits);
}

String FixedText(const DecimalDigits& number, int decimals, char thousandSeparator,
                 const TFormatSettings& settings) {
  auto [whole, fraction] = SplitAtPoint(number);
  String text = number.Negative && !number.IsZero() ? "-" : "";
  text += GroupThousands(whole, thousandSeparator);
  if (decimals > 0) {
    fraction.resize(decimals, '0');
    text += settings.DecimalSeparator + fraction;
  }
  return text;
}

String CurrencyText(const DecimalDigits& number, int decimals, const TFormatSettings& settings) {
  DecimalDigits magnitude = number;
  magnitude.Negative = false;
  const String amount = FixedText(magnitude, decimals, settings.ThousandSeparator, settings);
  const String& sign = settings.CurrencyString;
  if (!number.Negative || number.IsZero()) {
    switch (settings.CurrencyFormat) {
      case 1: return amount + sign;
      case 2: return sign + ' ' + amount;
      case 3: return amount + ' ' + sign;
      default: return sign + amount;
    }
  }
  switch (settings.NegCurrFormat) {
    case 1: return '-' + sign + amount;
    case 2: return sign + '-' + amount;
    case 3: return sign + amount + '-';
    case 4: return '(' + amount + sign + ')';
    case 5: return '-' + amount + sign;
    case 6: return amount + '-' + sign;
    case 7: return amount + sign + '-';
    case 8: return '-' + amount + ' ' + sign;
    case 9: return '-' + sign + ' ' + amount;
    case 10: return amount + ' ' + sign + '-';
    case 11: return sign + ' ' + amount + '-';
    case 12: return sign + ' ' + '-' + amount;
    case 13: return amount + '-' + ' ' + sign;
    case 14: return '(' + sign + ' ' + amount + ')';
    case 15: return '(' + amount + ' ' + sign + ')';
    default: return '(' + sign + amount + ')';
  }
}

}  // namespace orv::detail
