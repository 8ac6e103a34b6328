#pragma once
// Variant: the platform's dynamically typed value, with its coercions, comparisons and arrays.
//
// A Variant is 16 bytes: a type code and an 8-byte payload. Numbers, dates, Booleans, object
// references and interface references live in the payload. Text, decimals, time stamps and
// arrays live in shared blocks with a plain reference count (single-threaded by design): a copy
// shares the block and never copies text. Blocks are immutable while shared; an array is copied
// before it is written or locked when another Variant shares it (copy on write).

#include <compare>
#include <cstdint>
#include <initializer_list>
#include <iosfwd>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "FMTBcd.h"
#include "SqlTimSt.h"
#include "System.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Type codes, numbered as the platform numbers them

using TVarType = uint16_t;

constexpr TVarType varEmpty = 0x0000;
constexpr TVarType varNull = 0x0001;
constexpr TVarType varSmallint = 0x0002;
constexpr TVarType varInteger = 0x0003;
constexpr TVarType varSingle = 0x0004;
constexpr TVarType varDouble = 0x0005;
constexpr TVarType varCurrency = 0x0006;
constexpr TVarType varDate = 0x0007;
constexpr TVarType varOleStr = 0x0008;  // UTF-16 text
constexpr TVarType varDispatch = 0x0009;
constexpr TVarType varError = 0x000A;
constexpr TVarType varBoolean = 0x000B;
constexpr TVarType varVariant = 0x000C;  // only as the element type of an array
constexpr TVarType varUnknown = 0x000D;
constexpr TVarType varShortInt = 0x0010;
constexpr TVarType varByte = 0x0011;
constexpr TVarType varWord = 0x0012;
constexpr TVarType varLongWord = 0x0013;
constexpr TVarType varInt64 = 0x0014;
constexpr TVarType varUInt64 = 0x0015;
constexpr TVarType varString = 0x0100;   // native UTF-8 text
constexpr TVarType varUString = 0x0102;  // UTF-16 text
constexpr TVarType varTypeMask = 0x0FFF;
constexpr TVarType varArray = 0x2000;

// The kinds this library adds, in the range the platform leaves to custom variant types.
constexpr TVarType varFMTBcd = 0x0110;              // a TBcd decimal
constexpr TVarType varSQLTimeStamp = 0x0111;        // a TSQLTimeStamp
constexpr TVarType varSQLTimeStampOffset = 0x0112;  // a TSQLTimeStampOffset
constexpr TVarType varObject = 0x0113;              // a TObject*, not owned

constexpr TVarType VarFMTBcd() noexcept { return varFMTBcd; }
constexpr TVarType VarSQLTimeStamp() noexcept { return varSQLTimeStamp; }
constexpr TVarType VarSQLTimeStampOffset() noexcept { return varSQLTimeStampOffset; }

// Process-wide: true (the default) makes converting Null to another type raise
// EVariantTypeCastError; false makes it give that type's empty value (0, "", false).
extern bool NullStrictConvert;

enum TVariantRelationship { vrEqual, vrLessThan, vrGreaterThan, vrNotEqual };

class Variant;

namespace detail {

// The head of every shared block. The Variant's type code says what follows it.
struct VarBlock {
  uint32_t RefCount = 1;
};

constexpr bool IsBlockType(TVarType type) noexcept {
  return type == varString || type == varUString || type == varOleStr || type == varFMTBcd ||
         type == varSQLTimeStamp || type == varSQLTimeStampOffset || (type & varArray) != 0;
}
constexpr bool IsInterfaceType(TVarType type) noexcept {
  return type == varUnknown || type == varDispatch;
}
// A block or an interface: what a copy must share and a destructor release. The small codes
// (all the numbers) are answered with one shift, as copies and destructors of numbers are hot.
constexpr bool IsManagedType(TVarType type) noexcept {
  constexpr uint32_t smallManaged = (1u << varOleStr) | (1u << varDispatch) | (1u << varUnknown);
  if (type < 32) return (smallManaged >> type) & 1u;
  return IsBlockType(type);
}

template <class I>
constexpr TVarType IntegerVarType() noexcept {
  if constexpr (std::is_signed_v<I>)
    return sizeof(I) == 1 ? varShortInt : sizeof(I) == 2 ? varSmallint
                                        : sizeof(I) == 4 ? varInteger : varInt64;
  else
    return sizeof(I) == 1 ? varByte : sizeof(I) == 2 ? varWord
                                    : sizeof(I) == 4 ? varLongWord : varUInt64;
}

template <class T>
constexpr bool IsCharType = std::is_same_v<std::remove_cv_t<T>, char> ||
                            std::is_same_v<std::remove_cv_t<T>, char16_t> ||
                            std::is_same_v<std::remove_cv_t<T>, char8_t> ||
                            std::is_same_v<std::remove_cv_t<T>, char32_t> ||
                            std::is_same_v<std::remove_cv_t<T>, wchar_t>;

template <class T>
struct IsDateTimeType : std::false_type {};
template <class Tag>
struct IsDateTimeType<TDateTimeBase<Tag>> : std::true_type {};

template <class T>
struct IsInterfacePtr : std::false_type {};
template <class T>
struct IsInterfacePtr<InterfacePtr<T>> : std::true_type {};

struct VariantAccess;  // the implementation's view of the payload

}  // namespace detail

