// Variant comparison: the platform's rules for equal and ordered values across kinds.

#include "VariantBlocks.h"

namespace orv {

using detail::ArrayBlock;
using detail::ArrayElement;
using detail::VariantAccess;

namespace {

using Int128 = __int128;

// How a kind takes part in a comparison.
enum class CompareClass { Text, Integer, Currency, Float, Decimal, TimeStamp, TimeStampOffset,
                          Reference, Array, Other };

CompareClass ClassOf(TVarType t) {
  if (t & varArray) return CompareClass::Array;
  switch (t) {
    case varString:
    case varOleStr:
    case varUString: return CompareClass::Text;
    case varSmallint: case varInteger: case varShortInt: case varInt64: case varByte:
    case varWord: case varLongWord: case varUInt64: case varBoolean:
      return CompareClass::Integer;
    case varCurrency: return CompareClass::Currency;
    case varSingle:
    case varDouble:
    case varDate: return CompareClass::Float;
    case varFMTBcd: return CompareClass::Decimal;
    case varSQLTimeStamp: return CompareClass::TimeStamp;
    case varSQLTimeStampOffset: return CompareClass::TimeStampOffset;
    case varObject:
    case varUnknown:
    case varDispatch: return CompareClass::Reference;
    default: return CompareClass::Other;
  }
}

template <class T>
TVariantRelationship Order(const T& a, const T& b) {
  if (a < b) return vrLessThan;
  if (b < a) return vrGreaterThan;
  return a == b ? vrEqual : vrNotEqual;  // NaN is neither
}

Int128 IntegerOf(const Variant& v) {
  const auto& d = VariantAccess::Data(v);
  switch (v.VType()) {
    case varBoolean: return d.Bool ? -1 : 0;
    case varByte: case varWord: case varLongWord: case varUInt64: return d.U64;
    default: return d.I64;
  }
}

// The raw currency units of an integer or currency value, exact in 128 bits.
Int128 CurrencyUnitsOf(const Variant& v) {
  if (v.VType() == varCurrency) return VariantAccess::Data(v).I64;
  return IntegerOf(v) * Currency::Scale;
}

TVariantRelationship CompareText(const Variant& a, const Variant& b) {
  if (a.VType() == varString && b.VType() == varString)
    return Order(a.StrView().compare(b.StrView()), 0);
  return Order(a.AsWideString().compare(b.AsWideString()), 0);
}

int64_t TimeStampKey(const TSQLTimeStamp& ts) {
  return ((((int64_t(ts.Year) * 13 + ts.Month) * 32 + ts.Day) * 24 + ts.Hour) * 60 + ts.Minute) *
             60000 + int64_t(ts.Second) * 1000 + ts.Fractions;
}

int64_t InstantKey(const TSQLTimeStampOffset& ts) {
  const TSQLTimeStampOffset utc = ConvertSQLTimeStampOffset(ts, 0, 0);
  return TimeStampKey({utc.Year, utc.Month, utc.Day, utc.Hour, utc.Minute, utc.Second,
                       utc.Fractions});
}

TVariantRelationship CompareReferences(const Variant& a, const Variant& b) {
  const auto& da = VariantAccess::Data(a);
  const auto& db = VariantAccess::Data(b);
  if (a.VType() == varObject || b.VType() == varObject)
    return a.VType() == b.VType() && da.Obj == db.Obj ? vrEqual : vrNotEqual;
  // Interfaces are the same when they reach the same object, whichever interface holds it.
  return a.AsInterface() == b.AsInterface() ? vrEqual : vrNotEqual;
}

TVariantRelationship CompareArrays(const Variant& a, const Variant& b) {
  if (ClassOf(b.VType()) != CompareClass::Array) return vrNotEqual;
  const auto& x = VariantAccess::Block<ArrayBlock>(a);
  const auto& y = VariantAccess::Block<ArrayBlock>(b);
  if (x.Dims.size() != y.Dims.size()) return vrNotEqual;
  size_t count = 1;
  for (size_t i = 0; i < x.Dims.size(); ++i) {
    if (x.Dims[i].Low != y.Dims[i].Low || x.Dims[i].Count != y.Dims[i].Count) return vrNotEqual;
    count *= x.Dims[i].Count;
  }
  for (size_t i = 0; i < count; ++i)
    if (VarCompareValue(ArrayElement(x, i), ArrayElement(y, i)) != vrEqual) return vrNotEqual;
  return vrEqual;
}

// Two values of classes that both hold numbers, dates or time stamps.
TVariantRelationship CompareValues(const Variant& a, const Variant& b) {
  const CompareClass ca = ClassOf(a.VType()), cb = ClassOf(b.VType());
  using C = CompareClass;
  if (ca == C::TimeStamp && cb == C::TimeStamp)
    return Order(TimeStampKey(a.AsSQLTimeStamp()), TimeStampKey(b.AsSQLTimeStamp()));
  if ((ca == C::TimeStampOffset || ca == C::TimeStamp) &&
      (cb == C::TimeStampOffset || cb == C::TimeStamp))
    return Order(InstantKey(a.AsSQLTimeStampOffset()), InstantKey(b.AsSQLTimeStampOffset()));
  if (ca == C::Float || cb == C::Float || ca == C::TimeStamp || cb == C::TimeStamp ||
      ca == C::TimeStampOffset || cb == C::TimeStampOffset)
    return Order(a.AsDouble(), b.AsDouble());
  if (ca == C::Decimal || cb == C::Decimal) return Order(BcdCompare(a.AsBcd(), b.AsBcd()), 0);
  if (ca == C::Currency || cb == C::Currency) return Order(CurrencyUnitsOf(a), CurrencyUnitsOf(b));
  return Order(IntegerOf(a), IntegerOf(b));
}

// Text against a value of another kind: the text converted to that kind. An integer side takes
// the text as a double, so that "1.5" is not rounded before it is compared.
Variant TextAs(const Variant& text, const Variant& other) {
  const TVarType t = other.VType();
  switch (ClassOf(t)) {
    case CompareClass::Integer: return t == varBoolean ? Variant(text.AsBoolean())
                                                       : Variant(text.AsDouble());
    case CompareClass::Float: return VarAsType(text, t == varDate ? varDate : varDouble);
    default: return VarAsType(text, t);
  }
}

TVariantRelationship CompareAssigned(const Variant& a, const Variant& b) {
  const CompareClass ca = ClassOf(a.VType()), cb = ClassOf(b.VType());
  using C = CompareClass;
  if (ca == C::Array) return CompareArrays(a, b);
  if (cb == C::Array) return vrNotEqual;
  if (ca == C::Reference || cb == C::Reference)
    return ca == cb ? CompareReferences(a, b) : vrNotEqual;
  if (ca == C::Other || cb == C::Other)
    return a.VType() == b.VType() && VariantAccess::Data(a).I64 == VariantAccess::Data(b).I64
               ? vrEqual : vrNotEqual;
  if (ca == C::Text && cb == C::Text) return CompareText(a, b);
  if (ca == C::Text) return CompareValues(TextAs(a, b), b);
  if (cb == C::Text) return CompareValues(a, TextAs(b, a));
  return CompareValues(a, b);
}

// The empty value of a kind, as Unassigned converts to it.
Variant EmptyOf(TVarType t) {
  if ((t & varArray) || t == varError) return Variant();
  return VarAsType(Variant(), t);
}

}  // namespace

TVariantRelationship VarCompareValue(const Variant& a, const Variant& b) {
  const TVarType ta = a.VType(), tb = b.VType();
  if (ta == varNull || tb == varNull)
    return ta == tb ? vrEqual : ta == varNull ? vrLessThan : vrGreaterThan;
  if (ta == varEmpty && tb == varEmpty) return vrEqual;
  if (ta == varEmpty) {
    const Variant empty = EmptyOf(tb);
    return empty.VType() == varEmpty ? vrNotEqual : CompareAssigned(empty, b);
  }
  if (tb == varEmpty) {
    const Variant empty = EmptyOf(ta);
    return empty.VType() == varEmpty ? vrNotEqual : CompareAssigned(a, empty);
  }
  return CompareAssigned(a, b);
}

bool VarSameValue(const Variant& a, const Variant& b) {
  if (a.VType() == varEmpty || a.VType() == varNull || b.VType() == varEmpty ||
      b.VType() == varNull)
    return a.VType() == b.VType();
  return VarCompareValue(a, b) == vrEqual;
}

bool operator==(const Variant& a, const Variant& b) { return VarCompareValue(a, b) == vrEqual; }

std::partial_ordering operator<=>(const Variant& a, const Variant& b) {
  switch (VarCompareValue(a, b)) {
    case vrEqual: return std::partial_ordering::equivalent;
    case vrLessThan: return std::partial_ordering::less;
    case vrGreaterThan: return std::partial_ordering::greater;
    default: return std::partial_ordering::unordered;
  }
}

}  // namespace orv
