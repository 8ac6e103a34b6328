// Field values: every data type through its accessors and Value, in the buffer form the data
// set stores, with the errors for values a field refuses.

#include "FieldTestSupport.h"

namespace orv::test {
namespace {

class FieldValues : public ::testing::Test {
 protected:
  void SetUp() override {
    FormatSettings = DotSettings();
    DataSet = MakeDataSet(
        {{"ID", ftInteger},
         {"Small", ftSmallint},
         {"Word", ftWord},
         {"Short", ftShortint},
         {"Byte", ftByte},
         {"Long", ftLongWord},
         {"Big", ftLargeint},
         {"Flag", ftBoolean},
         {"Amount", ftFloat},
         {"Single", ftSingle},
         {"Price", ftCurrency},
         {"Bcd", ftBCD, 2},
         {"Fmt", ftFMTBcd, 4},
         {"Born", ftDate},
         {"Alarm", ftTime},
         {"Stamp", ftDateTime},
         {"Name", ftString, 5},
         {"Wide", ftWideString, 3},
         {"TS", ftTimeStamp}},
        {{7, int16_t(-5), uint16_t(65535), int8_t(-8), uint8_t(200), uint32_t(4000000000u),
          int64_t(1) << 40, true, 1234.5, 0.25f, Currency::FromRaw(123456), Currency(3),
          VarFMTBcdCreate(StrToBcd("123.4567")), EncodeDate(2011, 3, 4), EncodeTime(13, 5, 9, 0),
          EncodeDate(2011, 3, 4) + EncodeTime(13, 5, 9, 0), String("Smith-Jones"),
          WideString(u"abcdef"), VarSQLTimeStampCreate(TSQLTimeStamp{2011, 3, 4, 13, 5, 9, 250})}});
    DataSet->Open();
  }

  TField* Field(const char* name) { return DataSet->FieldByName(name); }
  const Variant& Stored(int column) { return DataSet->GetTable()->Rows[0][column]; }

