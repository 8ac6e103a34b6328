// A sorted TORVData over an application's rows: the index field text, the order kept through
// editing, and the rules of record and value comparison.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "ORVData.h"
#include "TestSupport.h"

namespace orv {
namespace {

using Row = std::map<String, Variant>;  // a missing field: the handler assigns nothing
using Texts = std::vector<String>;

Row Person(const char* Name, const char* City, int32_t Age, Variant Any = {}) {
  Row row{{"Name", Name}, {"City", City}, {"Age", Age}};
  if (!VarIsEmpty(Any)) row["Any"] = Any;
  return row;
}

class SortTest : public ::testing::Test {
 protected:
  SortTest() {
    Data.SetName("People");
    for (const char* name : {"Name", "City"}) Data.GetFieldDefs()->Add(name, ftString, 20);
    Data.GetFieldDefs()->Add("Age", ftInteger);
    Data.GetFieldDefs()->Add("Any", ftVariant);
    Data.SetOnCountRecords([this](TDataSet*, int32_t& Count) { Count = int32_t(Rows.size()); });
    Data.SetOnGetFieldData([this](TDataSet*, int32_t Index, TField* Field, Variant& Value) {
      ++Reads;
      const Row& row = Rows.at(size_t(Index));
      if (row.at("Name") == Variant("fail")) throw EConvertError("unreadable");
      StateReads += Data.GetIndexFieldState();
      if (auto it = row.find(Field->GetFieldName()); it != row.end()) Value = it->second;
    });
    Data.SetOnSetFieldData([this](TDataSet*, int32_t Index, TField* Field, const Variant& Value) {
      Rows.at(size_t(Index))[Field->GetFieldName()] = Value;
    });
    Data.SetOnInsertRecord(
        [this](TDataSet*, int32_t Index) { Rows.insert(Rows.begin() + Index, Row{}); });
    Data.SetOnDeleteRecord([this](TDataSet*, int32_t Index) { Rows.erase(Rows.begin() + Index); });
  }

  Texts Walk(const char* field) {  // in cursor order
    Texts result;
    for (Data.First(); !Data.GetEOF(); Data.Next())
      result.push_back(Data.FieldByName(field)->GetAsString());
    return result;
  }
  void Set(const char* field, const Variant& value) { Data.FieldByName(field)->SetValue(value); }

