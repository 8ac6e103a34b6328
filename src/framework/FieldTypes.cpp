// The names of the data types, the field class of each, and which buffers hold objects.

#include <array>

#include "DB.h"

namespace orv {

namespace {

constexpr size_t FieldTypeCount = static_cast<size_t>(ftSingle) + 1;

// In the order of TFieldType.
constexpr std::array<const char*, FieldTypeCount> FieldTypeNames = {
    "Unknown",    "String",          "SmallInt",      "Integer",     "Word",         "Boolean",
    "Float",      "Currency",        "BCD",           "Date",        "Time",         "DateTime",
    "Bytes",      "VarBytes",        "AutoInc",       "Blob",        "Memo",         "Graphic",
    "FmtMemo",    "ParadoxOle",      "DBaseOle",      "TypedBinary", "Cursor",       "FixedChar",
    "WideString", "LargeInt",        "ADT",           "Array",       "Reference",    "DataSet",
    "OraBlob",    "OraClob",         "Variant",       "Interface",   "IDispatch",    "Guid",
    "TimeStamp",  "FMTBcd",          "FixedWideChar", "WideMemo",    "OraTimeStamp", "OraInterval",
    "LongWord",   "ShortInt",        "Byte",          "Extended",    "Connection",   "Params",
    "Stream",     "TimeStampOffset", "Object",        "Single"};

bool IsBlobType(TFieldType type) {
  return (type >= ftBlob && type <= ftTypedBinary) || type == ftOraBlob || type == ftOraClob ||
         type == ftWideMemo || type == ftStream;
}

}  // namespace

const char* FieldTypeName(TFieldType type) {
  const auto index = static_cast<size_t>(type);
  return index < FieldTypeNames.size() ? FieldTypeNames[index] : "";
}

TClass DefaultFieldClass(TFieldType Type) {
  switch (Type) {
    case ftString:
    case ftFixedChar: return TStringField::StaticClass();
    case ftSmallint: return TSmallintField::StaticClass();
    case ftInteger: return TIntegerField::StaticClass();
    case ftWord: return TWordField::StaticClass();
    case ftBoolean: return TBooleanField::StaticClass();
    case ftFloat: return TFloatField::StaticClass();
    case ftCurrency: return TCurrencyField::StaticClass();
    case ftBCD: return TBCDField::StaticClass();
    case ftDate: return TDateField::StaticClass();
    case ftTime: return TTimeField::StaticClass();
    case ftDateTime: return TDateTimeField::StaticClass();
    case ftBytes: return TBytesField::StaticClass();
    case ftVarBytes: return TVarBytesField::StaticClass();
    case ftAutoInc: return TAutoIncField::StaticClass();
    case ftMemo:
    case ftOraClob: return TMemoField::StaticClass();
    case ftGraphic: return TGraphicField::StaticClass();
    case ftWideString:
    case ftFixedWideChar: return TWideStringField::StaticClass();
    case ftLargeint: return TLargeintField::StaticClass();
    case ftADT: return TADTField::StaticClass();
    case ftArray: return TArrayField::StaticClass();
    case ftReference: return TReferenceField::StaticClass();
    case ftDataSet: return TDataSetField::StaticClass();
    case ftVariant: return TVariantField::StaticClass();
    case ftInterface: return TInterfaceField::StaticClass();
    case ftIDispatch: return TIDispatchField::StaticClass();
    case ftGuid: return TGuidField::StaticClass();
    case ftTimeStamp:
    case ftOraTimeStamp: return TSQLTimeStampField::StaticClass();
    case ftFMTBcd: return TFMTBCDField::StaticClass();
    case ftWideMemo: return TWideMemoField::StaticClass();
    case ftLongWord: return TLongWordField::StaticClass();
    case ftShortint: return TShortintField::StaticClass();
    case ftByte: return TByteField::StaticClass();
    case ftExtended: return TExtendedField::StaticClass();
    case ftTimeStampOffset: return TSQLTimeStampOffsetField::StaticClass();
    case ftSingle: return TSingleField::StaticClass();
    default: return IsBlobType(Type) ? TBlobField::StaticClass() : nullptr;
  }
}

// Every field class is the default class of some data type.
void RegisterFieldClasses() {
  for (size_t type = 0; type < FieldTypeCount; ++type)
    RegisterClass(DefaultFieldClass(static_cast<TFieldType>(type)));
  RegisterClasses({TFieldDef::StaticClass(), TFieldDefs::StaticClass()});
}

TBufferObject BufferObjectOf(TFieldType Type, bool NativeFormat) {
  if (Type == ftVariant || IsBlobType(Type)) return TBufferObject::Variant;
  if (Type == ftInterface) return TBufferObject::Interface;
  if (Type == ftIDispatch) return TBufferObject::Dispatch;
  if ((Type == ftBytes || Type == ftVarBytes) && !NativeFormat) return TBufferObject::Variant;
  return TBufferObject::None;
}

}  // namespace orv
