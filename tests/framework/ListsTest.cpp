#include <gtest/gtest.h>

#include "Lists.h"
#include "StreamsTestSupport.h"

namespace orv {
namespace {

using testing::MessageOf;

// Records what the list tells its subclasses.
class TRecordingList : public TList {
 public:
  std::vector<std::pair<intptr_t, TListNotification>> Told;

 protected:
  void Notify(void* ptr, TListNotification action) override {
    Told.emplace_back(reinterpret_cast<intptr_t>(ptr), action);
  }
};

void* P(intptr_t n) { return reinterpret_cast<void*>(n); }

std::vector<intptr_t> Contents(const TList& list) {
  std::vector<intptr_t> items;
  for (void* p : list.List()) items.push_back(reinterpret_cast<intptr_t>(p));
  return items;
}

TEST(List, EditsNotifySubclassesAndCheckIndexes) {
  TRecordingList list;
  list.Add(P(1));
  list.Add(P(3));
  list.Insert(1, P(2));
  list.Add(nullptr);  // null items are kept but not told
  EXPECT_EQ(Contents(list), (std::vector<intptr_t>{1, 2, 3, 0}));
  list.Put(0, P(9));
  EXPECT_EQ(list.Extract(P(2)), P(2));
  EXPECT_EQ(list.Extract(P(42)), nullptr);
  EXPECT_EQ(list.Remove(P(3)), 1);
  EXPECT_EQ(list.Remove(P(3)), -1);
  list.Pack();
  EXPECT_EQ(Contents(list), (std::vector<intptr_t>{9}));
  list.Clear();
  using N = std::pair<intptr_t, TListNotification>;
  EXPECT_EQ(list.Told, (std::vector<N>{{1, lnAdded}, {3, lnAdded}, {2, lnAdded}, {1, lnDeleted},
                                       {9, lnAdded}, {2, lnExtracted}, {3, lnDeleted},
                                       {9, lnDeleted}}));

  EXPECT_EQ(MessageOf<EListError>([&] { list.Get(0); }), "List index out of bounds (0)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.Insert(2, P(1)); }), "List index out of bounds (2)");
  EXPECT_EQ(MessageOf<EListError>([&] { list.SetCount(-1); }), "List count out of bounds (-1)");
}

TEST(List, MoveExchangeAndStableSort) {
  TList list;
  for (intptr_t n : {31, 12, 22, 11, 32, 21}) list.Add(P(n));
  list.Move(0, 5);
  EXPECT_EQ(Contents(list), (std::vector<intptr_t>{12, 22, 11, 32, 21, 31}));
  list.Exchange(0, 5);
  EXPECT_EQ(Contents(list), (std::vector<intptr_t>{31, 22, 11, 32, 21, 12}));
  // By tens only: equal keys keep their order.
  list.Sort([](void* a, void* b) {
    return static_cast<int>(reinterpret_cast<intptr_t>(a) / 10 - reinterpret_cast<intptr_t>(b) / 10);
  });
  EXPECT_EQ(Contents(list), (std::vector<intptr_t>{11, 12, 22, 21, 31, 32}));
  EXPECT_EQ(list.First(), P(11));
  EXPECT_EQ(list.Last(), P(32));
}

// Counts its live instances, so a test sees each one freed exactly once (ASan sees the rest).
class TTracked : public TObject {
  ORV_CLASS(TTracked, TObject)
 public:
  explicit TTracked(int& live) : FLive(live) { ++FLive; }
  ~TTracked() override { --FLive; }

 private:
  int& FLive;
};

ORV_IMPLEMENT_CLASS(TTracked)

TEST(ObjectList, OwnedObjectsAreFreedOnceAndExtractedOnesNot) {
  int live = 0;
  auto* kept = new TTracked(live);
  {
    TObjectListOf<TTracked> list;
    for (int i = 0; i < 4; ++i) list.Add(new TTracked(live));
    list.Add(kept);
    list.Delete(0);
    EXPECT_EQ(live, 4);
    list.Remove(list.First());
    list.SetItem(0, new TTracked(live));  // the replaced object goes
    EXPECT_EQ(live, 3);
    EXPECT_EQ(list.Extract(kept), kept);  // handed back, not freed
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(list.FindInstanceOf(TObject::StaticClass(), true), -1);
    EXPECT_EQ(list.FindInstanceOf(TObject::StaticClass(), false), 0);
    EXPECT_EQ(list.FindInstanceOf(TTracked::StaticClass(), true, 1), 1);
  }
  EXPECT_EQ(live, 1);  // the list went with its two objects
  {
    TObjectList borrowed(false);
    borrowed.Add(kept);
    borrowed.Clear();
  }
  EXPECT_EQ(live, 1);
  delete kept;
}

}  // namespace
}  // namespace orv
