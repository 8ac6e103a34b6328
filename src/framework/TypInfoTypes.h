#pragma once
// Type records: one immutable TTypeInfo per C++ type that can be a published property, reached
// through TypeInfo<T>(). Records are compared by address, so a property's type can be told from
// another with the same representation (TDate from TTime, Memo from String, TColor from Integer).

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "System.h"

namespace orv {

class Variant;

// ---------------------------------------------------------------------------------------------
// Sets over an enumeration: bit n stands for the enumeration's value n. Up to 64 values, which
// also makes the whole set one ordinal, as the property functions pass it.

template <class E>
class TSet {
  static_assert(std::is_enum_v<E>, "TSet needs an enumeration");

 public:
  constexpr TSet() = default;
  constexpr TSet(std::initializer_list<E> items) {
    for (E item : items) Include(item);
  }
  static constexpr TSet FromOrdinal(uint64_t bits) {
    TSet set;
    set.FBits = bits;
    return set;
  }
  constexpr uint64_t Ordinal() const { return FBits; }

  constexpr bool Contains(E item) const { return (FBits & Bit(item)) != 0; }
  constexpr TSet& Include(E item) {
    FBits |= Bit(item);
    return *this;
  }
  constexpr TSet& Exclude(E item) {
    FBits &= ~Bit(item);
    return *this;
  }
  constexpr bool Empty() const { return FBits == 0; }

  constexpr TSet operator+(TSet other) const { return FromOrdinal(FBits | other.FBits); }
  constexpr TSet operator-(TSet other) const { return FromOrdinal(FBits & ~other.FBits); }
  constexpr TSet operator*(TSet other) const { return FromOrdinal(FBits & other.FBits); }
  constexpr bool operator==(const TSet&) const = default;

 private:
  static constexpr uint64_t Bit(E item) { return uint64_t{1} << static_cast<unsigned>(item); }
  uint64_t FBits = 0;
};

// ---------------------------------------------------------------------------------------------
// Type records

enum TTypeKind {
  tkUnknown, tkInteger, tkChar, tkEnumeration, tkFloat, tkString, tkSet, tkClass, tkMethod,
  tkWChar, tkLString, tkWString, tkVariant, tkArray, tkRecord, tkInterface, tkInt64, tkDynArray,
  tkUString, tkClassRef, tkPointer, tkProcedure
};
using TTypeKinds = TSet<TTypeKind>;
constexpr TTypeKinds tkAny = TTypeKinds::FromOrdinal((uint64_t{1} << (tkProcedure + 1)) - 1);

enum TOrdType { otSByte, otUByte, otSWord, otUWord, otSLong, otULong };

// Scoped, because the data-set framework has a TFieldType with ftSingle and ftExtended in the
// same namespace: write TFloatType::ftSingle.
enum class TFloatType { ftSingle, ftDouble, ftExtended, ftComp, ftCurr };

struct TTypeInfo;
using PTypeInfo = const TTypeInfo*;

struct TTypeData {
  TOrdType OrdType = otSLong;      // ordinal kinds: the storage width
  int64_t MinValue = 0;            // ordinal kinds and tkInt64: the range; UInt64 reads 0..-1
  int64_t MaxValue = 0;
  PTypeInfo BaseType = nullptr;    // tkEnumeration: the enumeration itself
  std::vector<String> NameList;    // tkEnumeration: the value names, from MinValue up
  PTypeInfo CompType = nullptr;    // tkSet: the element enumeration
  TFloatType FloatType = TFloatType::ftDouble;  // tkFloat
  TClass ClassType = nullptr;      // tkClass
};
using PTypeData = const TTypeData*;

struct TTypeInfo {
  TTypeKind Kind = tkUnknown;
  String Name;
  TTypeData TypeData;
};

inline PTypeData GetTypeData(PTypeInfo info) { return &info->TypeData; }

// The record of an enumeration named `name` whose value names are `names`, as written in its
// declaration ("alNone, alTop, alBottom"); `self` is where the record will live, its own base
// type. Used by ORV_ENUM.
TTypeInfo MakeEnumTypeInfo(const char* name, const char* names, PTypeInfo self);
TTypeInfo MakeSetTypeInfo(PTypeInfo elementType);
TTypeInfo MakeClassTypeInfo(TClass cls);
TTypeInfo MakeMethodTypeInfo();

// ---------------------------------------------------------------------------------------------
// Event handlers as values: the std::function of an event property, type-erased.

class TMethod {
 public:
  TMethod() = default;
  template <class Sig>
  TMethod(std::function<Sig> handler)
      : FAssigned(static_cast<bool>(handler)),
        FHandler(std::make_shared<const std::function<Sig>>(std::move(handler))),
        FType(&typeid(std::function<Sig>)) {}

  bool Assigned() const { return FAssigned; }
  // The handler when it is of type F (a std::function), else null.
  template <class F>
  const F* Target() const {
    return FType && *FType == typeid(F) ? static_cast<const F*>(FHandler.get()) : nullptr;
  }

