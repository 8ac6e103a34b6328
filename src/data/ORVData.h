#pragma once
// The engine of the library's data sets. TORVCustomData holds no records: it knows how many
// there are, keeps a cursor over them, and asks for the value of a field of a record only when
// the value is first read, naming the record by its record index (its 0-based number in the
// underlying data). It asks through the virtual DoOn... operations; TORVData answers them with
// the application's events, the object data sets and pick lists override them.
//
//   TORVData data;
//   data.GetFieldDefs()->Add("Name", ftString, 20);
//   data.SetOnCountRecords([&](TDataSet*, int32_t& Count) { Count = int32_t(names.size()); });
//   data.SetOnGetFieldData([&](TDataSet*, int32_t Index, TField*, Variant& Data) {
//     Data = names[Index];
//   });
//   data.Open();
//
// Positions: the cursor position is the 0-based place of a record in the data set's order (-1
// before the first record, the record count after the last); RecNo is the position plus 1.
// Without an index list (not Sorted) position and record index are the same number; a sorted
// data set maps positions to record indexes through its TORVIndexList. Bookmarks are 4 bytes
// holding a position.
//
// Implementation by concern: ORVCustomData.cpp (construction, opening and closing, data events),
// ORVDataBuffers.cpp (buffers, fetching and filters, count, positions, bookmarks),
// ORVDataValues.cpp (field values and their buffer forms), ORVDataEditing.cpp (post, delete),
// ORVDataFields.cpp (field set-up), ORVKeyValues.cpp (key value matching), ORVData.cpp
// (TORVData's published properties). The order of a sorted data set, the members marked
// [order] below (index fields, record comparison, the index list), is in ORVDataIndex.cpp;
// ORVRecordBuffer.h has the layout of a record buffer.

#include <functional>
#include <memory>
#include <vector>

#include "DB.h"
#include "ORVFieldList.h"

namespace orv {

class TORVIndexList;  // ORVIndexList.h

// ---------------------------------------------------------------------------------------------
// Data events: the data set first, in-out parameters as references. Index is a record index.

// Count starts at 0; a negative count counts as 0.
using TCountRecordsEvent = std::function<void(TDataSet* DataSet, int32_t& Count)>;
// Data starts Null; leaving it Null says the field has no value.
using TGetFieldDataEvent =
    std::function<void(TDataSet* DataSet, int32_t Index, TField* Field, Variant& Data)>;
using TSetFieldDataEvent =
    std::function<void(TDataSet* DataSet, int32_t Index, TField* Field, const Variant& Data)>;
// The application makes room at Index: the records at and after it move up by one.
using TInsertRecordEvent = std::function<void(TDataSet* DataSet, int32_t Index)>;
// The application closes the gap at Index.
using TDeleteRecordEvent = std::function<void(TDataSet* DataSet, int32_t Index)>;
using TCreateNestedEvent =
    std::function<void(TDataSet* DataSet, TDataSet* NestedDataSet, TDataSetField* DataSetField)>;
// Result starts as Index1 - Index2 (natural order); negative, zero or positive.
using TCompareRecordsEvent =
    std::function<void(TDataSet* DataSet, int32_t Index1, int32_t Index2, int32_t& Result)>;

// The hidden marker: the attribute bit past the framework's own six that a field definition made
// from an invisible field carries, so that its default field comes out invisible again.
inline constexpr TFieldAttribute faHiddenMarker = static_cast<TFieldAttribute>(6);

// ---------------------------------------------------------------------------------------------
// Key values, as the locate and detail filters compare them: A is the record's value, B the key.
// Both are one value, or variant arrays of one value per key field.

// Unassigned is the same only as Unassigned and Null only as Null; anything else by the
// variant's equality (text exactly, letter case included). Arrays pair their elements.
bool SameKeyValues(const Variant& A, const Variant& B);
// As SameKeyValues, but where both values of a pair are text: loCaseInsensitive ignores the case
// of the letters a to z, loPartialKey (on the last pair only) matches a record text that begins
// with the key text.
bool MatchKeyValues(const Variant& A, const Variant& B, TLocateOptions Options);

// ---------------------------------------------------------------------------------------------
// TORVCustomData

class TORVCustomData : public TDataSet {
  ORV_CLASS(TORVCustomData, TDataSet)
 public:
  explicit TORVCustomData(TComponent* AOwner = nullptr);
  // Closes first: only this class can still reach its buffers and InternalClose.
  ~TORVCustomData() override;

