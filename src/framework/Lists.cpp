#include <algorithm>

#include "Lists.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TList)
ORV_IMPLEMENT_CLASS(TObjectList)

// ---------------------------------------------------------------------------------------------
// TList

void TList::Error(const char* message, int32_t data) {
  throw EListError(String(message) + " (" + std::to_string(data) + ")");
}

void TList::CheckIndex(int32_t index, int32_t limit) const {
  if (index < 0 || index >= limit) Error("List index out of bounds", index);
}

void TList::SetCount(int32_t newCount) {
  if (newCount < 0) Error("List count out of bounds", newCount);
  if (newCount >= GetCount()) {
    FList.resize(static_cast<size_t>(newCount), nullptr);
    return;
  }
  for (int32_t i = GetCount() - 1; i >= newCount; --i) Delete(i);
}

void TList::SetCapacity(int32_t newCapacity) {
  if (newCapacity < GetCount()) Error("List capacity out of bounds", newCapacity);
  if (newCapacity > GetCapacity()) {
    FList.reserve(static_cast<size_t>(newCapacity));
  } else if (newCapacity < GetCapacity()) {
    std::vector<void*> smaller;
    smaller.reserve(static_cast<size_t>(newCapacity));
    smaller.assign(FList.begin(), FList.end());
    FList.swap(smaller);
  }
}

void* TList::Get(int32_t index) const {
  CheckIndex(index, GetCount());
  return FList[static_cast<size_t>(index)];
}

void TList::Put(int32_t index, void* item) {
  CheckIndex(index, GetCount());
  void*& slot = FList[static_cast<size_t>(index)];
  if (slot == item) return;
  void* old = slot;
  slot = item;
  if (old) Notify(old, lnDeleted);
  if (item) Notify(item, lnAdded);
}

int32_t TList::Add(void* item) {
  const int32_t index = GetCount();
  Insert(index, item);
  return index;
}

void TList::Insert(int32_t index, void* item) {
  CheckIndex(index, GetCount() + 1);
  FList.insert(FList.begin() + index, item);
  if (item) Notify(item, lnAdded);
}

void TList::Delete(int32_t index) {
  CheckIndex(index, GetCount());
  void* item = FList[static_cast<size_t>(index)];
  FList.erase(FList.begin() + index);
  if (item) Notify(item, lnDeleted);
}

int32_t TList::Remove(void* item) {
  const int32_t index = IndexOf(item);
  if (index >= 0) Delete(index);
  return index;
}

void* TList::Extract(void* item) {
  const int32_t index = IndexOf(item);
  if (index < 0) return nullptr;
  FList.erase(FList.begin() + index);
  if (item) Notify(item, lnExtracted);
  return item;
}

int32_t TList::IndexOf(void* item) const {
  const auto it = std::find(FList.begin(), FList.end(), item);
  return it == FList.end() ? -1 : static_cast<int32_t>(it - FList.begin());
}

void TList::Clear() {
  SetCount(0);
  std::vector<void*>().swap(FList);
}

void TList::Exchange(int32_t index1, int32_t index2) {
  CheckIndex(index1, GetCount());
  CheckIndex(index2, GetCount());
  std::swap(FList[static_cast<size_t>(index1)], FList[static_cast<size_t>(index2)]);
}

void TList::Move(int32_t curIndex, int32_t newIndex) {
  if (curIndex == newIndex) return;
  CheckIndex(newIndex, GetCount());
  void* item = Get(curIndex);
  FList.erase(FList.begin() + curIndex);
  FList.insert(FList.begin() + newIndex, item);
}

void TList::Pack() { std::erase(FList, nullptr); }

void TList::Sort(const TListSortCompare& compare) {
  std::stable_sort(FList.begin(), FList.end(),
                   [&compare](void* a, void* b) { return compare(a, b) < 0; });
}

void TList::Notify(void*, TListNotification) {}

// ---------------------------------------------------------------------------------------------
// TObjectList

void TObjectList::Notify(void* ptr, TListNotification action) {
  if (FOwnsObjects && action == lnDeleted) delete static_cast<TObject*>(ptr);
  TList::Notify(ptr, action);
}

int32_t TObjectList::FindInstanceOf(TClass cls, bool exact, int32_t startAt) const {
  for (int32_t i = std::max(startAt, 0); i < GetCount(); ++i) {
    const TObject* item = GetItem(i);
    if (item && (exact ? item->ClassType() == cls : item->InheritsFrom(cls))) return i;
  }
  return -1;
}

}  // namespace orv
