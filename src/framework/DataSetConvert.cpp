// TDataSet: the two forms of field data. A descendant stores and supplies the native form (the
// two-argument pointer overloads of GetFieldData/SetFieldData); a field that asks for the plain
// form of a date, time, BCD or byte value gets it converted here by DataConvert. Every other type
// has one form only and passes straight through.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "DataSet.h"

namespace orv {

namespace {

bool HasNativeForm(TFieldType type) {
  switch (type) {
    case ftDate: case ftTime: case ftDateTime: case ftBCD: case ftBytes: case ftVarBytes:
      return true;
    default:
      return false;
  }
}

size_t NativeSize(const TField* field) {
  switch (field->GetDataType()) {
    case ftBCD: return sizeof(TBcd);
    case ftBytes: return static_cast<size_t>(field->GetSize());
    case ftVarBytes: return static_cast<size_t>(field->GetSize()) + sizeof(uint16_t);
    default: return sizeof(TDateTimeRec);
  }
}

// The native buffer of one conversion: on the stack for dates and decimals, in the heap only for
// byte values.
class TNativeBuffer {
 public:
  explicit TNativeBuffer(const TField* field) : FSize(NativeSize(field)) {
    if (FSize > FLocal.size()) FHeap.resize(FSize);
  }
  void* Data() { return FSize > FLocal.size() ? FHeap.data() : FLocal.data(); }

