// Decimal fields: TBCDField (values held as Currency, scale up to 4) and TFMTBCDField (TBcd
// values of up to 64 digits).

#include <cmath>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TBCDField) {
  p.Property("Currency", &TBCDField::GetCurrency, &TBCDField::SetCurrency).Default(false);
  p.Property("MaxValue", &TBCDField::GetMaxValue, &TBCDField::SetMaxValue);
  p.Property("MinValue", &TBCDField::GetMinValue, &TBCDField::SetMinValue);
  p.Property("Precision", &TBCDField::GetPrecision, &TBCDField::SetPrecision).Default(0);
  p.Property("Size", &TBCDField::GetSize, &TBCDField::SetSize).Default(4);
}
ORV_PUBLISH(TFMTBCDField) {
  p.Property("Currency", &TFMTBCDField::GetCurrency, &TFMTBCDField::SetCurrency).Default(false);
  p.Property("MaxValue", &TFMTBCDField::GetMaxValue, &TFMTBCDField::SetMaxValue);
  p.Property("MinValue", &TFMTBCDField::GetMinValue, &TFMTBCDField::SetMinValue);
  p.Property("Precision", &TFMTBCDField::GetPrecision, &TFMTBCDField::SetPrecision).Default(15);
  p.Property("Size", &TFMTBCDField::GetSize, &TFMTBCDField::SetSize).Default(8);
}

