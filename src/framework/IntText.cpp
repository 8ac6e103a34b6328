// Integers and Booleans to text and back.

#include <cmath>
#include <limits>

#include "SysUtils.h"

namespace orv {

namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// An integer as written: its sign, its magnitude, and whether it was hexadecimal (hexadecimal
// texts may fill every bit of the target type, as the platform lets "$FFFFFFFF" be -1).
struct IntegerText {
  bool Negative = false;
  bool Hex = false;
  uint64_t Magnitude = 0;
};

bool LexInteger(const String& text, IntegerText& number) {
  size_t i = 0, end = text.size();
  while (i < end && IsBlank(text[i])) ++i;
  while (end > i && IsBlank(text[end - 1])) --end;
  if (i < end && (text[i] == '+' || text[i] == '-')) number.Negative = text[i++] == '-';
  if (i < end && text[i] == '$') {
    number.Hex = true;
    ++i;
  } else if (end - i > 1 && text[i] == '0' && (text[i + 1] == 'x' || text[i + 1] == 'X')) {
    number.Hex = true;
    i += 2;
  }
  if (i == end) return false;
  const uint64_t base = number.Hex ? 16 : 10;
  for (; i < end; ++i) {
    const int digit = HexValue(text[i]);
    if (digit < 0 || digit >= static_cast<int>(base)) return false;
    if (number.Magnitude > (std::numeric_limits<uint64_t>::max() - digit) / base) return false;
    number.Magnitude = number.Magnitude * base + digit;
  }
  return true;
}

// The value of an integer text in a signed type of `bits` bits, if it fits.
bool SignedValue(const IntegerText& number, int bits, int64_t& value) {
  const uint64_t allBits = bits == 64 ? ~uint64_t(0) : (uint64_t(1) << bits) - 1;
  const uint64_t maxPositive = allBits >> 1;
  const uint64_t magnitude = number.Magnitude;
  if (number.Hex && !number.Negative && magnitude > maxPositive && magnitude <= allBits) {
    // Hexadecimal fills every bit: the two's complement.
    value = static_cast<int64_t>(magnitude | ~allBits);
    return true;
  }
  if (magnitude > maxPositive + (number.Negative ? 1 : 0)) return false;
  value = static_cast<int64_t>(number.Negative ? 0 - magnitude : magnitude);
  return true;
}

[[noreturn]] void InvalidInteger(const String& text) {
  throw EConvertError("'" + text + "' is not a valid integer value");
}

}  // namespace

String IntToStr(int64_t value) { return std::to_string(value); }
String UIntToStr(uint64_t value) { return std::to_string(value); }

String IntToHex(int64_t value, int digits) {
  static constexpr char HexDigits[] = "0123456789ABCDEF";
  uint64_t bits = static_cast<uint64_t>(value);
  String text;
  do {
    text.insert(text.begin(), HexDigits[bits & 15]);
    bits >>= 4;
  } while (bits != 0);
  if (static_cast<int>(text.size()) < digits) text.insert(0, digits - text.size(), '0');
  return text;
}

bool TryStrToInt64(const String& text, int64_t& value) {
  IntegerText number;
  return LexInteger(text, number) && SignedValue(number, 64, value);
}

bool TryStrToInt(const String& text, int32_t& value) {
  IntegerText number;
  int64_t wide = 0;
  if (!LexInteger(text, number) || !SignedValue(number, 32, wide)) return false;
  value = static_cast<int32_t>(wide);
  return true;
}

bool TryStrToUInt64(const String& text, uint64_t& value) {
  IntegerText number;
  if (!LexInteger(text, number) || (number.Negative && number.Magnitude != 0)) return false;
  value = number.Magnitude;
  return true;
}

int32_t StrToInt(const String& text) {
  int32_t value = 0;
  if (!TryStrToInt(text, value)) InvalidInteger(text);
  return value;
}

int64_t StrToInt64(const String& text) {
  int64_t value = 0;
  if (!TryStrToInt64(text, value)) InvalidInteger(text);
  return value;
}

int32_t StrToIntDef(const String& text, int32_t def) {
  int32_t value = 0;
  return TryStrToInt(text, value) ? value : def;
}

int64_t StrToInt64Def(const String& text, int64_t def) {
  int64_t value = 0;
  return TryStrToInt64(text, value) ? value : def;
}

// ---------------------------------------------------------------------------------------------
// Booleans

String BoolToStr(bool value, bool useBoolStrs) {
  if (useBoolStrs) return value ? "True" : "False";
  return value ? "-1" : "0";
}

bool TryStrToBool(const String& text, bool& value) {
  if (AnsiSameText(text, "True")) {
    value = true;
    return true;
  }
  if (AnsiSameText(text, "False")) {
    value = false;
    return true;
  }
  double number = 0;
  if (!TryStrToFloat(text, number) || std::isnan(number)) return false;
  value = number != 0;
  return true;
}

bool StrToBool(const String& text) {
  bool value = false;
  if (!TryStrToBool(text, value))
    throw EConvertError("'" + text + "' is not a valid boolean value");
  return value;
}

}  // namespace orv
