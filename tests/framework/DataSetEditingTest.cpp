// Editing: the order of events, where new records go, required fields and validation, and the
// error events with their actions.

#include <gtest/gtest.h>

#include "DataSetTestSupport.h"

namespace orv::test {
namespace {

using Events = std::vector<std::string>;

std::vector<int> IDs(TTestDataSet& dataSet) {
  std::vector<int> ids;
  for (const auto& row : dataSet.GetTable()->Rows) ids.push_back(row[0].AsInteger());
  return ids;
}

TEST(DataSetEditing, InsertAppendPostCancelAndDeleteInTheirOrder) {
  auto people = MakePeople(5);
  std::vector<std::string> log;
  TDataSource source;
  source.SetDataSet(people.get());
  TRecordingLink grid(&source, 10);
  people->Open();
  LogDataSetEvents(*people, log);
  grid.Take();

  // Insert goes before the current record and the new record is current.
  people->MoveBy(2);
  log.clear();
  grid.Take();
  people->Insert();
  EXPECT_EQ(log, (Events{"BeforeInsert", "BeforeScroll", "OnNewRecord", "AfterInsert", "AfterScroll"}));
  EXPECT_EQ(grid.Take(), (Events{"editing", "changed"}));
  EXPECT_EQ(people->GetState(), dsInsert);
  EXPECT_EQ(grid.GetRecordCount(), 6);
  people->FieldByName("ID")->SetAsInteger(30);
  EXPECT_TRUE(people->GetModified());
  EXPECT_EQ(grid.Take(), Events{"record ID"});
  log.clear();
  people->Post();
  EXPECT_EQ(log, (Events{"BeforePost", "AfterPost"}));
  EXPECT_EQ(grid.Take(), (Events{"update", "browsing", "changed"}));
  EXPECT_EQ(IDs(*people), (std::vector<int>{1, 2, 30, 3, 4, 5}));
  EXPECT_EQ(CurrentID(*people), 30);

  // Append goes last whatever is current.
  people->First();
  log.clear();
  people->AppendRecord({60, "Sixty"});
  EXPECT_EQ(log, (Events{"BeforeInsert", "BeforeScroll", "OnNewRecord", "AfterInsert",
                         "AfterScroll", "BeforePost", "AfterPost"}));
  EXPECT_EQ(IDs(*people), (std::vector<int>{1, 2, 30, 3, 4, 5, 60}));
  EXPECT_EQ(CurrentID(*people), 60);
  EXPECT_EQ(people->GetRecNo(), 7);

  // Cancelling an insert drops the record and scrolls back to where the data set was.
  people->First();
  people->Next();
  log.clear();
  people->Insert();
  people->FieldByName("ID")->SetAsInteger(99);
  log.clear();
  people->Cancel();
  EXPECT_EQ(log, (Events{"BeforeCancel", "BeforeScroll", "AfterCancel", "AfterScroll"}));
  EXPECT_EQ(CurrentID(*people), 2);
  EXPECT_EQ(people->GetTable()->Rows.size(), 7u);

  // Edit changes the row only when posted; cancelling an edit restores the buffer.
  log.clear();
  people->Edit();
  EXPECT_EQ(log, (Events{"BeforeEdit", "AfterEdit"}));
  people->FieldByName("Name")->SetAsString("Bea");
  EXPECT_EQ(people->GetTable()->Rows[1][1].AsString(), "Name2");
  EXPECT_EQ(people->FieldByName("Name")->GetOldValue().AsString(), "Name2");
  people->Cancel();
  EXPECT_EQ(people->FieldByName("Name")->GetAsString(), "Name2");
  people->Edit();
  people->FieldByName("Name")->SetAsString("Bea");
  people->Next();  // leaving the record posts it
  EXPECT_EQ(people->GetTable()->Rows[1][1].AsString(), "Bea");
  EXPECT_EQ(people->GetState(), dsBrowse);

  // Delete removes the current record; the next one takes its place.
  log.clear();
  people->Delete();
  EXPECT_EQ(log, (Events{"BeforeDelete", "BeforeScroll", "AfterDelete", "AfterScroll"}));
  EXPECT_EQ(IDs(*people), (std::vector<int>{1, 2, 3, 4, 5, 60}));
  EXPECT_EQ(CurrentID(*people), 3);

  // An unmodified edit is cancelled by the browse-mode check, a modified one posted.
  people->Edit();
  people->CheckBrowseMode();
  EXPECT_EQ(people->GetState(), dsBrowse);
}

TEST(DataSetEditing, InsertIntoAnEmptyDataSetAndEditOfAnEmptyOne) {
  auto people = MakePeople(0);
  people->Open();
  people->Edit();  // nothing to edit: inserts
  EXPECT_EQ(people->GetState(), dsInsert);
  people->SetFields({7, "Seven", Unassigned()});
  people->Post();
  EXPECT_EQ(IDs(*people), std::vector<int>{7});
  EXPECT_TRUE(people->GetTable()->Rows[0][2].VType() == varNull);
  people->InsertRecord({6, "Six"});
  EXPECT_EQ(IDs(*people), (std::vector<int>{6, 7}));
  EXPECT_EQ(people->GetRecNo(), 1);
}

TEST(DataSetEditing, RequiredFieldAndValidationRefuseAndLeaveTheRecordAsItWas) {
  auto people = MakePeople(2);
  people->SetName("People");
  people->Open();
  TField* name = people->FieldByName("Name");
  name->SetRequired(true);
  name->SetOnValidate([](TField* sender) {
    if (sender->GetAsString() == "Nobody") throw EDatabaseError("Not a name");
  });

  people->Append();
  people->FieldByName("ID")->SetAsInteger(3);
  try {
    people->Post();
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "Field 'Name' must have a value");
  }
  EXPECT_EQ(people->GetState(), dsInsert);
  EXPECT_EQ(people->FieldByName("ID")->GetAsInteger(), 3);

