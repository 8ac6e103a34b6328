// TBcd: packing and unpacking, exact text, integer, currency and double conversions, rounding
// to a precision and scale, comparison, sums.

#include "FMTBcd.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>

#include "Variants.h"

namespace orv {

const TBcd NullBcd{};

namespace {

using UInt128 = unsigned __int128;

// The working form: decimal digits, the last Scale of them after the point.
struct Decimal {
  bool Negative = false;
  std::string Digits;
  int Scale = 0;

  int IntDigits() const { return static_cast<int>(Digits.size()) - Scale; }
  bool IsZero() const { return Digits.find_first_not_of('0') == std::string::npos; }
};

[[noreturn]] void RaiseOverflow() { throw EBcdOverflowException("BCD overflow"); }

void TrimLeadingZeros(Decimal& d) {
  size_t n = 0;
  while (n < static_cast<size_t>(std::max(d.IntDigits(), 0)) && d.Digits[n] == '0') ++n;
  d.Digits.erase(0, n);
}

void TrimTrailingZeros(Decimal& d) {
  while (d.Scale > 0 && d.Digits.back() == '0') {
    d.Digits.pop_back();
    --d.Scale;
  }
}

Decimal Unpack(const TBcd& bcd) {
  Decimal d;
  d.Negative = (bcd.SignSpecialPlaces & 0x80) != 0;
  d.Scale = bcd.SignSpecialPlaces & 0x3F;
  const int precision = std::min<int>(bcd.Precision, MaxFMTBcdFractionSize);
  for (int i = 0; i < precision; ++i) {
    const uint8_t byte = bcd.Fraction[i / 2];
    const int nibble = (i % 2 == 0) ? byte >> 4 : byte & 0x0F;
    d.Digits.push_back(static_cast<char>('0' + std::min(nibble, 9)));
  }
  if (d.Scale > precision) d.Digits.insert(0, d.Scale - precision, '0');
  TrimLeadingZeros(d);
  return d;
}

// Writes the digits as they stand; the caller has made them fit.
TBcd PackDigits(const Decimal& d) {
  TBcd bcd;
  const std::string digits = d.Digits.empty() ? "0" : d.Digits;
  bcd.Precision = static_cast<uint8_t>(digits.size());
  bcd.SignSpecialPlaces = static_cast<uint8_t>(((d.Negative && !d.IsZero()) ? 0x80 : 0) | d.Scale);
  for (size_t i = 0; i < digits.size(); ++i) {
    const uint8_t nibble = static_cast<uint8_t>(digits[i] - '0');
    bcd.Fraction[i / 2] |= (i % 2 == 0) ? uint8_t(nibble << 4) : nibble;
  }
  return bcd;
}

void Increment(std::string& digits) {
  for (size_t i = digits.size(); i-- > 0;) {
    if (digits[i] != '9') {
      ++digits[i];
      return;
    }
    digits[i] = '0';
  }
  digits.insert(digits.begin(), '1');
}

// Half to even, as Currency and StrToCurr round.
void RoundToScale(Decimal& d, int scale) {
  if (d.Scale <= scale) {
    d.Digits.append(scale - d.Scale, '0');
    d.Scale = scale;
    return;
  }
  // Every decimal is a digit of Digits, so at least `d.Scale - scale` digits are there.
  const size_t keep = d.Digits.size() - static_cast<size_t>(d.Scale - scale);
  const char first = d.Digits[keep];
  const bool restNonZero = d.Digits.find_first_not_of('0', keep + 1) != std::string::npos;
  const bool lastOdd = keep > 0 && (d.Digits[keep - 1] - '0') % 2 == 1;
  d.Digits.erase(keep);
  d.Scale = scale;
  if (first > '5' || (first == '5' && (restNonZero || lastOdd))) Increment(d.Digits);
}

// Shortens the fraction until the value fits 64 digits and a scale of 63; false when the
// integer part alone is too long.
bool FitDigits(Decimal& d) {
  TrimLeadingZeros(d);
  if (static_cast<int>(d.Digits.size()) > MaxFMTBcdFractionSize || d.Scale > 63)
    TrimTrailingZeros(d);
  while (static_cast<int>(d.Digits.size()) > MaxFMTBcdFractionSize || d.Scale > 63) {
    if (d.IntDigits() > MaxFMTBcdFractionSize) return false;
    RoundToScale(d, std::min(MaxFMTBcdFractionSize - d.IntDigits(), 63));
    TrimLeadingZeros(d);
  }
  return d.IntDigits() <= MaxFMTBcdFractionSize;
}

enum class ParseResult { Ok, Syntax, Overflow };

ParseResult Parse(std::string_view text, char decimalSeparator, Decimal& d) {
  while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
  while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
  size_t i = 0;
  d = Decimal();
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) d.Negative = text[i++] == '-';
  bool anyDigit = false;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i, anyDigit = true)
    d.Digits.push_back(text[i]);
  if (i < text.size() && text[i] == decimalSeparator) {
    for (++i; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i, anyDigit = true) {
      d.Digits.push_back(text[i]);
      ++d.Scale;
    }
  }
  if (!anyDigit) return ParseResult::Syntax;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    int exponent = 0;
    const auto [end, ec] = std::from_chars(text.data() + i + 1 + (text.substr(i + 1, 1) == "+"),
                                           text.data() + text.size(), exponent);
    if (ec != std::errc() || end == text.data() + i + 1) return ParseResult::Syntax;
    i = end - text.data();
    if (std::abs(exponent) > 1000) return ParseResult::Overflow;
    d.Scale -= exponent;
    if (d.Scale < 0) {
      d.Digits.append(-d.Scale, '0');
      d.Scale = 0;
    } else if (d.Scale > static_cast<int>(d.Digits.size())) {
      d.Digits.insert(0, d.Scale - d.Digits.size(), '0');
    }
  }
  if (i != text.size()) return ParseResult::Syntax;
  return FitDigits(d) ? ParseResult::Ok : ParseResult::Overflow;
}

