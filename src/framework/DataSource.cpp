// TDataSource: connects one data set to its data links and passes the data set's events on.

#include <algorithm>

#include "DataSet.h"

#include "DBConsts.h"

namespace orv {

ORV_PUBLISH(TDataSource) {
  p.Property("AutoEdit", &TDataSource::GetAutoEdit, &TDataSource::SetAutoEdit).Default(true);
  p.Property("DataSet", &TDataSource::GetDataSet, &TDataSource::SetDataSet);
  p.Property("Enabled", &TDataSource::GetEnabled, &TDataSource::SetEnabled).Default(true);
  p.Property("OnStateChange", &TDataSource::GetOnStateChange, &TDataSource::SetOnStateChange);
  p.Property("OnDataChange", &TDataSource::GetOnDataChange, &TDataSource::SetOnDataChange);
  p.Property("OnUpdateData", &TDataSource::GetOnUpdateData, &TDataSource::SetOnUpdateData);
}

TDataSource::TDataSource(TComponent* AOwner) : TComponent(AOwner) {}

TDataSource::~TDataSource() {
  Destroying();
  FOnStateChange = nullptr;
  SetDataSet(nullptr);
  while (!FDataLinks.empty()) RemoveDataLink(FDataLinks.back());
}

void TDataSource::SetDataSet(TDataSet* ADataSet) {
  if (IsLinkedTo(ADataSet)) DatabaseError(SCircularDataLink, this);
  if (FDataSet) FDataSet->RemoveDataSource(this);
  if (ADataSet) ADataSet->AddDataSource(this);
}

void TDataSource::SetEnabled(bool Value) {
  FEnabled = Value;
  UpdateState();
}

void TDataSource::Edit() {
  if (FAutoEdit && FState == dsBrowse) FDataSet->Edit();
}

// True when the data set follows this source, directly or through a chain of masters.
bool TDataSource::IsLinkedTo(const TDataSet* DataSet) const {
  while (DataSet) {
    TDataSource* source = DataSet->GetDataSource();
    if (!source) break;
    if (source == this) return true;
    DataSet = source->GetDataSet();
  }
  return false;
}

void TDataSource::Notification(TComponent* AComponent, TOperation Operation) {
  TComponent::Notification(AComponent, Operation);
  // The data set detaches its sources while it is still whole; this only forgets it.
  if (Operation == opRemove && AComponent == FDataSet) FDataSet = nullptr;
}

void TDataSource::AddDataLink(TDataLink* DataLink) {
  FDataLinks.push_back(DataLink);
  DataLink->FDataSource = this;
  if (FDataSet) FDataSet->UpdateBufferCount();
  DataLink->UpdateState();
}

void TDataSource::RemoveDataLink(TDataLink* DataLink) {
  DataLink->FDataSource = nullptr;
  std::erase(FDataLinks, DataLink);
  DataLink->UpdateState();
  if (FDataSet) FDataSet->UpdateBufferCount();
}

void TDataSource::SetState(TDataSetState Value) {
  if (FState == Value) return;
  const TDataSetState prior = FState;
  FState = Value;
  NotifyDataLinks(deUpdateState, 0);
  if (FComponentState.Contains(csDestroying)) return;
  if (FOnStateChange) FOnStateChange(this);
  if (prior == dsInactive && FOnDataChange) FOnDataChange(this, nullptr);
}

void TDataSource::UpdateState() {
  SetState(FEnabled && FDataSet ? FDataSet->GetState() : dsInactive);
}

void TDataSource::DataEvent(TDataEvent Event, intptr_t Info) {
  if (Event == deUpdateState) {
    UpdateState();
    return;
  }
  if (FState == dsInactive) return;
  NotifyDataLinks(Event, Info);
  switch (Event) {
    case deFieldChange:
    case deRecordChange:
      if (FOnDataChange) FOnDataChange(this, reinterpret_cast<TField*>(Info));
      break;
    case deDataSetChange:
    case deDataSetScroll:
    case deLayoutChange:
      if (FOnDataChange) FOnDataChange(this, nullptr);
      break;
    case deUpdateRecord:
      if (FOnUpdateData) FOnUpdateData(this);
      break;
    default:
      break;
  }
}

// Links that are not controls (details, lookups) hear an event before the controls do.
void TDataSource::NotifyDataLinks(TDataEvent Event, intptr_t Info) {
  NotifyLinkTypes(Event, Info, false);
  NotifyLinkTypes(Event, Info, true);
}

// A link may leave the source while it is told, so the list is walked from its end.
void TDataSource::NotifyLinkTypes(TDataEvent Event, intptr_t Info, bool LinkType) {
  for (size_t i = FDataLinks.size(); i-- > 0;) {
    if (i >= FDataLinks.size()) continue;
    TDataLink* link = FDataLinks[i];
    if (link->FVisualControl == LinkType) link->DataEvent(Event, Info);
  }
}

int TDataSource::GetMaxBufferCount() const {
  int count = 1;
  for (TDataLink* link : FDataLinks) count = std::max(count, link->FBufferCount);
  return count;
}

}  // namespace orv
