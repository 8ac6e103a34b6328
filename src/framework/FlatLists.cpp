// Flat lists: every field definition (TFieldDefList) or field (TFieldList) of a data set by
// full name, rebuilt on first use after they were marked out of date.

#include "DB.h"
#include "FieldsInternal.h"
#include "TryFinally.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TFlatList)
ORV_IMPLEMENT_CLASS(TFieldDefList)
ORV_IMPLEMENT_CLASS(TFieldList)

namespace {

// Raised by a change to a flat list from outside its rebuild.
constexpr const char* SFlatListLocked = "Cannot modify a flat list of fields or definitions";

bool IsNestedType(TFieldType type) { return type == ftDataSet || type == ftReference; }

}  // namespace

String JoinFullName(const String& ParentFullName, const String& ParentName, const String& Name) {
  const bool element = Name.size() > ParentName.size() &&
                       Name.compare(0, ParentName.size(), ParentName) == 0 &&
                       Name[ParentName.size()] == '[';
  if (element) return ParentFullName + Name.substr(ParentName.size());
  return ParentFullName + "." + Name;
}

// ---------------------------------------------------------------------------------------------
// TFlatList

size_t TFlatList::TNameHash::operator()(const String& Name) const noexcept {
  return fields_detail::NameHash(Name);
}

bool TFlatList::TNameEqual::operator()(const String& A, const String& B) const noexcept {
  return fields_detail::SameAsciiName(A, B);
}

void TFlatList::Update() {
  if (GetUpdated()) return;
  const bool wasLocked = FLocked;
  FLocked = false;
  FRebuilding = true;
  BeginUpdate();
  TryFinally(
      [this] {
        Clear();
        FIndex.clear();
        UpdateList();
        const int32_t count = TStringList::GetCount();
        FIndex.reserve(static_cast<size_t>(count));
        for (int32_t i = 0; i < count; ++i) FIndex.emplace(Get(i), i);  // the first wins
        FUpdated = true;
      },
      [this, wasLocked] {
        EndUpdate();
        FRebuilding = false;
        FLocked = wasLocked;
      });
}

void TFlatList::EnsureUpdated() const {
  if (!FRebuilding && !GetUpdated()) const_cast<TFlatList*>(this)->Update();
}

int TFlatList::GetCount() const {
  EnsureUpdated();
  return TStringList::GetCount();
}

int32_t TFlatList::IndexOf(const String& Name) const {
  EnsureUpdated();
  if (FRebuilding) return TStringList::IndexOf(Name);
  if (auto it = FIndex.find(Name); it != FIndex.end()) return it->second;
  // Names beyond ASCII may still match in the locale's comparison.
  return fields_detail::IsAsciiName(Name) ? -1 : TStringList::IndexOf(Name);
}

TObject* TFlatList::FindItem(const String& Name, bool MustExist) const {
  const int32_t index = IndexOf(Name);
  if (index >= 0) return GetObject(index);
  if (MustExist) DatabaseErrorFmt(SFieldNotFound, {Name}, FDataSet);
  return nullptr;
}

void TFlatList::Changing() {
  if (FLocked && !FRebuilding) DatabaseError(SFlatListLocked, FDataSet);
  TStringList::Changing();
}

// ---------------------------------------------------------------------------------------------
// TFieldDefList

bool TFieldDefList::GetUpdated() const {
  TDataSet* dataSet = GetDataSet();
  if (!FUpdated || !dataSet) return FUpdated;
  const TFieldDefs* defs = dataSet->GetFieldDefs();
  if (defs->GetChangeCount() != FDefsChangeCount) return false;
  // An open data set brings its definitions up to date first (UpdateList).
  return defs->GetUpdated() || !dataSet->GetActive();
}

namespace {

// An array's elements are listed one by one ("Parts[0]" ...), each with the first child
// definition; an unnamed definition's children stand at the top.
void AddFieldDefs(TFieldDefList& list, const String& prefix, TFieldDefs* defs) {
  for (int i = 0; i < defs->GetCount(); ++i) {
    TFieldDef* def = defs->GetItem(i);
    const String name = prefix + def->GetName();
    list.AddObject(name, def);
    if (!def->HasChildren() || IsNestedType(def->GetDataType())) continue;
    if (def->GetDataType() == ftArray) {
      TFieldDef* element = def->GetChildDefs()->GetItem(0);
      for (int32_t j = 0; j < def->GetSize(); ++j) {
        const String elementName = name + "[" + std::to_string(j) + "]";
        list.AddObject(elementName, element);
        if (element->GetDataType() == ftADT && element->HasChildren())
          AddFieldDefs(list, elementName + ".", element->GetChildDefs());
      }
    } else if (def->GetAttributes().Contains(faUnNamed)) {
      AddFieldDefs(list, String(), def->GetChildDefs());
    } else {
      AddFieldDefs(list, name + ".", def->GetChildDefs());
    }
  }
}

void AddFields(TFieldList& list, TFields* fields) {
  for (int i = 0; i < fields->GetCount(); ++i) {
    TField* field = fields->GetField(i);
    list.AddObject(field->GetFullName(), field);
    if (field->GetDataType() == ftADT || field->GetDataType() == ftArray)
      AddFields(list, static_cast<TObjectField*>(field)->GetFields());
  }
}

}  // namespace

void TFieldDefList::UpdateList() {
  TDataSet* dataSet = GetDataSet();
  if (!dataSet) return;
  if (dataSet->GetActive()) dataSet->GetFieldDefs()->Update();
  AddFieldDefs(*this, String(), dataSet->GetFieldDefs());
  FDefsChangeCount = dataSet->GetFieldDefs()->GetChangeCount();
}

TFieldDef* TFieldDefList::Find(const String& Name) const {
  return static_cast<TFieldDef*>(FindItem(Name, false));
}

TFieldDef* TFieldDefList::FieldByName(const String& Name) const {
  return static_cast<TFieldDef*>(FindItem(Name, true));
}

TFieldDef* TFieldDefList::GetFieldDef(int Index) const {
  return static_cast<TFieldDef*>(GetObject(Index));
}

// ---------------------------------------------------------------------------------------------
// TFieldList

void TFieldList::UpdateList() {
  if (TDataSet* dataSet = GetDataSet()) AddFields(*this, dataSet->GetFields());
}

TField* TFieldList::Find(const String& Name) const {
  return static_cast<TField*>(FindItem(Name, false));
}

TField* TFieldList::FieldByName(const String& Name) const {
  return static_cast<TField*>(FindItem(Name, true));
}

TField* TFieldList::GetField(int Index) const { return static_cast<TField*>(GetObject(Index)); }

}  // namespace orv
