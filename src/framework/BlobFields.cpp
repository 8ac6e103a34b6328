// Blob fields: TBlobField and its memo, wide memo and graphic kinds. Values travel through the
// data set's blob stream; a data set without blob streams holds the value as the Variant of the
// buffer form: text for a memo, UTF-16 text for a wide memo, a byte array for the others.

#include <algorithm>
#include <cstring>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TBlobField) {
  p.Property("BlobType", &TBlobField::GetBlobType, &TBlobField::SetBlobType).Default(ftBlob);
  p.Property("DisplayValue", &TBlobField::GetDisplayValue, &TBlobField::SetDisplayValue)
      .Default(dvClass);
  p.Property("Size", &TBlobField::GetSize, &TBlobField::SetSize).Default(0);
}
ORV_PUBLISH(TMemoField) {
  p.Property("BlobType", &TMemoField::GetBlobType, &TMemoField::SetBlobType).Default(ftMemo);
  p.Property("Transliterate", &TMemoField::GetTransliterate, &TMemoField::SetTransliterate)
      .Default(true);
}
ORV_PUBLISH(TWideMemoField) {
  p.Property("BlobType", &TWideMemoField::GetBlobType, &TWideMemoField::SetBlobType)
      .Default(ftWideMemo);
}
ORV_PUBLISH(TGraphicField) {
  p.Property("BlobType", &TGraphicField::GetBlobType, &TGraphicField::SetBlobType)
      .Default(ftGraphic);
}

