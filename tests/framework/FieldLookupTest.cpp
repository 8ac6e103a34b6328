// Lookup fields: the value of another data set's field for this record's key, read each time
// from the lookup data set, or once into the field's cache when it is bound.

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

class FieldLookup : public ::testing::Test {
 protected:
  void SetUp() override {
    Countries = MakeDataSet({{"Code", ftString, 2}, {"Name", ftString, 20}},
                            {{String("DE"), String("Germany")}, {String("FR"), String("France")}});
    Customers = MakeDataSet({{"ID", ftInteger}, {"Country", ftString, 2}},
                            {{1, String("FR")}, {2, String("DE")}, {3, String("XX")}});
    // Persistent fields: the two data fields and the lookup field.
    for (int i = 0; i < Customers->GetFieldDefs()->GetCount(); ++i)
      Customers->GetFieldDefs()->GetItem(i)->CreateField(Customers.get());
    CountryName = new TStringField(Customers.get());
    CountryName->SetFieldName("CountryName");
    CountryName->SetFieldKind(fkLookup);
    CountryName->SetLookupDataSet(Countries.get());
    CountryName->SetKeyFields("Country");
    CountryName->SetLookupKeyFields("Code");
    CountryName->SetLookupResultField("Name");
    CountryName->SetDataSet(Customers.get());
  }

  std::vector<String> Names() {
    std::vector<String> names;
    for (Customers->First(); !Customers->GetEOF(); Customers->Next())
      names.push_back(CountryName->GetDisplayText());
    return names;
  }

  std::unique_ptr<TTestDataSet> Countries;
  std::unique_ptr<TTestDataSet> Customers;
  TStringField* CountryName = nullptr;
};

TEST_F(FieldLookup, WithoutCacheEachRecordAsksTheOpenLookupDataSet) {
  Countries->Open();
  Customers->Open();
  EXPECT_EQ(Names(), (std::vector<String>{"France", "Germany", ""}));
  EXPECT_TRUE(CountryName->GetLookup());
  EXPECT_EQ(CountryName->GetFieldNo(), -1);

  // The lookup data set changes: the next calculation shows it.
  Countries->GetTable()->Rows[1][1] = String("La France");
  EXPECT_EQ(Names(), (std::vector<String>{"La France", "Germany", ""}));
  // A closed lookup data set gives no value.
  Countries->Close();
  EXPECT_EQ(Names(), (std::vector<String>{"", "", ""}));
}

TEST_F(FieldLookup, WithCacheTheValuesAreReadOnceWhenTheFieldIsBound) {
  CountryName->SetLookupCache(true);
  Customers->Open();
  EXPECT_FALSE(Countries->GetActive());  // opened to fill the cache, and closed again
  EXPECT_EQ(CountryName->GetLookupList()->GetCount(), 2);
  EXPECT_EQ(Names(), (std::vector<String>{"France", "Germany", ""}));

  Countries->GetTable()->Rows[1][1] = String("La France");
  EXPECT_EQ(Names(), (std::vector<String>{"France", "Germany", ""}));
  CountryName->RefreshLookupList();
  EXPECT_EQ(Names(), (std::vector<String>{"La France", "Germany", ""}));
  EXPECT_EQ(CountryName->GetLookupList()->ValueOfKey(Null()), Null());
}

TEST_F(FieldLookup, IncompleteOrCircularSettingsAreRefused) {
  ExpectMessage([&] { CountryName->SetLookupDataSet(Customers.get()); },
                "Circular datalinks are not allowed");
  CountryName->SetLookupResultField("");
  ExpectMessage([&] { Customers->Open(); },
                "Lookup information for field 'CountryName' is incomplete");
  EXPECT_FALSE(Customers->GetActive());
  CountryName->SetLookupResultField("Population");
  ExpectMessage([&] { Customers->Open(); }, "Field 'Population' not found");
  EXPECT_FALSE(Customers->GetActive());

  // Settings change only while the data set is closed; a freed lookup data set is forgotten.
  CountryName->SetLookupResultField("Name");
  Customers->Open();
  ExpectMessage([&] { CountryName->SetKeyFields("ID"); },
                "Cannot perform this operation on an open dataset");
  Customers->Close();
  Countries.reset();
  EXPECT_EQ(CountryName->GetLookupDataSet(), nullptr);
}

}  // namespace
}  // namespace orv::test
