#pragma once
// Collections: ordered lists of items of one class that the collection owns. Form files store
// them item by item, and collection data sets show the item class's published properties as
// fields.

#include <vector>

#include "Persistent.h"
#include "TypInfo.h"

namespace orv {

class TCollection;

ORV_ENUM(TCollectionNotification, cnAdded, cnExtracting, cnDeleting)

class TCollectionItem : public TPersistent {
  ORV_CLASS(TCollectionItem, TPersistent)
 public:
  TCollectionItem() = default;
  // Leaves its collection first.
  ~TCollectionItem() override;

  TCollection* GetCollection() const { return FCollection; }
  // Moves the item into `value` (which then owns it) or out of any collection (the caller then
  // owns it).
  void SetCollection(TCollection* value);
  // The position in the collection; -1 without one.
  int GetIndex() const;
  // Moves the item; EListError "List index out of bounds (%d)" outside the collection.
  virtual void SetIndex(int value);
  // Unique within the collection, in the order items were added; kept when items move.
  int GetID() const { return FID; }
  // What the designer shows; the class name unless a descendant says otherwise.
  virtual String GetDisplayName() const;
  virtual void SetDisplayName(const String& value);
  // "<collection's path>[<index>]".
  String GetNamePath() const override;

 protected:
  TPersistent* GetOwner() const override;
  // Tells the collection of a change: of this item, or of all of them (a move).
  void Changed(bool allItems);

 private:
  friend class TCollection;
  TCollection* FCollection = nullptr;
  int FID = 0;
};

class TCollection : public TPersistent {
  ORV_CLASS(TCollection, TPersistent)
 public:
  // Items are made of `itemClass` (a TCollectionItem descendant) by its default constructor.
  explicit TCollection(TClass itemClass);
  ~TCollection() override;

  TClass GetItemClass() const { return FItemClass; }
  int GetCount() const { return static_cast<int>(FItems.size()); }
  // EListError "List index out of bounds (%d)" outside 0..count-1.
  TCollectionItem* GetItem(int index) const;
  // Assigns `value` to the item at `index`.
  void SetItem(int index, TCollectionItem* value);
  TCollectionItem* Add();
  // Adds an item and moves it to `index`.
  TCollectionItem* Insert(int index);
  void Delete(int index);
  void Clear();
  // Null when no item has that ID.
  TCollectionItem* FindItemID(int id) const;

  // Changes between BeginUpdate and the matching EndUpdate end in one Update(nullptr).
  virtual void BeginUpdate();
  virtual void EndUpdate();
  int GetUpdateCount() const { return FUpdateCount; }

  // Replaces the items by new ones, each assigned from the source collection's item.
  void Assign(TPersistent* source) override;
  TPersistent* Owner() const { return GetOwner(); }
  // "<owner's path>.<property>" when the owner publishes this collection as a property.
  String GetNamePath() const override;

 protected:
  // After a change of `item`, or of the whole collection when null; not while updating.
  virtual void Update(TCollectionItem* item);
  // Added, about to leave (extracting), or about to be freed (deleting).
  virtual void Notify(TCollectionItem* item, TCollectionNotification action);
  virtual void SetItemName(TCollectionItem* item);
  void Changed();
  // The name of the owner's published property that holds this collection; empty if none.
  String GetPropName() const;

 private:
  friend class TCollectionItem;
  void InsertItem(TCollectionItem* item);
  void RemoveItem(TCollectionItem* item);

  TClass FItemClass;
  std::vector<TCollectionItem*> FItems;  // owned
  int FUpdateCount = 0;
  int FNextID = 0;
};

// A collection with an owner, which gives it a name path in form files.
class TOwnedCollection : public TCollection {
  ORV_CLASS(TOwnedCollection, TCollection)
 public:
  TOwnedCollection(TPersistent* owner, TClass itemClass) : TCollection(itemClass), FOwner(owner) {}

 protected:
  TPersistent* GetOwner() const override { return FOwner; }

 private:
  TPersistent* FOwner;
};

}  // namespace orv
