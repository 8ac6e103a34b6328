#include "TestDataSet.h"

#include <algorithm>
#include <cstring>

#include "TryFinally.h"

namespace orv::test {

ORV_IMPLEMENT_CLASS(TTestTable)
ORV_IMPLEMENT_CLASS(TTestDataSet)

TTestTable* TTestTable::AddNested() {
  FNested.push_back(std::make_unique<TTestTable>());
  return FNested.back().get();
}

// Object fields (and data-set fields) are fields of their own, with their sub-fields inside.
TTestDataSet::TTestDataSet(TComponent* AOwner) : TDataSet(AOwner) { SetObjectView(true); }

// Only this class can still close itself: its InternalClose and FreeRecordBuffer are gone once
// the base destructor runs.
TTestDataSet::~TTestDataSet() {
  Destroying();
  Close();
}

// ---------------------------------------------------------------------------------------------
// Opening and closing

// A nested data set opens its parent first; a parent tells its nested data sets that it stands
// on its first record once its buffers are filled.
void TTestDataSet::OpenCursor(bool InfoQuery) {
  if (GetDataSetField()) OpenParentDataSet(GetDataSetField()->GetDataSet());
  TDataSet::OpenCursor(InfoQuery);
  if (!InfoQuery && !GetNestedDataSets()->List().empty()) DataEvent(deDataSetChange, 0);
}

// The cursor counts as open from the start, so that updating the definitions reads them from
// this open cursor instead of opening another one.
void TTestDataSet::InternalOpen() {
  FCursorOpen = true;
  AttachTable();
  GetFieldDefs()->SetUpdated(false);
  GetFieldDefs()->Update();
  GetFieldDefList()->SetUpdated(false);
  GetFieldDefList()->Update();
  if (GetDefaultFields()) CreateFields();
  BindFields(true);
  MapSlots();
  SetBookmarkSize(sizeof(int32_t));
  FCursor = -1;
}

void TTestDataSet::InternalClose() {
  FCursorOpen = false;
  BindFields(false);
  if (GetDefaultFields()) DestroyFields();
  FSlots.clear();
  FColumnCount = FSlotCount = 0;
  if (GetDataSetField()) FTable = FOwnTable.get();
}

// The definitions are given by the test; a nested data set takes the children of its field's
// definition in the parent.
void TTestDataSet::InternalInitFieldDefs() {
  TDataSetField* field = GetDataSetField();
  if (!field || GetFieldDefs()->GetCount() > 0) return;
  TFieldDef* parentDef = field->GetDataSet()->GetFieldDefList()->Find(field->GetFullName());
  if (parentDef) GetFieldDefs()->Assign(parentDef->GetChildDefs());
}

// A nested data set shows the table held by the parent's current record, none while the
// parent is empty or inserting.
void TTestDataSet::AttachTable() {
  TDataSetField* field = GetDataSetField();
  if (!field) return;
  FOwnTable->Rows.clear();
  FTable = FOwnTable.get();
  TDataSet* parent = field->GetDataSet();
  if (!parent->IsCursorOpen() || parent->IsEmpty() || parent->GetState() == dsInsert) return;
  const TFieldDef* def = parent->GetFieldDefList()->Find(field->GetFullName());
  const int column = parent->GetFieldDefList()->IndexOfObject(const_cast<TFieldDef*>(def));
  auto* owner = dynamic_cast<TTestDataSet*>(parent);
  if (!owner || column < 0) return;
  const Variant& held = owner->Slots(owner->ActiveBuffer())[column];
  if (VarType(held) == varObject) FTable = held.As<TTestTable*>();
}

// Data columns follow the flat definitions; calculated and lookup fields get slots after them.
void TTestDataSet::MapSlots() {
  FSlots.clear();
  FColumnCount = GetFieldDefList()->GetCount();
  FSlotCount = FColumnCount;
  TFieldList* fields = GetFieldList();
  for (int i = 0; i < fields->GetCount(); ++i) {
    TField* field = fields->GetField(i);
    int slot = field->GetFieldNo() > 0
                   ? GetFieldDefList()->IndexOf(field->GetFullName())
                   : FSlotCount++;
    if (slot >= 0) FSlots.emplace_back(field, slot);
  }
  std::sort(FSlots.begin(), FSlots.end());
}

void TTestDataSet::InternalHandleException() {
  try {
    throw;
  } catch (const std::exception& e) {
    FHandledErrors.push_back(e.what());
  }
}

// The parent moved: the nested data set shows the records of its new current record.
void TTestDataSet::DataEvent(TDataEvent Event, intptr_t Info) {
  if (Event == deParentScroll && GetActive()) {
    Close();
    Open();
  }
  TDataSet::DataEvent(Event, Info);
}

// ---------------------------------------------------------------------------------------------
// Buffers

namespace {
constexpr size_t SlotsOffset = (sizeof(int32_t) * 2 + alignof(Variant) - 1) / alignof(Variant) *
                               alignof(Variant);
}

int32_t TTestDataSet::GetRecordSize() const {
  return static_cast<int32_t>(SlotsOffset + FSlotCount * sizeof(Variant));
}

Variant* TTestDataSet::Slots(TRecordBuffer Buffer) const {
  return std::launder(reinterpret_cast<Variant*>(Buffer + SlotsOffset));
}

TRecordBuffer TTestDataSet::AllocRecordBuffer() {
  auto* buffer = static_cast<TRecordBuffer>(::operator new(GetRecordSize()));
  new (buffer) THeader{-1, bfCurrent};
  std::uninitialized_default_construct_n(Slots(buffer), FSlotCount);
  return buffer;
}

void TTestDataSet::FreeRecordBuffer(TRecordBuffer& Buffer) {
  std::destroy_n(Slots(Buffer), FSlotCount);
  ::operator delete(Buffer);
  Buffer = nullptr;
}

void TTestDataSet::InternalInitRecord(TRecordBuffer Buffer) {
  std::fill_n(Slots(Buffer), FSlotCount, Null());
}

void TTestDataSet::ClearCalcFields(TRecordBuffer Buffer) {
  std::fill(Slots(Buffer) + FColumnCount, Slots(Buffer) + FSlotCount, Null());
}

void TTestDataSet::GetBookmarkData(TRecordBuffer Buffer, TBookmark& Data) {
  Data.resize(sizeof(int32_t));
  GetBookmarkData(Buffer, static_cast<void*>(Data.data()));
}

void TTestDataSet::GetBookmarkData(TRecordBuffer Buffer, void* Data) {
  std::memcpy(Data, &Header(Buffer).Index, sizeof(int32_t));
}

void TTestDataSet::SetBookmarkData(TRecordBuffer Buffer, const TBookmark& Data) {
  if (Data.size() == sizeof(int32_t)) SetBookmarkData(Buffer, static_cast<const void*>(Data.data()));
}

void TTestDataSet::SetBookmarkData(TRecordBuffer Buffer, const void* Data) {
  std::memcpy(&Header(Buffer).Index, Data, sizeof(int32_t));
}

TBookmarkFlag TTestDataSet::GetBookmarkFlag(TRecordBuffer Buffer) { return Header(Buffer).Flag; }

void TTestDataSet::SetBookmarkFlag(TRecordBuffer Buffer, TBookmarkFlag Value) {
  Header(Buffer).Flag = Value;
}

bool TTestDataSet::BookmarkValid(const TBookmark& Bookmark) {
  if (Bookmark.size() != sizeof(int32_t)) return false;
  int32_t row;
  std::memcpy(&row, Bookmark.data(), sizeof row);
  return row >= 0 && row < static_cast<int32_t>(FTable->Rows.size());
}

int TTestDataSet::CompareBookmarks(const TBookmark& Bookmark1, const TBookmark& Bookmark2) {
  if (Bookmark1.empty() || Bookmark2.empty()) return TDataSet::CompareBookmarks(Bookmark1, Bookmark2);
  int32_t row1, row2;
  std::memcpy(&row1, Bookmark1.data(), sizeof row1);
  std::memcpy(&row2, Bookmark2.data(), sizeof row2);
  return row1 < row2 ? -1 : row1 > row2 ? 1 : 0;
}

// ---------------------------------------------------------------------------------------------
// The cursor

void TTestDataSet::FillBuffer(TRecordBuffer Buffer, int32_t Row) {
  Header(Buffer) = {Row, bfCurrent};
  const std::vector<Variant>& values = FTable->Rows[Row];
  Variant* slots = Slots(Buffer);
  for (int i = 0; i < FColumnCount; ++i)
    slots[i] = i < static_cast<int>(values.size()) ? values[i] : Null();
  GetCalcFields(Buffer);
}

// OnFilterRecord reads the record through the filter buffer in the filter state. An error in the
// handler refuses the record and goes to InternalHandleException.
bool TTestDataSet::RecordAccepted(TRecordBuffer Buffer) {
  if (!(GetFiltered() || FFinding) || !GetOnFilterRecord()) return true;
  FFilterBuffer = Buffer;
  const TDataSetState saved = SetTempState(dsFilter);
  TScopeExit restore([&] { RestoreState(saved); });
  bool accept = true;
  try {
    GetOnFilterRecord()(this, accept);
  } catch (...) {
    InternalHandleException();
    accept = false;
  }
  return accept;
}

TGetResult TTestDataSet::GetRecord(TRecordBuffer Buffer, TGetMode GetMode, bool) {
  const int32_t count = static_cast<int32_t>(FTable->Rows.size());
  for (;;) {
    const int32_t row = FCursor + (GetMode == gmNext ? 1 : GetMode == gmPrior ? -1 : 0);
    if (row < 0) {
      FCursor = -1;
      return grBOF;
    }
    if (row >= count) {
      FCursor = count;
      return grEOF;
    }
    FCursor = row;
    FillBuffer(Buffer, row);
    if (RecordAccepted(Buffer)) return grOK;
    if (GetMode == gmCurrent) return grError;
  }
}

void TTestDataSet::InternalFirst() { FCursor = -1; }

void TTestDataSet::InternalLast() { FCursor = static_cast<int32_t>(FTable->Rows.size()); }

void TTestDataSet::InternalSetToRecord(TRecordBuffer Buffer) { FCursor = Header(Buffer).Index; }

void TTestDataSet::InternalGotoBookmark(const TBookmark& Bookmark) {
  std::memcpy(&FCursor, Bookmark.data(), sizeof FCursor);
}

int32_t TTestDataSet::GetRecordCount() const {
  CheckActive();
  return static_cast<int32_t>(FTable->Rows.size());
}

int32_t TTestDataSet::GetRecNo() const {
  CheckActive();
  TRecordBuffer buffer = GetState() == dsCalcFields ? CalcBuffer()
                         : IsEmpty()                ? nullptr
                                                    : ActiveBuffer();
  if (!buffer || Header(buffer).Flag != bfCurrent) return -1;
  return Header(buffer).Index + 1;
}

void TTestDataSet::SetRecNo(int32_t Value) {
  CheckBrowseMode();
  if (Value == GetRecNo()) return;
  DoBeforeScroll();
  FCursor = Value - 1;
  Resync(TResyncMode{rmCenter});
  DoAfterScroll();
}

void TTestDataSet::SetFiltered(bool Value) {
  if (Value == GetFiltered()) return;
  if (!GetActive()) {
    TDataSet::SetFiltered(Value);
    return;
  }
  CheckBrowseMode();
  TDataSet::SetFiltered(Value);
  First();
}

// ---------------------------------------------------------------------------------------------
// Field values

TRecordBuffer TTestDataSet::CurrentBuffer() const {
  switch (GetState()) {
    case dsBrowse:
    case dsBlockRead:
      return IsEmpty() ? nullptr : ActiveBuffer();
    case dsEdit:
    case dsInsert:
    case dsNewValue:
      return ActiveBuffer();
    case dsFilter:
      return FFilterBuffer;
    case dsCalcFields:
    case dsInternalCalc:
      return CalcBuffer();
    default:
      return nullptr;
  }
}

int TTestDataSet::SlotOf(const TField* Field) const {
  auto it = std::lower_bound(FSlots.begin(), FSlots.end(), Field,
                             [](const auto& slot, const TField* field) { return slot.first < field; });
  return it != FSlots.end() && it->first == Field ? it->second : -1;
}

// The old and the stored value (dsOldValue, dsCurValue) are the row in the table.
const Variant* TTestDataSet::CurrentValue(const TField* Field) const {
  const int slot = SlotOf(Field);
  if (slot < 0) return nullptr;
  const TDataSetState state = GetState();
  if (state == dsOldValue || state == dsCurValue) {
    if (IsEmpty() || Header(ActiveBuffer()).Flag != bfCurrent || slot >= FColumnCount) return nullptr;
    const std::vector<Variant>& row = FTable->Rows[Header(ActiveBuffer()).Index];
    return slot < static_cast<int>(row.size()) ? &row[slot] : nullptr;
  }
  TRecordBuffer buffer = CurrentBuffer();
  return buffer ? &Slots(buffer)[slot] : nullptr;
}

bool TTestDataSet::GetFieldData(TField* Field, void* Buffer) {
  const Variant* value = CurrentValue(Field);
  if (!value || VarIsNull(*value) || VarIsEmpty(*value)) return false;
  if (Buffer) VariantToNative(this, Field, *value, Buffer);
  return true;
}

void TTestDataSet::SetFieldData(TField* Field, const void* Buffer) {
  const TDataSetState state = GetState();
  if (state != dsEdit && state != dsInsert && state != dsSetKey && state != dsCalcFields &&
      state != dsFilter && state != dsNewValue && state != dsInternalCalc)
    DatabaseError(SNotEditing, this);
  TRecordBuffer record = CurrentBuffer();
  const int slot = SlotOf(Field);
  if (!record || slot < 0) DatabaseError(SNotEditing, this);
  if (Field->GetFieldNo() > 0) {
    if (state == dsCalcFields) DatabaseError(SNotEditing, this);
    if (Field->GetReadOnly() && state != dsSetKey && state != dsFilter)
      DatabaseErrorFmt(SFieldReadOnly, {Field->GetDisplayName()});
    Field->Validate(Buffer);
  }
  Slots(record)[slot] = Buffer ? NativeToVariant(this, Field, Buffer) : Null();
  if (state != dsCalcFields && state != dsFilter && state != dsNewValue && state != dsInternalCalc)
    DataEvent(deFieldChange, reinterpret_cast<intptr_t>(Field));
}

// ---------------------------------------------------------------------------------------------
// Editing

std::vector<Variant> TTestDataSet::RowOf(TRecordBuffer Buffer) const {
  return std::vector<Variant>(Slots(Buffer), Slots(Buffer) + FColumnCount);
}

// A new record goes before the row its buffer names (bfInserted), first (bfBOF) or last (bfEOF);
// the cursor then stands on it, where the framework's Resync looks for it.
void TTestDataSet::AddRecord(TRecordBuffer Buffer, bool Append) {
  const THeader& header = Header(Buffer);
  int32_t row = static_cast<int32_t>(FTable->Rows.size());
  if (!Append && header.Flag == bfBOF) row = 0;
  if (!Append && (header.Flag == bfInserted || header.Flag == bfCurrent))
    row = std::clamp<int32_t>(header.Index, 0, row);
  FTable->Rows.insert(FTable->Rows.begin() + row, RowOf(Buffer));
  FCursor = row;
}

void TTestDataSet::InternalPost() {
  TDataSet::InternalPost();
  if (GetState() == dsEdit)
    FTable->Rows[Header(ActiveBuffer()).Index] = RowOf(ActiveBuffer());
  else
    AddRecord(ActiveBuffer(), Header(ActiveBuffer()).Flag == bfEOF);
}

void TTestDataSet::InternalDelete() {
  FTable->Rows.erase(FTable->Rows.begin() + Header(ActiveBuffer()).Index);
}

void TTestDataSet::InternalAddRecord(TRecordBuffer Buffer, bool Append) { AddRecord(Buffer, Append); }

void TTestDataSet::InternalAddRecord(void* Buffer, bool Append) {
  AddRecord(static_cast<TRecordBuffer>(Buffer), Append);
}

// ---------------------------------------------------------------------------------------------
// Searching: a scan of the rows in order, through the temporary buffer, that sees only what the
// filter lets through.

namespace {

bool KeyMatches(const Variant& value, const Variant& key, TLocateOptions options, bool last) {
  const bool partial = options.Contains(loPartialKey) && last;
  if ((partial || options.Contains(loCaseInsensitive)) && VarIsStr(value) && VarIsStr(key)) {
    String text = value.AsString();
    const String wanted = key.AsString();
    if (partial) text = text.substr(0, wanted.size());
    return options.Contains(loCaseInsensitive) ? AnsiSameText(text, wanted) : text == wanted;
  }
  return VarSameValue(value, key);
}

}  // namespace

int32_t TTestDataSet::FindRow(const String& KeyFields, const Variant& KeyValues,
                              TLocateOptions Options) {
  std::vector<TField*> keys;
  GetFieldList(keys, KeyFields);
  if (keys.size() > 1 && (!VarIsArray(KeyValues) ||
                          VarArrayHighBound(KeyValues, 1) + 1 != static_cast<int32_t>(keys.size())))
    return -1;
  TRecordBuffer temp = TempBuffer();
  for (int32_t row = 0; row < static_cast<int32_t>(FTable->Rows.size()); ++row) {
    FillBuffer(temp, row);
    if (!RecordAccepted(temp)) continue;
    FFilterBuffer = temp;
    const TDataSetState saved = SetTempState(dsFilter);
    TScopeExit restore([&] { RestoreState(saved); });
    bool match = true;
    for (size_t k = 0; k < keys.size() && match; ++k) {
      const Variant key = keys.size() > 1 ? KeyValues[static_cast<int32_t>(k)] : KeyValues;
      match = KeyMatches(keys[k]->GetValue(), key, Options, k + 1 == keys.size());
    }
    if (match) return row;
  }
  return -1;
}

bool TTestDataSet::Locate(const String& KeyFields, const Variant& KeyValues,
                          TLocateOptions Options) {
  CheckBrowseMode();
  DoBeforeScroll();
  const int32_t row = FindRow(KeyFields, KeyValues, Options);
  if (row < 0) return false;
  FCursor = row;
  Resync(TResyncMode{rmExact, rmCenter});
  DoAfterScroll();
  return true;
}

// The result is read from the found record in the temporary buffer, calculated as it would be
// shown; the current record does not move.
Variant TTestDataSet::Lookup(const String& KeyFields, const Variant& KeyValues,
                             const String& ResultFields) {
  CheckBrowseMode();
  const int32_t row = FindRow(KeyFields, KeyValues, TLocateOptions{});
  if (row < 0) return Null();
  const TDataSetState saved = SetTempState(dsCalcFields);
  TScopeExit restore([&] { RestoreState(saved); });
  CalculateFields(TempBuffer());
  return GetFieldValues(ResultFields);
}

// The find operations apply OnFilterRecord even while the data set is not Filtered.
bool TTestDataSet::FindRecord(bool Restart, bool GoForward) {
  CheckBrowseMode();
  DoBeforeScroll();
  SetFound(false);
  UpdateCursorPos();
  CursorPosChanged();
  bool found;
  {
    FFinding = true;
    TScopeExit done([this] { FFinding = false; });
    if (Restart) GoForward ? InternalFirst() : InternalLast();
    found = GetRecord(TempBuffer(), GoForward ? gmNext : gmPrior, true) == grOK;
  }
  if (!found) return false;
  Resync(TResyncMode{rmExact, rmCenter});
  SetFound(true);
  DoAfterScroll();
  return true;
}

}  // namespace orv::test
