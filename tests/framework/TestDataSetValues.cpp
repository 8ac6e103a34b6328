// The test data set's conversions between the Variant in a buffer slot and the native buffer
// form of each field type (the table in Fields.h).

#include <cstring>

#include "TestDataSet.h"

namespace orv::test {

namespace {

template <class T>
void Put(void* buffer, T value) {
  std::memcpy(buffer, &value, sizeof value);
}

template <class T>
T Take(const void* buffer) {
  T value;
  std::memcpy(&value, buffer, sizeof value);
  return value;
}

}  // namespace

void VariantToNative(TDataSet* DataSet, const TField* Field, const Variant& Value, void* Buffer) {
  TField* field = const_cast<TField*>(Field);
  switch (Field->GetDataType()) {
    case ftString: case ftFixedChar: case ftGuid: {
      String text = Utf8Truncate(Value.AsString(), static_cast<size_t>(Field->GetSize()));
      std::memcpy(Buffer, text.c_str(), text.size() + 1);
      break;
    }
    case ftWideString: case ftFixedWideChar: {
      WideString text = Value.AsWideString().substr(0, static_cast<size_t>(Field->GetSize()));
      std::memcpy(Buffer, text.c_str(), (text.size() + 1) * sizeof(char16_t));
      break;
    }
    case ftSmallint: Put(Buffer, Value.AsSmallint()); break;
    case ftInteger: case ftAutoInc: Put(Buffer, Value.AsInteger()); break;
    case ftWord: Put(Buffer, Value.AsWord()); break;
    case ftShortint: Put(Buffer, Value.AsShortInt()); break;
    case ftByte: Put(Buffer, Value.AsByte()); break;
    case ftLongWord: Put(Buffer, Value.AsLongWord()); break;
    case ftLargeint: Put(Buffer, Value.AsInt64()); break;
    case ftBoolean: Put<int16_t>(Buffer, Value.AsBoolean() ? -1 : 0); break;
    case ftFloat: case ftCurrency: case ftExtended: Put(Buffer, Value.AsDouble()); break;
    case ftSingle: Put(Buffer, Value.AsSingle()); break;
    case ftDate: case ftTime: case ftDateTime: {
      double plain = Value.AsDateTime();
      DataSet->DataConvert(field, &plain, Buffer, true);
      break;
    }
    case ftBCD: {
      Currency plain = Value.AsCurrency();
      DataSet->DataConvert(field, &plain, Buffer, true);
      break;
    }
    case ftBytes: case ftVarBytes: DataSet->DataConvert(field, &Value, Buffer, true); break;
    case ftFMTBcd: Put(Buffer, Value.AsBcd()); break;
    case ftTimeStamp: Put(Buffer, Value.AsSQLTimeStamp()); break;
    case ftTimeStampOffset: Put(Buffer, Value.AsSQLTimeStampOffset()); break;
    case ftBlob: case ftMemo: case ftGraphic: case ftFmtMemo: case ftWideMemo: case ftVariant:
      *static_cast<Variant*>(Buffer) = Value;
      break;
    case ftInterface: *static_cast<IInterfacePtr*>(Buffer) = Value.AsInterface(); break;
    case ftIDispatch: *static_cast<IDispatchPtr*>(Buffer) = Value.AsDispatch(); break;
    default:
      DatabaseErrorFmt(SUnknownFieldType, {Field->GetDisplayName()}, DataSet);
  }
}

Variant NativeToVariant(TDataSet* DataSet, const TField* Field, const void* Buffer) {
  TField* field = const_cast<TField*>(Field);
  switch (Field->GetDataType()) {
    case ftString: case ftFixedChar: case ftGuid: return String(static_cast<const char*>(Buffer));
    case ftWideString: case ftFixedWideChar: return WideString(static_cast<const char16_t*>(Buffer));
    case ftSmallint: return Take<int16_t>(Buffer);
    case ftInteger: case ftAutoInc: return Take<int32_t>(Buffer);
    case ftWord: return Take<uint16_t>(Buffer);
    case ftShortint: return Take<int8_t>(Buffer);
    case ftByte: return Take<uint8_t>(Buffer);
    case ftLongWord: return Take<uint32_t>(Buffer);
    case ftLargeint: return Take<int64_t>(Buffer);
    case ftBoolean: return Take<int16_t>(Buffer) != 0;
    case ftFloat: case ftCurrency: case ftExtended: return Take<double>(Buffer);
    case ftSingle: return Take<float>(Buffer);
    case ftDate: case ftTime: case ftDateTime: {
      double plain;
      DataSet->DataConvert(field, Buffer, &plain, false);
      return TDateTime(plain);
    }
    case ftBCD: {
      Currency plain;
      DataSet->DataConvert(field, Buffer, &plain, false);
      return plain;
    }
    case ftBytes: case ftVarBytes: {
      Variant plain;
      DataSet->DataConvert(field, Buffer, &plain, false);
      return plain;
    }
    case ftFMTBcd: return Take<TBcd>(Buffer);
    case ftTimeStamp: return Take<TSQLTimeStamp>(Buffer);
    case ftTimeStampOffset: return Take<TSQLTimeStampOffset>(Buffer);
    case ftBlob: case ftMemo: case ftGraphic: case ftFmtMemo: case ftWideMemo: case ftVariant:
      return *static_cast<const Variant*>(Buffer);
    case ftInterface: return *static_cast<const IInterfacePtr*>(Buffer);
    case ftIDispatch: return *static_cast<const IDispatchPtr*>(Buffer);
    default:
      DatabaseErrorFmt(SUnknownFieldType, {Field->GetDisplayName()}, DataSet);
  }
}

}  // namespace orv::test
