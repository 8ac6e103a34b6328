#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <optional>

#include "SqlTimSt.h"
#include "Variants.h"

namespace orv {
namespace {

struct SettingsGuard {
  TFormatSettings Saved = FormatSettings;
  SettingsGuard() {
    FormatSettings = TFormatSettings::Invariant();
    FormatSettings.ShortDateFormat = "yyyy-mm-dd";
    FormatSettings.DateSeparator = '-';
    FormatSettings.LongTimeFormat = "hh:nn:ss";
  }
  ~SettingsGuard() { FormatSettings = Saved; }
};

// Runs a test in a fixed local time zone (POSIX form, no zone database needed).
class TimeZoneGuard {
 public:
  explicit TimeZoneGuard(const char* zone) {
    if (const char* old = std::getenv("TZ")) FSaved = old;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~TimeZoneGuard() {
    if (FSaved)
      setenv("TZ", FSaved->c_str(), 1);
    else
      unsetenv("TZ");
    tzset();
  }

 private:
  std::optional<String> FSaved;
};

TEST(SQLTimeStamp, DateTimeRoundTripKeepsMilliseconds) {
  for (const TSQLTimeStamp ts : {TSQLTimeStamp{2024, 2, 29, 23, 59, 59, 999},
                                 TSQLTimeStamp{1899, 12, 30, 0, 0, 0, 1},
                                 TSQLTimeStamp{1800, 6, 15, 6, 30, 0, 500},
                                 TSQLTimeStamp{1, 1, 1, 12, 0, 0, 0}}) {
    EXPECT_EQ(DateTimeToSQLTimeStamp(SQLTimeStampToDateTime(ts)), ts) << ts;
  }
  // Before 1899-12-30 the time fraction counts from midnight forwards, away from zero.
  EXPECT_DOUBLE_EQ(SQLTimeStampToDateTime({1899, 12, 29, 6, 0, 0, 0}).Val, -1.25);
  EXPECT_EQ(DateTimeToSQLTimeStamp(TDateTime(-1.25)), (TSQLTimeStamp{1899, 12, 29, 6}));
  EXPECT_EQ(DateTimeToSQLTimeStamp(TDateTime(-1.9999999999)), (TSQLTimeStamp{1899, 12, 30}));
  EXPECT_EQ(DateTimeToSQLTimeStamp(TDateTime(1.9999999999)), (TSQLTimeStamp{1900, 1, 1}));
  EXPECT_EQ(SQLTimeStampToDateTime(NullSQLTimeStamp).Val, 0.0);
  EXPECT_FALSE(IsSQLTimeStampValid({2023, 2, 29}));
  try {
    CheckSqlTimeStamp({2024, 13, 1});
    ADD_FAILURE();
  } catch (const EConvertError& e) {
    EXPECT_STREQ(e.what(), "Invalid argument to date encode");
  }
  EXPECT_THROW(SQLTimeStampToDateTime({2024, 1, 1, 24}), EConvertError);
}

TEST(SQLTimeStamp, TextFollowsTheCurrentFormats) {
  SettingsGuard guard;
  const TSQLTimeStamp ts{2024, 2, 29, 13, 5, 9, 250};
  EXPECT_EQ(SQLTimeStampToStr("", ts), "2024-02-29 13:05:09");
  EXPECT_EQ(SQLTimeStampToStr("dd/mm/yyyy hh:nn:ss.zzz", ts), "29-02-2024 13:05:09.250");
  EXPECT_EQ(StrToSQLTimeStamp("2024-02-29 13:05:09"), (TSQLTimeStamp{2024, 2, 29, 13, 5, 9}));
  TSQLTimeStamp parsed;
  EXPECT_FALSE(TryStrToSQLTimeStamp("29/02/2024", parsed));
  EXPECT_THROW(StrToSQLTimeStamp("tomorrow"), EConvertError);

  const Variant v = VarSQLTimeStampCreate(ts);
  EXPECT_TRUE(VarIsSQLTimeStamp(v));
  EXPECT_EQ(VarTypeAsText(v.VType()), "SQLTimeStampVariantType");
  EXPECT_EQ(v.AsString(), "2024-02-29 13:05:09");
  EXPECT_NEAR(v.AsDateTime().Val, SQLTimeStampToDateTime(ts).Val, 1e-12);
  EXPECT_EQ(VarToSQLTimeStamp(Variant("2024-02-29 13:05:09")),
            (TSQLTimeStamp{2024, 2, 29, 13, 5, 9}));
  EXPECT_EQ(VarToSQLTimeStamp(Variant(TDateTime(SQLTimeStampToDateTime(ts)))), ts);
  EXPECT_TRUE(v > VarSQLTimeStampCreate(TSQLTimeStamp{2024, 2, 29, 13, 5, 9, 249}));
  EXPECT_TRUE(v > Variant(TDateTime(EncodeDate(2024, 2, 29))));
  EXPECT_EQ(VarToSQLTimeStamp(Variant()), NullSQLTimeStamp);
  EXPECT_THROW(Variant(true).AsSQLTimeStamp(), EVariantTypeCastError);
}

TEST(SQLTimeStampOffset, ZonesConvertAsInstants) {
  SettingsGuard settings;
  TimeZoneGuard zone("XYZ-3");  // local time is UTC+03:00
  const TSQLTimeStampOffset berlin{2024, 3, 1, 10, 0, 0, 0, 2, 0};
  EXPECT_EQ(ConvertSQLTimeStampOffset(berlin, -5, -30),
            (TSQLTimeStampOffset{2024, 3, 1, 2, 30, 0, 0, -5, -30}));
  EXPECT_EQ(ConvertSQLTimeStampOffset({2024, 1, 1, 1, 0, 0, 0, 2, 0}, 0, 0),
            (TSQLTimeStampOffset{2023, 12, 31, 23, 0, 0, 0, 0, 0}));
  EXPECT_EQ(SQLTimeStampOffsetToSQLTimeStamp(berlin), (TSQLTimeStamp{2024, 3, 1, 11}));
  EXPECT_EQ(SQLTimeStampToSQLTimeStampOffset({2024, 3, 1, 11}),
            (TSQLTimeStampOffset{2024, 3, 1, 11, 0, 0, 0, 3, 0}));
  EXPECT_EQ(DateTimeToSQLTimeStampOffset(EncodeDate(2024, 3, 1), -3, -30).TimeZoneMinute, -30);

  EXPECT_EQ(SQLTimeStampOffsetToStr("", {2024, 3, 1, 2, 30, 0, 0, -5, -30}),
            "2024-03-01 02:30:00 -05:30");
  EXPECT_EQ(StrToSQLTimeStampOffset("2024-03-01 10:00:00 +02:00"), berlin);
  EXPECT_EQ(StrToSQLTimeStampOffset("2024-03-01 08:00:00Z"),
            (TSQLTimeStampOffset{2024, 3, 1, 8, 0, 0, 0, 0, 0}));
  EXPECT_EQ(StrToSQLTimeStampOffset("2024-03-01 11:00:00").TimeZoneHour, 3);

  const Variant v = VarSQLTimeStampOffsetCreate(berlin);
  EXPECT_EQ(v.AsString(), "2024-03-01 10:00:00 +02:00");
  EXPECT_TRUE(v == VarSQLTimeStampOffsetCreate(TSQLTimeStampOffset{2024, 3, 1, 8, 0, 0, 0, 0, 0}));
  EXPECT_TRUE(v == VarSQLTimeStampCreate(TSQLTimeStamp{2024, 3, 1, 11}));  // local UTC+3
  EXPECT_EQ(v.AsSQLTimeStamp(), (TSQLTimeStamp{2024, 3, 1, 11}));
}

}  // namespace
}  // namespace orv
