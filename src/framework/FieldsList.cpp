// TFields: the ordered fields of a data set or of an object field, with a hashed name index.

#include <algorithm>

#include "DB.h"
#include "FieldsInternal.h"
#include "TryFinally.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TFields)

namespace fields_detail {

namespace {

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

size_t NameHash(const String& name) noexcept {
  size_t hash = 14695981039346656037ull;  // FNV-1a over the folded bytes
  for (char c : name) {
    hash ^= static_cast<unsigned char>(AsciiLower(c));
    hash *= 1099511628211ull;
  }
  return hash;
}

bool SameAsciiName(const String& a, const String& b) noexcept {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
  return true;
}

bool IsAsciiName(const String& name) noexcept {
  return std::all_of(name.begin(), name.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace fields_detail

size_t TFields::TNameHash::operator()(const String& Name) const noexcept {
  return fields_detail::NameHash(Name);
}

bool TFields::TNameEqual::operator()(const String& A, const String& B) const noexcept {
  return fields_detail::SameAsciiName(A, B);
}

TFields::TFields(TDataSet* ADataSet) : FDataSet(ADataSet) {}

TFields::~TFields() {
  // Frees the fields without telling anyone: whoever frees the list is going away itself.
  FreeFields();
}

// A field freed by its list neither closes its data set nor leaves the list on its own.
void TFields::FreeFields() {
  while (!FList.empty()) {
    TField* field = FList.back();
    FList.pop_back();
    field->FFields = nullptr;
    delete field;
  }
}

void TFields::Changed() {
  FIndexValid = false;
  if (FDataSet && !FDataSet->GetComponentState().Contains(csDestroying))
    FDataSet->DataEvent(deFieldListChange, 0);
  if (FOnChange) FOnChange(this);
}

void TFields::Add(TField* Field) {
  FList.push_back(Field);
  Field->FFields = this;
  Changed();
}

void TFields::Remove(TField* Field) {
  auto it = std::find(FList.begin(), FList.end(), Field);
  if (it == FList.end()) return;
  FList.erase(it);
  Field->FFields = nullptr;
  Changed();
}

void TFields::Clear() {
  FreeFields();
  Changed();
}

// ---------------------------------------------------------------------------------------------
// Names

void TFields::RebuildIndex() const {
  FIndex.clear();
  FIndex.reserve(FList.size());
  for (TField* field : FList) FIndex.emplace(field->GetFieldName(), field);  // the first wins
  FIndexValid = true;
}

TField* TFields::FindField(const String& FieldName) const {
  if (!FIndexValid) RebuildIndex();
  if (auto it = FIndex.find(FieldName); it != FIndex.end()) return it->second;
  if (fields_detail::IsAsciiName(FieldName)) return nullptr;
  for (TField* field : FList)
    if (AnsiSameText(field->GetFieldName(), FieldName)) return field;
  return nullptr;
}

TField* TFields::FieldByName(const String& FieldName) const {
  TField* field = FindField(FieldName);
  if (!field) DatabaseErrorFmt(SFieldNotFound, {FieldName}, FDataSet);
  return field;
}

void TFields::CheckFieldName(const String& FieldName) const {
  if (FieldName.empty()) DatabaseError(SFieldNameMissing, FDataSet);
  if (FindField(FieldName)) DatabaseErrorFmt(SDuplicateFieldName, {FieldName}, FDataSet);
}

void TFields::CheckFieldNames(const String& FieldNames) const {
  int pos = 1;
  while (pos <= static_cast<int>(FieldNames.size())) FieldByName(ExtractFieldName(FieldNames, pos));
}

TField* TFields::FieldByNumber(int32_t FieldNo) const {
  for (TField* field : FList)
    if (field->GetFieldNo() == FieldNo) return field;
  return nullptr;
}

void TFields::GetFieldNames(TStrings* List) const {
  List->BeginUpdate();
  TryFinally(
      [&] {
        List->Clear();
        for (TField* field : FList) List->Add(field->GetFieldName());
      },
      [List] { List->EndUpdate(); });
}

// ---------------------------------------------------------------------------------------------
// Order

int TFields::IndexOf(const TField* Field) const {
  auto it = std::find(FList.begin(), FList.end(), Field);
  return it == FList.end() ? -1 : static_cast<int>(it - FList.begin());
}

TField* TFields::GetField(int Index) const {
  if (Index < 0 || Index >= GetCount()) DatabaseError(SFieldIndexError, FDataSet);
  return FList[static_cast<size_t>(Index)];
}

void TFields::SetFieldIndex(TField* Field, int Value) {
  const int current = IndexOf(Field);
  if (current < 0) return;
  Value = std::clamp(Value, 0, GetCount() - 1);
  if (Value == current) return;
  FList.erase(FList.begin() + current);
  FList.insert(FList.begin() + Value, Field);
  Field->PropertyChanged(true);
  Changed();
}

TFieldKinds TFields::GetValidFieldKinds() const {
  if (FParentField) return {fkData};
  return {fkData, fkCalculated, fkLookup, fkInternalCalc, fkAggregate};
}

}  // namespace orv