  SettingsGuard Guard;
  std::unique_ptr<TTestDataSet> DataSet;
};

TEST_F(FieldValues, EachTypeGetsItsClassAndReadsItsBufferForm) {
  const std::vector<std::pair<const char*, const char*>> classes = {
      {"ID", "TIntegerField"},     {"Small", "TSmallintField"}, {"Word", "TWordField"},
      {"Short", "TShortintField"}, {"Byte", "TByteField"},      {"Long", "TLongWordField"},
      {"Big", "TLargeintField"},   {"Flag", "TBooleanField"},   {"Amount", "TFloatField"},
      {"Single", "TSingleField"},  {"Price", "TCurrencyField"}, {"Bcd", "TBCDField"},
      {"Fmt", "TFMTBCDField"},     {"Born", "TDateField"},      {"Alarm", "TTimeField"},
      {"Stamp", "TDateTimeField"}, {"Name", "TStringField"},    {"Wide", "TWideStringField"},
      {"TS", "TSQLTimeStampField"}};
  for (const auto& [name, className] : classes)
    EXPECT_EQ(Field(name)->ClassName(), className) << name;

  EXPECT_EQ(Field("ID")->GetAsInteger(), 7);
  EXPECT_EQ(Field("Small")->GetAsInteger(), -5);
  EXPECT_EQ(Field("Word")->GetAsInteger(), 65535);
  EXPECT_EQ(Field("Short")->GetAsInteger(), -8);
  EXPECT_EQ(Field("Byte")->GetAsLargeInt(), 200);
  EXPECT_EQ(Field("Long")->GetAsLargeInt(), 4000000000);
  EXPECT_EQ(Field("Big")->GetAsLargeInt(), int64_t(1) << 40);
  EXPECT_TRUE(Field("Flag")->GetAsBoolean());
  EXPECT_EQ(Field("Amount")->GetAsFloat(), 1234.5);
  EXPECT_EQ(Field("Single")->GetAsFloat(), 0.25);
  EXPECT_EQ(Field("Price")->GetAsCurrency(), Currency::FromRaw(123456));
  EXPECT_EQ(Field("Bcd")->GetAsCurrency(), Currency(3));
  EXPECT_EQ(BcdToStr(Field("Fmt")->GetAsBCD()), "123.4567");
  EXPECT_EQ(Field("Born")->GetAsDateTime(), EncodeDate(2011, 3, 4));
  EXPECT_NEAR(Field("Alarm")->GetAsDateTime(), EncodeTime(13, 5, 9, 0), 1e-9);
  EXPECT_EQ(Field("TS")->GetAsSQLTimeStamp().Fractions, 250u);

  // Each Value is of its own kind.
  EXPECT_EQ(VarType(Field("Long")->GetValue()), varLongWord);
  EXPECT_EQ(VarType(Field("Big")->GetValue()), varInt64);
  EXPECT_EQ(VarType(Field("Single")->GetValue()), varSingle);
  EXPECT_EQ(VarType(Field("Bcd")->GetValue()), varCurrency);
  EXPECT_EQ(VarType(Field("Fmt")->GetValue()), varFMTBcd);
  EXPECT_EQ(VarType(Field("Stamp")->GetValue()), varDate);
  EXPECT_EQ(VarType(Field("TS")->GetValue()), varSQLTimeStamp);
  EXPECT_EQ(VarType(Field("Wide")->GetValue()) & varTypeMask, varOleStr);

  // The data set cuts text to Size when it hands it back: bytes for TStringField, UTF-16
  // units for TWideStringField.
  EXPECT_EQ(Field("Name")->GetAsString(), "Smith");
  EXPECT_EQ(Field("Wide")->GetAsWideString(), u"abc");
}

TEST_F(FieldValues, WritesKeepTheirKindAndTextIsStoredWhole) {
  DataSet->Edit();
  Field("ID")->SetAsString("42");
  Field("Small")->SetAsFloat(-2.5);  // rounds half to even
  Field("Long")->SetAsLargeInt(4294967295);
  Field("Flag")->SetAsString("f");  // any start of "False"
  Field("Amount")->SetAsCurrency(Currency::FromRaw(15));
  Field("Price")->SetAsString("9.99");
  Field("Bcd")->SetAsFloat(1.25);
  Field("Fmt")->SetAsString("-0.0001");
  Field("Stamp")->SetAsString("2020-02-29 23:59:58");
  Field("TS")->SetAsDateTime(EncodeDate(2000, 1, 2));
  Field("Name")->SetAsString("Gr\u00F6\u00DFe");  // "Größe", 7 bytes
  Field("Wide")->SetAsString("xyz12");
  DataSet->Post();

  EXPECT_EQ(Stored(0), Variant(42));
  EXPECT_EQ(Field("Small")->GetAsInteger(), -2);
  EXPECT_EQ(Field("Long")->GetAsString(), "4294967295");
  EXPECT_FALSE(Field("Flag")->GetAsBoolean());
  EXPECT_EQ(Field("Amount")->GetAsFloat(), 0.0015);
  EXPECT_EQ(Field("Price")->GetAsString(), "9.99");
  EXPECT_EQ(Field("Bcd")->GetAsString(), "1.25");
  EXPECT_EQ(Field("Fmt")->GetAsString(), "-0.0001");
  EXPECT_EQ(Field("Stamp")->GetAsDateTime(), EncodeDate(2020, 2, 29) + EncodeTime(23, 59, 58, 0));
  EXPECT_EQ(Field("TS")->GetAsSQLTimeStamp(), (TSQLTimeStamp{2000, 1, 2, 0, 0, 0, 0}));
  // The field writes the whole text; reading cuts it to 5 bytes without splitting a character.
  EXPECT_EQ(Stored(16), Variant(String("Gr\u00F6\u00DFe")));
  EXPECT_EQ(Field("Name")->GetAsString(), "Gr\u00F6");
  EXPECT_EQ(Field("Wide")->GetAsString(), "xyz");
}

TEST_F(FieldValues, RefusedValuesRaiseTheFieldMessagesAndChangeNothing) {
  DataSet->Edit();
  ExpectMessage([&] { Field("ID")->SetAsString("12a"); },
                "'12a' is not a valid integer value for field 'ID'");
  ExpectMessage([&] { Field("ID")->SetAsString("3000000000"); },
                "'3000000000' is not a valid integer value for field 'ID'");
  ExpectMessage(
      [&] { Field("Small")->SetAsInteger(40000); },
      "40000 is not a valid value for field 'Small'. The allowed range is -32768 to 32767");
  ExpectMessage([&] { Field("Byte")->SetAsString("-1"); },
                "-1 is not a valid value for field 'Byte'. The allowed range is 0 to 255");
  ExpectMessage([&] { Field("Amount")->SetAsString("1,5"); },
                "'1,5' is not a valid floating point value for field 'Amount'");
  ExpectMessage([&] { Field("Bcd")->SetAsString("x"); },
                "'x' is not a valid floating point value for field 'Bcd'");
  ExpectMessage([&] { Field("Flag")->SetAsString("maybe"); },
                "'maybe' is not a valid boolean value for field 'Flag'");
  ExpectMessage([&] { Field("Flag")->GetAsDateTime(); },
                "Cannot access field 'Flag' as type DateTime");
  ExpectMessage([&] { Field("Born")->GetAsInteger(); },
                "Cannot access field 'Born' as type Integer");

  auto* id = static_cast<TIntegerField*>(Field("ID"));
  id->SetMinValue(1);
  id->SetMaxValue(10);
  ExpectMessage([&] { id->SetAsInteger(11); },
                "11 is not a valid value for field 'ID'. The allowed range is 1 to 10");
  auto* amount = static_cast<TFloatField*>(Field("Amount"));
  amount->SetMaxValue(100);
  ExpectMessage([&] { amount->SetAsFloat(100.5); },
                "100.5 is not a valid value for field 'Amount'. The allowed range is 0 to 100");
  DataSet->Post();
  EXPECT_EQ(Field("ID")->GetAsInteger(), 7);
  EXPECT_EQ(Field("Small")->GetAsInteger(), -5);
  EXPECT_EQ(Field("Amount")->GetAsFloat(), 1234.5);
  EXPECT_TRUE(Field("Flag")->GetAsBoolean());
}

TEST_F(FieldValues, NullReadsAsTheEmptyValueOfEachKind) {
  DataSet->Edit();
  for (int i = 0; i < DataSet->GetFieldCount(); ++i) DataSet->GetFields()->GetField(i)->Clear();
  Field("Flag")->SetAsString("");  // no empty Boolean text: Null
  Field("ID")->SetEditText("");    // an empty edit text clears
  DataSet->Post();
  for (int i = 0; i < DataSet->GetFieldCount(); ++i) {
    TField* field = DataSet->GetFields()->GetField(i);
    EXPECT_TRUE(field->GetIsNull()) << field->GetFieldName();
    EXPECT_TRUE(VarIsNull(field->GetValue())) << field->GetFieldName();
    EXPECT_EQ(field->GetEditText(), "") << field->GetFieldName();
  }
  EXPECT_EQ(Field("ID")->GetAsInteger(), 0);
  EXPECT_EQ(Field("Amount")->GetAsFloat(), 0);
  EXPECT_FALSE(Field("Flag")->GetAsBoolean());
  EXPECT_EQ(Field("Name")->GetAsString(), "");
  EXPECT_EQ(Field("Stamp")->GetAsDateTime(), 0);
  EXPECT_EQ(BcdToStr(Field("Fmt")->GetAsBCD()), "0");
}

TEST_F(FieldValues, AssignValueAndAssignPickTheSetterOfTheValuesKind) {
  DataSet->Edit();
  Field("Name")->AssignValue(true);  // a string field writes "T"
  Field("Amount")->AssignValue(Currency(2));
  Field("Stamp")->AssignValue(String("2001-01-01"));
  Field("Big")->AssignValue(Null());
  ExpectMessage<EVariantError>(
      [&] {
        Field("Price")->AssignValue(VarArrayOf({1, 2}));
      },
      "Could not convert variant of type (Array Variant) into type (Double)");
  Field("ID")->Assign(Field("Byte"));
  DataSet->Post();
  EXPECT_EQ(Field("Name")->GetAsString(), "T");
  EXPECT_EQ(Field("Amount")->GetAsFloat(), 2);
  EXPECT_EQ(Field("Stamp")->GetAsDateTime(), EncodeDate(2001, 1, 1));
  EXPECT_TRUE(Field("Big")->GetIsNull());
  EXPECT_EQ(Field("ID")->GetAsInteger(), 200);
}

}  // namespace
}  // namespace orv::test
