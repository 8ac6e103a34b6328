// The Variant's coercions: every kind to every kind it converts to, under the current
// FormatSettings, with the platform's range checks and error texts.

#include <cfloat>
#include <cmath>
#include <limits>

#include "VariantBlocks.h"

namespace orv {

using detail::NativeTextBlock;
using detail::RaiseCastError;
using detail::RaiseOverflowError;
using detail::ValueBlock;
using detail::VariantAccess;
using detail::WideTextBlock;

namespace detail {

void RaiseCastError(TVarType from, TVarType to) {
  throw EVariantTypeCastError("Could not convert variant of type (" + VarTypeAsText(from) +
                              ") into type (" + VarTypeAsText(to) + ")");
}

void RaiseOverflowError(TVarType from, TVarType to) {
  throw EVariantOverflowError("Overflow while converting variant of type (" +
                              VarTypeAsText(from) + ") into type (" + VarTypeAsText(to) + ")");
}

String TextOf(const Variant& v) {
  if (v.VType() == varString) return String(v.StrView());
  return Utf16ToUtf8(WideString(v.WideStrView()));
}

}  // namespace detail

namespace {

using Int128 = __int128;

// Unassigned converts to the empty value of every kind; Null too, unless NullStrictConvert.
bool IsEmptyFor(const Variant& v, TVarType to) {
  if (v.VType() == varEmpty) return true;
  if (v.VType() != varNull) return false;
  if (NullStrictConvert) RaiseCastError(varNull, to);
  return true;
}

const TBcd& BcdOf(const Variant& v) { return VariantAccess::Block<ValueBlock<TBcd>>(v).Value; }
const TSQLTimeStamp& TimeStampOf(const Variant& v) {
  return VariantAccess::Block<ValueBlock<TSQLTimeStamp>>(v).Value;
}
const TSQLTimeStampOffset& TimeStampOffsetOf(const Variant& v) {
  return VariantAccess::Block<ValueBlock<TSQLTimeStampOffset>>(v).Value;
}

bool IsSignedKind(TVarType t) {
  return t == varSmallint || t == varInteger || t == varShortInt || t == varInt64;
}
bool IsUnsignedKind(TVarType t) {
  return t == varByte || t == varWord || t == varLongWord || t == varUInt64;
}

// Half to even, as the platform's Round does.
Int128 RoundToInteger(double x, TVarType from, TVarType to) {
  constexpr double limit = 18446744073709551616.0;  // 2^64
  if (!std::isfinite(x) || x >= limit || x <= -limit) RaiseOverflowError(from, to);
  return static_cast<Int128>(std::nearbyint(x));
}

Int128 DivideRoundEven(Int128 num, Int128 den) {
  Int128 q = num / den, r = num % den;
  const Int128 twice = (r < 0 ? -r : r) * 2;
  if (twice > den || (twice == den && (q & 1))) q += num < 0 ? -1 : 1;
  return q;
}

Int128 ParseInteger(const String& text, TVarType from, TVarType to) {
  int64_t i;
  uint64_t u;
  double f;
  bool b;
  if (TryStrToInt64(text, i)) return i;
  if (TryStrToUInt64(text, u)) return u;
  if (TryStrToFloat(text, f)) return RoundToInteger(f, from, to);
  if (TryStrToBool(text, b)) return b ? -1 : 0;
  RaiseCastError(from, to);
}

Int128 BcdToInteger(const TBcd& bcd, TVarType to) {
  TBcd rounded;
  int64_t i;
  uint64_t u;
  if (NormalizeBcd(bcd, rounded, MaxFMTBcdFractionSize, 0)) {
    const String text = BcdToStr(rounded);
    if (TryStrToInt64(text, i)) return i;
    if (TryStrToUInt64(text, u)) return u;
  }
  RaiseOverflowError(varFMTBcd, to);
}

// Any kind that has an integer value, before the range check of the target.
Int128 ToInteger(const Variant& v, TVarType to) {
  const auto& d = VariantAccess::Data(v);
  const TVarType t = v.VType();
  if (IsSignedKind(t)) return d.I64;
  if (IsUnsignedKind(t)) return d.U64;
  switch (t) {
    case varBoolean: return d.Bool ? -1 : 0;
    case varSingle: return RoundToInteger(d.Sgl, t, to);
    case varDouble:
    case varDate: return RoundToInteger(d.Dbl, t, to);
    case varCurrency: return DivideRoundEven(d.I64, Currency::Scale);
    case varFMTBcd: return BcdToInteger(BcdOf(v), to);
    case varString:
    case varOleStr:
    case varUString: return ParseInteger(detail::TextOf(v), t, to);
    case varSQLTimeStamp: return RoundToInteger(SQLTimeStampToDateTime(TimeStampOf(v)), t, to);
    case varSQLTimeStampOffset:
      return RoundToInteger(SQLTimeStampOffsetToDateTime(TimeStampOffsetOf(v)), t, to);
    case varObject: return static_cast<Int128>(reinterpret_cast<uintptr_t>(d.Obj));
    default: RaiseCastError(t, to);
  }
}

template <class I>
I ToIntegerOf(const Variant& v) {
  constexpr TVarType to = detail::IntegerVarType<I>();
  if (IsEmptyFor(v, to)) return 0;
  const Int128 x = ToInteger(v, to);
  if (x < std::numeric_limits<I>::min() || x > std::numeric_limits<I>::max())
    RaiseOverflowError(v.VType(), to);
  return static_cast<I>(x);
}

double ParseDouble(const String& text, TVarType from, TVarType to) {
  double f;
  bool b;
  if (TryStrToFloat(text, f)) return f;
  if (TryStrToBool(text, b)) return b ? -1 : 0;
  RaiseCastError(from, to);
}

double ToDouble(const Variant& v, TVarType to) {
  const auto& d = VariantAccess::Data(v);
  const TVarType t = v.VType();
  if (IsSignedKind(t)) return static_cast<double>(d.I64);
  if (IsUnsignedKind(t)) return static_cast<double>(d.U64);
  switch (t) {
    case varBoolean: return d.Bool ? -1 : 0;
    case varSingle: return d.Sgl;
    case varDouble:
    case varDate: return d.Dbl;
    case varCurrency: return Currency::FromRaw(d.I64).ToDouble();
    case varFMTBcd: return BcdToDouble(BcdOf(v));
    case varString:
    case varOleStr:
    case varUString: return ParseDouble(detail::TextOf(v), t, to);
    case varSQLTimeStamp: return SQLTimeStampToDateTime(TimeStampOf(v));
    case varSQLTimeStampOffset: return SQLTimeStampOffsetToDateTime(TimeStampOffsetOf(v));
    default: RaiseCastError(t, to);
  }
}

Currency CurrencyFromDouble(double x, TVarType from) {
  const double scaled = x * Currency::Scale;
  if (!std::isfinite(scaled) || scaled >= 9223372036854775807.0 ||
      scaled < -9223372036854775808.0)
    RaiseOverflowError(from, varCurrency);
  return Currency(x);
}

Currency CurrencyFromInteger(Int128 x, TVarType from) {
  const Int128 raw = x * Currency::Scale;
  if (raw > std::numeric_limits<int64_t>::max() || raw < std::numeric_limits<int64_t>::min())
    RaiseOverflowError(from, varCurrency);
  return Currency::FromRaw(static_cast<int64_t>(raw));
}

Currency ParseCurrency(const String& text, TVarType from) {
  Currency c;
  double f;
  bool b;
  if (TryStrToCurr(text, c)) return c;
  if (TryStrToFloat(text, f)) return CurrencyFromDouble(f, from);
  if (TryStrToBool(text, b)) return b ? -1 : 0;
  RaiseCastError(from, varCurrency);
}

TBcd ParseBcd(const String& text, TVarType from) {
  TBcd bcd;
  bool b;
  if (TryStrToBcd(text, bcd)) return bcd;
  if (TryStrToBool(text, b)) return IntegerToBcd(b ? -1 : 0);
  RaiseCastError(from, varFMTBcd);
}

bool IsTextKind(TVarType t) { return t == varString || t == varOleStr || t == varUString; }

// Dates, numbers and time stamps: what converts to a date through its number of days.
bool HasDateValue(TVarType t) {
  return IsSignedKind(t) || IsUnsignedKind(t) || t == varSingle || t == varDouble ||
         t == varDate || t == varCurrency || t == varFMTBcd || t == varSQLTimeStamp ||
         t == varSQLTimeStampOffset;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Numbers

int32_t Variant::AsInteger() const {
  if (FType == varInteger) return static_cast<int32_t>(FData.I64);
  return ToIntegerOf<int32_t>(*this);
}
int64_t Variant::AsInt64() const { return ToIntegerOf<int64_t>(*this); }
uint64_t Variant::AsUInt64() const { return ToIntegerOf<uint64_t>(*this); }
int16_t Variant::AsSmallint() const { return ToIntegerOf<int16_t>(*this); }
int8_t Variant::AsShortInt() const { return ToIntegerOf<int8_t>(*this); }
uint8_t Variant::AsByte() const { return ToIntegerOf<uint8_t>(*this); }
uint16_t Variant::AsWord() const { return ToIntegerOf<uint16_t>(*this); }
uint32_t Variant::AsLongWord() const { return ToIntegerOf<uint32_t>(*this); }

bool Variant::AsBoolean() const {
  if (IsEmptyFor(*this, varBoolean)) return false;
  if (IsSignedKind(FType)) return FData.I64 != 0;
  if (IsUnsignedKind(FType)) return FData.U64 != 0;
  switch (FType) {
    case varBoolean: return FData.Bool;
    case varSingle: return FData.Sgl != 0;
    case varDouble:
    case varDate: return FData.Dbl != 0;
    case varCurrency: return FData.I64 != 0;
    case varFMTBcd: return BcdCompare(BcdOf(*this), NullBcd) != 0;
    case varString:
    case varOleStr:
    case varUString: {
      bool b;
      if (TryStrToBool(detail::TextOf(*this), b)) return b;
      break;
    }
    default: break;
  }
  RaiseCastError(FType, varBoolean);
}

float Variant::AsSingle() const {
  if (FType == varSingle) return FData.Sgl;
  if (IsEmptyFor(*this, varSingle)) return 0;
  const double x = ToDouble(*this, varSingle);
  if (std::isfinite(x) && std::fabs(x) > FLT_MAX) RaiseOverflowError(FType, varSingle);
  return static_cast<float>(x);
}

double Variant::AsDouble() const {
  if (FType == varDouble) return FData.Dbl;
  if (IsEmptyFor(*this, varDouble)) return 0;
  return ToDouble(*this, varDouble);
}

Currency Variant::AsCurrency() const {
  if (IsEmptyFor(*this, varCurrency)) return Currency();
  if (IsSignedKind(FType) || IsUnsignedKind(FType) || FType == varBoolean)
    return CurrencyFromInteger(ToInteger(*this, varCurrency), FType);
  switch (FType) {
    case varCurrency: return Currency::FromRaw(FData.I64);
    case varFMTBcd: {
      Currency c;
      if (!BCDToCurr(BcdOf(*this), c)) RaiseOverflowError(FType, varCurrency);
      return c;
    }
    case varString:
    case varOleStr:
    case varUString: return ParseCurrency(detail::TextOf(*this), FType);
    default: return CurrencyFromDouble(ToDouble(*this, varCurrency), FType);
  }
}

TDateTime Variant::AsDateTime() const {
  if (IsEmptyFor(*this, varDate)) return TDateTime();
  if (IsTextKind(FType)) {
    const String text = detail::TextOf(*this);
    TDateTime dt;
    double days;
    if (TryStrToDateTime(text, dt)) return dt;
    if (TryStrToFloat(text, days)) return days;
    RaiseCastError(FType, varDate);
  }
  if (FType == varBoolean) RaiseCastError(FType, varDate);
  return ToDouble(*this, varDate);
}

TBcd Variant::AsBcd() const {
  if (IsEmptyFor(*this, varFMTBcd)) return NullBcd;
  if (IsSignedKind(FType)) return IntegerToBcd(FData.I64);
  switch (FType) {
    case varFMTBcd: return BcdOf(*this);
    case varBoolean: return IntegerToBcd(FData.Bool ? -1 : 0);
    case varCurrency: {
      TBcd bcd;
      CurrToBCD(Currency::FromRaw(FData.I64), bcd);
      return bcd;
    }
    // A float has 7 significant digits, not the 15 of a double.
    case varSingle: return StrToBcd(FloatToStr(FData.Sgl, TFormatSettings::Invariant()),
                                    TFormatSettings::Invariant());
    case varString:
    case varOleStr:
    case varUString: return ParseBcd(detail::TextOf(*this), FType);
    default: break;
  }
  if (IsUnsignedKind(FType))
    return StrToBcd(UIntToStr(FData.U64), TFormatSettings::Invariant());
  return DoubleToBcd(ToDouble(*this, varFMTBcd));
}

// ---------------------------------------------------------------------------------------------
// Text

String Variant::AsString() const {
  if (FType == varString) return String(StrView());
  if (IsEmptyFor(*this, varString)) return String();
  if (IsSignedKind(FType)) return IntToStr(FData.I64);
  if (IsUnsignedKind(FType)) return UIntToStr(FData.U64);
  switch (FType) {
    case varOleStr:
    case varUString: return detail::TextOf(*this);
    case varBoolean: return BoolToStr(FData.Bool, true);
    case varSingle: return FloatToStr(FData.Sgl);
    case varDouble: return FloatToStr(FData.Dbl);
    case varCurrency: return CurrToStr(Currency::FromRaw(FData.I64));
    case varDate: return DateTimeToStr(FData.Dbl);
    case varFMTBcd: return BcdToStr(BcdOf(*this));
    case varSQLTimeStamp: return SQLTimeStampToStr("", TimeStampOf(*this));
    case varSQLTimeStampOffset: return SQLTimeStampOffsetToStr("", TimeStampOffsetOf(*this));
    default: RaiseCastError(FType, varString);
  }
}

WideString Variant::AsWideString() const {
  if (FType == varOleStr || FType == varUString) return WideString(WideStrView());
  if (IsEmptyFor(*this, varOleStr)) return WideString();
  if (!VarIsStr(*this) && !VarIsNumeric(*this) && !HasDateValue(FType))
    RaiseCastError(FType, varOleStr);
  return Utf8ToUtf16(AsString());
}

String VarToStr(const Variant& v) { return VarToStrDef(v, String()); }
WideString VarToWideStr(const Variant& v) { return VarToWideStrDef(v, WideString()); }

String VarToStrDef(const Variant& v, const String& def) {
  return v.VType() == varNull ? def : v.AsString();
}

WideString VarToWideStrDef(const Variant& v, const WideString& def) {
  return v.VType() == varNull ? def : v.AsWideString();
}

// ---------------------------------------------------------------------------------------------
// Time stamps

TSQLTimeStamp Variant::AsSQLTimeStamp() const {
  if (IsEmptyFor(*this, varSQLTimeStamp)) return NullSQLTimeStamp;
  if (FType == varSQLTimeStamp) return TimeStampOf(*this);
  if (FType == varSQLTimeStampOffset)
    return SQLTimeStampOffsetToSQLTimeStamp(TimeStampOffsetOf(*this));
  if (IsTextKind(FType)) {
    TSQLTimeStamp ts;
    if (TryStrToSQLTimeStamp(detail::TextOf(*this), ts)) return ts;
  } else if (HasDateValue(FType)) {
    return DateTimeToSQLTimeStamp(ToDouble(*this, varSQLTimeStamp));
  }
  RaiseCastError(FType, varSQLTimeStamp);
}

TSQLTimeStampOffset Variant::AsSQLTimeStampOffset() const {
  if (IsEmptyFor(*this, varSQLTimeStampOffset)) return NullSQLTimeStampOffset;
  if (FType == varSQLTimeStampOffset) return TimeStampOffsetOf(*this);
  if (FType == varSQLTimeStamp) return SQLTimeStampToSQLTimeStampOffset(TimeStampOf(*this));
  if (IsTextKind(FType)) {
    TSQLTimeStampOffset ts;
    if (TryStrToSQLTimeStampOffset(detail::TextOf(*this), ts)) return ts;
  } else if (HasDateValue(FType)) {
    return DateTimeToSQLTimeStampOffset(ToDouble(*this, varSQLTimeStampOffset));
  }
  RaiseCastError(FType, varSQLTimeStampOffset);
}

// ---------------------------------------------------------------------------------------------
// References

IInterfacePtr Variant::AsInterface() const {
  if (IsEmptyFor(*this, varUnknown)) return nullptr;
  if (FType == varUnknown) return IInterfacePtr(FData.Intf);
  if (FType == varDispatch) return IInterfacePtr(FData.Disp);
  RaiseCastError(FType, varUnknown);
}

IDispatchPtr Variant::AsDispatch() const {
  if (IsEmptyFor(*this, varDispatch)) return nullptr;
  if (FType == varDispatch) return IDispatchPtr(FData.Disp);
  if (FType == varUnknown) {
    if (!FData.Intf) return nullptr;
    if (auto* disp = dynamic_cast<IDispatch*>(FData.Intf)) return IDispatchPtr(disp);
  }
  RaiseCastError(FType, varDispatch);
}

TObject* Variant::AsObject() const {
  if (IsEmptyFor(*this, varObject)) return nullptr;
  if (FType == varObject) return FData.Obj;
  if (FType == varInt64 || FType == varUInt64 || FType == varInteger || FType == varLongWord)
    return reinterpret_cast<TObject*>(static_cast<uintptr_t>(FData.U64));
  RaiseCastError(FType, varObject);
}

// ---------------------------------------------------------------------------------------------
// VarAsType

Variant VarAsType(const Variant& v, TVarType type) {
  if (v.VType() == type) return v;
  switch (type) {
    case varEmpty: return Variant();
    case varNull: return Null();
    case varVariant: return v;
    case varSmallint: return v.AsSmallint();
    case varInteger: return v.AsInteger();
    case varSingle: return v.AsSingle();
    case varDouble: return v.AsDouble();
    case varCurrency: return v.AsCurrency();
    case varDate: return v.AsDateTime();
    case varBoolean: return v.AsBoolean();
    case varShortInt: return v.AsShortInt();
    case varByte: return v.AsByte();
    case varWord: return v.AsWord();
    case varLongWord: return v.AsLongWord();
    case varInt64: return v.AsInt64();
    case varUInt64: return v.AsUInt64();
    case varString: return v.AsString();
    case varOleStr: return v.AsWideString();
    case varUString: {
      const WideString text = v.AsWideString();
      return VariantAccess::MakeBlock(varUString, WideTextBlock::Create(text));
    }
    case varFMTBcd: return v.AsBcd();
    case varSQLTimeStamp: return v.AsSQLTimeStamp();
    case varSQLTimeStampOffset: return v.AsSQLTimeStampOffset();
    case varUnknown: return v.AsInterface();
    case varDispatch: return v.AsDispatch();
    case varObject: return Variant(v.AsObject());
    case varError: RaiseCastError(v.VType(), type);
    default: break;
  }
  if ((type & varArray) && VarTypeAsText(type).front() != '$') RaiseCastError(v.VType(), type);
  throw EVariantBadVarTypeError("Invalid variant type");
}

}  // namespace orv
