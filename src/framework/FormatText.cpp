// Format: printf-like formatting with the platform's specifiers and argument rules.

#include <algorithm>
#include <cstdio>

#include "NumberDigits.h"
#include "SysUtils.h"

namespace orv {

namespace {

using Kind = FormatArg::Kind;

// One "%[index:][-][width][.precision]type" after its "%".
struct TDirective {
  bool LeftAlign = false;
  int Width = -1;
  int Precision = -1;
  char Type = 0;
};

size_t CodePoints(const String& text) {
  size_t count = 0;
  for (unsigned char c : text) count += (c & 0xC0) != 0x80;
  return count;
}

// The first `count` code points of a text.
String CodePointPrefix(const String& text, size_t count) {
  size_t i = 0;
  for (; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) continue;
    if (count-- == 0) break;
  }
  return text.substr(0, i);
}

class Formatter {
 public:
  Formatter(const String& format, std::initializer_list<FormatArg> args,
            const TFormatSettings& settings)
      : FFormat(format), FArgs(args.begin()), FArgCount(args.size()), FSettings(settings) {}

  String Run() {
    String result;
    result.reserve(FFormat.size() + 16);
    for (size_t i = 0; i < FFormat.size();) {
      const size_t percent = FFormat.find('%', i);
      result.append(FFormat, i, percent == String::npos ? String::npos : percent - i);
      if (percent == String::npos) break;
      FPos = percent + 1;
      if (FPos < FFormat.size() && FFormat[FPos] == '%') {
        result += '%';
        i = FPos + 1;
        continue;
      }
      const TDirective directive = ParseDirective();
      result += Pad(Convert(directive), directive);
      i = FPos;
    }
    return result;
  }

 private:
  [[noreturn]] void Fail() const {
    throw EConvertError("Format '" + FFormat + "' invalid or incompatible with argument");
  }

  const FormatArg& NextArg() {
    if (FArgIndex >= FArgCount) Fail();
    return FArgs[FArgIndex++];
  }

  char Peek() const { return FPos < FFormat.size() ? FFormat[FPos] : 0; }

  // Digits, or "*" for a number taken from the arguments; -1 when neither is there.
  int ParseNumber() {
    if (Peek() == '*') {
      ++FPos;
      const FormatArg& arg = NextArg();
      if (arg.GetKind() == Kind::Int)
        return static_cast<int>(std::clamp<int64_t>(arg.AsInt(), -1, 1 << 20));
      if (arg.GetKind() == Kind::UInt)
        return static_cast<int>(std::min<uint64_t>(arg.AsUInt(), 1 << 20));
      Fail();
    }
    if (Peek() < '0' || Peek() > '9') return -1;
    int number = 0;
    while (Peek() >= '0' && Peek() <= '9')
      number = std::min(number * 10 + (FFormat[FPos++] - '0'), 1 << 20);
    return number;
  }

  TDirective ParseDirective() {
    TDirective directive;
    int number = ParseNumber();
    if (Peek() == ':') {  // an index: the arguments go on from there
      ++FPos;
      if (number < 0) number = 0;
      FArgIndex = static_cast<size_t>(number);
      number = -1;
    }
    if (number < 0) {
      if (Peek() == '-') {
        directive.LeftAlign = true;
        ++FPos;
      }
      number = ParseNumber();
    }
    directive.Width = number;
    if (Peek() == '.') {
      ++FPos;
      directive.Precision = std::max(ParseNumber(), 0);
    }
    directive.Type = Peek();
    if (directive.Type == 0) Fail();
    ++FPos;
    if (directive.Type >= 'A' && directive.Type <= 'Z') directive.Type = char(directive.Type - 'A' + 'a');
    return directive;
  }

  String Pad(String text, const TDirective& directive) const {
    const size_t length = CodePoints(text);
    if (directive.Width <= 0 || length >= static_cast<size_t>(directive.Width)) return text;
    const size_t fill = directive.Width - length;
    if (directive.LeftAlign) return text.append(fill, ' ');
    String padded(fill, ' ');
    return padded += text;
  }

