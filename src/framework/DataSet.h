#pragma once
// TDataSet: the abstract data set. It keeps a ring of record buffers that a descendant fills
// (GetRecord), a cursor with BOF/EOF, the state machine of browsing and editing, fields and
// field definitions, and the data links that show it. A descendant supplies the records through
// the Internal... operations and the buffer operations.

#include "DataLinks.h"
#include "Fields.h"

namespace orv {

class TDataSet : public TComponent {
  ORV_CLASS(TDataSet, TComponent)
 public:
  // --- The virtual operations in the order the platform lays them out. A descendant of this
  // library overrides those marked with "*".

  explicit TDataSet(TComponent* AOwner = nullptr);                     // *
  ~TDataSet() override;

 protected:
  virtual void ActivateBuffers();
  virtual void BindFields(bool Binding);
  virtual void ClearBuffers();
  virtual void ClearCalcFields(TRecordBuffer Buffer);                  // *
  virtual void CloseBlob(TField* Field);
  virtual void CloseCursor();                                          // *
  virtual void CreateFields();                                         // *
  // Makes the nested data set of a data-set field, owned by the field.
  virtual TDataSet* CreateNestedDataSet(TDataSetField* DataSetField);  // *
  virtual void DataEvent(TDataEvent Event, intptr_t Info);             // *
  virtual void DefChanged(TObject* Sender);                            // *
  virtual void DestroyFields();
  virtual void DoAfterCancel();
  virtual void DoAfterClose();
  virtual void DoAfterDelete();
  virtual void DoAfterEdit();
  virtual void DoAfterInsert();
  virtual void DoAfterOpen();                                          // *
  virtual void DoAfterPost();
  virtual void DoAfterRefresh();
  virtual void DoAfterScroll();
  virtual void DoBeforeCancel();
  virtual void DoBeforeClose();
  virtual void DoBeforeDelete();
  virtual void DoBeforeEdit();
  virtual void DoBeforeInsert();                                       // *
  virtual void DoBeforeOpen();
  virtual void DoBeforePost();
  virtual void DoBeforeRefresh();
  virtual void DoBeforeScroll();
  virtual void DoOnCalcFields();
  virtual void DoOnNewRecord();                                        // *
  virtual bool FindRecord(bool Restart, bool GoForward);               // *
  virtual void FreeFieldBuffers();
 public:
  virtual bool GetCanModify() const;                                   // *
  virtual TDataSource* GetDataSource() const;                          // *
 protected:
  virtual TClass GetFieldClass(TFieldType FieldType) const;
  virtual bool GetNextRecord();
  virtual int GetNextRecords();
  virtual bool GetPriorRecord();
  virtual int GetPriorRecords();
 public:
  virtual int32_t GetRecordCount() const;                              // *
  // RecNo: the current record's number from 1; -1 when there is none.
  virtual int32_t GetRecNo() const;                                    // *
 protected:
  virtual void InitFieldDefs();
  virtual void InitRecord(TRecordBuffer Buffer);
  virtual void InternalCancel();
  virtual void InternalEdit();                                         // *
  virtual void InternalInsert();
  virtual void InternalRefresh();
  virtual void OpenCursor(bool InfoQuery = false);                     // *
  virtual void OpenCursorComplete();
  virtual void RefreshInternalCalcFields(TRecordBuffer Buffer);
 public:
  virtual void SetActive(bool Value);                                  // *
 protected:
  virtual void SetBufListSize(int Value);
 public:
  virtual void SetDataSetField(TDataSetField* Value);
  virtual void SetFiltered(bool Value);                                // *
  virtual void SetFilterOptions(TFilterOptions Value);
  virtual void SetFilterText(const String& Value);
 protected:
  virtual void SetFieldProps(TField* Field, TFieldDef* FieldDef);
 public:
  virtual void SetRecNo(int32_t Value);                                // *
 protected:
  virtual void UpdateBufferCount();

