// TDataSet: nested data sets. A data-set field of a parent holds a nested data set whose records
// belong to the parent's current record; the parent keeps a list of its nested data sets, tells
// them when it scrolls (deParentScroll) and lets them post before it leaves a record.

#include "DataSet.h"

#include "DBConsts.h"

namespace orv {

TList* TDataSet::GetNestedDataSets() {
  if (!FNestedDataSets) FNestedDataSets = std::make_unique<TList>();
  return FNestedDataSets.get();
}

TClass TDataSet::GetNestedDataSetClass() const {
  return FNestedDataSetClass ? FNestedDataSetClass : ClassType();
}

TDataSet* TDataSet::GetParentDataSet() const {
  return FDataSetField ? FDataSetField->GetDataSet() : nullptr;
}

// The nested data set belongs to the field: it lives as long as the field does.
TDataSet* TDataSet::CreateNestedDataSet(TDataSetField* DataSetField) {
  auto* nested = static_cast<TDataSet*>(CreateComponent(GetNestedDataSetClass(), *DataSetField));
  try {
    nested->SetObjectView(true);
    nested->SetDataSetField(DataSetField);
  } catch (...) {
    delete nested;
    throw;
  }
  return nested;
}

void TDataSet::SetDataSetField(TDataSetField* Value) {
  if (Value == FDataSetField) return;
  if (Value) {
    TDataSet* parent = Value->GetDataSet();
    if (parent == this || (parent->GetDataSource() && parent->GetDataSource()->GetDataSet() == this))
      DatabaseError(SCircularDataLink, this);
    if (!InheritsFrom(parent->GetNestedDataSetClass()))
      DatabaseErrorFmt(SNestedDataSetClass, {parent->GetNestedDataSetClass()->Name}, this);
  }
  if (GetActive()) Close();
  if (FDataSetField) FDataSetField->AssignNestedDataSet(nullptr);
  FDataSetField = Value;
  if (Value) {
    Value->AssignNestedDataSet(this);
    if (Value->GetDataSet()->GetActive()) Open();
  }
}

void TDataSet::OpenParentDataSet(TDataSet* ParentDataSet) {
  if (!ParentDataSet->IsCursorOpen()) ParentDataSet->Open();
}

void TDataSet::NotifyNestedDataSets() {
  if (!FNestedDataSets) return;
  for (int32_t i = 0; i < FNestedDataSets->GetCount(); ++i) {
    auto* nested = static_cast<TDataSet*>(FNestedDataSets->Get(i));
    if (nested->GetActive()) nested->DataEvent(deParentScroll, 0);
  }
}

void TDataSet::CheckNestedBrowseMode() {
  if (!FNestedDataSets) return;
  for (int32_t i = 0; i < FNestedDataSets->GetCount(); ++i) {
    auto* nested = static_cast<TDataSet*>(FNestedDataSets->Get(i));
    if (nested->GetActive()) nested->CheckBrowseMode();
  }
}

}  // namespace orv
