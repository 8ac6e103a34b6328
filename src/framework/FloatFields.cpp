// Floating-point fields: TFloatField and its currency, extended and single kinds.

#include <algorithm>
#include <cmath>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TFloatField) {
  p.Property("Currency", &TFloatField::GetCurrency, &TFloatField::SetCurrency).Default(false);
  p.Property("MaxValue", &TFloatField::GetMaxValue, &TFloatField::SetMaxValue);
  p.Property("MinValue", &TFloatField::GetMinValue, &TFloatField::SetMinValue);
  p.Property("Precision", &TFloatField::GetPrecision, &TFloatField::SetPrecision).Default(15);
}
ORV_PUBLISH(TCurrencyField) {
  p.Property("Currency", &TCurrencyField::GetCurrency, &TCurrencyField::SetCurrency).Default(true);
}
ORV_IMPLEMENT_CLASS(TExtendedField)
ORV_PUBLISH(TSingleField) {
  p.Property("Precision", &TSingleField::GetPrecision, &TSingleField::SetPrecision).Default(7);
}

TFloatField::TFloatField(TComponent* AOwner) : TNumericField(AOwner) { SetDataType(ftFloat); }

TCurrencyField::TCurrencyField(TComponent* AOwner) : TFloatField(AOwner) {
  SetDataType(ftCurrency);
  SetCurrency(true);
}

TExtendedField::TExtendedField(TComponent* AOwner) : TFloatField(AOwner) {
  SetDataType(ftExtended);
}

TSingleField::TSingleField(TComponent* AOwner) : TFloatField(AOwner) {
  SetDataType(ftSingle);
  FMaxPrecision = 7;
  SetPrecision(7);
}

int32_t TFloatField::GetDataSize() const { return sizeof(double); }
int32_t TSingleField::GetDataSize() const { return sizeof(float); }

void TFloatField::SetCurrency(bool Value) {
  if (Value == FCurrency) return;
  FCurrency = Value;
  PropertyChanged(false);
}

void TFloatField::SetPrecision(int32_t Value) {
  Value = std::clamp(Value, 2, FMaxPrecision);
  if (Value == FPrecision) return;
  FPrecision = Value;
  PropertyChanged(false);
}

void TFloatField::SetMinValue(double Value) { FMinValue = Value; }
void TFloatField::SetMaxValue(double Value) { FMaxValue = Value; }

void TFloatField::CheckRange(double Value) const {
  if ((FMinValue != 0 || FMaxValue != 0) && (Value < FMinValue || Value > FMaxValue))
    RangeError(Value, FMinValue, FMaxValue);
}

bool TFloatField::GetValue(double& Value) const {
  if (GetDataType() != ftSingle) return GetData(&Value);
  float single = 0;
  if (!GetData(&single)) return false;
  Value = single;
  return true;
}

double TFloatField::GetAsFloat() const {
  double value = 0;
  return GetValue(value) ? value : 0;
}

void TFloatField::SetAsFloat(double Value) {
  CheckRange(Value);
  if (GetDataType() == ftSingle)
    SetPlainData(static_cast<float>(Value));
  else
    SetPlainData(Value);
}

double TSingleField::GetAsFloat() const { return TFloatField::GetAsFloat(); }
void TSingleField::SetAsFloat(double Value) { TFloatField::SetAsFloat(Value); }

Currency TFloatField::GetAsCurrency() const { return Currency(GetAsFloat()); }
void TFloatField::SetAsCurrency(Currency Value) { SetAsFloat(Value.ToDouble()); }
int32_t TFloatField::GetAsInteger() const { return static_cast<int32_t>(GetAsLargeInt()); }
void TFloatField::SetAsInteger(int32_t Value) { SetAsFloat(Value); }
int64_t TFloatField::GetAsLargeInt() const {
  return static_cast<int64_t>(std::nearbyint(GetAsFloat()));
}
void TFloatField::SetAsLargeInt(int64_t Value) { SetAsFloat(static_cast<double>(Value)); }

String TFloatField::GetAsString() const {
  double value = 0;
  if (!GetValue(value)) return {};
  return GetDataType() == ftSingle ? FloatToStr(static_cast<float>(value)) : FloatToStr(value);
}

void TFloatField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  double number = 0;
  if (!TryStrToFloat(Value, number))
    DatabaseErrorFmt(SInvalidFloatValue, {Value, GetDisplayName()});
  SetAsFloat(number);
}

Variant TFloatField::GetAsVariant() const {
  double value = 0;
  if (!GetValue(value)) return Null();
  return GetDataType() == ftSingle ? Variant(static_cast<float>(value)) : Variant(value);
}

Variant TSingleField::GetAsVariant() const { return TFloatField::GetAsVariant(); }

void TFloatField::SetVarValue(const Variant& Value) { SetAsFloat(Value.AsDouble()); }

void TFloatField::GetText(String& Text, bool DisplayText) const {
  double value = 0;
  if (!GetValue(value)) return Text.clear();
  const String& format = TextFormat(DisplayText);
  if (!format.empty())
    Text = FormatFloat(format, value);
  else if (FCurrency)
    Text = FloatToStrF(value, DisplayText ? ffCurrency : ffFixed, FPrecision,
                       FormatSettings.CurrencyDecimals);
  else
    Text = FloatToStrF(value, ffGeneral, FPrecision, 0);
}

}  // namespace orv
