#pragma once
// Run-time type information: type records (TypInfoTypes.h), published properties and their
// registration (TypInfoProps.h), access to property values by record or by name (here), and the
// extended information with attributes (Rtti.h).
//
// The functions taking a name look the property up (hashed, without regard to case) and raise
// EPropertyError "Property %s does not exist" when the class does not publish it. The functions
// taking a PPropInfo do no lookup at all: resolve a record once and keep it.

#include "TypInfoProps.h"
#include "TypInfoTypes.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Property lists and lookup

// Inherited properties first, then declaration order.
std::vector<PPropInfo> GetPropList(TClass cls, TTypeKinds kinds = tkAny);
std::vector<PPropInfo> GetPropList(const TObject* instance, TTypeKinds kinds = tkAny);
// Null when the class publishes no such property of one of `kinds`.
PPropInfo GetPropInfo(TClass cls, std::string_view name, TTypeKinds kinds = tkAny);
PPropInfo GetPropInfo(const TObject* instance, std::string_view name, TTypeKinds kinds = tkAny);
// EPropertyError "Property %s does not exist" when the class publishes no such property.
PPropInfo FindPropInfo(TClass cls, std::string_view name);
PPropInfo FindPropInfo(const TObject* instance, std::string_view name);

bool IsPublishedProp(TClass cls, std::string_view name);
bool IsPublishedProp(const TObject* instance, std::string_view name);
TTypeKind PropType(TClass cls, std::string_view name);
TTypeKind PropType(const TObject* instance, std::string_view name);
bool PropIsType(const TObject* instance, std::string_view name, TTypeKind kind);

// Whether a form file writes the property: its stored predicate.
bool IsStoredProp(const TObject* instance, PPropInfo info);
bool IsStoredProp(const TObject* instance, std::string_view name);
// Whether the value is the property's default, which a form file leaves out: an ordinal equal to
// its declared default (never without one), zero, empty text, no object, no handler,
// no interface, an unassigned variant.
bool IsDefaultPropValue(const TObject* instance, PPropInfo info);

// ---------------------------------------------------------------------------------------------
// Typed access

inline int64_t GetOrdProp(const TObject* instance, PPropInfo info) { return info->GetOrd(instance); }
inline void SetOrdProp(TObject* instance, PPropInfo info, int64_t value) { info->SetOrd(instance, value); }
inline int64_t GetInt64Prop(const TObject* instance, PPropInfo info) { return info->GetOrd(instance); }
inline void SetInt64Prop(TObject* instance, PPropInfo info, int64_t value) { info->SetOrd(instance, value); }
inline long double GetFloatProp(const TObject* instance, PPropInfo info) { return info->GetFloat(instance); }
inline void SetFloatProp(TObject* instance, PPropInfo info, long double value) {
  info->SetFloat(instance, value);
}
inline String GetStrProp(const TObject* instance, PPropInfo info) { return info->GetStr(instance); }
inline void SetStrProp(TObject* instance, PPropInfo info, String value) {
  info->SetStr(instance, std::move(value));
}
inline WideString GetWideStrProp(const TObject* instance, PPropInfo info) {
  return info->GetWideStr(instance);
}
inline void SetWideStrProp(TObject* instance, PPropInfo info, WideString value) {
  info->SetWideStr(instance, std::move(value));
}
// The object, or null when it is not an instance of `minClass` (when one is given).
TObject* GetObjectProp(const TObject* instance, PPropInfo info, TClass minClass = nullptr);
inline void SetObjectProp(TObject* instance, PPropInfo info, TObject* value) {
  info->SetObject(instance, value);
}
// The class of an object property; null for a property of another kind.
TClass GetObjectPropClass(PPropInfo info);
inline IInterfacePtr GetInterfaceProp(const TObject* instance, PPropInfo info) {
  return info->GetInterface(instance);
}
inline void SetInterfaceProp(TObject* instance, PPropInfo info, IInterfacePtr value) {
  info->SetInterface(instance, std::move(value));
}
inline TMethod GetMethodProp(const TObject* instance, PPropInfo info) { return info->GetMethod(instance); }
inline void SetMethodProp(TObject* instance, PPropInfo info, const TMethod& value) {
  info->SetMethod(instance, value);
}
// Enumerations and sets by their names; EPropertyConvertError "Invalid property element: %s"
// for a name that is not one of the type's.
String GetEnumProp(const TObject* instance, PPropInfo info);
void SetEnumProp(TObject* instance, PPropInfo info, std::string_view value);
String GetSetProp(const TObject* instance, PPropInfo info, bool brackets = false);
void SetSetProp(TObject* instance, PPropInfo info, std::string_view value);
String SetToString(PPropInfo info, int64_t value, bool brackets = false);
int64_t StringToSet(PPropInfo info, std::string_view text);

