// FormatFloat and FormatCurr: numbers through picture formats such as "#,##0.00;(#,##0.00);-".

#include <algorithm>
#include <vector>

#include "NumberDigits.h"
#include "SysUtils.h"

namespace orv {

using detail::DecimalDigits;

namespace {

constexpr int DoublePrecision = 15;
constexpr int CurrencyPrecision = 19;

// The sections of a picture, split at ";" outside quoted text: positive, negative, zero.
std::vector<String> SplitSections(const String& format) {
  std::vector<String> sections(1);
  char quote = 0;
  for (char c : format) {
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"') {
      quote = c;
    } else if (c == ';' && sections.size() < 3) {
      sections.emplace_back();
      continue;
    }
    sections.back() += c;
  }
  return sections;
}

bool IsExponentAt(const String& section, size_t i) {
  return (section[i] == 'E' || section[i] == 'e') && i + 1 < section.size() &&
         (section[i + 1] == '+' || section[i + 1] == '-');
}

// What a section asks for: placeholders before and after the point, grouping, exponent.
struct Picture {
  int IntPlaceholders = 0;
  int IntZeros = 0;  // placeholders from the first "0" up to the point
  int DecPlaceholders = 0;
  int DecZeros = 0;  // placeholders after the point up to the last "0"
  bool Thousands = false;
  bool Scientific = false;
  int ExpDigits = 0;
};

Picture Analyze(const String& section) {
  Picture picture;
  int firstZero = -1;
  bool afterPoint = false;
  for (size_t i = 0; i < section.size(); ++i) {
    const char c = section[i];
    if (c == '\'' || c == '"') {
      const size_t close = section.find(c, i + 1);
      i = close == String::npos ? section.size() : close;
    } else if (c == '0' || c == '#') {
      if (afterPoint) {
        ++picture.DecPlaceholders;
        if (c == '0') picture.DecZeros = picture.DecPlaceholders;
      } else {
        if (c == '0' && firstZero < 0) firstZero = picture.IntPlaceholders;
        ++picture.IntPlaceholders;
      }
    } else if (c == '.') {
      afterPoint = true;
    } else if (c == ',') {
      picture.Thousands = true;
    } else if (IsExponentAt(section, i)) {
      picture.Scientific = true;
      for (i += 2; i < section.size() && section[i] == '0'; ++i) ++picture.ExpDigits;
      picture.ExpDigits = std::min(picture.ExpDigits, 4);
      break;
    }
  }
  picture.IntZeros = firstZero < 0 ? 0 : picture.IntPlaceholders - firstZero;
  return picture;
}

// The value's digits as the picture rounds them.
DecimalDigits Round(const DecimalDigits& exact, const Picture& picture, int precision) {
  DecimalDigits number = exact;
  if (picture.Scientific)
    detail::RoundDigits(number,
                        std::clamp(picture.IntPlaceholders + picture.DecPlaceholders, 1, precision),
                        detail::NoDecimalLimit);
  else
    detail::RoundDigits(number, precision, picture.DecPlaceholders);
  return number;
}

// Lays the digits out over one section.
class PictureWriter {
 public:
  PictureWriter(const String& section, const Picture& picture, const DecimalDigits& number,
                const TFormatSettings& settings)
      : FSection(section), FPicture(picture), FSettings(settings) {
    Split(number);
  }

  String Write() {
    String out;
    bool afterPoint = false;
    int intIndex = 0, decIndex = 0;
    for (size_t i = 0; i < FSection.size(); ++i) {
      const char c = FSection[i];
      if (c == '\'' || c == '"') {
        const size_t close = FSection.find(c, i + 1);
        const size_t end = close == String::npos ? FSection.size() : close;
        out.append(FSection, i + 1, end - i - 1);
        i = end;
      } else if (c == '0' || c == '#') {
        if (afterPoint) {
          if (decIndex < static_cast<int>(FFraction.size())) out += FFraction[decIndex];
          ++decIndex;
        } else {
          out += IntegerUnit(intIndex++);
        }
      } else if (c == '.') {
        if (!afterPoint && !FFraction.empty()) out += FSettings.DecimalSeparator;
        afterPoint = true;
      } else if (c == ',') {
        continue;  // asks for grouping; the separators come with the digits
      } else if (IsExponentAt(FSection, i)) {
        out += c;
        if (FExponent < 0)
          out += '-';
        else if (FSection[i + 1] == '+')
          out += '+';
        String digits = std::to_string(FExponent < 0 ? -FExponent : FExponent);
        if (static_cast<int>(digits.size()) < FPicture.ExpDigits)
          digits.insert(0, FPicture.ExpDigits - digits.size(), '0');
        out += digits;
        for (i += 2; i < FSection.size() && FSection[i] == '0'; ++i) {
        }
        --i;
      } else {
        out += c;
      }
    }
    return out;
  }