  // --- Overrides of the framework, in its order

 protected:
  // The slot of every calculated and lookup field becomes Null (when there are any);
  // internally calculated fields keep theirs.
  void ClearCalcFields(TRecordBuffer Buffer) override;
  // Then forgets the parent data set.
  void CloseCursor() override;
  // Makes the default fields, hides those of hidden and internally calculated definitions when
  // they are default fields, and sets up labels and widths.
  void CreateFields() override;
  // A parent's scroll reopens a nested data set; a layout change that really changed the field
  // list refetches the records.
  void DataEvent(TDataEvent Event, intptr_t Info) override;
  void DefChanged(TObject* Sender) override;  // StoreDefs becomes true
  // A nested data set posts a parent that is being inserted first.
  void DoBeforeInsert() override;
  void DoOnNewRecord() override;  // a new record starts with no modified fields

 public:
  bool GetCanModify() const override;  // not ReadOnly
  TDataSource* GetDataSource() const override;  // the master data link's
  int32_t GetRecordCount() const override;
  int32_t GetRecNo() const override;  // EDatabaseError on a closed data set

 protected:
  void InternalEdit() override;  // an edit starts with no modified fields
  // Opens the parent of a nested data set first; "No fields defined in this DataSet" when the
  // data set is not nested and has no field definitions.
  void OpenCursor(bool InfoQuery = false) override;

 public:
  // Moves to the position Value - 1, unchecked: a position out of range ends as the framework
  // handles an empty fetch.
  void SetRecNo(int32_t Value) override;

 protected:
  TRecordBuffer AllocRecordBuffer() override;
  void FreeRecordBuffer(TRecordBuffer& Buffer) override;
  void GetBookmarkData(TRecordBuffer Buffer, TBookmark& Data) override;
  void GetBookmarkData(TRecordBuffer Buffer, void* Data) override;
  TBookmarkFlag GetBookmarkFlag(TRecordBuffer Buffer) override;
  int32_t GetRecordSize() const override;
  // A bfEOF flag when appending, then InternalPost.
  void InternalAddRecord(TRecordBuffer Buffer, bool Append) override;
  void InternalAddRecord(void* Buffer, bool Append) override;
  // Hands the delete to the application (DoOnDeleteRecord) at once.
  void InternalDelete() override;
  void InternalFirst() override;
  void InternalGotoBookmark(const TBookmark& Bookmark) override;
  void InternalGotoBookmark(const void* Bookmark) override;
  // Every slot Null: a new record never asks for values.
  void InternalInitRecord(TRecordBuffer Buffer) override;
  void InternalLast() override;
  // Hands the record to the application: the insertion (DoOnInsertRecord), then one
  // DoOnSetFieldData per modified field in the order of their first write. A failing write of
  // an inserted record undoes the insertion (DoOnDeleteRecord).
  void InternalPost() override;
  void InternalSetToRecord(TRecordBuffer Buffer) override;
  void SetBookmarkFlag(TRecordBuffer Buffer, TBookmarkFlag Value) override;
  void SetBookmarkData(TRecordBuffer Buffer, const TBookmark& Data) override;
  void SetBookmarkData(TRecordBuffer Buffer, const void* Data) override;

 public:
  // Writes a value into the current record buffer and lists the field as modified; values
  // reach the application only when the record is posted. The two-argument forms write the
  // native form.
  void SetFieldData(TField* Field, const TValueBuffer& Buffer) override;
  void SetFieldData(TField* Field, const TValueBuffer& Buffer, bool NativeFormat) override;
  void SetFieldData(TField* Field, const void* Buffer) override;
  void SetFieldData(TField* Field, const void* Buffer, bool NativeFormat) override;