String ToText(Decimal d, char decimalSeparator) {
  TrimTrailingZeros(d);
  String text = (d.Negative && !d.IsZero()) ? "-" : "";
  const int intDigits = d.IntDigits();
  text += intDigits > 0 ? d.Digits.substr(0, intDigits) : "0";
  if (d.Scale > 0) {
    text += decimalSeparator;
    text += d.Digits.substr(intDigits);
  }
  return text;
}

Decimal FromUnsigned(UInt128 magnitude, bool negative, int scale) {
  Decimal d;
  d.Negative = negative;
  do {
    d.Digits.insert(d.Digits.begin(), static_cast<char>('0' + int(magnitude % 10)));
    magnitude /= 10;
  } while (magnitude);
  if (static_cast<int>(d.Digits.size()) < scale) d.Digits.insert(0, scale - d.Digits.size(), '0');
  d.Scale = scale;
  return d;
}

// The digits as an integer (all of them, the scale ignored); false past 38 digits.
bool DigitsValue(const Decimal& d, UInt128& value) {
  if (d.Digits.size() > 38) return false;
  value = 0;
  for (char c : d.Digits) value = value * 10 + (c - '0');
  return true;
}

int CompareMagnitude(Decimal a, Decimal b) {
  const int scale = std::max(a.Scale, b.Scale);
  RoundToScale(a, scale);  // only pads: neither has more decimals than `scale`
  RoundToScale(b, scale);
  TrimLeadingZeros(a);
  TrimLeadingZeros(b);
  if (a.Digits.size() != b.Digits.size()) return a.Digits.size() < b.Digits.size() ? -1 : 1;
  const int c = a.Digits.compare(b.Digits);
  return c < 0 ? -1 : c > 0 ? 1 : 0;
}