  EXPECT_THROW(name->SetAsString("Nobody"), EDatabaseError);
  EXPECT_TRUE(name->GetIsNull());
  name->SetAsString("Cid");
  people->Post();
  EXPECT_EQ(IDs(*people), (std::vector<int>{1, 2, 3}));

  // Read-only fields and a data set outside the editing states refuse writes.
  people->FieldByName("Age")->SetReadOnly(true);
  people->Edit();
  try {
    people->FieldByName("Age")->SetAsInteger(1);
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "Field 'Age' cannot be modified");
  }
  people->Cancel();
  try {
    people->FieldByName("ID")->SetAsInteger(1);
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Dataset not in edit or insert mode");
  }
}

// Rows whose ID is negative are locked: editing and deleting them fails as a server would.
class TLockingDataSet : public TTestDataSet {
 public:
  using TTestDataSet::TTestDataSet;
  int Attempts = 0;

 protected:
  void InternalEdit() override { CheckLock(); }
  void InternalDelete() override {
    CheckLock();
    TTestDataSet::InternalDelete();
  }

 private:
  void CheckLock() {
    ++Attempts;
    if (FieldByName("ID")->GetAsInteger() < 0) DatabaseError("Record locked");
  }
};

TEST(DataSetEditing, ErrorEventsFailAbortOrRetry) {
  TLockingDataSet data;
  data.GetFieldDefs()->Add("ID", ftInteger);
  data.AddRow({-1});
  data.AddRow({2});
  data.Open();

  // No handler: the error goes on and the data set stays browsing.
  EXPECT_THROW(data.Edit(), EDatabaseError);
  EXPECT_EQ(data.GetState(), dsBrowse);

  std::vector<String> seen;
  TDataAction action = daAbort;
  data.SetOnEditError([&](TDataSet*, EDatabaseError& e, TDataAction& a) {
    seen.push_back(e.Message());
    a = action;
  });
  EXPECT_THROW(data.Edit(), EAbort);
  EXPECT_EQ(seen, std::vector<String>{"Record locked"});

  // Retry: the handler unlocks the row (in the table) and the operation runs again.
  data.Attempts = 0;
  action = daRetry;
  data.SetOnDeleteError([&](TDataSet*, EDatabaseError&, TDataAction& a) {
    data.GetTable()->Rows[0][0] = 1;
    data.Refresh();
    a = daRetry;
  });
  data.Delete();
  EXPECT_EQ(data.Attempts, 2);
  ASSERT_EQ(data.GetTable()->Rows.size(), 1u);
  EXPECT_EQ(CurrentID(data), 2);

  // Post errors go to OnPostError; daFail lets the error through with the record kept.
  data.SetOnPostError([&](TDataSet*, EDatabaseError& e, TDataAction& a) {
    seen.push_back("post: " + e.Message());
    a = daFail;
  });
  data.FieldByName("ID")->SetRequired(true);
  data.Append();
  EXPECT_THROW(data.Post(), EDatabaseError);
  EXPECT_EQ(seen.back(), "post: Field 'ID' must have a value");
  EXPECT_EQ(data.GetState(), dsInsert);
  data.Cancel();
}

TEST(DataSetEditing, ReadOnlyDataSetRefusesToEdit) {
  class TReadOnlyDataSet : public TTestDataSet {
   public:
    bool GetCanModify() const override { return false; }
  } data;
  data.GetFieldDefs()->Add("ID", ftInteger);
  data.AddRow({1});
  data.Open();
  try {
    data.Edit();
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "Cannot modify a read-only dataset");
  }
  EXPECT_THROW(data.Append(), EDatabaseError);
  EXPECT_EQ(data.GetState(), dsBrowse);
}

}  // namespace
}  // namespace orv::test
