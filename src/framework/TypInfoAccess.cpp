#include "TypInfo.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Lists and lookup

std::vector<PPropInfo> GetPropList(TClass cls, TTypeKinds kinds) {
  const std::vector<PPropInfo>& all = GetClassProps(cls).List();
  if (kinds == tkAny) return all;
  std::vector<PPropInfo> list;
  for (PPropInfo info : all)
    if (kinds.Contains(info->PropType->Kind)) list.push_back(info);
  return list;
}

std::vector<PPropInfo> GetPropList(const TObject* instance, TTypeKinds kinds) {
  return GetPropList(instance->ClassType(), kinds);
}

PPropInfo GetPropInfo(TClass cls, std::string_view name, TTypeKinds kinds) {
  PPropInfo info = GetClassProps(cls).Find(name);
  return info && kinds.Contains(info->PropType->Kind) ? info : nullptr;
}

PPropInfo GetPropInfo(const TObject* instance, std::string_view name, TTypeKinds kinds) {
  return GetPropInfo(instance->ClassType(), name, kinds);
}

PPropInfo FindPropInfo(TClass cls, std::string_view name) {
  if (PPropInfo info = GetClassProps(cls).Find(name)) return info;
  throw EPropertyError("Property " + String(name) + " does not exist");
}

PPropInfo FindPropInfo(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance->ClassType(), name);
}

bool IsPublishedProp(TClass cls, std::string_view name) { return GetClassProps(cls).Find(name) != nullptr; }

bool IsPublishedProp(const TObject* instance, std::string_view name) {
  return IsPublishedProp(instance->ClassType(), name);
}

TTypeKind PropType(TClass cls, std::string_view name) { return FindPropInfo(cls, name)->PropType->Kind; }

TTypeKind PropType(const TObject* instance, std::string_view name) {
  return PropType(instance->ClassType(), name);
}

bool PropIsType(const TObject* instance, std::string_view name, TTypeKind kind) {
  return PropType(instance, name) == kind;
}

bool IsStoredProp(const TObject* instance, PPropInfo info) { return info->IsStored(instance); }

bool IsStoredProp(const TObject* instance, std::string_view name) {
  return IsStoredProp(instance, FindPropInfo(instance, name));
}

bool IsDefaultPropValue(const TObject* instance, PPropInfo info) {
  switch (info->PropType->Kind) {
    case tkInteger: case tkChar: case tkWChar: case tkEnumeration: case tkSet:
      return info->Default != NoDefault && info->GetOrd(instance) == info->Default;
    case tkInt64:
      return info->GetOrd(instance) == 0;
    case tkFloat:
      return info->GetFloat(instance) == 0;
    case tkString: case tkLString: case tkUString:
      return info->GetStr(instance).empty();
    case tkWString:
      return info->GetWideStr(instance).empty();
    case tkClass:
      return info->GetObject(instance) == nullptr;
    case tkMethod:
      return !info->GetMethod(instance).Assigned();
    case tkInterface:
      return !info->GetInterface(instance);
    case tkVariant:
      return VarIsClear(info->GetAsVariant(instance));
    default:
      return false;
  }
}

// ---------------------------------------------------------------------------------------------
// Objects, enumerations and sets

TObject* GetObjectProp(const TObject* instance, PPropInfo info, TClass minClass) {
  TObject* value = info->GetObject(instance);
  return !minClass || IsInstance(value, minClass) ? value : nullptr;
}

TClass GetObjectPropClass(PPropInfo info) {
  return info->PropType->Kind == tkClass ? info->PropType->TypeData.ClassType : nullptr;
}

String GetEnumProp(const TObject* instance, PPropInfo info) {
  return GetEnumName(info->PropType, info->GetOrd(instance));
}

void SetEnumProp(TObject* instance, PPropInfo info, std::string_view value) {
  const int64_t ordinal = GetEnumValue(info->PropType, value);
  if (ordinal < 0) throw EPropertyConvertError("Invalid property element: " + String(value));
  info->SetOrd(instance, ordinal);
}

String GetSetProp(const TObject* instance, PPropInfo info, bool brackets) {
  return SetToString(info->PropType, info->GetOrd(instance), brackets);
}

void SetSetProp(TObject* instance, PPropInfo info, std::string_view value) {
  info->SetOrd(instance, StringToSet(info->PropType, value));
}

String SetToString(PPropInfo info, int64_t value, bool brackets) {
  return SetToString(info->PropType, value, brackets);
}

int64_t StringToSet(PPropInfo info, std::string_view text) { return StringToSet(info->PropType, text); }

// ---------------------------------------------------------------------------------------------
// By name

int64_t GetOrdProp(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetOrd(instance);
}
void SetOrdProp(TObject* instance, std::string_view name, int64_t value) {
  FindPropInfo(instance, name)->SetOrd(instance, value);
}
int64_t GetInt64Prop(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetOrd(instance);
}
void SetInt64Prop(TObject* instance, std::string_view name, int64_t value) {
  FindPropInfo(instance, name)->SetOrd(instance, value);
}
long double GetFloatProp(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetFloat(instance);
}
void SetFloatProp(TObject* instance, std::string_view name, long double value) {
  FindPropInfo(instance, name)->SetFloat(instance, value);
}
String GetStrProp(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetStr(instance);
}
void SetStrProp(TObject* instance, std::string_view name, String value) {
  FindPropInfo(instance, name)->SetStr(instance, std::move(value));
}
WideString GetWideStrProp(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetWideStr(instance);
}
void SetWideStrProp(TObject* instance, std::string_view name, WideString value) {
  FindPropInfo(instance, name)->SetWideStr(instance, std::move(value));
}
TObject* GetObjectProp(const TObject* instance, std::string_view name, TClass minClass) {
  return GetObjectProp(instance, FindPropInfo(instance, name), minClass);
}
void SetObjectProp(TObject* instance, std::string_view name, TObject* value) {
  FindPropInfo(instance, name)->SetObject(instance, value);
}
TClass GetObjectPropClass(const TObject* instance, std::string_view name) {
  return GetObjectPropClass(FindPropInfo(instance, name));
}
IInterfacePtr GetInterfaceProp(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetInterface(instance);
}
void SetInterfaceProp(TObject* instance, std::string_view name, IInterfacePtr value) {
  FindPropInfo(instance, name)->SetInterface(instance, std::move(value));
}
TMethod GetMethodProp(const TObject* instance, std::string_view name) {
  return FindPropInfo(instance, name)->GetMethod(instance);
}
void SetMethodProp(TObject* instance, std::string_view name, const TMethod& value) {
  FindPropInfo(instance, name)->SetMethod(instance, value);
}
String GetEnumProp(const TObject* instance, std::string_view name) {
  return GetEnumProp(instance, FindPropInfo(instance, name));
}
void SetEnumProp(TObject* instance, std::string_view name, std::string_view value) {
  SetEnumProp(instance, FindPropInfo(instance, name), value);
}
String GetSetProp(const TObject* instance, std::string_view name, bool brackets) {
  return GetSetProp(instance, FindPropInfo(instance, name), brackets);
}
void SetSetProp(TObject* instance, std::string_view name, std::string_view value) {
  SetSetProp(instance, FindPropInfo(instance, name), value);
}

}  // namespace orv