 protected:
  // Fetches through the filters: the detail filter, the locate filter and OnFilterRecord, in
  // that order, skip the records they refuse. An error while filtering goes to
  // InternalHandleException and gives grError.
  TGetResult GetRecord(TRecordBuffer Buffer, TGetMode GetMode, bool DoCheck) override;
  void InternalClose() override;
  // The application-wide exception handler, from inside a catch block.
  void InternalHandleException() override;
  // Definitions from a nested data set's field, from persistent fields, then the internally
  // calculated ones.
  void InternalInitFieldDefs() override;
  // Counts the records once (CountRecords): the count is asked again only by RefreshDataSet.
  void InternalOpen() override;

 public:
  bool IsCursorOpen() const override;

 protected:
  TClass GetFieldListClass() const override;  // TORVFieldList

 public:
  bool BookmarkValid(const TBookmark& Bookmark) override;
  // Present bookmarks by position; an absent one comes after every present one.
  int CompareBookmarks(const TBookmark& Bookmark1, const TBookmark& Bookmark2) override;
  // Reads a value of the current record buffer: asked for through DoOnGetFieldData the first
  // time it is read after a fetch, then answered from the buffer. The two-argument forms read
  // the native form.
  bool GetFieldData(TField* Field, TValueBuffer& Buffer) override;
  bool GetFieldData(TField* Field, TValueBuffer& Buffer, bool NativeFormat) override;
  bool GetFieldData(TField* Field, void* Buffer) override;
  bool GetFieldData(TField* Field, void* Buffer, bool NativeFormat) override;

  // --- The engine's own virtual operations, in their order

  // The order of two records (record indexes): by index fields, else by OnCompareRecords, else
  // natural; negated when Reversed. [order]
  virtual int32_t CompareRecords(int32_t Index1, int32_t Index2);
  // Two field values: text with the locale's case-insensitive comparison when either is text,
  // else by the variant's ordering. [order]
  virtual int32_t CompareValues(const Variant& Value1, const Variant& Value2);

 protected:
  // The record count: 0 while the parent (nested) or the master (detail) is empty or inserting,
  // else DoOnCountRecords starting from 0.
  virtual int32_t CountRecords();
  virtual std::unique_ptr<TORVIndexList> CreateIndexList();  // [order]
  // "RowLevel;RowOrder;RowState": the names of the internally calculated definitions while
  // InternalCalcFieldNames is empty.
  virtual String DefaultInternalCalcFieldNames() const;
  // Whether the record being fetched belongs to the master's current record.
  virtual void DetailFilter(bool& Accept);
  virtual void DoOnCompareRecords(int32_t Index1, int32_t Index2, int32_t& Result);  // [order]
  // Each calls its event, with the data set first, when one is assigned.
  virtual void DoOnCountRecords(int32_t& Count);
  virtual void DoOnDeleteRecord(int32_t Index);
  virtual void DoOnGetFieldData(int32_t Index, TField* Field, Variant& Data);
  virtual void DoOnInsertRecord(int32_t Index);
  virtual void DoOnSetFieldData(int32_t Index, TField* Field, const Variant& Data);

 public:
  // The record index shown by a record buffer: its position (0 for bfBOF, RecordCount for
  // bfEOF) mapped through the index list when sorted; RecordCount for a record being inserted
  // into a sorted data set. [order]
  virtual int32_t GetIndex(TRecordBuffer Buffer) const;
  // The record index of the calculation buffer while calculating, else of the active buffer.
  virtual int32_t GetRecordIndex() const;

 protected:
  virtual int32_t GetRecordNumber() const;  // the cursor position, unchecked
  // Switches on the internally calculated flag of every definition named in
  // InternalCalcFieldNames (never off).
  virtual void InitInternalCalcFieldDefs();
  // Whether the record being fetched matches the search under way.
  virtual void LocateFilter(bool& Accept);

 public:
  // Counts the records again and moves to the first one (while open).
  virtual void RefreshDataSet();
  // Reopens an open nested data set, which counts its records again.
  virtual void RefreshDataSetField();
  // The framework's open-data-set error while open (it is set only while opening or closed);
  // a negative count is 0. Rebuilds the index list when sorted.
  virtual void SetRecordCount(int32_t Value);