namespace {

bool IsBlobType(TFieldType type) {
  return (type >= ftBlob && type <= ftTypedBinary) || type == ftOraBlob || type == ftOraClob ||
         type == ftWideMemo || type == ftStream;
}

WideString WideOfBytes(const TBytes& bytes) {
  WideString text(bytes.size() / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  return text;
}

TBytes BytesOfWide(const WideString& text) {
  TBytes bytes(text.size() * sizeof(char16_t));
  if (!bytes.empty()) std::memcpy(bytes.data(), text.data(), bytes.size());
  return bytes;
}

// The UTF-8 text cut after `count` code points.
String FirstCodePoints(const String& text, size_t count) {
  size_t i = 0;
  for (; i < text.size() && count > 0; --count) {
    ++i;
    while (i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) ++i;
  }
  return text.substr(0, i);
}

size_t CodePointCount(const String& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

TBlobField::TBlobField(TComponent* AOwner) : TField(AOwner) { SetDataType(ftBlob); }
TMemoField::TMemoField(TComponent* AOwner) : TBlobField(AOwner) { SetDataType(ftMemo); }
TWideMemoField::TWideMemoField(TComponent* AOwner) : TBlobField(AOwner) {
  SetDataType(ftWideMemo);
  SetTransliterate(false);
}
TGraphicField::TGraphicField(TComponent* AOwner) : TBlobField(AOwner) { SetDataType(ftGraphic); }

void TBlobField::CheckTypeSize(int32_t Value) const {
  if (Value < 0) DatabaseError(SInvalidFieldSize);
}

TFieldType TBlobField::GetBlobType() const { return GetDataType(); }
void TBlobField::SetBlobType(TFieldType Value) { SetFieldType(Value); }

void TBlobField::SetFieldType(TFieldType Value) {
  if (IsBlobType(Value)) SetDataType(Value);
}

void TBlobField::SetDisplayValue(TBlobDisplayValue Value) {
  if (Value == FDisplayValue) return;
  FDisplayValue = Value;
  PropertyChanged(false);
}

// ---------------------------------------------------------------------------------------------
// The value as bytes: through a blob stream, else the buffer's Variant

TBytes TBlobField::ReadBlob() const {
  TDataSet* dataSet = GetDataSet();
  if (!dataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  if (std::unique_ptr<TStream> stream =
          dataSet->CreateBlobStream(const_cast<TBlobField*>(this), bmRead)) {
    stream->SetPosition(0);
    return stream->ReadRemainingBytes();
  }
  Variant value;
  if (!GetData(&value)) return {};
  if (VarIsArray(value)) return VarToBytes(value);
  if (IsWideText()) return BytesOfWide(value.AsWideString());
  const String text = value.AsString();
  return TBytes(text.begin(), text.end());
}

void TBlobField::WriteBlob(const void* Data, size_t Size) {
  TDataSet* dataSet = GetDataSet();
  if (!dataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  if (std::unique_ptr<TStream> stream = dataSet->CreateBlobStream(this, bmWrite)) {
    stream->WriteBuffer(Data, static_cast<int64_t>(Size));
    return;  // the stream hands the value to the record when it goes
  }
  if (Size == 0) return TField::Clear();
  const auto* bytes = static_cast<const uint8_t*>(Data);
  Variant value;
  if (GetDataType() == ftMemo || GetDataType() == ftFmtMemo || GetDataType() == ftOraClob)
    value = String(reinterpret_cast<const char*>(bytes), Size);
  else if (IsWideText())
    value = WideOfBytes(TBytes(bytes, bytes + Size));
  else
    value = VarFromBytes(TBytes(bytes, bytes + Size));
  TValueBufferObject<Variant> buffer(value);
  SetData(buffer.Buffer());
}

void TBlobField::Clear() {
  TDataSet* dataSet = GetDataSet();
  if (!dataSet) DatabaseErrorFmt(SDataSetMissing, {GetDisplayName()});
  // A stream opened for writing starts empty and stores that when it goes.
  if (dataSet->CreateBlobStream(this, bmWrite)) return;
  TField::Clear();
}

bool TBlobField::GetIsNull() const {
  if (!GetModified()) return TField::GetIsNull();
  return ReadBlob().empty();
}

int32_t TBlobField::GetBlobSize() const { return static_cast<int32_t>(ReadBlob().size()); }

bool TBlobField::GetModified() const {
  return FModified && GetDataSet() && FModifiedRecord == GetDataSet()->GetActiveRecord();
}

void TBlobField::SetModified(bool Value) {
  FModified = Value;
  if (Value && GetDataSet()) FModifiedRecord = GetDataSet()->GetActiveRecord();
}

void TBlobField::FreeBuffers() { FModified = false; }

// ---------------------------------------------------------------------------------------------
// Accessors

TBytes TBlobField::GetAsBytes() const { return ReadBlob(); }
void TBlobField::SetAsBytes(const TBytes& Value) { WriteBlob(Value.data(), Value.size()); }

String TBlobField::GetAsString() const {
  const TBytes bytes = ReadBlob();
  if (IsWideText()) return Utf16ToUtf8(WideOfBytes(bytes));
  return String(bytes.begin(), bytes.end());
}

void TBlobField::SetAsString(const String& Value) {
  if (IsWideText()) return SetAsWideString(Utf8ToUtf16(Value));
  WriteBlob(Value.data(), Value.size());
}

WideString TBlobField::GetAsWideString() const {
  const TBytes bytes = ReadBlob();
  if (IsWideText()) return WideOfBytes(bytes);
  return Utf8ToUtf16(String(bytes.begin(), bytes.end()));
}

void TBlobField::SetAsWideString(const WideString& Value) {
  if (!IsWideText()) return SetAsString(Utf16ToUtf8(Value));
  WriteBlob(Value.data(), Value.size() * sizeof(char16_t));
}

Variant TBlobField::GetAsVariant() const {
  if (GetIsNull()) return Null();
  return VarFromBytes(GetAsBytes());
}

Variant TMemoField::GetAsVariant() const {
  if (GetIsNull()) return Null();
  return GetAsString();
}

Variant TWideMemoField::GetAsVariant() const {
  if (GetIsNull()) return Null();
  return GetAsWideString();
}

void TBlobField::SetVarValue(const Variant& Value) {
  if (VarIsArray(Value)) return SetAsBytes(VarToBytes(Value));
  if (IsWideText()) return SetAsWideString(Value.AsWideString());
  SetAsString(Value.AsString());
}

void TBlobField::GetText(String& Text, bool DisplayText) const {
  if (FDisplayValue == dvClass) {
    Text = GetClassDesc();
    return;
  }
  Text = GetAsString();
  if (!DisplayText || FDisplayValue == dvFull) return;
  const auto width = static_cast<size_t>(std::max(GetDisplayWidth(), 0));
  if (CodePointCount(Text) <= width) return;
  Text = FDisplayValue == dvClip ? FirstCodePoints(Text, width) + "..." : GetClassDesc();
}

// ---------------------------------------------------------------------------------------------
// Streams and files

void TBlobField::LoadFromStream(TStream* Stream) {
  Stream->SetPosition(0);
  const TBytes bytes = Stream->ReadRemainingBytes();
  WriteBlob(bytes.data(), bytes.size());
}

void TBlobField::SaveToStream(TStream* Stream) const { Stream->WriteBytes(ReadBlob()); }

void TBlobField::LoadFromFile(const String& FileName) {
  TFileStream stream(FileName, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(&stream);
}

void TBlobField::SaveToFile(const String& FileName) const {
  WriteFileReplacing(FileName, [this](TStream& stream) { SaveToStream(&stream); });
}

}  // namespace orv