// Variant properties only; EPropertyError "Invalid property type: %s" for others.
Variant GetVariantProp(const TObject* instance, PPropInfo info);
void SetVariantProp(TObject* instance, PPropInfo info, const Variant& value);

// ---------------------------------------------------------------------------------------------
// Any property as a Variant
//
// GetPropValue: integers of the property's width, a character as text, an enumeration as its
// name and a set as "a,b" when preferring strings (else their ordinals, Boolean as Boolean), a
// float, Currency or date of its own kind, text, a variant as it is, an interface, an object as
// its address in an integer. Events raise EPropertyError "Invalid property type: %s".
//
// SetPropValue: an enumeration from its name or number, a set from "[a,b]", "a,b" or its
// ordinal, a character from one-character text or its code, an object from its address (or an
// object variant); ordinals out of the type's range raise ERangeError "Range check error";
// everything else through the Variant's coercions.
Variant GetPropValue(const TObject* instance, PPropInfo info, bool preferStrings = true);
Variant GetPropValue(const TObject* instance, std::string_view name, bool preferStrings = true);
void SetPropValue(TObject* instance, PPropInfo info, const Variant& value);
void SetPropValue(TObject* instance, std::string_view name, const Variant& value);

// The same by name.
int64_t GetOrdProp(const TObject* instance, std::string_view name);
void SetOrdProp(TObject* instance, std::string_view name, int64_t value);
int64_t GetInt64Prop(const TObject* instance, std::string_view name);
void SetInt64Prop(TObject* instance, std::string_view name, int64_t value);
long double GetFloatProp(const TObject* instance, std::string_view name);
void SetFloatProp(TObject* instance, std::string_view name, long double value);
String GetStrProp(const TObject* instance, std::string_view name);
void SetStrProp(TObject* instance, std::string_view name, String value);
WideString GetWideStrProp(const TObject* instance, std::string_view name);
void SetWideStrProp(TObject* instance, std::string_view name, WideString value);
TObject* GetObjectProp(const TObject* instance, std::string_view name, TClass minClass = nullptr);
void SetObjectProp(TObject* instance, std::string_view name, TObject* value);
TClass GetObjectPropClass(const TObject* instance, std::string_view name);
IInterfacePtr GetInterfaceProp(const TObject* instance, std::string_view name);
void SetInterfaceProp(TObject* instance, std::string_view name, IInterfacePtr value);
TMethod GetMethodProp(const TObject* instance, std::string_view name);
void SetMethodProp(TObject* instance, std::string_view name, const TMethod& value);
String GetEnumProp(const TObject* instance, std::string_view name);
void SetEnumProp(TObject* instance, std::string_view name, std::string_view value);
String GetSetProp(const TObject* instance, std::string_view name, bool brackets = false);
void SetSetProp(TObject* instance, std::string_view name, std::string_view value);
Variant GetVariantProp(const TObject* instance, std::string_view name);
void SetVariantProp(TObject* instance, std::string_view name, const Variant& value);

}  // namespace orv

#include "Rtti.h"
