// Whole numbers: TNumericField (formats and alignment), the integer fields of 8 to 32 bits with
// their ranges, TLongWordField and TLargeintField.

#include <cmath>
#include <cstring>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TNumericField) {
  p.Property("Alignment", &TNumericField::GetAlignment, &TNumericField::SetAlignment)
      .Default(taRightJustify);
  p.Property("DisplayFormat", &TNumericField::GetDisplayFormat, &TNumericField::SetDisplayFormat);
  p.Property("EditFormat", &TNumericField::GetEditFormat, &TNumericField::SetEditFormat);
  p.Property("EditMask", &TNumericField::GetEditMask, &TNumericField::SetEditMask);
}
ORV_PUBLISH(TIntegerField) {
  p.Property("MaxValue", &TIntegerField::GetMaxValue, &TIntegerField::SetMaxValue).Default(0);
  p.Property("MinValue", &TIntegerField::GetMinValue, &TIntegerField::SetMinValue).Default(0);
}
ORV_IMPLEMENT_CLASS(TSmallintField)
ORV_IMPLEMENT_CLASS(TShortintField)
ORV_IMPLEMENT_CLASS(TWordField)
ORV_IMPLEMENT_CLASS(TByteField)
ORV_IMPLEMENT_CLASS(TAutoIncField)
ORV_IMPLEMENT_CLASS(TLongWordField)
ORV_IMPLEMENT_CLASS(TLargeintField)

