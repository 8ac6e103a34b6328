// TDataLink and TMasterDataLink: how a control, a grid or a detail data set follows a data set
// through a data source. A link's record window is BufferCount buffers of the data set's ring,
// starting at FFirstRecord, kept around the data set's active record.

#include <algorithm>

#include "DataSet.h"

#include "DBConsts.h"
#include "TryFinally.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TDataLink)
ORV_IMPLEMENT_CLASS(TDetailDataLink)
ORV_IMPLEMENT_CLASS(TMasterDataLink)

TDataLink::TDataLink() = default;

TDataLink::~TDataLink() {
  FActive = false;
  FEditing = false;
  FDataSourceFixed = false;
  SetDataSource(nullptr);
}

void TDataLink::SetDataSource(TDataSource* ADataSource) {
  if (FDataSource == ADataSource) return;
  if (FDataSourceFixed) DatabaseError(SDataSourceChange, FDataSource);
  if (FDataSource) FDataSource->RemoveDataLink(this);
  if (ADataSource) ADataSource->AddDataLink(this);
}

TDataSet* TDataLink::GetDataSet() const { return FDataSource ? FDataSource->GetDataSet() : nullptr; }

void TDataLink::SetReadOnly(bool Value) {
  if (FReadOnly == Value) return;
  FReadOnly = Value;
  UpdateState();
}

void TDataLink::SetActive(bool Value) {
  if (FActive == Value) return;
  FActive = Value;
  if (Value)
    UpdateRange();
  else
    FFirstRecord = 0;
  ActiveChanged();
}

void TDataLink::SetEditing(bool Value) {
  if (FEditing == Value) return;
  FEditing = Value;
  EditingChanged();
}

void TDataLink::UpdateState() {
  const TDataSetState state = FDataSource ? FDataSource->GetState() : dsInactive;
  SetActive(state != dsInactive);
  SetEditing((state == dsEdit || state == dsInsert || state == dsSetKey) && !FReadOnly);
}

// Keeps the window over the active record and inside the data set's ring.
void TDataLink::UpdateRange() {
  TDataSet* dataSet = GetDataSet();
  const int active = dataSet->FActiveRecord;
  const int low = std::max(0, active - FBufferCount + 1);
  const int high = std::min(active, std::max(0, dataSet->FBufferCount - FBufferCount));
  if (FFirstRecord < low) FFirstRecord = low;
  if (FFirstRecord > high) FFirstRecord = high;
}

int TDataLink::GetActiveRecord() const {
  if (!FActive || FDataSource->GetState() == dsSetKey) return 0;
  return GetDataSet()->FActiveRecord - FFirstRecord;
}

void TDataLink::SetActiveRecord(int Value) {
  if (FActive && FDataSource->GetState() != dsSetKey) GetDataSet()->FActiveRecord = Value + FFirstRecord;
}

int TDataLink::GetRecordCount() const {
  if (!FActive) return 0;
  if (FDataSource->GetState() == dsSetKey) return 1;
  return std::min(FBufferCount, std::max(0, GetDataSet()->FRecordCount - FFirstRecord));
}

void TDataLink::SetBufferCount(int Value) {
  if (FBufferCount == Value) return;
  FBufferCount = Value;
  if (!FActive) return;
  UpdateRange();
  GetDataSet()->UpdateBufferCount();
  UpdateRange();
}

bool TDataLink::GetBOF() const {
  TDataSet* dataSet = GetDataSet();
  return !dataSet || dataSet->GetBOF();
}

bool TDataLink::GetEOF() const {
  TDataSet* dataSet = GetDataSet();
  return !dataSet || dataSet->GetEOF();
}

bool TDataLink::Edit() {
  if (!FReadOnly && FDataSource) FDataSource->Edit();
  return FEditing;
}

void TDataLink::UpdateRecord() {
  FUpdating = true;
  TScopeExit done([this] { FUpdating = false; });
  UpdateData();
}

// A scroll event carries the net shift of the data set's ring: the window follows its records,
// then moves over the active record; the distance it moved is what the link hears.
void TDataLink::DataEvent(TDataEvent Event, intptr_t Info) {
  if (Event == deUpdateState) {
    UpdateState();
    return;
  }
  if (Event == deDisabledStateChange) {
    if (Info)
      UpdateState();
    else
      SetActive(false);
    return;
  }
  if (!FActive) return;
  switch (Event) {
    case deFieldChange:
    case deRecordChange:
      if (!FUpdating) RecordChanged(reinterpret_cast<TField*>(Info));
      break;
    case deDataSetChange:
    case deDataSetScroll:
    case deLayoutChange: {
      int distance = 0;
      if (FDataSource->GetState() != dsSetKey) {
        if (Event == deDataSetScroll) FFirstRecord += static_cast<int>(Info);
        const int first = FFirstRecord;
        UpdateRange();
        distance = FFirstRecord - first;
      }
      if (Event == deDataSetChange)
        DataSetChanged();
      else if (Event == deDataSetScroll)
        DataSetScrolled(distance);
      else
        LayoutChanged();
      break;
    }
    case deUpdateRecord:
      UpdateRecord();
      break;
    case deCheckBrowseMode:
      CheckBrowseMode();
      break;
    case deFocusControl:
      FocusControl(reinterpret_cast<TField**>(Info));
      break;
    default:
      break;
  }
}

void TDataLink::ActiveChanged() {}
void TDataLink::CheckBrowseMode() {}
void TDataLink::DataSetChanged() { RecordChanged(nullptr); }
void TDataLink::DataSetScrolled(int) { DataSetChanged(); }
void TDataLink::EditingChanged() {}
void TDataLink::FocusControl(TField**) {}
void TDataLink::LayoutChanged() { DataSetChanged(); }
void TDataLink::RecordChanged(TField*) {}
void TDataLink::UpdateData() {}

// ---------------------------------------------------------------------------------------------
// TMasterDataLink

TMasterDataLink::TMasterDataLink(TDataSet* ADataSet) : FDataSet(ADataSet) {}

void TMasterDataLink::SetFieldNames(const String& Value) {
  if (FFieldNames == Value) return;
  FFieldNames = Value;
  ActiveChanged();
}

// The master fields are resolved again whenever the link or the master's layout changes; the
// detail hears whether it can follow the master (change) or not (disable).
void TMasterDataLink::ActiveChanged() {
  FFields.clear();
  if (GetActive()) {
    try {
      GetDataSet()->GetFieldList(FFields, FFieldNames);
    } catch (...) {
      FFields.clear();
      throw;
    }
  }
  if (!FDataSet || !FDataSet->GetActive() || FDataSet->GetComponentState().Contains(csDestroying))
    return;
  if (GetActive() && !FFields.empty())
    DoMasterChange();
  else
    DoMasterDisable();
}

void TMasterDataLink::CheckBrowseMode() {
  if (FDataSet && FDataSet->GetActive()) FDataSet->CheckBrowseMode();
}

void TMasterDataLink::LayoutChanged() { ActiveChanged(); }

// A move of the master (Field null) or a change of one of its master fields.
void TMasterDataLink::RecordChanged(TField* Field) {
  if (GetDataSource()->GetState() == dsSetKey || !FDataSet || !FDataSet->GetActive() ||
      FFields.empty())
    return;
  if (!Field || std::find(FFields.begin(), FFields.end(), Field) != FFields.end()) DoMasterChange();
}

void TMasterDataLink::DoMasterChange() {
  if (FOnMasterChange) FOnMasterChange(this);
}

void TMasterDataLink::DoMasterDisable() {
  if (FOnMasterDisable) FOnMasterDisable(this);
}

}  // namespace orv
