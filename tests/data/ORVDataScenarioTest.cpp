// A TORVData over an application's vector, as an application lives with it: opened, shown in a
// grid, scrolled, read, edited, inserted into, appended to and deleted from; with the exact calls
// the application receives.

#include "ORVDataTestSupport.h"
#include "Forms.h"
#include "TestSupport.h"
#include "TryFinally.h"

namespace orv::testing {
namespace {

TEST(ORVDataScenario, GridReadsEachValueOnceAndEditsReachTheApplicationAtPost) {
  TSettingsGuard settings;
  FormatSettings.DecimalSeparator = '.';
  TPeopleData people(5);
  TDataSource source;
  source.SetDataSet(people.DataSet());
  TGridLink grid(&source, 3);
  people->SetBeforeInsert([&](TDataSet*) { people.Log.push_back("BeforeInsert"); });
  people->SetOnNewRecord([&](TDataSet*) {
    people.Log.push_back("OnNewRecord");
    people.Field("Score")->SetAsInteger(2);
  });

  // Opening counts once and fetches the grid's rows without reading a value.
  people->Open();
  EXPECT_EQ(people.Take(), Calls{"count"});
  EXPECT_EQ(people->GetRecordCount(), 5);

  // Each value is asked for once per fetched buffer; a repaint comes from the buffers.
  const std::vector<std::string> firstRows{"1|Name1|1.5", "2|Name2|3", "3|Name3|4.5"};
  EXPECT_EQ(grid.Paint(), firstRows);
  EXPECT_EQ(people.Take(), (Calls{"get 0 ID", "get 0 Name", "get 0 Score", "get 1 ID",
                                  "get 1 Name", "get 1 Score", "get 2 ID", "get 2 Name",
                                  "get 2 Score"}));
  EXPECT_EQ(grid.Paint(), firstRows);
  EXPECT_TRUE(people.Take().empty());

  // Scrolling past the window fetches one record; only its values are new.
  EXPECT_EQ(people->MoveBy(3), 3);
  EXPECT_EQ(people->GetRecNo(), 4);
  EXPECT_EQ(grid.Paint(), (std::vector<std::string>{"2|Name2|3", "3|Name3|4.5", "4|Name4|6"}));
  EXPECT_EQ(people.Take(), (Calls{"get 3 ID", "get 3 Name", "get 3 Score"}));

  // An edit passes each written field once, in the order of first writes, a cleared one as Null.
  people->Edit();
  people.Field("Name")->SetAsString("Ann");
  people.Field("Score")->Clear();
  people.Field("Name")->SetAsString("Anna");
  EXPECT_EQ(people.Field("Name")->GetAsString(), "Anna");
  EXPECT_TRUE(people.Take().empty());
  people->Post();
  EXPECT_EQ(people.Take(), (Calls{"set 3 Name=Anna", "set 3 Score=(null)"}));
  EXPECT_EQ(people.Rows[3].Name, "Anna");
  EXPECT_TRUE(people->GetDataChanged());
  people->Edit();
  people->Post();
  EXPECT_TRUE(people.Take().empty());

  // Inserting before the third record hands over index 2; the application makes room there.
  people->First();
  people->MoveBy(2);
  people.Take();
  people->Insert();
  people.Field("ID")->SetAsInteger(10);
  people.Field("Name")->SetAsString("New");
  people->Post();
  EXPECT_EQ(people.Take(), (Calls{"BeforeInsert", "OnNewRecord", "insert 2", "set 2 Score=2",
                                  "set 2 ID=10", "set 2 Name=New"}));
  EXPECT_EQ(people->GetRecordCount(), 6);
  EXPECT_EQ(people.CurrentID(), 10);
  EXPECT_EQ(people->GetRecNo(), 3);
  people.Take();

  // Appending hands over the record count; deleting the first record closes the gap at 0.
  people->Append();
  people.Field("ID")->SetAsInteger(20);
  people->Post();
  EXPECT_EQ(people.Take(),
            (Calls{"BeforeInsert", "OnNewRecord", "insert 6", "set 6 Score=2", "set 6 ID=20"}));
  EXPECT_EQ(people->GetRecordCount(), 7);
  EXPECT_EQ(people->GetRecordIndex(), 6);
  people->First();
  people->Delete();
  EXPECT_EQ(people.Take(), Calls{"delete 0"});
  EXPECT_EQ(people->GetRecordCount(), 6);
  std::vector<int32_t> ids;
  for (const TPerson& person : people.Rows) ids.push_back(person.ID);
  EXPECT_EQ(ids, (std::vector<int32_t>{2, 10, 3, 4, 5, 20}));
  EXPECT_EQ(people.CurrentID(), 2);
}

TEST(ORVDataScenario, FailedWriteOfAnInsertedRecordIsUndoneByADelete) {
  TPeopleData people(3);
  people->Open();
  people->Last();
  people->Insert();
  people.Field("ID")->SetAsInteger(30);
  people.Field("Name")->SetAsString("fail");
  people.Take();
  EXPECT_EQ(MessageOf<EConvertError>([&] { people->Post(); }), "refused");
  EXPECT_EQ(people.Take(), (Calls{"insert 2", "set 2 ID=30", "set 2 Name=fail", "delete 2"}));
  EXPECT_EQ(people->GetRecordCount(), 3);
  EXPECT_EQ(people.Rows.size(), 3u);
  EXPECT_EQ(people->GetState(), dsInsert);
  people->Cancel();
  EXPECT_EQ(people.CurrentID(), 3);
}

// Sorted by Name: positions map to record indexes through the index list; a new record always
// gets the record count; only a change of an index field moves a record.
TEST(ORVDataScenario, SortedDataSetHandsOverRecordIndexesOfItsOrder) {
  TPeopleData people(4);
  people.Rows = {{1, "d", 1}, {2, "b", 2}, {3, "c", 3}, {4, "a", 4}};
  people->SetIndexFieldNames("Name");
  people->Open();
  auto ids = [&] {
    std::vector<int32_t> order;
    for (people->First(); !people->GetEOF(); people->Next()) order.push_back(people.CurrentID());
    return order;
  };
  EXPECT_EQ(ids(), (std::vector<int32_t>{4, 2, 3, 1}));

  people->First();
  people->Edit();
  people.Field("Score")->SetAsInteger(9);
  people.Take();
  people->Post();
  EXPECT_EQ(people.Take(), Calls{"set 3 Score=9"});  // no comparison: not an index field
  people->Edit();
  people.Field("Name")->SetAsString("e");
  people->Post();
  EXPECT_EQ(ids(), (std::vector<int32_t>{2, 3, 1, 4}));

  people->First();
  people->Insert();
  people.Field("ID")->SetAsInteger(5);
  people.Field("Name")->SetAsString("a");
  people.Take();
  people->Post();
  EXPECT_EQ(people.Take()[0], "insert 4");
  EXPECT_EQ(ids(), (std::vector<int32_t>{5, 2, 3, 1, 4}));
  people->SetRecNo(2);
  people.Take();
  people->Delete();
  EXPECT_EQ(people.Take(), Calls{"delete 1"});
  EXPECT_EQ(ids(), (std::vector<int32_t>{5, 3, 1, 4}));
}

TEST(ORVDataScenario, CursorPositionsRecordNumbersAndBookmarks) {
  TPeopleData people(5);
  people->Open();
  people->SetRecNo(4);
  EXPECT_EQ(people.CurrentID(), 4);
  TBookmark fourth = people->GetBookmark();
  people->Last();
  TBookmark last = people->GetBookmark();
  people->GotoBookmark(fourth);
  EXPECT_EQ(people.CurrentID(), 4);
  EXPECT_EQ(people->CompareBookmarks(fourth, last), -1);
  EXPECT_EQ(people->CompareBookmarks(TBookmark{}, fourth), 1);  // absent comes last
  EXPECT_EQ(people->CompareBookmarks(TBookmark{}, TBookmark{}), 0);
  EXPECT_TRUE(people->BookmarkValid(last));
  EXPECT_FALSE(people->BookmarkValid(TBookmark{0xFF, 0xFF, 0xFF, 0xFF}));  // -1
  EXPECT_FALSE(people->BookmarkValid(TBookmark{5, 0, 0, 0}));  // the record count

  // The count is asked again only on refresh, which moves to the first record.
  people.Rows.push_back({6, "Name6", 9});
  people.Take();
  people->Last();
  EXPECT_EQ(people->GetRecNo(), 5);
  people->RefreshDataSet();
  EXPECT_EQ(people.Take(), (Calls{"count"}));
  EXPECT_EQ(people->GetRecNo(), 1);
  EXPECT_EQ(people->GetRecordCount(), 6);

  ExpectError<EDatabaseError>([&] { people->SetRecordCount(1); },
                              "People: Cannot perform this operation on an open dataset");
  people->Close();
  ExpectError<EDatabaseError>([&] { people->GetRecNo(); },
                              "People: Cannot perform this operation on a closed dataset");
}

TEST(ORVDataScenario, NoDefinitionsFailNoEventsOrANegativeCountGiveNoRecords) {
  TORVData data;
  data.SetName("Empty");
  ExpectError<EDatabaseError>([&] { data.Open(); }, "Empty: No fields defined in this DataSet");
  EXPECT_FALSE(data.IsCursorOpen());
  data.GetFieldDefs()->Add("ID", ftInteger);
  data.Open();
  EXPECT_EQ(data.GetRecNo(), -1);
  EXPECT_TRUE(data.IsEmpty());
  data.Close();
  data.SetOnCountRecords([](TDataSet*, int32_t& Count) { Count = -3; });
  data.Open();
  EXPECT_EQ(data.GetRecordCount(), 0);
}

// The filter reads the record being fetched; its values stay cached for the grid.
TEST(ORVDataScenario, FilterSkipsRefusedRecordsAndHandsItsErrorsToTheApplication) {
  TPeopleData people(6);
  people->SetOnFilterRecord([&](TDataSet*, bool& Accept) {
    Accept = people.Field("ID")->GetAsInteger() % 2 == 0;
  });
  people->SetFiltered(true);
  people->Open();
  EXPECT_EQ(people.CurrentID(), 2);
  people->Next();
  EXPECT_EQ(people.CurrentID(), 4);
  people->Last();
  EXPECT_EQ(people.CurrentID(), 6);
  EXPECT_EQ(people.Take(), (Calls{"count", "get 0 ID", "get 1 ID", "get 2 ID", "get 3 ID",
                                  "get 5 ID"}));

  people->SetOnFilterRecord([](TDataSet*, bool& Accept) { Accept = false; });
  people->First();
  EXPECT_TRUE(people->IsEmpty());
  EXPECT_TRUE(people->GetEOF());

  std::vector<std::string> handled;
  Application().SetOnException([&](TObject*, const Exception& E) { handled.push_back(E.Message()); });
  TScopeExit uninstall([] { Application().SetOnException(nullptr); });
  people->SetOnFilterRecord([](TDataSet*, bool&) { throw EConvertError("bad filter"); });
  people->First();  // fetches twice: the first record, then the rest of the window
  EXPECT_TRUE(people->IsEmpty());
  EXPECT_EQ(handled, (std::vector<std::string>{"bad filter", "bad filter"}));
  EXPECT_EQ(people->GetState(), dsBrowse);
  EXPECT_FALSE(people->ControlsDisabled());
}

// A layout change refetches the records only when the fields are other ones or in another order.
TEST(ORVDataScenario, LayoutChangeRefetchesOnlyWhenTheFieldListChanged) {
  TPeopleData people(2);
  people->Open();
  EXPECT_EQ(people.Field("Name")->GetAsString(), "Name1");
  people.Take();
  people.Field("Name")->SetVisible(false);  // a layout change, same fields
  EXPECT_EQ(people.Field("Name")->GetAsString(), "Name1");
  EXPECT_TRUE(people.Take().empty());

  people.Field("Score")->SetIndex(0);  // same fields in another order
  EXPECT_EQ(people.Field("Name")->GetAsString(), "Name1");
  EXPECT_EQ(people.Field("Score")->GetAsFloat(), 1.5);
  EXPECT_EQ(people.Take(), (Calls{"get 0 Name", "get 0 Score"}));
}

}  // namespace
}  // namespace orv::testing
