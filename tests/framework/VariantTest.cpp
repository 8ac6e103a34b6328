#include <gtest/gtest.h>

#include <limits>

#include "Variants.h"

namespace orv {
namespace {

// Restores the process-wide settings a test changes, also when it fails.
struct SettingsGuard {
  TFormatSettings Saved = FormatSettings;
  bool SavedStrict = NullStrictConvert;
  ~SettingsGuard() {
    FormatSettings = Saved;
    NullStrictConvert = SavedStrict;
  }
};

void UseDecimalSeparator(char separator) {
  FormatSettings = TFormatSettings::Invariant();
  FormatSettings.DecimalSeparator = separator;
  FormatSettings.ThousandSeparator = separator == ',' ? '.' : ',';
}

template <class E, class F>
void ExpectMessage(F&& action, const char* message) {
  try {
    action();
    ADD_FAILURE() << "no exception, expected: " << message;
  } catch (const E& e) {
    EXPECT_STREQ(e.what(), message);
  }
}

class TCounted : public TInterfacedObject {};

TEST(Variant, SixteenBytesAndTheKindOfEachCppType) {
  EXPECT_EQ(sizeof(Variant), 16u);
  TCounted object;
  const std::pair<Variant, TVarType> cases[] = {
      {Variant(), varEmpty},          {Null(), varNull},
      {true, varBoolean},             {int8_t(-1), varShortInt},
      {uint8_t(1), varByte},          {int16_t(1), varSmallint},
      {uint16_t(1), varWord},         {1, varInteger},
      {1u, varLongWord},              {int64_t(1), varInt64},
      {uint64_t(1), varUInt64},       {1.5f, varSingle},
      {1.5, varDouble},               {Currency(2), varCurrency},
      {TDate(1), varDate},            {TTime(0.5), varDate},
      {"text", varString},            {Memo("memo"), varString},
      {u"wide", varOleStr},           {WideMemo(u"memo"), varOleStr},
      {StrToBcd("1.5"), varFMTBcd},   {TSQLTimeStamp{2024, 1, 2}, varSQLTimeStamp},
      {&object, varObject},           {IInterfacePtr(), varUnknown},
      {IDispatchPtr(), varDispatch},  {TColor(5), varInteger},
  };
  for (const auto& [value, type] : cases)
    EXPECT_EQ(VarTypeAsText(value.VType()), VarTypeAsText(type)) << value;

  EXPECT_TRUE(VarIsClear(Variant(IInterfacePtr())));
  EXPECT_TRUE(VarIsOrdinal(true) && VarIsNumeric(Currency(1)) && VarIsFloat(StrToBcd("1")));
  EXPECT_FALSE(VarIsNumeric(TDateTime(1)) || VarIsStr(1) || VarIsFloat(1));
  EXPECT_TRUE(VarIsType(u"x", {varString, varOleStr}));
}

TEST(Variant, CopiesShareTextAndHoldInterfaceReferences) {
  const Variant text(String(40, 'x'));
  Variant copy = text;
  EXPECT_EQ(copy.StrView().data(), text.StrView().data());  // one block, not a new string
  Variant moved = std::move(copy);
  EXPECT_TRUE(VarIsEmpty(copy));
  EXPECT_EQ(moved.AsString(), String(40, 'x'));

  auto* object = new TCounted;
  {
    IInterfacePtr intf(object);
    Variant a(intf);
    EXPECT_EQ(object->RefCount(), 2);
    {
      Variant b = a, c;
      c = b;
      EXPECT_EQ(object->RefCount(), 4);
      EXPECT_EQ(VarCompareValue(a, c), vrEqual);
      EXPECT_EQ(c.AsInterface().get(), intf.get());
    }
    EXPECT_EQ(object->RefCount(), 2);
    ExpectMessage<EVariantTypeCastError>([&] { a.AsInteger(); },
                                         "Could not convert variant of type (Unknown) into "
                                         "type (Integer)");
  }  // the last reference frees the object; ASan reports a leak or a double free otherwise
}

TEST(VariantConvert, TextAndNumbersFollowTheDecimalSeparator) {
  SettingsGuard guard;
  UseDecimalSeparator('.');
  EXPECT_EQ(Variant("1.5").AsDouble(), 1.5);
  EXPECT_EQ(Variant(2.25).AsString(), "2.25");
  EXPECT_EQ(Variant("2.5").AsInteger(), 2);  // half to even, as the platform rounds
  EXPECT_EQ(Variant(u"3.5").AsInteger(), 4);
  ExpectMessage<EVariantTypeCastError>([] { Variant("1,5").AsDouble(); },
                                       "Could not convert variant of type (String) into type "
                                       "(Double)");

  UseDecimalSeparator(',');
  EXPECT_EQ(Variant("1,5").AsDouble(), 1.5);
  EXPECT_EQ(Variant(u"-0,75").AsSingle(), -0.75f);
  EXPECT_EQ(Variant(2.25).AsString(), "2,25");
  EXPECT_EQ(Variant(Currency::FromRaw(12345)).AsString(), "1,2345");
  EXPECT_EQ(Variant("0,1").AsCurrency().Raw(), 1000);
  EXPECT_EQ(VarToWideStr(1.5), u"1,5");
  ExpectMessage<EVariantTypeCastError>([] { Variant("1.5").AsCurrency(); },
                                       "Could not convert variant of type (String) into type "
                                       "(Currency)");
}

TEST(VariantConvert, NullUnderBothStrictSettingsAndUnassignedAlways) {
  SettingsGuard guard;
  NullStrictConvert = true;
  ExpectMessage<EVariantTypeCastError>([] { Null().AsInteger(); },
                                       "Could not convert variant of type (Null) into type "
                                       "(Integer)");
  EXPECT_THROW(Null().AsString(), EVariantTypeCastError);
  EXPECT_THROW(VarAsType(Null(), varDate), EVariantTypeCastError);
  EXPECT_EQ(VarToStr(Null()), "");  // VarToStr never raises for Null
  EXPECT_EQ(VarToStrDef(Null(), "n/a"), "n/a");
  EXPECT_EQ(VarToStrDef(Variant(), "n/a"), "");
  EXPECT_EQ(Variant().AsInteger(), 0);
  EXPECT_EQ(Variant().AsString(), "");
  EXPECT_FALSE(Variant().AsBoolean());

  NullStrictConvert = false;
  EXPECT_EQ(Null().AsInteger(), 0);
  EXPECT_EQ(Null().AsString(), "");
  EXPECT_EQ(Null().AsWideString(), u"");
  EXPECT_FALSE(Null().AsBoolean());
  EXPECT_EQ(Null().AsCurrency(), Currency());
  EXPECT_EQ(BcdToStr(Null().AsBcd()), "0");
  const Variant converted = VarAsType(Null(), varInteger);
  EXPECT_EQ(converted.VType(), varInteger);
  EXPECT_EQ(converted.AsInteger(), 0);
}

TEST(VariantConvert, BooleanToAndFromTextAndNumbers) {
  SettingsGuard guard;
  UseDecimalSeparator('.');
  EXPECT_EQ(Variant(true).AsInteger(), -1);
  EXPECT_EQ(Variant(true).AsDouble(), -1.0);
  EXPECT_EQ(Variant(true).AsCurrency(), Currency(-1));
  EXPECT_EQ(Variant(true).AsString(), "True");
  EXPECT_EQ(Variant(false).AsString(), "False");
  EXPECT_EQ(VarToWideStr(true), u"True");
  EXPECT_TRUE(Variant("TRUE").AsBoolean());
  EXPECT_FALSE(Variant(u"false").AsBoolean());
  EXPECT_FALSE(Variant("0").AsBoolean());
  EXPECT_TRUE(Variant(2).AsBoolean());
  EXPECT_TRUE(Variant(0.5).AsBoolean());
  EXPECT_EQ(Variant("True").AsInteger(), -1);
  EXPECT_EQ(VarAsType(Variant("false"), varBoolean).VType(), varBoolean);
  ExpectMessage<EVariantTypeCastError>([] { Variant("yes").AsBoolean(); },
                                       "Could not convert variant of type (String) into type "
                                       "(Boolean)");
  ExpectMessage<EVariantOverflowError>([] { Variant(true).AsByte(); },
                                       "Overflow while converting variant of type (Boolean) "
                                       "into type (Byte)");
}

TEST(VariantConvert, IntegerConversionsCheckTheRange) {
  EXPECT_EQ(Variant(255).AsByte(), 255);
  EXPECT_EQ(Variant(int64_t(std::numeric_limits<int32_t>::min())).AsInteger(),
            std::numeric_limits<int32_t>::min());
  EXPECT_EQ(Variant(std::numeric_limits<uint64_t>::max()).AsUInt64(),
            std::numeric_limits<uint64_t>::max());
  EXPECT_EQ(Variant("18446744073709551615").AsUInt64(), std::numeric_limits<uint64_t>::max());
  EXPECT_EQ(Variant(Currency::FromRaw(35000)).AsInteger(), 4);  // half to even
  EXPECT_EQ(Variant(Currency::FromRaw(-25000)).AsInteger(), -2);
  ExpectMessage<EVariantOverflowError>([] { Variant(256).AsByte(); },
                                       "Overflow while converting variant of type (Integer) "
                                       "into type (Byte)");
  ExpectMessage<EVariantOverflowError>([] { Variant(int64_t(1) << 40).AsInteger(); },
                                       "Overflow while converting variant of type (Int64) into "
                                       "type (Integer)");
  EXPECT_THROW(Variant(-1).AsUInt64(), EVariantOverflowError);
  EXPECT_THROW(Variant(-1).AsLongWord(), EVariantOverflowError);
  EXPECT_THROW(Variant(std::numeric_limits<uint64_t>::max()).AsInt64(), EVariantOverflowError);
  EXPECT_THROW(Variant(40000).AsSmallint(), EVariantOverflowError);
  EXPECT_THROW(Variant(1e20).AsInt64(), EVariantOverflowError);
  EXPECT_THROW(Variant("99999999999").AsInteger(), EVariantOverflowError);
  EXPECT_THROW(Variant(1e300).AsSingle(), EVariantOverflowError);
  EXPECT_THROW(Variant(1e300).AsCurrency(), EVariantOverflowError);
}

TEST(VariantConvert, CurrencyAndDecimalsNeverTakeADetourThroughDouble) {
  SettingsGuard guard;
  UseDecimalSeparator('.');
  const Currency sum = Variant("0.1").AsCurrency() + Variant(u"0.2").AsCurrency();
  EXPECT_EQ(sum, Variant("0.3").AsCurrency());
  EXPECT_EQ(Variant(sum).AsString(), "0.3");
  // 18 significant digits: a double keeps 15 to 17 of them.
  const char* big = "12345678901234.5678";
  EXPECT_EQ(VarAsType(Variant(big), varCurrency).AsString(), big);
  EXPECT_EQ(BcdToStr(Variant(Variant(big).AsCurrency()).AsBcd()), big);
  const char* decimal = "1234567890123456789012.3456789";
  EXPECT_EQ(Variant(decimal).AsBcd(), StrToBcd(decimal));
  EXPECT_EQ(VarAsType(Variant(decimal), varFMTBcd).AsString(), decimal);
  EXPECT_EQ(Variant(StrToBcd("922337203685477.5807")).AsCurrency(),
            Currency::FromRaw(std::numeric_limits<int64_t>::max()));
  EXPECT_THROW(Variant(StrToBcd("922337203685477.5808")).AsCurrency(), EVariantOverflowError);
  EXPECT_EQ(BcdToStr(Variant(0.1f).AsBcd()), "0.1");  // a float's own digits
}

TEST(VariantConvert, DatesToAndFromText) {
  SettingsGuard guard;
  FormatSettings = TFormatSettings::Invariant();
  FormatSettings.ShortDateFormat = "yyyy-mm-dd";
  FormatSettings.DateSeparator = '-';
  FormatSettings.LongTimeFormat = "hh:nn:ss";
  const TDateTime leapDay = EncodeDate(2024, 2, 29);
  const TDateTime afternoon = leapDay.Val + EncodeTime(13, 5, 9, 0).Val;
  EXPECT_EQ(Variant(afternoon).AsString(), "2024-02-29 13:05:09");
  EXPECT_EQ(Variant(TDate(leapDay)).AsString(), "2024-02-29");  // midnight: no time
  EXPECT_NEAR(Variant("2024-02-29 13:05:09").AsDateTime().Val, afternoon.Val, 1e-9);
  const Variant date = VarAsType(Variant(u"2024-02-29"), varDate);
  EXPECT_EQ(date.VType(), varDate);
  EXPECT_EQ(date.AsDouble(), leapDay.Val);
  EXPECT_EQ(Variant(45000).AsDateTime().Val, 45000.0);
  EXPECT_EQ(Variant(afternoon).As<TDate>().Val, afternoon.Val);
  ExpectMessage<EVariantTypeCastError>([] { Variant("29.02.2024").AsDateTime(); },
                                       "Could not convert variant of type (String) into type "
                                       "(Date)");
}

TEST(VariantConvert, KindsNamesAndTypedAccess) {
  const Variant integer = VarAsType(Variant("42"), varInteger);
  EXPECT_EQ(integer.VType(), varInteger);
  EXPECT_EQ(integer.As<int>(), 42);
  const Variant unicode = VarAsType(42, varUString);
  EXPECT_EQ(unicode.VType(), varUString);
  EXPECT_EQ(unicode.WideStrView(), u"42");
  EXPECT_EQ(Variant(u"Gr\u00FC\u00DFe").AsString(), "Gr\xC3\xBC\xC3\x9F" "e");
  EXPECT_EQ(Variant("\xE2\x82\xAC").As<WideString>(), u"\u20AC");
  EXPECT_EQ(Variant(65).As<Memo>(), Memo("65"));

  EXPECT_EQ(VarTypeAsText(varArray | varByte), "Array Byte");
  EXPECT_EQ(VarTypeAsText(varUString), "UnicodeString");
  EXPECT_EQ(VarTypeAsText(VarFMTBcd()), "FMTBcdVariantType");
  EXPECT_EQ(VarTypeAsText(0x0FFE), "$0FFE");
  EXPECT_THROW(VarAsType(1, 0x0FFE), EVariantBadVarTypeError);

  TCounted object;
  EXPECT_EQ(Variant(&object).As<TInterfacedObject*>(), &object);
  EXPECT_EQ(Variant().As<TInterfacedObject*>(), nullptr);
  EXPECT_THROW(Variant(&object).AsString(), EVariantTypeCastError);
  TObject plain;
  ExpectMessage<EInvalidCast>([&] { Variant(&plain).As<TInterfacedObject*>(); },
                              "Invalid class typecast");
}

}  // namespace
}  // namespace orv
