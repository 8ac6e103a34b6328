// Searching and filtering: Locate, Lookup, OnFilterRecord and the find operations.

#include <gtest/gtest.h>

#include "DataSetTestSupport.h"

namespace orv::test {
namespace {

using Events = std::vector<std::string>;

TEST(DataSetSearch, LocateMovesAndLookupLooksWithoutMoving) {
  auto people = MakePeople(20);
  people->Open();
  std::vector<std::string> log;
  LogDataSetEvents(*people, log);

  EXPECT_TRUE(people->Locate("Name", "name12", TLocateOptions{loCaseInsensitive}));
  EXPECT_EQ(CurrentID(*people), 12);
  EXPECT_EQ(log, (Events{"BeforeScroll", "AfterScroll"}));
  log.clear();
  EXPECT_FALSE(people->Locate("Name", "name12", TLocateOptions{}));
  EXPECT_EQ(log, Events{"BeforeScroll"});
  EXPECT_EQ(CurrentID(*people), 12);

  // Partial keys match a prefix of the last key field only.
  EXPECT_TRUE(people->Locate("Name", "Name1", TLocateOptions{loPartialKey}));
  EXPECT_EQ(CurrentID(*people), 1);
  EXPECT_TRUE(people->Locate("Age;Name", VarArrayOf({35, "Name1"}), TLocateOptions{loPartialKey}));
  EXPECT_EQ(CurrentID(*people), 15);
  EXPECT_FALSE(people->Locate("Age;Name", VarArrayOf({35}), TLocateOptions{}));

  log.clear();
  EXPECT_EQ(people->Lookup("ID", 7, "Name"), Variant("Name7"));
  Variant both = people->Lookup("Name", "Name8", "ID;Age");
  EXPECT_EQ(both[0], Variant(8));
  EXPECT_EQ(both[1], Variant(28));
  EXPECT_TRUE(VarIsNull(people->Lookup("ID", 99, "Name")));
  EXPECT_EQ(log, Events{});
  EXPECT_EQ(CurrentID(*people), 15);
}

TEST(DataSetSearch, FilterShowsOnlyAcceptedRecordsAndFindUsesItUnfiltered) {
  auto people = MakePeople(10);
  people->SetOnFilterRecord([](TDataSet* dataSet, bool& accept) {
    EXPECT_EQ(dataSet->GetState(), dsFilter);
    accept = dataSet->FieldByName("ID")->GetAsInteger() % 3 == 0;
  });
  people->Open();
  people->Last();

  // Not filtered: the find operations still search with the filter.
  EXPECT_TRUE(people->FindFirst());
  EXPECT_EQ(CurrentID(*people), 3);
  EXPECT_TRUE(people->GetFound());
  EXPECT_TRUE(people->FindNext());
  EXPECT_EQ(CurrentID(*people), 6);
  EXPECT_TRUE(people->FindLast());
  EXPECT_EQ(CurrentID(*people), 9);
  EXPECT_FALSE(people->FindNext());
  EXPECT_FALSE(people->GetFound());
  EXPECT_EQ(CurrentID(*people), 9);
  EXPECT_TRUE(people->FindPrior());
  EXPECT_EQ(CurrentID(*people), 6);
  people->Next();
  EXPECT_EQ(CurrentID(*people), 7);  // ordinary moves see every record

  // Filtered: switching it on moves to the first accepted record.
  people->SetFiltered(true);
  EXPECT_EQ(CurrentID(*people), 3);
  std::vector<int> seen;
  for (people->First(); !people->GetEOF(); people->Next()) seen.push_back(CurrentID(*people));
  EXPECT_EQ(seen, (std::vector<int>{3, 6, 9}));
  EXPECT_FALSE(people->Locate("ID", 4, TLocateOptions{}));
  EXPECT_TRUE(people->Locate("ID", 6, TLocateOptions{}));

  // A failing filter refuses the record; the error goes to the exception handler.
  people->SetOnFilterRecord([](TDataSet* dataSet, bool& accept) {
    if (dataSet->FieldByName("ID")->GetAsInteger() == 2) throw EDatabaseError("Bad record");
    accept = true;
  });
  people->SetFiltered(false);
  people->SetFiltered(true);
  EXPECT_EQ(CurrentID(*people), 1);
  people->Next();
  EXPECT_EQ(CurrentID(*people), 3);
  EXPECT_EQ(people->GetHandledErrors(), std::vector<String>{"Bad record"});
  EXPECT_EQ(people->GetState(), dsBrowse);
}

}  // namespace
}  // namespace orv::test