  // The record buffer operations a descendant must supply.
  virtual TRecordBuffer AllocRecordBuffer() = 0;                       // *
  virtual void FreeRecordBuffer(TRecordBuffer& Buffer) = 0;            // *
  virtual void GetBookmarkData(TRecordBuffer Buffer, TBookmark& Data) = 0;  // *
  virtual void GetBookmarkData(TRecordBuffer Buffer, void* Data) = 0;       // *
  virtual TBookmarkFlag GetBookmarkFlag(TRecordBuffer Buffer) = 0;     // *
  virtual int32_t GetRecordSize() const = 0;                           // *
  virtual void InternalAddRecord(TRecordBuffer Buffer, bool Append) = 0;  // *
  virtual void InternalAddRecord(void* Buffer, bool Append) = 0;          // *
  virtual void InternalDelete() = 0;                                   // *
  virtual void InternalFirst() = 0;                                    // *
  virtual void InternalGotoBookmark(const TBookmark& Bookmark) = 0;    // *
  // The pointer form: BookmarkSize bytes; by default passed on to the byte-array form.
  virtual void InternalGotoBookmark(const void* Bookmark);             // *
  virtual void InternalInitRecord(TRecordBuffer Buffer) = 0;           // *
  virtual void InternalLast() = 0;                                     // *
  virtual void InternalPost();                                         // * (checks required)
  virtual void InternalSetToRecord(TRecordBuffer Buffer) = 0;          // *
  virtual void SetBookmarkFlag(TRecordBuffer Buffer, TBookmarkFlag Value) = 0;  // *
  virtual void SetBookmarkData(TRecordBuffer Buffer, const TBookmark& Data) = 0;  // *
  virtual void SetBookmarkData(TRecordBuffer Buffer, const void* Data) = 0;       // *
 public:
  // Writes a field value into the current record buffer (byte-array and pointer forms).
  virtual void SetFieldData(TField* Field, const TValueBuffer& Buffer);               // *
  virtual void SetFieldData(TField* Field, const TValueBuffer& Buffer, bool NativeFormat);  // *
  virtual void SetFieldData(TField* Field, const void* Buffer);                       // *
  virtual void SetFieldData(TField* Field, const void* Buffer, bool NativeFormat);    // *

 protected:
  virtual TGetResult GetRecord(TRecordBuffer Buffer, TGetMode GetMode, bool DoCheck) = 0;  // *
  virtual void InternalClose() = 0;                                    // *
  virtual void InternalHandleException() = 0;                          // *
  virtual void InternalInitFieldDefs() = 0;                            // *
  virtual void InternalOpen() = 0;                                     // *
 public:
  virtual bool IsCursorOpen() const = 0;                               // *
 protected:
  virtual TClass GetFieldListClass() const;                            // *

 public:
  virtual bool BookmarkValid(const TBookmark& Bookmark);               // *
  // -1, 0 or 1; the base compares the bytes and puts an empty bookmark last.
  virtual int CompareBookmarks(const TBookmark& Bookmark1, const TBookmark& Bookmark2);  // *
  // A stream over a blob field of the current record; the caller frees it.
  virtual std::unique_ptr<TStream> CreateBlobStream(TField* Field, TBlobStreamMode Mode);  // *
  // Reads a field value from the current record buffer: true when it is not Null; the buffer
  // (when given) receives the value in the field's buffer form.
  virtual bool GetFieldData(TField* Field, TValueBuffer& Buffer);                     // *
  virtual bool GetFieldData(TField* Field, TValueBuffer& Buffer, bool NativeFormat);  // *
  virtual bool GetFieldData(TField* Field, void* Buffer);                             // *
  virtual bool GetFieldData(TField* Field, void* Buffer, bool NativeFormat);          // *
  virtual bool Locate(const String& KeyFields, const Variant& KeyValues,
                      TLocateOptions Options);                                        // *
  virtual Variant Lookup(const String& KeyFields, const Variant& KeyValues,
                         const String& ResultFields);                                 // *

  // At design time persistent fields named after the data set follow a rename.
  void SetName(const String& NewName) override;

  // --- Opening and closing
  void Open();
  void Close();
  bool GetActive() const { return FState != dsInactive && FState != dsOpening; }
  TDataSetState GetState() const { return FState; }
  void CheckActive() const;    // EDatabaseError SDataSetClosed, naming this data set
  void CheckInactive() const;  // SDataSetOpen
  void CheckBrowseMode();      // posts a modified record, cancels an unmodified one
  void Refresh();

