// TORVCustomData: construction and destruction, opening and closing, the record count, the data
// events and the signature of the field list.

#include <algorithm>

#include "Forms.h"
#include "ORVData.h"
#include "ORVIndexList.h"
#include "ORVRecordBuffer.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TORVCustomData)

namespace {

constexpr const char* SNoFieldsDefined = "No fields defined in this DataSet";

// Which fields exist and in which order: each field's address shifted by its place, summed with
// wrap-around; object fields add the sum of their sub-fields.
uint32_t FieldsSignature(const TFields* Fields) {
  uint32_t sum = 0;
  for (int i = 0; i < Fields->GetCount(); ++i) {
    TField* field = Fields->GetField(i);
    sum += static_cast<uint32_t>(reinterpret_cast<uintptr_t>(field) >> (i % 16));
    if (field->GetDataType() == ftADT || field->GetDataType() == ftArray)
      sum += FieldsSignature(static_cast<TObjectField*>(field)->GetFields());
  }
  return sum;
}

}  // namespace

TORVCustomData::TORVCustomData(TComponent* AOwner)
    : TDataSet(AOwner), FMasterDataLink(std::make_unique<TMasterDataLink>(this)) {
  SetObjectView(true);
}

TORVCustomData::~TORVCustomData() {
  Destroying();
  Close();
}

// ---------------------------------------------------------------------------------------------
// Opening and closing

void TORVCustomData::OpenCursor(bool InfoQuery) {
  if (TDataSetField* field = GetDataSetField()) {
    auto* parent = dynamic_cast<TORVCustomData*>(field->GetDataSet());
    if (!parent) throw EInvalidCast("Invalid class typecast");
    FParentDataSet = parent;
    OpenParentDataSet(parent);
  }
  TDataSet::OpenCursor(InfoQuery);
  if (!GetDataSetField() && GetFieldDefs()->GetCount() == 0) {
    CloseCursor();
    DatabaseError(SNoFieldsDefined, this);
  }
  // Nested data sets opened while this one was still opening saw no current record.
  if (GetNestedDataSets()->GetCount() > 0) DataEvent(deDataSetChange, 0);
}

// The cursor counts as open from the start, so that updating the definitions reads them from
// this cursor instead of opening another one.
void TORVCustomData::InternalOpen() {
  FCursorOpen = true;
  FRecordNumber = -1;
  SetBookmarkSize(sizeof(int32_t));
  GetFieldDefs()->SetUpdated(false);
  GetFieldDefs()->Update();
  GetFieldDefList()->SetUpdated(false);
  GetFieldDefList()->Update();
  if (GetDefaultFields()) CreateFields();
  FieldListChanged();
  BindFields(true);
  SetupIndexFields();
  FRecordSize = ORVRecordSize(GetFieldList()->GetCount());
  SetRecordCount(CountRecords());
}

void TORVCustomData::InternalClose() {
  SetRecordCount(0);
  BindFields(false);
  if (GetDefaultFields()) DestroyFields();
  ClearIndexFields();
  FModifiedFields.clear();  // default fields are gone
  FDetailValues = Unassigned();
  FDetailFilter = false;
  FCursorOpen = false;
}

void TORVCustomData::CloseCursor() {
  TDataSet::CloseCursor();
  FParentDataSet = nullptr;
}

bool TORVCustomData::IsCursorOpen() const { return FCursorOpen; }

void TORVCustomData::InternalHandleException() { ApplicationHandleException(this); }

// ---------------------------------------------------------------------------------------------
// The record count

bool TORVCustomData::ParentOrMasterEmpty() const {
  auto emptyOrInserting = [](const TDataSet* dataSet) {
    return dataSet->IsEmpty() || dataSet->GetState() == dsInsert;
  };
  if (FParentDataSet && emptyOrInserting(FParentDataSet)) return true;
  if (!FMasterDataLink->GetActive()) return false;
  const TDataSource* source = GetDataSource();
  return source && source->GetDataSet() && emptyOrInserting(source->GetDataSet());
}

int32_t TORVCustomData::CountRecords() {
  if (ParentOrMasterEmpty()) return 0;
  int32_t count = 0;
  DoOnCountRecords(count);
  return count;
}

int32_t TORVCustomData::GetRecordCount() const { return FRecordCount; }

void TORVCustomData::SetRecordCount(int32_t Value) {
  CheckInactive();
  FRecordCount = std::max(Value, 0);
  if (FIndexList) FIndexList->Update();
}

void TORVCustomData::RefreshDataSet() {
  if (!GetActive()) return;
  CheckBrowseMode();
  FRecordCount = std::max(CountRecords(), 0);
  if (FIndexList) FIndexList->Update();
  First();
}

void TORVCustomData::RefreshDataSetField() {
  if (!GetActive() || !GetDataSetField()) return;
  SetActive(false);
  SetActive(true);
}

TDataSource* TORVCustomData::GetDataSource() const { return FMasterDataLink->GetDataSource(); }

// ---------------------------------------------------------------------------------------------
// The data events

void TORVCustomData::DoOnCountRecords(int32_t& Count) {
  if (FOnCountRecords) FOnCountRecords(this, Count);
}

void TORVCustomData::DoOnGetFieldData(int32_t Index, TField* Field, Variant& Data) {
  if (FOnGetFieldData) FOnGetFieldData(this, Index, Field, Data);
}

void TORVCustomData::DoOnSetFieldData(int32_t Index, TField* Field, const Variant& Data) {
  if (FOnSetFieldData) FOnSetFieldData(this, Index, Field, Data);
}

void TORVCustomData::DoOnInsertRecord(int32_t Index) {
  if (FOnInsertRecord) FOnInsertRecord(this, Index);
}

void TORVCustomData::DoOnDeleteRecord(int32_t Index) {
  if (FOnDeleteRecord) FOnDeleteRecord(this, Index);
}

// ---------------------------------------------------------------------------------------------
// Framework data events

// The buffers hold one value slot per field-list entry in field-list order: when the fields
// changed, every buffer is fetched again before the list is rebuilt in its new order.
void TORVCustomData::DataEvent(TDataEvent Event, intptr_t Info) {
  if (Event == deParentScroll && GetActive()) {
    RefreshDataSetField();
  } else if (Event == deLayoutChange && GetActive() && FieldListChanged()) {
    CheckBrowseMode();
    UpdateCursorPos();
    GetFieldList()->SetUpdated(false);
    Resync(TResyncMode{});
  }
  TDataSet::DataEvent(Event, Info);
}

bool TORVCustomData::FieldListChanged() {
  const uint32_t sum = FieldsSignature(GetFields());
  const bool changed = sum != FFieldListSum;
  FFieldListSum = sum;
  return changed;
}

}  // namespace orv
