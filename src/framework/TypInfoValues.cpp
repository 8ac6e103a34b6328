#include "TypInfo.h"

namespace orv {

namespace {

[[noreturn]] void InvalidPropertyType(PPropInfo info) {
  throw EPropertyError("Invalid property type: " + info->PropType->Name);
}

int64_t Ranged(PPropInfo info, int64_t value) {
  const TTypeData& data = info->PropType->TypeData;
  if (value < data.MinValue || value > data.MaxValue) throw ERangeError("Range check error");
  return value;
}

// A character property takes one character of text, or a character code.
int64_t CharOrdinal(PPropInfo info, const Variant& value) {
  if (VarIsStr(value)) {
    const WideString text = value.AsWideString();
    if (text.size() == 1) return Ranged(info, text[0]);
  }
  return Ranged(info, value.AsInt64());
}

}  // namespace

Variant GetVariantProp(const TObject* instance, PPropInfo info) {
  if (info->PropType->Kind != tkVariant) InvalidPropertyType(info);
  return info->GetAsVariant(instance);
}

void SetVariantProp(TObject* instance, PPropInfo info, const Variant& value) {
  if (info->PropType->Kind != tkVariant) InvalidPropertyType(info);
  info->SetAsVariant(instance, value);
}

Variant GetPropValue(const TObject* instance, PPropInfo info, bool preferStrings) {
  switch (info->PropType->Kind) {
    case tkEnumeration:
      if (preferStrings) return Variant(GetEnumProp(instance, info));
      break;
    case tkSet:
      if (preferStrings) return Variant(GetSetProp(instance, info));
      break;
    case tkClass:
      return Variant(reinterpret_cast<intptr_t>(info->GetObject(instance)));
    case tkMethod:
      InvalidPropertyType(info);
    default:
      break;
  }
  return info->GetAsVariant(instance);
}

void SetPropValue(TObject* instance, PPropInfo info, const Variant& value) {
  switch (info->PropType->Kind) {
    case tkInteger:
      return info->SetOrd(instance, Ranged(info, value.AsInt64()));
    case tkChar: case tkWChar:
      return info->SetOrd(instance, CharOrdinal(info, value));
    case tkEnumeration:
      if (VarIsStr(value)) return SetEnumProp(instance, info, value.AsString());
      if (VarType(value) == varBoolean) return info->SetOrd(instance, value.AsBoolean() ? 1 : 0);
      return info->SetOrd(instance, Ranged(info, value.AsInt64()));
    case tkSet:
      if (VarIsStr(value)) return SetSetProp(instance, info, value.AsString());
      return info->SetOrd(instance, value.AsInt64());
    case tkClass:
      return info->SetObject(instance, value.AsObject());
    case tkMethod:
      InvalidPropertyType(info);
    default:
      return info->SetAsVariant(instance, value);
  }
}

Variant GetPropValue(const TObject* instance, std::string_view name, bool preferStrings) {
  return GetPropValue(instance, FindPropInfo(instance, name), preferStrings);
}

void SetPropValue(TObject* instance, std::string_view name, const Variant& value) {
  SetPropValue(instance, FindPropInfo(instance, name), value);
}

Variant GetVariantProp(const TObject* instance, std::string_view name) {
  return GetVariantProp(instance, FindPropInfo(instance, name));
}

void SetVariantProp(TObject* instance, std::string_view name, const Variant& value) {
  SetVariantProp(instance, FindPropInfo(instance, name), value);
}

}  // namespace orv