// ---------------------------------------------------------------------------------------------
// Variant

class Variant {
 public:
  // Unassigned (varEmpty).
  Variant() noexcept = default;

  Variant(const Variant& other) : FType(other.FType), FData(other.FData) {
    if (detail::IsManagedType(FType)) ShareWith(other);
  }
  Variant(Variant&& other) noexcept : FType(other.FType), FData(other.FData) {
    other.FType = varEmpty;
  }
  ~Variant() {
    if (detail::IsManagedType(FType)) Release();
  }
  // Replacing a locked array raises EVariantArrayLockedError and leaves both sides unchanged.
  Variant& operator=(const Variant& other) {
    Variant copy(other);
    return *this = std::move(copy);
  }
  Variant& operator=(Variant&& other) {
    if (this != &other) {
      if (detail::IsManagedType(FType)) ReleaseForReplace();
      FType = std::exchange(other.FType, varEmpty);
      FData = other.FData;
    }
    return *this;
  }

  // --- Construction from the library's C++ types

  Variant(bool value) noexcept : FType(varBoolean) { FData.Bool = value; }
  // Each integer type gives the kind of its width and sign: int gives varInteger, int64_t
  // varInt64, uint8_t varByte, and so on.
  template <class I, std::enable_if_t<std::is_integral_v<I> && !std::is_same_v<I, bool> &&
                                          !detail::IsCharType<I>, int> = 0>
  Variant(I value) noexcept : FType(detail::IntegerVarType<I>()) {
    if constexpr (std::is_signed_v<I>)
      FData.I64 = value;
    else
      FData.U64 = value;
  }
  // An enumeration gives its ordinal value as the integer kind of its underlying type.
  template <class E, std::enable_if_t<std::is_enum_v<E>, int> = 0>
  Variant(E value) noexcept : Variant(static_cast<std::underlying_type_t<E>>(value)) {}
  Variant(float value) noexcept : FType(varSingle) { FData.Sgl = value; }
  Variant(double value) noexcept : FType(varDouble) { FData.Dbl = value; }
  Variant(long double value) noexcept : Variant(static_cast<double>(value)) {}
  Variant(Currency value) noexcept : FType(varCurrency) { FData.I64 = value.Raw(); }
  // TDateTime, TDate and TTime all give varDate.
  template <class Tag>
  Variant(TDateTimeBase<Tag> value) noexcept : FType(varDate) {
    FData.Dbl = value.Val;
  }

  // A character is text of one character, as on the platform.
  Variant(char value);
  Variant(char16_t value);
  Variant(const char* text);  // varString; null gives empty text
  Variant(std::string_view text);
  Variant(const String& text);
  Variant(const Memo& text) : Variant(static_cast<const String&>(text)) {}
  Variant(const char16_t* text);  // varOleStr; null gives empty text
  Variant(std::u16string_view text);
  Variant(const WideString& text);
  Variant(const WideMemo& text) : Variant(static_cast<const WideString&>(text)) {}

  Variant(const TBcd& value);
  Variant(const TSQLTimeStamp& value);
  Variant(const TSQLTimeStampOffset& value);

  // varObject: the reference only, never owned.
  template <class T, std::enable_if_t<std::is_base_of_v<TObject, T>, int> = 0>
  Variant(T* object) noexcept : FType(varObject) {
    FData.Obj = object;
  }
  // varUnknown, or varDispatch for a dispatch interface; holds one reference.
  Variant(const IInterfacePtr& intf) noexcept;
  Variant(const IDispatchPtr& intf) noexcept;
  template <class U>
  Variant(const InterfacePtr<U>& intf) noexcept {
    if constexpr (std::is_base_of_v<IDispatch, U>)
      *this = Variant(IDispatchPtr(intf));
    else
      *this = Variant(IInterfacePtr(intf));
  }