  String Convert(const TDirective& directive) {
    const FormatArg& arg = NextArg();
    switch (directive.Type) {
      case 'd': return Decimal(arg, directive);
      case 'u': return Unsigned(arg, directive, false);
      case 'x': return Unsigned(arg, directive, true);
      case 'e':
      case 'f':
      case 'g':
      case 'n':
      case 'm': return Float(arg, directive);
      case 'p': return Pointer(arg);
      case 's': return Text(arg, directive);
      default: Fail();
    }
  }

  static String ZeroPad(String digits, int precision) {
    if (precision > static_cast<int>(digits.size()))
      digits.insert(0, precision - digits.size(), '0');
    return digits;
  }

  String Decimal(const FormatArg& arg, const TDirective& directive) const {
    if (arg.GetKind() == Kind::UInt) return ZeroPad(std::to_string(arg.AsUInt()), directive.Precision);
    if (arg.GetKind() != Kind::Int) Fail();
    const int64_t value = arg.AsInt();
    const uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : value;
    String text = value < 0 ? "-" : "";
    return text += ZeroPad(std::to_string(magnitude), directive.Precision);
  }

  // A negative integer shows in the width it was passed with, as the platform's would.
  String Unsigned(const FormatArg& arg, const TDirective& directive, bool hex) const {
    uint64_t value;
    if (arg.GetKind() == Kind::UInt) {
      value = arg.AsUInt();
    } else if (arg.GetKind() == Kind::Int) {
      value = static_cast<uint64_t>(arg.AsInt());
      if (arg.GetBits() < 64) value &= (uint64_t(1) << arg.GetBits()) - 1;
    } else {
      Fail();
    }
    return ZeroPad(hex ? IntToHex(static_cast<int64_t>(value), 0) : std::to_string(value),
                   directive.Precision);
  }

  String Float(const FormatArg& arg, const TDirective& directive) const {
    if (arg.GetKind() != Kind::Float && arg.GetKind() != Kind::Curr) Fail();
    const bool curr = arg.GetKind() == Kind::Curr;
    const int p = directive.Precision;
    auto asFloat = [&](TFloatFormat format, int precision, int digits) {
      if (curr) {
        if (format == ffGeneral || format == ffExponent) {
          detail::DecimalDigits number = detail::DigitsOf(arg.AsCurr());
          detail::RoundDigits(number, precision, detail::NoDecimalLimit);
          return format == ffGeneral ? detail::GeneralText(number, precision, digits, FSettings)
                                     : detail::ExponentText(number, precision, digits, FSettings);
        }
        return CurrToStrF(arg.AsCurr(), format, digits, FSettings);
      }
      return FloatToStrF(arg.AsFloat(), format, precision, digits, FSettings);
    };
    switch (directive.Type) {
      case 'e': return asFloat(ffExponent, p < 0 ? 15 : std::clamp(p, 1, 18), 3);
      case 'g': return asFloat(ffGeneral, p < 0 ? 15 : std::clamp(p, 1, 18), 3);
      case 'f': return asFloat(ffFixed, 18, p < 0 ? 2 : p);
      case 'n': return asFloat(ffNumber, 18, p < 0 ? 2 : p);
      default: return asFloat(ffCurrency, 18, p < 0 ? FSettings.CurrencyDecimals : p);
    }
  }

  String Pointer(const FormatArg& arg) const {
    if (arg.GetKind() != Kind::Ptr) Fail();
    return IntToHex(static_cast<int64_t>(reinterpret_cast<uintptr_t>(arg.AsPtr())),
                    static_cast<int>(sizeof(void*) * 2));
  }

  String Text(const FormatArg& arg, const TDirective& directive) const {
    String text;
    if (arg.GetKind() == Kind::Str)
      text = arg.AsStr();
    else if (arg.GetKind() == Kind::WStr)
      text = Utf16ToUtf8(arg.AsWStr());
    else
      Fail();
    if (directive.Precision >= 0) return CodePointPrefix(text, directive.Precision);
    return text;
  }

  const String& FFormat;
  const FormatArg* FArgs;
  size_t FArgCount;
  const TFormatSettings& FSettings;
  size_t FPos = 0;
  size_t FArgIndex = 0;
};

}  // namespace

String Format(const String& format, std::initializer_list<FormatArg> args,
              const TFormatSettings& settings) {
  return Formatter(format, args, settings).Run();
}

String Format(const String& format, std::initializer_list<FormatArg> args) {
  return Format(format, args, FormatSettings);
}

}  // namespace orv