  // --- Navigation
  void First();
  void Last();
  void Next();
  void Prior();
  // Moves by up to `Distance` records; returns how many it moved (negative backwards).
  int MoveBy(int Distance);
  bool GetBOF() const { return FBOF; }
  bool GetEOF() const { return FEOF; }
  bool IsEmpty() const;
  void Resync(TResyncMode Mode);
  void UpdateCursorPos();
  void CursorPosChanged();
  TBookmark GetBookmark();
  void GotoBookmark(const TBookmark& Bookmark);
  void FreeBookmark(TBookmark& Bookmark) { Bookmark.clear(); }
  bool GetCurrentRecord(TRecordBuffer Buffer);
  bool GetFound() const { return FFound; }
  bool FindFirst();
  bool FindLast();
  bool FindNext();
  bool FindPrior();

  // --- Editing
  void Edit();
  void Insert();
  void Append();
  void Post();
  void Cancel();
  void Delete();
  void AppendRecord(const std::vector<Variant>& Values);
  void InsertRecord(const std::vector<Variant>& Values);
  // Assigns the values to the fields in field order; Unassigned entries are skipped.
  void SetFields(const std::vector<Variant>& Values);
  void ClearFields();
  void UpdateRecord();  // lets the data links write their pending edits
  bool GetModified() const { return FModified; }

  // --- Controls
  void DisableControls();
  // When the count ends, the links hear what they missed: a data-set change, or a layout
  // change when the state changed meanwhile.
  void EnableControls();
  bool ControlsDisabled() const { return FDisableCount != 0; }
  // Follows the chain of masters and nested parents: true when this data set depends on the
  // data source's data set.
  bool IsLinkedTo(TDataSource* DataSource) const;

  // --- Fields
  TFields* GetFields() const { return FFields.get(); }
  int GetFieldCount() const { return FFields->GetCount(); }
  TFieldDefs* GetFieldDefs() const { return FFieldDefs.get(); }
  void SetFieldDefs(TFieldDefs* Value);  // assigns
  TFieldDefList* GetFieldDefList() const { return FFieldDefList.get(); }
  // Made on first use from GetFieldListClass, so that a descendant's class is the one made.
  TFieldList* GetFieldList() const;
  TField* FieldByName(const String& FieldName) const;  // SFieldNotFound naming this data set
  TField* FindField(const String& FieldName) const;
  TField* FieldByNumber(int32_t FieldNo) const;
  // The fields of a ";" list, in order; raises SFieldNotFound for an unknown name.
  void GetFieldList(std::vector<TField*>& List, const String& FieldNames) const;
  void GetFieldNames(TStrings* List) const;
  // The value of one field, or a varVariant array (0..n-1) of the fields of a ";" list.
  Variant GetFieldValues(const String& FieldName) const;
  void SetFieldValues(const String& FieldName, const Variant& Value);
  bool GetDefaultFields() const { return FDefaultFields; }
  // Converts between the plain and the native buffer form of dates, times, BCD and bytes.
  virtual void DataConvert(TField* Field, const void* Source, void* Dest, bool ToNative);
  void DataConvert(TField* Field, const TValueBuffer& Source, TValueBuffer& Dest, bool ToNative);
  // Fills the calculated and lookup fields of a buffer (OnCalcFields, lookups).
  void GetCalcFields(TRecordBuffer Buffer);
  bool GetAutoCalcFields() const { return FAutoCalcFields; }
  void SetAutoCalcFields(bool Value) { FAutoCalcFields = Value; }
  int32_t GetCalcFieldsSize() const { return FCalcFieldsSize; }
  bool GetObjectView() const { return FObjectView; }
  void SetObjectView(bool Value);
  int32_t GetBlobFieldCount() const { return FBlobFieldCount; }

  // --- Nested data sets
  TDataSetField* GetDataSetField() const { return FDataSetField; }
  TList* GetNestedDataSets();
  // The class CreateNestedDataSet makes; by default this data set's own class.
  TClass GetNestedDataSetClass() const;
  void SetNestedDataSetClass(TClass Value) { FNestedDataSetClass = Value; }
  TDataSet* GetParentDataSet() const;

