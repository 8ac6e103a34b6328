// TORVFieldList: the framework's flat field list, plus its fields sorted by address for a binary
// search from a field to its place.

#include <algorithm>

#include "ORVFieldList.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TORVFieldList)

void TORVFieldList::UpdateList() {
  TFieldList::UpdateList();
  const int32_t count = TStringList::GetCount();  // the count as rebuilt, without a new rebuild
  FList.clear();
  FList.reserve(static_cast<size_t>(count));
  for (int32_t i = 0; i < count; ++i)
    FList.push_back({reinterpret_cast<intptr_t>(GetObject(i)), i});
  std::sort(FList.begin(), FList.end(),
            [](const TORVFieldItem& a, const TORVFieldItem& b) { return a.Value < b.Value; });
}

int32_t TORVFieldList::FindObject(TObject* AObject) const {
  GetCount();  // rebuilds the list when it is out of date
  const intptr_t value = reinterpret_cast<intptr_t>(AObject);
  auto item = std::lower_bound(
      FList.begin(), FList.end(), value,
      [](const TORVFieldItem& entry, intptr_t wanted) { return entry.Value < wanted; });
  return item != FList.end() && item->Value == value ? item->Index : -1;
}

}  // namespace orv
