// TDataSet: construction and destruction, states, opening and closing, the before/after
// events, data events and their broadcast to the data sources, and the control counter.

#include <algorithm>

#include "DataSet.h"

#include "DBConsts.h"
#include "SysUtils.h"
#include "TryFinally.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TDataSet)

TDataSet::TDataSet(TComponent* AOwner)
    : TComponent(AOwner),
      FFields(std::make_unique<TFields>(this)),
      FFieldDefs(std::make_unique<TFieldDefs>(this)),
      FFieldDefList(std::make_unique<TFieldDefList>(this)) {
  ClearBuffers();
}

// A descendant that fetches records closes itself in its own destructor (Destroying(); Close()):
// only it can still reach its InternalClose and FreeRecordBuffer. Here nothing virtual of a
// descendant is left, so a data set still open at this point can only be forgotten, not closed.
TDataSet::~TDataSet() {
  Destroying();
  if (FDataSetField) SetDataSetField(nullptr);
  DestroyFields();
  // Components the data set owns (default fields were freed above) may still point at it.
  DestroyComponents();
  while (!FDataSources.empty()) RemoveDataSource(FDataSources.back());
  if (FNestedDataSets) {
    // Nested data sets owned elsewhere outlive this one: they must forget their parent.
    for (int32_t i = FNestedDataSets->GetCount() - 1; i >= 0; --i)
      static_cast<TDataSet*>(FNestedDataSets->Get(i))->FDataSetField = nullptr;
  }
}

TFieldList* TDataSet::GetFieldList() const {
  if (!FFieldList) {
    std::unique_ptr<TObject> list = CreateObject(GetFieldListClass());
    auto* fieldList = dynamic_cast<TFieldList*>(list.get());
    if (!fieldList) throw EInvalidCast("Invalid class typecast");
    list.release();
    FFieldList.reset(fieldList);
    FFieldList->SetDataSet(const_cast<TDataSet*>(this));
  }
  return FFieldList.get();
}

TClass TDataSet::GetFieldListClass() const { return TFieldList::StaticClass(); }

// ---------------------------------------------------------------------------------------------
// States

void TDataSet::SetState(TDataSetState Value) {
  if (FState != Value) {
    FState = Value;
    FModified = false;
    DataEvent(deUpdateState, 0);
  }
}

// A temporary state hides itself from the links: the disable count keeps their events away.
TDataSetState TDataSet::SetTempState(TDataSetState Value) {
  TDataSetState previous = FState;
  FState = Value;
  ++FDisableCount;
  FModified = false;
  return previous;
}

void TDataSet::RestoreState(TDataSetState Value) {
  FState = Value;
  --FDisableCount;
  FModified = false;
}

void TDataSet::CheckActive() const {
  if (FState == dsInactive) DatabaseError(SDataSetClosed, this);
}

void TDataSet::CheckInactive() const {
  if (FState == dsInactive) return;
  // The designer and a component being updated close the data set instead of refusing.
  if (FComponentState.Contains(csUpdating) || FComponentState.Contains(csDesigning)) {
    const_cast<TDataSet*>(this)->Close();
    return;
  }
  DatabaseError(SDataSetOpen, this);
}

void TDataSet::CheckCanModify() {
  if (!GetCanModify()) DatabaseError(SDataSetReadOnly, this);
}

void TDataSet::CheckBiDirectional() {
  if (FIsUniDirectional) DatabaseError(SDataSetUnidirectional, this);
}

bool TDataSet::GetCanModify() const { return true; }
TDataSource* TDataSet::GetDataSource() const { return nullptr; }
int32_t TDataSet::GetRecordCount() const { return -1; }
int32_t TDataSet::GetRecNo() const { return -1; }
void TDataSet::SetRecNo(int32_t) {}

// ---------------------------------------------------------------------------------------------
// Opening and closing

void TDataSet::Open() { SetActive(true); }
void TDataSet::Close() { SetActive(false); }

void TDataSet::SetActive(bool Value) {
  if (FComponentState.Contains(csReading)) {
    FStreamedActive = Value;
    return;
  }
  if (GetActive() == Value) return;
  if (Value) {
    DoBeforeOpen();
    TryFinally([this] { OpenCursor(false); },
               [this] {
                 if (FState != dsOpening) OpenCursorComplete();
               });
  } else {
    const bool destroying = FComponentState.Contains(csDestroying);
    if (!destroying) DoBeforeClose();
    SetState(dsInactive);
    CloseCursor();
    if (!destroying) DoAfterClose();
  }
}

