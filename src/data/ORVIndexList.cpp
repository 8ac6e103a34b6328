#include "ORVIndexList.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orv {

ORV_IMPLEMENT_CLASS(TORVIndexList)

namespace {

TORVCustomData* CheckedDataSet(TDataSet* DataSet) {
  auto* result = dynamic_cast<TORVCustomData*>(DataSet);
  if (!result) throw EInvalidCast("Invalid class typecast");
  return result;
}

}  // namespace

TORVIndexList::TORVIndexList(TDataSet* ADataSet) : FDataSet(CheckedDataSet(ADataSet)) {}

TORVIndexList::~TORVIndexList() { SetCount(0); }

int32_t TORVIndexList::Compare(int32_t Index1, int32_t Index2) {
  return Index1 == Index2 ? 0 : FDataSet->CompareRecords(Index1, Index2);
}

int32_t TORVIndexList::NewCapacity(int32_t Value) {
  if (Value <= 0) return 0;
  int32_t step = 4;
  for (uint32_t t = static_cast<uint32_t>(Value - 1) >> 5; t != 0; t >>= 1) step <<= 1;
  return (Value - 1) / step * step + step;
}

void TORVIndexList::SetCapacity(int32_t Value) {
  const auto capacity = static_cast<size_t>(NewCapacity(Value));
  if (capacity == FList.size()) return;
  // Exactly the granted size: a sorted data set costs 4 bytes a record, not a vector's slack.
  std::vector<int32_t> list(capacity);
  std::copy_n(FList.begin(), std::min(capacity, FList.size()), list.begin());
  FList.swap(list);
}

void TORVIndexList::SetCount(int32_t Value) {
  if (Value <= 0 || Value > GetCapacity()) SetCapacity(Value);
  FCount = std::max(Value, 0);
}

int32_t TORVIndexList::GetRecordCount() const { return FDataSet->GetRecordCount(); }

int32_t TORVIndexList::Find(int32_t Index) {
  int32_t lo = 0;
  int32_t hi = FCount - 1;
  while (lo <= hi) {
    int32_t mid = (lo + hi) / 2;
    if (FList[mid] == Index) {
      if (mid < hi)
        ++mid;
      else if (mid <= lo)
        return lo;
      else
        --mid;
    }
    if (Compare(FList[mid], Index) <= 0)
      lo = mid + 1;
    else
      hi = mid - 1;
  }
  return lo;
}

int32_t TORVIndexList::IndexOf(int32_t Index) const {
  const auto end = FList.begin() + FCount;
  return static_cast<int32_t>(std::find(FList.begin(), end, Index) - FList.begin());
}

void TORVIndexList::QuickSort(int32_t L, int32_t R) {
  while (L < R) {
    int32_t i = L;
    int32_t j = R;
    const int32_t pivot = FList[(L + R) / 2];
    do {
      while (Compare(FList[i], pivot) < 0) ++i;
      while (Compare(FList[j], pivot) > 0) --j;
      if (i <= j) {
        if (i < j) std::swap(FList[i], FList[j]);
        ++i;
        --j;
      }
    } while (i <= j);
    if (L < j) QuickSort(L, j);
    L = i;
  }
}

void TORVIndexList::Update() {
  const int32_t count = std::max(GetRecordCount(), 0);
  if (count != FCount) {
    SetCount(count);
    std::iota(FList.begin(), FList.begin() + FCount, 0);
  }
  if (FCount > 1) QuickSort(0, FCount - 1);
}

void TORVIndexList::Insert(int32_t Index) {
  const int32_t pos = Find(Index);
  if (FCount == GetCapacity()) SetCapacity(GetCapacity() + 1);
  const auto at = FList.begin() + pos;
  std::copy_backward(at, FList.begin() + FCount, FList.begin() + FCount + 1);
  *at = Index;
  ++FCount;
}

// A record index that is not listed leaves the list as it is; the engine never passes one.
void TORVIndexList::Delete(int32_t Index) {
  const int32_t pos = IndexOf(Index);
  if (pos == FCount) return;
  auto renumber = [Index](int32_t item) { return item > Index ? item - 1 : item; };
  const auto begin = FList.begin();
  std::transform(begin, begin + pos, begin, renumber);
  std::transform(begin + pos + 1, begin + FCount, begin + pos, renumber);
  --FCount;
  FList[FCount] = 0;
}

void TORVIndexList::Modify(int32_t Index) {
  const int32_t oldPos = IndexOf(Index);
  if (oldPos == FCount) return;  // not listed: nothing to move
  const int32_t newPos = Find(Index);
  const auto begin = FList.begin();
  if (newPos > oldPos) {
    std::copy(begin + oldPos + 1, begin + newPos, begin + oldPos);
    FList[newPos - 1] = Index;
  } else if (newPos < oldPos) {
    std::copy_backward(begin + newPos, begin + oldPos, begin + oldPos + 1);
    FList[newPos] = Index;
  }
}

}  // namespace orv