  std::vector<Row> Rows;
  int Reads = 0, StateReads = 0;
  TORVData Data;  // after the rows: it closes before they go
};

TEST_F(SortTest, IndexFieldNamesAreParsedNormalisedAndCheckedOnOpen) {
  Rows = {Person("b", "Oslo", 1), Person("c", "Rome", 2), Person("a", "Oslo", 3)};
  Data.SetIndexFieldNames("city desc; NAME Asc");
  EXPECT_TRUE(Data.GetSorted());
  EXPECT_EQ(Data.GetIndexFieldNames(), "city desc; NAME Asc");  // no fields yet
  Data.Open();
  EXPECT_EQ(Data.GetIndexFieldNames(), "City DESC;Name");
  EXPECT_EQ(Walk("Name"), (Texts{"c", "a", "b"}));
  Data.SetIndexDescField(33, true);  // shares the flag of index field 1
  EXPECT_EQ(Data.GetIndexFieldNames(), "City DESC;Name DESC");

  // A pending edit is posted before the order changes; the cursor goes to the first record.
  Data.Last();
  Data.Edit();
  Set("Age", 9);
  Data.SetIndexFieldNames("Age");
  EXPECT_EQ(Rows[0].at("Age"), Variant(9));  // b: setting a flag alone does not sort again
  EXPECT_EQ(Data.GetRecNo(), 1);

  testing::ExpectError<EDatabaseError>([&] { Data.SetIndexFieldNames("Name;Nope"); },
                                       "People: Field 'Nope' not found");
  EXPECT_EQ(Data.GetIndexFieldNames(), "");
  EXPECT_EQ(Data.GetIndexFieldCount(), 0);

  Data.SetIndexFieldNames("Name");
  Data.Close();  // the text, Sorted and Reversed survive
  Data.SetReversed(true);
  Data.Open();
  EXPECT_EQ(Walk("Name"), (Texts{"c", "b", "a"}));
  Data.SetIndexFieldNames("");
  EXPECT_FALSE(Data.GetSorted());
  EXPECT_EQ(Walk("Name"), (Texts{"b", "c", "a"}));  // Reversed alone: natural order
}

// Checked after every step against the rows sorted apart from the data set: City ascending
// without regard to letter case, then Age descending.
TEST_F(SortTest, StaysSortedThroughInsertsAppendsEditsAndDeletes) {
  std::mt19937 random(7);
  const char* cities[] = {"Berlin", "berlin", "amsterdam", "Cairo"};
  auto city = [&] { return cities[random() % 4]; };
  auto age = [&] { return int32_t(random() % 5); };
  for (int i = 0; i < 20; ++i) Rows.push_back(Person("n", city(), age()));
  Data.SetIndexFieldNames("City;Age DESC");
  Data.Open();

  using Key = std::pair<String, int32_t>;
  auto key = [](const Variant& city, const Variant& age) {
    return Key(LowerCase(city.AsString()), -age.AsInteger());
  };
  for (int step = 0; step < 80; ++step) {
    const int action = int(random() % 5);
    if (!Rows.empty()) Data.SetRecNo(int32_t(1 + random() % Rows.size()));
    if (action <= 1) {
      action == 0 ? Data.Insert() : Data.Append();
      EXPECT_EQ(Data.GetRecordIndex(), Data.GetRecordCount());
      Set("Name", "new");
      Set("City", city());
      Set("Age", age());
      Data.Post();
    } else if (Rows.empty()) {
      continue;
    } else if (action == 2) {
      Data.Edit();
      random() % 2 ? Set("City", city()) : Set("Age", age());
      Data.Post();
    } else if (action == 3) {
      Data.Edit();
      Set("Name", "renamed");
      const int reads = Reads;
      Data.Post();
      EXPECT_EQ(Reads, reads) << "a non-index edit compared records";
    } else {
      Data.Delete();
    }

    std::vector<Key> keys, expected;
    std::set<int32_t> records;
    for (Data.First(); !Data.GetEOF(); Data.Next()) {
      keys.push_back(
          key(Data.FieldByName("City")->GetValue(), Data.FieldByName("Age")->GetValue()));
      records.insert(Data.GetRecordIndex());
    }
    for (const Row& row : Rows) expected.push_back(key(row.at("City"), row.at("Age")));
    std::sort(expected.begin(), expected.end());
    ASSERT_EQ(keys, expected) << "after step " << step << ", action " << action;
    ASSERT_EQ(records.size(), Rows.size());
  }
}

TEST_F(SortTest, RecordsCompareByFieldsByEventOrNaturallyAndValuesAsTextWhenEitherIsText) {
  Rows = {Person("x", "", 10, 10), Person("y", "", 9, "9"), Person("z", "", 2, 2)};
  Data.Open();
  Data.SetSorted(true);
  EXPECT_EQ(Walk("Name"), (Texts{"x", "y", "z"}));  // natural
  Data.SetReversed(true);
  EXPECT_EQ(Walk("Name"), (Texts{"z", "y", "x"}));
  Data.SetReversed(false);
  Data.SetOnCompareRecords([this](TDataSet*, int32_t A, int32_t B, int32_t& Result) {
    EXPECT_EQ(Result, A - B);
    Result = Rows[size_t(A)].at("Age").AsInteger() - Rows[size_t(B)].at("Age").AsInteger();
  });
  Data.RefreshDataSet();
  EXPECT_EQ(Walk("Age"), (Texts{"2", "9", "10"}));
  Data.SetOnCompareRecords([](TDataSet*, int32_t, int32_t, int32_t&) { FAIL() << "asked"; });
  Data.SetIndexFieldNames("Any");
  EXPECT_EQ(Walk("Any"), (Texts{"2", "10", "9"}));

  // The value holders carry over from one index field to the next: record 1 gives no Any of
  // its own, so its Name "y" stands in, equal to record 0's "Y".
  Rows[0] = Person("y", "", 0, "Y");
  Rows[1].erase("Any");
  StateReads = 0;
  Data.SetIndexFieldNames("Name;Any");
  EXPECT_EQ(Data.CompareRecords(0, 1), 0);
  EXPECT_GT(StateReads, 0);
  Rows[1]["Name"] = "fail";
  EXPECT_THROW(Data.CompareRecords(0, 1), EConvertError);
  EXPECT_FALSE(Data.GetIndexFieldState());
}

}  // namespace
}  // namespace orv