void TDataSet::OpenCursor(bool InfoQuery) {
  if (InfoQuery)
    InternalInitFieldDefs();
  else if (FState != dsOpening)
    DoInternalOpen();
}

void TDataSet::DoInternalOpen() {
  FDefaultFields = GetFieldCount() == 0;
  InternalOpen();
  FInternalOpenComplete = true;
  UpdateBufferCount();
  FBOF = true;
}

// Ends an open that OpenCursor began (at once, or later for a data set opening in the
// background): browse state and the after-open events, or a clean close when it failed.
void TDataSet::OpenCursorComplete() {
  auto finish = [this] {
    if (FInternalOpenComplete) {
      SetState(dsBrowse);
      DoAfterOpen();
      if (!IsEmpty()) DoAfterScroll();
    } else {
      SetState(dsInactive);
      CloseCursor();
    }
  };
  TryFinally(
      [this] {
        if (FState == dsOpening) DoInternalOpen();
      },
      finish);
}

void TDataSet::CloseCursor() {
  FInternalOpenComplete = false;
  FreeFieldBuffers();
  ClearBuffers();
  SetBufListSize(0);
  InternalClose();
  FBufferCount = 0;
  FDefaultFields = false;
}

void TDataSet::InitFieldDefs() {
  if (IsCursorOpen()) {
    InternalInitFieldDefs();
    return;
  }
  TryFinally([this] { OpenCursor(true); }, [this] { CloseCursor(); });
}

// A form read in the designer still opens when its data set cannot: the error is shown instead.
void TDataSet::Loaded() {
  TComponent::Loaded();
  if (!FStreamedActive) return;
  try {
    SetActive(true);
  } catch (...) {
    if (!FComponentState.Contains(csDesigning)) throw;
    InternalHandleException();
  }
}

void TDataSet::SetName(const String& NewName) {
  const String oldName = GetName();
  TComponent::SetName(NewName);
  if (!FComponentState.Contains(csDesigning) || GetName() == oldName || oldName.empty()) return;
  // At design time persistent fields are named after their data set; they follow a rename.
  for (int i = 0; i < FFields->GetCount(); ++i) {
    TField* field = FFields->GetField(i);
    if (field->GetOwner() != GetOwner()) continue;
    const String& fieldName = field->GetName();
    if (fieldName.size() <= oldName.size() || !SameText(fieldName.substr(0, oldName.size()), oldName))
      continue;
    try {
      field->SetName(NewName + fieldName.substr(oldName.size()));
    } catch (const EComponentError&) {
      // A name that is taken keeps the old one.
    }
  }
}

void TDataSet::Notification(TComponent* AComponent, TOperation Operation) {
  TComponent::Notification(AComponent, Operation);
  if (Operation == opRemove && FDataSetField && AComponent == FDataSetField) FDataSetField = nullptr;
}

// ---------------------------------------------------------------------------------------------
// Events

#define ORV_DO_EVENT(Name, Handler) \
  void TDataSet::Name() {           \
    if (Handler) Handler(this);     \
  }
ORV_DO_EVENT(DoBeforeOpen, FBeforeOpen)
ORV_DO_EVENT(DoAfterOpen, FAfterOpen)
ORV_DO_EVENT(DoBeforeClose, FBeforeClose)
ORV_DO_EVENT(DoAfterClose, FAfterClose)
ORV_DO_EVENT(DoBeforeInsert, FBeforeInsert)
ORV_DO_EVENT(DoAfterInsert, FAfterInsert)
ORV_DO_EVENT(DoBeforeEdit, FBeforeEdit)
ORV_DO_EVENT(DoAfterEdit, FAfterEdit)
ORV_DO_EVENT(DoBeforePost, FBeforePost)
ORV_DO_EVENT(DoAfterPost, FAfterPost)
ORV_DO_EVENT(DoBeforeCancel, FBeforeCancel)
ORV_DO_EVENT(DoAfterCancel, FAfterCancel)
ORV_DO_EVENT(DoBeforeDelete, FBeforeDelete)
ORV_DO_EVENT(DoAfterDelete, FAfterDelete)
ORV_DO_EVENT(DoBeforeScroll, FBeforeScroll)
ORV_DO_EVENT(DoAfterScroll, FAfterScroll)
ORV_DO_EVENT(DoBeforeRefresh, FBeforeRefresh)
ORV_DO_EVENT(DoAfterRefresh, FAfterRefresh)
ORV_DO_EVENT(DoOnCalcFields, FOnCalcFields)
ORV_DO_EVENT(DoOnNewRecord, FOnNewRecord)
#undef ORV_DO_EVENT

// ---------------------------------------------------------------------------------------------
// Data events

