// TFields: the ordered fields of a data set or of an object field, with a hashed name index.

#include <algorithm>
#include <cstring>

#include "DB.h"
#include "FieldsInternal.h"
#include "TryFinally.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TFields)

namespace fields_detail {

namespace {

// Eight bytes at a time: the ASCII capitals among them made small, all other bytes unchanged.
uint64_t FoldAscii(uint64_t bytes) {
  constexpr uint64_t ones = 0x0101010101010101ull, high = 0x8080808080808080ull;
  const uint64_t low7 = bytes & ~high;  // adding to these never carries into the next byte
  const uint64_t fromA = low7 + ones * (0x80 - 'A');
  const uint64_t pastZ = low7 + ones * (0x80 - 'Z' - 1);
  const uint64_t capitals = fromA & ~pastZ & ~bytes & high;
  return bytes | (capitals >> 2);
}

// Chunk `index` of the name, the last one padded with zeros.
uint64_t Chunk(const String& name, size_t index) {
  const char* bytes = name.data() + index * 8;
  const size_t count = name.size() - index * 8;
  uint64_t chunk = 0;
  if (count >= 8) {
    std::memcpy(&chunk, bytes, 8);
    return chunk;
  }
  for (size_t i = 0; i < count; ++i)
    chunk |= uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
  return chunk;
}

}  // namespace

size_t NameHash(const String& name) noexcept {
  constexpr uint64_t multiplier = 0x9E3779B97F4A7C15ull;
  uint64_t hash = name.size() * multiplier;
  for (size_t i = 0; i * 8 < name.size(); ++i) {
    hash = (hash ^ FoldAscii(Chunk(name, i))) * multiplier;
    hash ^= hash >> 29;
  }
  return static_cast<size_t>(hash);
}

bool SameAsciiName(const String& a, const String& b) noexcept {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i * 8 < a.size(); ++i)
    if (FoldAscii(Chunk(a, i)) != FoldAscii(Chunk(b, i))) return false;
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
