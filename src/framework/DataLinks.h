#pragma once
// Data sources and data links: how grids, controls, master-detail links and reports follow a
// data set. A data source connects one data set to any number of links; each link asks for a
// number of record buffers (a grid: its visible rows) and hears every data event.

#include "DBTypes.h"
#include "Classes.h"

namespace orv {

class TDataSetField;

class TDataSource : public TComponent {
  ORV_CLASS(TDataSource, TComponent)
 public:
  explicit TDataSource(TComponent* AOwner = nullptr);
  ~TDataSource() override;

  TDataSet* GetDataSet() const { return FDataSet; }
  // EDatabaseError SCircularDataLink when the data set is linked to this source already.
  void SetDataSet(TDataSet* ADataSet);
  bool GetEnabled() const { return FEnabled; }
  void SetEnabled(bool Value);
  bool GetAutoEdit() const { return FAutoEdit; }
  void SetAutoEdit(bool Value) { FAutoEdit = Value; }
  // The data set's state; dsInactive without a data set or while disabled.
  TDataSetState GetState() const { return FState; }
  // Puts the data set into edit mode when AutoEdit allows it and it is browsing.
  void Edit();
  // True when `DataSet` is this source's data set or depends on it through masters.
  bool IsLinkedTo(const TDataSet* DataSet) const;

  const TNotifyEvent& GetOnStateChange() const { return FOnStateChange; }
  void SetOnStateChange(TNotifyEvent Value) { FOnStateChange = std::move(Value); }
  const TDataChangeEvent& GetOnDataChange() const { return FOnDataChange; }
  void SetOnDataChange(TDataChangeEvent Value) { FOnDataChange = std::move(Value); }
  const TNotifyEvent& GetOnUpdateData() const { return FOnUpdateData; }
  void SetOnUpdateData(TNotifyEvent Value) { FOnUpdateData = std::move(Value); }

 protected:
  void Notification(TComponent* AComponent, TOperation Operation) override;

 private:
  friend class TDataSet;
  friend class TDataLink;

  void AddDataLink(TDataLink* DataLink);
  void RemoveDataLink(TDataLink* DataLink);
  // Sends a data event to every link, then fires the source's own events.
  void DataEvent(TDataEvent Event, intptr_t Info);
  void NotifyDataLinks(TDataEvent Event, intptr_t Info);
  void NotifyLinkTypes(TDataEvent Event, intptr_t Info, bool LinkType);
  void SetState(TDataSetState Value);
  void UpdateState();
  int GetMaxBufferCount() const;  // the largest BufferCount of the links

  TDataSet* FDataSet = nullptr;
  std::vector<TDataLink*> FDataLinks;
  bool FEnabled = true;
  bool FAutoEdit = true;
  TDataSetState FState = dsInactive;
  TNotifyEvent FOnStateChange;
  TDataChangeEvent FOnDataChange;
  TNotifyEvent FOnUpdateData;
};

// Follows a data set through a data source. A descendant overrides the notifications it cares
// about. The link's record window: BufferCount records starting at the data set's buffer
// FirstRecord; ActiveRecord is the current record's place in that window.
class TDataLink : public TPersistent {
  ORV_CLASS(TDataLink, TPersistent)
 public:
  TDataLink();
  ~TDataLink() override;

  TDataSource* GetDataSource() const { return FDataSource; }
  void SetDataSource(TDataSource* ADataSource);
  TDataSet* GetDataSet() const;
  // True while the source has an open data set and is enabled.
  bool GetActive() const { return FActive; }
  bool GetEditing() const { return FEditing; }
  bool GetReadOnly() const { return FReadOnly; }
  void SetReadOnly(bool Value);
  int GetActiveRecord() const;
  void SetActiveRecord(int Value);
  int GetBufferCount() const { return FBufferCount; }
  // Asks the data set for at least this many record buffers.
  void SetBufferCount(int Value);
  // Records in the link's window (at most BufferCount).
  int GetRecordCount() const;
  bool GetBOF() const;
  bool GetEOF() const;
  // Puts the data set into edit mode through the source (AutoEdit); true when editing.
  bool Edit();
  // Asks the link to write its pending control value (deUpdateRecord).
  void UpdateRecord();
  bool GetDataSourceFixed() const { return FDataSourceFixed; }
  void SetDataSourceFixed(bool Value) { FDataSourceFixed = Value; }
  bool GetVisualControl() const { return FVisualControl; }
  void SetVisualControl(bool Value) { FVisualControl = Value; }

 protected:
  virtual void ActiveChanged();
  virtual void CheckBrowseMode();
  virtual void DataEvent(TDataEvent Event, intptr_t Info);
  virtual void DataSetChanged();
  virtual void DataSetScrolled(int Distance);
  virtual void EditingChanged();
  virtual void FocusControl(TField** Field);
  virtual void LayoutChanged();
  virtual void RecordChanged(TField* Field);
  virtual void UpdateData();
  virtual TDataSet* GetDetailDataSet() const { return nullptr; }

 private:
  friend class TDataSource;
  friend class TDataSet;

  void SetActive(bool Value);
  void SetEditing(bool Value);
  void UpdateState();  // active and editing from the source's state
  void UpdateRange();

  TDataSource* FDataSource = nullptr;
  int FFirstRecord = 0;
  int FBufferCount = 1;
  bool FActive = false;
  bool FEditing = false;
  bool FReadOnly = false;
  bool FUpdating = false;
  bool FDataSourceFixed = false;
  bool FVisualControl = false;
};

// A link that belongs to a detail data set.
class TDetailDataLink : public TDataLink {
  ORV_CLASS(TDetailDataLink, TDataLink)
 public:
  TDetailDataLink() = default;
  TDataSet* GetDetailDataSet() const override { return nullptr; }
};

// The link of a detail data set to its master: keeps the master field names resolved against
// the master data set and reports when the master's current record (or one of its master
// fields) changes, and when the link becomes unusable.
class TMasterDataLink : public TDetailDataLink {
  ORV_CLASS(TMasterDataLink, TDetailDataLink)
 public:
  // `ADataSet` is the detail data set that owns the link.
  explicit TMasterDataLink(TDataSet* ADataSet = nullptr);

  TDataSet* GetDetailDataSet() const override { return FDataSet; }
  const String& GetFieldNames() const { return FFieldNames; }
  // Resolves the names against the master when the link is active (raises SFieldNotFound).
  void SetFieldNames(const String& Value);
  // The master's fields named by FieldNames, in order.
  const std::vector<TField*>& GetFields() const { return FFields; }

  const TNotifyEvent& GetOnMasterChange() const { return FOnMasterChange; }
  void SetOnMasterChange(TNotifyEvent Value) { FOnMasterChange = std::move(Value); }
  const TNotifyEvent& GetOnMasterDisable() const { return FOnMasterDisable; }
  void SetOnMasterDisable(TNotifyEvent Value) { FOnMasterDisable = std::move(Value); }

 protected:
  void ActiveChanged() override;
  void CheckBrowseMode() override;
  void LayoutChanged() override;
  void RecordChanged(TField* Field) override;
  virtual void DoMasterChange();
  virtual void DoMasterDisable();

 private:
  TDataSet* FDataSet;
  String FFieldNames;
  std::vector<TField*> FFields;
  TNotifyEvent FOnMasterChange;
  TNotifyEvent FOnMasterDisable;
};

}  // namespace orv
