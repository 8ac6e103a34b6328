// TField: identity, place in a data set or object field, display settings, events and the
// published properties. Values and text are in FieldData.cpp, lookups in FieldLookup.cpp.

#include "DB.h"
#include "FieldsInternal.h"

namespace orv {

ORV_PUBLISH(TField) {
  p.Property("Alignment", &TField::GetAlignment, &TField::SetAlignment).Default(taLeftJustify);
  p.Property("DefaultExpression", &TField::GetDefaultExpression, &TField::SetDefaultExpression);
  p.Property("DisplayLabel", &TField::GetDisplayLabel, &TField::SetDisplayLabel)
      .Stored(&TField::IsDisplayLabelStored);
  p.Property("DisplayWidth", &TField::GetDisplayWidth, &TField::SetDisplayWidth)
      .Stored(&TField::IsDisplayWidthStored);
  p.Property("FieldKind", &TField::GetFieldKind, &TField::SetFieldKind).Default(fkData);
  p.Property("FieldName", &TField::GetFieldName, &TField::SetFieldName);
  p.Property("Index", &TField::GetIndex, &TField::SetIndex).Stored(false);
  p.Property("LookupDataSet", &TField::GetLookupDataSet, &TField::SetLookupDataSet);
  p.Property("LookupKeyFields", &TField::GetLookupKeyFields, &TField::SetLookupKeyFields);
  p.Property("LookupResultField", &TField::GetLookupResultField, &TField::SetLookupResultField);
  p.Property("KeyFields", &TField::GetKeyFields, &TField::SetKeyFields);
  p.Property("LookupCache", &TField::GetLookupCache, &TField::SetLookupCache).Default(false);
  p.Property("Origin", &TField::GetOrigin, &TField::SetOrigin);
  p.Property("ProviderFlags", &TField::GetProviderFlags, &TField::SetProviderFlags)
      .Default(TProviderFlags{pfInUpdate, pfInWhere});
  p.Property("ReadOnly", &TField::GetReadOnly, &TField::SetReadOnly).Default(false);
  p.Property("Required", &TField::GetRequired, &TField::SetRequired).Default(false);
  p.Property("Visible", &TField::GetVisible, &TField::SetVisible).Default(true);
  p.Property("OnChange", &TField::GetOnChange, &TField::SetOnChange);
  p.Property("OnGetText", &TField::GetOnGetText, &TField::SetOnGetText);
  p.Property("OnSetText", &TField::GetOnSetText, &TField::SetOnSetText);
  p.Property("OnValidate", &TField::GetOnValidate, &TField::SetOnValidate);
}

namespace {

bool IsDestroying(const TComponent* component) {
  return component->GetComponentState().Contains(csDestroying);
}

}  // namespace

TField::TField(TComponent* AOwner) : TComponent(AOwner) {}

TField::~TField() {
  Destroying();
  if (!FFields) return;
  // Fields change only while their data set is closed; a data set being freed closed itself.
  if (FDataSet && !IsDestroying(FDataSet)) FDataSet->Close();
  FFields->Remove(this);
}

// ---------------------------------------------------------------------------------------------
// Place in a data set or an object field

void TField::CheckInactive() const {
  if (FDataSet) FDataSet->CheckInactive();
}

void TField::SetDataSet(TDataSet* ADataSet) {
  if (ADataSet == FDataSet && !FParentField) return;
  if (FDataSet) FDataSet->CheckInactive();
  if (ADataSet) {
    ADataSet->CheckInactive();
    ADataSet->GetFields()->CheckFieldName(FFieldName);
  }
  if (FFields) FFields->Remove(this);
  FParentField = nullptr;
  FDataSet = ADataSet;
  if (ADataSet) ADataSet->GetFields()->Add(this);
}

void TField::SetParentField(TObjectField* AField) {
  if (AField == FParentField) return;
  if (FDataSet) FDataSet->CheckInactive();
  if (AField) {
    if (AField->GetDataSet()) AField->GetDataSet()->CheckInactive();
    AField->GetFields()->CheckFieldName(FFieldName);
  }
  if (FFields) FFields->Remove(this);
  FParentField = AField;
  if (!AField) {
    FDataSet = nullptr;
    return;
  }
  AField->GetFields()->Add(this);
  FDataSet = AField->GetDataSet();
  if (auto* objectField = dynamic_cast<TObjectField*>(this)) objectField->SpreadDataSet(FDataSet);
}

void TField::SetParentComponent(TComponent* AParent) {
  if (GetComponentState().Contains(csLoading)) return;
  if (auto* objectField = dynamic_cast<TObjectField*>(AParent))
    SetParentField(objectField);
  else
    SetDataSet(dynamic_cast<TDataSet*>(AParent));
}

TComponent* TField::GetParentComponent() const {
  if (FParentField) return FParentField;
  return FDataSet;
}

void TField::SetFieldName(const String& Value) {
  CheckInactive();
  if (FFields && !AnsiSameText(Value, FFieldName)) FFields->CheckFieldName(Value);
  FFieldName = Value;
  if (FDisplayLabel == Value) FDisplayLabel.clear();
  if (FFields) FFields->Changed();
}

String TField::GetFullName() const {
  const TObjectField* parent = FParentField;
  while (parent && parent->GetUnNamed()) parent = parent->GetParentField();
  if (!parent) return FFieldName;
  return JoinFullName(parent->GetFullName(), parent->GetFieldName(), FFieldName);
}

void TField::SetDataType(TFieldType Value) { FDataType = Value; }

void TField::SetFieldType(TFieldType) {}

void TField::SetFieldKind(TFieldKind Value) {
  if (Value == FFieldKind) return;
  CheckInactive();
  if (FFields && !FFields->GetValidFieldKinds().Contains(Value))
    DatabaseError(SInvalidFieldKind, FDataSet);
  FFieldKind = Value;
}

void TField::SetCalculated(bool Value) {
  if (Value)
    SetFieldKind(fkCalculated);
  else if (FFieldKind == fkCalculated)
    SetFieldKind(fkData);
}

void TField::SetLookup(bool Value) {
  if (Value)
    SetFieldKind(fkLookup);
  else if (FFieldKind == fkLookup)
    SetFieldKind(fkData);
}

void TField::SetSize(int32_t Value) {
  CheckInactive();
  CheckTypeSize(Value);
  FSize = Value;
}

void TField::CheckTypeSize(int32_t Value) const {
  if (Value != 0 && !GetIsBlob()) DatabaseError(SInvalidFieldSize);
}

int32_t TField::GetDataSize() const { return 0; }

int TField::GetIndex() const { return FFields ? FFields->IndexOf(this) : -1; }

void TField::SetIndex(int Value) {
  if (FFields) FFields->SetFieldIndex(this, Value);
}

bool TField::GetIsIndexField() const { return false; }

bool TField::GetCanModify() const {
  if (FFieldNo <= 0 || !FDataSet) return false;
  if (FDataSet->GetState() == dsSetKey) return GetIsIndexField();
  return !FReadOnly && FDataSet->GetCanModify();
}

// ---------------------------------------------------------------------------------------------
// Display

String TField::GetDisplayName() const { return FDisplayLabel.empty() ? FFieldName : FDisplayLabel; }

String TField::GetDisplayLabel() const { return GetDisplayName(); }

void TField::SetDisplayLabel(const String& Value) {
  const String label = Value == FFieldName ? String() : Value;
  if (label == FDisplayLabel) return;
  FDisplayLabel = label;
  PropertyChanged(true);
}

int32_t TField::GetDisplayWidth() const {
  return FDisplayWidth > 0 ? FDisplayWidth : GetDefaultWidth();
}

void TField::SetDisplayWidth(int32_t Value) {
  if (Value == FDisplayWidth) return;
  FDisplayWidth = Value;
  PropertyChanged(true);
}

int32_t TField::GetDefaultWidth() const { return 10; }

void TField::SetAlignment(TAlignment Value) {
  if (Value == FAlignment) return;
  FAlignment = Value;
  PropertyChanged(false);
}

void TField::SetVisible(bool Value) {
  if (Value == FVisible) return;
  FVisible = Value;
  PropertyChanged(true);
}

void TField::SetReadOnly(bool Value) {
  if (Value == FReadOnly) return;
  FReadOnly = Value;
  PropertyChanged(true);
}

void TField::SetEditMask(const String& Value) {
  FEditMask = Value;
  PropertyChanged(false);
}

void TField::PropertyChanged(bool LayoutAffected) {
  if (FDataSet && FDataSet->GetActive())
    FDataSet->DataEvent(LayoutAffected ? deLayoutChange : deDataSetChange, 0);
}

void TField::FocusControl() {
  if (!FDataSet || !FDataSet->GetActive()) return;
  TField* field = this;
  FDataSet->DataEvent(deFocusControl, reinterpret_cast<intptr_t>(&field));
}

String TField::GetClassDesc() const {
  const String name = ClassName();
  size_t first = !name.empty() && name.front() == 'T' ? 1 : 0;
  size_t last = name.size();
  if (last - first >= 5 && SameText(name.substr(last - 5), "FIELD")) last -= 5;
  const String desc = "(" + name.substr(first, last - first) + ")";
  return GetIsNull() ? desc : AnsiUpperCase(desc);
}

bool TField::IsValidChar(char) const { return true; }

// ---------------------------------------------------------------------------------------------
// Events and binding

void TField::Change() {
  if (FOnChange) FOnChange(this);
}

void TField::DataChanged() { Change(); }

void TField::Bind(bool Binding) {
  if (FFieldKind != fkLookup || !Binding) return;
  if (FLookupCache)
    RefreshLookupList();
  else
    ValidateLookupInfo(true);
}

void TField::FreeBuffers() {}

void TField::Notification(TComponent* AComponent, TOperation Operation) {
  TComponent::Notification(AComponent, Operation);
  if (Operation == opRemove && AComponent == FLookupDataSet) FLookupDataSet = nullptr;
}

}  // namespace orv