 private:
  // Integer digits each with the separator before it; the first placeholder takes the digits
  // beyond those the picture has places for.
  void Split(const DecimalDigits& number) {
    String whole, fraction;
    if (FPicture.Scientific) {
      const int intDigits = FPicture.IntPlaceholders;
      String digits = number.Digits;
      digits.resize(std::max<size_t>(digits.size(), intDigits), '0');
      whole = digits.substr(0, intDigits);
      fraction = digits.substr(intDigits);
      FExponent = number.IsZero() ? 0 : number.Exponent - intDigits;
      const size_t firstNonZero = whole.find_first_not_of('0');
      whole.erase(0, firstNonZero == String::npos ? whole.size() : firstNonZero);
    } else {
      const int len = static_cast<int>(number.Digits.size());
      if (number.Exponent > 0) {
        whole = number.Digits.substr(0, std::min(len, number.Exponent));
        whole.resize(number.Exponent, '0');
        if (len > number.Exponent) fraction = number.Digits.substr(number.Exponent);
      } else if (!number.IsZero()) {
        fraction = String(-number.Exponent, '0') + number.Digits;
      }
    }
    if (static_cast<int>(whole.size()) < FPicture.IntZeros)
      whole.insert(0, FPicture.IntZeros - whole.size(), '0');
    const size_t lastNonZero = fraction.find_last_not_of('0');
    fraction.resize(lastNonZero == String::npos ? 0 : lastNonZero + 1);
    if (static_cast<int>(fraction.size()) < FPicture.DecZeros)
      fraction.resize(FPicture.DecZeros, '0');
    FFraction = fraction;
    for (size_t i = 0; i < whole.size(); ++i) {
      String unit;
      if (FPicture.Thousands && i > 0 && (whole.size() - i) % 3 == 0 && FSettings.ThousandSeparator)
        unit += FSettings.ThousandSeparator;
      FUnits.push_back(unit + whole[i]);
    }
  }

  String IntegerUnit(int index) const {
    const int places = FPicture.IntPlaceholders;
    const int units = static_cast<int>(FUnits.size());
    const int firstUnit = units - places + index;  // the unit this placeholder shows
    String text;
    if (index == 0)
      for (int u = 0; u < firstUnit; ++u) text += FUnits[u];
    if (firstUnit >= 0) text += FUnits[firstUnit];
    return text;
  }

  const String& FSection;
  const Picture& FPicture;
  const TFormatSettings& FSettings;
  std::vector<String> FUnits;
  String FFraction;
  int FExponent = 0;
};

// `exact` holds more digits than `precision`; the picture rounds them once.
String FormatDigits(const String& format, const DecimalDigits& exact, int precision,
                    const TFormatSettings& settings) {
  const std::vector<String> sections = SplitSections(format);
  auto present = [&](size_t index) { return index < sections.size() && !sections[index].empty(); };
  size_t index = exact.Negative && !exact.IsZero() && present(1) ? 1 : 0;
  Picture picture = Analyze(sections[index]);
  DecimalDigits number = Round(exact, picture, precision);
  if (number.IsZero() && present(2)) {
    index = 2;
    picture = Analyze(sections[index]);
    number = Round(exact, picture, precision);
  }
  const bool minus = number.Negative && !number.IsZero() && index == 0;
  String text = minus ? "-" : "";
  return text += PictureWriter(sections[index], picture, number, settings).Write();
}

}  // namespace

String FormatFloat(const String& format, double value, const TFormatSettings& settings) {
  if (String special = detail::NonFiniteText(value); !special.empty()) return special;
  if (format.empty()) return FloatToStr(value, settings);
  return FormatDigits(format, detail::DigitsOf(value, 18), DoublePrecision, settings);
}

String FormatFloat(const String& format, double value) {
  return FormatFloat(format, value, FormatSettings);
}

String FormatCurr(const String& format, Currency value, const TFormatSettings& settings) {
  if (format.empty()) return CurrToStr(value, settings);
  return FormatDigits(format, detail::DigitsOf(value), CurrencyPrecision, settings);
}

String FormatCurr(const String& format, Currency value) {
  return FormatCurr(format, value, FormatSettings);
}

}  // namespace orv