  // --- Filtering
  bool GetFiltered() const { return FFiltered; }
  const String& GetFilterText() const { return FFilterText; }
  TFilterOptions GetFilterOptions() const { return FFilterOptions; }

  // --- Record numbers and bookmarks
  int32_t GetBookmarkSize() const { return FBookmarkSize; }
  int GetBufferCount() const { return FBufferCount; }
  int GetActiveRecord() const { return FActiveRecord; }
  // The count of records held in buffers (not the data set's record count).
  int GetBufferedRecordCount() const { return FRecordCount; }
  TRecordBuffer ActiveBuffer() const;
  bool GetIsUniDirectional() const { return FIsUniDirectional; }

  // --- Events
#define ORV_DATASET_EVENT(Name)                                   \
  const TDataSetNotifyEvent& Get##Name() const { return F##Name; } \
  void Set##Name(TDataSetNotifyEvent Value) { F##Name = std::move(Value); }
  ORV_DATASET_EVENT(BeforeOpen)
  ORV_DATASET_EVENT(AfterOpen)
  ORV_DATASET_EVENT(BeforeClose)
  ORV_DATASET_EVENT(AfterClose)
  ORV_DATASET_EVENT(BeforeInsert)
  ORV_DATASET_EVENT(AfterInsert)
  ORV_DATASET_EVENT(BeforeEdit)
  ORV_DATASET_EVENT(AfterEdit)
  ORV_DATASET_EVENT(BeforePost)
  ORV_DATASET_EVENT(AfterPost)
  ORV_DATASET_EVENT(BeforeCancel)
  ORV_DATASET_EVENT(AfterCancel)
  ORV_DATASET_EVENT(BeforeDelete)
  ORV_DATASET_EVENT(AfterDelete)
  ORV_DATASET_EVENT(BeforeScroll)
  ORV_DATASET_EVENT(AfterScroll)
  ORV_DATASET_EVENT(BeforeRefresh)
  ORV_DATASET_EVENT(AfterRefresh)
  ORV_DATASET_EVENT(OnCalcFields)
  ORV_DATASET_EVENT(OnNewRecord)
#undef ORV_DATASET_EVENT
  const TDataSetErrorEvent& GetOnEditError() const { return FOnEditError; }
  void SetOnEditError(TDataSetErrorEvent Value) { FOnEditError = std::move(Value); }
  const TDataSetErrorEvent& GetOnPostError() const { return FOnPostError; }
  void SetOnPostError(TDataSetErrorEvent Value) { FOnPostError = std::move(Value); }
  const TDataSetErrorEvent& GetOnDeleteError() const { return FOnDeleteError; }
  void SetOnDeleteError(TDataSetErrorEvent Value) { FOnDeleteError = std::move(Value); }
  const TFilterRecordEvent& GetOnFilterRecord() const { return FOnFilterRecord; }
  void SetOnFilterRecord(TFilterRecordEvent Value);

 protected:
  // --- For descendants
  void SetState(TDataSetState Value);
  // Switches the state for a moment (calculating, filtering, reading old values); returns the
  // state to put back with RestoreState.
  TDataSetState SetTempState(TDataSetState Value);
  void RestoreState(TDataSetState Value);
  void SetBookmarkSize(int32_t Value) { FBookmarkSize = Value; }
  TRecordBuffer CalcBuffer() const { return FCalcBuffer; }
  // The buffer past the visible ones, for searches that must not disturb them.
  TRecordBuffer TempBuffer() const;
  int32_t GetCurrentRecordIndex() const { return FCurrentRecord; }
  void SetCurrentRecord(int Index);
  void SetFound(bool Value) { FFound = Value; }
  void CheckRequiredFields();
  void OpenParentDataSet(TDataSet* ParentDataSet);
  bool GetInternalCalcFields() const { return FInternalCalcFields; }
  void CalculateFields(TRecordBuffer Buffer);
  void Loaded() override;
  void Notification(TComponent* AComponent, TOperation Operation) override;
  // Raises the error events' actions: daFail raises, daAbort aborts silently, daRetry repeats.
  void CheckOperation(const std::function<void()>& Operation, const TDataSetErrorEvent& ErrorEvent);
  bool BookmarkAvailable();
  void SetModified(bool Value) { FModified = Value; }
  void CheckCanModify();   // SDataSetReadOnly unless GetCanModify
  void CheckBiDirectional();  // SDataSetUnidirectional on a unidirectional data set
  void SetUniDirectional(bool Value) { FIsUniDirectional = Value; }

