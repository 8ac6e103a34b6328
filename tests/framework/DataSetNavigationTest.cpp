// The buffer ring, the cursor and bookmarks, seen through a grid-like link.

#include <gtest/gtest.h>

#include "DataSetTestSupport.h"

namespace orv::test {
namespace {

using Events = std::vector<std::string>;

TEST(DataSetNavigation, GridOfTenRowsScrollsThroughHundredRecords) {
  auto people = MakePeople(100);
  TDataSource source;
  source.SetDataSet(people.get());
  TRecordingLink grid(&source, 10);
  TRecordingLink edit(&source);  // a single-record control beside the grid
  people->Open();
  EXPECT_EQ(grid.Take(), Events{"active"});
  EXPECT_EQ(people->GetBufferCount(), 10);
  EXPECT_EQ(grid.GetRecordCount(), 10);
  EXPECT_EQ(edit.GetRecordCount(), 1);
  EXPECT_TRUE(people->GetBOF());
  EXPECT_FALSE(people->GetEOF());

  // Inside the ring the grid only moves its cursor row.
  for (int i = 0; i < 9; ++i) people->Next();
  EXPECT_EQ(grid.Take(), Events(9, "scrolled 0"));
  EXPECT_EQ(grid.GetActiveRecord(), 9);
  EXPECT_EQ(edit.GetActiveRecord(), 0);
  EXPECT_EQ(CurrentID(*people), 10);
  EXPECT_FALSE(people->GetBOF());

  // Past its end the rows scroll by the records fetched.
  people->Next();
  EXPECT_EQ(people->MoveBy(5), 5);
  EXPECT_EQ(grid.Take(), (Events{"scrolled 1", "scrolled 5"}));
  EXPECT_EQ(CurrentID(*people), 16);
  EXPECT_EQ(grid.GetActiveRecord(), 9);
  EXPECT_EQ(people->GetRecNo(), 16);

  // Back over the whole ring and three more: the top row is the current one.
  EXPECT_EQ(people->MoveBy(-12), -12);
  EXPECT_EQ(grid.Take(), Events{"scrolled -3"});
  EXPECT_EQ(CurrentID(*people), 4);
  EXPECT_EQ(grid.GetActiveRecord(), 0);

  // A move that runs into the beginning stops there and says how far it went.
  EXPECT_EQ(people->MoveBy(-10), -3);
  EXPECT_TRUE(people->GetBOF());
  EXPECT_EQ(CurrentID(*people), 1);
  grid.Take();
  people->Prior();
  EXPECT_EQ(grid.Take(), Events{});

  people->Last();
  EXPECT_EQ(grid.Take(), Events{"changed"});
  EXPECT_TRUE(people->GetEOF());
  EXPECT_EQ(CurrentID(*people), 100);
  EXPECT_EQ(grid.GetActiveRecord(), 9);
  people->Next();
  EXPECT_TRUE(people->GetEOF());
  EXPECT_EQ(CurrentID(*people), 100);

  // Jumps put the record in the middle of the grid.
  people->SetRecNo(50);
  EXPECT_EQ(CurrentID(*people), 50);
  EXPECT_EQ(grid.GetActiveRecord(), 4);
  TBookmark fifty = people->GetBookmark();
  people->First();
  EXPECT_EQ(grid.GetActiveRecord(), 0);
  grid.Take();
  people->GotoBookmark(fifty);
  EXPECT_EQ(grid.Take(), Events{"changed"});
  EXPECT_EQ(CurrentID(*people), 50);
  EXPECT_EQ(grid.GetActiveRecord(), 4);
  EXPECT_EQ(edit.GetActiveRecord(), 0);

  // A smaller grid keeps the current record in its window; without links one buffer is left.
  grid.SetBufferCount(5);
  EXPECT_EQ(people->GetBufferCount(), 5);
  EXPECT_EQ(grid.GetActiveRecord(), 4);
  EXPECT_EQ(CurrentID(*people), 50);
  grid.SetDataSource(nullptr);
  EXPECT_EQ(grid.Take(), Events{"inactive"});
  EXPECT_EQ(people->GetBufferCount(), 1);
  EXPECT_EQ(CurrentID(*people), 50);
  EXPECT_EQ(people->MoveBy(3), 3);
  EXPECT_EQ(CurrentID(*people), 53);
}

TEST(DataSetNavigation, BookmarksAreComparedAndCheckedByTheDataSet) {
  auto people = MakePeople(5);
  people->Open();
  TBookmark first = people->GetBookmark();
  people->Last();
  TBookmark last = people->GetBookmark();
  EXPECT_EQ(people->CompareBookmarks(first, last), -1);
  EXPECT_EQ(people->CompareBookmarks(last, first), 1);
  EXPECT_EQ(people->CompareBookmarks(last, last), 0);
  EXPECT_EQ(people->CompareBookmarks(TBookmark{}, first), 1);
  EXPECT_EQ(people->CompareBookmarks(TBookmark{}, TBookmark{}), 0);
  EXPECT_TRUE(people->BookmarkValid(first));
  people->Delete();
  EXPECT_FALSE(people->BookmarkValid(last));
  EXPECT_EQ(CurrentID(*people), 4);

  // No record, no bookmark; going to no bookmark stays put.
  people->GotoBookmark(TBookmark{});
  EXPECT_EQ(CurrentID(*people), 4);
  people->Insert();
  EXPECT_TRUE(people->GetBookmark().empty());
  people->Cancel();
}

// A descendant that supplies only the byte-array form is reached through the pointer form too.
TEST(DataSetNavigation, PointerBookmarkReachesTheByteArrayForm) {
  struct TPointerGoto : TTestDataSet {
    void GoTo(const TBookmark& Bookmark) {
      InternalGotoBookmark(static_cast<const void*>(Bookmark.data()));
      Resync(TResyncMode{rmExact});
    }
  };
  TPointerGoto people;
  people.GetFieldDefs()->Add("ID", ftInteger);
  for (int id = 1; id <= 5; ++id) people.AddRow({id});
  people.Open();
  people.MoveBy(3);
  TBookmark fourth = people.GetBookmark();
  people.First();
  people.GoTo(fourth);
  EXPECT_EQ(CurrentID(people), 4);
}

TEST(DataSetNavigation, EmptyAndClosedDataSetsRefuseWithTheirName) {
  auto people = MakePeople(0);
  people->SetName("People");
  try {
    people->GetRecNo();
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Cannot perform this operation on a closed dataset");
  }
  people->Open();
  EXPECT_TRUE(people->GetBOF());
  EXPECT_TRUE(people->GetEOF());
  EXPECT_TRUE(people->IsEmpty());
  EXPECT_EQ(people->GetRecNo(), -1);
  EXPECT_EQ(people->MoveBy(1), 0);
  people->Last();
  EXPECT_TRUE(people->IsEmpty());
  try {
    people->Delete();
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Cannot perform this operation on an empty dataset");
  }
  try {
    people->FieldByName("Nope");
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Field 'Nope' not found");
  }
  try {
    people->SetObjectView(true);
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Cannot perform this operation on an open dataset");
  }
}

TEST(DataSetNavigation, OpenAndCloseRunTheirEventsAndDestructionClosesQuietly) {
  std::vector<std::string> log;
  auto people = MakePeople(3);
  LogDataSetEvents(*people, log);
  TDataSource source;
  source.SetDataSet(people.get());
  TRecordingLink grid(&source, 4);
  people->Open();
  EXPECT_EQ(log, (Events{"BeforeOpen", "AfterOpen", "AfterScroll"}));
  EXPECT_EQ(people->GetBufferedRecordCount(), 3);
  EXPECT_EQ(people->GetFieldCount(), 3);
  EXPECT_TRUE(people->GetDefaultFields());
  log.clear();
  people->Close();
  EXPECT_EQ(log, (Events{"BeforeClose", "AfterClose"}));
  EXPECT_EQ(people->GetFieldCount(), 0);  // default fields go with the cursor
  EXPECT_EQ(grid.Take(), (Events{"active", "inactive"}));

  people->Open();
  log.clear();
  people.reset();  // open, with a link attached
  EXPECT_EQ(log, Events{});
  EXPECT_FALSE(grid.GetActive());
  EXPECT_EQ(source.GetDataSet(), nullptr);
}

TEST(DataSetNavigation, ExtractFieldNameWalksASemicolonList) {
  const String names = " ID ; Name;;Age";
  std::vector<String> found;
  int pos = 1;
  while (pos <= static_cast<int>(names.size())) found.push_back(ExtractFieldName(names, pos));
  EXPECT_EQ(found, (std::vector<String>{"ID", "Name", "", "Age"}));
}

}  // namespace
}  // namespace orv::test
