// Field values: every data type read and written back through the byte-array and the pointer
// form, native and plain; text cut to the field's size; the cache; the failures of writing.

#include <cstring>
#include <map>

#include "ORVDataTestSupport.h"
#include "TestSupport.h"

namespace orv::testing {
namespace {

struct TDispatchObject : TInterfacedObject, IDispatch {};

struct TTypeCase {
  TFieldType Type;
  int32_t Size;
  Variant Value;              // what the application hands over
  TVarType FromByteArray;     // the kind written back through the byte-array form
  TVarType FromPointer = 0;   // ... through the pointer form, when it differs
};

std::vector<TTypeCase> TypeCases(const IInterfacePtr& intf, const IDispatchPtr& disp) {
  const Variant bytes = VarFromBytes({1, 2, 3, 4});
  return {
      {ftString, 10, "Grüße", varString},
      {ftFixedChar, 5, "abc", varString},
      {ftGuid, 38, "{01234567-89AB-CDEF-0123-456789ABCDEF}", varString},
      {ftWideString, 10, u"Grüße", varOleStr},
      {ftFixedWideChar, 4, u"xy", varOleStr},
      {ftSmallint, 0, -1234, varSmallint},
      {ftInteger, 0, 123456789, varInteger},
      {ftAutoInc, 0, 77, varInteger},
      {ftWord, 0, 65000, varWord},
      {ftShortint, 0, -100, varShortInt},
      {ftByte, 0, 200, varByte},
      {ftLongWord, 0, 4000000000u, varLongWord},
      {ftLargeint, 0, int64_t{-5000000000}, varInt64},
      {ftBoolean, 0, true, varBoolean},
      {ftFloat, 0, 2.25, varDouble},
      {ftCurrency, 0, 19.99, varDouble},
      {ftExtended, 0, -0.5, varDouble},
      {ftSingle, 0, 1.5f, varDouble},
      {ftDate, 0, TDate(45000), varDouble, varDate},
      {ftTime, 0, TTime(0.5), varDouble, varDate},
      {ftDateTime, 0, TDateTime(45000.25), varDouble, varDate},
      {ftBCD, 4, Currency(12.3456), varCurrency},
      {ftFMTBcd, 8, StrToBcd("-123.45"), varFMTBcd},
      {ftTimeStamp, 0, TSQLTimeStamp{2024, 5, 6, 7, 8, 9, 10}, varSQLTimeStamp},
      {ftTimeStampOffset, 0, Variant(TDateTime(45000.5)).AsSQLTimeStampOffset(),
       varSQLTimeStampOffset},
      {ftBytes, 4, bytes, varArray | varByte},
      {ftVarBytes, 8, VarFromBytes({9, 8, 7}), varArray | varByte},
      {ftBlob, 0, bytes, varArray | varByte},
      {ftMemo, 0, "memo", varString},
      {ftGraphic, 0, bytes, varArray | varByte},
      {ftWideMemo, 0, u"wide memo", varOleStr},
      {ftVariant, 0, 42, varInteger},
      {ftInterface, 0, intf, varUnknown},
      {ftIDispatch, 0, disp, varDispatch},
  };
}

bool HasTwoForms(TFieldType type) {
  return type == ftDate || type == ftTime || type == ftDateTime || type == ftBCD ||
         type == ftBytes || type == ftVarBytes;
}

// Reads a value through one buffer form and writes it back the same way.
template <class T>
void CopyObject(TDataSet& data, TField* field, bool native, bool byteArray) {
  TValueBufferObject<T> buffer;
  if (byteArray) {
    ASSERT_TRUE(data.GetFieldData(field, buffer.Buffer(), native));
    data.SetFieldData(field, buffer.Buffer(), native);
  } else {
    ASSERT_TRUE(data.GetFieldData(field, static_cast<void*>(&buffer.Get()), native));
    data.SetFieldData(field, static_cast<const void*>(&buffer.Get()), native);
  }
}

void CopyValue(TDataSet& data, TField* field, bool native, bool byteArray) {
  switch (BufferObjectOf(field->GetDataType(), native)) {
    case TBufferObject::Variant: return CopyObject<Variant>(data, field, native, byteArray);
    case TBufferObject::Interface: return CopyObject<IInterfacePtr>(data, field, native, byteArray);
    case TBufferObject::Dispatch: return CopyObject<IDispatchPtr>(data, field, native, byteArray);
    case TBufferObject::None: break;
  }
  TValueBuffer bytes(byteArray ? 1 : 64, 0);  // the byte-array form grows a short buffer
  if (byteArray) {
    ASSERT_TRUE(data.GetFieldData(field, bytes, native));
    data.SetFieldData(field, bytes, native);
  } else {
    ASSERT_TRUE(data.GetFieldData(field, static_cast<void*>(bytes.data()), native));
    data.SetFieldData(field, static_cast<const void*>(bytes.data()), native);
  }
}

TEST(ORVDataValues, EveryTypeGoesThroughBothBufferFormsNativeAndPlain) {
  IInterfacePtr intf(new TInterfacedObject);
  IDispatchPtr disp(new TDispatchObject);
  const std::vector<TTypeCase> cases = TypeCases(intf, disp);
  TORVData data;
  for (size_t i = 0; i < cases.size(); ++i)
    data.GetFieldDefs()->Add("F" + std::to_string(i), cases[i].Type, cases[i].Size);
  auto caseOf = [&](TField* field) { return cases[static_cast<size_t>(field->GetFieldNo() - 1)]; };
  std::map<std::string, Variant> written;  // "<pass> <field>"
  std::string pass;
  data.SetOnCountRecords([](TDataSet*, int32_t& Count) { Count = 1; });
  data.SetOnGetFieldData(
      [&](TDataSet*, int32_t, TField* Field, Variant& Value) { Value = caseOf(Field).Value; });
  data.SetOnSetFieldData([&](TDataSet*, int32_t, TField* Field, const Variant& Value) {
    written[pass + " " + Field->GetFieldName()] = Value;
  });
  data.Open();

  for (const bool native : {true, false}) {
    for (const bool byteArray : {true, false}) {
      pass = std::string(native ? "native" : "plain") + (byteArray ? " bytes" : " pointer");
      data.Edit();
      for (int i = 0; i < data.GetFieldCount(); ++i) {
        TField* field = data.GetFields()->GetField(i);
        if (native || HasTwoForms(field->GetDataType())) CopyValue(data, field, native, byteArray);
      }
      data.Post();
    }
  }
  for (int i = 0; i < data.GetFieldCount(); ++i) {
    TField* field = data.GetFields()->GetField(i);
    const TTypeCase& expected = caseOf(field);
    SCOPED_TRACE(FieldTypeName(expected.Type));
    EXPECT_TRUE(VarSameValue(field->GetValue(), expected.Value)) << field->GetValue();
    for (const char* form : {"native bytes", "native pointer", "plain bytes", "plain pointer"}) {
      if (std::string(form).starts_with("plain") && !HasTwoForms(expected.Type)) continue;
      const Variant& value = written[std::string(form) + " " + field->GetFieldName()];
      const bool pointer = std::string(form).ends_with("pointer");
      const TVarType kind =
          pointer && expected.FromPointer ? expected.FromPointer : expected.FromByteArray;
      EXPECT_EQ(VarType(value), kind) << form;
      EXPECT_TRUE(VarSameValue(value, expected.Value)) << form << " " << value;
    }
  }
}

TEST(ORVDataValues, TextIsCutToTheFieldSizeBooleansAreWordsAndNothingIsNull) {
  TORVData data;
  data.GetFieldDefs()->Add("Narrow", ftString, 4);
  data.GetFieldDefs()->Add("Short", ftString, 3);
  data.GetFieldDefs()->Add("Wide", ftWideString, 3);
  data.GetFieldDefs()->Add("Empty", ftString, 4);
  data.GetFieldDefs()->Add("Flag", ftBoolean);
  data.GetFieldDefs()->Add("Nothing", ftInteger);
  int asked = 0;
  data.SetOnCountRecords([](TDataSet*, int32_t& Count) { Count = 1; });
  data.SetOnGetFieldData([&](TDataSet*, int32_t, TField* Field, Variant& Value) {
    if (Field->GetFieldName() == "Nothing")
      ++asked;  // assigns nothing: Null, and not asked again for this fetch
    else if (Field->GetDataType() == ftBoolean)
      Value = true;
    else if (Field->GetFieldName() == "Empty")
      Value = "";
    else
      Value = u"Grüße";
  });
  data.Open();
  // "ü" takes two bytes: four bytes end after it, three before it.
  EXPECT_EQ(data.FieldByName("Narrow")->GetAsString(), "Grü");
  EXPECT_EQ(data.FieldByName("Short")->GetAsString(), "Gr");
  EXPECT_EQ(data.FieldByName("Wide")->GetAsWideString(), u"Grü");
  TValueBuffer bytes(8, 0xFF);
  EXPECT_TRUE(data.GetFieldData(data.FieldByName("Empty"), bytes));
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(bytes[1], 0xFF);
  EXPECT_TRUE(data.GetFieldData(data.FieldByName("Flag"), bytes));
  int16_t word;
  std::memcpy(&word, bytes.data(), sizeof word);
  EXPECT_EQ(word, -1);
  EXPECT_TRUE(data.FieldByName("Nothing")->GetIsNull());
  EXPECT_TRUE(data.FieldByName("Nothing")->GetIsNull());
  EXPECT_EQ(asked, 1);
}

TEST(ORVDataValues, WritesAreRefusedBeforeAnythingChangesOrCountAsDataChanges) {
  TPeopleData people(2);
  people->Open();
  ExpectError<EDatabaseError>([&] { people.Field("Name")->SetAsString("x"); },
                              "People: Dataset not in edit or insert mode");
  people.Field("ID")->SetReadOnly(true);
  people->Edit();
  ExpectError<EDatabaseError>([&] { people.Field("ID")->SetAsInteger(9); },
                              "Field 'ID' cannot be modified");
  people.Field("Name")->SetOnValidate([](TField*) { throw EDatabaseError("no"); });
  ExpectError<EDatabaseError>([&] { people.Field("Name")->SetAsString("x"); }, "no");
  EXPECT_EQ(people.Field("Name")->GetAsString(), "Name1");
  EXPECT_FALSE(people->GetModified());
  people.Take();
  people->Post();
  EXPECT_TRUE(people.Take().empty());

  // Only a data field written through a byte array changes the data; a delete always does.
  people->Edit();
  const double score = 7;
  people->SetFieldData(people.Field("Score"), static_cast<const void*>(&score));
  people->Post();
  EXPECT_EQ(people.Take(), Calls{"set 0 Score=7"});
  EXPECT_FALSE(people->GetDataChanged());
  people->Delete();
  EXPECT_TRUE(people->GetDataChanged());
}

// Object types that a record buffer cannot hold as a value: reading names the data set, writing
// does not.
TEST(ORVDataValues, UnsupportedTypesNameTheTypeAndTheField) {
  TORVData data;
  data.SetName("Objects");
  data.GetFieldDefs()->Add("ID", ftInteger);
  TFieldDef* address = data.GetFieldDefs()->AddFieldDef();
  address->SetName("Address");
  address->SetDataType(ftADT);
  address->GetChildDefs()->Add("City", ftString, 10);
  TFieldDef* orders = data.GetFieldDefs()->AddFieldDef();
  orders->SetName("Orders");
  orders->SetDataType(ftDataSet);
  orders->GetChildDefs()->Add("No", ftInteger);
  data.SetOnCountRecords([](TDataSet*, int32_t& Count) { Count = 1; });
  data.SetOnGetFieldData([](TDataSet*, int32_t, TField*, Variant& Value) { Value = 1; });
  data.Open();
  TField* field = data.FieldByName("Address");
  TValueBuffer buffer(8);
  ExpectError<EDatabaseError>([&] { data.GetFieldData(field, buffer); },
                              "Objects: Unsupported field type (ADT) in field Address");
  ExpectError<EDatabaseError>([&] { data.GetFieldData(data.FieldByName("Orders"), buffer); },
                              "Objects: Unsupported field type (DataSet) in field Orders");
  data.Edit();
  ExpectError<EDatabaseError>([&] { data.SetFieldData(field, buffer); },
                              "Unsupported field type (ADT) in field Address");
  EXPECT_EQ(data.FieldByName("Address.City")->GetAsString(), "1");
  data.Cancel();
}

}  // namespace
}  // namespace orv::testing
