// A data set's fields: default and persistent fields, binding, fields by name and by lists,
// calculated and lookup values, the plain and native forms of field data, and field text under
// two sets of format settings.

#include <gtest/gtest.h>

#include "DataSetTestSupport.h"
#include "SysUtils.h"
#include "TryFinally.h"

namespace orv::test {
namespace {

template <class F>
F* AddField(TDataSet& dataSet, const String& name, TFieldKind kind = fkData, int32_t size = 0) {
  auto* field = new F(&dataSet);  // owned by the data set
  field->SetFieldName(name);
  if (size) field->SetSize(size);
  field->SetFieldKind(kind);
  field->SetDataSet(&dataSet);
  return field;
}

// Persistent fields for every definition, as the designer's "add all fields" makes them.
void AddAllFields(TDataSet& dataSet) {
  for (int i = 0; i < dataSet.GetFieldDefs()->GetCount(); ++i)
    dataSet.GetFieldDefs()->GetItem(i)->CreateField(&dataSet);
}

TEST(DataSetFields, CalculatedAndLookupFieldsFollowTheRecord) {
  TTestDataSet cities;
  cities.GetFieldDefs()->Add("CityID", ftInteger);
  cities.GetFieldDefs()->Add("CityName", ftString, 20);
  cities.AddRow({1, "Oslo"});
  cities.AddRow({2, "Rome"});
  TTestDataSet people;
  people.GetFieldDefs()->Add("Name", ftString, 20);
  people.GetFieldDefs()->Add("CityID", ftInteger);
  people.AddRow({"Ann", 2});
  people.AddRow({"Bob", 1});
  people.AddRow({"Cid", 3});
  AddAllFields(people);
  AddField<TStringField>(people, "Label", fkCalculated, 30);
  TField* city = AddField<TStringField>(people, "City", fkLookup);
  city->SetKeyFields("CityID");
  city->SetLookupDataSet(&cities);
  city->SetLookupKeyFields("CityID");
  city->SetLookupResultField("CityName");
  people.SetOnCalcFields([](TDataSet* dataSet) {
    dataSet->FieldByName("Label")->SetAsString(dataSet->FieldByName("Name")->GetAsString() + " #" +
                                               std::to_string(dataSet->GetRecNo()));
  });
  cities.Open();
  people.Open();
  EXPECT_FALSE(people.GetDefaultFields());
  EXPECT_GT(people.GetCalcFieldsSize(), 0);
  TField* label = people.FieldByName("Label");
  EXPECT_EQ(label->GetFieldNo(), -1);
  EXPECT_EQ(label->GetAsString(), "Ann #1");
  EXPECT_EQ(city->GetAsString(), "Rome");
  people.Next();
  EXPECT_EQ(label->GetAsString(), "Bob #2");
  EXPECT_EQ(city->GetAsString(), "Oslo");
  people.Next();
  EXPECT_TRUE(city->GetIsNull());  // no city 3

  // While editing, changes recalculate at once; without AutoCalcFields only when fetched.
  people.Edit();
  people.FieldByName("CityID")->SetAsInteger(1);
  people.FieldByName("Name")->SetAsString("Cy");
  EXPECT_EQ(city->GetAsString(), "Oslo");
  EXPECT_EQ(label->GetAsString(), "Cy #3");
  people.SetAutoCalcFields(false);
  people.FieldByName("Name")->SetAsString("Cyd");
  EXPECT_EQ(label->GetAsString(), "Cy #3");
  people.Post();
  EXPECT_EQ(label->GetAsString(), "Cyd #3");
  people.SetAutoCalcFields(true);

  // With its cache a lookup field reads the values it kept when it was bound.
  people.Close();
  city->SetLookupCache(true);
  people.Open();
  cities.GetTable()->Rows[1][1] = "Roma";
  EXPECT_EQ(city->GetAsString(), "Rome");
  city->RefreshLookupList();
  people.Refresh();
  EXPECT_EQ(city->GetAsString(), "Roma");
}

TEST(DataSetFields, FieldsByNameAndByLists) {
  auto people = MakePeople(2);
  people->Open();
  EXPECT_EQ(people->FieldByName("name"), people->FindField("NAME"));
  EXPECT_EQ(people->FindField("Nope"), nullptr);
  EXPECT_EQ(people->FieldByNumber(3), people->FieldByName("Age"));
  Variant values = people->GetFieldValues("ID; Name");
  ASSERT_TRUE(VarIsArray(values));
  EXPECT_EQ(values[0], Variant(1));
  EXPECT_EQ(values[1], Variant("Name1"));
  EXPECT_EQ(people->GetFieldValues("Age"), Variant(21));

  people->Edit();
  people->SetFieldValues("Name;Age", VarArrayOf({"Ann", 40}));
  people->Post();
  EXPECT_EQ(people->GetTable()->Rows[0][1], Variant("Ann"));
  EXPECT_EQ(people->GetTable()->Rows[0][2], Variant(40));

  std::vector<TField*> list;
  EXPECT_THROW(people->GetFieldList(list, "ID;Nope"), EDatabaseError);
  TStringList names;
  people->GetFieldNames(&names);
  EXPECT_EQ(names.GetCommaText(), "ID,Name,Age");
  people->Close();
  names.Clear();
  people->GetFieldNames(&names);  // closed: the definitions' names
  EXPECT_EQ(names.GetCommaText(), "ID,Name,Age");
}

TEST(DataSetFields, BindingRefusesFieldsTheDefinitionsDoNotServe) {
  auto people = MakePeople(1);
  people->SetName("People");
  AddField<TIntegerField>(*people, "Missing");
  try {
    people->Open();
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Field 'Missing' not found");
  }
  EXPECT_FALSE(people->GetActive());
  EXPECT_FALSE(people->IsCursorOpen());
  delete people->FieldByName("Missing");

  AddField<TStringField>(*people, "ID", fkData, 10);
  try {
    people->Open();
    FAIL();
  } catch (const EDatabaseError& e) {
    EXPECT_STREQ(e.what(), "People: Type mismatch for field 'ID', expecting: String actual: Integer");
  }
  EXPECT_FALSE(people->GetActive());
}

TEST(DataSetFields, PlainAndNativeFormsConvertBothWays) {
  TTestDataSet data;
  data.GetFieldDefs()->Add("Day", ftDate);
  data.GetFieldDefs()->Add("Clock", ftTime);
  data.GetFieldDefs()->Add("Moment", ftDateTime);
  data.GetFieldDefs()->Add("Price", ftBCD, 2);
  data.GetFieldDefs()->Add("Code", ftVarBytes, 4);
  data.Open();
  TField* day = data.FieldByName("Day");
  TField* clock = data.FieldByName("Clock");
  TField* moment = data.FieldByName("Moment");

  TDateTimeRec native{};
  double plain = 0;
  data.DataConvert(day, &plain, &native, true);
  EXPECT_EQ(native.Date, 693594);  // 1899-12-30, counted from 0001-01-01 as day 1
  plain = 0.75;
  data.DataConvert(clock, &plain, &native, true);
  EXPECT_EQ(native.Time, 64800000);
  for (double value : {1.5, -1.25, 40606.999}) {
    data.DataConvert(moment, &value, &native, true);
    double back = 0;
    data.DataConvert(moment, &native, &back, false);
    EXPECT_NEAR(back, value, 1e-8) << value;
  }

  // Variable bytes: the length first, cut to the field's size.
  TField* code = data.FieldByName("Code");
  const Variant six = VarFromBytes(TBytes{1, 2, 3, 4, 5, 6});
  uint8_t raw[6] = {};
  data.DataConvert(code, &six, raw, true);
  EXPECT_EQ(TBytes(raw, raw + 6), (TBytes{4, 0, 1, 2, 3, 4}));
  Variant bytes;
  data.DataConvert(code, raw, &bytes, false);
  EXPECT_EQ(VarToBytes(bytes), (TBytes{1, 2, 3, 4}));

  // Through the fields: the data set keeps the native forms, the fields read the plain ones.
  const double when = EncodeDate(2011, 3, 4) + EncodeTime(13, 5, 0, 0);
  data.Append();
  moment->SetAsDateTime(when);
  data.FieldByName("Price")->SetAsCurrency(Currency(12.34));
  code->SetAsBytes(TBytes{7, 8});
  data.Post();
  EXPECT_DOUBLE_EQ(data.GetTable()->Rows[0][2].AsDouble(), when);
  EXPECT_EQ(moment->GetAsDateTime().Val, when);
  EXPECT_EQ(data.FieldByName("Price")->GetAsCurrency(), Currency(12.34));
  EXPECT_EQ(code->GetAsBytes(), (TBytes{7, 8}));
}

TEST(DataSetFields, TextFollowsDisplayAndEditFormatsUnderTwoSettings) {
  const TFormatSettings saved = FormatSettings;
  TScopeExit restore([&] { FormatSettings = saved; });
  TTestDataSet data;
  data.GetFieldDefs()->Add("Amount", ftFloat);
  data.GetFieldDefs()->Add("Day", ftDate);
  data.AddRow({1234.5, EncodeDate(2011, 3, 4)});
  data.Open();
  auto* amount = static_cast<TFloatField*>(data.FieldByName("Amount"));
  amount->SetDisplayFormat("#,##0.00");
  TField* day = data.FieldByName("Day");

  FormatSettings = TFormatSettings::Invariant();
  FormatSettings.ShortDateFormat = "yyyy-mm-dd";
  FormatSettings.DateSeparator = '-';
  EXPECT_EQ(amount->GetDisplayText(), "1,234.50");
  EXPECT_EQ(amount->GetEditText(), "1,234.50");  // without an edit format, the display one
  amount->SetEditFormat("0.###");
  EXPECT_EQ(amount->GetEditText(), "1234.5");
  EXPECT_EQ(day->GetDisplayText(), "2011-03-04");

  FormatSettings.DecimalSeparator = ',';
  FormatSettings.ThousandSeparator = '.';
  FormatSettings.ShortDateFormat = "dd.mm.yyyy";
  FormatSettings.DateSeparator = '.';
  EXPECT_EQ(amount->GetDisplayText(), "1.234,50");
  EXPECT_EQ(day->GetEditText(), "04.03.2011");
  data.Edit();
  amount->SetEditText("5,25");
  day->SetEditText("05.04.2012");
  data.Post();
  EXPECT_EQ(data.GetTable()->Rows[0][0], Variant(5.25));
  EXPECT_EQ(data.GetTable()->Rows[0][1], Variant(EncodeDate(2012, 4, 5)));
  EXPECT_EQ(amount->GetEditText(), "5,25");
  EXPECT_EQ(amount->GetDisplayText(), "5,25");
}

}  // namespace
}  // namespace orv::test
