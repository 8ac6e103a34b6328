// Key values: how the locate filter and the detail filter decide whether a record's values match
// the key values of the search or of the master record.

#include "ORVData.h"
#include "SysUtils.h"

namespace orv {

namespace {

bool MatchKeyValue(const Variant& A, const Variant& B, bool Last, TLocateOptions Options) {
  const bool caseInsensitive = Options.Contains(loCaseInsensitive);
  const bool partial = Options.Contains(loPartialKey) && Last;
  if ((caseInsensitive || partial) && VarIsStr(A) && VarIsStr(B)) {
    String text = VarToStr(A);
    const String key = VarToStr(B);
    if (partial && text.size() > key.size()) text.resize(key.size());
    return caseInsensitive ? SameText(text, key) : text == key;
  }
  return A == B;
}

// Pairs the elements of two arrays of the same bounds (two empty arrays match); an array never
// matches a single value.
template <class Match>
bool MatchPairs(const Variant& A, const Variant& B, Match match) {
  const bool arrayA = VarIsArray(A);
  const bool arrayB = VarIsArray(B);
  if (arrayA != arrayB) return false;
  if (!arrayA) return match(A, B, true);
  const int32_t high = VarArrayHighBound(A, 1);
  if (high != VarArrayHighBound(B, 1)) return false;
  for (int32_t i = 0; i <= high; ++i)
    if (!match(A[i], B[i], i == high)) return false;
  return true;
}

}  // namespace

bool SameKeyValues(const Variant& A, const Variant& B) {
  return MatchPairs(A, B, [](const Variant& a, const Variant& b, bool) {
    return VarSameValue(a, b);
  });
}

bool MatchKeyValues(const Variant& A, const Variant& B, TLocateOptions Options) {
  return MatchPairs(A, B, [Options](const Variant& a, const Variant& b, bool last) {
    return MatchKeyValue(a, b, last, Options);
  });
}

// ---------------------------------------------------------------------------------------------
// The filters of the record fetch; they read the record being fetched (dsFilter).

void TORVCustomData::LocateFilter(bool& Accept) {
  const Variant values = GetFieldValues(FLocateFields);
  Accept = FLocateOptions.Empty() ? SameKeyValues(values, FLocateValues)
                                  : MatchKeyValues(values, FLocateValues, FLocateOptions);
}

void TORVCustomData::DetailFilter(bool& Accept) {
  Accept = SameKeyValues(GetFieldValues(GetDetailFields()), FDetailValues);
}

String TORVCustomData::GetDetailFields() const {
  return FDetailFields.empty() ? FMasterDataLink->GetFieldNames() : FDetailFields;
}

}  // namespace orv
