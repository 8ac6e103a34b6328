// Validation: OnValidate reads the value being written, in whichever form the field writes it,
// and refusing it leaves the record as it was.

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

TEST(FieldValidation, OnValidateSeesThePendingValueAndARefusalKeepsTheOldOne) {
  SettingsGuard guard;
  FormatSettings = DotSettings();
  auto dataSet =
      MakeDataSet({{"Name", ftString, 4},
                   {"Born", ftDate},
                   {"Price", ftBCD, 2},
                   {"Any", ftVariant},
                   {"Raw", ftVarBytes, 3}},
                  {{String("Ann"), EncodeDate(2000, 1, 1), Currency(5), 1, VarFromBytes({1})}});
  dataSet->Open();
  std::vector<String> seen;
  auto record = [&](TField* sender) {
    seen.push_back(sender->GetIsNull() ? sender->GetFieldName() + " null"
                                       : sender->GetFieldName() + " " + sender->GetAsString());
    if (sender->GetAsString() == "bad") throw EDatabaseError("refused");
  };
  for (int i = 0; i < dataSet->GetFieldCount(); ++i)
    dataSet->GetFields()->GetField(i)->SetOnValidate(record);

  dataSet->Edit();
  TField* name = dataSet->FieldByName("Name");
  std::vector<String> changes;
  name->SetOnChange([&](TField* sender) { changes.push_back(sender->GetAsString()); });
  name->SetAsString("Bobby");  // read back as the data set will keep it: 4 bytes
  ExpectMessage([&] { name->SetAsString("bad"); }, "refused");
  EXPECT_EQ(name->GetAsString(), "Bobb");
  EXPECT_EQ(changes, std::vector<String>{"Bobb"});  // OnChange follows an accepted write only
  EXPECT_EQ(name->GetOldValue(), Variant(String("Ann")));
  EXPECT_EQ(name->GetNewValue(), Variant(String("Bobb")));
  EXPECT_EQ(dataSet->GetState(), dsEdit);
  dataSet->FieldByName("Born")->SetAsString("2001-02-03");  // written in its plain form
  dataSet->FieldByName("Price")->SetAsCurrency(Currency::FromRaw(12345));
  ExpectMessage([&] { dataSet->FieldByName("Any")->SetAsString("bad"); }, "refused");
  EXPECT_EQ(dataSet->FieldByName("Any")->GetAsInteger(), 1);  // refused: the old value stays
  dataSet->FieldByName("Any")->Clear();
  dataSet->FieldByName("Raw")->SetAsBytes({'o', 'k'});
  EXPECT_EQ(seen, (std::vector<String>{"Name Bobb", "Name bad", "Born 2001-02-03", "Price 1.2345",
                                       "Any bad", "Any null", "Raw ok"}));

  // Outside OnValidate the field reads the record again.
  dataSet->Cancel();
  EXPECT_EQ(name->GetAsString(), "Ann");
  EXPECT_EQ(dataSet->FieldByName("Any")->GetAsInteger(), 1);
}

TEST(FieldValidation, FieldsWithoutADataSetOrOutsideEditingRefuseToWrite) {
  TIntegerField loose(nullptr);
  loose.SetFieldName("Loose");
  ExpectMessage([&] { loose.SetAsInteger(1); }, "Field 'Loose' has no dataset");
  ExpectMessage([&] { loose.GetAsInteger(); }, "Field 'Loose' has no dataset");

  auto dataSet = MakeDataSet({{"ID", ftInteger}}, {{1}});
  dataSet->SetName("People");
  dataSet->Open();
  ExpectMessage([&] { dataSet->FieldByName("ID")->SetAsInteger(2); },
                "People: Dataset not in edit or insert mode");
  dataSet->FieldByName("ID")->SetReadOnly(true);
  dataSet->Edit();
  ExpectMessage([&] { dataSet->FieldByName("ID")->SetAsInteger(2); },
                "Field 'ID' cannot be modified");
  EXPECT_FALSE(dataSet->FieldByName("ID")->GetCanModify());
  dataSet->Cancel();
}

}  // namespace
}  // namespace orv::test