  // No hidden Boolean from a stray pointer, and no guessing what a null pointer means.
  Variant(std::nullptr_t) = delete;
  template <class T, std::enable_if_t<!std::is_base_of_v<TObject, T> && !detail::IsCharType<T>,
                                      int> = 0>
  Variant(T*) = delete;

  TVarType VType() const noexcept { return FType; }
  void Clear() { *this = Variant(); }  // raises EVariantArrayLockedError for a locked array

  // --- Coercions under the current FormatSettings. A value that cannot be converted raises
  // EVariantTypeCastError "Could not convert variant of type (%s) into type (%s)"; an integer
  // out of the target's range raises EVariantOverflowError "Overflow while converting variant
  // of type (%s) into type (%s)". Unassigned gives the target's empty value; Null gives it
  // too when NullStrictConvert is false, and raises EVariantTypeCastError otherwise.
  //
  // Numbers: floating point to an integer rounds half to even; Boolean true is -1 and any
  // non-zero number is true. Text parses as an integer, a number with the settings' decimal
  // separator, or "True"/"False" (any case; true is -1) where a number is wanted; as a date
  // and time where a date is wanted (a plain number there counts days); as "True"/"False" or a
  // number where a Boolean is wanted. Numbers, Booleans and dates become text as IntToStr,
  // FloatToStr, CurrToStr, "True"/"False" and DateTimeToStr write them. Currency and decimals
  // convert to each other and to and from text exactly.

  int32_t AsInteger() const;
  int64_t AsInt64() const;
  uint64_t AsUInt64() const;
  int16_t AsSmallint() const;
  int8_t AsShortInt() const;
  uint8_t AsByte() const;
  uint16_t AsWord() const;
  uint32_t AsLongWord() const;
  bool AsBoolean() const;
  float AsSingle() const;  // EVariantOverflowError beyond the range of a float
  double AsDouble() const;
  Currency AsCurrency() const;  // EVariantOverflowError beyond the currency range
  TDateTime AsDateTime() const;
  String AsString() const;
  WideString AsWideString() const;
  TBcd AsBcd() const;
  TSQLTimeStamp AsSQLTimeStamp() const;
  TSQLTimeStampOffset AsSQLTimeStampOffset() const;
  IInterfacePtr AsInterface() const;  // varUnknown or varDispatch; null for Unassigned
  IDispatchPtr AsDispatch() const;    // varDispatch, or varUnknown whose object is a dispatch
  // varObject; null for Unassigned. Integer kinds are taken as the object's address, as the
  // platform's property values carry object references in integers.
  TObject* AsObject() const;

  // The same by C++ type: As<int>(), As<String>(), As<TDate>(), As<TMyClass*>() (raises
  // EInvalidCast "Invalid class typecast" when the object is of another class) ...
  template <class T>
  T As() const;

  // The text held, without a copy; empty when the kind is not varString (StrView) or not
  // varOleStr/varUString (WideStrView). The view lives as long as the Variant is unchanged.
  std::string_view StrView() const noexcept;
  std::u16string_view WideStrView() const noexcept;

  // Element `index` of a one-dimensional array (VarArrayGet).
  Variant operator[](int32_t index) const;

  // Comparison and printing, found through the Variant arguments only (see VarCompareValue).
  friend bool operator==(const Variant& a, const Variant& b);
  friend std::partial_ordering operator<=>(const Variant& a, const Variant& b);
  friend std::ostream& operator<<(std::ostream& os, const Variant& v);
  friend void PrintTo(const Variant& v, std::ostream* os);

 private:
  friend struct detail::VariantAccess;

  union Payload {
    int64_t I64 = 0;  // signed integer kinds, Currency (raw, scaled by 10 000)
    uint64_t U64;     // unsigned integer kinds
    double Dbl;       // varDouble, varDate
    float Sgl;        // varSingle
    bool Bool;        // varBoolean
    TObject* Obj;     // varObject
    IInterface* Intf;  // varUnknown
    IDispatch* Disp;   // varDispatch
    detail::VarBlock* Block;
  };

  void ShareWith(const Variant& other);  // after the bits are copied: one more reference
  void Release() noexcept;
  void ReleaseForReplace();  // Release, but a locked array raises instead

  TVarType FType = varEmpty;
  Payload FData;
};

static_assert(sizeof(Variant) == 16, "a Variant is a type code and an 8-byte payload");

Variant Null();
Variant Unassigned();

// ---------------------------------------------------------------------------------------------
// Kinds

