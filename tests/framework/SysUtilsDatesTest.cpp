#include <gtest/gtest.h>

#include "SysUtils.h"
#include "TestSupport.h"

namespace orv {
namespace {

template <class F>
void ExpectConvertError(F&& f, const String& message) {
  try {
    f();
    ADD_FAILURE() << "no EConvertError; expected: " << message;
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), message);
  }
}

TFormatSettings Settings(const String& shortDate, const String& longTime, char dateSeparator = '/',
                         char timeSeparator = ':') {
  TFormatSettings settings;
  settings.ShortDateFormat = shortDate;
  settings.LongTimeFormat = longTime;
  settings.DateSeparator = dateSeparator;
  settings.TimeSeparator = timeSeparator;
  return settings;
}

TEST(DateCodec, EveryDayOfTheCalendarRoundTrips) {
  EXPECT_EQ(EncodeDate(1899, 12, 30).Val, 0);
  EXPECT_EQ(EncodeDate(1900, 1, 1).Val, 2);
  EXPECT_EQ(EncodeDate(2000, 1, 1).Val, 36526);
  EXPECT_EQ(EncodeDate(1, 1, 1).Val, -693593);
  EXPECT_EQ(EncodeDate(9999, 12, 31).Val, 2958465);

  // Walking day by day checks every month length and leap rule on the way.
  uint16_t year = 1, month = 1, day = 1;
  for (int64_t n = -693593; n <= 2958465; ++n) {
    uint16_t y, m, d;
    DecodeDate(static_cast<double>(n), y, m, d);
    ASSERT_TRUE(y == year && m == month && d == day) << n;
    if (++day > DaysInAMonth(year, month)) {
      day = 1;
      if (++month > 12) month = 1, ++year;
    }
  }
  EXPECT_EQ(DayOfWeek(EncodeDate(2011, 3, 4)), 6);  // a Friday
  EXPECT_EQ(DayOfWeek(EncodeDate(1, 1, 1)), 2);     // a Monday

  ExpectConvertError([] { EncodeDate(2011, 2, 29); }, "Invalid argument to date encode");
  ExpectConvertError([] { EncodeDate(0, 1, 1); }, "Invalid argument to date encode");
  ExpectConvertError([] { EncodeTime(24, 0, 0, 0); }, "Invalid argument to time encode");
  TDateTime unchanged = 5;
  EXPECT_FALSE(TryEncodeTime(1, 60, 0, 0, unchanged));
  EXPECT_EQ(unchanged.Val, 5);
}

TEST(TimeCodec, FractionIsTheTimeAlsoBeforeTheEpoch) {
  for (unsigned ms = 0; ms < 86400000; ms += 997) {
    const auto h = uint16_t(ms / 3600000), m = uint16_t(ms / 60000 % 60),
               s = uint16_t(ms / 1000 % 60), z = uint16_t(ms % 1000);
    uint16_t h2, m2, s2, z2;
    DecodeTime(EncodeTime(h, m, s, z), h2, m2, s2, z2);
    ASSERT_TRUE(h == h2 && m == m2 && s == s2 && z == z2) << ms;
  }
  // -1.25: the day before 1899-12-30, and a quarter past it is 06:00.
  uint16_t y, mo, d, h, mi, s, z;
  DecodeDate(-1.25, y, mo, d);
  DecodeTime(-1.25, h, mi, s, z);
  EXPECT_EQ(y * 10000 + mo * 100 + d, 18991229);
  EXPECT_EQ(h, 6);
  const TFormatSettings invariant;
  EXPECT_EQ(StrToDateTime("12/29/1899 06:00:00", invariant).Val, -1.25);
  EXPECT_EQ(DateTimeToStr(-1.25, invariant), "12/29/1899 06:00:00");
}

