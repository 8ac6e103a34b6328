#include <charconv>
#include <limits>

#include "TypInfo.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Names

namespace typinfo_detail {

namespace {
constexpr char LowerAscii(char c) noexcept { return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c; }
}  // namespace

bool SameName(std::string_view a, std::string_view b) noexcept {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  return true;
}

size_t NameHash::operator()(std::string_view name) const noexcept {
  uint64_t hash = 14695981039346656037ull;  // FNV-1a over the lower-cased bytes
  for (char c : name) {
    hash ^= static_cast<unsigned char>(LowerAscii(c));
    hash *= 1099511628211ull;
  }
  return static_cast<size_t>(hash);
}

}  // namespace typinfo_detail

namespace {

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
  while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
  return text;
}

std::vector<String> SplitNames(std::string_view names) {
  std::vector<String> list;
  while (!names.empty()) {
    const size_t comma = names.find(',');
    list.emplace_back(TrimBlanks(names.substr(0, comma)));
    if (comma == std::string_view::npos) break;
    names.remove_prefix(comma + 1);
  }
  return list;
}

TOrdType OrdTypeForCount(size_t count) {
  if (count <= 0x100) return otUByte;
  if (count <= 0x10000) return otUWord;
  return otULong;
}

TTypeInfo Ordinal(TTypeKind kind, const char* name, TOrdType ordType, int64_t min, int64_t max) {
  TTypeInfo info{kind, name, {}};
  info.TypeData.OrdType = ordType;
  info.TypeData.MinValue = min;
  info.TypeData.MaxValue = max;
  return info;
}

template <class T>
TTypeInfo Integer(TTypeKind kind, const char* name, TOrdType ordType) {
  return Ordinal(kind, name, ordType, static_cast<int64_t>(std::numeric_limits<T>::min()),
                 static_cast<int64_t>(std::numeric_limits<T>::max()));
}

TTypeInfo Float(const char* name, TFloatType floatType) {
  TTypeInfo info{tkFloat, name, {}};
  info.TypeData.FloatType = floatType;
  return info;
}

}  // namespace

TTypeInfo MakeEnumTypeInfo(const char* name, const char* names, PTypeInfo self) {
  TTypeInfo info{tkEnumeration, name, {}};
  info.TypeData.NameList = SplitNames(names);
  info.TypeData.OrdType = OrdTypeForCount(info.TypeData.NameList.size());
  info.TypeData.MaxValue = static_cast<int64_t>(info.TypeData.NameList.size()) - 1;
  info.TypeData.BaseType = self;
  return info;
}

TTypeInfo MakeSetTypeInfo(PTypeInfo elementType) {
  if (elementType->TypeData.MinValue < 0 || elementType->TypeData.MaxValue >= 64)
    throw ERangeError("A set holds at most 64 elements: " + elementType->Name);
  TTypeInfo info{tkSet, "set of " + elementType->Name, {}};
  info.TypeData.OrdType = otULong;
  info.TypeData.CompType = elementType;
  return info;
}

TTypeInfo MakeClassTypeInfo(TClass cls) {
  TTypeInfo info{tkClass, cls->Name, {}};
  info.TypeData.ClassType = cls;
  return info;
}

TTypeInfo MakeMethodTypeInfo() { return TTypeInfo{tkMethod, "TMethod", {}}; }

// ---------------------------------------------------------------------------------------------
// Built-in records

