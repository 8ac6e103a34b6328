#include <gtest/gtest.h>

#include <limits>

#include "FMTBcd.h"
#include "Variants.h"

namespace orv {
namespace {

struct SettingsGuard {
  TFormatSettings Saved = FormatSettings;
  ~SettingsGuard() { FormatSettings = Saved; }
};

TEST(FMTBcd, TextRoundTripsExactlyUnderEitherSeparator) {
  SettingsGuard guard;
  FormatSettings = TFormatSettings::Invariant();
  for (const char* text : {"12345678901234567890.123456789", "-0.000000000000000000001", "0",
                           "9999999999999999999999999999999999999999999999999999999999999999",
                           "-1"}) {
    EXPECT_EQ(BcdToStr(StrToBcd(text)), text);
  }
  const TBcd value = StrToBcd(" +1234.50 ");
  EXPECT_EQ(BcdToStr(value), "1234.5");  // no trailing decimal zeros
  EXPECT_EQ(BcdScale(value), 2);         // but the scale as written
  EXPECT_EQ(BcdPrecision(value), 6);
  EXPECT_EQ(BcdPrecision(StrToBcd("0.05")), 2);
  EXPECT_EQ(BcdToStr(StrToBcd("1.5E3")), "1500");
  EXPECT_EQ(BcdToStr(StrToBcd("15e-4")), "0.0015");
  // Trailing zeros past 64 digits are dropped; significant digits past 64 are an overflow.
  EXPECT_EQ(BcdToStr(StrToBcd("1." + String(70, '0'))), "1");
  EXPECT_THROW(StrToBcd(String(65, '9')), EBcdOverflowException);
  TBcd untouched = StrToBcd("7");
  EXPECT_FALSE(TryStrToBcd(String(65, '9'), untouched));
  EXPECT_EQ(BcdToStr(untouched), "7");
  try {
    StrToBcd("1.2.3");
    ADD_FAILURE();
  } catch (const EConvertError& e) {
    EXPECT_STREQ(e.what(), "'1.2.3' is not a valid BCD value");
  }

  FormatSettings.DecimalSeparator = ',';
  EXPECT_EQ(BcdToStr(StrToBcd("-12,0625")), "-12,0625");
  EXPECT_FALSE(TryStrToBcd("12.5", untouched));
  EXPECT_EQ(BcdToStr(StrToBcd("12.5", TFormatSettings::Invariant())), "12,5");
}

TEST(FMTBcd, SumsAndComparisonsAreExact) {
  TBcd sum;
  BcdAdd(StrToBcd("0.1", TFormatSettings::Invariant()),
         StrToBcd("0.2", TFormatSettings::Invariant()), sum);
  EXPECT_EQ(sum, StrToBcd("0.3", TFormatSettings::Invariant()));  // 0.1 + 0.2 != 0.3 in doubles
  const auto bcd = [](const char* text) { return StrToBcd(text, TFormatSettings::Invariant()); };
  BcdAdd(bcd("100000000000000000000"), bcd("0.0000000001"), sum);
  EXPECT_EQ(BcdToStr(sum, TFormatSettings::Invariant()), "100000000000000000000.0000000001");
  BcdSubtract(bcd("1.25"), bcd("3.5"), sum);
  EXPECT_EQ(BcdToStr(sum, TFormatSettings::Invariant()), "-2.25");
  BcdSubtract(bcd("-0.5"), bcd("-0.5"), sum);
  EXPECT_FALSE(IsBcdNegative(sum));
  EXPECT_THROW(BcdAdd(bcd(String(64, '9').c_str()), bcd("1"), sum), EBcdOverflowException);

  EXPECT_EQ(BcdCompare(bcd("1.50"), bcd("1.5")), 0);
  EXPECT_EQ(BcdCompare(bcd("-0"), bcd("0")), 0);
  EXPECT_EQ(BcdCompare(bcd("-2"), bcd("-1")), -1);
  EXPECT_EQ(BcdCompare(bcd("10"), bcd("9.99")), 1);
  EXPECT_EQ(BcdCompare(bcd("0.0001"), bcd("0.001")), -1);
}

TEST(FMTBcd, CurrencyDoubleAndIntegerConversions) {
  const auto invariant = TFormatSettings::Invariant();
  TBcd bcd;
  ASSERT_TRUE(CurrToBCD(Currency::FromRaw(std::numeric_limits<int64_t>::max()), bcd));
  EXPECT_EQ(BcdToStr(bcd, invariant), "922337203685477.5807");
  Currency back;
  ASSERT_TRUE(BCDToCurr(bcd, back));
  EXPECT_EQ(back.Raw(), std::numeric_limits<int64_t>::max());
  ASSERT_TRUE(BCDToCurr(StrToBcd("0.00005", invariant), back));
  EXPECT_EQ(back.Raw(), 0);  // half to even at the fourth decimal
  ASSERT_TRUE(BCDToCurr(StrToBcd("-0.00015", invariant), back));
  EXPECT_EQ(back.Raw(), -2);
  EXPECT_FALSE(BCDToCurr(StrToBcd("1e15", invariant), back));
  EXPECT_FALSE(CurrToBCD(Currency(123), bcd, 4, 2));

  EXPECT_EQ(BcdToStr(DoubleToBcd(0.1), invariant), "0.1");
  EXPECT_EQ(BcdToStr(DoubleToBcd(-1.5e20), invariant), "-150000000000000000000");
  EXPECT_EQ(BcdToDouble(StrToBcd("0.1", invariant)), 0.1);
  EXPECT_THROW(DoubleToBcd(std::numeric_limits<double>::infinity()), EBcdOverflowException);

  EXPECT_EQ(BcdToInt64(StrToBcd("2.5", invariant)), 2);
  EXPECT_EQ(BcdToInt64(StrToBcd("-3.5", invariant)), -4);
  EXPECT_EQ(BcdToInt64(StrToBcd("-3.9", invariant), true), -3);
  EXPECT_EQ(BcdToStr(IntegerToBcd(std::numeric_limits<int64_t>::min()), invariant),
            "-9223372036854775808");
  EXPECT_THROW(BcdToInt64(StrToBcd("9223372036854775808", invariant)), EBcdOverflowException);

  TBcd normalized;
  ASSERT_TRUE(NormalizeBcd(StrToBcd("123.455", invariant), normalized, 5, 2));
  EXPECT_EQ(BcdToStr(normalized, invariant), "123.46");
  EXPECT_EQ(BcdScale(normalized), 2);
  EXPECT_FALSE(NormalizeBcd(StrToBcd("1234.5", invariant), normalized, 5, 2));
}

TEST(FMTBcd, DecimalVariant) {
  SettingsGuard guard;
  FormatSettings = TFormatSettings::Invariant();
  const Variant v = VarFMTBcdCreate("12345678901234567890.5", 30, 2);
  EXPECT_EQ(v.VType(), VarFMTBcd());
  EXPECT_TRUE(VarIsFMTBcd(v));
  EXPECT_EQ(v.AsString(), "12345678901234567890.5");
  EXPECT_EQ(BcdScale(VarToBcd(v)), 2);
  EXPECT_THROW(VarFMTBcdCreate("123.5", 3, 1), EBcdOverflowException);
  EXPECT_EQ(VarToBcd(Variant("0.1")), StrToBcd("0.1"));
  EXPECT_EQ(VarToBcd(Variant(int64_t(-42))), IntegerToBcd(-42));
  EXPECT_EQ(VarFMTBcdCreate(StrToBcd("2.5")).AsInteger(), 2);
  EXPECT_EQ(VarFMTBcdCreate(StrToBcd("-0.25")).AsDouble(), -0.25);
  EXPECT_THROW(VarFMTBcdCreate(StrToBcd("1e30")).AsInt64(), EVariantOverflowError);
}

}  // namespace
}  // namespace orv
