// TStringList and TWideStringList: the lines and objects kept in memory, sorting, duplicates,
// change events and object ownership.

#include <algorithm>
#include <numeric>

#include "StringLists.h"
#include "SysUtils.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TStringList)
ORV_IMPLEMENT_CLASS(TWideStringList)

template <class Base>
TStringListOf<Base>::~TStringListOf() {
  FOnChange = nullptr;
  FOnChanging = nullptr;
  if (FOwnsObjects)
    for (TItem& item : FList) delete item.Object;
}

template <class Base>
void TStringListOf<Base>::CheckUnsorted() const {
  if (FSorted) this->Error("Operation not allowed on sorted list");
}

// ---------------------------------------------------------------------------------------------
// Lines and objects

template <class Base>
auto TStringListOf<Base>::Get(int32_t index) const -> S {
  this->CheckIndex(index, GetCount());
  return FList[static_cast<size_t>(index)].String;
}

template <class Base>
void TStringListOf<Base>::Put(int32_t index, const S& text) {
  CheckUnsorted();
  this->CheckIndex(index, GetCount());
  Changing();
  FList[static_cast<size_t>(index)].String = text;
  Changed();
}

template <class Base>
TObject* TStringListOf<Base>::GetObject(int32_t index) const {
  this->CheckIndex(index, GetCount());
  return FList[static_cast<size_t>(index)].Object;
}

template <class Base>
void TStringListOf<Base>::PutObject(int32_t index, TObject* object) {
  this->CheckIndex(index, GetCount());
  Changing();
  TObject* old = std::exchange(FList[static_cast<size_t>(index)].Object, object);
  if (FOwnsObjects && old != object) delete old;
  Changed();
}

template <class Base>
void TStringListOf<Base>::SetCapacity(int32_t capacity) {
  if (capacity < GetCount())
    this->Error("List capacity out of bounds (" + std::to_string(capacity) + ")");
  FList.reserve(static_cast<size_t>(capacity));
}

template <class Base>
int32_t TStringListOf<Base>::AddObject(const S& text, TObject* object) {
  int32_t index = GetCount();
  if (FSorted && Find(text, index)) {
    if (FDuplicates == dupIgnore) return index;
    if (FDuplicates == dupError) this->Error("String list does not allow duplicates");
  }
  InsertItem(index, text, object);
  return index;
}

template <class Base>
void TStringListOf<Base>::InsertObject(int32_t index, const S& text, TObject* object) {
  CheckUnsorted();
  this->CheckIndex(index, GetCount() + 1);
  InsertItem(index, text, object);
}

template <class Base>
void TStringListOf<Base>::InsertItem(int32_t index, const S& text, TObject* object) {
  Changing();
  FList.insert(FList.begin() + index, TItem{text, object});
  Changed();
}

template <class Base>
void TStringListOf<Base>::Delete(int32_t index) {
  this->CheckIndex(index, GetCount());
  Changing();
  TObject* object = FList[static_cast<size_t>(index)].Object;
  FList.erase(FList.begin() + index);
  if (FOwnsObjects) delete object;
  Changed();
}

template <class Base>
void TStringListOf<Base>::Clear() {
  if (FList.empty()) return;
  Changing();
  std::vector<TItem> items;
  items.swap(FList);
  if (FOwnsObjects)
    for (TItem& item : items) delete item.Object;
  Changed();
}

template <class Base>
void TStringListOf<Base>::Exchange(int32_t index1, int32_t index2) {
  this->CheckIndex(index1, GetCount());
  this->CheckIndex(index2, GetCount());
  Changing();
  ExchangeItems(index1, index2);
  Changed();
}

template <class Base>
void TStringListOf<Base>::ExchangeItems(int32_t index1, int32_t index2) {
  std::swap(FList[static_cast<size_t>(index1)], FList[static_cast<size_t>(index2)]);
}

template <class Base>
void TStringListOf<Base>::Move(int32_t curIndex, int32_t newIndex) {
  if (curIndex == newIndex) return;
  CheckUnsorted();
  this->CheckIndex(curIndex, GetCount());
  this->CheckIndex(newIndex, GetCount());
  Changing();
  TItem item = std::move(FList[static_cast<size_t>(curIndex)]);
  FList.erase(FList.begin() + curIndex);
  FList.insert(FList.begin() + newIndex, std::move(item));
  Changed();
}

// ---------------------------------------------------------------------------------------------
// Order and search

template <class Base>
int TStringListOf<Base>::CompareStrings(const S& a, const S& b) const {
  return FCaseSensitive ? AnsiCompareStr(a, b) : AnsiCompareText(a, b);
}

template <class Base>
int32_t TStringListOf<Base>::IndexOf(const S& text) const {
  if (!FSorted) return Base::IndexOf(text);
  int32_t index;
  return Find(text, index) ? index : -1;
}

template <class Base>
bool TStringListOf<Base>::Find(const S& text, int32_t& index) const {
  // The first line not before `text`: with duplicates, the first of the equal ones.
  int32_t low = 0, high = GetCount() - 1;
  bool found = false;
  while (low <= high) {
    const int32_t mid = low + (high - low) / 2;
    const int c = CompareStrings(FList[static_cast<size_t>(mid)].String, text);
    if (c < 0) {
      low = mid + 1;
    } else {
      high = mid - 1;
      found = found || c == 0;
    }
  }
  index = low;
  return found;
}

template <class Base>
void TStringListOf<Base>::Sort() {
  CustomSort([](TStringListOf* list, int32_t index1, int32_t index2) {
    return list->CompareStrings(list->FList[static_cast<size_t>(index1)].String,
                                list->FList[static_cast<size_t>(index2)].String);
  });
}

template <class Base>
void TStringListOf<Base>::CustomSort(const TSortCompare& compare) {
  if (FSorted || GetCount() < 2) return;
  Changing();
  // The comparison sees the list unchanged: an order is worked out first, then applied.
  std::vector<int32_t> order(FList.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](int32_t a, int32_t b) { return compare(this, a, b) < 0; });
  std::vector<TItem> sorted;
  sorted.reserve(FList.size());
  for (int32_t i : order) sorted.push_back(std::move(FList[static_cast<size_t>(i)]));
  FList.swap(sorted);
  Changed();
}

template <class Base>
void TStringListOf<Base>::SetSorted(bool value) {
  if (value == FSorted) return;
  if (value) Sort();
  FSorted = value;
}

template <class Base>
void TStringListOf<Base>::SetCaseSensitive(bool value) {
  if (value == FCaseSensitive) return;
  FCaseSensitive = value;
  if (FSorted) {
    FSorted = false;
    SetSorted(true);
  }
}

// ---------------------------------------------------------------------------------------------
// Change events

template <class Base>
void TStringListOf<Base>::Changed() {
  if (this->GetUpdateCount() == 0 && FOnChange) FOnChange(this);
}

template <class Base>
void TStringListOf<Base>::Changing() {
  if (this->GetUpdateCount() == 0 && FOnChanging) FOnChanging(this);
}

template <class Base>
void TStringListOf<Base>::SetUpdateState(bool updating) {
  if (updating) Changing();
  else Changed();
}

template class TStringListOf<TStrings>;
template class TStringListOf<TWideStrings>;

}  // namespace orv
