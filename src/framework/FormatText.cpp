// Format: printf-like formatting with the platform's specifiers and argument rules.

#include <algorithm>
#include <cstdio>

#include "NumberDigits.h"
#include "SysUtils.h"

namespace orv {

namespace {

using Kind = FormatArg::Kind;

// One "%[index:][-][width][.precision]type" after its "%".
struct Spec {
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
      const Spec spec = ParseSpec();
      result += Pad(Convert(spec), spec);
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

  Spec ParseSpec() {
    Spec spec;
    int number = ParseNumber();
    if (Peek() == ':') {  // an index: the arguments go on from there
      ++FPos;
      if (number < 0) number = 0;
      FArgIndex = static_cast<size_t>(number);
      number = -1;
    }
    if (number < 0) {
      if (Peek() == '-') {
        spec.LeftAlign = true;
        ++FPos;
      }
      number = ParseNumber();
    }
    spec.Width = number;
    if (Peek() == '.') {
      ++FPos;
      spec.Precision = std::max(ParseNumber(), 0);
    }
    spec.Type = Peek();
    if (spec.Type == 0) Fail();
    ++FPos;
    if (spec.Type >= 'A' && spec.Type <= 'Z') spec.Type = char(spec.Type - 'A' + 'a');
    return spec;
  }

  String Pad(String text, const Spec& spec) const {
    const size_t length = CodePoints(text);
    if (spec.Width <= 0 || length >= static_cast<size_t>(spec.Width)) return text;
    const size_t fill = spec.Width - length;
    if (spec.LeftAlign) return text.append(fill, ' ');
    String padded(fill, ' ');
    return padded += text;
  }

  String Convert(const Spec& spec) {
    const FormatArg& arg = NextArg();
    switch (spec.Type) {
      case 'd': return Decimal(arg, spec);
      case 'u': return Unsigned(arg, spec, false);
      case 'x': return Unsigned(arg, spec, true);
      case 'e':
      case 'f':
      case 'g':
      case 'n':
      case 'm': return Float(arg, spec);
      case 'p': return Pointer(arg);
      case 's': return Text(arg, spec);
      default: Fail();
    }
  }

  static String ZeroPad(String digits, int precision) {
    if (precision > static_cast<int>(digits.size()))
      digits.insert(0, precision - digits.size(), '0');
    return digits;
  }

  String Decimal(const FormatArg& arg, const Spec& spec) const {
    if (arg.GetKind() == Kind::UInt) return ZeroPad(std::to_string(arg.AsUInt()), spec.Precision);
    if (arg.GetKind() != Kind::Int) Fail();
    const int64_t value = arg.AsInt();
    const uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : value;
    String text = value < 0 ? "-" : "";
    return text += ZeroPad(std::to_string(magnitude), spec.Precision);
  }

  // A negative integer shows in the width it was passed with, as the platform's would.
  String Unsigned(const FormatArg& arg, const Spec& spec, bool hex) const {
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
                   spec.Precision);
  }

  String Float(const FormatArg& arg, const Spec& spec) const {
    if (arg.GetKind() != Kind::Float && arg.GetKind() != Kind::Curr) Fail();
    const bool curr = arg.GetKind() == Kind::Curr;
    const int p = spec.Precision;
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
    switch (spec.Type) {
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

  String Text(const FormatArg& arg, const Spec& spec) const {
    String text;
    if (arg.GetKind() == Kind::Str)
      text = arg.AsStr();
    else if (arg.GetKind() == Kind::WStr)
      text = Utf16ToUtf8(arg.AsWStr());
    else
      Fail();
    if (spec.Precision >= 0) return CodePointPrefix(text, spec.Precision);
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
