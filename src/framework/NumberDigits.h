#pragma once
// Decimal digits of a number, the common ground of every number-to-text conversion: doubles and
// currencies are both turned into digits first, so that rounding and layout are written once.

#include "SysUtils.h"

namespace orv::detail {

constexpr int NoDecimalLimit = 9999;

// value = 0.D1D2D3... x 10^Exponent. Digits has no leading or trailing zeros and is empty for
// zero; Negative is kept for zero too, and the layout functions decide whether to show it.
struct DecimalDigits {
  bool Negative = false;
  std::string Digits;
  int Exponent = 0;

  bool IsZero() const { return Digits.empty(); }
};

// At most `precision` significant digits (1..18) and `decimals` digits after the point, rounded
// half away from zero on the first 18 significant digits of the value.
DecimalDigits DigitsOf(double value, int precision, int decimals = NoDecimalLimit);
// The exact digits of a currency, rounded half away from zero at `decimals`.
DecimalDigits DigitsOf(Currency value, int decimals = NoDecimalLimit);
void RoundDigits(DecimalDigits& number, int precision, int decimals);

// "NAN", "INF", "-INF"; empty for a finite value.
String NonFiniteText(double value);

// The layouts of the float formats over digits already rounded.
String GeneralText(const DecimalDigits& number, int precision, int expDigits,
                   const TFormatSettings& settings);
String ExponentText(const DecimalDigits& number, int precision, int expDigits,
                    const TFormatSettings& settings);
String FixedText(const DecimalDigits& number, int decimals, char thousandSeparator,
                 const TFormatSettings& settings);
String CurrencyText(const DecimalDigits& number, int decimals, const TFormatSettings& settings);

// Inserts `separator` between groups of three, counted from the right, into a run of digits.
String GroupThousands(const String& digits, char separator);

}  // namespace orv::detail