// a + b, or a - b; exact where it fits 64 digits, else rounded in the last place.
TBcd AddDecimals(Decimal a, Decimal b) {
  const int scale = std::max(a.Scale, b.Scale);
  RoundToScale(a, scale);
  RoundToScale(b, scale);
  if (a.IsZero()) a.Negative = false;
  if (b.IsZero()) b.Negative = false;
  const size_t width = std::max(a.Digits.size(), b.Digits.size()) + 1;
  a.Digits.insert(0, width - a.Digits.size(), '0');
  b.Digits.insert(0, width - b.Digits.size(), '0');
  Decimal result;
  result.Scale = scale;
  result.Digits.assign(width, '0');
  if (a.Negative == b.Negative) {
    result.Negative = a.Negative;
    int carry = 0;
    for (size_t i = width; i-- > 0;) {
      const int sum = (a.Digits[i] - '0') + (b.Digits[i] - '0') + carry;
      result.Digits[i] = static_cast<char>('0' + sum % 10);
      carry = sum / 10;
    }
  } else {
    if (a.Digits < b.Digits) std::swap(a, b);  // same width: text order is numeric order
    result.Negative = a.Negative;
    int borrow = 0;
    for (size_t i = width; i-- > 0;) {
      int diff = (a.Digits[i] - '0') - (b.Digits[i] - '0') - borrow;
      borrow = diff < 0;
      result.Digits[i] = static_cast<char>('0' + (diff + 10) % 10);
    }
  }
  if (!FitDigits(result)) RaiseOverflow();
  return PackDigits(result);
}

bool Normalize(Decimal d, TBcd& out, int precision, int places) {
  if (precision < 1 || precision > MaxFMTBcdFractionSize || places < 0 || places > precision ||
      places > 63)
    return false;
  RoundToScale(d, places);
  TrimLeadingZeros(d);
  if (d.IntDigits() > precision - places) return false;
  d.Digits.insert(0, precision - d.Digits.size(), '0');
  out = PackDigits(d);
  return true;
}

}  // namespace

// ---------------------------------------------------------------------------------------------

bool operator==(const TBcd& a, const TBcd& b) { return BcdCompare(a, b) == 0; }

std::strong_ordering operator<=>(const TBcd& a, const TBcd& b) {
  const int c = BcdCompare(a, b);
  return c < 0 ? std::strong_ordering::less
               : c > 0 ? std::strong_ordering::greater : std::strong_ordering::equal;
}

bool IsBcdNegative(const TBcd& bcd) {
  const Decimal d = Unpack(bcd);
  return d.Negative && !d.IsZero();
}

uint16_t BcdPrecision(const TBcd& bcd) {
  return static_cast<uint16_t>(std::max<size_t>(Unpack(bcd).Digits.size(), 1));
}

uint16_t BcdScale(const TBcd& bcd) { return bcd.SignSpecialPlaces & 0x3F; }

int BcdCompare(const TBcd& a, const TBcd& b) {
  const Decimal x = Unpack(a), y = Unpack(b);
  const bool xNeg = x.Negative && !x.IsZero(), yNeg = y.Negative && !y.IsZero();
  if (xNeg != yNeg) return xNeg ? -1 : 1;
  const int c = CompareMagnitude(x, y);
  return xNeg ? -c : c;
}

bool TryStrToBcd(const String& text, TBcd& bcd, const TFormatSettings& settings) {
  Decimal d;
  if (Parse(text, settings.DecimalSeparator, d) != ParseResult::Ok) return false;
  bcd = PackDigits(d);
  return true;
}

bool TryStrToBcd(const String& text, TBcd& bcd) { return TryStrToBcd(text, bcd, FormatSettings); }

TBcd StrToBcd(const String& text, const TFormatSettings& settings) {
  Decimal d;
  switch (Parse(text, settings.DecimalSeparator, d)) {
    case ParseResult::Ok: return PackDigits(d);
    case ParseResult::Overflow: RaiseOverflow();
    default: throw EConvertError("'" + text + "' is not a valid BCD value");
  }
}

