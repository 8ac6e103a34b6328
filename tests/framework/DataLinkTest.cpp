// Data sources and links: what they hear and when, DisableControls/EnableControls, editing
// through a link, the master data link and the circular-link check.

#include <gtest/gtest.h>

#include "DataSetTestSupport.h"

namespace orv::test {
namespace {

using Events = std::vector<std::string>;

TEST(DataLink, DisabledControlsHearOneChangeWhenEnabledAgain) {
  auto people = MakePeople(30);
  TDataSource source;
  source.SetDataSet(people.get());
  TRecordingLink grid(&source, 10);
  std::vector<std::string> sourceEvents;
  source.SetOnDataChange([&](TObject*, TField* field) {
    sourceEvents.push_back(field ? "data " + field->GetFieldName() : "data");
  });
  source.SetOnStateChange([&](TObject*) { sourceEvents.push_back("state"); });
  people->Open();
  EXPECT_EQ(sourceEvents, (Events{"state", "data"}));
  grid.Take();

  people->DisableControls();
  people->DisableControls();
  int sum = 0;
  for (people->First(); !people->GetEOF(); people->Next()) sum += CurrentID(*people);
  EXPECT_EQ(sum, 465);
  people->EnableControls();
  EXPECT_TRUE(people->ControlsDisabled());
  EXPECT_EQ(grid.Take(), Events{});
  people->EnableControls();
  EXPECT_FALSE(people->ControlsDisabled());
  EXPECT_EQ(grid.Take(), Events{"changed"});
  EXPECT_EQ(sourceEvents.back(), "data");
  EXPECT_EQ(grid.GetActiveRecord(), 9);

  // A change of state while disabled asks for a new layout once enabled.
  people->DisableControls();
  people->Edit();
  people->FieldByName("Name")->SetAsString("Last");
  people->Post();
  people->EnableControls();
  EXPECT_EQ(grid.Take(), Events{"layout"});

  // A close while disabled reaches the links at once, as a state change.
  people->DisableControls();
  people->Close();
  EXPECT_EQ(grid.Take(), Events{"inactive"});
  people->Open();
  EXPECT_EQ(grid.Take(), Events{"active"});
  people->EnableControls();
  EXPECT_EQ(grid.Take(), Events{"layout"});
}

TEST(DataLink, EditingThroughALinkFollowsAutoEditAndReadOnly) {
  auto people = MakePeople(3);
  TDataSource source;
  source.SetDataSet(people.get());
  TRecordingLink edit(&source);
  int updates = 0;
  source.SetOnUpdateData([&](TObject*) { ++updates; });
  people->Open();
  edit.Take();

  edit.SetReadOnly(true);
  EXPECT_FALSE(edit.Edit());
  EXPECT_EQ(people->GetState(), dsBrowse);
  edit.SetReadOnly(false);
  source.SetAutoEdit(false);
  EXPECT_FALSE(edit.Edit());
  source.SetAutoEdit(true);
  EXPECT_TRUE(edit.Edit());
  EXPECT_EQ(people->GetState(), dsEdit);
  EXPECT_EQ(edit.Take(), (Events{"editing", "record"}));
  people->Post();
  EXPECT_EQ(updates, 1);
  EXPECT_EQ(edit.Take(), (Events{"update", "browsing", "changed"}));

  // A disabled source shows nothing; enabling it shows the data set again.
  source.SetEnabled(false);
  EXPECT_FALSE(edit.GetActive());
  source.SetEnabled(true);
  EXPECT_TRUE(edit.GetActive());

  edit.SetDataSourceFixed(true);
  EXPECT_THROW(edit.SetDataSource(nullptr), EDatabaseError);
  edit.SetDataSourceFixed(false);
}

// A detail that follows its master through a master data link, for the test of the link.
class TDetailDataSet : public TTestDataSet {
 public:
  TDetailDataSet() : FMasterLink(this) {
    FMasterLink.SetOnMasterChange([this](TObject*) { Changes.push_back(MasterValue()); });
    FMasterLink.SetOnMasterDisable([this](TObject*) { Changes.push_back("disabled"); });
  }
  ~TDetailDataSet() override {
    Destroying();
    Close();
  }
  TDataSource* GetDataSource() const override { return FMasterLink.GetDataSource(); }
  void SetMasterSource(TDataSource* source) {
    if (IsLinkedTo(source)) DatabaseError(SCircularDataLink, this);
    FMasterLink.SetDataSource(source);
  }
  TMasterDataLink& MasterLink() { return FMasterLink; }
  std::vector<std::string> Changes;

 private:
  std::string MasterValue() const {
    const auto& fields = FMasterLink.GetFields();
    return fields.empty() ? "" : fields[0]->GetAsString();
  }
  TMasterDataLink FMasterLink;
};

TEST(DataLink, MasterLinkResolvesItsFieldsAndReportsChanges) {
  auto master = MakePeople(3);
  master->SetName("Master");
  TDataSource masterSource;
  masterSource.SetDataSet(master.get());
  TDetailDataSet detail;
  detail.GetFieldDefs()->Add("PersonID", ftInteger);
  detail.Open();
  detail.SetMasterSource(&masterSource);
  detail.MasterLink().SetFieldNames("ID");
  EXPECT_FALSE(detail.MasterLink().GetActive());
  EXPECT_TRUE(detail.MasterLink().GetFields().empty());

  EXPECT_EQ(detail.Changes, Events{"disabled"});  // the detail is open, the master is not
  detail.Changes.clear();
  master->Open();
  EXPECT_TRUE(detail.MasterLink().GetActive());
  ASSERT_EQ(detail.MasterLink().GetFields().size(), 1u);
  EXPECT_EQ(detail.MasterLink().GetFields()[0], master->FieldByName("ID"));
  master->Next();
  master->Edit();
  master->FieldByName("Name")->SetAsString("Other");  // not a master field: no change
  master->FieldByName("ID")->SetAsInteger(20);
  master->Post();
  // Edit and Post are changes of the whole record; a master field's change is one too.
  EXPECT_EQ(detail.Changes, (Events{"1", "2", "2", "20", "20"}));

  detail.Changes.clear();
  EXPECT_THROW(detail.MasterLink().SetFieldNames("ID;Nope"), EDatabaseError);
  EXPECT_TRUE(detail.MasterLink().GetFields().empty());
  try {
    detail.MasterLink().SetFieldNames("Nope");
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "Master: Field 'Nope' not found");
  }
  detail.MasterLink().SetFieldNames("ID");
  master->Close();
  EXPECT_EQ(detail.Changes, (Events{"20", "disabled"}));

  // A data set cannot follow a source that already follows it.
  TDataSource detailSource;
  detailSource.SetDataSet(&detail);
  TDetailDataSet third;
  third.SetMasterSource(&detailSource);
  try {
    TDataSource thirdSource;
    thirdSource.SetDataSet(&third);
    detail.SetMasterSource(&thirdSource);
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "Circular datalinks are not allowed");
  }
  EXPECT_EQ(detail.GetDataSource(), &masterSource);
  EXPECT_THROW(masterSource.SetDataSet(&third), EDatabaseError);
  EXPECT_EQ(masterSource.GetDataSet(), master.get());
  third.SetMasterSource(nullptr);
}

}  // namespace
}  // namespace orv::test