 private:
  size_t FSize;
  alignas(16) std::array<uint8_t, 64> FLocal{};
  TBytes FHeap;
};

// The platform's time stamp: days since 0001-01-01 plus one, and milliseconds of the day.
struct TTimeStamp {
  int32_t Date;
  int32_t Time;
};

TTimeStamp DateTimeToTimeStamp(double value) {
  TTimeStamp stamp;
  stamp.Date = static_cast<int32_t>(DateDelta + std::trunc(value));
  stamp.Time = static_cast<int32_t>(std::round(std::fabs(value - std::trunc(value)) * MSecsPerDay));
  if (stamp.Time >= static_cast<int32_t>(MSecsPerDay)) {
    stamp.Time = 0;
    ++stamp.Date;
  }
  return stamp;
}

double TimeStampToDateTime(TTimeStamp stamp) {
  double days = stamp.Date - DateDelta;
  double fraction = stamp.Time / MSecsPerDay;
  return days < 0 ? days - fraction : days + fraction;
}

void DateTimeToNative(TFieldType type, double value, TDateTimeRec& native) {
  TTimeStamp stamp = DateTimeToTimeStamp(value);
  switch (type) {
    case ftDate: native.Date = stamp.Date; break;
    case ftTime: native.Time = stamp.Time; break;
    default: native.DateTime = stamp.Date * MSecsPerDay + stamp.Time; break;
  }
}

double NativeToDateTime(TFieldType type, const TDateTimeRec& native) {
  switch (type) {
    case ftDate: return TimeStampToDateTime({native.Date, 0});
    case ftTime: return TimeStampToDateTime({static_cast<int32_t>(DateDelta), native.Time});
    default: {
      double days = std::trunc(native.DateTime / MSecsPerDay);
      return TimeStampToDateTime({static_cast<int32_t>(days),
                                  static_cast<int32_t>(native.DateTime - days * MSecsPerDay)});
    }
  }
}

void BytesToNative(const TField* field, const Variant& value, uint8_t* dest) {
  const TBytes bytes = VarToBytes(value);
  const size_t size = static_cast<size_t>(field->GetSize());
  const size_t count = std::min(bytes.size(), size);
  if (field->GetDataType() == ftVarBytes) {
    const uint16_t length = static_cast<uint16_t>(count);
    std::memcpy(dest, &length, sizeof length);
    dest += sizeof length;
  }
  std::memcpy(dest, bytes.data(), count);
  if (field->GetDataType() == ftBytes) std::memset(dest + count, 0, size - count);
}

Variant NativeToBytes(const TField* field, const uint8_t* source) {
  size_t count = static_cast<size_t>(field->GetSize());
  if (field->GetDataType() == ftVarBytes) {
    uint16_t length;
    std::memcpy(&length, source, sizeof length);
    source += sizeof length;
    count = std::min<size_t>(length, count);
  }
  return VarFromBytes(TBytes(source, source + count));
}

void CopyValue(const TField* field, const void* source, void* dest) {
  switch (BufferObjectOf(field->GetDataType())) {
    case TBufferObject::Variant:
      *static_cast<Variant*>(dest) = *static_cast<const Variant*>(source);
      break;
    case TBufferObject::Interface:
      *static_cast<IInterfacePtr*>(dest) = *static_cast<const IInterfacePtr*>(source);
      break;
    case TBufferObject::Dispatch:
      *static_cast<IDispatchPtr*>(dest) = *static_cast<const IDispatchPtr*>(source);
      break;
    case TBufferObject::None:
      std::memmove(dest, source, static_cast<size_t>(field->GetDataSize()));
      break;
  }
}

}  // namespace

// Plain forms: TDateTime as a double for dates and times, Currency for BCD, a Variant byte array
// for bytes. Native forms: TDateTimeRec, TBcd, and the raw bytes (varbytes with their length
// first). Other types are copied as they are.
void TDataSet::DataConvert(TField* Field, const void* Source, void* Dest, bool ToNative) {
  const TFieldType type = Field->GetDataType();
  switch (type) {
    case ftDate:
    case ftTime:
    case ftDateTime:
      if (ToNative) {
        double value;
        std::memcpy(&value, Source, sizeof value);
        DateTimeToNative(type, value, *static_cast<TDateTimeRec*>(Dest));
      } else {
        double value = NativeToDateTime(type, *static_cast<const TDateTimeRec*>(Source));
        std::memcpy(Dest, &value, sizeof value);
      }
      break;
    case ftBCD:
      if (ToNative) {
        Currency value;
        std::memcpy(&value, Source, sizeof value);
        CurrToBCD(value, *static_cast<TBcd*>(Dest), 32, Field->GetSize());
      } else {
        Currency value;
        BCDToCurr(*static_cast<const TBcd*>(Source), value);
        std::memcpy(Dest, &value, sizeof value);
      }
      break;
    case ftBytes:
    case ftVarBytes:
      if (ToNative)
        BytesToNative(Field, *static_cast<const Variant*>(Source), static_cast<uint8_t*>(Dest));
      else
        *static_cast<Variant*>(Dest) = NativeToBytes(Field, static_cast<const uint8_t*>(Source));
      break;
    default:
      CopyValue(Field, Source, Dest);
      break;
  }
}

// The byte-array form. A destination of plain bytes too small is made large enough; one that
// holds an object (a TValueBufferObject) is used as it is.
void TDataSet::DataConvert(TField* Field, const TValueBuffer& Source, TValueBuffer& Dest,
                           bool ToNative) {
  const TFieldType type = Field->GetDataType();
  if (BufferObjectOf(type, ToNative) == TBufferObject::None) {
    size_t needed = static_cast<size_t>(Field->GetDataSize());
    if (HasNativeForm(type)) needed = ToNative ? NativeSize(Field) : sizeof(double);
    if (Dest.size() < needed) Dest.resize(needed);
  }
  DataConvert(Field, Source.data(), Dest.data(), ToNative);
}

// ---------------------------------------------------------------------------------------------
// The default overloads of GetFieldData/SetFieldData

bool TDataSet::GetFieldData(TField*, void*) { return false; }

void TDataSet::SetFieldData(TField*, const void*) {}

bool TDataSet::GetFieldData(TField* Field, void* Buffer, bool NativeFormat) {
  if (NativeFormat || !Buffer || !HasNativeForm(Field->GetDataType()))
    return GetFieldData(Field, Buffer);
  TNativeBuffer native(Field);
  if (!GetFieldData(Field, native.Data())) return false;
  DataConvert(Field, native.Data(), Buffer, false);
  return true;
}

void TDataSet::SetFieldData(TField* Field, const void* Buffer, bool NativeFormat) {
  if (NativeFormat || !Buffer || !HasNativeForm(Field->GetDataType())) {
    SetFieldData(Field, Buffer);
    return;
  }
  TNativeBuffer native(Field);
  DataConvert(Field, Buffer, native.Data(), true);
  SetFieldData(Field, native.Data());
}

bool TDataSet::GetFieldData(TField* Field, TValueBuffer& Buffer) {
  return GetFieldData(Field, Buffer.empty() ? nullptr : Buffer.data());
}

bool TDataSet::GetFieldData(TField* Field, TValueBuffer& Buffer, bool NativeFormat) {
  if (NativeFormat || Buffer.empty() || !HasNativeForm(Field->GetDataType()))
    return GetFieldData(Field, Buffer);
  TValueBuffer native(NativeSize(Field));
  if (!GetFieldData(Field, native)) return false;
  DataConvert(Field, native, Buffer, false);
  return true;
}

void TDataSet::SetFieldData(TField* Field, const TValueBuffer& Buffer) {
  SetFieldData(Field, Buffer.empty() ? nullptr : static_cast<const void*>(Buffer.data()));
}

void TDataSet::SetFieldData(TField* Field, const TValueBuffer& Buffer, bool NativeFormat) {
  if (NativeFormat || Buffer.empty() || !HasNativeForm(Field->GetDataType())) {
    SetFieldData(Field, Buffer);
    return;
  }
  TValueBuffer native(NativeSize(Field));
  DataConvert(Field, Buffer, native, true);
  SetFieldData(Field, native);
}

}  // namespace orv
