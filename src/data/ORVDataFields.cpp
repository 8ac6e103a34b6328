// TORVCustomData: field set-up. The engine has no schema of its own: its definitions come from
// a nested data set's field in the parent, from the persistent fields, or from the application
// and subclasses. Fields are made from definitions, added in code, hidden when their
// definitions say so, and given their labels and widths.

#include <algorithm>

#include "ORVData.h"
#include "TryFinally.h"

namespace orv {

namespace {

bool IsTextLike(TFieldType Type) {
  switch (Type) {
    case ftString: case ftMemo: case ftFmtMemo: case ftWideString: case ftADT: case ftArray:
    case ftWideMemo:
      return true;
    default:
      return false;
  }
}

std::vector<String> SplitFieldNames(const String& Names) {
  std::vector<String> names;
  int pos = 1;
  while (pos <= static_cast<int>(Names.size())) names.push_back(ExtractFieldName(Names, pos));
  return names;
}

// A definition per data and internally calculated field; object fields give child definitions
// from their sub-fields. Invisible fields leave the hidden marker on their definitions.
void AddDefsFromFields(TFieldDefs* Defs, const TFields* Fields) {
  for (int i = 0; i < Fields->GetCount(); ++i) {
    TField* field = Fields->GetField(i);
    const TFieldKind kind = field->GetFieldKind();
    if (kind != fkData && kind != fkInternalCalc) continue;
    TFieldDef* def = Defs->AddFieldDef();
    def->SetName(field->GetFieldName());
    def->SetDataType(field->GetDataType());
    def->SetSize(field->GetSize());
    TFieldAttributes attributes;
    if (field->GetRequired()) attributes.Include(faRequired);
    if (field->GetReadOnly()) attributes.Include(faReadonly);
    if (!field->GetVisible()) attributes.Include(faHiddenMarker);
    def->SetAttributes(attributes);
    if (kind == fkInternalCalc) def->SetInternalCalcField(true);
    if (auto* objectField = dynamic_cast<TObjectField*>(field)) {
      AddDefsFromFields(def->GetChildDefs(), objectField->GetFields());
      if (field->GetDataType() == ftArray) def->SetSize(def->GetChildDefs()->GetCount());
    }
  }
}

}  // namespace

TClass TORVCustomData::GetFieldListClass() const { return TORVFieldList::StaticClass(); }

void TORVCustomData::DefChanged(TObject*) { FStoreDefs = true; }

// ---------------------------------------------------------------------------------------------
// Fields in code

// The field is made from a temporary definition, which leaves the definitions again.
TField* TORVCustomData::AddField(const String& FieldName, TFieldType DataType, int32_t Size,
                                 TFieldKind Kind) {
  CheckInactive();
  TFieldDef* def = GetFieldDefs()->AddFieldDef();
  TScopeExit freeDef([def] { delete def; });
  def->SetName(FieldName);
  def->SetDataType(DataType);
  def->SetSize(Size);
  if (Kind != fkData) def->SetAttributes(TFieldAttributes{faReadonly});
  TField* field = def->CreateField(this, nullptr, FieldName, true);
  field->SetFieldKind(Kind);
  return field;
}

TField* TORVCustomData::AddDataField(const String& FieldName, TFieldType DataType,
                                     int32_t Size) {
  return AddField(FieldName, DataType, Size, fkData);
}

TField* TORVCustomData::AddCalcField(const String& FieldName, TFieldType DataType,
                                     int32_t Size) {
  return AddField(FieldName, DataType, Size, fkCalculated);
}

TField* TORVCustomData::AddLookupField(const String& FieldName, TFieldType DataType,
                                       int32_t Size, TDataSet* LookupDataSet,
                                       const String& KeyFields, const String& LookupKeyFields,
                                       const String& LookupResultField) {
  TField* field = AddField(FieldName, DataType, Size, fkLookup);
  field->SetLookupDataSet(LookupDataSet);
  field->SetKeyFields(KeyFields);
  field->SetLookupKeyFields(LookupKeyFields);
  field->SetLookupResultField(LookupResultField);
  return field;
}

void TORVCustomData::AddAllFields() {
  CheckInactive();
  GetFieldDefs()->SetUpdated(false);
  GetFieldDefs()->Update();
  CreateFields();
}

void TORVCustomData::RemoveFields() {
  CheckInactive();
  DestroyFields();
}

// ---------------------------------------------------------------------------------------------
// Fields from definitions

void TORVCustomData::CreateFields() {
  FInitCreateFields = GetFieldCount() == 0;
  TDataSet::CreateFields();
  if (GetFieldCount() == 0) return;
  if (FInitCreateFields || GetComponentState().Contains(csDesigning)) HideFields(GetFieldDefs());
  UpdateDataSetFields();
  UpdateFields();
}

// Depth first through the child definitions.
void TORVCustomData::HideFields(TFieldDefs* FieldDefs) {
  for (int i = 0; i < FieldDefs->GetCount(); ++i) {
    TFieldDef* def = FieldDefs->GetItem(i);
    TField* field = FindField(def->GetName());
    if (field && (def->GetAttributes().Contains(faHiddenMarker) ||
                  field->GetFieldKind() == fkInternalCalc))
      field->SetVisible(false);
    if (def->HasChildren()) HideFields(def->GetChildDefs());
  }
}

void TORVCustomData::UpdateDataSetFields() {
  TFieldList* list = GetFieldList();
  for (int i = 0; i < list->GetCount(); ++i) {
    auto* dataSetField = dynamic_cast<TDataSetField*>(list->GetField(i));
    if (!dataSetField) continue;
    auto* nested = dynamic_cast<TORVCustomData*>(dataSetField->GetNestedDataSet());
    if (nested && nested->GetFieldDefs()->GetCount() == 0) nested->DestroyFields();
  }
}

void TORVCustomData::UpdateFields() {
  DisableControls();
  TryFinally(
      [this] {
        TFieldList* list = GetFieldList();
        for (int i = 0; i < list->GetCount(); ++i) {
          TField* field = list->GetField(i);
          const String label = field->GetDisplayLabel();
          if (!label.empty() && label[0] == '_') field->SetDisplayLabel(label.substr(1));
          if (!IsTextLike(field->GetDataType())) continue;
          field->SetDisplayWidth(0);
          if (FDefaultWidth > 0 && field->GetDisplayWidth() > FDefaultWidth)
            field->SetDisplayWidth(FDefaultWidth);
        }
      },
      [this] { EnableControls(); });
}

void TORVCustomData::SetDefaultWidth(int32_t Value) {
  Value = std::max(Value, 0);
  if (Value == FDefaultWidth) return;
  FDefaultWidth = Value;
  UpdateFields();
}

// ---------------------------------------------------------------------------------------------
// Definitions

void TORVCustomData::InternalInitFieldDefs() {
  InitFieldDefsFromDataSetField();
  InitFieldDefsFromFields();
  InitInternalCalcFieldDefs();
}

void TORVCustomData::InitFieldDefsFromDataSetField() {
  TDataSetField* field = GetDataSetField();
  if (!field || GetFieldDefs()->GetCount() > 0) return;
  TFieldDef* parentDef = field->GetDataSet()->GetFieldDefList()->Find(field->GetFullName());
  if (parentDef) GetFieldDefs()->Assign(parentDef->GetChildDefs());
}

void TORVCustomData::InitFieldDefsFromFields() {
  TFieldDefs* defs = GetFieldDefs();
  if (defs->GetCount() < GetFieldCount()) defs->Clear();
  if (defs->GetCount() > 0) return;
  defs->BeginUpdate();
  TryFinally([&] { AddDefsFromFields(defs, GetFields()); }, [&] { defs->EndUpdate(); });
}

void TORVCustomData::InitInternalCalcFieldDefs() {
  const std::vector<String> names = SplitFieldNames(GetInternalCalcFieldNames());
  TFieldDefs* defs = GetFieldDefs();
  for (int i = 0; i < defs->GetCount(); ++i) {
    TFieldDef* def = defs->GetItem(i);
    const bool named = std::any_of(names.begin(), names.end(), [def](const String& name) {
      return SameText(name, def->GetName());
    });
    if (named) def->SetInternalCalcField(true);
  }
}

String TORVCustomData::DefaultInternalCalcFieldNames() const { return "RowLevel;RowOrder;RowState"; }

String TORVCustomData::GetInternalCalcFieldNames() const {
  return FInternalCalcFieldNames.empty() ? DefaultInternalCalcFieldNames() : FInternalCalcFieldNames;
}

void TORVCustomData::SetInternalCalcFieldNames(const String& Value) {
  const String stored = Value == DefaultInternalCalcFieldNames() ? String() : Value;
  if (stored == FInternalCalcFieldNames) return;
  FInternalCalcFieldNames = stored;
  InitInternalCalcFieldDefs();
}

}  // namespace orv