inline TVarType VarType(const Variant& v) noexcept { return v.VType(); }
bool VarIsEmpty(const Variant& v) noexcept;
bool VarIsNull(const Variant& v) noexcept;
// Unassigned, or an interface kind holding no interface.
bool VarIsClear(const Variant& v) noexcept;
bool VarIsArray(const Variant& v) noexcept;
bool VarIsStr(const Variant& v) noexcept;      // varString, varUString, varOleStr
bool VarIsOrdinal(const Variant& v) noexcept;  // the integer kinds and Boolean
bool VarIsFloat(const Variant& v) noexcept;    // Single, Double, Currency, decimal
bool VarIsNumeric(const Variant& v) noexcept;  // ordinal or float
bool VarIsType(const Variant& v, TVarType type) noexcept;
bool VarIsType(const Variant& v, std::initializer_list<TVarType> types) noexcept;
bool VarIsFMTBcd(const Variant& v) noexcept;
bool VarIsSQLTimeStamp(const Variant& v) noexcept;
bool VarIsSQLTimeStampOffset(const Variant& v) noexcept;

// The platform's name of a type code: "Integer", "UnicodeString", "FMTBcdVariantType",
// "Array Variant" for an array, "$XXXX" for an unknown code.
String VarTypeAsText(TVarType type);

void VarClear(Variant& v);  // makes it Unassigned
// A Variant of kind `type` holding the value coerced; varEmpty and varNull give those values
// (the value is ignored); arrays only convert to their own type.
Variant VarAsType(const Variant& v, TVarType type);
// Text of any kind; Null gives "" whatever NullStrictConvert says.
String VarToStr(const Variant& v);
WideString VarToWideStr(const Variant& v);
String VarToStrDef(const Variant& v, const String& def);  // `def` for Null
WideString VarToWideStrDef(const Variant& v, const WideString& def);

// ---------------------------------------------------------------------------------------------
// Comparison
//
// VarCompareValue gives vrEqual, vrLessThan, vrGreaterThan, or vrNotEqual for values that
// differ but have no order (objects, interfaces, arrays). The pairs:
// - Null equals Null and is less than every other value, Unassigned included.
// - Unassigned equals Unassigned; against anything else it is the empty value of the other
//   side's kind (0, "", false, the date 0).
// - text and text: ordinal, case-sensitive; native text against wide text compares UTF-16
//   code units.
// - number and number: exactly within the integer kinds (signed and unsigned mixed), exactly
//   between integers and Currency, exactly against a decimal; as doubles when either is Single,
//   Double or a date.
// - Boolean and anything else: the Boolean as the number -1 (true) or 0 (false); two
//   Booleans compare the same way, so true < false.
// - date and number: the date as its number of days.
// - text and a number, Boolean, date, decimal or time stamp: the text is converted to the
//   other side's kind (an integer side takes the text as a double), so "10" > 9; text that
//   does not convert raises EVariantTypeCastError.
// - time stamp and time stamp: by their parts; with offsets, as instants; a time stamp and
//   a date or number: as dates.
// - objects, interfaces: vrEqual for the same reference, else vrNotEqual; against another
//   kind, vrNotEqual.
// - arrays: vrEqual when bounds and elements are equal, else vrNotEqual.
TVariantRelationship VarCompareValue(const Variant& a, const Variant& b);
// The platform's strict sameness: Unassigned is only the same as Unassigned and Null as Null;
// other values as VarCompareValue finds them equal.
bool VarSameValue(const Variant& a, const Variant& b);

// The operators (members of Variant, so that they never compete with the conversions of other
// types) follow VarCompareValue; vrNotEqual is unordered: neither less nor greater.

// ---------------------------------------------------------------------------------------------
// Arrays
//
// Element types: the number kinds, varBoolean, varDate, varOleStr, varString, varUString and
// varVariant. Elements are stored column-major (the first index varies fastest), so only the
// last dimension can be resized. Bounds errors raise EVariantBadIndexError "Variant or safe
// array index out of bounds"; a non-array raises EVariantInvalidArgError "Invalid argument".

// `bounds` holds a low and a high bound per dimension: {0, 9} or {1, 3, 0, 4}. Raises
// EVariantArrayCreateError "Error creating variant or safe array" for an odd count, a high
// bound below the low bound minus one, or an element type that arrays cannot hold.
Variant VarArrayCreate(const std::vector<int32_t>& bounds, TVarType elementType);
// A varVariant array with bounds 0..n-1.
Variant VarArrayOf(const std::vector<Variant>& values);
int VarArrayDimCount(const Variant& v);  // 0 for a non-array
int32_t VarArrayLowBound(const Variant& v, int dim);  // dim counts from 1
int32_t VarArrayHighBound(const Variant& v, int dim);

