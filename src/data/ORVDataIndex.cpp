// The order of a sorted data set: index fields, record and value comparison, the index list.

#include <string_view>

#include "ORVData.h"
#include "ORVIndexList.h"
#include "ORVRecordBuffer.h"
#include "TryFinally.h"

namespace orv {

namespace {

constexpr std::string_view DescMarker = " DESC";
constexpr std::string_view AscMarker = " ASC";

uint32_t DescBit(int32_t Index) { return uint32_t{1} << (static_cast<uint32_t>(Index) & 31u); }

}  // namespace

// ---------------------------------------------------------------------------------------------
// Index fields

void TORVCustomData::ClearIndexFields() {
  FIndexFields.clear();
  FIndexDescFields = 0;
}

void TORVCustomData::SetupIndexFields() {
  if (!FIndexFields.empty() || FIndexFieldNames.empty() || GetFieldCount() == 0) return;
  try {
    int pos = 1;
    while (pos <= static_cast<int>(FIndexFieldNames.size())) {
      String name = ExtractFieldName(FIndexFieldNames, pos);
      const String upper = UpperCase(name);
      size_t marker = upper.find(DescMarker);
      if (marker != String::npos)
        FIndexDescFields |= DescBit(GetIndexFieldCount());
      else
        marker = upper.find(AscMarker);
      if (marker != String::npos) name = Trim(name.substr(0, marker));
      FIndexFields.push_back(FieldByName(name));
    }
  } catch (...) {
    ClearIndexFields();
    FIndexFieldNames.clear();
    throw;
  }
}

String TORVCustomData::GetIndexFieldNames() const {
  String text;
  for (int32_t i = 0; i < GetIndexFieldCount(); ++i) {
    if (i > 0) text += ';';
    text += FIndexFields[i]->GetFieldName();
    if (GetIndexDescField(i)) text += DescMarker;
  }
  if (text.empty()) return FIndexFieldNames;
  FIndexFieldNames = text;
  return text;
}

void TORVCustomData::SetIndexFieldNames(const String& Value) {
  if (Value == GetIndexFieldNames()) return;
  // A pending edit is posted (or refuses) before anything changes.
  if (GetActive() && (GetSorted() || !Value.empty())) CheckBrowseMode();
  const bool resort = GetActive() && GetSorted();
  ClearIndexFields();
  FIndexFieldNames = Value;
  SetupIndexFields();
  if (resort && !Value.empty()) {
    FIndexList->Update();
    First();
  } else {
    SetSorted(!Value.empty());
  }
}

// IndexFields[Index] and IndexDescFields[Index]: the resolved fields in sort priority and their
// descending flags, IndexFieldCount of them. Flags are bits of one 32-bit mask, so index field
// 32 shares the flag of index field 0.

TField* TORVCustomData::GetIndexField(int32_t Index) const {
  if (Index < 0 || Index >= GetIndexFieldCount())
    throw EListError("List index out of bounds (" + std::to_string(Index) + ")");
  return FIndexFields[Index];
}

void TORVCustomData::SetIndexField(int32_t Index, TField* Value) {
  GetIndexField(Index)->Assign(Value);
}

bool TORVCustomData::GetIndexDescField(int32_t Index) const {
  return (FIndexDescFields & DescBit(Index)) != 0;
}

void TORVCustomData::SetIndexDescField(int32_t Index, bool Value) {
  if (Value)
    FIndexDescFields |= DescBit(Index);
  else
    FIndexDescFields &= ~DescBit(Index);
}

// ---------------------------------------------------------------------------------------------
// Sorted and Reversed

void TORVCustomData::SetIndexList(bool Value) {
  if (Value)
    FIndexList = CreateIndexList();
  else
    FIndexList.reset();
}

std::unique_ptr<TORVIndexList> TORVCustomData::CreateIndexList() {
  return std::make_unique<TORVIndexList>(this);
}

void TORVCustomData::SetSorted(bool Value) {
  if (Value == GetSorted()) return;
  if (!GetActive()) {
    SetIndexList(Value);  // filled when the record count is set on open
    return;
  }
  CheckBrowseMode();
  SetIndexList(Value);
  if (FIndexList) FIndexList->Update();
  First();
}

void TORVCustomData::SetReversed(bool Value) {
  if (Value == FReversed) return;
  if (!GetActive() || !GetSorted()) {
    FReversed = Value;
    return;
  }
  CheckBrowseMode();
  FReversed = Value;
  FIndexList->Update();
  First();
}

// ---------------------------------------------------------------------------------------------
// Comparison

// IndexFieldState is true only while the values of index fields are fetched for a comparison,
// so that a handler can tell those reads from the reads of a record shown.
int32_t TORVCustomData::CompareRecords(int32_t Index1, int32_t Index2) {
  int32_t result = 0;
  const int32_t count = GetIndexFieldCount();
  if (count > 0) {
    // One pair of holders for all index fields: a handler that assigns nothing leaves the
    // previous field's value in place.
    Variant value1;
    Variant value2;
    FIndexFieldState = true;
    TScopeExit clearState([this] { FIndexFieldState = false; });
    for (int32_t i = 0; result == 0 && i < count; ++i) {
      TField* field = FIndexFields[i];
      DoOnGetFieldData(Index1, field, value1);
      DoOnGetFieldData(Index2, field, value2);
      result = CompareValues(value1, value2);
      if (GetIndexDescField(i)) result = -result;
    }
  } else {
    result = Index1 - Index2;
    DoOnCompareRecords(Index1, Index2, result);
  }
  return FReversed ? -result : result;
}

int32_t TORVCustomData::CompareValues(const Variant& Value1, const Variant& Value2) {
  if (VarIsStr(Value1) || VarIsStr(Value2)) {
    // Native text is compared where it lies; anything else is converted first.
    if (VarIsType(Value1, varString) && VarIsType(Value2, varString))
      return AnsiCompareText(Value1.StrView(), Value2.StrView());
    return AnsiCompareText(VarToStr(Value1), VarToStr(Value2));
  }
  switch (VarCompareValue(Value1, Value2)) {
    case vrEqual:
      return 0;
    case vrGreaterThan:
      return 1;
    default:
      return -1;
  }
}

void TORVCustomData::DoOnCompareRecords(int32_t Index1, int32_t Index2, int32_t& Result) {
  if (FOnCompareRecords) FOnCompareRecords(this, Index1, Index2, Result);
}

// ---------------------------------------------------------------------------------------------
// Positions and record indexes

int32_t TORVCustomData::GetIndex(TRecordBuffer Buffer) const {
  const TORVRecordHeader& header = RecordHeader(Buffer);
  const auto flag = static_cast<TBookmarkFlag>(header.BookmarkFlag);
  const int32_t count = GetRecordCount();
  const int32_t position = flag == bfBOF ? 0 : flag == bfEOF ? count : header.RecordNumber;
  if (!FIndexList) return position;
  if (flag == bfInserted) return count;
  return position >= 0 && position < count ? FIndexList->GetItem(position) : position;
}

}  // namespace orv
