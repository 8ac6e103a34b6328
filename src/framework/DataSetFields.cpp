// TDataSet: its fields. Default fields made from the field definitions, binding fields to
// definitions when the data set opens, fields by name and by ";" lists, calculated and lookup
// values.

#include "DataSet.h"

#include "DBConsts.h"
#include "TryFinally.h"

namespace orv {

namespace {

bool IsObjectType(TFieldType type) {
  return type == ftADT || type == ftArray || type == ftReference || type == ftDataSet;
}

// Persistent fields of one class serve definitions of a few related types.
int TypeFamily(TFieldType type) {
  switch (type) {
    case ftString: case ftFixedChar: case ftGuid: return ftString;
    case ftWideString: case ftFixedWideChar: return ftWideString;
    case ftInteger: case ftAutoInc: return ftInteger;
    case ftFloat: case ftCurrency: return ftFloat;
    case ftMemo: case ftFmtMemo: return ftMemo;
    case ftBlob: case ftGraphic: case ftTypedBinary: case ftParadoxOle: case ftDBaseOle:
      return ftBlob;
    default: return type;
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Making, binding and destroying fields

void TDataSet::CreateFields() {
  const bool showHidden = FFieldDefs->GetHiddenFields();
  if (FObjectView) {
    for (int i = 0; i < FFieldDefs->GetCount(); ++i) {
      TFieldDef* def = FFieldDefs->GetItem(i);
      if (def->GetDataType() != ftUnknown && (showHidden || !def->GetAttributes().Contains(faHiddenCol)))
        def->CreateField(this);
    }
    return;
  }
  // Without object view every definition, children included, is a field of its own, named by
  // its full name; object types give no field.
  for (int i = 0; i < FFieldDefList->GetCount(); ++i) {
    TFieldDef* def = FFieldDefList->GetFieldDef(i);
    if (def->GetDataType() != ftUnknown && !IsObjectType(def->GetDataType()) &&
        (showHidden || !def->GetAttributes().Contains(faHiddenCol)))
      def->CreateField(this, nullptr, FFieldDefList->Get(i));
  }
}

void TDataSet::DestroyFields() { FFields->Clear(); }

// Binding gives every data field the number of its definition and checks its type; calculated
// and lookup fields get their place in the calculated-field storage (FieldNo -1).
void TDataSet::BindFields(bool Binding) {
  FCalcFieldsSize = 0;
  FBlobFieldCount = 0;
  FInternalCalcFields = false;
  TFieldList* list = GetFieldList();
  for (int i = 0; i < list->GetCount(); ++i) {
    TField* field = list->GetField(i);
    if (!Binding) {
      field->Bind(false);
      field->SetFieldNo(0);
      continue;
    }
    if (field->GetFieldKind() == fkCalculated || field->GetFieldKind() == fkLookup) {
      if (IsObjectType(field->GetDataType()) || field->GetDataType() == ftUnknown)
        DatabaseErrorFmt(SInvalidCalcType, {field->GetDisplayName()}, this);
      field->SetFieldNo(-1);
      field->SetOffset(FCalcFieldsSize);
      FCalcFieldsSize += field->GetDataSize() + 1;
    } else {
      const String fullName = field->GetFullName();
      TFieldDef* def = FFieldDefList->Find(fullName);
      if (!def) DatabaseErrorFmt(SFieldNotFound, {field->GetDisplayName()}, this);
      if (TypeFamily(def->GetDataType()) != TypeFamily(field->GetDataType()))
        DatabaseErrorFmt(SFieldTypeMismatch,
                         {field->GetDisplayName(), FieldTypeName(field->GetDataType()),
                          FieldTypeName(def->GetDataType())},
                         this);
      if (def->GetInternalCalcField() || field->GetFieldKind() == fkInternalCalc)
        FInternalCalcFields = true;
      if (field->GetIsBlob()) {
        field->FSize = def->GetSize();
        field->SetOffset(FBlobFieldCount++);
      }
      int32_t fieldNo = def->GetFieldNo();
      field->SetFieldNo(fieldNo > 0 ? fieldNo : FFieldDefList->IndexOfObject(def) + 1);
    }
    field->Bind(true);
  }
}

TClass TDataSet::GetFieldClass(TFieldType FieldType) const { return DefaultFieldClass(FieldType); }

// The settings a field takes from its definition when it is made from it.
void TDataSet::SetFieldProps(TField* Field, TFieldDef* FieldDef) {
  TFieldAttributes attributes = FieldDef->GetAttributes();
  Field->SetRequired(attributes.Contains(faRequired));
  Field->SetReadOnly(attributes.Contains(faReadonly));
  if (auto* stringField = dynamic_cast<TStringField*>(Field))
    if (attributes.Contains(faFixed)) stringField->SetFixedChar(true);
}

void TDataSet::SetFieldDefs(TFieldDefs* Value) { FFieldDefs->Assign(Value); }

void TDataSet::SetObjectView(bool Value) {
  CheckInactive();
  FObjectView = Value;
}

// ---------------------------------------------------------------------------------------------
// Fields by name

TField* TDataSet::FindField(const String& FieldName) const {
  TField* field = FFields->FindField(FieldName);
  // Sub-fields of object fields are found by their full names ("Address.City").
  if (!field && FObjectView) field = GetFieldList()->Find(FieldName);
  return field;
}

TField* TDataSet::FieldByName(const String& FieldName) const {
  TField* field = FindField(FieldName);
  if (!field) DatabaseErrorFmt(SFieldNotFound, {FieldName}, this);
  return field;
}

TField* TDataSet::FieldByNumber(int32_t FieldNo) const { return FFields->FieldByNumber(FieldNo); }

void TDataSet::GetFieldList(std::vector<TField*>& List, const String& FieldNames) const {
  int pos = 1;
  while (pos <= static_cast<int>(FieldNames.size()))
    List.push_back(FieldByName(ExtractFieldName(FieldNames, pos)));
}

void TDataSet::GetFieldNames(TStrings* List) const {
  if (FFields->GetCount() > 0) {
    FFields->GetFieldNames(List);
    return;
  }
  FFieldDefs->Update();
  FFieldDefs->GetItemNames(List);
}

Variant TDataSet::GetFieldValues(const String& FieldName) const {
  if (FieldName.find(';') == String::npos) return FieldByName(FieldName)->GetValue();
  std::vector<TField*> fields;
  GetFieldList(fields, FieldName);
  std::vector<Variant> values;
  values.reserve(fields.size());
  for (TField* field : fields) values.push_back(field->GetValue());
  return VarArrayOf(values);
}

void TDataSet::SetFieldValues(const String& FieldName, const Variant& Value) {
  if (FieldName.find(';') == String::npos) {
    FieldByName(FieldName)->SetValue(Value);
    return;
  }
  std::vector<TField*> fields;
  GetFieldList(fields, FieldName);
  for (size_t i = 0; i < fields.size(); ++i) fields[i]->SetValue(Value[static_cast<int32_t>(i)]);
}

// ---------------------------------------------------------------------------------------------
// Calculated and lookup fields

// Runs the calculation of one record buffer in the calc-fields state, where the fields read and
// write that buffer (CalcBuffer).
void TDataSet::GetCalcFields(TRecordBuffer Buffer) {
  if (FCalcFieldsSize <= 0 && !FInternalCalcFields) return;
  const TDataSetState saved = FState;
  FState = dsCalcFields;
  TScopeExit restore([&] { FState = saved; });
  CalculateFields(Buffer);
}

void TDataSet::CalculateFields(TRecordBuffer Buffer) {
  FCalcBuffer = Buffer;
  if (FState != dsInternalCalc) {
    ClearCalcFields(FCalcBuffer);
    for (int i = 0; i < FFields->GetCount(); ++i) {
      TField* field = FFields->GetField(i);
      if (field->GetFieldKind() == fkLookup) CalcLookupValue(field);
    }
  }
  DoOnCalcFields();
}

// A lookup value comes from the field's cache when it keeps one, else from the lookup data set.
// A key that finds nothing leaves the field Null, as ClearCalcFields made it.
void TDataSet::CalcLookupValue(TField* Field) {
  Variant value;
  if (Field->GetLookupCache()) {
    if (!Field->GetLookupList()) return;
    value = Field->GetLookupList()->ValueOfKey(GetFieldValues(Field->GetKeyFields()));
  } else {
    TDataSet* lookupDataSet = Field->GetLookupDataSet();
    if (!lookupDataSet || !lookupDataSet->GetActive()) return;
    value = lookupDataSet->Lookup(Field->GetLookupKeyFields(), GetFieldValues(Field->GetKeyFields()),
                                  Field->GetLookupResultField());
  }
  if (!VarIsEmpty(value) && !VarIsNull(value)) Field->SetValue(value);
}

}  // namespace orv