TBcd StrToBcd(const String& text) { return StrToBcd(text, FormatSettings); }

String BcdToStr(const TBcd& bcd, const TFormatSettings& settings) {
  return ToText(Unpack(bcd), settings.DecimalSeparator);
}

String BcdToStr(const TBcd& bcd) { return BcdToStr(bcd, FormatSettings); }

TBcd IntegerToBcd(int64_t value) {
  const UInt128 magnitude = value < 0 ? UInt128(-(value + 1)) + 1 : UInt128(value);
  return PackDigits(FromUnsigned(magnitude, value < 0, 0));
}

int64_t BcdToInt64(const TBcd& bcd, bool truncate) {
  Decimal d = Unpack(bcd);
  if (truncate) {
    d.Digits.resize(std::max(d.IntDigits(), 0));
    d.Scale = 0;
  } else {
    RoundToScale(d, 0);
  }
  UInt128 magnitude;
  const UInt128 limit = UInt128(std::numeric_limits<int64_t>::max()) + (d.Negative ? 1 : 0);
  if (!DigitsValue(d, magnitude) || magnitude > limit) RaiseOverflow();
  return d.Negative ? static_cast<int64_t>(-static_cast<__int128>(magnitude))
                    : static_cast<int64_t>(magnitude);
}

TBcd DoubleToBcd(double value) {
  if (!std::isfinite(value)) RaiseOverflow();
  char buffer[64];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                    std::chars_format::general, 15);
  Decimal d;
  if (Parse(std::string_view(buffer, result.ptr - buffer), '.', d) != ParseResult::Ok)
    RaiseOverflow();
  return PackDigits(d);
}

double BcdToDouble(const TBcd& bcd) {
  const String text = ToText(Unpack(bcd), '.');
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

bool CurrToBCD(Currency value, TBcd& bcd, int precision, int decimals) {
  const int64_t raw = value.Raw();
  const UInt128 magnitude = raw < 0 ? UInt128(-(raw + 1)) + 1 : UInt128(raw);
  return Normalize(FromUnsigned(magnitude, raw < 0, 4), bcd, precision, decimals);
}

bool BCDToCurr(const TBcd& bcd, Currency& value) {
  Decimal d = Unpack(bcd);
  RoundToScale(d, 4);
  UInt128 units;
  const UInt128 limit = UInt128(std::numeric_limits<int64_t>::max()) + (d.Negative ? 1 : 0);
  if (!DigitsValue(d, units) || units > limit) return false;
  value = Currency::FromRaw(d.Negative ? static_cast<int64_t>(-static_cast<__int128>(units))
                                       : static_cast<int64_t>(units));
  return true;
}

bool NormalizeBcd(const TBcd& in, TBcd& out, int precision, int places) {
  return Normalize(Unpack(in), out, precision, places);
}

void BcdAdd(const TBcd& a, const TBcd& b, TBcd& result) {
  result = AddDecimals(Unpack(a), Unpack(b));
}

void BcdSubtract(const TBcd& a, const TBcd& b, TBcd& result) {
  Decimal negated = Unpack(b);
  negated.Negative = !negated.Negative;
  result = AddDecimals(Unpack(a), negated);
}

Variant VarFMTBcdCreate(const TBcd& bcd) { return Variant(bcd); }

Variant VarFMTBcdCreate(const String& text, uint16_t precision, uint16_t scale) {
  TBcd bcd;
  if (!NormalizeBcd(StrToBcd(text), bcd, precision, scale)) RaiseOverflow();
  return Variant(bcd);
}

TBcd VarToBcd(const Variant& value) { return value.AsBcd(); }

std::ostream& operator<<(std::ostream& os, const TBcd& bcd) {
  return os << ToText(Unpack(bcd), '.');
}

}  // namespace orv
