#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "SysUtils.h"

namespace orv {
namespace {

TFormatSettings CommaDecimals() {
  TFormatSettings settings;
  settings.DecimalSeparator = ',';
  settings.ThousandSeparator = '.';
  return settings;
}

template <class F>
void ExpectConvertError(F&& f, const String& message) {
  try {
    f();
    ADD_FAILURE() << "no EConvertError; expected: " << message;
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), message);
  }
}

TEST(FloatText, GeneralFormatSwitchesToExponentWhereThePlatformDoes) {
  EXPECT_EQ(FloatToStr(0.1 + 0.2), "0.3");
  EXPECT_EQ(FloatToStr(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(FloatToStr(-2.5), "-2.5");
  EXPECT_EQ(FloatToStr(-0.0), "0");
  EXPECT_EQ(FloatToStr(0.0001), "0.0001");
  EXPECT_EQ(FloatToStr(0.00001), "1E-5");
  EXPECT_EQ(FloatToStr(-0.000012345), "-1.2345E-5");
  EXPECT_EQ(FloatToStr(123456789012345.0), "123456789012345");
  EXPECT_EQ(FloatToStr(999999999999999.9), "1E15");  // rounding to 15 digits adds a digit
  EXPECT_EQ(FloatToStr(1.5e20), "1.5E20");
  EXPECT_EQ(FloatToStr(0.1f), "0.1");  // 7 digits for float hide its binary tail
  EXPECT_EQ(FloatToStr(std::nan("")), "NAN");
  EXPECT_EQ(FloatToStr(std::numeric_limits<double>::infinity()), "INF");
  EXPECT_EQ(FloatToStr(-std::numeric_limits<double>::infinity()), "-INF");
  EXPECT_EQ(FloatToStr(12.5, CommaDecimals()), "12,5");
}

TEST(FloatText, FixedNumberExponentAndCurrencyLayouts) {
  const TFormatSettings invariant;
  EXPECT_EQ(FloatToStrF(1234.5678, ffFixed, 15, 2, invariant), "1234.57");
  EXPECT_EQ(FloatToStrF(1234.5678, ffFixed, 4, 2, invariant), "1235.00");
  EXPECT_EQ(FloatToStrF(0.125, ffFixed, 15, 2, invariant), "0.13");  // ties away from zero
  EXPECT_EQ(FloatToStrF(-0.001, ffFixed, 15, 2, invariant), "0.00");
  EXPECT_EQ(FloatToStrF(1e20, ffFixed, 15, 2, invariant), "1E20");
  EXPECT_EQ(FloatToStrF(1234567.891, ffNumber, 15, 2, CommaDecimals()), "1.234.567,89");
  EXPECT_EQ(FloatToStrF(1234.5, ffExponent, 4, 2, invariant), "1.235E+03");
  EXPECT_EQ(FloatToStrF(-0.00012, ffExponent, 3, 0, invariant), "-1.20E-4");

  TFormatSettings euro = CommaDecimals();
  euro.CurrencyString = "EUR";
  euro.CurrencyFormat = 3;
  euro.NegCurrFormat = 8;
  EXPECT_EQ(FloatToStrF(1234.5, ffCurrency, 15, 2, euro), "1.234,50 EUR");
  EXPECT_EQ(FloatToStrF(-1234.5, ffCurrency, 15, 2, euro), "-1.234,50 EUR");
  EXPECT_EQ(FloatToStrF(1e-10, ffGeneral, 15, 3, invariant), "1E-010");
}

TEST(FloatText, CurrencyLayoutsAsThePlatformNumbersThem) {
  TFormatSettings s;
  s.CurrencyString = "$";
  const char* const positive[] = {"$1.50", "1.50$", "$ 1.50", "1.50 $"};
  for (uint8_t f = 0; f < 4; ++f) {
    s.CurrencyFormat = f;
    EXPECT_EQ(FloatToStrF(1.5, ffCurrency, 15, 2, s), positive[f]) << int(f);
  }
  const char* const negative[] = {"($1.50)", "-$1.50",  "$-1.50",   "$1.50-",  "(1.50$)", "-1.50$",
                                  "1.50-$",  "1.50$-",  "-1.50 $",  "-$ 1.50", "1.50 $-", "$ 1.50-",
                                  "$ -1.50", "1.50- $", "($ 1.50)", "(1.50 $)"};
  for (uint8_t f = 0; f < 16; ++f) {
    s.NegCurrFormat = f;
    EXPECT_EQ(FloatToStrF(-1.5, ffCurrency, 15, 2, s), negative[f]) << int(f);
    EXPECT_EQ(CurrToStrF(Currency::FromRaw(-15000), ffCurrency, 2, s), negative[f]) << int(f);
  }
}

TEST(FloatText, ParsingFollowsTheDecimalSeparator) {
  const TFormatSettings dot;
  const TFormatSettings comma = CommaDecimals();
  EXPECT_DOUBLE_EQ(StrToFloat(" 12.5 ", dot), 12.5);
  EXPECT_DOUBLE_EQ(StrToFloat("12,5", comma), 12.5);
  EXPECT_DOUBLE_EQ(StrToFloat("-1,5E3", comma), -1500);
  EXPECT_DOUBLE_EQ(StrToFloat(".5", dot), 0.5);
  EXPECT_DOUBLE_EQ(StrToFloat("1e-400", dot), 0);
  EXPECT_EQ(StrToFloat("0.1", dot), 0.1);  // correctly rounded, not accumulated
  EXPECT_TRUE(std::isinf(StrToFloat("-INF", dot)));
  double value = 7;
  for (const char* bad : {"", " ", "1,234.5", "12.5", "1e", "1e+", "--1", "1.2.3", "1e400", "abc"})
    EXPECT_FALSE(TryStrToFloat(bad, value, comma)) << bad;
  EXPECT_EQ(value, 7);
  EXPECT_EQ(StrToFloatDef("x", -1), -1);

  // A double that 15 digits hold survives FloatToStr and back exactly.
  for (double v : {0.1, 123.456, -9.87654321e-7, 4.5e300, 2e-310})
    EXPECT_EQ(StrToFloat(FloatToStr(v, comma), comma), v);
  ExpectConvertError([&] { StrToFloat("1.5", comma); },
                     "'1.5' is not a valid floating point value");
}

TEST(CurrencyText, ExactThroughTheDigits) {
  const TFormatSettings dot;
  EXPECT_EQ(StrToCurr("922337203685477.5807", dot).Raw(), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(StrToCurr("-922337203685477.5808", dot).Raw(), std::numeric_limits<int64_t>::min());
  EXPECT_EQ(CurrToStr(Currency::FromRaw(std::numeric_limits<int64_t>::max()), dot),
            "922337203685477.5807");
  EXPECT_EQ(CurrToStr(Currency::FromRaw(std::numeric_limits<int64_t>::min()), dot),
            "-922337203685477.5808");
  // Half to even at the fifth decimal, the same on both sides of zero.
  EXPECT_EQ(StrToCurr("0.00005", dot).Raw(), 0);
  EXPECT_EQ(StrToCurr("0.00015", dot).Raw(), 2);
  EXPECT_EQ(StrToCurr("0.00025", dot).Raw(), 2);
  EXPECT_EQ(StrToCurr("0.000250001", dot).Raw(), 3);
  EXPECT_EQ(StrToCurr("-0.00015", dot).Raw(), -2);
  EXPECT_EQ(StrToCurr("0.000049999", dot).Raw(), 0);
  EXPECT_EQ(StrToCurr("1.5E2", dot).Raw(), 1500000);
  EXPECT_EQ(StrToCurr("12,34", CommaDecimals()).Raw(), 123400);
  EXPECT_EQ(CurrToStr(Currency::FromRaw(123400), CommaDecimals()), "12,34");
  EXPECT_EQ(CurrToStr(Currency(), dot), "0");

  Currency value = 5;
  EXPECT_FALSE(TryStrToCurr("922337203685477.58075", value, dot));  // rounds past the top
  EXPECT_FALSE(TryStrToCurr("922337203685477.5808", value, dot));
  EXPECT_FALSE(TryStrToCurr("1e15", value, dot));
  EXPECT_FALSE(TryStrToCurr("1,5", value, dot));
  EXPECT_EQ(value.Raw(), 50000);
  ExpectConvertError([&] { StrToCurr("12a", dot); }, "'12a' is not a valid floating point value");

  EXPECT_EQ(CurrToStrF(Currency::FromRaw(12345), ffFixed, 2, dot), "1.23");
  EXPECT_EQ(CurrToStrF(Currency::FromRaw(-12350), ffFixed, 2, dot), "-1.24");
  EXPECT_EQ(CurrToStrF(Currency::FromRaw(12345678900), ffNumber, 2, dot), "1,234,567.89");
}

TEST(PictureFormat, SectionsPlaceholdersAndExponents) {
  const TFormatSettings dot;
  EXPECT_EQ(FormatFloat("#,##0.00", 1234567.891, dot), "1,234,567.89");
  EXPECT_EQ(FormatFloat("#,##0.00", 1234567.891, CommaDecimals()), "1.234.567,89");
  EXPECT_EQ(FormatFloat("0.00", 2.675, dot), "2.67");  // the double lies just below 2.675
  EXPECT_EQ(FormatFloat("0.###", 1.5, dot), "1.5");
  EXPECT_EQ(FormatFloat("#.##", 0.5, dot), ".5");
  EXPECT_EQ(FormatFloat("000-000", 12345, dot), "012-345");
  EXPECT_EQ(FormatFloat("0", 12345, dot), "12345");
  EXPECT_EQ(FormatFloat("'$'#,##0.00", -1234.5, dot), "-$1,234.50");
  EXPECT_EQ(FormatFloat("0.00;(0.00)", -5.5, dot), "(5.50)");
  EXPECT_EQ(FormatFloat("0.00;(0.00);\"zero\"", -0.001, dot), "zero");  // rounds to zero
  EXPECT_EQ(FormatFloat("0.00;;zero", 0, dot), "zero");
  EXPECT_EQ(FormatFloat("0.00E+00", 1234.5, dot), "1.23E+03");
  EXPECT_EQ(FormatFloat("0.0E-0", 0.00012, dot), "1.2E-4");
  EXPECT_EQ(FormatFloat("0.0E-0", 12000, dot), "1.2E4");
  EXPECT_EQ(FormatFloat("", 0.1 + 0.2, dot), "0.3");
  EXPECT_EQ(FormatCurr("#,##0.0000", Currency::FromRaw(std::numeric_limits<int64_t>::max()), dot),
            "922,337,203,685,477.5807");
  EXPECT_EQ(FormatCurr("0.00", Currency::FromRaw(12345), dot), "1.23");
}

TEST(IntegerText, DecimalAndHexadecimalWithinRange) {
  EXPECT_EQ(StrToInt(" 42 "), 42);
  EXPECT_EQ(StrToInt("+7"), 7);
  EXPECT_EQ(StrToInt("-2147483648"), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(StrToInt("$FF"), 255);
  EXPECT_EQ(StrToInt("0x7fffffff"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(StrToInt("$FFFFFFFF"), -1);  // hexadecimal fills every bit
  EXPECT_EQ(StrToInt("-$10"), -16);
  EXPECT_EQ(StrToInt64("9223372036854775807"), std::numeric_limits<int64_t>::max());
  EXPECT_EQ(StrToInt64("-9223372036854775808"), std::numeric_limits<int64_t>::min());
  EXPECT_EQ(StrToInt64("0xFFFFFFFFFFFFFFFF"), -1);
  uint64_t unsignedValue = 0;
  EXPECT_TRUE(TryStrToUInt64("18446744073709551615", unsignedValue));
  EXPECT_EQ(unsignedValue, std::numeric_limits<uint64_t>::max());
  EXPECT_FALSE(TryStrToUInt64("-1", unsignedValue));

  int32_t value = 3;
  for (const char* bad : {"", "$", "0x", "2147483648", "$100000000", "1.0", "1 2", "12a", "- 1"})
    EXPECT_FALSE(TryStrToInt(bad, value)) << bad;
  EXPECT_EQ(value, 3);
  EXPECT_EQ(StrToIntDef("x", -9), -9);
  EXPECT_EQ(StrToInt64Def("9223372036854775808", 5), 5);
  ExpectConvertError([] { StrToInt("12x"); }, "'12x' is not a valid integer value");
  ExpectConvertError([] { StrToInt64(""); }, "'' is not a valid integer value");

  EXPECT_EQ(IntToHex(255, 4), "00FF");
  EXPECT_EQ(IntToHex(-1, 2), "FFFFFFFFFFFFFFFF");
  EXPECT_EQ(IntToStr(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
}

TEST(BooleanText, WordsAndNumbers) {
  EXPECT_EQ(BoolToStr(true), "-1");
  EXPECT_EQ(BoolToStr(false), "0");
  EXPECT_EQ(BoolToStr(true, true), "True");
  EXPECT_EQ(BoolToStr(false, true), "False");
  EXPECT_TRUE(StrToBool("TRUE"));
  EXPECT_FALSE(StrToBool("false"));
  EXPECT_TRUE(StrToBool("-1"));
  EXPECT_TRUE(StrToBool("0.5"));
  EXPECT_FALSE(StrToBool("0"));
  bool value = true;
  EXPECT_FALSE(TryStrToBool("yes", value));
  ExpectConvertError([] { StrToBool("maybe"); }, "'maybe' is not a valid boolean value");
}

}  // namespace
}  // namespace orv
