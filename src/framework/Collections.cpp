#include "Collections.h"

#include <algorithm>
#include <exception>

#include "Components.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TCollectionItem)
ORV_IMPLEMENT_CLASS(TCollection)
ORV_IMPLEMENT_CLASS(TOwnedCollection)

namespace {

[[noreturn]] void IndexError(int index) {
  throw EListError("List index out of bounds (" + std::to_string(index) + ")");
}

// BeginUpdate now, EndUpdate at scope exit. The update at the end may raise; while another
// exception is already on its way, that one wins.
class TUpdateScope {
 public:
  explicit TUpdateScope(TCollection& collection) : FCollection(collection) { FCollection.BeginUpdate(); }
  TUpdateScope(const TUpdateScope&) = delete;
  TUpdateScope& operator=(const TUpdateScope&) = delete;
  ~TUpdateScope() noexcept(false) {
    if (std::uncaught_exceptions() == FUnwinding) {
      FCollection.EndUpdate();
      return;
    }
    try {
      FCollection.EndUpdate();
    } catch (...) {
    }
  }

 private:
  TCollection& FCollection;
  int FUnwinding = std::uncaught_exceptions();
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// TCollectionItem

TCollectionItem::~TCollectionItem() { SetCollection(nullptr); }

void TCollectionItem::SetCollection(TCollection* value) {
  if (FCollection == value) return;
  if (FCollection) FCollection->RemoveItem(this);
  if (value) value->InsertItem(this);
}

int TCollectionItem::GetIndex() const {
  if (!FCollection) return -1;
  const auto& items = FCollection->FItems;
  return static_cast<int>(std::find(items.begin(), items.end(), this) - items.begin());
}

void TCollectionItem::SetIndex(int value) {
  const int current = GetIndex();
  if (current < 0 || current == value) return;
  auto& items = FCollection->FItems;
  if (value < 0 || value >= static_cast<int>(items.size())) IndexError(value);
  auto from = items.begin() + current, to = items.begin() + value;
  if (from < to)
    std::rotate(from, from + 1, to + 1);
  else
    std::rotate(to, from, from + 1);
  Changed(true);
}

String TCollectionItem::GetDisplayName() const { return ClassName(); }

void TCollectionItem::SetDisplayName(const String&) { Changed(false); }

String TCollectionItem::GetNamePath() const {
  if (!FCollection) return ClassName();
  return FCollection->GetNamePath() + "[" + std::to_string(GetIndex()) + "]";
}

TPersistent* TCollectionItem::GetOwner() const { return FCollection; }

void TCollectionItem::Changed(bool allItems) {
  if (FCollection && FCollection->FUpdateCount == 0) FCollection->Update(allItems ? nullptr : this);
}

// ---------------------------------------------------------------------------------------------
// TCollection

TCollection::TCollection(TClass itemClass) : FItemClass(itemClass) {}

TCollection::~TCollection() {
  FUpdateCount = 1;  // no updates while going
  while (!FItems.empty()) delete FItems.back();
}

TCollectionItem* TCollection::GetItem(int index) const {
  if (index < 0 || index >= GetCount()) IndexError(index);
  return FItems[static_cast<size_t>(index)];
}

void TCollection::SetItem(int index, TCollectionItem* value) { GetItem(index)->Assign(value); }

TCollectionItem* TCollection::Add() {
  std::unique_ptr<TObject> object = CreateObject(FItemClass);
  auto* item = dynamic_cast<TCollectionItem*>(object.get());
  if (!item) throw EListError("Invalid property value");
  object.release();  // the collection owns it from here on
  InsertItem(item);
  return item;
}

TCollectionItem* TCollection::Insert(int index) {
  TCollectionItem* item = Add();
  item->SetIndex(index);
  return item;
}

void TCollection::Delete(int index) {
  TCollectionItem* item = GetItem(index);
  Notify(item, cnDeleting);
  delete item;  // leaves the collection on its way out
}

void TCollection::Clear() {
  if (FItems.empty()) return;
  TUpdateScope update(*this);
  while (!FItems.empty()) delete FItems.back();
}

TCollectionItem* TCollection::FindItemID(int id) const {
  for (TCollectionItem* item : FItems)
    if (item->FID == id) return item;
  return nullptr;
}

void TCollection::BeginUpdate() { ++FUpdateCount; }

void TCollection::EndUpdate() {
  --FUpdateCount;
  Changed();
}

void TCollection::Changed() {
  if (FUpdateCount == 0) Update(nullptr);
}

void TCollection::Update(TCollectionItem*) {}

void TCollection::Notify(TCollectionItem*, TCollectionNotification) {}

void TCollection::SetItemName(TCollectionItem*) {}

void TCollection::InsertItem(TCollectionItem* item) {
  if (!IsInstance(item, FItemClass)) throw EListError("Invalid property value");
  FItems.push_back(item);
  item->FCollection = this;
  item->FID = FNextID++;
  SetItemName(item);
  Notify(item, cnAdded);
  Changed();
}

void TCollection::RemoveItem(TCollectionItem* item) {
  Notify(item, cnExtracting);
  FItems.erase(std::find(FItems.begin(), FItems.end(), item));
  item->FCollection = nullptr;
  Changed();
}

void TCollection::Assign(TPersistent* source) {
  auto* other = dynamic_cast<TCollection*>(source);
  if (!other) return TPersistent::Assign(source);
  if (other == this) return;
  TUpdateScope update(*this);
  Clear();
  for (TCollectionItem* item : other->FItems) Add()->Assign(item);
}

String TCollection::GetPropName() const {
  TPersistent* owner = GetOwner();
  if (!owner) return {};
  for (PPropInfo info : GetPropList(owner, {tkClass}))
    if (GetObjectProp(owner, info) == this) return info->Name;
  return {};
}

String TCollection::GetNamePath() const {
  TPersistent* owner = GetOwner();
  if (!owner) return ClassName();
  const String ownerPath = owner->GetNamePath();
  const String propName = GetPropName();
  if (ownerPath.empty() || propName.empty()) return ClassName();
  return ownerPath + "." + propName;
}

}  // namespace orv
