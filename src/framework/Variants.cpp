// The Variant's lifetime (sharing and releasing blocks), its construction from text and the
// block kinds, the kind tests, the type names and printing.

#include "Variants.h"

#include <ostream>

#include "VariantBlocks.h"

namespace orv {

bool NullStrictConvert = true;

using detail::ArrayBlock;
using detail::NativeTextBlock;
using detail::ValueBlock;
using detail::VariantAccess;
using detail::WideTextBlock;

namespace detail {

void FreeBlock(TVarType type, VarBlock* block) noexcept {
  if (type & varArray) {
    delete static_cast<ArrayBlock*>(block);
    return;
  }
  switch (type) {
    case varString: NativeTextBlock::Destroy(static_cast<NativeTextBlock*>(block)); break;
    case varOleStr:
    case varUString: WideTextBlock::Destroy(static_cast<WideTextBlock*>(block)); break;
    case varFMTBcd: delete static_cast<ValueBlock<TBcd>*>(block); break;
    case varSQLTimeStamp: delete static_cast<ValueBlock<TSQLTimeStamp>*>(block); break;
    case varSQLTimeStampOffset: delete static_cast<ValueBlock<TSQLTimeStampOffset>*>(block); break;
    default: break;
  }
}

}  // namespace detail

// ---------------------------------------------------------------------------------------------
// Lifetime

void Variant::ShareWith(const Variant& other) {
  switch (FType) {
    case varUnknown:
      if (FData.Intf) FData.Intf->_AddRef();
      return;
    case varDispatch:
      if (FData.Disp) FData.Disp->_AddRef();
      return;
    default: break;
  }
  if (FType & varArray) {
    const auto* array = static_cast<const ArrayBlock*>(other.FData.Block);
    // A locked array is being written through a raw pointer: a copy must not see that.
    if (array->LockCount > 0) {
      FData.Block = new ArrayBlock(*array);
      return;
    }
  }
  ++FData.Block->RefCount;
}

void Variant::Release() noexcept {
  switch (FType) {
    case varUnknown:
      if (FData.Intf) FData.Intf->_Release();
      break;
    case varDispatch:
      if (FData.Disp) FData.Disp->_Release();
      break;
    default:
      if (--FData.Block->RefCount == 0) detail::FreeBlock(FType, FData.Block);
      break;
  }
  FType = varEmpty;
}

void Variant::ReleaseForReplace() {
  if ((FType & varArray) && static_cast<ArrayBlock*>(FData.Block)->LockCount > 0)
    throw EVariantArrayLockedError("Variant or safe array is locked");
  Release();
}

// ---------------------------------------------------------------------------------------------
// Construction

namespace {

template <class CharT>
Variant MakeText(TVarType type, std::basic_string_view<CharT> text) {
  return VariantAccess::MakeBlock(type, detail::TextBlock<CharT>::Create(text));
}

template <class T>
Variant MakeValue(TVarType type, const T& value) {
  return VariantAccess::MakeBlock(type, new ValueBlock<T>(value));
}

}  // namespace

Variant::Variant(char value) : Variant(std::string_view(&value, 1)) {}
Variant::Variant(char16_t value) : Variant(std::u16string_view(&value, 1)) {}
Variant::Variant(const char* text) : Variant(std::string_view(text ? text : "")) {}
Variant::Variant(std::string_view text) : Variant(MakeText(varString, text)) {}
Variant::Variant(const String& text) : Variant(std::string_view(text)) {}
Variant::Variant(const char16_t* text) : Variant(std::u16string_view(text ? text : u"")) {}
Variant::Variant(std::u16string_view text) : Variant(MakeText(varOleStr, text)) {}
Variant::Variant(const WideString& text) : Variant(std::u16string_view(text)) {}
Variant::Variant(const TBcd& value) : Variant(MakeValue(varFMTBcd, value)) {}
Variant::Variant(const TSQLTimeStamp& value) : Variant(MakeValue(varSQLTimeStamp, value)) {}
Variant::Variant(const TSQLTimeStampOffset& value)
    : Variant(MakeValue(varSQLTimeStampOffset, value)) {}

Variant::Variant(const IInterfacePtr& intf) noexcept : FType(varUnknown) {
  FData.Intf = intf.get();
  if (FData.Intf) FData.Intf->_AddRef();
}

Variant::Variant(const IDispatchPtr& intf) noexcept : FType(varDispatch) {
  FData.Disp = intf.get();
  if (FData.Disp) FData.Disp->_AddRef();
}

Variant Null() {
  return VariantAccess::Make(varNull, {});
}

Variant Unassigned() { return Variant(); }

std::string_view Variant::StrView() const noexcept {
  if (FType != varString) return {};
  return static_cast<const NativeTextBlock*>(FData.Block)->View();
}

std::u16string_view Variant::WideStrView() const noexcept {
  if (FType != varOleStr && FType != varUString) return {};
  return static_cast<const WideTextBlock*>(FData.Block)->View();
}

// ---------------------------------------------------------------------------------------------
// Kinds

bool VarIsEmpty(const Variant& v) noexcept { return v.VType() == varEmpty; }
bool VarIsNull(const Variant& v) noexcept { return v.VType() == varNull; }

bool VarIsClear(const Variant& v) noexcept {
  switch (v.VType()) {
    case varEmpty: return true;
    case varUnknown: return VariantAccess::Data(v).Intf == nullptr;
    case varDispatch: return VariantAccess::Data(v).Disp == nullptr;
    default: return false;
  }
}

bool VarIsArray(const Variant& v) noexcept { return (v.VType() & varArray) != 0; }

bool VarIsStr(const Variant& v) noexcept {
  const TVarType t = v.VType();
  return t == varString || t == varUString || t == varOleStr;
}

bool VarIsOrdinal(const Variant& v) noexcept {
  switch (v.VType()) {
    case varSmallint: case varInteger: case varBoolean: case varShortInt: case varByte:
    case varWord: case varLongWord: case varInt64: case varUInt64: return true;
    default: return false;
  }
}

bool VarIsFloat(const Variant& v) noexcept {
  const TVarType t = v.VType();
  return t == varSingle || t == varDouble || t == varCurrency || t == varFMTBcd;
}

bool VarIsNumeric(const Variant& v) noexcept { return VarIsOrdinal(v) || VarIsFloat(v); }
bool VarIsType(const Variant& v, TVarType type) noexcept { return v.VType() == type; }

bool VarIsType(const Variant& v, std::initializer_list<TVarType> types) noexcept {
  for (TVarType t : types)
    if (v.VType() == t) return true;
  return false;
}

bool VarIsFMTBcd(const Variant& v) noexcept { return v.VType() == varFMTBcd; }
bool VarIsSQLTimeStamp(const Variant& v) noexcept { return v.VType() == varSQLTimeStamp; }
bool VarIsSQLTimeStampOffset(const Variant& v) noexcept {
  return v.VType() == varSQLTimeStampOffset;
}

void VarClear(Variant& v) { v.Clear(); }

// ---------------------------------------------------------------------------------------------
// Names

namespace {

const char* BaseTypeName(TVarType type) {
  switch (type) {
    case varEmpty: return "Empty";
    case varNull: return "Null";
    case varSmallint: return "Smallint";
    case varInteger: return "Integer";
    case varSingle: return "Single";
    case varDouble: return "Double";
    case varCurrency: return "Currency";
    case varDate: return "Date";
    case varOleStr: return "OleStr";
    case varDispatch: return "Dispatch";
    case varError: return "Error";
    case varBoolean: return "Boolean";
    case varVariant: return "Variant";
    case varUnknown: return "Unknown";
    case varShortInt: return "ShortInt";
    case varByte: return "Byte";
    case varWord: return "Word";
    case varLongWord: return "LongWord";
    case varInt64: return "Int64";
    case varUInt64: return "UInt64";
    case varString: return "String";
    case varUString: return "UnicodeString";
    case varFMTBcd: return "FMTBcdVariantType";
    case varSQLTimeStamp: return "SQLTimeStampVariantType";
    case varSQLTimeStampOffset: return "SQLTimeStampOffsetVariantType";
    case varObject: return "Object";
    default: return nullptr;
  }
}

}  // namespace

String VarTypeAsText(TVarType type) {
  const char* name = BaseTypeName(type & varTypeMask);
  if (!name || (type & ~(varTypeMask | varArray))) {
    String text(1, '$');
    return text += IntToHex(type, 4);
  }
  return (type & varArray) ? String("Array ") + name : String(name);
}

// ---------------------------------------------------------------------------------------------
// Printing

void PrintVariant(std::ostream& os, const Variant& v) {
  os << '(' << VarTypeAsText(v.VType()) << ')';
  const TVarType t = v.VType();
  if (t == varEmpty || t == varNull) return;
  if (t & varArray) {
    os << " {";
    const int32_t low = VarArrayLowBound(v, 1), high = VarArrayHighBound(v, 1);
    for (int32_t i = low; VarArrayDimCount(v) == 1 && i <= high; ++i)
      os << (i > low ? ", " : "") << VarArrayGet(v, {i});
    os << '}';
    return;
  }
  switch (t) {
    case varUnknown: os << ' ' << static_cast<const void*>(VariantAccess::Data(v).Intf); return;
    case varDispatch: os << ' ' << static_cast<const void*>(VariantAccess::Data(v).Disp); return;
    case varObject: os << ' ' << static_cast<const void*>(VariantAccess::Data(v).Obj); return;
    case varError: os << ' ' << VariantAccess::Data(v).I64; return;
    default: break;
  }
  os << (VarIsStr(v) ? " \"" : " ") << VarToStr(v) << (VarIsStr(v) ? "\"" : "");
}

std::ostream& operator<<(std::ostream& os, const Variant& v) {
  PrintVariant(os, v);
  return os;
}

void PrintTo(const Variant& v, std::ostream* os) { PrintVariant(*os, v); }

}  // namespace orv