 private:
  bool FAssigned = false;
  std::shared_ptr<const void> FHandler;
  const std::type_info* FType = nullptr;
};

// ---------------------------------------------------------------------------------------------
// TypeInfo<T>(): the record of T. Built-in types have theirs in TypInfoTypes.cpp; enumerations
// registered with ORV_ENUM, sets of them, pointers to TObject descendants and std::function
// events get theirs here, one per type.

namespace typinfo_detail {

template <class T>
struct IsSet : std::false_type {};
template <class E>
struct IsSet<TSet<E>> : std::true_type {};

template <class T>
struct IsFunction : std::false_type {};
template <class Sig>
struct IsFunction<std::function<Sig>> : std::true_type {};

template <class T>
concept ObjectPointer = std::is_pointer_v<T> && std::is_base_of_v<TObject, std::remove_pointer_t<T>> &&
                        !std::is_const_v<std::remove_pointer_t<T>>;

template <class T>
concept RegisteredEnum = std::is_enum_v<T> && requires { OrvEnumTypeInfo(static_cast<T*>(nullptr)); };

template <class T>
inline constexpr bool Unsupported = false;

// Property and value names compare without regard to ASCII case.
bool SameName(std::string_view a, std::string_view b) noexcept;
struct NameHash {
  size_t operator()(std::string_view name) const noexcept;
};
struct NameEqual {
  bool operator()(std::string_view a, std::string_view b) const noexcept { return SameName(a, b); }
};

template <class T>
struct TypeInfoOf {
  static_assert(Unsupported<T>,
                "no type information for this type: register an enumeration with ORV_ENUM");
};

template <RegisteredEnum T>
struct TypeInfoOf<T> {
  static PTypeInfo Get() { return OrvEnumTypeInfo(static_cast<T*>(nullptr)); }
};

template <class E>
struct TypeInfoOf<TSet<E>> {
  static PTypeInfo Get() {
    static const TTypeInfo info = MakeSetTypeInfo(TypeInfoOf<E>::Get());
    return &info;
  }
};

template <ObjectPointer T>
struct TypeInfoOf<T> {
  static PTypeInfo Get() {
    static const TTypeInfo info = MakeClassTypeInfo(std::remove_pointer_t<T>::StaticClass());
    return &info;
  }
};

template <class Sig>
struct TypeInfoOf<std::function<Sig>> {
  static PTypeInfo Get() {
    static const TTypeInfo info = MakeMethodTypeInfo();
    return &info;
  }
};

#define ORV_BUILTIN_TYPEINFO(T) \
  template <>                   \
  struct TypeInfoOf<T> {        \
    static PTypeInfo Get();     \
  };
ORV_BUILTIN_TYPEINFO(int8_t)
ORV_BUILTIN_TYPEINFO(uint8_t)
ORV_BUILTIN_TYPEINFO(int16_t)
ORV_BUILTIN_TYPEINFO(uint16_t)
ORV_BUILTIN_TYPEINFO(int32_t)
ORV_BUILTIN_TYPEINFO(uint32_t)
ORV_BUILTIN_TYPEINFO(int64_t)
ORV_BUILTIN_TYPEINFO(uint64_t)
ORV_BUILTIN_TYPEINFO(char)
ORV_BUILTIN_TYPEINFO(char16_t)
ORV_BUILTIN_TYPEINFO(bool)
ORV_BUILTIN_TYPEINFO(float)
ORV_BUILTIN_TYPEINFO(double)
ORV_BUILTIN_TYPEINFO(long double)
ORV_BUILTIN_TYPEINFO(Currency)
ORV_BUILTIN_TYPEINFO(TDate)
ORV_BUILTIN_TYPEINFO(TTime)
ORV_BUILTIN_TYPEINFO(TDateTime)
ORV_BUILTIN_TYPEINFO(String)
ORV_BUILTIN_TYPEINFO(WideString)
ORV_BUILTIN_TYPEINFO(Memo)
ORV_BUILTIN_TYPEINFO(WideMemo)
ORV_BUILTIN_TYPEINFO(Variant)
ORV_BUILTIN_TYPEINFO(TColor)
ORV_BUILTIN_TYPEINFO(TFontCharset)
ORV_BUILTIN_TYPEINFO(IInterfacePtr)
ORV_BUILTIN_TYPEINFO(IDispatchPtr)
#undef ORV_BUILTIN_TYPEINFO

}  // namespace typinfo_detail

template <class T>
PTypeInfo TypeInfo() {
  return typinfo_detail::TypeInfoOf<std::remove_cv_t<T>>::Get();
}

// ---------------------------------------------------------------------------------------------
// Names of enumeration values and sets

// The name of `value` of an enumeration (empty when out of range); an integer type gives the
// number as text.
String GetEnumName(PTypeInfo typeInfo, int64_t value);
// The value named `name` (without regard to case), or -1; an integer type parses the number.
int64_t GetEnumValue(PTypeInfo typeInfo, std::string_view name);
// "fsBold,fsItalic", or "[fsBold,fsItalic]" with brackets; `setType` is a tkSet record.
String SetToString(PTypeInfo setType, int64_t value, bool brackets = false);
// Reads "a,b" or "[a, b]"; EPropertyConvertError "Invalid property element: %s" for a name that
// is not an element.
int64_t StringToSet(PTypeInfo setType, std::string_view text);

}  // namespace orv

// Declares an enumeration and its type record in one expression, at namespace scope:
//   ORV_ENUM(TAlign, alNone, alTop, alBottom)
// Values run from 0 in the order given.
#define ORV_ENUM(Name, ...)  \
  enum Name { __VA_ARGS__ }; \
  ORV_ENUM_INFO(Name, __VA_ARGS__)

// Gives an existing enumeration (values from 0, in order) its type record, in its namespace.
#define ORV_ENUM_INFO(Name, ...)                                                                \
  [[maybe_unused]] inline ::orv::PTypeInfo OrvEnumTypeInfo(Name*) {                             \
    static const ::orv::TTypeInfo info = ::orv::MakeEnumTypeInfo(#Name, #__VA_ARGS__, &info);       \
    return &info;                                                                               \
  }
