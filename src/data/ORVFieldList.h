#pragma once
// TORVFieldList: the flat field list of every data set of the library. Besides the framework's
// list by full name it keeps the fields sorted by address, so that the engine finds the
// value slot of a field (its place in the list) by binary search on every value read.

#include <cstdint>
#include <vector>

#include "DB.h"

namespace orv {

// One field of the list: the address of the field object and its place in the flat list.
struct TORVFieldItem {
  intptr_t Value;
  int32_t Index;
};

class TORVFieldList : public TFieldList {
  ORV_CLASS(TORVFieldList, TFieldList)
 public:
  explicit TORVFieldList(TDataSet* ADataSet = nullptr) : TFieldList(ADataSet) {}

  // The place of the object in the flat list, or -1, by binary search; rebuilds the list
  // first when it is out of date.
  int32_t FindObject(TObject* AObject) const;
  int32_t IndexOfObject(TObject* AObject) const override { return FindObject(AObject); }

 protected:
  void UpdateList() override;

 private:
  std::vector<TORVFieldItem> FList;  // sorted by Value
};

}  // namespace orv