namespace typinfo_detail {

#define ORV_DEFINE_TYPEINFO(T, ...)            \
  PTypeInfo TypeInfoOf<T>::Get() {             \
    static const TTypeInfo info = __VA_ARGS__; \
    return &info;                              \
  }

ORV_DEFINE_TYPEINFO(int8_t, Integer<int8_t>(tkInteger, "ShortInt", otSByte))
ORV_DEFINE_TYPEINFO(uint8_t, Integer<uint8_t>(tkInteger, "Byte", otUByte))
ORV_DEFINE_TYPEINFO(int16_t, Integer<int16_t>(tkInteger, "SmallInt", otSWord))
ORV_DEFINE_TYPEINFO(uint16_t, Integer<uint16_t>(tkInteger, "Word", otUWord))
ORV_DEFINE_TYPEINFO(int32_t, Integer<int32_t>(tkInteger, "Integer", otSLong))
ORV_DEFINE_TYPEINFO(uint32_t, Integer<uint32_t>(tkInteger, "Cardinal", otULong))
ORV_DEFINE_TYPEINFO(int64_t, Integer<int64_t>(tkInt64, "Int64", otSLong))
// The platform reads UInt64's upper bound as a signed -1.
ORV_DEFINE_TYPEINFO(uint64_t, Ordinal(tkInt64, "UInt64", otULong, 0, -1))
ORV_DEFINE_TYPEINFO(char, Ordinal(tkChar, "Char", otUByte, 0, 0xFF))
ORV_DEFINE_TYPEINFO(char16_t, Ordinal(tkWChar, "WideChar", otUWord, 0, 0xFFFF))
ORV_DEFINE_TYPEINFO(bool, MakeEnumTypeInfo("Boolean", "False, True", &info))
ORV_DEFINE_TYPEINFO(float, Float("Single", TFloatType::ftSingle))
ORV_DEFINE_TYPEINFO(double, Float("Double", TFloatType::ftDouble))
ORV_DEFINE_TYPEINFO(long double, Float("Extended", TFloatType::ftExtended))
ORV_DEFINE_TYPEINFO(Currency, Float("Currency", TFloatType::ftCurr))
ORV_DEFINE_TYPEINFO(TDate, Float("TDate", TFloatType::ftDouble))
ORV_DEFINE_TYPEINFO(TTime, Float("TTime", TFloatType::ftDouble))
ORV_DEFINE_TYPEINFO(TDateTime, Float("TDateTime", TFloatType::ftDouble))
ORV_DEFINE_TYPEINFO(String, (TTypeInfo{tkUString, "string", {}}))
ORV_DEFINE_TYPEINFO(WideString, (TTypeInfo{tkWString, "WideString", {}}))
ORV_DEFINE_TYPEINFO(Memo, (TTypeInfo{tkUString, "Memo", {}}))
ORV_DEFINE_TYPEINFO(WideMemo, (TTypeInfo{tkWString, "WideMemo", {}}))
ORV_DEFINE_TYPEINFO(Variant, (TTypeInfo{tkVariant, "Variant", {}}))
ORV_DEFINE_TYPEINFO(TColor, Integer<int32_t>(tkInteger, "TColor", otSLong))
ORV_DEFINE_TYPEINFO(TFontCharset, Integer<uint8_t>(tkInteger, "TFontCharset", otUByte))
ORV_DEFINE_TYPEINFO(IInterfacePtr, (TTypeInfo{tkInterface, "IInterface", {}}))
ORV_DEFINE_TYPEINFO(IDispatchPtr, (TTypeInfo{tkInterface, "IDispatch", {}}))

#undef ORV_DEFINE_TYPEINFO

}  // namespace typinfo_detail

// ---------------------------------------------------------------------------------------------
// Enumeration and set names

String GetEnumName(PTypeInfo typeInfo, int64_t value) {
  if (typeInfo->Kind == tkInteger || typeInfo->Kind == tkInt64) return std::to_string(value);
  const TTypeData& data = typeInfo->TypeData;
  if (typeInfo->Kind != tkEnumeration || value < data.MinValue || value > data.MaxValue) return {};
  return data.NameList[static_cast<size_t>(value - data.MinValue)];
}

int64_t GetEnumValue(PTypeInfo typeInfo, std::string_view name) {
  if (typeInfo->Kind == tkInteger || typeInfo->Kind == tkInt64) {
    const std::string_view digits = TrimBlanks(name);
    int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.empty())
      throw EConvertError("'" + String(name) + "' is not a valid integer value");
    return value;
  }
  const TTypeData& data = typeInfo->TypeData;
  for (size_t i = 0; i < data.NameList.size(); ++i)
    if (typinfo_detail::SameName(data.NameList[i], name)) return data.MinValue + static_cast<int64_t>(i);
  return -1;
}

String SetToString(PTypeInfo setType, int64_t value, bool brackets) {
  PTypeInfo element = setType->TypeData.CompType;
  const auto bits = static_cast<uint64_t>(value);
  String text;
  for (int64_t v = element->TypeData.MinValue; v <= element->TypeData.MaxValue; ++v) {
    if (!(bits & (uint64_t{1} << v))) continue;
    if (!text.empty()) text += ',';
    text += GetEnumName(element, v);
  }
  return brackets ? "[" + text + "]" : text;
}

int64_t StringToSet(PTypeInfo setType, std::string_view text) {
  PTypeInfo element = setType->TypeData.CompType;
  text = TrimBlanks(text);
  if (!text.empty() && text.front() == '[') text.remove_prefix(1);
  if (!text.empty() && text.back() == ']') text.remove_suffix(1);
  uint64_t bits = 0;
  for (const String& name : SplitNames(text)) {
    if (name.empty()) continue;
    const int64_t v = GetEnumValue(element, name);
    if (v < 0) throw EPropertyConvertError("Invalid property element: " + name);
    bits |= uint64_t{1} << v;
  }
  return static_cast<int64_t>(bits);
}

}  // namespace orv
