#pragma once
// Field definitions: the schema a data set exposes, from which its default fields are made; and
// the flat lists that index a data set's definitions and fields by full name.

#include <unordered_map>

#include "Classes.h"
#include "DBTypes.h"

namespace orv {

class TFieldDefs;
class TFields;
class TObjectField;

// A collection item with a name, unique (without regard to case) within its collection.
class TNamedItem : public TCollectionItem {
  ORV_CLASS(TNamedItem, TCollectionItem)
 public:
  TNamedItem() = default;
  const String& GetName() const { return FName; }
  // EDatabaseError SDuplicateName when another item of the collection has the name.
  virtual void SetName(const String& value);
  String GetDisplayName() const override { return FName; }
  void SetDisplayName(const String& value) override;

 private:
  String FName;
};

// A collection of named definitions that belongs to a data set.
class TDefCollection : public TOwnedCollection {
  ORV_CLASS(TDefCollection, TOwnedCollection)
 public:
  TDefCollection(TDataSet* ADataSet, TPersistent* AOwner, TClass AClass);

  TNamedItem* Find(const String& AName) const;  // compared without case; null when missing
  void GetItemNames(TStrings* List) const;
  int IndexOf(const String& AName) const;
  TDataSet* GetDataSet() const { return FDataSet; }
  // False when the definitions may be out of date and must be rebuilt before use. A change
  // made from outside (not while the data set rebuilds them) clears it.
  bool GetUpdated() const { return FUpdated; }
  void SetUpdated(bool value) { FUpdated = value; }
  const TNotifyEvent& GetOnUpdate() const { return FOnUpdate; }
  void SetOnUpdate(TNotifyEvent value) { FOnUpdate = std::move(value); }
  // Counts every change (a child definition's too), so that a list made from the definitions
  // knows whether it still matches them.
  uint64_t GetChangeCount() const { return FChangeCount; }

 protected:
  void Update(TCollectionItem* item) override;
  // An item without a name gets one from the data set's name and its ID.
  void SetItemName(TCollectionItem* item) override;
  // Runs `rebuild` once when not up to date, inside one update, and marks them up to date.
  void UpdateDefs(const std::function<void()>& rebuild);
  // Gives an item without a name the first free name `prefix` and a number.
  void NameItem(TNamedItem* item, const String& prefix);
  bool InternalUpdating() const { return FInternalUpdateCount > 0; }
  int FInternalUpdateCount = 0;

 private:
  TDataSet* FDataSet;
  bool FUpdated = false;
  uint64_t FChangeCount = 0;
  TNotifyEvent FOnUpdate;
};

// One field definition: name, data type, size, attributes, and child definitions for object
// types (ADT, array, nested data set).
class TFieldDef : public TNamedItem {
  ORV_CLASS(TFieldDef, TNamedItem)
 public:
  TFieldDef();
  ~TFieldDef() override;

  TFieldDef* AddChild();
  bool HasChildren() const;
  // Makes a field of this definition's class, owned by `Owner`, in the data set of the
  // definitions or under `ParentField`, named `FieldName` (the definition's name when empty),
  // with its sub-fields when asked: one per child definition, or for an array `Size` elements
  // "Name[i]" of the first child definition. A size above 0 becomes the field's size.
  // SUnknownFieldType when the data type has no field class. On failure nothing is left.
  TField* CreateField(TComponent* Owner, TObjectField* ParentField = nullptr,
                      const String& FieldName = "", bool CreateChildren = true);
  // The data set's class for the data type (GetFieldClass), or DefaultFieldClass without one.
  TClass GetFieldClass() const;
  TFieldDefs* GetFieldDefs() const;  // the collection it is in
  TFieldDef* GetParentDef() const;
  void Assign(TPersistent* Source) override;

  TFieldType GetDataType() const { return FDataType; }
  void SetDataType(TFieldType value);
  int32_t GetSize() const { return FSize; }
  void SetSize(int32_t value);
  int32_t GetPrecision() const { return FPrecision; }
  void SetPrecision(int32_t value);
  TFieldAttributes GetAttributes() const { return FAttributes; }
  void SetAttributes(TFieldAttributes value);
  bool GetRequired() const { return FAttributes.Contains(faRequired); }
  void SetRequired(bool value);
  // The number given, else the place in the collection counted from 1.
  int32_t GetFieldNo() const;
  void SetFieldNo(int32_t value) { FFieldNo = value; }
  bool GetInternalCalcField() const { return FInternalCalcField; }
  void SetInternalCalcField(bool value);
  // Made on first use.
  TFieldDefs* GetChildDefs();
  void SetChildDefs(TFieldDefs* value);  // assigns
  bool IsChildDefsStored() const { return HasChildren(); }