void TDataSet::DataEvent(TDataEvent Event, intptr_t Info) {
  bool notifySources = !(ControlsDisabled() || FState == dsBlockRead);
  switch (Event) {
    case deFieldChange: {
      // The record's calculated values follow first, so that OnChange and the links see them.
      auto* field = reinterpret_cast<TField*>(Info);
      if (field->GetFieldKind() == fkData || field->GetFieldKind() == fkInternalCalc)
        SetModified(true);
      UpdateCalcFields();
      field->DataChanged();
      break;
    }
    case deFieldListChange:
      if (FFieldList) FFieldList->SetUpdated(false);
      break;
    case dePropertyChange:
      FFieldDefs->SetUpdated(false);
      break;
    case deCheckBrowseMode:
      CheckNestedBrowseMode();
      break;
    case deDataSetChange:
    case deDataSetScroll:
      if (notifySources) NotifyNestedDataSets();
      break;
    case deLayoutChange:
      if (FFieldList) FFieldList->SetUpdated(false);
      if (ControlsDisabled()) FEnableEvent = deLayoutChange;
      break;
    case deUpdateState:
      // Disabled links still hear that the data set opened or closed, as a state change
      // they can act on; the full layout change follows when the controls are enabled.
      if (ControlsDisabled()) {
        Event = deDisabledStateChange;
        Info = FState != dsInactive;
        notifySources = true;
        FEnableEvent = deLayoutChange;
      }
      break;
    default:
      break;
  }
  if (!notifySources) return;
  for (size_t i = 0; i < FDataSources.size(); ++i) FDataSources[i]->DataEvent(Event, Info);
}

// After a field changed in the active record: the record's calculated values follow it.
void TDataSet::UpdateCalcFields() {
  if (FState == dsSetKey || FBuffers.empty()) return;
  if (FInternalCalcFields && FState != dsInternalCalc) RefreshInternalCalcFields(ActiveBuffer());
  if (FAutoCalcFields && FCalcFieldsSize > 0) GetCalcFields(ActiveBuffer());
}

void TDataSet::DisableControls() {
  if (FDisableCount == 0) {
    FDisableState = FState;
    FEnableEvent = deDataSetChange;
  }
  ++FDisableCount;
}

void TDataSet::EnableControls() {
  if (FDisableCount == 0) return;
  if (--FDisableCount != 0) return;
  if (FDisableState != FState) DataEvent(deUpdateState, 0);
  if (FDisableState != dsInactive && FState != dsInactive) DataEvent(FEnableEvent, 0);
}

bool TDataSet::IsLinkedTo(TDataSource* DataSource) const {
  while (DataSource) {
    TDataSet* dataSet = DataSource->GetDataSet();
    if (!dataSet) break;
    if (dataSet == this) return true;
    if (dataSet->FDataSetField && dataSet->FDataSetField->GetDataSet() == this) return true;
    DataSource = dataSet->GetDataSource();
  }
  return false;
}

void TDataSet::AddDataSource(TDataSource* DataSource) {
  FDataSources.push_back(DataSource);
  DataSource->FDataSet = this;
  UpdateBufferCount();
  DataSource->UpdateState();
}

void TDataSet::RemoveDataSource(TDataSource* DataSource) {
  DataSource->FDataSet = nullptr;
  std::erase(FDataSources, DataSource);
  DataSource->UpdateState();
  // A data set being destroyed is closed and has no descendant left to ask.
  if (!FComponentState.Contains(csDestroying)) UpdateBufferCount();
}

// ---------------------------------------------------------------------------------------------
// Filtering settings: a descendant that filters reacts to them.

void TDataSet::SetFiltered(bool Value) { FFiltered = Value; }
void TDataSet::SetFilterOptions(TFilterOptions Value) { FFilterOptions = Value; }
void TDataSet::SetFilterText(const String& Value) { FFilterText = Value; }
void TDataSet::SetOnFilterRecord(TFilterRecordEvent Value) { FOnFilterRecord = std::move(Value); }

// Hooks a descendant fills in when it needs them.
void TDataSet::DefChanged(TObject*) {}
void TDataSet::InternalCancel() {}
void TDataSet::InternalEdit() {}
void TDataSet::InternalInsert() {}
void TDataSet::InternalRefresh() {}
void TDataSet::ClearCalcFields(TRecordBuffer) {}
void TDataSet::RefreshInternalCalcFields(TRecordBuffer) {}
void TDataSet::CloseBlob(TField*) {}
std::unique_ptr<TStream> TDataSet::CreateBlobStream(TField*, TBlobStreamMode) { return nullptr; }

}  // namespace orv
