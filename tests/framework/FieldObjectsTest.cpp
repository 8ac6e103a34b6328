// Object fields: an ADT field's sub-fields found by full name, an array's elements, and a
// data-set field with its nested data set.

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

// ID, Address (Street, City), Phones (two strings).
std::unique_ptr<TTestDataSet> PeopleWithAddresses() {
  auto dataSet = MakeDataSet({{"ID", ftInteger}});
  TFieldDef* address = dataSet->GetFieldDefs()->AddFieldDef();
  address->SetName("Address");
  address->SetDataType(ftADT);
  address->GetChildDefs()->Add("Street", ftString, 20);
  address->GetChildDefs()->Add("City", ftString, 20);
  TFieldDef* phones = dataSet->GetFieldDefs()->AddFieldDef();
  phones->SetName("Phones");
  phones->SetDataType(ftArray);
  phones->SetSize(2);
  phones->GetChildDefs()->Add("Phone", ftString, 10);
  // Rows follow the flat definitions: ID, Address, Address.Street, Address.City, Phones,
  // Phones[0], Phones[1].
  dataSet->AddRow({1, Null(), String("Main St"), String("Springfield"), Null(), String("555-1"),
                   String("555-2")});
  dataSet->SetObjectView(true);
  return dataSet;
}

TEST(FieldObjects, AdtSubFieldsAndArrayElementsByFullName) {
  auto dataSet = PeopleWithAddresses();
  dataSet->Open();
  EXPECT_EQ(dataSet->GetFieldCount(), 3);
  auto* address = static_cast<TADTField*>(dataSet->FieldByName("Address"));
  auto* phones = static_cast<TArrayField*>(dataSet->FieldByName("Phones"));
  EXPECT_EQ(address->ClassName(), "TADTField");
  EXPECT_EQ(address->GetFieldCount(), 2);
  EXPECT_EQ(phones->GetFieldCount(), 2);

  TField* city = dataSet->FieldByName("address.city");
  EXPECT_EQ(city->GetParentField(), address);
  EXPECT_EQ(city->GetFullName(), "Address.City");
  EXPECT_EQ(city->GetAsString(), "Springfield");
  TField* second = dataSet->FieldByName("Phones[1]");
  EXPECT_EQ(second->GetFieldName(), "Phones[1]");
  EXPECT_EQ(second->GetAsString(), "555-2");
  EXPECT_EQ(second->GetDataSet(), dataSet.get());

  const std::vector<String> flat = dataSet->GetFieldList()->ToStringArray();
  EXPECT_EQ(flat, (std::vector<String>{"ID", "Address", "Address.Street", "Address.City", "Phones",
                                       "Phones[0]", "Phones[1]"}));
  EXPECT_EQ(address->GetDisplayText(), "(Main St, Springfield)");
  EXPECT_FALSE(address->GetIsNull());
  EXPECT_EQ(VarArrayGet(phones->GetValue(), {0}), Variant(String("555-1")));

  // Writing through the sub-fields, or the whole object from an array.
  dataSet->Edit();
  address->SetValue(VarArrayOf({String("Elm St"), String("Shelbyville")}));
  second->SetAsString("555-9");
  dataSet->Post();
  const auto& row = dataSet->GetTable()->Rows[0];
  EXPECT_EQ(row[2], Variant(String("Elm St")));
  EXPECT_EQ(row[3], Variant(String("Shelbyville")));
  EXPECT_EQ(row[6], Variant(String("555-9")));
  ExpectMessage([&] { address->SetFieldName("Home"); },
                "Cannot perform this operation on an open dataset");
}

TEST(FieldObjects, DataSetFieldOpensItsNestedDataSetWithTheParent) {
  auto parent = MakeDataSet({{"ID", ftInteger}});
  TFieldDef* orders = parent->GetFieldDefs()->AddFieldDef();
  orders->SetName("Orders");
  orders->SetDataType(ftDataSet);
  orders->GetChildDefs()->Add("Item", ftString, 10);
  orders->GetChildDefs()->Add("Qty", ftInteger);
  TTestTable* nestedRows = parent->GetTable()->AddNested();
  nestedRows->Rows = {{String("pen"), 2}, {String("ink"), 5}};
  parent->AddRow({1, Variant(nestedRows)});
  parent->SetObjectView(true);
  parent->Open();

  auto* field = static_cast<TDataSetField*>(parent->FieldByName("Orders"));
  TDataSet* nested = field->GetNestedDataSet();
  ASSERT_NE(nested, nullptr);
  EXPECT_EQ(nested->GetOwner(), field);
  EXPECT_EQ(nested->GetDataSetField(), field);
  EXPECT_TRUE(nested->GetActive());
  EXPECT_EQ(nested->GetRecordCount(), 2);
  EXPECT_EQ(field->GetFields(), nested->GetFields());
  EXPECT_EQ(field->GetFieldCount(), 2);
  EXPECT_EQ(nested->FieldByName("Qty")->GetAsInteger(), 2);
  EXPECT_FALSE(field->GetIsNull());
  EXPECT_EQ(field->GetDisplayText(), "(DATASET)");
  ExpectMessage([&] { field->GetValue(); }, "Cannot access field 'Orders' as type Variant");
  EXPECT_EQ(parent->GetNestedDataSets()->GetCount(), 1);

  // Default fields go with the close, and their nested data set with them; opening again
  // makes both anew.
  parent->Close();
  EXPECT_EQ(parent->GetNestedDataSets()->GetCount(), 0);
  parent->Open();
  field = static_cast<TDataSetField*>(parent->FieldByName("Orders"));
  EXPECT_TRUE(field->GetNestedDataSet()->GetActive());
  // Freed while open: the parent closes, the field frees its nested data set (the sanitizer
  // checks that nothing is left behind).
}

}  // namespace
}  // namespace orv::test
