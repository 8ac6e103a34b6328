// Field definitions: named items, their collections with the up-to-date flag, TFieldDef with
// its child definitions and the field it makes, and TFieldDefs.

#include "DB.h"
#include "TryFinally.h"

namespace orv {

ORV_PUBLISH(TNamedItem) { p.Property("Name", &TNamedItem::GetName, &TNamedItem::SetName); }
ORV_IMPLEMENT_CLASS(TDefCollection)
ORV_PUBLISH(TFieldDef) {
  p.Property("Attributes", &TFieldDef::GetAttributes, &TFieldDef::SetAttributes)
      .Default(TFieldAttributes());
  p.Property(
       "ChildDefs", [](const TFieldDef& def) { return const_cast<TFieldDef&>(def).GetChildDefs(); },
       &TFieldDef::SetChildDefs)
      .Stored(&TFieldDef::IsChildDefsStored);
  p.Property("DataType", &TFieldDef::GetDataType, &TFieldDef::SetDataType).Default(ftUnknown);
  p.Property("Precision", &TFieldDef::GetPrecision, &TFieldDef::SetPrecision).Default(0);
  p.Property("Size", &TFieldDef::GetSize, &TFieldDef::SetSize).Default(0);
}
ORV_IMPLEMENT_CLASS(TFieldDefs)

// ---------------------------------------------------------------------------------------------
// TNamedItem

void TNamedItem::SetName(const String& value) {
  if (!value.empty() && !AnsiSameText(value, FName)) {
    if (auto* defs = dynamic_cast<TDefCollection*>(GetCollection())) {
      TNamedItem* other = defs->Find(value);
      if (other && other != this)
        DatabaseErrorFmt(SDuplicateName, {value, defs->ClassName()}, defs->GetDataSet());
    }
  }
  FName = value;
  Changed(false);
}

void TNamedItem::SetDisplayName(const String& value) { SetName(value); }

// ---------------------------------------------------------------------------------------------
// TDefCollection

TDefCollection::TDefCollection(TDataSet* ADataSet, TPersistent* AOwner, TClass AClass)
    : TOwnedCollection(AOwner, AClass), FDataSet(ADataSet) {}

TNamedItem* TDefCollection::Find(const String& AName) const {
  const int index = IndexOf(AName);
  return index < 0 ? nullptr : static_cast<TNamedItem*>(GetItem(index));
}

int TDefCollection::IndexOf(const String& AName) const {
  for (int i = 0; i < GetCount(); ++i)
    if (AnsiSameText(static_cast<TNamedItem*>(GetItem(i))->GetName(), AName)) return i;
  return -1;
}

void TDefCollection::GetItemNames(TStrings* List) const {
  List->BeginUpdate();
  TryFinally(
      [&] {
        List->Clear();
        for (int i = 0; i < GetCount(); ++i)
          List->Add(static_cast<TNamedItem*>(GetItem(i))->GetName());
      },
      [List] { List->EndUpdate(); });
}

// A change made from outside (not while the data set rebuilds the definitions) leaves them out
// of date; a form being read changes nothing yet.
void TDefCollection::Update(TCollectionItem*) {
  ++FChangeCount;
  if (FDataSet && FDataSet->GetComponentState().Contains(csLoading)) return;
  if (FOnUpdate) FOnUpdate(this);
  if (FInternalUpdateCount == 0) FUpdated = false;
}

// "<data set><first five letters of the class after T><number>", as "Orders" "Field" "3".
void TDefCollection::SetItemName(TCollectionItem* item) {
  if (!FDataSet) return;
  NameItem(static_cast<TNamedItem*>(item), FDataSet->GetName() + item->ClassName().substr(1, 5));
}

// The first free name from the item's ID on, so that a name given later is never taken.
void TDefCollection::NameItem(TNamedItem* item, const String& prefix) {
  if (!item->GetName().empty()) return;
  String name;
  for (int number = item->GetID() + 1; name.empty() || Find(name); ++number)
    name = prefix + std::to_string(number);
  item->SetName(name);
}

void TDefCollection::UpdateDefs(const std::function<void()>& rebuild) {
  if (FUpdated) return;
  ++FInternalUpdateCount;
  BeginUpdate();
  TryFinally(rebuild, [this] {
    EndUpdate();
    --FInternalUpdateCount;
  });
  FUpdated = true;
}

// ---------------------------------------------------------------------------------------------
// TFieldDef

TFieldDef::TFieldDef() = default;
TFieldDef::~TFieldDef() = default;

TFieldDefs* TFieldDef::GetFieldDefs() const { return dynamic_cast<TFieldDefs*>(GetCollection()); }

TFieldDef* TFieldDef::GetParentDef() const {
  TFieldDefs* defs = GetFieldDefs();
  return defs ? defs->GetParentDef() : nullptr;
}

TFieldDefs* TFieldDef::GetChildDefs() {
  if (!FChildDefs) FChildDefs = std::make_unique<TFieldDefs>(this);
  return FChildDefs.get();
}

void TFieldDef::SetChildDefs(TFieldDefs* value) { GetChildDefs()->Assign(value); }

TFieldDef* TFieldDef::AddChild() { return GetChildDefs()->AddFieldDef(); }

bool TFieldDef::HasChildren() const { return FChildDefs && FChildDefs->GetCount() > 0; }

int32_t TFieldDef::GetFieldNo() const { return FFieldNo > 0 ? FFieldNo : GetIndex() + 1; }

void TFieldDef::SetDataType(TFieldType value) {
  FDataType = value;
  Changed(false);
}

void TFieldDef::SetSize(int32_t value) {
  FSize = value;
  Changed(false);
}

void TFieldDef::SetPrecision(int32_t value) {
  FPrecision = value;
  Changed(false);
}

void TFieldDef::SetAttributes(TFieldAttributes value) {
  FAttributes = value;
  Changed(false);
}

void TFieldDef::SetRequired(bool value) {
  TFieldAttributes attributes = FAttributes;
  if (value)
    attributes.Include(faRequired);
  else
    attributes.Exclude(faRequired);
  SetAttributes(attributes);
}

void TFieldDef::SetInternalCalcField(bool value) {
  FInternalCalcField = value;
  Changed(false);
}

// Everything but the number, which follows the place in the collection.
void TFieldDef::Assign(TPersistent* Source) {
  auto* source = dynamic_cast<TFieldDef*>(Source);
  if (!source) return TNamedItem::Assign(Source);
  TCollection* collection = GetCollection();
  if (collection) collection->BeginUpdate();
  TryFinally(
      [&] {
        SetName(source->GetName());
        SetDataType(source->FDataType);
        SetSize(source->FSize);
        SetPrecision(source->FPrecision);
        SetAttributes(source->FAttributes);
        SetInternalCalcField(source->FInternalCalcField);
        if (HasChildren()) GetChildDefs()->Clear();
        if (source->HasChildren()) GetChildDefs()->Assign(source->GetChildDefs());
      },
      [collection] {
        if (collection) collection->EndUpdate();
      });
}

TClass TFieldDef::GetFieldClass() const {
  TFieldDefs* defs = GetFieldDefs();
  if (defs && defs->GetDataSet()) return defs->GetDataSet()->GetFieldClass(FDataType);
  return DefaultFieldClass(FDataType);
}

TField* TFieldDef::CreateField(TComponent* Owner, TObjectField* ParentField,
                               const String& FieldName, bool CreateChildren) {
  TFieldDefs* defs = GetFieldDefs();
  TDataSet* dataSet = defs ? defs->GetDataSet() : nullptr;
  TClass fieldClass = GetFieldClass();
  if (!fieldClass || !fieldClass->ConstructComponent)
    DatabaseErrorFmt(SUnknownFieldType, {GetName()}, dataSet);
  TComponent* made = fieldClass->ConstructComponent(Owner);
  auto* field = dynamic_cast<TField*>(made);
  if (!field) {
    delete made;
    throw EInvalidCast("Invalid class typecast");
  }
  try {
    if (FSize > 0) field->SetSize(FSize);
    field->SetFieldName(FieldName.empty() ? GetName() : FieldName);
    field->SetFieldType(FDataType);
    if (dataSet) {
      dataSet->SetFieldProps(field, this);
    } else {
      field->SetRequired(FAttributes.Contains(faRequired));
      field->SetReadOnly(FAttributes.Contains(faReadonly));
    }
    if (FPrecision > 0) {
      if (auto* bcd = dynamic_cast<TBCDField*>(field)) bcd->SetPrecision(FPrecision);
      if (auto* fmtBcd = dynamic_cast<TFMTBCDField*>(field)) fmtBcd->SetPrecision(FPrecision);
      if (auto* number = dynamic_cast<TFloatField*>(field)) number->SetPrecision(FPrecision);
    }
    auto* objectField = dynamic_cast<TObjectField*>(field);
    if (objectField) objectField->SetUnNamed(FAttributes.Contains(faUnNamed));
    if (FInternalCalcField) field->SetFieldKind(fkInternalCalc);
    if (ParentField)
      field->SetParentField(ParentField);
    else
      field->SetDataSet(dataSet);
    field->FFieldNo = GetFieldNo();
    // A nested data set makes its own fields from these definitions when it opens.
    const bool nested = FDataType == ftDataSet || FDataType == ftReference;
    if (objectField && CreateChildren && !nested && HasChildren()) {
      if (FDataType == ftArray) {
        for (int32_t i = 0; i < field->GetSize(); ++i)
          FChildDefs->GetItem(0)->CreateField(
              Owner, objectField, field->GetFieldName() + "[" + std::to_string(i) + "]");
      } else {
        for (int i = 0; i < FChildDefs->GetCount(); ++i)
          FChildDefs->GetItem(i)->CreateField(Owner, objectField);
      }
    }
  } catch (...) {
    delete field;
    throw;
  }
  return field;
}

// ---------------------------------------------------------------------------------------------
// TFieldDefs

namespace {

TDataSet* DataSetOf(TPersistent* owner) {
  if (auto* def = dynamic_cast<TFieldDef*>(owner)) {
    TFieldDefs* defs = def->GetFieldDefs();
    return defs ? defs->GetDataSet() : nullptr;
  }
  return dynamic_cast<TDataSet*>(owner);
}

}  // namespace

TFieldDefs::TFieldDefs(TPersistent* AOwner)
    : TDefCollection(DataSetOf(AOwner), AOwner, TFieldDef::StaticClass()),
      FParentDef(dynamic_cast<TFieldDef*>(AOwner)) {}

TFieldDef* TFieldDefs::GetItem(int index) const {
  return static_cast<TFieldDef*>(TCollection::GetItem(index));
}

void TFieldDefs::SetItem(int index, TFieldDef* value) { TCollection::SetItem(index, value); }

TFieldDef* TFieldDefs::AddFieldDef() { return static_cast<TFieldDef*>(TCollection::Add()); }

void TFieldDefs::Add(const String& Name, TFieldType DataType, int32_t Size, bool Required) {
  if (Name.empty()) DatabaseError(SFieldNameMissing, GetDataSet());
  BeginUpdate();
  TryFinally(
      [&] {
        TFieldDef* def = AddFieldDef();
        try {
          def->SetFieldNo(GetCount());
          def->SetName(Name);
          def->SetDataType(DataType);
          def->SetSize(Size);
          def->SetRequired(Required);
        } catch (...) {
          delete def;
          throw;
        }
      },
      [this] { EndUpdate(); });
}

TFieldDef* TFieldDefs::Find(const String& Name) const {
  TNamedItem* item = TDefCollection::Find(Name);
  if (!item) DatabaseErrorFmt(SFieldNotFound, {Name}, GetDataSet());
  return static_cast<TFieldDef*>(item);
}

void TFieldDefs::Update() {
  if (TDataSet* dataSet = GetDataSet()) UpdateDefs([dataSet] { dataSet->InitFieldDefs(); });
}

void TFieldDefs::Update(TCollectionItem* item) {
  TDefCollection::Update(item);
  if (TFieldDefs* parentDefs = FParentDef ? FParentDef->GetFieldDefs() : nullptr) {
    if (parentDefs->GetUpdateCount() == 0) parentDefs->Update(FParentDef);
    return;
  }
  TDataSet* dataSet = GetDataSet();
  if (dataSet && !InternalUpdating() && !dataSet->GetComponentState().Contains(csLoading))
    dataSet->DefChanged(this);
}

// A child definition without a name is named after its parent.
void TFieldDefs::SetItemName(TCollectionItem* item) {
  if (!FParentDef) return TDefCollection::SetItemName(item);
  NameItem(static_cast<TNamedItem*>(item), FParentDef->GetName() + "_");
}

}  // namespace orv
