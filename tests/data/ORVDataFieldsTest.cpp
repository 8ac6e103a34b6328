// Field set-up: default fields from definitions (hidden, internally calculated, labels, widths),
// definitions from persistent fields, fields added in code, the field list's slots, and the
// published properties.

#include "ORVDataTestSupport.h"
#include "TestSupport.h"
#include "TypInfo.h"

namespace orv::testing {
namespace {

std::vector<std::string> VisibleFieldNames(const TDataSet& data) {
  std::vector<std::string> names;
  for (int i = 0; i < data.GetFieldCount(); ++i)
    if (data.GetFields()->GetField(i)->GetVisible())
      names.push_back(data.GetFields()->GetField(i)->GetFieldName());
  return names;
}

TEST(ORVDataFields, DefaultFieldsAreHiddenLabelledAndSizedByTheirDefinitions) {
  TORVData data;
  data.GetFieldDefs()->Add("_Code", ftString, 100);
  data.GetFieldDefs()->Add("rowstate", ftInteger);  // an internally calculated name in any case
  data.GetFieldDefs()->Add("Hidden", ftInteger);
  data.GetFieldDefs()->GetItem(2)->SetAttributes(TFieldAttributes{faHiddenMarker});
  TFieldDef* address = data.GetFieldDefs()->AddFieldDef();
  address->SetName("Address");
  address->SetDataType(ftADT);
  address->GetChildDefs()->Add("City", ftString, 10);
  data.SetOnCountRecords([](TDataSet*, int32_t& Count) { Count = 1; });
  data.SetOnGetFieldData([](TDataSet*, int32_t, TField* Field, Variant& Value) {
    Value = Field->GetFieldName();
  });
  data.Open();
  EXPECT_EQ(VisibleFieldNames(data), (std::vector<std::string>{"_Code", "Address"}));
  TField* code = data.FieldByName("_Code");
  EXPECT_EQ(code->GetDisplayLabel(), "Code");
  EXPECT_EQ(code->GetDisplayWidth(), 30);
  EXPECT_EQ(data.FieldByName("rowstate")->GetFieldKind(), fkInternalCalc);
  EXPECT_EQ(data.FieldByName("Address.City")->GetAsString(), "City");

  // Every field of the flat list, sub-fields included, finds its own slot; a stranger none.
  TFieldList* list = data.GetFieldList();
  ASSERT_EQ(list->GetCount(), 5);
  for (int i = 0; i < list->GetCount(); ++i) EXPECT_EQ(list->IndexOfObject(list->GetField(i)), i);
  TPeopleData other(1);
  other->Open();
  EXPECT_EQ(list->IndexOfObject(other.Field("ID")), -1);

  data.SetDefaultWidth(-5);
  EXPECT_EQ(data.GetDefaultWidth(), 0);
  EXPECT_EQ(code->GetDisplayWidth(), 100);
  data.SetDefaultWidth(40);
  EXPECT_EQ(code->GetDisplayWidth(), 40);

  // Other internally calculated names take effect on the next open; the default is not stored.
  data.Close();
  EXPECT_EQ(data.GetInternalCalcFieldNames(), "RowLevel;RowOrder;RowState");
  EXPECT_FALSE(data.IsInternalCalcFieldNamesStored());
  data.SetInternalCalcFieldNames("Hidden");
  EXPECT_TRUE(data.IsInternalCalcFieldNamesStored());
  data.Open();
  EXPECT_EQ(data.FieldByName("Hidden")->GetFieldKind(), fkInternalCalc);
  data.SetInternalCalcFieldNames("RowLevel;RowOrder;RowState");
  EXPECT_FALSE(data.IsInternalCalcFieldNamesStored());
}

TEST(ORVDataFields, PersistentFieldsGiveTheDefinitionsAndCalculatedFieldsStayInTheRecord) {
  TORVData data;
  data.SetName("Shop");
  data.GetFieldDefs()->Add("Stale", ftInteger);
  EXPECT_TRUE(data.GetStoreDefs());  // the definitions were changed from outside
  TField* id = data.AddDataField("ID", ftInteger);
  TField* name = data.AddDataField("Name", ftString, 30);
  name->SetVisible(false);
  name->SetRequired(true);
  TField* twice = data.AddCalcField("Twice", ftInteger);
  EXPECT_EQ(twice->GetFieldKind(), fkCalculated);
  EXPECT_TRUE(twice->GetReadOnly());
  Calls log;
  data.SetOnCountRecords([](TDataSet*, int32_t& Count) { Count = 2; });
  data.SetOnGetFieldData([&](TDataSet*, int32_t Index, TField* Field, Variant& Value) {
    log.push_back("get " + Field->GetFieldName());
    Value = Field == id ? Variant(Index + 1) : Variant("N" + std::to_string(Index));
  });
  data.SetOnSetFieldData([&](TDataSet*, int32_t, TField* Field, const Variant&) {
    log.push_back("set " + Field->GetFieldName());
  });
  data.SetOnCalcFields([&](TDataSet*) { twice->SetAsInteger(id->GetAsInteger() * 2); });
  data.Open();

  // The two data fields outnumber the one stale definition, which gives way to theirs.
  TFieldDefs* defs = data.GetFieldDefs();
  ASSERT_EQ(defs->GetCount(), 2);
  EXPECT_EQ(defs->GetItem(1)->GetName(), "Name");
  EXPECT_EQ(defs->GetItem(1)->GetSize(), 30);
  EXPECT_EQ(defs->GetItem(1)->GetAttributes(), (TFieldAttributes{faRequired, faHiddenMarker}));
  EXPECT_EQ(twice->GetAsInteger(), 2);
  data.Next();
  EXPECT_EQ(twice->GetAsInteger(), 4);
  data.Edit();
  name->SetAsString("changed");
  data.Post();
  // Each fetch calculates (reading ID); the calculated field never reaches the application.
  EXPECT_EQ(log, (Calls{"get ID", "get ID", "set Name", "get ID"}));

  ExpectError<EDatabaseError>([&] { data.AddDataField("More", ftInteger); },
                              "Shop: Cannot perform this operation on an open dataset");
  EXPECT_EQ(data.GetFieldCount(), 3);

  // Made again from the definitions, the invisible field comes out invisible.
  data.Close();
  data.RemoveFields();
  data.AddAllFields();
  EXPECT_EQ(VisibleFieldNames(data), std::vector<std::string>{"ID"});
  EXPECT_EQ(data.GetFieldCount(), 2);
}

TEST(ORVDataFields, PublishedPropertiesKeepTheirDefaultsOutOfFormFiles) {
  TORVData data;
  for (const char* name : {"Active", "AutoCalcFields", "DefaultWidth", "Filtered", "ObjectView",
                           "ReadOnly", "Reversed", "Sorted", "StoreDefs"})
    EXPECT_TRUE(IsDefaultPropValue(&data, FindPropInfo(&data, name))) << name;
  EXPECT_FALSE(IsStoredProp(&data, "FieldDefs"));
  EXPECT_FALSE(IsStoredProp(&data, "InternalCalcFieldNames"));
  data.SetStoreDefs(true);
  data.SetInternalCalcFieldNames("Level");
  EXPECT_TRUE(IsStoredProp(&data, "FieldDefs"));
  EXPECT_TRUE(IsStoredProp(&data, "InternalCalcFieldNames"));

  data.GetFieldDefs()->Add("ID", ftInteger);
  SetMethodProp(&data, "OnCountRecords",
                TMethod(TCountRecordsEvent([](TDataSet*, int32_t& Count) { Count = 3; })));
  SetOrdProp(&data, FindPropInfo(&data, "Active"), 1);
  EXPECT_EQ(data.GetRecordCount(), 3);
}

}  // namespace
}  // namespace orv::testing
