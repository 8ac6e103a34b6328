// Text fields: TStringField (UTF-8), TWideStringField (UTF-16) and TGuidField. A value is
// written whole with its terminator; the data set cuts what it hands back to Size.

#include <cstring>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TStringField) {
  p.Property("EditMask", &TStringField::GetEditMask, &TStringField::SetEditMask);
  p.Property("FixedChar", &TStringField::GetFixedChar, &TStringField::SetFixedChar).Default(false);
  p.Property("Size", &TStringField::GetSize, &TStringField::SetSize).Default(20);
  p.Property("Transliterate", &TStringField::GetTransliterate, &TStringField::SetTransliterate)
      .Default(true);
}
ORV_IMPLEMENT_CLASS(TWideStringField)
ORV_PUBLISH(TGuidField) {
  p.Property("Size", &TGuidField::GetSize, &TGuidField::SetSize).Default(38);
}

namespace {

constexpr int32_t GuidSize = 38;  // "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}"

}  // namespace

// ---------------------------------------------------------------------------------------------
// TStringField

TStringField::TStringField(TComponent* AOwner) : TField(AOwner) {
  SetDataType(ftString);
  SetSize(20);
}

void TStringField::SetFieldType(TFieldType Value) {
  if (Value == ftFixedChar) FFixedChar = true;
}

void TStringField::SetFixedChar(bool Value) {
  if (Value == FFixedChar) return;
  FFixedChar = Value;
  PropertyChanged(false);
}

void TStringField::CheckTypeSize(int32_t Value) const {
  if (Value < 0) DatabaseError(SInvalidFieldSize);
}

int32_t TStringField::GetDataSize() const { return GetSize() + 1; }

int32_t TStringField::GetDefaultWidth() const { return GetSize(); }

bool TStringField::GetValue(String& Value) const {
  String buffer(static_cast<size_t>(GetDataSize()), '\0');
  if (!GetData(buffer.data())) return false;
  buffer.resize(std::strlen(buffer.c_str()));
  Value = std::move(buffer);
  return true;
}

String TStringField::GetAsString() const {
  String value;
  GetValue(value);
  return value;
}

void TStringField::SetAsString(const String& Value) {
  TValueBuffer buffer(Value.size() + 1, 0);
  std::memcpy(buffer.data(), Value.data(), Value.size());
  SetData(buffer);
}

WideString TStringField::GetAsWideString() const { return Utf8ToUtf16(GetAsString()); }
void TStringField::SetAsWideString(const WideString& Value) { SetAsString(Utf16ToUtf8(Value)); }

Variant TStringField::GetAsVariant() const {
  String value;
  return GetValue(value) ? Variant(value) : Null();
}

void TStringField::SetVarValue(const Variant& Value) { SetAsString(Value.AsString()); }

bool TStringField::GetAsBoolean() const {
  const String text = GetAsString();
  return !text.empty() && std::strchr("TtYy", text.front()) != nullptr;
}

void TStringField::SetAsBoolean(bool Value) {
  SetAsString(String(1, Value ? STextTrue[0] : STextFalse[0]));
}

TDateTime TStringField::GetAsDateTime() const { return StrToDateTime(GetAsString()); }
void TStringField::SetAsDateTime(TDateTime Value) { SetAsString(DateTimeToStr(Value)); }
double TStringField::GetAsFloat() const { return StrToFloat(GetAsString()); }
void TStringField::SetAsFloat(double Value) { SetAsString(FloatToStr(Value)); }
int32_t TStringField::GetAsInteger() const { return StrToInt(GetAsString()); }
void TStringField::SetAsInteger(int32_t Value) { SetAsString(IntToStr(Value)); }
int64_t TStringField::GetAsLargeInt() const { return StrToInt64(GetAsString()); }
void TStringField::SetAsLargeInt(int64_t Value) { SetAsString(IntToStr(Value)); }

// ---------------------------------------------------------------------------------------------
// TWideStringField

TWideStringField::TWideStringField(TComponent* AOwner) : TStringField(AOwner) {
  SetDataType(ftWideString);
}

void TWideStringField::SetFieldType(TFieldType Value) {
  if (Value == ftFixedWideChar) SetFixedChar(true);
}

int32_t TWideStringField::GetDataSize() const { return (GetSize() + 1) * 2; }

bool TWideStringField::GetValue(WideString& Value) const {
  WideString buffer(static_cast<size_t>(GetSize()) + 1, u'\0');
  if (!GetData(buffer.data())) return false;
  buffer.resize(std::char_traits<char16_t>::length(buffer.c_str()));
  Value = std::move(buffer);
  return true;
}

WideString TWideStringField::GetAsWideString() const {
  WideString value;
  GetValue(value);
  return value;
}

void TWideStringField::SetAsWideString(const WideString& Value) {
  TValueBuffer buffer((Value.size() + 1) * sizeof(char16_t), 0);
  std::memcpy(buffer.data(), Value.data(), Value.size() * sizeof(char16_t));
  SetData(buffer);
}

String TWideStringField::GetAsString() const { return Utf16ToUtf8(GetAsWideString()); }
void TWideStringField::SetAsString(const String& Value) { SetAsWideString(Utf8ToUtf16(Value)); }

Variant TWideStringField::GetAsVariant() const {
  WideString value;
  return GetValue(value) ? Variant(value) : Null();
}

void TWideStringField::SetVarValue(const Variant& Value) { SetAsWideString(Value.AsWideString()); }

// ---------------------------------------------------------------------------------------------
// TGuidField

TGuidField::TGuidField(TComponent* AOwner) : TStringField(AOwner) {
  SetDataType(ftGuid);
  SetSize(GuidSize);
}

void TGuidField::CheckTypeSize(int32_t Value) const {
  if (Value != GuidSize) DatabaseError(SInvalidFieldSize);
}

}  // namespace orv
