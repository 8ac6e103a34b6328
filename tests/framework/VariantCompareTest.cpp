#include <gtest/gtest.h>

#include <limits>

#include "Variants.h"

namespace orv {
namespace {

struct SettingsGuard {
  TFormatSettings Saved = FormatSettings;
  ~SettingsGuard() { FormatSettings = Saved; }
};

TEST(VariantCompare, NullAndUnassigned) {
  EXPECT_EQ(VarCompareValue(Null(), Null()), vrEqual);
  for (const Variant& other :
       {Variant(), Variant(0), Variant(-1e300), Variant(""), Variant(false)}) {
    EXPECT_EQ(VarCompareValue(Null(), other), vrLessThan) << other;
    EXPECT_EQ(VarCompareValue(other, Null()), vrGreaterThan) << other;
  }
  // Unassigned is the empty value of the other side.
  EXPECT_TRUE(Variant() == 0 && Variant() == "" && Variant() == false && Variant() == 0.0);
  EXPECT_TRUE(Variant() < 1 && Variant() > -1 && Variant() < "a");
  EXPECT_EQ(VarCompareValue(Variant(), Variant()), vrEqual);
  // Sameness is stricter: Unassigned and Null are only themselves.
  EXPECT_FALSE(VarSameValue(Variant(), 0));
  EXPECT_FALSE(VarSameValue(Null(), Variant()));
  EXPECT_TRUE(VarSameValue(Null(), Null()));
  EXPECT_TRUE(VarSameValue(1, 1.0));
}

TEST(VariantCompare, MixedKindsCompareAsThePlatformDoes) {
  SettingsGuard guard;
  FormatSettings = TFormatSettings::Invariant();
  // Text against a number: the text becomes a number, so 10 > "9" although "10" < "9".
  EXPECT_TRUE(Variant(10) > Variant("9"));
  EXPECT_TRUE(Variant("10") < Variant("9"));
  EXPECT_TRUE(Variant(2) > Variant("1.5"));  // not rounded to 2 first
  EXPECT_TRUE(Variant(1.5) == Variant(u"1.5"));
  FormatSettings.DecimalSeparator = ',';
  EXPECT_TRUE(Variant(1.5) == Variant("1,5"));
  FormatSettings.DecimalSeparator = '.';
  EXPECT_THROW((void)(Variant(1) == Variant("one")), EVariantTypeCastError);
  // Text against text: ordinal and case-sensitive, native and wide alike.
  EXPECT_TRUE(Variant("B") < Variant("a"));
  EXPECT_TRUE(Variant("abc") < Variant(u"abd"));
  EXPECT_FALSE(Variant("abc") == Variant("ABC"));
  // Booleans are -1 and 0.
  EXPECT_TRUE(Variant(true) < Variant(false));
  EXPECT_TRUE(Variant(true) == Variant(-1));
  EXPECT_TRUE(Variant(true) == Variant("True"));
  // Integers of every width and sign, exactly.
  const int64_t maxSigned = std::numeric_limits<int64_t>::max();
  EXPECT_TRUE(Variant(maxSigned) < Variant(uint64_t(maxSigned) + 1));
  EXPECT_TRUE(Variant(-1) < Variant(std::numeric_limits<uint64_t>::max()));
  EXPECT_FALSE(Variant(maxSigned) == Variant(maxSigned - 1));  // equal as doubles
  // Currency and decimals against integers and each other, exactly.
  EXPECT_TRUE(Variant(Currency::FromRaw(10001)) > Variant(1));
  EXPECT_TRUE(Variant(StrToBcd("0.1")) == Variant(Currency::FromRaw(1000)));
  EXPECT_TRUE(Variant(StrToBcd("12345678901234567890.1")) >
              Variant(StrToBcd("12345678901234567890")));
  // Dates are numbers of days.
  EXPECT_TRUE(Variant(TDateTime(45000.5)) > Variant(45000));
  EXPECT_TRUE(Variant(TDate(EncodeDate(2024, 1, 1))) == Variant("01/01/2024"));
  EXPECT_TRUE(Variant(TDate(EncodeDate(2024, 1, 2))) > Variant("01/01/2024 12:00:00"));
}

TEST(VariantCompare, ReferencesAndArraysAreEqualOrUnordered) {
  TObject first, second;
  const Variant a(&first), b(&second);
  EXPECT_TRUE(a == Variant(&first));
  EXPECT_EQ(VarCompareValue(a, b), vrNotEqual);
  EXPECT_TRUE(a != b && !(a < b) && !(a > b) && !(a <= b));
  EXPECT_EQ(VarCompareValue(a, 1), vrNotEqual);

  const Variant list = VarArrayOf({1, "two", 3.5});
  EXPECT_TRUE(list == VarArrayOf({1.0, "two", "3.5"}));
  EXPECT_EQ(VarCompareValue(list, VarArrayOf({1, "two"})), vrNotEqual);
  Variant integers = VarArrayCreate({0, 1}, varInteger);
  VarArrayPut(integers, 7, {0});
  EXPECT_TRUE(integers == VarArrayOf({7, 0}));
  EXPECT_EQ(VarCompareValue(integers, 7), vrNotEqual);
}

}  // namespace
}  // namespace orv
