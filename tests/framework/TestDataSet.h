#pragma once
// A small in-memory data set written for the tests, and the model of how a descendant meets the
// framework's contract: records are rows of Variants in a table; each record buffer is a header
// (row index, bookmark flag) and one Variant slot per field: the data columns first, then the
// calculated and lookup fields. Field values go to and from the slots in the fields' native
// buffer forms. Bookmarks are the row index (4 bytes).
//
//   TTestDataSet ds;
//   ds.GetFieldDefs()->Add("ID", ftInteger);
//   ds.GetFieldDefs()->Add("Name", ftString, 20);
//   ds.AddRow({1, "Ann"});
//   ds.Open();

#include <memory>
#include <vector>

#include "DB.h"

namespace orv::test {

// The rows of a test data set, in the order of the flat field definitions (children of object
// definitions included). A data-set column holds the table of the row's nested records as an
// object reference; the table that holds the row keeps that nested table alive.
class TTestTable : public TObject {
  ORV_CLASS(TTestTable, TObject)
 public:
  std::vector<std::vector<Variant>> Rows;
  TTestTable* AddNested();

 private:
  std::vector<std::unique_ptr<TTestTable>> FNested;
};

class TTestDataSet : public TDataSet {
  ORV_CLASS(TTestDataSet, TDataSet)
 public:
  explicit TTestDataSet(TComponent* AOwner = nullptr);
  ~TTestDataSet() override;

  // The rows shown: the data set's own, or for a nested data set those of the parent's record.
  TTestTable* GetTable() const { return FTable; }
  void AddRow(std::vector<Variant> Values) { FTable->Rows.push_back(std::move(Values)); }
  // What InternalHandleException was handed (errors of OnFilterRecord), word for word.
  const std::vector<String>& GetHandledErrors() const { return FHandledErrors; }

  int32_t GetRecordCount() const override;
  int32_t GetRecNo() const override;
  void SetRecNo(int32_t Value) override;
  bool IsCursorOpen() const override { return FCursorOpen; }
  void SetFiltered(bool Value) override;
  bool BookmarkValid(const TBookmark& Bookmark) override;
  int CompareBookmarks(const TBookmark& Bookmark1, const TBookmark& Bookmark2) override;
  using TDataSet::GetFieldData;
  using TDataSet::SetFieldData;
  bool GetFieldData(TField* Field, void* Buffer) override;
  void SetFieldData(TField* Field, const void* Buffer) override;
  bool Locate(const String& KeyFields, const Variant& KeyValues, TLocateOptions Options) override;
  Variant Lookup(const String& KeyFields, const Variant& KeyValues,
                 const String& ResultFields) override;

 protected:
  // Buffers and bookmarks
  TRecordBuffer AllocRecordBuffer() override;
  void FreeRecordBuffer(TRecordBuffer& Buffer) override;
  int32_t GetRecordSize() const override;
  void GetBookmarkData(TRecordBuffer Buffer, TBookmark& Data) override;
  void GetBookmarkData(TRecordBuffer Buffer, void* Data) override;
  void SetBookmarkData(TRecordBuffer Buffer, const TBookmark& Data) override;
  void SetBookmarkData(TRecordBuffer Buffer, const void* Data) override;
  TBookmarkFlag GetBookmarkFlag(TRecordBuffer Buffer) override;
  void SetBookmarkFlag(TRecordBuffer Buffer, TBookmarkFlag Value) override;
  void InternalInitRecord(TRecordBuffer Buffer) override;
  void ClearCalcFields(TRecordBuffer Buffer) override;

  // The cursor
  TGetResult GetRecord(TRecordBuffer Buffer, TGetMode GetMode, bool DoCheck) override;
  void InternalFirst() override;
  void InternalLast() override;
  void InternalSetToRecord(TRecordBuffer Buffer) override;
  using TDataSet::InternalGotoBookmark;
  void InternalGotoBookmark(const TBookmark& Bookmark) override;
  bool FindRecord(bool Restart, bool GoForward) override;

  // Editing
  void InternalPost() override;
  void InternalDelete() override;
  void InternalAddRecord(TRecordBuffer Buffer, bool Append) override;
  void InternalAddRecord(void* Buffer, bool Append) override;

  // Opening and closing
  void OpenCursor(bool InfoQuery) override;
  void InternalOpen() override;
  void InternalClose() override;
  void InternalInitFieldDefs() override;
  void InternalHandleException() override;
  void DataEvent(TDataEvent Event, intptr_t Info) override;

 private:
  struct THeader {
    int32_t Index;  // the row; for a new record the row it goes before
    TBookmarkFlag Flag;
  };

  Variant* Slots(TRecordBuffer Buffer) const;
  THeader& Header(TRecordBuffer Buffer) const { return *reinterpret_cast<THeader*>(Buffer); }
  int SlotOf(const TField* Field) const;  // -1 for a field without one
  // The buffer field values go to and from in the current state; null when there is none.
  TRecordBuffer CurrentBuffer() const;
  const Variant* CurrentValue(const TField* Field) const;
  void FillBuffer(TRecordBuffer Buffer, int32_t Row);
  bool RecordAccepted(TRecordBuffer Buffer);
  int32_t FindRow(const String& KeyFields, const Variant& KeyValues, TLocateOptions Options);
  std::vector<Variant> RowOf(TRecordBuffer Buffer) const;
  void AddRecord(TRecordBuffer Buffer, bool Append);
  void AttachTable();
  void MapSlots();

  std::unique_ptr<TTestTable> FOwnTable = std::make_unique<TTestTable>();
  TTestTable* FTable = FOwnTable.get();
  int32_t FCursor = -1;  // the row the cursor stands on; -1 before the first, count after the last
  bool FCursorOpen = false;
  bool FFinding = false;  // a find operation applies OnFilterRecord even when not Filtered
  int FColumnCount = 0;
  int FSlotCount = 0;
  std::vector<std::pair<const TField*, int>> FSlots;  // sorted by field, for a binary search
  TRecordBuffer FFilterBuffer = nullptr;
  std::vector<String> FHandledErrors;
};

// The conversions between a slot's Variant and a field's native buffer form.
void VariantToNative(TDataSet* DataSet, const TField* Field, const Variant& Value, void* Buffer);
Variant NativeToVariant(TDataSet* DataSet, const TField* Field, const void* Buffer);

}  // namespace orv::test
