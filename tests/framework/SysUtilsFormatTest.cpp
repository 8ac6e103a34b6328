#include <gtest/gtest.h>

#include "SysUtils.h"

namespace orv {
namespace {

TEST(FormatText, WidthPrecisionIndexAndStar) {
  const TFormatSettings s;
  EXPECT_EQ(Format("x=%d, %5d|%-5d|%.3d|%.3d", {12, 7, 7, -5, 1234}, s),
            "x=12,     7|7    |-005|1234");
  EXPECT_EQ(Format("%s %0:s %s", {"a", "b"}, s), "a a b");  // an index moves the argument cursor
  EXPECT_EQ(Format("%2:s %1:s %0:s", {"1st", "2nd", "3rd"}, s), "3rd 2nd 1st");
  EXPECT_EQ(Format("[%*d] [%-*d] [%.*f] [%*.*f]", {5, 42, 4, 7, 1, 3.14159, 7, 2, 2.5}, s),
            "[   42] [7   ] [3.1] [   2.50]");
  EXPECT_EQ(Format("%x %.4X %x %x", {255, 10, -1, int64_t(-1)}, s),
            "FF 000A FFFFFFFF FFFFFFFFFFFFFFFF");
  EXPECT_EQ(Format("%x %x %u", {int8_t(-1), int16_t(-2), int16_t(-1)}, s), "FF FFFE 65535");
  EXPECT_EQ(Format("%u %u", {-1, uint64_t(18446744073709551615u)}, s),
            "4294967295 18446744073709551615");
  EXPECT_EQ(Format("%3s|%-3s|%.2s|%s|%s", {"a", "b", "xyz", 'c', WideString(u"\u00e9t\u00e9")}, s),
            "  a|b  |xy|c|\u00e9t\u00e9");
  EXPECT_EQ(Format("%4s|%.1s", {"\u00e9", "\u00e9t\u00e9"}, s), "   \u00e9|\u00e9");  // code points
  EXPECT_EQ(Format("100%% %p", {nullptr}, s), "100% 0000000000000000");
  EXPECT_EQ(Format("no arguments", {}, s), "no arguments");
}

TEST(FormatText, FloatsAndCurrencyWithTheSettings) {
  TFormatSettings s;
  s.DecimalSeparator = ',';
  s.ThousandSeparator = '.';
  s.CurrencyString = "EUR";
  s.CurrencyFormat = 3;
  s.NegCurrFormat = 8;
  s.CurrencyDecimals = 2;
  EXPECT_EQ(Format("%f|%.0f|%.3f", {3.14159, 2.5, -0.0005}, s), "3,14|3|-0,001");
  EXPECT_EQ(Format("%e|%.3e", {1234.5, -0.00012}, s), "1,23450000000000E+003|-1,20E-004");
  EXPECT_EQ(Format("%g|%.2g|%g", {0.5, 123456789.0, 1e20}, s), "0,5|1,2E008|1E020");
  EXPECT_EQ(Format("%n|%.0n", {1234567.891, 1234567.891}, s), "1.234.567,89|1.234.568");
  EXPECT_EQ(Format("%m|%.0m", {-1234.5, 1234.5}, s), "-1.234,50 EUR|1.235 EUR");
  // A currency argument keeps its exact digits.
  EXPECT_EQ(
      Format("%.4f|%m", {Currency::FromRaw(9223372036854775807), Currency::FromRaw(12345)}, s),
      "922337203685477,5807|1,23 EUR");
}

TEST(FormatText, MismatchesRaiseNamingTheFormat) {
  const TFormatSettings s;
  struct Case {
    const char* Format;
    std::initializer_list<FormatArg> Args;
  };
  const Case cases[] = {
      {"%d", {1.5}},       {"%f", {1}},     {"%s", {42}},  {"%d", {"7"}},
      {"%s %s", {"only"}}, {"%y", {1}},     {"%", {1}},    {"%5", {1}},
      {"%*d", {"w", 1}},   {"%3:s", {"a"}}, {"%p", {"a"}}, {"%x", {Currency(1)}},
  };
  for (const Case& c : cases) {
    try {
      Format(c.Format, c.Args, s);
      ADD_FAILURE() << c.Format;
    } catch (const EConvertError& e) {
      EXPECT_EQ(e.Message(),
                "Format '" + String(c.Format) + "' invalid or incompatible with argument");
    }
  }
}

}  // namespace
}  // namespace orv