TEST(DateTimeFormat, Specifiers) {
  TFormatSettings settings = Settings("d/m/yyyy", "hh:nn:ss", '.', '-');
  const TDateTime value = EncodeDate(2011, 3, 4) + EncodeTime(13, 5, 9, 7);
  EXPECT_EQ(FormatDateTime("yyyy-mm-dd hh:nn:ss.zzz", value, settings), "2011-03-04 13-05-09.007");
  EXPECT_EQ(FormatDateTime("yy/m/d h:n:s z", value, settings), "11.3.4 13-5-9 7");
  EXPECT_EQ(FormatDateTime("ddd dddd mmm mmmm", value, settings), "Fri Friday Mar March");
  EXPECT_EQ(FormatDateTime("h:mm", value, settings), "13-05");  // m after h is minutes
  EXPECT_EQ(FormatDateTime("hh nn dd/mm", value, settings), "13 05 04.03");
  EXPECT_EQ(FormatDateTime("h:nn am/pm|h:nn A/P|hh AMPM", value, settings), "1-05 pm|1-05 P|01 PM");
  EXPECT_EQ(FormatDateTime("\"dd\" 'mm' dd", value, settings), "dd mm 04");
  EXPECT_EQ(FormatDateTime("ddddd|dddddd", value, settings), "4.3.2011|Friday, 04 March 2011");
  EXPECT_EQ(FormatDateTime("c", value, settings), "4.3.2011 13-05-09");
  EXPECT_EQ(FormatDateTime("c", EncodeDate(2011, 3, 4), settings), "4.3.2011");
  EXPECT_EQ(FormatDateTime("t|tt", value, settings), "13-05|13-05-09");
  EXPECT_EQ(FormatDateTime("h AMPM", EncodeTime(0, 30, 0, 0), settings), "12 AM");
  settings.ShortDateFormat = "ddddd";  // a format naming itself stops, it does not recurse
  EXPECT_EQ(DateToStr(value, settings), "");
}

// Text written with a format reads back with the same settings.
TEST(DateTimeParse, RoundTripsUnderSeveralSettings) {
  struct Case {
    TFormatSettings Settings;
    TDateTime Date, Time;
  };
  TFormatSettings twelveHour = Settings("d/m/yy", "h:nn AMPM");
  TFormatSettings dotted = Settings("dd.mm.yyyy", "hh:nn:ss.zzz");
  dotted.DecimalSeparator = ',';
  const Case cases[] = {
      {Settings("yyyy-mm-dd", "hh:nn:ss"), EncodeDate(1999, 12, 31), EncodeTime(23, 59, 58, 0)},
      {Settings("yyyy-mm-dd", "hh:nn:ss", '-'), EncodeDate(2024, 2, 29), EncodeTime(0, 0, 1, 0)},
      {twelveHour, EncodeDate(2011, 3, 4), EncodeTime(13, 5, 0, 0)},
      {twelveHour, EncodeDate(2030, 12, 1), EncodeTime(0, 45, 0, 0)},
      {twelveHour, EncodeDate(1990, 7, 15), EncodeTime(12, 0, 0, 0)},
      {dotted, EncodeDate(1, 1, 1), EncodeTime(8, 7, 6, 5)},
      {dotted, EncodeDate(1899, 12, 29), EncodeTime(18, 0, 0, 0)},
      {Settings("mm/dd/yyyy", "hh:nn:ss"), EncodeDate(2011, 3, 4), 0},
  };
  for (const Case& c : cases) {
    const TFormatSettings& s = c.Settings;
    // Before 1899-12-30 the day is negative and the time still counts away from zero.
    const double value = c.Date < 0 ? c.Date - c.Time : c.Date + c.Time;
    const String text = DateTimeToStr(value, s);
    EXPECT_EQ(StrToDateTime(text, s).Val, value) << text;
    EXPECT_EQ(StrToDate(DateToStr(value, s), s).Val, c.Date.Val) << text;
    EXPECT_NEAR(StrToTime(TimeToStr(value, s), s).Val, c.Time.Val, 1e-12) << text;
  }
}