// The element storage, for a single writer at a time: bytes for a varByte array, Variant
// elements for varVariant, varOleStr, varString and varUString arrays, the element's C++
// type (int16_t WordBool -1/0 for varBoolean, int64_t raw for varCurrency, double for
// varDate) for the others. While locked the array cannot be resized or released
// (EVariantArrayLockedError "Variant or safe array is locked") and copies do not share it.
// Each lock needs its unlock.
void* VarArrayLock(Variant& v);
void VarArrayUnlock(Variant& v);
bool VarArrayIsLocked(const Variant& v);

// Read and write one element: one index per dimension. A put converts the value to the
// element type.
Variant VarArrayGet(const Variant& v, std::initializer_list<int32_t> indices);
Variant VarArrayGet(const Variant& v, std::span<const int32_t> indices);
void VarArrayPut(Variant& v, const Variant& value, std::initializer_list<int32_t> indices);
void VarArrayPut(Variant& v, const Variant& value, std::span<const int32_t> indices);
// A new high bound of the last dimension; new elements are empty (0, "", Unassigned).
void VarArrayRedim(Variant& v, int32_t highBound);

// One-dimensional byte arrays with bounds 0..n-1, as graphics and byte fields use them.
Variant VarFromBytes(const TBytes& bytes);
// The bytes of a one-dimensional varByte array (any bounds); Unassigned gives no bytes, as
// does Null unless NullStrictConvert. Anything else raises EVariantTypeCastError.
TBytes VarToBytes(const Variant& v);

// Printing (members of Variant too): "(Integer) 5", "(String) \"text\"", "(Null)".
void PrintVariant(std::ostream& os, const Variant& v);

// ---------------------------------------------------------------------------------------------

template <class T>
T Variant::As() const {
  using U = std::remove_cv_t<T>;
  if constexpr (std::is_same_v<U, Variant>) {
    return *this;
  } else if constexpr (std::is_same_v<U, bool>) {
    return AsBoolean();
  } else if constexpr (std::is_enum_v<U>) {
    return static_cast<U>(As<std::underlying_type_t<U>>());
  } else if constexpr (std::is_integral_v<U> && !detail::IsCharType<U>) {
    constexpr TVarType kind = detail::IntegerVarType<U>();
    if constexpr (kind == varShortInt) return AsShortInt();
    else if constexpr (kind == varSmallint) return AsSmallint();
    else if constexpr (kind == varInteger) return AsInteger();
    else if constexpr (kind == varInt64) return AsInt64();
    else if constexpr (kind == varByte) return AsByte();
    else if constexpr (kind == varWord) return AsWord();
    else if constexpr (kind == varLongWord) return AsLongWord();
    else return AsUInt64();
  } else if constexpr (std::is_same_v<U, float>) {
    return AsSingle();
  } else if constexpr (std::is_floating_point_v<U>) {
    return AsDouble();
  } else if constexpr (std::is_same_v<U, Currency>) {
    return AsCurrency();
  } else if constexpr (detail::IsDateTimeType<U>::value) {
    return U(AsDateTime().Val);
  } else if constexpr (std::is_same_v<U, String> || std::is_same_v<U, Memo>) {
    return U(AsString());
  } else if constexpr (std::is_same_v<U, WideString> || std::is_same_v<U, WideMemo>) {
    return U(AsWideString());
  } else if constexpr (std::is_same_v<U, TBcd>) {
    return AsBcd();
  } else if constexpr (std::is_same_v<U, TSQLTimeStamp>) {
    return AsSQLTimeStamp();
  } else if constexpr (std::is_same_v<U, TSQLTimeStampOffset>) {
    return AsSQLTimeStampOffset();
  } else if constexpr (std::is_same_v<U, IInterfacePtr>) {
    return AsInterface();
  } else if constexpr (std::is_same_v<U, IDispatchPtr>) {
    return AsDispatch();
  } else if constexpr (detail::IsInterfacePtr<U>::value) {
    return Supports<typename std::remove_reference_t<decltype(*std::declval<U>())>>(
        AsInterface());
  } else if constexpr (std::is_pointer_v<U> &&
                       std::is_base_of_v<TObject, std::remove_pointer_t<U>>) {
    TObject* obj = AsObject();
    if constexpr (std::is_same_v<std::remove_cv_t<std::remove_pointer_t<U>>, TObject>) {
      return obj;
    } else {
      if (!obj) return nullptr;
      if (auto* typed = dynamic_cast<U>(obj)) return typed;
      throw EInvalidCast("Invalid class typecast");
    }
  } else {
    static_assert(sizeof(U) == 0, "Variant::As: no coercion to this type");
  }
}

}  // namespace orv
