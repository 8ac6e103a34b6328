// TORVCustomData: record buffers, fetching records in cursor order through the filters, cursor
// positions and bookmarks. A fetch only stamps a buffer with its position and empties its value
// cache: moving the cursor never asks for a value.

#include <algorithm>
#include <cstring>
#include <memory>

#include "ORVData.h"
#include "ORVRecordBuffer.h"
#include "TryFinally.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// Buffers

int32_t TORVCustomData::GetRecordSize() const { return FRecordSize; }

int32_t TORVCustomData::SlotCount() const { return ORVSlotCount(FRecordSize); }

TRecordBuffer TORVCustomData::AllocRecordBuffer() {
  auto* buffer = static_cast<TRecordBuffer>(::operator new(static_cast<size_t>(FRecordSize)));
  ::new (buffer) TORVRecordHeader{-1, static_cast<uint8_t>(bfCurrent)};
  std::uninitialized_default_construct_n(RecordSlots(buffer), SlotCount());
  return buffer;
}

void TORVCustomData::FreeRecordBuffer(TRecordBuffer& Buffer) {
  std::destroy_n(RecordSlots(Buffer), SlotCount());
  ::operator delete(Buffer);
  Buffer = nullptr;
}

void TORVCustomData::InternalInitRecord(TRecordBuffer Buffer) {
  std::fill_n(RecordSlots(Buffer), SlotCount(), Null());
}

void TORVCustomData::ClearCalcFields(TRecordBuffer Buffer) {
  if (GetCalcFieldsSize() <= 0) return;
  TFieldList* list = GetFieldList();
  Variant* slots = RecordSlots(Buffer);
  const int32_t count = std::min(list->GetCount(), SlotCount());
  for (int32_t i = 0; i < count; ++i) {
    const TFieldKind kind = list->GetField(i)->GetFieldKind();
    if (kind == fkCalculated || kind == fkLookup) slots[i] = Null();
  }
}