namespace {

bool IsFractional(TFieldType type) {
  switch (type) {
    case ftFloat:
    case ftCurrency:
    case ftExtended:
    case ftSingle:
    case ftBCD:
    case ftFMTBcd: return true;
    default: return false;
  }
}

template <class T>
T Load(const unsigned char* data) {
  T value;
  std::memcpy(&value, data, sizeof(T));
  return value;
}

// Rounds half to even, as the platform's Round does.
int64_t RoundToInt64(double value) { return static_cast<int64_t>(std::nearbyint(value)); }

bool FitsInt64(double value) {
  return std::isfinite(value) && value >= -9223372036854775808.0 && value < 9223372036854775808.0;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// TNumericField

TNumericField::TNumericField(TComponent* AOwner) : TField(AOwner) { SetAlignment(taRightJustify); }

void TNumericField::SetDisplayFormat(const String& Value) {
  if (Value == FDisplayFormat) return;
  FDisplayFormat = Value;
  PropertyChanged(false);
}

void TNumericField::SetEditFormat(const String& Value) {
  if (Value == FEditFormat) return;
  FEditFormat = Value;
  PropertyChanged(false);
}

const String& TNumericField::TextFormat(bool DisplayText) const {
  return DisplayText || FEditFormat.empty() ? FDisplayFormat : FEditFormat;
}

bool TNumericField::IsValidChar(char InputChar) const {
  if ((InputChar >= '0' && InputChar <= '9') || InputChar == '+' || InputChar == '-') return true;
  return IsFractional(GetDataType()) &&
         (InputChar == FormatSettings.DecimalSeparator || InputChar == 'E' || InputChar == 'e');
}

void TNumericField::RangeError(double Value, double Min, double Max) const {
  DatabaseErrorFmt(SFieldRangeError, {Value, GetDisplayName(), Min, Max});
}

// ---------------------------------------------------------------------------------------------
// TIntegerField and its narrower kinds: the buffer is as wide as the data type

TIntegerField::TIntegerField(TComponent* AOwner) : TNumericField(AOwner) { SetDataType(ftInteger); }

TSmallintField::TSmallintField(TComponent* AOwner) : TIntegerField(AOwner) {
  SetDataType(ftSmallint);
  FMinRange = INT16_MIN;
  FMaxRange = INT16_MAX;
}

TShortintField::TShortintField(TComponent* AOwner) : TIntegerField(AOwner) {
  SetDataType(ftShortint);
  FMinRange = INT8_MIN;
  FMaxRange = INT8_MAX;
}

TWordField::TWordField(TComponent* AOwner) : TIntegerField(AOwner) {
  SetDataType(ftWord);
  FMinRange = 0;
  FMaxRange = UINT16_MAX;
}

TByteField::TByteField(TComponent* AOwner) : TIntegerField(AOwner) {
  SetDataType(ftByte);
  FMinRange = 0;
  FMaxRange = UINT8_MAX;
}

TAutoIncField::TAutoIncField(TComponent* AOwner) : TIntegerField(AOwner) { SetDataType(ftAutoInc); }

int32_t TIntegerField::GetDataSize() const { return sizeof(int32_t); }
int32_t TSmallintField::GetDataSize() const { return sizeof(int16_t); }
int32_t TShortintField::GetDataSize() const { return sizeof(int8_t); }
int32_t TWordField::GetDataSize() const { return sizeof(uint16_t); }
int32_t TByteField::GetDataSize() const { return sizeof(uint8_t); }

void TIntegerField::SetMinValue(int32_t Value) { FMinValue = Value; }
void TIntegerField::SetMaxValue(int32_t Value) { FMaxValue = Value; }

bool TIntegerField::GetValue(int32_t& Value) const {
  unsigned char data[sizeof(int32_t)] = {};
  if (!GetData(data)) return false;
  switch (GetDataType()) {
    case ftSmallint: Value = Load<int16_t>(data); break;
    case ftWord: Value = Load<uint16_t>(data); break;
    case ftShortint: Value = Load<int8_t>(data); break;
    case ftByte: Value = Load<uint8_t>(data); break;
    default: Value = Load<int32_t>(data); break;
  }
  return true;
}

void TIntegerField::CheckRange(int64_t Value) const {
  if (FMinValue != 0 || FMaxValue != 0) {
    if (Value < FMinValue || Value > FMaxValue)
      RangeError(static_cast<double>(Value), FMinValue, FMaxValue);
  } else if (Value < FMinRange || Value > FMaxRange) {
    RangeError(static_cast<double>(Value), FMinRange, FMaxRange);
  }
}

int32_t TIntegerField::GetAsInteger() const {
  int32_t value = 0;
  return GetValue(value) ? value : 0;
}

void TIntegerField::SetAsInteger(int32_t Value) { SetAsLargeInt(Value); }

int64_t TIntegerField::GetAsLargeInt() const { return GetAsInteger(); }

void TIntegerField::SetAsLargeInt(int64_t Value) {
  CheckRange(Value);
  switch (GetDataType()) {
    case ftSmallint: return SetPlainData(static_cast<int16_t>(Value));
    case ftWord: return SetPlainData(static_cast<uint16_t>(Value));
    case ftShortint: return SetPlainData(static_cast<int8_t>(Value));
    case ftByte: return SetPlainData(static_cast<uint8_t>(Value));
    default: return SetPlainData(static_cast<int32_t>(Value));
  }
}

double TIntegerField::GetAsFloat() const { return GetAsInteger(); }

void TIntegerField::SetAsFloat(double Value) {
  if (!FitsInt64(Value)) RangeError(Value, FMinRange, FMaxRange);
  SetAsLargeInt(RoundToInt64(Value));
}

String TIntegerField::GetAsString() const {
  int32_t value = 0;
  return GetValue(value) ? IntToStr(value) : String();
}

void TIntegerField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  int32_t number = 0;
  if (!TryStrToInt(Value, number))
    DatabaseErrorFmt(SInvalidIntegerValue, {Value, GetDisplayName()});
  SetAsInteger(number);
}

Variant TIntegerField::GetAsVariant() const {
  int32_t value = 0;
  return GetValue(value) ? Variant(value) : Null();
}

void TIntegerField::SetVarValue(const Variant& Value) { SetAsInteger(Value.AsInteger()); }

void TIntegerField::GetText(String& Text, bool DisplayText) const {
  int32_t value = 0;
  if (!GetValue(value)) return Text.clear();
  const String& format = TextFormat(DisplayText);
  Text = format.empty() ? IntToStr(value) : FormatFloat(format, value);
}

// ---------------------------------------------------------------------------------------------
// TLongWordField

TLongWordField::TLongWordField(TComponent* AOwner) : TNumericField(AOwner) {
  SetDataType(ftLongWord);
}

int32_t TLongWordField::GetDataSize() const { return sizeof(uint32_t); }

bool TLongWordField::GetValue(uint32_t& Value) const { return GetData(&Value); }

int64_t TLongWordField::GetAsLargeInt() const {
  uint32_t value = 0;
  return GetValue(value) ? value : 0;
}

void TLongWordField::SetAsLargeInt(int64_t Value) {
  if (Value < 0 || Value > UINT32_MAX) RangeError(static_cast<double>(Value), 0, UINT32_MAX);
  SetPlainData(static_cast<uint32_t>(Value));
}

int32_t TLongWordField::GetAsInteger() const { return static_cast<int32_t>(GetAsLargeInt()); }
void TLongWordField::SetAsInteger(int32_t Value) { SetAsLargeInt(Value); }
double TLongWordField::GetAsFloat() const { return static_cast<double>(GetAsLargeInt()); }

void TLongWordField::SetAsFloat(double Value) {
  if (!FitsInt64(Value)) RangeError(Value, 0, UINT32_MAX);
  SetAsLargeInt(RoundToInt64(Value));
}

String TLongWordField::GetAsString() const {
  uint32_t value = 0;
  return GetValue(value) ? UIntToStr(value) : String();
}

void TLongWordField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  int64_t number = 0;
  if (!TryStrToInt64(Value, number))
    DatabaseErrorFmt(SInvalidIntegerValue, {Value, GetDisplayName()});
  SetAsLargeInt(number);
}

