// Field text: EditText written and read back under two format settings (as a data packet does),
// display and edit formats, Boolean display values, and the text events.

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

const TDateTime Born = EncodeDate(2011, 3, 4);
const TDateTime Alarm = EncodeTime(13, 5, 9, 0);

std::unique_ptr<TTestDataSet> TextDataSet() {
  auto dataSet = MakeDataSet({{"ID", ftInteger},
                              {"Amount", ftFloat},
                              {"Price", ftCurrency},
                              {"Bcd", ftBCD, 2},
                              {"Fmt", ftFMTBcd, 4},
                              {"Born", ftDate},
                              {"Alarm", ftTime},
                              {"Stamp", ftDateTime},
                              {"Midnight", ftDateTime},
                              {"Flag", ftBoolean},
                              {"Name", ftString, 10},
                              {"Empty", ftInteger}},
                             {{-42, 1234.5, 12.5, Currency::FromRaw(32500),
                               VarFMTBcdCreate(StrToBcd("123.4567", DotSettings())), Born, Alarm,
                               Born + Alarm, Born, true, String("a,b"), Null()}});
  dataSet->Open();
  return dataSet;
}

struct TExpectedTexts {
  TFormatSettings Settings;
  std::vector<String> EditTexts;
};

TEST(FieldText, EditTextWrittenAndReadBackUnderTwoFormatSettings) {
  SettingsGuard guard;
  const std::vector<TExpectedTexts> cases = {
      {DotSettings(),
       {"-42", "1234.5", "12.50", "3.25", "123.4567", "2011-03-04", "13:05:09",
        "2011-03-04 13:05:09", "2011-03-04", "True", "a,b", ""}},
      {CommaSettings(),
       {"-42", "1234,5", "12,50", "3,25", "123,4567", "04.03.2011", "13:05:09",
        "04.03.2011 13:05:09", "04.03.2011", "True", "a,b", ""}}};
  for (const TExpectedTexts& expected : cases) {
    FormatSettings = expected.Settings;
    auto dataSet = TextDataSet();
    TFields* fields = dataSet->GetFields();
    std::vector<String> texts;
    for (int i = 0; i < fields->GetCount(); ++i)
      texts.push_back(fields->GetField(i)->GetEditText());
    EXPECT_EQ(texts, expected.EditTexts);

    // Each text set back on a new record gives the value it was made from.
    dataSet->Append();
    for (int i = 0; i < fields->GetCount(); ++i) fields->GetField(i)->SetEditText(texts[i]);
    dataSet->Post();
    const auto& rows = dataSet->GetTable()->Rows;
    for (int i = 0; i < fields->GetCount(); ++i)
      EXPECT_TRUE(VarSameValue(rows[1][i], rows[0][i]) ||
                  VarCompareValue(rows[1][i], rows[0][i]) == vrEqual)
          << fields->GetField(i)->GetFieldName() << ": " << texts[i];
  }
}

TEST(FieldText, DisplayAndEditFormats) {
  SettingsGuard guard;
  FormatSettings = DotSettings();
  auto dataSet = TextDataSet();
  auto* amount = static_cast<TFloatField*>(dataSet->FieldByName("Amount"));
  auto* price = static_cast<TFloatField*>(dataSet->FieldByName("Price"));
  auto* bcd = static_cast<TBCDField*>(dataSet->FieldByName("Bcd"));
  auto* id = static_cast<TIntegerField*>(dataSet->FieldByName("ID"));
  auto* born = static_cast<TDateTimeField*>(dataSet->FieldByName("Born"));

  // Without formats: the general layout with Precision digits, currency (ffCurrency to show,
  // ffFixed to edit) when Currency is set.
  amount->SetPrecision(3);
  EXPECT_EQ(amount->GetDisplayText(), "1.23E3");
  amount->SetPrecision(15);
  EXPECT_EQ(price->GetDisplayText(), "$12.50");
  EXPECT_EQ(price->GetEditText(), "12.50");
  bcd->SetCurrency(true);
  EXPECT_EQ(bcd->GetDisplayText(), "$3.25");
  EXPECT_EQ(bcd->GetEditText(), "3.25");

  // A display format serves editing too until an edit format is set.
  amount->SetDisplayFormat("#,##0.00");
  EXPECT_EQ(amount->GetDisplayText(), "1,234.50");
  EXPECT_EQ(amount->GetEditText(), "1,234.50");
  amount->SetEditFormat("0.0#");
  EXPECT_EQ(amount->GetEditText(), "1234.5");
  id->SetDisplayFormat("0000;(0000)");
  EXPECT_EQ(id->GetDisplayText(), "(0042)");
  born->SetDisplayFormat("d mmm yyyy");
  EXPECT_EQ(born->GetDisplayText(), "4 Mar 2011");
  EXPECT_EQ(born->GetEditText(), "2011-03-04");

  FormatSettings = CommaSettings();
  EXPECT_EQ(amount->GetDisplayText(), "1.234,50");
  EXPECT_EQ(amount->GetEditText(), "1234,5");
  EXPECT_EQ(price->GetDisplayText(), "12,50 EUR");
}

TEST(FieldText, BooleanDisplayValuesAndTextEventsComeFirst) {
  SettingsGuard guard;
  FormatSettings = DotSettings();
  auto dataSet = TextDataSet();
  auto* flag = static_cast<TBooleanField*>(dataSet->FieldByName("Flag"));
  TField* name = dataSet->FieldByName("Name");

  flag->SetDisplayValues("Yes;No");
  EXPECT_EQ(flag->GetDisplayText(), "Yes");
  EXPECT_EQ(flag->GetDisplayWidth(), 3);
  dataSet->Edit();
  flag->SetEditText("n");  // the start of either text, without case
  EXPECT_EQ(flag->GetEditText(), "No");
  ExpectMessage([&] { flag->SetEditText("Nope"); },
                "'Nope' is not a valid boolean value for field 'Flag'");
  ExpectMessage([&] { flag->SetEditText("True"); },
                "'True' is not a valid boolean value for field 'Flag'");
  flag->SetDisplayValues("Checked");  // no text for false: an empty text is false
  flag->SetEditText("");
  EXPECT_FALSE(flag->GetIsNull());
  EXPECT_EQ(flag->GetDisplayText(), "");

  std::vector<String> calls;
  name->SetOnGetText([&](TField* sender, String& text, bool displayText) {
    calls.push_back(displayText ? "display" : "edit");
    text = "<" + sender->GetAsString() + ">";
  });
  name->SetOnSetText([&](TField* sender, const String& text) {
    calls.push_back("set " + text);
    sender->SetAsString(text + text);
  });
  name->SetEditText("ab");
  EXPECT_EQ(name->GetAsString(), "abab");
  EXPECT_EQ(name->GetDisplayText(), "<abab>");
  EXPECT_EQ(name->GetEditText(), "<abab>");
  EXPECT_EQ(calls, (std::vector<String>{"set ab", "display", "edit"}));
  dataSet->Cancel();
  EXPECT_EQ(name->GetAsString(), "a,b");
}

}  // namespace
}  // namespace orv::test
