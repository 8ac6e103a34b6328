#pragma once
// TBcd: an exact decimal of up to 64 significant digits with its precision and scale, and the
// conversions the decimal fields and the decimal variant need. Text and currency convert
// digit by digit, never through a double.

#include <compare>
#include <cstdint>
#include <iosfwd>

#include "SysUtils.h"

namespace orv {

class Variant;

ORV_EXCEPTION(EBcdException, Exception)
ORV_EXCEPTION(EBcdOverflowException, EBcdException)

constexpr int MaxFMTBcdFractionSize = 64;  // digits a TBcd can hold

// The platform's layout: Precision digits packed two to a byte from the left of Fraction, of
// which the last `scale` are decimals; SignSpecialPlaces holds the sign (bit 7), a special
// flag (bit 6, unused here) and the scale (bits 0..5).
struct TBcd {
  uint8_t Precision = 1;
  uint8_t SignSpecialPlaces = 0;
  uint8_t Fraction[32] = {};

  // Numeric: 1.5 equals 1.50.
  friend bool operator==(const TBcd& a, const TBcd& b);
  friend std::strong_ordering operator<=>(const TBcd& a, const TBcd& b);
};

extern const TBcd NullBcd;  // zero: precision 1, scale 0

bool IsBcdNegative(const TBcd& bcd);
// Digits in the value as stored, with leading zeros of the integer part dropped (0 has 1).
uint16_t BcdPrecision(const TBcd& bcd);
uint16_t BcdScale(const TBcd& bcd);  // digits after the decimal point, as stored
int BcdCompare(const TBcd& a, const TBcd& b);  // -1, 0 or 1, numerically

// Text: an optional sign, digits with the settings' decimal separator, an optional exponent;
// blanks around are ignored. EConvertError "'%s' is not a valid BCD value" otherwise, and
// EBcdOverflowException "BCD overflow" past 64 significant digits.
TBcd StrToBcd(const String& text);
TBcd StrToBcd(const String& text, const TFormatSettings& settings);
bool TryStrToBcd(const String& text, TBcd& bcd);
bool TryStrToBcd(const String& text, TBcd& bcd, const TFormatSettings& settings);
// The shortest exact text: no trailing decimal zeros, "0" for zero.
String BcdToStr(const TBcd& bcd);
String BcdToStr(const TBcd& bcd, const TFormatSettings& settings);

TBcd IntegerToBcd(int64_t value);
// Rounding here is half to even, as Currency and StrToCurr round, so that every path from a
// decimal to a coarser number gives the same result.

// The value rounded to an integer, or truncated; EBcdOverflowException past the 64-bit range.
int64_t BcdToInt64(const TBcd& bcd, bool truncate = false);
// 15 significant digits, as FloatToStr shows the double; EBcdOverflowException for NaN or
// an infinity.
TBcd DoubleToBcd(double value);
double BcdToDouble(const TBcd& bcd);  // the nearest double
// Exact; false when `precision` digits with `decimals` decimals cannot hold the value.
bool CurrToBCD(Currency value, TBcd& bcd, int precision = 32, int decimals = 4);
// Rounded at the fourth decimal; false when out of the currency range.
bool BCDToCurr(const TBcd& bcd, Currency& value);

// `in` rounded or padded to `places` decimals, in `out` with precision
// `precision`; false when the integer digits do not fit.
bool NormalizeBcd(const TBcd& in, TBcd& out, int precision, int places);

// Exact sums and differences; EBcdOverflowException past 64 digits.
void BcdAdd(const TBcd& a, const TBcd& b, TBcd& result);
void BcdSubtract(const TBcd& a, const TBcd& b, TBcd& result);

// The decimal variant (its type code is VarFMTBcd(), declared in Variants.h).
Variant VarFMTBcdCreate(const TBcd& bcd);
Variant VarFMTBcdCreate(const String& text, uint16_t precision, uint16_t scale);
// Any variant the coercions accept: numbers exactly, text under the current settings.
TBcd VarToBcd(const Variant& value);

std::ostream& operator<<(std::ostream& os, const TBcd& bcd);

}  // namespace orv
