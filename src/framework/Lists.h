#pragma once
// Pointer lists: TList of untyped pointers, TObjectList that can own its objects, and a typed
// object list for callers that hold one class.

#include <functional>
#include <vector>

#include "System.h"

namespace orv {

enum TListNotification : uint8_t { lnAdded, lnExtracted, lnDeleted };

// Compares two items: negative, zero or positive.
using TListSortCompare = std::function<int(void* item1, void* item2)>;

class TList : public TObject {
  ORV_CLASS(TList, TObject)
 public:
  TList() = default;

  int32_t GetCount() const { return static_cast<int32_t>(FList.size()); }
  // A larger count appends null items; a smaller one deletes from the end (with notification).
  void SetCount(int32_t newCount);
  int32_t GetCapacity() const { return static_cast<int32_t>(FList.capacity()); }
  void SetCapacity(int32_t newCapacity);

  // EListError "List index out of bounds (%d)" outside 0..Count-1.
  void* Get(int32_t index) const;
  void Put(int32_t index, void* item);
  void* Items(int32_t index) const { return Get(index); }
  void* operator[](int32_t index) const { return Get(index); }

  int32_t Add(void* item);
  void Insert(int32_t index, void* item);  // index may be Count
  void Delete(int32_t index);
  int32_t Remove(void* item);  // the index it had, -1 when absent
  // Takes the first occurrence out without deleting it (lnExtracted); null when absent.
  void* Extract(void* item);
  int32_t IndexOf(void* item) const;
  virtual void Clear();
  void Exchange(int32_t index1, int32_t index2);
  void Move(int32_t curIndex, int32_t newIndex);
  void* First() const { return Get(0); }
  void* Last() const { return Get(GetCount() - 1); }
  void Pack();  // drops the null items
  // Stable: equal items keep their order.
  void Sort(const TListSortCompare& compare);

  const std::vector<void*>& List() const { return FList; }

 protected:
  // Told after an item joined or left the list; null items are not told. Not reached from the
  // destructor: a subclass that must see its items go calls Clear in its own destructor.
  virtual void Notify(void* ptr, TListNotification action);
  [[noreturn]] static void Error(const char* message, int32_t data);

 private:
  void CheckIndex(int32_t index, int32_t limit) const;
  std::vector<void*> FList;
};

// A list of objects that, while OwnsObjects is true (the default), frees an object when it is
// deleted, removed, cleared, replaced, or when the list goes. Extract hands it back unfreed.
class TObjectList : public TList {
  ORV_CLASS(TObjectList, TList)
 public:
  explicit TObjectList(bool ownsObjects = true) : FOwnsObjects(ownsObjects) {}
  // No pointer may pass for the flag; class records would take it for an owner constructor.
  TObjectList(const void*) = delete;
  ~TObjectList() override { Clear(); }

  bool GetOwnsObjects() const { return FOwnsObjects; }
  void SetOwnsObjects(bool value) { FOwnsObjects = value; }

  TObject* GetItem(int32_t index) const { return static_cast<TObject*>(Get(index)); }
  void SetItem(int32_t index, TObject* item) { Put(index, item); }
  TObject* operator[](int32_t index) const { return GetItem(index); }
  int32_t Add(TObject* item) { return TList::Add(item); }
  void Insert(int32_t index, TObject* item) { TList::Insert(index, item); }
  int32_t Remove(TObject* item) { return TList::Remove(item); }
  TObject* Extract(TObject* item) { return static_cast<TObject*>(TList::Extract(item)); }
  int32_t IndexOf(TObject* item) const { return TList::IndexOf(item); }
  TObject* First() const { return static_cast<TObject*>(TList::First()); }
  TObject* Last() const { return static_cast<TObject*>(TList::Last()); }
  // The index of the first object of class `cls` (or a descendant unless `exact`) from
  // `startAt`; -1 when none.
  int32_t FindInstanceOf(TClass cls, bool exact = true, int32_t startAt = 0) const;

 protected:
  void Notify(void* ptr, TListNotification action) override;

 private:
  bool FOwnsObjects;
};

// An object list of one class: the same list, with typed access.
template <class T>
class TObjectListOf : public TObjectList {
 public:
  using TObjectList::TObjectList;

  T* GetItem(int32_t index) const { return static_cast<T*>(TObjectList::GetItem(index)); }
  void SetItem(int32_t index, T* item) { TObjectList::SetItem(index, item); }
  T* operator[](int32_t index) const { return GetItem(index); }
  int32_t Add(T* item) { return TObjectList::Add(item); }
  void Insert(int32_t index, T* item) { TObjectList::Insert(index, item); }
  int32_t Remove(T* item) { return TObjectList::Remove(item); }
  T* Extract(T* item) { return static_cast<T*>(TObjectList::Extract(item)); }
  int32_t IndexOf(T* item) const { return TObjectList::IndexOf(item); }
  T* First() const { return static_cast<T*>(TObjectList::First()); }
  T* Last() const { return static_cast<T*>(TObjectList::Last()); }
};

}  // namespace orv
