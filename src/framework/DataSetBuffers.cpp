// TDataSet: the ring of record buffers, the cursor over it (BOF/EOF, First, Last, MoveBy),
// Resync, and bookmarks.
//
// FBuffers holds FBufferCount buffers for records plus one past them, the temporary buffer a
// fetch goes into before it joins the ring. FRecordCount buffers hold records (0 to
// FBufferCount), FActiveRecord is the current one, FCurrentRecord the buffer the descendant's
// cursor stands on (-1: unknown, set it again before moving).

#include <algorithm>

#include "DataSet.h"

#include "DBConsts.h"
#include "TryFinally.h"

namespace orv {

// ---------------------------------------------------------------------------------------------
// The ring

TRecordBuffer TDataSet::ActiveBuffer() const { return FBuffers[FActiveRecord]; }

TRecordBuffer TDataSet::TempBuffer() const { return FBuffers[FRecordCount]; }

void TDataSet::SetBufListSize(int Value) {
  const int size = static_cast<int>(FBuffers.size());
  if (size == Value) return;
  if (size < Value) {
    FBuffers.reserve(Value);
    while (static_cast<int>(FBuffers.size()) < Value) FBuffers.push_back(AllocRecordBuffer());
  } else {
    while (static_cast<int>(FBuffers.size()) > Value) {
      FreeRecordBuffer(FBuffers.back());
      FBuffers.pop_back();
    }
  }
}

void TDataSet::ClearBuffers() {
  FRecordCount = 0;
  FActiveRecord = 0;
  FCurrentRecord = -1;
  FBOF = true;
  FEOF = true;
}

void TDataSet::ActivateBuffers() {
  FRecordCount = 1;
  FActiveRecord = 0;
  FCurrentRecord = 0;
  FBOF = false;
  FEOF = false;
}

// Rotates the buffer at CurIndex to NewIndex, shifting the ones between by one place.
void TDataSet::MoveBuffer(int CurIndex, int NewIndex) {
  if (CurIndex == NewIndex) return;
  auto first = FBuffers.begin();
  if (CurIndex < NewIndex)
    std::rotate(first + CurIndex, first + CurIndex + 1, first + NewIndex + 1);
  else
    std::rotate(first + NewIndex, first + CurIndex, first + CurIndex + 1);
}

void TDataSet::UpdateBufferCount() {
  if (!IsCursorOpen()) return;
  int maxCount = 1;
  for (TDataSource* source : FDataSources) maxCount = std::max(maxCount, source->GetMaxBufferCount());
  SetBufferCount(maxCount);
}

void TDataSet::AdjustFirstRecords(int Delta) {
  if (Delta == 0) return;
  for (TDataSource* source : FDataSources)
    for (TDataLink* link : source->FDataLinks)
      if (link->FActive) link->FFirstRecord += Delta;
}

// Shrinking keeps the records the links show (from the lowest window start), growing fetches
// records after and then before the ones held.
void TDataSet::SetBufferCount(int Value) {
  if (FBufferCount == Value) return;
  if (FBufferCount > Value && FRecordCount > 0) {
    int delta = FActiveRecord;
    for (TDataSource* source : FDataSources)
      for (TDataLink* link : source->FDataLinks)
        if (link->FActive && link->FFirstRecord < delta) delta = link->FFirstRecord;
    for (int i = 0; i < Value; ++i) MoveBuffer(i + delta, i);
    FActiveRecord -= delta;
    if (FCurrentRecord != -1) FCurrentRecord -= delta;
    if (FRecordCount > Value) FRecordCount = Value;
    AdjustFirstRecords(-delta);
  }
  SetBufListSize(Value + 1);
  FBufferCount = Value;
  GetNextRecords();
  AdjustFirstRecords(GetPriorRecords());
}

// ---------------------------------------------------------------------------------------------
// Fetching into the ring

void TDataSet::SetCurrentRecord(int Index) {
  if (FCurrentRecord == Index) return;
  if (!FIsUniDirectional) {
    TRecordBuffer buffer = FBuffers[Index];
    switch (GetBookmarkFlag(buffer)) {
      case bfCurrent:
      case bfInserted:
        InternalSetToRecord(buffer);
        break;
      case bfBOF:
        InternalFirst();
        break;
      case bfEOF:
        InternalLast();
        break;
    }
  }
  FCurrentRecord = Index;
}

void TDataSet::UpdateCursorPos() {
  if (FRecordCount > 0) SetCurrentRecord(FActiveRecord);
}

void TDataSet::CursorPosChanged() { FCurrentRecord = -1; }

bool TDataSet::GetNextRecord() {
  TGetMode mode = gmNext;
  if (FRecordCount > 0) {
    SetCurrentRecord(FRecordCount - 1);
    // The record being inserted is not in the descendant's data yet: its cursor already
    // stands on the record that follows it.
    if (FState == dsInsert && FCurrentRecord == FActiveRecord &&
        GetBookmarkFlag(ActiveBuffer()) == bfCurrent)
      mode = gmCurrent;
  }
  if (GetRecord(FBuffers[FRecordCount], mode, true) != grOK) {
    CursorPosChanged();
    return false;
  }
  if (FRecordCount == 0)
    ActivateBuffers();
  else if (FRecordCount < FBufferCount)
    ++FRecordCount;
  else
    MoveBuffer(0, FRecordCount);
  FCurrentRecord = FRecordCount - 1;
  return true;
}

bool TDataSet::GetPriorRecord() {
  CheckBiDirectional();
  if (FRecordCount > 0) SetCurrentRecord(0);
  if (GetRecord(FBuffers[FRecordCount], gmPrior, true) != grOK) {
    CursorPosChanged();
    return false;
  }
  if (FRecordCount == 0) {
    ActivateBuffers();
  } else {
    MoveBuffer(FRecordCount, 0);
    if (FRecordCount < FBufferCount) {
      ++FRecordCount;
      ++FActiveRecord;
    }
  }
  FCurrentRecord = 0;
  return true;
}

int TDataSet::GetNextRecords() {
  int count = 0;
  while (FRecordCount < FBufferCount && GetNextRecord()) ++count;
  return count;
}

int TDataSet::GetPriorRecords() {
  int count = 0;
  while (FRecordCount < FBufferCount && GetPriorRecord()) ++count;
  return count;
}

bool TDataSet::GetCurrentRecord(TRecordBuffer) { return false; }

bool TDataSet::IsEmpty() const { return FActiveRecord >= FRecordCount; }

// ---------------------------------------------------------------------------------------------
// Navigation

void TDataSet::First() {
  CheckBrowseMode();
  DoBeforeScroll();
  ClearBuffers();
  TryFinally(
      [this] {
        InternalFirst();
        GetNextRecord();
        GetNextRecords();
      },
      [this] {
        FBOF = true;
        DataEvent(deDataSetChange, 0);
        DoAfterScroll();
      });
}

void TDataSet::Last() {
  CheckBiDirectional();
  CheckBrowseMode();
  DoBeforeScroll();
  ClearBuffers();
  TryFinally(
      [this] {
        InternalLast();
        GetPriorRecord();
        GetPriorRecords();
      },
      [this] {
        FEOF = true;
        DataEvent(deDataSetChange, 0);
        DoAfterScroll();
      });
}

void TDataSet::Next() { MoveBy(1); }

void TDataSet::Prior() { MoveBy(-1); }

// Moves within the ring while it can and fetches at its ends. The links hear one scroll event
// with the net shift of the ring (negative when buffers moved towards index 0).
int TDataSet::MoveBy(int Distance) {
  CheckBrowseMode();
  int moved = 0;
  DoBeforeScroll();
  if (!((Distance > 0 && !FEOF) || (Distance < 0 && !FBOF))) return 0;
  FBOF = false;
  FEOF = false;
  int scrollCount = 0;
  auto step = [&] {
    while (Distance > 0) {
      if (FActiveRecord < FRecordCount - 1) {
        ++FActiveRecord;
      } else {
        const int shift = FRecordCount < FBufferCount ? 0 : 1;
        if (!GetNextRecord()) {
          FEOF = true;
          break;
        }
        scrollCount -= shift;
        if (FActiveRecord < FRecordCount - 1) ++FActiveRecord;
      }
      --Distance;
      ++moved;
    }
    while (Distance < 0) {
      if (FActiveRecord > 0) {
        --FActiveRecord;
      } else {
        const int shift = FRecordCount < FBufferCount ? 0 : 1;
        if (!GetPriorRecord()) {
          FBOF = true;
          break;
        }
        scrollCount += shift;
        if (FActiveRecord > 0) --FActiveRecord;
      }
      ++Distance;
      --moved;
    }
  };
  TryFinally(step, [&] {
    DataEvent(deDataSetScroll, scrollCount);
    DoAfterScroll();
  });
  return moved;
}

// Fills the ring again around the descendant's cursor: rmExact insists on the record the
// cursor stands on, rmCenter puts it in the middle of the ring, otherwise it keeps its place.
void TDataSet::Resync(TResyncMode Mode) {
  if (FIsUniDirectional) return;
  TRecordBuffer temp = FBuffers[FRecordCount];
  if (Mode.Contains(rmExact)) {
    CursorPosChanged();
    if (GetRecord(temp, gmCurrent, true) != grOK) DatabaseError(SRecordNotFound, this);
  } else if (GetRecord(temp, gmCurrent, false) != grOK && GetRecord(temp, gmNext, false) != grOK &&
             GetRecord(temp, gmPrior, false) != grOK) {
    ClearBuffers();
    DataEvent(deDataSetChange, 0);
    return;
  }
  int count = Mode.Contains(rmCenter) ? (FBufferCount - 1) / 2 : FActiveRecord;
  MoveBuffer(FRecordCount, 0);
  ActivateBuffers();
  TryFinally(
      [&] {
        while (count > 0 && GetPriorRecord()) --count;
        GetNextRecords();
        GetPriorRecords();
      },
      [this] { DataEvent(deDataSetChange, 0); });
}

// ---------------------------------------------------------------------------------------------
// Bookmarks

bool TDataSet::BookmarkAvailable() {
  return (FState == dsBrowse || FState == dsEdit || FState == dsInsert) && !IsEmpty() &&
         GetBookmarkFlag(ActiveBuffer()) == bfCurrent;
}

TBookmark TDataSet::GetBookmark() {
  TBookmark bookmark;
  if (BookmarkAvailable()) {
    bookmark.resize(FBookmarkSize);
    GetBookmarkData(ActiveBuffer(), bookmark);
  }
  return bookmark;
}

void TDataSet::GotoBookmark(const TBookmark& Bookmark) {
  if (Bookmark.empty()) return;
  CheckBrowseMode();
  DoBeforeScroll();
  InternalGotoBookmark(Bookmark);
  Resync(TResyncMode{rmExact, rmCenter});
  DoAfterScroll();
}

void TDataSet::InternalGotoBookmark(const void* Bookmark) {
  const auto* bytes = static_cast<const uint8_t*>(Bookmark);
  InternalGotoBookmark(TBookmark(bytes, bytes + FBookmarkSize));
}

bool TDataSet::BookmarkValid(const TBookmark&) { return false; }

int TDataSet::CompareBookmarks(const TBookmark& Bookmark1, const TBookmark& Bookmark2) {
  if (Bookmark1.empty() || Bookmark2.empty())
    return Bookmark1.empty() == Bookmark2.empty() ? 0 : (Bookmark1.empty() ? 1 : -1);
  auto order = Bookmark1 <=> Bookmark2;
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace orv