 protected:
  virtual void SetRecordNumber(int32_t Value);  // the cursor position, unchecked

 public:
  // Display labels that begin with "_" lose it; text-like fields are at most DefaultWidth wide.
  virtual void UpdateFields();

  // --- Properties

  // RecordIndex: the record index of the current record (GetRecordIndex).
  // ParentDataSet: the data set holding the data-set field of a nested data set, while open.
  // It hides the framework's GetParentDataSet, which answers the same while open.
  TORVCustomData* GetParentDataSet() const { return FParentDataSet; }

  bool GetReadOnly() const { return FReadOnly; }
  void SetReadOnly(bool Value) { FReadOnly = Value; }
  // FieldDefs are written to a form file only when true; any change of the definitions made
  // from outside the data set sets it.
  bool GetStoreDefs() const { return FStoreDefs; }
  void SetStoreDefs(bool Value) { FStoreDefs = Value; }
  // The greatest display width of text-like fields; 0 is no limit, negative counts as 0.
  int32_t GetDefaultWidth() const { return FDefaultWidth; }
  void SetDefaultWidth(int32_t Value);
  // ";"-separated names of definitions that become internally calculated; the default names
  // while empty, and the default names are stored as empty.
  String GetInternalCalcFieldNames() const;
  void SetInternalCalcFieldNames(const String& Value);
  bool IsInternalCalcFieldNamesStored() const { return !FInternalCalcFieldNames.empty(); }
  // Records changed since the flag was last cleared: a post after a data field was written,
  // every delete.
  bool GetDataChanged() const { return FDataChanged; }
  // The master's field names as DetailFields when none of their own are set.
  String GetDetailFields() const;

  // Order: those not defined here are [order]. IndexFieldNames: ";"-separated names, each
  // optionally followed by " DESC" or " ASC"; reading it after the fields are resolved gives
  // (and keeps) the normalised text.
  String GetIndexFieldNames() const;
  void SetIndexFieldNames(const String& Value);
  bool GetSorted() const { return FIndexList != nullptr; }
  void SetSorted(bool Value);
  bool GetReversed() const { return FReversed; }
  void SetReversed(bool Value);
  int32_t GetIndexFieldCount() const { return static_cast<int32_t>(FIndexFields.size()); }
  TField* GetIndexField(int32_t Index) const;
  void SetIndexField(int32_t Index, TField* Value);  // assigns Value's value to that field
  bool GetIndexDescField(int32_t Index) const;
  void SetIndexDescField(int32_t Index, bool Value);
  bool GetIndexFieldState() const { return FIndexFieldState; }

  // --- Adding and removing fields (closed data set only)

  TField* AddDataField(const String& FieldName, TFieldType DataType, int32_t Size = 0);
  TField* AddCalcField(const String& FieldName, TFieldType DataType, int32_t Size = 0);
  TField* AddLookupField(const String& FieldName, TFieldType DataType, int32_t Size,
                         TDataSet* LookupDataSet, const String& KeyFields,
                         const String& LookupKeyFields, const String& LookupResultField);
  void AddAllFields();  // the default fields of all definitions
  void RemoveFields();  // destroys all fields

  // --- Events

  const TCountRecordsEvent& GetOnCountRecords() const { return FOnCountRecords; }
  void SetOnCountRecords(TCountRecordsEvent Value) { FOnCountRecords = std::move(Value); }
  const TGetFieldDataEvent& GetOnGetFieldData() const { return FOnGetFieldData; }
  void SetOnGetFieldData(TGetFieldDataEvent Value) { FOnGetFieldData = std::move(Value); }
  const TSetFieldDataEvent& GetOnSetFieldData() const { return FOnSetFieldData; }
  void SetOnSetFieldData(TSetFieldDataEvent Value) { FOnSetFieldData = std::move(Value); }
  const TInsertRecordEvent& GetOnInsertRecord() const { return FOnInsertRecord; }
  void SetOnInsertRecord(TInsertRecordEvent Value) { FOnInsertRecord = std::move(Value); }
  const TDeleteRecordEvent& GetOnDeleteRecord() const { return FOnDeleteRecord; }
  void SetOnDeleteRecord(TDeleteRecordEvent Value) { FOnDeleteRecord = std::move(Value); }
  const TCompareRecordsEvent& GetOnCompareRecords() const { return FOnCompareRecords; }
  void SetOnCompareRecords(TCompareRecordsEvent Value) { FOnCompareRecords = std::move(Value); }