Variant TLongWordField::GetAsVariant() const {
  uint32_t value = 0;
  return GetValue(value) ? Variant(value) : Null();
}

void TLongWordField::SetVarValue(const Variant& Value) { SetAsLargeInt(Value.AsInt64()); }

void TLongWordField::GetText(String& Text, bool DisplayText) const {
  uint32_t value = 0;
  if (!GetValue(value)) return Text.clear();
  const String& format = TextFormat(DisplayText);
  Text = format.empty() ? UIntToStr(value) : FormatFloat(format, value);
}

// ---------------------------------------------------------------------------------------------
// TLargeintField

TLargeintField::TLargeintField(TComponent* AOwner) : TNumericField(AOwner) {
  SetDataType(ftLargeint);
}

int32_t TLargeintField::GetDataSize() const { return sizeof(int64_t); }

bool TLargeintField::GetValue(int64_t& Value) const { return GetData(&Value); }

int64_t TLargeintField::GetAsLargeInt() const {
  int64_t value = 0;
  return GetValue(value) ? value : 0;
}

void TLargeintField::SetAsLargeInt(int64_t Value) { SetPlainData(Value); }
int32_t TLargeintField::GetAsInteger() const { return static_cast<int32_t>(GetAsLargeInt()); }
void TLargeintField::SetAsInteger(int32_t Value) { SetAsLargeInt(Value); }
double TLargeintField::GetAsFloat() const { return static_cast<double>(GetAsLargeInt()); }

void TLargeintField::SetAsFloat(double Value) {
  if (!FitsInt64(Value)) RangeError(Value, -9223372036854775808.0, 9223372036854775807.0);
  SetAsLargeInt(RoundToInt64(Value));
}

String TLargeintField::GetAsString() const {
  int64_t value = 0;
  return GetValue(value) ? IntToStr(value) : String();
}

void TLargeintField::SetAsString(const String& Value) {
  if (Value.empty()) return Clear();
  int64_t number = 0;
  if (!TryStrToInt64(Value, number))
    DatabaseErrorFmt(SInvalidIntegerValue, {Value, GetDisplayName()});
  SetAsLargeInt(number);
}

Variant TLargeintField::GetAsVariant() const {
  int64_t value = 0;
  return GetValue(value) ? Variant(value) : Null();
}

void TLargeintField::SetVarValue(const Variant& Value) { SetAsLargeInt(Value.AsInt64()); }

void TLargeintField::GetText(String& Text, bool DisplayText) const {
  int64_t value = 0;
  if (!GetValue(value)) return Text.clear();
  const String& format = TextFormat(DisplayText);
  Text = format.empty() ? IntToStr(value) : FormatFloat(format, static_cast<double>(value));
}

}  // namespace orv
