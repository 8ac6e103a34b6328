// TBooleanField: a 16-bit flag (-1 true, 0 false) shown with its DisplayValues.

#include <algorithm>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TBooleanField) {
  p.Property("DisplayValues", &TBooleanField::GetDisplayValues, &TBooleanField::SetDisplayValues);
}

namespace {

// True when `text` is the start of `value`, letters compared without case.
bool StartsValue(const String& text, const String& value) {
  return text.size() <= value.size() && AnsiSameText(text, value.substr(0, text.size()));
}

}  // namespace

TBooleanField::TBooleanField(TComponent* AOwner) : TField(AOwner) {
  SetDataType(ftBoolean);
  FTextValues[0] = STextFalse;
  FTextValues[1] = STextTrue;
}

int32_t TBooleanField::GetDataSize() const { return sizeof(int16_t); }

int32_t TBooleanField::GetDefaultWidth() const {
  return static_cast<int32_t>(std::max(FTextValues[0].size(), FTextValues[1].size()));
}

void TBooleanField::SetDisplayValues(const String& Value) {
  if (Value == FDisplayValues) return;
  FDisplayValues = Value;
  if (Value.empty()) {
    FTextValues[0] = STextFalse;
    FTextValues[1] = STextTrue;
  } else {
    // "Yes;No": the text for true, then the one for false; without ";" only a true text.
    const size_t separator = Value.find(';');
    FTextValues[1] = Value.substr(0, separator);
    FTextValues[0] = separator == String::npos ? String() : Value.substr(separator + 1);
  }
  PropertyChanged(true);
}

bool TBooleanField::GetValue(bool& Value) const {
  int16_t flag = 0;
  if (!GetData(&flag)) return false;
  Value = flag != 0;
  return true;
}

bool TBooleanField::GetAsBoolean() const {
  bool value = false;
  return GetValue(value) && value;
}

void TBooleanField::SetAsBoolean(bool Value) { SetPlainData(static_cast<int16_t>(Value ? -1 : 0)); }

String TBooleanField::GetAsString() const {
  bool value = false;
  return GetValue(value) ? FTextValues[value ? 1 : 0] : String();
}

void TBooleanField::SetAsString(const String& Value) {
  if (Value.empty()) {
    // An empty text is a value when one of the texts is empty.
    if (FTextValues[0].empty()) return SetAsBoolean(false);
    if (FTextValues[1].empty()) return SetAsBoolean(true);
    return Clear();
  }
  if (StartsValue(Value, FTextValues[0])) return SetAsBoolean(false);
  if (StartsValue(Value, FTextValues[1])) return SetAsBoolean(true);
  DatabaseErrorFmt(SInvalidBoolValue, {Value, GetDisplayName()});
}

void TBooleanField::GetText(String& Text, bool) const { Text = GetAsString(); }

Variant TBooleanField::GetAsVariant() const {
  bool value = false;
  return GetValue(value) ? Variant(value) : Null();
}

void TBooleanField::SetVarValue(const Variant& Value) { SetAsBoolean(Value.AsBoolean()); }

}  // namespace orv