 protected:
  // --- Field set-up

  // Copies the child definitions of the parent's definition of a nested data set's field.
  void InitFieldDefsFromDataSetField();
  // Definitions from the data and internally calculated fields when there are fewer
  // definitions than fields.
  void InitFieldDefsFromFields();
  // Destroys the fields of nested data sets that have no definitions, so that they are made
  // again from the definitions they get when they open.
  void UpdateDataSetFields();

  // --- Order [order]

  // Resolves the index field text into the index fields; on failure clears both and raises.
  void SetupIndexFields();
  void ClearIndexFields();
  // True makes the index list (CreateIndexList), false frees it.
  void SetIndexList(bool Value);

 private:
  // Whether the field list differs from the one the stored signature was made of; stores the
  // new signature.
  bool FieldListChanged();
  // The buffer field values go to and from in the present state; null when there is none.
  TRecordBuffer GetRecordBuffer() const;
  // The value slot of a field in a record buffer; null for a field without one.
  Variant* FieldSlot(TRecordBuffer Buffer, TField* Field) const;
  int32_t SlotCount() const;
  TGetResult InternalGetRecord(TRecordBuffer Buffer, TGetMode GetMode, bool DoCheck);
  bool FilterAccepts();
  // The parent of a nested data set, or the master of a detail, is empty or inserting.
  bool ParentOrMasterEmpty() const;
  bool ReadFieldValue(TField* Field, void* Buffer, bool NativeFormat);
  void WriteFieldValue(TField* Field, const void* Buffer, bool NativeFormat, bool ByteArrayForm);
  void HideFields(TFieldDefs* FieldDefs);
  TField* AddField(const String& FieldName, TFieldType DataType, int32_t Size, TFieldKind Kind);

  bool FReadOnly = false;
  bool FReversed = false;
  bool FStoreDefs = false;
  bool FCursorOpen = false;
  int32_t FRecordSize = 0;
  int32_t FRecordCount = 0;
  int32_t FRecordNumber = -1;
  uint32_t FFieldListSum = 0;
  std::vector<TField*> FModifiedFields;  // in the order of their first write
  std::vector<TField*> FIndexFields;
  mutable String FIndexFieldNames;  // reading IndexFieldNames stores the normalised text
  bool FIndexFieldState = false;
  uint32_t FIndexDescFields = 0;  // bit i % 32: index field i sorts descending
  std::unique_ptr<TORVIndexList> FIndexList;
  bool FInitCreateFields = false;
  String FInternalCalcFieldNames;
  TRecordBuffer FFilterBuffer = nullptr;
  TORVCustomData* FParentDataSet = nullptr;
  std::unique_ptr<TMasterDataLink> FMasterDataLink;
  TCountRecordsEvent FOnCountRecords;
  TGetFieldDataEvent FOnGetFieldData;
  TSetFieldDataEvent FOnSetFieldData;
  TInsertRecordEvent FOnInsertRecord;
  TDeleteRecordEvent FOnDeleteRecord;
  TCompareRecordsEvent FOnCompareRecords;
  TLocateOptions FLocateOptions;
  bool FLocateFilter = false;
  String FLocateFields;
  Variant FLocateValues;
  bool FDetailFilter = false;
  String FDetailFields;
  Variant FDetailValues;
  int32_t FDefaultWidth = 30;
  bool FFieldChange = false;
  bool FDataChanged = false;
};

// ---------------------------------------------------------------------------------------------
// TORVData: the engine with its properties and events published, answering the data events
// with the application's handlers.

class TORVData : public TORVCustomData {
  ORV_CLASS(TORVData, TORVCustomData)
 public:
  explicit TORVData(TComponent* AOwner = nullptr) : TORVCustomData(AOwner) {}
};

}  // namespace orv