 private:
  std::unique_ptr<TFieldDefs> FChildDefs;
  int32_t FPrecision = 0;
  int32_t FFieldNo = 0;
  int32_t FSize = 0;
  bool FInternalCalcField = false;
  TFieldType FDataType = ftUnknown;
  TFieldAttributes FAttributes;
};

class TFieldDefs : public TDefCollection {
  ORV_CLASS(TFieldDefs, TDefCollection)
 public:
  // Owner: a data set (top level) or a field definition (children, which belong to the data
  // set of the definition's collection).
  explicit TFieldDefs(TPersistent* AOwner);

  TFieldDef* AddFieldDef();
  // SFieldNameMissing for an empty name; the definition's number is its place.
  void Add(const String& Name, TFieldType DataType, int32_t Size = 0, bool Required = false);
  // EDatabaseError SFieldNotFound, naming the data set, when missing.
  TFieldDef* Find(const String& Name) const;
  // Rebuilds the definitions from the data set (its InitFieldDefs) when they are not up to
  // date.
  virtual void Update();
  TFieldDef* GetItem(int index) const;
  void SetItem(int index, TFieldDef* value);
  TFieldDef* operator[](int index) const { return GetItem(index); }
  TFieldDef* GetParentDef() const { return FParentDef; }
  bool GetHiddenFields() const { return FHiddenFields; }
  void SetHiddenFields(bool value) { FHiddenFields = value; }

 protected:
  // A change of child definitions is a change of their parent definition; a change made from
  // outside (not while the data set rebuilds the definitions) is told to the data set
  // (DefChanged).
  void Update(TCollectionItem* item) override;
  void SetItemName(TCollectionItem* item) override;

 private:
  TFieldDef* FParentDef = nullptr;
  bool FHiddenFields = false;
};

// A string list kept flat and up to date from a data set: full names with their objects. It
// rebuilds itself (UpdateList) on first use after it was marked out of date, and finds names
// through a hash index (without regard to case) made with each rebuild. Outside a rebuild it is
// locked: changing it raises.
class TFlatList : public TStringList {
  ORV_CLASS(TFlatList, TStringList)
 public:
  // Default-constructible, so that a data set can make its field list from a class reference
  // (GetFieldListClass) and then attach itself.
  explicit TFlatList(TDataSet* ADataSet = nullptr) : FDataSet(ADataSet) {}
  void SetDataSet(TDataSet* ADataSet) { FDataSet = ADataSet; }

  // Rebuilds now when out of date.
  void Update();
  TDataSet* GetDataSet() const { return FDataSet; }
  virtual bool GetUpdated() const { return FUpdated; }
  void SetUpdated(bool value) { FUpdated = value; }
  bool GetLocked() const { return FLocked; }
  void SetLocked(bool value) { FLocked = value; }

  // Both rebuild first when out of date (not while rebuilding).
  int GetCount() const override;
  int32_t IndexOf(const String& Name) const override;

 protected:
  // Fills the list (strings: full names; objects: the items); called with the list emptied.
  virtual void UpdateList() = 0;
  // The object of `Name`, or null; raises SFieldNotFound naming the data set when `MustExist`.
  TObject* FindItem(const String& Name, bool MustExist) const;
  void Changing() override;

  bool FUpdated = false;
  bool FLocked = true;

 private:
  struct TNameHash {
    size_t operator()(const String& Name) const noexcept;
  };
  struct TNameEqual {
    bool operator()(const String& A, const String& B) const noexcept;
  };
  void EnsureUpdated() const;

  TDataSet* FDataSet;
  bool FRebuilding = false;
  std::unordered_map<String, int32_t, TNameHash, TNameEqual> FIndex;
};

// Every field definition of a data set, children included, by full name ("Address.City"). Out
// of date also once the definitions changed, and while an open data set's definitions are.
class TFieldDefList : public TFlatList {
  ORV_CLASS(TFieldDefList, TFlatList)
 public:
  using TFlatList::TFlatList;
  TFieldDef* Find(const String& Name) const;         // null when missing
  TFieldDef* FieldByName(const String& Name) const;  // raises when missing
  TFieldDef* GetFieldDef(int Index) const;
  bool GetUpdated() const override;

 protected:
  void UpdateList() override;

 private:
  uint64_t FDefsChangeCount = 0;  // the definitions' change count the list was made from
};

// Every field of a data set, sub-fields of ADT and array fields included, by full name. A data
// set names its class through GetFieldListClass, so a subclass can keep an index of its own
// (overriding UpdateList and IndexOfObject).
class TFieldList : public TFlatList {
  ORV_CLASS(TFieldList, TFlatList)
 public:
  using TFlatList::TFlatList;
  TField* Find(const String& Name) const;         // null when missing
  TField* FieldByName(const String& Name) const;  // raises when missing
  TField* GetField(int Index) const;

 protected:
  void UpdateList() override;
};

// The full name of a sub-field or child definition named `Name` under the parent `ParentName`:
// "Parent.Name", or for an array element named "Parent[i]" the parent's full name and "[i]".
String JoinFullName(const String& ParentFullName, const String& ParentName, const String& Name);

}  // namespace orv