TEST(DateTimeParse, OrderSeparatorsYearsAndMarkers) {
  const TFormatSettings dmy = Settings("d/m/yy", "hh:nn:ss");
  const TFormatSettings ymd = Settings("yyyy-mm-dd", "hh:nn:ss");
  EXPECT_EQ(StrToDate("4/3/2011", dmy).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate(" 4 / 3 / 2011 ", dmy).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate("2011/3/4", ymd).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate("4/Mar/2011", dmy).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate("4-MARCH-2011", Settings("dd-mmm-yyyy", "")).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate("4 Mar 2011", Settings("d mmm yyyy", "")).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate("0011/3/4", ymd).Val, EncodeDate(11, 3, 4).Val);  // four digits: as written

  // Two-digit years fall in the century window around the current year.
  EXPECT_EQ(StrToDate("4/3/11", dmy).Val, EncodeDate(2011, 3, 4).Val);
  EXPECT_EQ(StrToDate("4/3/99", dmy).Val, EncodeDate(1999, 3, 4).Val);
  TFormatSettings thisCentury = dmy;
  thisCentury.TwoDigitYearCenturyWindow = 0;
  EXPECT_EQ(StrToDate("4/3/99", thisCentury).Val, EncodeDate(2099, 3, 4).Val);

  uint16_t year, month, day;
  DecodeDate(Date(), year, month, day);
  EXPECT_EQ(StrToDate("4/3", dmy).Val, EncodeDate(year, 3, 4).Val);  // no year: this year

  EXPECT_EQ(StrToTime("1:05 pm", dmy).Val, EncodeTime(13, 5, 0, 0).Val);
  EXPECT_EQ(StrToTime("AM 12:30", dmy).Val, EncodeTime(0, 30, 0, 0).Val);
  EXPECT_EQ(StrToTime("7", dmy).Val, EncodeTime(7, 0, 0, 0).Val);
  EXPECT_EQ(StrToDateTime("13:05", dmy).Val, EncodeTime(13, 5, 0, 0).Val);  // time only
  TFormatSettings german = dmy;
  german.TimeAMString = "vorm.";
  german.TimePMString = "nachm.";
  EXPECT_EQ(StrToTime("1:05 nachm.", german).Val, EncodeTime(13, 5, 0, 0).Val);

  TDateTime value = 9;
  for (const char* bad : {"", "4", "31/2/2011", "4/13/2011", "4/3/2011x", "4.3.2011", "Mar/4/2011"})
    EXPECT_FALSE(TryStrToDate(bad, value, dmy)) << bad;
  for (const char* bad : {"", "24:00", "13:05 PM", "0:30 AM", "12:60", "1:2:3:4:5"})
    EXPECT_FALSE(TryStrToTime(bad, value, dmy)) << bad;
  EXPECT_EQ(value.Val, 9);
  ExpectConvertError([&] { StrToDate("31/2/2011", dmy); }, "'31/2/2011' is not a valid date");
  ExpectConvertError([&] { StrToTime("25:00", dmy); }, "'25:00' is not a valid time");
  ExpectConvertError([&] { StrToDateTime("4/3/2011 25:00", dmy); },
                     "'4/3/2011 25:00' is not a valid date and time");
}

TEST(DateTimeParse, ProcessSettingsAreTheDefault) {
  testing::TSettingsGuard guard;
  FormatSettings = Settings("dd.mm.yyyy", "hh:nn", '.');
  const TDateTime value = EncodeDate(2011, 3, 4) + EncodeTime(10, 30, 0, 0);
  const String text = DateTimeToStr(value);
  const double parsed = StrToDateTime(text);
  EXPECT_EQ(text, "04.03.2011 10:30");
  EXPECT_EQ(parsed, value.Val);
}

}  // namespace
}  // namespace orv
