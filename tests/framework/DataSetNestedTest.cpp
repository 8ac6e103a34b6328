// Nested data sets: made by the parent for its data-set field, showing the records of the
// parent's current record, and editing as part of the parent's record.

#include <gtest/gtest.h>

#include "DataSetTestSupport.h"

namespace orv::test {
namespace {

struct Orders {
  TTestDataSet Data;
  TTestTable* PenAndInk = Data.GetTable()->AddNested();
  TTestTable* Pad = Data.GetTable()->AddNested();

  Orders() {
    Data.GetFieldDefs()->Add("ID", ftInteger);
    TFieldDef* lines = Data.GetFieldDefs()->AddFieldDef();
    lines->SetName("Lines");
    lines->SetDataType(ftDataSet);
    lines->GetChildDefs()->Add("Item", ftString, 10);
    lines->GetChildDefs()->Add("Qty", ftInteger);
    PenAndInk->Rows = {{"Pen", 2}, {"Ink", 1}};
    Pad->Rows = {{"Pad", 5}};
    Data.AddRow({1, Variant(PenAndInk)});
    Data.AddRow({2, Variant(Pad)});
    Data.AddRow({3});
  }
};

std::vector<String> Items(TDataSet& lines) {
  std::vector<String> items;
  for (lines.First(); !lines.GetEOF(); lines.Next())
    items.push_back(lines.FieldByName("Item")->GetAsString() + " x" +
                    lines.FieldByName("Qty")->GetAsString());
  return items;
}

TEST(DataSetNested, NestedDataSetFollowsTheParentsCurrentRecord) {
  Orders orders;
  TTestDataSet& parent = orders.Data;
  parent.Open();
  auto* field = dynamic_cast<TDataSetField*>(parent.FieldByName("Lines"));
  ASSERT_NE(field, nullptr);
  TDataSet* lines = field->GetNestedDataSet();
  ASSERT_NE(lines, nullptr);
  EXPECT_EQ(lines->ClassType(), TTestDataSet::StaticClass());
  EXPECT_EQ(lines->GetOwner(), field);
  EXPECT_EQ(lines->GetParentDataSet(), &parent);
  EXPECT_TRUE(lines->GetObjectView());
  EXPECT_EQ(parent.GetNestedDataSets()->GetCount(), 1);
  EXPECT_TRUE(lines->GetActive());
  EXPECT_EQ(Items(*lines), (std::vector<String>{"Pen x2", "Ink x1"}));

  parent.Next();
  EXPECT_EQ(Items(*lines), std::vector<String>{"Pad x5"});
  parent.Next();
  EXPECT_TRUE(lines->IsEmpty());

  // While the parent's controls are disabled its nested data set is not moved either.
  parent.DisableControls();
  parent.First();
  EXPECT_TRUE(lines->IsEmpty());
  parent.EnableControls();
  EXPECT_EQ(lines->GetRecordCount(), 2);

  // A record being inserted has no nested records yet.
  parent.Append();
  EXPECT_TRUE(lines->IsEmpty());
  parent.Cancel();  // back on the last record
  EXPECT_EQ(CurrentID(parent), 3);
  EXPECT_TRUE(lines->IsEmpty());

  EXPECT_THROW(parent.SetDataSetField(field), EDatabaseError);
  parent.Close();
  EXPECT_FALSE(parent.GetActive());
}

TEST(DataSetNested, EditingANestedRecordEditsTheParentThatPostsItFirst) {
  Orders orders;
  TTestDataSet& parent = orders.Data;
  parent.Open();
  TDataSet* lines = dynamic_cast<TDataSetField*>(parent.FieldByName("Lines"))->GetNestedDataSet();
  lines->Last();
  lines->Edit();
  EXPECT_EQ(parent.GetState(), dsEdit);
  lines->FieldByName("Qty")->SetAsInteger(3);
  parent.Post();
  EXPECT_EQ(lines->GetState(), dsBrowse);
  EXPECT_EQ(orders.PenAndInk->Rows[1][1], Variant(3));
  EXPECT_EQ(Items(*lines), (std::vector<String>{"Pen x2", "Ink x3"}));

  lines->AppendRecord({"Nib", 9});
  EXPECT_EQ(orders.PenAndInk->Rows.size(), 3u);
  parent.Cancel();
}

}  // namespace
}  // namespace orv::test
