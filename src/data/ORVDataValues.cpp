// TORVCustomData: field values. A value is asked for (DoOnGetFieldData) the first time it is
// read after a fetch and kept in its slot of the record buffer, so repaints are answered from
// the buffer; a written value goes into the slot and waits there for the post.
//
// Between a slot's Variant and a field's buffer form the table in VariantToBuffer and
// BufferToVariant applies; the byte-array and the pointer form differ only in the kind of a
// written date (a double from a byte array, a date from a pointer) and in that only a data
// field written through a byte array counts as a change of the data (FFieldChange).

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>

#include "ORVData.h"
#include "ORVRecordBuffer.h"

namespace orv {

namespace {

constexpr const char* SUnsupportedFieldType = "Unsupported field type (%s) in field %s";

template <class T>
void Put(void* Dest, const T& Value) {
  std::memcpy(Dest, &Value, sizeof Value);
}

template <class T>
T Take(const void* Source) {
  T value;
  std::memcpy(&value, Source, sizeof value);
  return value;
}

// The object a buffer holds (a Variant, an interface reference), see Fields.h.
template <class T>
T& ObjectAt(void* Buffer) {
  return *std::launder(static_cast<T*>(Buffer));
}
template <class T>
const T& ObjectAt(const void* Buffer) {
  return *std::launder(static_cast<const T*>(Buffer));
}

// The longest prefix of at most `MaxBytes` bytes that does not split a code point; the text is
// not copied, as a slot's text goes straight into the buffer.
size_t Utf8PrefixLength(std::string_view Text, size_t MaxBytes) {
  if (Text.size() <= MaxBytes) return Text.size();
  size_t length = MaxBytes;
  while (length > 0 && (static_cast<unsigned char>(Text[length]) & 0xC0) == 0x80) --length;
  return length;
}

size_t MaxLength(const TField* Field) { return static_cast<size_t>(std::max(Field->GetSize(), 0)); }

void PutNarrowText(const TField* Field, const Variant& Value, void* Dest) {
  String converted;
  std::string_view text = Value.StrView();
  if (Value.VType() != varString) text = converted = Value.AsString();
  const size_t length = Utf8PrefixLength(text, MaxLength(Field));
  std::memcpy(Dest, text.data(), length);
  static_cast<char*>(Dest)[length] = '\0';
}

void PutWideText(const TField* Field, const Variant& Value, void* Dest) {
  WideString converted;
  std::u16string_view text = Value.WideStrView();
  if (Value.VType() != varOleStr && Value.VType() != varUString)
    text = converted = Value.AsWideString();
  const size_t length = std::min(text.size(), MaxLength(Field));
  std::memcpy(Dest, text.data(), length * sizeof(char16_t));
  static_cast<char16_t*>(Dest)[length] = u'\0';
}

// The read direction: a slot's value into the field's buffer form.
void VariantToBuffer(TDataSet* DataSet, TField* Field, const Variant& Value, void* Dest,
                     bool NativeFormat) {
  switch (Field->GetDataType()) {
    case ftString: case ftFixedChar: case ftGuid: PutNarrowText(Field, Value, Dest); return;
    case ftWideString: case ftFixedWideChar: PutWideText(Field, Value, Dest); return;
    case ftSmallint: Put(Dest, Value.AsSmallint()); return;
    case ftInteger: case ftAutoInc: Put(Dest, Value.AsInteger()); return;
    case ftWord: Put(Dest, Value.AsWord()); return;
    case ftShortint: Put(Dest, Value.AsShortInt()); return;
    case ftByte: Put(Dest, Value.AsByte()); return;
    case ftLongWord: Put(Dest, Value.AsLongWord()); return;
    case ftLargeint: Put(Dest, Value.AsInt64()); return;
    case ftBoolean: Put<int16_t>(Dest, Value.AsBoolean() ? -1 : 0); return;
    case ftFloat: case ftCurrency: case ftExtended: Put(Dest, Value.AsDouble()); return;
    case ftSingle: Put(Dest, Value.AsSingle()); return;
    case ftDate: case ftTime: case ftDateTime: {
      const double plain = Value.AsDouble();
      if (NativeFormat)
        DataSet->DataConvert(Field, &plain, Dest, true);
      else
        Put(Dest, plain);
      return;
    }
    case ftBCD: {
      const Currency plain = Value.AsCurrency();
      if (NativeFormat)
        DataSet->DataConvert(Field, &plain, Dest, true);
      else
        Put(Dest, plain);
      return;
    }
    case ftFMTBcd: Put(Dest, Value.AsBcd()); return;
    case ftTimeStamp: Put(Dest, Value.AsSQLTimeStamp()); return;
    case ftTimeStampOffset: Put(Dest, Value.AsSQLTimeStampOffset()); return;
    case ftBytes: case ftVarBytes:
      if (NativeFormat)
        DataSet->DataConvert(Field, &Value, Dest, true);
      else
        ObjectAt<Variant>(Dest) = Value;
      return;
    case ftBlob: case ftMemo: case ftGraphic: case ftWideMemo: case ftVariant:
      ObjectAt<Variant>(Dest) = Value;
      return;
    case ftInterface: ObjectAt<IInterfacePtr>(Dest) = Value.AsInterface(); return;
    case ftIDispatch: ObjectAt<IDispatchPtr>(Dest) = Value.AsDispatch(); return;
    case ftUnknown: DatabaseErrorFmt(SUnknownFieldType, {Field->GetDisplayName()}, DataSet);
    default:
      DatabaseErrorFmt(SUnsupportedFieldType,
                       {FieldTypeName(Field->GetDataType()), Field->GetDisplayName()}, DataSet);
  }
}

// The write direction: the field's buffer form into a slot's value.
Variant BufferToVariant(TDataSet* DataSet, TField* Field, const void* Source, bool NativeFormat,
                        bool ByteArrayForm) {
  switch (Field->GetDataType()) {
    case ftString: case ftFixedChar: case ftGuid:
      return Variant(std::string_view(static_cast<const char*>(Source)));
    case ftWideString: case ftFixedWideChar:
      return Variant(std::u16string_view(static_cast<const char16_t*>(Source)));
    case ftSmallint: return Take<int16_t>(Source);
    case ftInteger: case ftAutoInc: return Take<int32_t>(Source);
    case ftWord: return Take<uint16_t>(Source);
    case ftShortint: return Take<int8_t>(Source);
    case ftByte: return Take<uint8_t>(Source);
    case ftLongWord: return Take<uint32_t>(Source);
    case ftLargeint: return Take<int64_t>(Source);
    case ftBoolean: return Take<int16_t>(Source) != 0;
    case ftFloat: case ftCurrency: case ftExtended: return Take<double>(Source);
    case ftSingle: return static_cast<double>(Take<float>(Source));
    case ftDate: case ftTime: case ftDateTime: {
      double plain;
      if (NativeFormat)
        DataSet->DataConvert(Field, Source, &plain, false);
      else
        plain = Take<double>(Source);
      return ByteArrayForm ? Variant(plain) : Variant(TDateTime(plain));
    }
    case ftBCD: {
      Currency plain;
      if (NativeFormat)
        DataSet->DataConvert(Field, Source, &plain, false);
      else
        plain = Take<Currency>(Source);
      return plain;
    }
    case ftFMTBcd: return Take<TBcd>(Source);
    case ftTimeStamp: return Take<TSQLTimeStamp>(Source);
    case ftTimeStampOffset: return Take<TSQLTimeStampOffset>(Source);
    case ftBytes: case ftVarBytes: {
      if (!NativeFormat) return ObjectAt<Variant>(Source);
      Variant bytes;
      DataSet->DataConvert(Field, Source, &bytes, false);
      return bytes;
    }
    case ftBlob: case ftMemo: case ftGraphic: case ftWideMemo: case ftVariant:
      return ObjectAt<Variant>(Source);
    case ftInterface: return ObjectAt<IInterfacePtr>(Source);
    case ftIDispatch: return ObjectAt<IDispatchPtr>(Source);
    case ftUnknown: DatabaseErrorFmt(SUnknownFieldType, {Field->GetDisplayName()}, DataSet);
    default:
      DatabaseErrorFmt(SUnsupportedFieldType,
                       {FieldTypeName(Field->GetDataType()), Field->GetDisplayName()});
  }
}

// The bytes of a field's buffer in either form (for plain bytes, not for a buffer holding an
// object).
size_t BufferSize(const TField* Field, bool NativeFormat) {
  switch (Field->GetDataType()) {
    case ftDate: case ftTime: case ftDateTime:
      if (!NativeFormat) return sizeof(double);
      break;
    case ftBCD:
      if (!NativeFormat) return sizeof(Currency);
      break;
    default:
      break;
  }
  return static_cast<size_t>(std::max(Field->GetDataSize(), 0));
}

bool IsEditingState(TDataSetState State) {
  switch (State) {
    case dsEdit: case dsInsert: case dsSetKey: case dsCalcFields: case dsFilter: case dsNewValue:
    case dsInternalCalc:
      return true;
    default:
      return false;
  }
}

// Writes made while calculating, filtering or setting a new value are not changes the links
// hear of.
bool ReportsFieldChange(TDataSetState State) {
  return State != dsCalcFields && State != dsFilter && State != dsNewValue &&
         State != dsInternalCalc;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Reading

bool TORVCustomData::ReadFieldValue(TField* Field, void* Buffer, bool NativeFormat) {
  TRecordBuffer record = GetRecordBuffer();
  Variant* slot = record ? FieldSlot(record, Field) : nullptr;
  if (!slot) return false;
  // Only fields made from a definition are fetched, once per fetched buffer.
  if (VarIsEmpty(*slot) && Field->GetFieldNo() > 0) {
    Variant value = Null();
    DoOnGetFieldData(GetIndex(record), Field, value);
    *slot = std::move(value);
  }
  if (VarIsNull(*slot)) return false;
  if (Buffer) VariantToBuffer(this, Field, *slot, Buffer, NativeFormat);
  return true;
}

bool TORVCustomData::GetFieldData(TField* Field, TValueBuffer& Buffer) {
  return GetFieldData(Field, Buffer, true);
}

// A plain-bytes buffer too small for the value is made large enough; one that holds an object
// is used as it is.
bool TORVCustomData::GetFieldData(TField* Field, TValueBuffer& Buffer, bool NativeFormat) {
  if (Buffer.empty()) return ReadFieldValue(Field, nullptr, NativeFormat);
  if (BufferObjectOf(Field->GetDataType(), NativeFormat) == TBufferObject::None &&
      Buffer.size() < BufferSize(Field, NativeFormat))
    Buffer.resize(BufferSize(Field, NativeFormat));
  return ReadFieldValue(Field, Buffer.data(), NativeFormat);
}

bool TORVCustomData::GetFieldData(TField* Field, void* Buffer) {
  return GetFieldData(Field, Buffer, true);
}

bool TORVCustomData::GetFieldData(TField* Field, void* Buffer, bool NativeFormat) {
  return ReadFieldValue(Field, Buffer, NativeFormat);
}

// ---------------------------------------------------------------------------------------------
// Writing

void TORVCustomData::WriteFieldValue(TField* Field, const void* Buffer, bool NativeFormat,
                                     bool ByteArrayForm) {
  const TDataSetState state = GetState();
  if (!IsEditingState(state)) DatabaseError(SNotEditing, this);
  // dsSetKey passes the state test but has no record to write to.
  TRecordBuffer record = GetRecordBuffer();
  Variant* slot = record ? FieldSlot(record, Field) : nullptr;
  if (!slot) DatabaseError(SNotEditing, this);
  if (Field->GetFieldNo() > 0) {
    if (Field->GetReadOnly() && state != dsSetKey && state != dsFilter)
      DatabaseErrorFmt(SFieldReadOnly, {Field->GetDisplayName()});
    Field->Validate(Buffer);
    if (std::find(FModifiedFields.begin(), FModifiedFields.end(), Field) == FModifiedFields.end())
      FModifiedFields.push_back(Field);
  }
  *slot = Buffer ? BufferToVariant(this, Field, Buffer, NativeFormat, ByteArrayForm) : Null();
  if (!ReportsFieldChange(state)) return;
  DataEvent(deFieldChange, reinterpret_cast<intptr_t>(Field));
  if (ByteArrayForm && Field->GetFieldKind() == fkData) FFieldChange = true;
}

void TORVCustomData::SetFieldData(TField* Field, const TValueBuffer& Buffer) {
  SetFieldData(Field, Buffer, true);
}

void TORVCustomData::SetFieldData(TField* Field, const TValueBuffer& Buffer, bool NativeFormat) {
  WriteFieldValue(Field, Buffer.empty() ? nullptr : Buffer.data(), NativeFormat, true);
}

void TORVCustomData::SetFieldData(TField* Field, const void* Buffer) {
  SetFieldData(Field, Buffer, true);
}

void TORVCustomData::SetFieldData(TField* Field, const void* Buffer, bool NativeFormat) {
  WriteFieldValue(Field, Buffer, NativeFormat, false);
}

}  // namespace orv
