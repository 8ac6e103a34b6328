// Fixed and variable byte fields: TBinaryField, TBytesField (Size bytes) and TVarBytesField (a
// 16-bit length, then up to Size bytes), read and written in their native (raw) form.

#include <algorithm>
#include <cstring>

#include "DB.h"

namespace orv {

ORV_PUBLISH(TBinaryField) {
  p.Property("Size", &TBinaryField::GetSize, &TBinaryField::SetSize).Default(16);
}
ORV_IMPLEMENT_CLASS(TBytesField)
ORV_IMPLEMENT_CLASS(TVarBytesField)

TBinaryField::TBinaryField(TComponent* AOwner) : TField(AOwner) { SetSize(16); }
TBytesField::TBytesField(TComponent* AOwner) : TBinaryField(AOwner) { SetDataType(ftBytes); }
TVarBytesField::TVarBytesField(TComponent* AOwner) : TBinaryField(AOwner) {
  SetDataType(ftVarBytes);
}

int32_t TBytesField::GetDataSize() const { return GetSize(); }
int32_t TVarBytesField::GetDataSize() const {
  return GetSize() + static_cast<int32_t>(sizeof(uint16_t));
}

void TBinaryField::CheckTypeSize(int32_t Value) const {
  if (Value < 0) DatabaseError(SInvalidFieldSize);
}

TBytes TBinaryField::GetAsBytes() const {
  TBytes buffer(static_cast<size_t>(GetDataSize()));
  if (buffer.empty() || !GetData(buffer.data())) return {};
  if (GetDataType() != ftVarBytes) return buffer;
  uint16_t length = 0;
  std::memcpy(&length, buffer.data(), sizeof length);
  const size_t count = std::min<size_t>(length, static_cast<size_t>(GetSize()));
  return TBytes(buffer.begin() + sizeof length, buffer.begin() + sizeof length + count);
}

// A longer value is cut to Size bytes; a shorter one fills a fixed field with zeros.
void TBinaryField::SetAsBytes(const TBytes& Value) {
  TValueBuffer buffer(static_cast<size_t>(GetDataSize()), 0);
  const size_t count = std::min(Value.size(), static_cast<size_t>(GetSize()));
  uint8_t* bytes = buffer.data();
  if (GetDataType() == ftVarBytes) {
    const auto length = static_cast<uint16_t>(count);
    std::memcpy(bytes, &length, sizeof length);
    bytes += sizeof length;
  }
  if (count > 0) std::memcpy(bytes, Value.data(), count);
  SetData(buffer);
}

String TBinaryField::GetAsString() const {
  const TBytes bytes = GetAsBytes();
  return String(bytes.begin(), bytes.end());
}

void TBinaryField::SetAsString(const String& Value) {
  SetAsBytes(TBytes(Value.begin(), Value.end()));
}

Variant TBinaryField::GetAsVariant() const {
  if (GetIsNull()) return Null();
  return VarFromBytes(GetAsBytes());
}

// Only a one-dimensional byte array of at most Size bytes.
void TBinaryField::SetVarValue(const Variant& Value) {
  const bool byteArray = VarIsArray(Value) && VarArrayDimCount(Value) == 1 &&
                         (VarType(Value) & varTypeMask) == varByte;
  if (!byteArray || VarArrayHighBound(Value, 1) - VarArrayLowBound(Value, 1) + 1 > GetSize())
    DatabaseErrorFmt(SInvalidVarByteArray, {GetDisplayName()});
  SetAsBytes(VarToBytes(Value));
}

void TBinaryField::GetText(String& Text, bool) const { Text = GetClassDesc(); }

}  // namespace orv
