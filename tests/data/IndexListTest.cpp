// The record index list on its own, over a closed TORVData whose records are keys compared by
// OnCompareRecords; a list subclass shows the protected members.

#include <gtest/gtest.h>

#include "ORVIndexList.h"

namespace orv {
namespace {

using Items = std::vector<int32_t>;

struct TProbeList : TORVIndexList {
  using TORVIndexList::GetCapacity, TORVIndexList::NewCapacity, TORVIndexList::SetCount;
  using TORVIndexList::TORVIndexList;
  Items Get() const { return {FList.begin(), FList.begin() + FCount}; }
};

class IndexListTest : public ::testing::Test {
 protected:
  IndexListTest() {
    Data.SetOnCompareRecords([this](TDataSet*, int32_t A, int32_t B, int32_t& Result) {
      EXPECT_NE(A, B) << "a record compared with itself";
      ++Comparisons;
      Result = Keys.at(A) - Keys.at(B);
    });
  }
  Items Sort(Items keys) {  // the keys become the records
    Keys = std::move(keys);
    Data.SetRecordCount(static_cast<int32_t>(Keys.size()));
    List.Update();
    return List.Get();
  }

  Items Keys;
  int Comparisons = 0;
  TORVData Data;
  TProbeList List{&Data};
};

TEST_F(IndexListTest, StorageGrowsInDoublingStepsAndIsFreedAtZero) {
  const int32_t samples[][2] = {{0, 0},     {1, 4},       {5, 8},       {32, 32},
                                {33, 40},   {65, 80},     {100, 112},   {129, 160},
                                {257, 320}, {1000, 1024}, {1025, 1280}, {10000, 10240}};
  for (auto [requested, granted] : samples) EXPECT_EQ(List.NewCapacity(requested), granted);
  List.SetCount(33);
  List.SetCount(3);  // smaller: keeps the storage
  EXPECT_EQ(List.GetCapacity(), 40);
  List.SetCount(0);
  EXPECT_EQ(List.GetCapacity(), 0);
}

TEST_F(IndexListTest, UpdateSortsAndInsertGoesBehindEqualKeys) {
  EXPECT_EQ(Sort({7}), Items{0});
  EXPECT_EQ(Comparisons, 0);
  EXPECT_EQ(Sort({2, 4, 1, 3, 0}), (Items{4, 2, 0, 3, 1}));

  Sort({});                // frees the storage
  Sort({10, 20, 20, 30});  // records 1 and 2 in either order
  Keys.push_back(20);      // record 4 is new, with their key
  Comparisons = 0;
  List.Insert(4);
  const Items items = List.Get();
  EXPECT_EQ((Items{items[0], items[3], items[4]}), (Items{0, 4, 3}));
  EXPECT_LE(Comparisons, 3);  // a binary search, not a sort
  EXPECT_EQ(List.GetCapacity(), 8);

  // Same count: the present order is sorted again where it stands; from natural order the
  // partition sort would give 2, 3, 0, 1.
  Sort({3, 1, 2, 0});
  Keys.assign(4, 0);
  List.Update();
  EXPECT_EQ(List.Get(), (Items{2, 0, 3, 1}));
}

TEST_F(IndexListTest, DeleteRenumbersAndModifyMovesOnlyAChangedKey) {
  Sort({2, 4, 1, 3, 0});
  List.Delete(2);
  EXPECT_EQ(List.Get(), (Items{3, 0, 2, 1}));

  Sort({10, 20, 30, 40, 50});
  Keys[1] = 45;  // forward
  List.Modify(1);
  Keys[3] = 5;  // backward
  List.Modify(3);
  for (int32_t record = 0; record < 5; ++record) List.Modify(record);  // unchanged keys
  EXPECT_EQ(List.Get(), (Items{3, 0, 2, 1, 4}));

  Sort({10, 20, 30});  // the search starts on the record's own entry
  Keys[1] = 40;
  List.Modify(1);
  EXPECT_EQ(List.Get(), (Items{0, 2, 1}));
}

}  // namespace
}  // namespace orv
