// TField: reading and writing the value through the data set, validation, the As... accessors
// of the base class, and the text.

#include <algorithm>
#include <cstring>

#include "DB.h"
#include "TryFinally.h"

namespace orv {

namespace {

// The types whose plain and native buffer forms differ.
bool HasTwoForms(TFieldType type) {
  switch (type) {
    case ftDate:
    case ftTime:
    case ftDateTime:
    case ftBCD:
    case ftBytes:
    case ftVarBytes: return true;
    default: return false;
  }
}

bool IsNarrowText(TFieldType type) {
  return type == ftString || type == ftFixedChar || type == ftGuid;
}

bool IsWideText(TFieldType type) { return type == ftWideString || type == ftFixedWideChar; }

}  // namespace

// ---------------------------------------------------------------------------------------------
// Buffers

bool TField::GetData(TValueBuffer& Buffer, bool NativeFormat) const {
  if (!FDataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  if (FValidating) return ReadPendingValue(Buffer.empty() ? nullptr : Buffer.data(), NativeFormat);
  return FDataSet->GetFieldData(const_cast<TField*>(this), Buffer, NativeFormat);
}

bool TField::GetData(void* Buffer, bool NativeFormat) const {
  if (!FDataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  if (FValidating) return ReadPendingValue(Buffer, NativeFormat);
  return FDataSet->GetFieldData(const_cast<TField*>(this), Buffer, NativeFormat);
}

void TField::SetData(const TValueBuffer& Buffer, bool NativeFormat) {
  if (!FDataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  FValueBuffer = Buffer.empty() ? nullptr : Buffer.data();
  FValueBufferNative = NativeFormat;
  TScopeExit forget([this] { FValueBuffer = nullptr; });
  FDataSet->SetFieldData(this, Buffer, NativeFormat);
}

void TField::SetData(const void* Buffer, bool NativeFormat) {
  if (!FDataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  FValueBuffer = Buffer;
  FValueBufferNative = NativeFormat;
  TScopeExit forget([this] { FValueBuffer = nullptr; });
  FDataSet->SetFieldData(this, Buffer, NativeFormat);
}

void TField::Validate(const TValueBuffer& Buffer) {
  Validate(Buffer.empty() ? nullptr : static_cast<const void*>(Buffer.data()));
}

void TField::Validate(const void* Buffer) {
  if (!FOnValidate) return;
  // A data set that writes on its own (not through SetData) hands over the value here.
  const bool handedOver = !FValueBuffer;
  if (handedOver) {
    FValueBuffer = Buffer;
    FValueBufferNative = true;
  }
  FValidating = true;
  TScopeExit done([this, handedOver] {
    FValidating = false;
    if (handedOver) FValueBuffer = nullptr;
  });
  FOnValidate(this);
}

int32_t TField::PlainDataSize() const {
  switch (FDataType) {
    case ftDate:
    case ftTime:
    case ftDateTime: return sizeof(double);
    case ftBCD: return sizeof(int64_t);
    case ftBytes:
    case ftVarBytes: return sizeof(Variant);
    default: return GetDataSize();
  }
}

bool TField::ReadPendingValue(void* Buffer, bool NativeFormat) const {
  if (!FValueBuffer) return false;
  if (!Buffer) return true;
  if (NativeFormat != FValueBufferNative && HasTwoForms(FDataType)) {
    FDataSet->DataConvert(const_cast<TField*>(this), FValueBuffer, Buffer, NativeFormat);
    return true;
  }
  switch (BufferObjectOf(FDataType, NativeFormat)) {
    case TBufferObject::Variant:
      *static_cast<Variant*>(Buffer) = *static_cast<const Variant*>(FValueBuffer);
      return true;
    case TBufferObject::Interface:
      *static_cast<IInterfacePtr*>(Buffer) = *static_cast<const IInterfacePtr*>(FValueBuffer);
      return true;
    case TBufferObject::Dispatch:
      *static_cast<IDispatchPtr*>(Buffer) = *static_cast<const IDispatchPtr*>(FValueBuffer);
      return true;
    case TBufferObject::None: break;
  }
  // Text is written whole; it is read back cut to Size as the data set would cut it.
  if (IsNarrowText(FDataType)) {
    const String text = Utf8Truncate(static_cast<const char*>(FValueBuffer), std::max(FSize, 0));
    std::memcpy(Buffer, text.c_str(), text.size() + 1);
  } else if (IsWideText(FDataType)) {
    WideString text(static_cast<const char16_t*>(FValueBuffer));
    if (text.size() > static_cast<size_t>(std::max(FSize, 0))) text.resize(std::max(FSize, 0));
    std::memcpy(Buffer, text.c_str(), (text.size() + 1) * sizeof(char16_t));
  } else {
    std::memcpy(Buffer, FValueBuffer, NativeFormat ? GetDataSize() : PlainDataSize());
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// Values

void TField::AccessError(const String& TypeName) const {
  DatabaseErrorFmt(SFieldAccessError, {GetDisplayName(), TypeName});
}

TBcd TField::GetAsBCD() const { AccessError("BCD"); }
void TField::SetAsBCD(const TBcd&) { AccessError("BCD"); }
bool TField::GetAsBoolean() const { AccessError("Boolean"); }
void TField::SetAsBoolean(bool) { AccessError("Boolean"); }
Currency TField::GetAsCurrency() const { AccessError("Currency"); }
void TField::SetAsCurrency(Currency) { AccessError("Currency"); }
TDateTime TField::GetAsDateTime() const { AccessError("DateTime"); }
void TField::SetAsDateTime(TDateTime) { AccessError("DateTime"); }
TSQLTimeStamp TField::GetAsSQLTimeStamp() const { AccessError("SQLTimeStamp"); }
void TField::SetAsSQLTimeStamp(const TSQLTimeStamp&) { AccessError("SQLTimeStamp"); }
double TField::GetAsFloat() const { AccessError("Float"); }
void TField::SetAsFloat(double) { AccessError("Float"); }
int32_t TField::GetAsInteger() const { AccessError("Integer"); }
void TField::SetAsInteger(int32_t) { AccessError("Integer"); }
int64_t TField::GetAsLargeInt() const { AccessError("LargeInt"); }
void TField::SetAsLargeInt(int64_t) { AccessError("LargeInt"); }
String TField::GetAsString() const { return GetClassDesc(); }
void TField::SetAsString(const String&) { AccessError("String"); }
WideString TField::GetAsWideString() const { return Utf8ToUtf16(GetAsString()); }
void TField::SetAsWideString(const WideString& Value) { SetAsString(Utf16ToUtf8(Value)); }
Variant TField::GetAsVariant() const { AccessError("Variant"); }
void TField::SetVarValue(const Variant&) { AccessError("Variant"); }

TBytes TField::GetAsBytes() const {
  if (BufferObjectOf(FDataType) != TBufferObject::None) AccessError("Bytes");
  if (IsNarrowText(FDataType)) {
    const String text = GetAsString();
    return TBytes(text.begin(), text.end());
  }
  TBytes bytes(static_cast<size_t>(std::max(GetDataSize(), 0)));
  if (bytes.empty() || !GetData(bytes.data())) return {};
  return bytes;
}

void TField::SetAsBytes(const TBytes& Value) {
  if (BufferObjectOf(FDataType) != TBufferObject::None) AccessError("Bytes");
  if (IsNarrowText(FDataType)) return SetAsString(String(Value.begin(), Value.end()));
  if (IsWideText(FDataType)) {
    WideString text(Value.size() / 2, u'\0');
    std::memcpy(text.data(), Value.data(), text.size() * sizeof(char16_t));
    return SetAsWideString(text);
  }
  // The buffer form is exactly DataSize bytes: a shorter value is padded with zeros.
  TValueBuffer buffer(Value);
  buffer.resize(static_cast<size_t>(std::max(GetDataSize(), 0)));
  SetData(buffer);
}

void TField::SetAsVariant(const Variant& Value) {
  if (VarIsNull(Value))
    Clear();
  else
    SetVarValue(Value);
}

void TField::Clear() { SetData(TValueBuffer()); }

bool TField::GetIsNull() const { return !GetData(nullptr); }

void TField::AssignValue(const Variant& Value) {
  if (VarIsNull(Value) || VarIsEmpty(Value)) return Clear();
  if (VarIsArray(Value)) {
    if ((VarType(Value) & varTypeMask) == varByte) return SetAsBytes(VarToBytes(Value));
    return SetAsVariant(Value);
  }
  switch (VarType(Value)) {
    case varSmallint:
    case varInteger:
    case varShortInt:
    case varByte:
    case varWord: return SetAsInteger(Value.AsInteger());
    case varLongWord:
    case varInt64:
    case varUInt64: return SetAsLargeInt(Value.AsInt64());
    case varBoolean: return SetAsBoolean(Value.AsBoolean());
    case varSingle:
    case varDouble: return SetAsFloat(Value.AsDouble());
    case varCurrency: return SetAsCurrency(Value.AsCurrency());
    case varDate: return SetAsDateTime(Value.AsDateTime());
    case varString: return SetAsString(Value.AsString());
    case varOleStr:
    case varUString: return SetAsWideString(Value.AsWideString());
    case varFMTBcd: return SetAsBCD(Value.AsBcd());
    case varSQLTimeStamp: return SetAsSQLTimeStamp(Value.AsSQLTimeStamp());
    case varSQLTimeStampOffset:
    case varUnknown:
    case varDispatch:
    case varObject: return SetAsVariant(Value);
    default: DatabaseErrorFmt(SFieldValueError, {GetDisplayName()});
  }
}

void TField::Assign(TPersistent* Source) {
  if (!Source) return Clear();
  if (auto* field = dynamic_cast<TField*>(Source)) return SetAsVariant(field->GetAsVariant());
  TComponent::Assign(Source);
}

Variant TField::GetStateValue(TDataSetState State) const {
  if (!FDataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  const TDataSetState saved = FDataSet->SetTempState(State);
  TScopeExit restore([this, saved] { FDataSet->RestoreState(saved); });
  return GetAsVariant();
}

Variant TField::GetOldValue() const { return GetStateValue(dsOldValue); }
Variant TField::GetNewValue() const { return GetStateValue(dsNewValue); }
Variant TField::GetCurValue() const { return GetStateValue(dsCurValue); }

void TField::SetNewValue(const Variant& Value) {
  if (!FDataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  const TDataSetState saved = FDataSet->SetTempState(dsNewValue);
  TScopeExit restore([this, saved] { FDataSet->RestoreState(saved); });
  SetAsVariant(Value);
}

// ---------------------------------------------------------------------------------------------
// Text

String TField::GetDisplayText() const {
  String text;
  if (FOnGetText)
    FOnGetText(const_cast<TField*>(this), text, true);
  else
    GetText(text, true);
  return text;
}

String TField::GetEditText() const {
  String text;
  if (FOnGetText)
    FOnGetText(const_cast<TField*>(this), text, false);
  else
    GetText(text, false);
  return text;
}

void TField::SetEditText(const String& Value) {
  if (FOnSetText)
    FOnSetText(this, Value);
  else
    SetText(Value);
}

void TField::GetText(String& Text, bool) const { Text = GetAsString(); }

void TField::SetText(const String& Value) { SetAsString(Value); }

}  // namespace orv