TRecordBuffer TORVCustomData::GetRecordBuffer() const {
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

Variant* TORVCustomData::FieldSlot(TRecordBuffer Buffer, TField* Field) const {
  const int32_t slot = GetFieldList()->IndexOfObject(Field);
  return slot >= 0 && slot < SlotCount() ? RecordSlots(Buffer) + slot : nullptr;
}

// ---------------------------------------------------------------------------------------------
// Fetching

// The filter chain: each filter is asked only while the record is still accepted.
bool TORVCustomData::FilterAccepts() {
  bool accept = true;
  if (FDetailFilter) DetailFilter(accept);
  if (accept && FLocateFilter) LocateFilter(accept);
  if (accept && GetFiltered() && GetOnFilterRecord()) GetOnFilterRecord()(this, accept);
  return accept;
}

// While filtering, field values are read from the buffer being fetched (dsFilter); a refused
// record is skipped in the direction of the fetch, or ends a fetch of the current record.
TGetResult TORVCustomData::GetRecord(TRecordBuffer Buffer, TGetMode GetMode, bool DoCheck) {
  const bool filtering = (GetFiltered() && GetOnFilterRecord()) || FLocateFilter || FDetailFilter;
  if (!filtering) return InternalGetRecord(Buffer, GetMode, DoCheck);
  FFilterBuffer = Buffer;
  const TDataSetState saved = SetTempState(dsFilter);
  TScopeExit restore([&] { RestoreState(saved); });
  try {
    for (;;) {
      const TGetResult result = InternalGetRecord(Buffer, GetMode, DoCheck);
      if (result != grOK || FilterAccepts()) return result;
      if (GetMode == gmCurrent) return grError;
    }
  } catch (...) {
    InternalHandleException();
    return grError;
  }
}

TGetResult TORVCustomData::InternalGetRecord(TRecordBuffer Buffer, TGetMode GetMode,
                                              bool DoCheck) {
  if (ParentOrMasterEmpty()) return grEOF;
  try {
    const int32_t position =
        FRecordNumber + (GetMode == gmNext ? 1 : GetMode == gmPrior ? -1 : 0);
    if (position < 0) return grBOF;
    if (position >= GetRecordCount()) return grEOF;
    FRecordNumber = position;
    RecordHeader(Buffer) = {position, static_cast<uint8_t>(bfCurrent)};
    std::fill_n(RecordSlots(Buffer), SlotCount(), Variant());
    GetCalcFields(Buffer);
    return grOK;
  } catch (...) {
    if (DoCheck) throw;
    return grError;
  }
}

// ---------------------------------------------------------------------------------------------
// Positions

int32_t TORVCustomData::GetRecordNumber() const { return FRecordNumber; }

void TORVCustomData::SetRecordNumber(int32_t Value) { FRecordNumber = Value; }

void TORVCustomData::InternalFirst() { FRecordNumber = -1; }

void TORVCustomData::InternalLast() { FRecordNumber = GetRecordCount(); }

void TORVCustomData::InternalSetToRecord(TRecordBuffer Buffer) {
  FRecordNumber = RecordHeader(Buffer).RecordNumber;
}

int32_t TORVCustomData::GetRecNo() const {
  CheckActive();
  if (GetRecordCount() == 0) return -1;
  TRecordBuffer buffer = GetState() == dsCalcFields ? CalcBuffer() : ActiveBuffer();
  const TORVRecordHeader& header = RecordHeader(buffer);
  return header.BookmarkFlag == bfCurrent ? header.RecordNumber + 1 : -1;
}

void TORVCustomData::SetRecNo(int32_t Value) {
  if (Value == GetRecNo()) return;
  DoBeforeScroll();
  FRecordNumber = Value - 1;
  Resync(TResyncMode{rmCenter});
  DoAfterScroll();
}

int32_t TORVCustomData::GetRecordIndex() const {
  CheckActive();
  return GetIndex(GetState() == dsCalcFields ? CalcBuffer() : ActiveBuffer());
}

// ---------------------------------------------------------------------------------------------
// Bookmarks: the 4-byte position of the buffer.

namespace {

bool HasPosition(const TBookmark& Bookmark) { return Bookmark.size() >= sizeof(int32_t); }

int32_t PositionOf(const void* Bookmark) {
  int32_t position;
  std::memcpy(&position, Bookmark, sizeof position);
  return position;
}

}  // namespace

void TORVCustomData::GetBookmarkData(TRecordBuffer Buffer, TBookmark& Data) {
  Data.resize(sizeof(int32_t));
  GetBookmarkData(Buffer, static_cast<void*>(Data.data()));
}

void TORVCustomData::GetBookmarkData(TRecordBuffer Buffer, void* Data) {
  std::memcpy(Data, &RecordHeader(Buffer).RecordNumber, sizeof(int32_t));
}

void TORVCustomData::SetBookmarkData(TRecordBuffer Buffer, const TBookmark& Data) {
  if (HasPosition(Data)) SetBookmarkData(Buffer, static_cast<const void*>(Data.data()));
}

void TORVCustomData::SetBookmarkData(TRecordBuffer Buffer, const void* Data) {
  RecordHeader(Buffer).RecordNumber = PositionOf(Data);
}

TBookmarkFlag TORVCustomData::GetBookmarkFlag(TRecordBuffer Buffer) {
  return static_cast<TBookmarkFlag>(RecordHeader(Buffer).BookmarkFlag);
}

void TORVCustomData::SetBookmarkFlag(TRecordBuffer Buffer, TBookmarkFlag Value) {
  RecordHeader(Buffer).BookmarkFlag = static_cast<uint8_t>(Value);
}

void TORVCustomData::InternalGotoBookmark(const TBookmark& Bookmark) {
  if (HasPosition(Bookmark)) InternalGotoBookmark(static_cast<const void*>(Bookmark.data()));
}

void TORVCustomData::InternalGotoBookmark(const void* Bookmark) {
  FRecordNumber = PositionOf(Bookmark);
}

bool TORVCustomData::BookmarkValid(const TBookmark& Bookmark) {
  if (!HasPosition(Bookmark)) return false;
  const int32_t position = PositionOf(Bookmark.data());
  return position >= 0 && position < GetRecordCount();
}

int TORVCustomData::CompareBookmarks(const TBookmark& Bookmark1, const TBookmark& Bookmark2) {
  const bool present1 = HasPosition(Bookmark1);
  const bool present2 = HasPosition(Bookmark2);
  if (present1 && present2) {
    const int32_t position1 = PositionOf(Bookmark1.data());
    const int32_t position2 = PositionOf(Bookmark2.data());
    return position1 < position2 ? -1 : position1 > position2 ? 1 : 0;
  }
  return present1 ? -1 : present2 ? 1 : 0;
}

}  // namespace orv
