#pragma once
// TORVIndexList: the sort order of a sorted data set. It holds every record index of the data
// set once, in sort order, so that entry `position` is the record index shown at that cursor
// position. It never compares records itself: it asks the data set (CompareRecords), which
// knows the index fields, the application's comparison and Reversed.
//
// The data set keeps the list in step with its records: Update when the count is set or the
// order changes, Insert after a posted insert, Modify after an edit that may move the record,
// Delete after a delete. A data set subclass can supply a subclass of the list through
// TORVCustomData::CreateIndexList; the virtual operations below are the ones it may override.

#include <cstdint>
#include <vector>

#include "ORVData.h"

namespace orv {

class TORVIndexList : public TObject {
  ORV_CLASS(TORVIndexList, TObject)
 public:
  // The data set must be a TORVCustomData: EInvalidCast "Invalid class typecast" otherwise.
  // The list starts empty, without storage.
  explicit TORVIndexList(TDataSet* ADataSet);
  ~TORVIndexList() override;

  // --- Virtual operations, in their order (the constructor stands between NewCapacity and
  // Delete; in C++ the data set's CreateIndexList is the virtual constructor)

 protected:
  // 0 for the same record index without asking the data set, else its CompareRecords.
  virtual int32_t Compare(int32_t Index1, int32_t Index2);
  // The storage granted for `Value` entries: rounded up to a step of 4 that doubles each time
  // the size doubles past 32; 0 for 0 or less.
  virtual int32_t NewCapacity(int32_t Value);

 public:
  // Drops a deleted record and lowers every record index above it by one.
  virtual void Delete(int32_t Index);
  // Puts a new record (one past the last record index) at its sorted place, behind every
  // record that compares equal to it.
  virtual void Insert(int32_t Index);
  // Moves a record whose key may have changed to its sorted place.
  virtual void Modify(int32_t Index);
  // Rebuilds the list: natural order when the record count changed, then a sort. An unchanged
  // count sorts the present order again from where it is.
  virtual void Update();

  // Items[Position]: the record index at a cursor position below the record count (unchecked).
  int32_t GetItem(int32_t Index) const { return FList[static_cast<size_t>(Index)]; }
  int32_t operator[](int32_t Index) const { return GetItem(Index); }

 protected:
  int32_t GetCapacity() const { return static_cast<int32_t>(FList.size()); }
  void SetCapacity(int32_t Value);  // to NewCapacity(Value) entries; 0 frees the storage
  int32_t GetCount() const { return FCount; }
  // A larger count first grows the storage to fit, a count of 0 frees it; a smaller non-zero
  // count keeps it. New entries carry no meaning until filled.
  void SetCount(int32_t Value);
  int32_t GetRecordCount() const;  // the data set's
  // The sorted place of a record index: an upper-bound binary search that skips the record's
  // own entry, so that a record is never compared with itself.
  int32_t Find(int32_t Index);
  int32_t IndexOf(int32_t Index) const;  // linear; the count when absent
  // Middle element as pivot; recursion on the left part only, the right part by the loop.
  void QuickSort(int32_t L, int32_t R);

  int32_t FCount = 0;
  std::vector<int32_t> FList;  // its size is the capacity
  TORVCustomData* FDataSet;    // not owned
};

}  // namespace orv
