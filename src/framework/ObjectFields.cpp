// Object fields: fields with sub-fields. TADTField (a record of named parts), TArrayField
// (elements "Name[i]"), TDataSetField (a nested data set whose fields are its sub-fields) and
// TReferenceField.

#include "DB.h"

namespace orv {

ORV_PUBLISH(TObjectField) {
  p.Property("ObjectType", &TObjectField::GetObjectType, &TObjectField::SetObjectType);
}
ORV_IMPLEMENT_CLASS(TADTField)
ORV_PUBLISH(TArrayField) {
  p.Property("Size", &TArrayField::GetSize, &TArrayField::SetSize).Default(10);
}
ORV_PUBLISH(TDataSetField) {
  p.Property("IncludeObjectField", &TDataSetField::GetIncludeObjectField,
             &TDataSetField::SetIncludeObjectField)
      .Default(false);
}
ORV_IMPLEMENT_CLASS(TReferenceField)

// ---------------------------------------------------------------------------------------------
// TObjectField

TObjectField::TObjectField(TComponent* AOwner)
    : TField(AOwner),
      FOwnedFields(std::make_unique<TFields>(nullptr)),
      FFields(FOwnedFields.get()) {
  FOwnedFields->FParentField = this;
}

TObjectField::~TObjectField() {
  // A field freed on its own closes its data set first, while the sub-fields the data set knows
  // are still there.
  Destroying();
  TDataSet* dataSet = GetDataSet();
  if (TField::FFields && dataSet && !dataSet->GetComponentState().Contains(csDestroying))
    dataSet->Close();
  FOwnedFields.reset();
}

void TObjectField::SetDataSet(TDataSet* ADataSet) {
  TField::SetDataSet(ADataSet);
  SpreadDataSet(ADataSet);
}

// The sub-fields (and theirs) belong to the data set of the field.
void TObjectField::SpreadDataSet(TDataSet* ADataSet) {
  if (FFields != FOwnedFields.get()) return;
  FOwnedFields->FDataSet = ADataSet;
  for (int i = 0; i < FOwnedFields->GetCount(); ++i) {
    TField* child = FOwnedFields->GetField(i);
    child->FDataSet = ADataSet;
    if (auto* objectChild = dynamic_cast<TObjectField*>(child))
      objectChild->SpreadDataSet(ADataSet);
  }
}

void TObjectField::Bind(bool Binding) { TField::Bind(Binding); }

bool TObjectField::GetIsNull() const {
  for (int i = 0; i < FFields->GetCount(); ++i)
    if (!FFields->GetField(i)->GetIsNull()) return false;
  return true;
}

Variant TObjectField::GetAsVariant() const {
  std::vector<Variant> values;
  values.reserve(static_cast<size_t>(FFields->GetCount()));
  for (int i = 0; i < FFields->GetCount(); ++i)
    values.push_back(FFields->GetField(i)->GetAsVariant());
  return VarArrayOf(values);
}

// From an array: element i to sub-field i, as far as both go.
void TObjectField::SetVarValue(const Variant& Value) {
  if (!VarIsArray(Value)) DatabaseErrorFmt(SFieldValueError, {GetDisplayName()});
  const int32_t low = VarArrayLowBound(Value, 1);
  const int32_t count = std::min(VarArrayHighBound(Value, 1) - low + 1, FFields->GetCount());
  for (int32_t i = 0; i < count; ++i)
    FFields->GetField(i)->SetAsVariant(VarArrayGet(Value, {low + i}));
}

int32_t TObjectField::GetDefaultWidth() const {
  int32_t width = 0;
  for (int i = 0; i < FFields->GetCount(); ++i)
    width += FFields->GetField(i)->GetDisplayWidth() + 2;
  return width > 0 ? width : TField::GetDefaultWidth();
}

void TObjectField::GetText(String& Text, bool DisplayText) const {
  Text = "(";
  for (int i = 0; i < FFields->GetCount(); ++i) {
    if (i > 0) Text += ", ";
    TField* child = FFields->GetField(i);
    Text += DisplayText ? child->GetDisplayText() : child->GetEditText();
  }
  Text += ")";
}

// For form files: the sub-fields that the root owns are stored inside this field.
void TObjectField::GetChildren(const TGetChildProc& Proc, TComponent* Root) {
  for (int i = 0; i < FOwnedFields->GetCount(); ++i) {
    TField* child = FOwnedFields->GetField(i);
    if (child->GetOwner() == Root) Proc(child);
  }
}

TADTField::TADTField(TComponent* AOwner) : TObjectField(AOwner) { SetDataType(ftADT); }

TArrayField::TArrayField(TComponent* AOwner) : TObjectField(AOwner) {
  SetDataType(ftArray);
  SetSize(10);
}

void TArrayField::CheckTypeSize(int32_t Value) const {
  if (Value < 0) DatabaseError(SInvalidFieldSize);
}

// ---------------------------------------------------------------------------------------------
// TDataSetField

TDataSetField::TDataSetField(TComponent* AOwner) : TObjectField(AOwner) { SetDataType(ftDataSet); }
TReferenceField::TReferenceField(TComponent* AOwner) : TDataSetField(AOwner) {
  SetDataType(ftReference);
}

TDataSetField::~TDataSetField() {
  Destroying();
  AssignNestedDataSet(nullptr);
}

TDataSet* TDataSetField::GetNestedDataSet() const {
  TDataSet* dataSet = GetDataSet();
  if (!FNestedDataSet && dataSet && !dataSet->GetComponentState().Contains(csReading))
    dataSet->CreateNestedDataSet(const_cast<TDataSetField*>(this));  // it assigns itself
  return FNestedDataSet;
}

void TDataSetField::AssignNestedDataSet(TDataSet* Value) {
  if (FNestedDataSet) {
    FNestedDataSet->Close();
    FNestedDataSet->FDataSetField = nullptr;
    if (GetDataSet()) GetDataSet()->GetNestedDataSets()->Remove(FNestedDataSet);
  }
  FNestedDataSet = Value;
  if (Value) {
    if (GetDataSet()) GetDataSet()->GetNestedDataSets()->Add(Value);
    Value->FreeNotification(this);
    FFields = Value->GetFields();
  } else {
    FFields = FOwnedFields.get();
  }
}

void TDataSetField::SetIncludeObjectField(bool Value) {
  CheckInactive();
  FIncludeObjectField = Value;
}

void TDataSetField::Bind(bool Binding) {
  TObjectField::Bind(Binding);
  if (Binding) {
    TDataSet* nested = GetNestedDataSet();
    if (nested && nested->GetState() == dsInactive) nested->Open();
  } else if (FNestedDataSet) {
    FNestedDataSet->Close();
  }
}

bool TDataSetField::GetCanModify() const {
  return TObjectField::GetCanModify() && FNestedDataSet && FNestedDataSet->GetActive();
}

bool TDataSetField::GetIsNull() const {
  return !FNestedDataSet || !FNestedDataSet->GetActive() || FNestedDataSet->IsEmpty();
}

Variant TDataSetField::GetAsVariant() const { AccessError("Variant"); }

void TDataSetField::GetText(String& Text, bool) const { Text = GetClassDesc(); }

void TDataSetField::Notification(TComponent* AComponent, TOperation Operation) {
  TObjectField::Notification(AComponent, Operation);
  if (Operation == opRemove && AComponent == FNestedDataSet) {
    FNestedDataSet = nullptr;
    FFields = FOwnedFields.get();
  }
}

}  // namespace orv