 private:
  friend class TDataLink;
  friend class TDataSource;
  friend class TField;
  friend class TFields;
  friend class TFieldDef;
  friend class TFieldDefs;
  friend class TFlatList;
  friend class TObjectField;
  friend class TDataSetField;

  void AddDataSource(TDataSource* DataSource);
  void RemoveDataSource(TDataSource* DataSource);
  void SetBufferCount(int Value);
  void MoveBuffer(int CurIndex, int NewIndex);
  void DoInternalOpen();
  void EndInsertAppend();
  void BeginInsertAppend();
  void CheckParentState();
  void UpdateCalcFields();
  void CalcLookupValue(TField* Field);
  void NotifyNestedDataSets();
  void CheckNestedBrowseMode();
  // Moves every active link's window by `Delta` buffers (the ring was shifted under them).
  void AdjustFirstRecords(int Delta);

  std::unique_ptr<TFields> FFields;
  std::unique_ptr<TFieldDefs> FFieldDefs;
  std::unique_ptr<TFieldDefList> FFieldDefList;
  mutable std::unique_ptr<TFieldList> FFieldList;
  std::vector<TDataSource*> FDataSources;
  std::unique_ptr<TList> FNestedDataSets;
  TClass FNestedDataSetClass = nullptr;
  TDataSetField* FDataSetField = nullptr;

  std::vector<TRecordBuffer> FBuffers;  // FBufferCount + 1 (the temporary buffer)
  TRecordBuffer FCalcBuffer = nullptr;   // the buffer being calculated (not owned)
  int FBufferCount = 0;
  int FRecordCount = 0;   // buffers holding records
  int FActiveRecord = 0;
  int FCurrentRecord = -1;
  int32_t FBookmarkSize = 0;
  int32_t FCalcFieldsSize = 0;
  int32_t FBlobFieldCount = 0;
  int FDisableCount = 0;
  TDataSetState FDisableState = dsInactive;
  TDataSetState FState = dsInactive;
  TDataEvent FEnableEvent = deDataSetChange;
  bool FBOF = true;
  bool FEOF = true;
  bool FModified = false;
  bool FStreamedActive = false;
  bool FInternalOpenComplete = false;
  bool FDefaultFields = false;
  bool FAutoCalcFields = true;
  bool FInternalCalcFields = false;
  bool FFiltered = false;
  bool FFound = false;
  bool FObjectView = false;
  bool FIsUniDirectional = false;
  String FFilterText;
  TFilterOptions FFilterOptions;

  TDataSetNotifyEvent FBeforeOpen, FAfterOpen, FBeforeClose, FAfterClose, FBeforeInsert,
      FAfterInsert, FBeforeEdit, FAfterEdit, FBeforePost, FAfterPost, FBeforeCancel,
      FAfterCancel, FBeforeDelete, FAfterDelete, FBeforeScroll, FAfterScroll, FBeforeRefresh,
      FAfterRefresh, FOnCalcFields, FOnNewRecord;
  TDataSetErrorEvent FOnEditError, FOnPostError, FOnDeleteError;
  TFilterRecordEvent FOnFilterRecord;
};

// Raises EDatabaseError with `Message`; a named component puts its name and ": " first.
[[noreturn]] void DatabaseError(const String& Message, const TComponent* Component = nullptr);
[[noreturn]] void DatabaseErrorFmt(const String& Message, std::initializer_list<FormatArg> Args,
                                   const TComponent* Component = nullptr);

// The field names of a ";" list one at a time: the text from `Pos` to the next ";" (or the
// end), trimmed; `Pos` moves past the ";". Pos counts from 1, as the platform's does.
String ExtractFieldName(const String& Fields, int& Pos);

}  // namespace orv