namespace {

constexpr int32_t MaxCurrencyScale = 4;
// The whole numbers a Currency holds.
constexpr int64_t MaxCurrencyUnits = INT64_MAX / Currency::Scale;

// Currency, ffCurrency to show and ffFixed to edit, or the general layout.
TFloatFormat TextLayout(bool currency, bool displayText) {
  if (!currency) return ffGeneral;
  return displayText ? ffCurrency : ffFixed;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// TBCDField

TBCDField::TBCDField(TComponent* AOwner) : TNumericField(AOwner) {
  SetDataType(ftBCD);
  SetSize(4);
}

void TBCDField::CheckTypeSize(int32_t Value) const {
  if (Value < 0 || Value > MaxCurrencyScale) DatabaseError(SInvalidFieldSize);
}

int32_t TBCDField::GetDataSize() const { return sizeof(TBcd); }

void TBCDField::SetCurrency(bool Value) {
  if (Value == FCurrency) return;
  FCurrency = Value;
  PropertyChanged(false);
}

void TBCDField::SetPrecision(int32_t Value) {
  if (Value == FPrecision) return;
  FPrecision = Value;
  PropertyChanged(false);
}

void TBCDField::SetMinValue(Currency Value) { FMinValue = Value; }
void TBCDField::SetMaxValue(Currency Value) { FMaxValue = Value; }

bool TBCDField::GetValue(Currency& Value) const { return GetData(&Value, false); }

Currency TBCDField::GetAsCurrency() const {
  Currency value;
  return GetValue(value) ? value : Currency();
}

void TBCDField::SetAsCurrency(Currency Value) {
  const bool ranged = FMinValue != Currency() || FMaxValue != Currency();
  if (ranged && (Value < FMinValue || Value > FMaxValue))
    RangeError(Value.ToDouble(), FMinValue.ToDouble(), FMaxValue.ToDouble());
  SetPlainData(Value, false);
}

TBcd TBCDField::GetAsBCD() const {
  TBcd bcd;
  CurrToBCD(GetAsCurrency(), bcd);
  return bcd;
}

void TBCDField::SetAsBCD(const TBcd& Value) {
  Currency value;
  if (!BCDToCurr(Value, value)) DatabaseErrorFmt(SFieldOutOfRange, {GetDisplayName()});
  SetAsCurrency(value);
}

double TBCDField::GetAsFloat() const { return GetAsCurrency().ToDouble(); }
void TBCDField::SetAsFloat(double Value) { SetAsCurrency(Currency(Value)); }
int64_t TBCDField::GetAsLargeInt() const {
  return static_cast<int64_t>(std::nearbyint(GetAsCurrency().ToDouble()));
}
int32_t TBCDField::GetAsInteger() const { return static_cast<int32_t>(GetAsLargeInt()); }
void TBCDField::SetAsInteger(int32_t Value) { SetAsLargeInt(Value); }

void TBCDField::SetAsLargeInt(int64_t Value) {
  if (Value < -MaxCurrencyUnits || Value > MaxCurrencyUnits)
    RangeError(static_cast<double>(Value), static_cast<double>(-MaxCurrencyUnits),
               static_cast<double>(MaxCurrencyUnits));
  SetAsCurrency(Currency(Value));
}

String TBCDField::GetAsString() const {
  Currency value;
  return GetValue(value) ? CurrToStr(value) : String();
}

void TBCDField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  Currency number;
  if (!TryStrToCurr(Value, number)) DatabaseErrorFmt(SInvalidFloatValue, {Value, GetDisplayName()});
  SetAsCurrency(number);
}

Variant TBCDField::GetAsVariant() const {
  Currency value;
  return GetValue(value) ? Variant(value) : Null();
}

void TBCDField::SetVarValue(const Variant& Value) { SetAsCurrency(Value.AsCurrency()); }

void TBCDField::GetText(String& Text, bool DisplayText) const {
  Currency value;
  if (!GetValue(value)) return Text.clear();
  const String& format = TextFormat(DisplayText);
  if (!format.empty())
    Text = FormatCurr(format, value);
  else
    Text = CurrToStrF(value, TextLayout(FCurrency, DisplayText),
                      FCurrency ? FormatSettings.CurrencyDecimals : 0);
}

// ---------------------------------------------------------------------------------------------
// TFMTBCDField

TFMTBCDField::TFMTBCDField(TComponent* AOwner) : TNumericField(AOwner) {
  SetDataType(ftFMTBcd);
  SetSize(8);
}

void TFMTBCDField::CheckTypeSize(int32_t Value) const {
  if (Value < 0 || Value > MaxFMTBcdFractionSize) DatabaseError(SInvalidFieldSize);
}

int32_t TFMTBCDField::GetDataSize() const { return sizeof(TBcd); }

void TFMTBCDField::SetCurrency(bool Value) {
  if (Value == FCurrency) return;
  FCurrency = Value;
  PropertyChanged(false);
}

void TFMTBCDField::SetPrecision(int32_t Value) {
  if (Value == FPrecision) return;
  FPrecision = Value;
  PropertyChanged(false);
}

void TFMTBCDField::SetMinValue(const String& Value) { FMinValue = Value; }
void TFMTBCDField::SetMaxValue(const String& Value) { FMaxValue = Value; }

bool TFMTBCDField::GetValue(TBcd& Value) const { return GetData(&Value); }

TBcd TFMTBCDField::GetAsBCD() const {
  TBcd value;
  return GetValue(value) ? value : NullBcd;
}

void TFMTBCDField::SetAsBCD(const TBcd& Value) {
  if (!FMinValue.empty() || !FMaxValue.empty()) {
    const bool below = !FMinValue.empty() && BcdCompare(Value, StrToBcd(FMinValue)) < 0;
    const bool above = !FMaxValue.empty() && BcdCompare(Value, StrToBcd(FMaxValue)) > 0;
    if (below || above)
      RangeError(BcdToDouble(Value), FMinValue.empty() ? 0 : BcdToDouble(StrToBcd(FMinValue)),
                 FMaxValue.empty() ? 0 : BcdToDouble(StrToBcd(FMaxValue)));
  }
  SetData(&Value);
}

Currency TFMTBCDField::GetAsCurrency() const {
  Currency value;
  if (!BCDToCurr(GetAsBCD(), value)) DatabaseErrorFmt(SFieldOutOfRange, {GetDisplayName()});
  return value;
}

void TFMTBCDField::SetAsCurrency(Currency Value) {
  TBcd bcd;
  CurrToBCD(Value, bcd);
  SetAsBCD(bcd);
}

double TFMTBCDField::GetAsFloat() const { return BcdToDouble(GetAsBCD()); }
void TFMTBCDField::SetAsFloat(double Value) { SetAsBCD(DoubleToBcd(Value)); }
int64_t TFMTBCDField::GetAsLargeInt() const { return BcdToInt64(GetAsBCD()); }
void TFMTBCDField::SetAsLargeInt(int64_t Value) { SetAsBCD(IntegerToBcd(Value)); }
int32_t TFMTBCDField::GetAsInteger() const { return static_cast<int32_t>(GetAsLargeInt()); }
void TFMTBCDField::SetAsInteger(int32_t Value) { SetAsLargeInt(Value); }

String TFMTBCDField::GetAsString() const {
  TBcd value;
  return GetValue(value) ? BcdToStr(value) : String();
}

void TFMTBCDField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  TBcd number;
  if (!TryStrToBcd(Value, number)) DatabaseErrorFmt(SInvalidFloatValue, {Value, GetDisplayName()});
  SetAsBCD(number);
}

Variant TFMTBCDField::GetAsVariant() const {
  TBcd value;
  return GetValue(value) ? VarFMTBcdCreate(value) : Null();
}

void TFMTBCDField::SetVarValue(const Variant& Value) { SetAsBCD(VarToBcd(Value)); }

void TFMTBCDField::GetText(String& Text, bool DisplayText) const {
  TBcd value;
  if (!GetValue(value)) return Text.clear();
  const String& format = TextFormat(DisplayText);
  Currency money;
  if (!format.empty())
    Text = FormatFloat(format, BcdToDouble(value));
  else if (FCurrency && BCDToCurr(value, money))
    Text = CurrToStrF(money, TextLayout(true, DisplayText), FormatSettings.CurrencyDecimals);
  else
    Text = BcdToStr(value);
}

}  // namespace orv
