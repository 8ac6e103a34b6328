#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include "SysUtils.h"

namespace orv {
namespace {

TEST(Utf, ConversionsSubstituteAndTruncationKeepsCodePoints) {
  const String text = "a\u00e9\u20ac\U0001F600";  // 1, 2, 3 and 4 bytes
  EXPECT_EQ(Utf8ToUtf16(text), u"a\u00e9\u20ac\U0001F600");
  EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16(text)), text);
  EXPECT_EQ(Utf8ToUtf16("a\xff"
                        "b"),
            u"a\ufffdb");
  EXPECT_EQ(Utf16ToUtf8(WideString(u"x") + char16_t(0xD800) + u"y"), "x\ufffdy");
  EXPECT_EQ(Utf8Truncate(text, 2), "a");
  EXPECT_EQ(Utf8Truncate(text, 3), "a\u00e9");
  EXPECT_EQ(Utf8Truncate(text, 9), "a\u00e9\u20ac");
  EXPECT_EQ(Utf8Truncate(text, 10), text);
  EXPECT_EQ(Utf8Truncate(text, 0), "");
}

TEST(AsciiText, TrimCaseAndCompare) {
  EXPECT_EQ(Trim("\t\r\n x y \x01"), "x y");
  EXPECT_EQ(TrimLeft("  x "), "x ");
  EXPECT_EQ(TrimRight("  x "), "  x");
  EXPECT_EQ(Trim("\u00a0x"), "\u00a0x");  // bytes above 127 are not blanks
  EXPECT_EQ(UpperCase("abc\u00e9"), "ABC\u00e9");
  EXPECT_EQ(LowerCase("ABC\u00c9"), "abc\u00c9");
  EXPECT_TRUE(SameText("Hello", "hELLO"));
  EXPECT_FALSE(SameText("\u00e9", "\u00c9"));
  EXPECT_LT(CompareText("a", "_"), 0);  // letters compare as capitals, so "_" (0x5F) follows
  EXPECT_LT(CompareText("abc", "ABCD"), 0);
  EXPECT_LT(CompareStr("B", "a"), 0);
  EXPECT_GT(CompareStr("\u00e9", "z"), 0);  // bytes compare unsigned
}

TEST(LocaleText, CollationIgnoresCaseButNotAccents) {
  EXPECT_TRUE(AnsiSameText("\u00c4pfel", "\u00e4pfel"));
  EXPECT_FALSE(AnsiSameText("a", "\u00e1"));
  EXPECT_FALSE(AnsiSameStr("a", "A"));
  EXPECT_TRUE(AnsiSameStr("\u00e9", "e\u0301"));  // the same text in two normal forms
  EXPECT_EQ(AnsiCompareText(WideString(u"STRASSE"), WideString(u"strasse")), 0);
  EXPECT_NE(AnsiCompareStr(WideString(u"a"), WideString(u"A")), 0);

  std::vector<String> names{"c", "B", "\u00e1", "a", "A", "b"};
  std::stable_sort(names.begin(), names.end(),
                   [](const String& x, const String& y) { return AnsiCompareText(x, y) < 0; });
  EXPECT_EQ(names, (std::vector<String>{"a", "A", "\u00e1", "B", "b", "c"}));

  EXPECT_EQ(AnsiUpperCase("stra\u00dfe \u00e4\u00f6"), "STRASSE \u00c4\u00d6");
  EXPECT_EQ(AnsiLowerCase("\u00c4PFEL"), "\u00e4pfel");
  EXPECT_EQ(WideUpperCase(u"\u00e9t\u00e9"), u"\u00c9T\u00c9");
  EXPECT_EQ(WideLowerCase(u"\u00c9T\u00c9"), u"\u00e9t\u00e9");
}

TEST(QuotedText, QuoteDequoteAndReplace) {
  EXPECT_EQ(QuotedStr("it's"), "'it''s'");
  EXPECT_EQ(AnsiQuotedStr("a\"b", '"'), "\"a\"\"b\"");
  EXPECT_EQ(AnsiDequotedStr("'it''s'", '\''), "it's");
  EXPECT_EQ(AnsiDequotedStr("'ab'c", '\''), "ab");
  EXPECT_EQ(AnsiDequotedStr("'abc", '\''), "'abc");  // never closed
  EXPECT_EQ(AnsiDequotedStr("plain", '\''), "plain");
  EXPECT_EQ(AnsiDequotedStr("''", '\''), "");
  for (const String& s : {String(""), String("x"), String("a''b"), String("'"), String("\"'")})
    EXPECT_EQ(AnsiDequotedStr(AnsiQuotedStr(s, '\''), '\''), s);

  EXPECT_EQ(StringReplace("a-b-c", "-", "+", 0), "a+b-c");
  EXPECT_EQ(StringReplace("a-b-c", "-", "--", rfReplaceAll), "a--b--c");
  EXPECT_EQ(StringReplace("Abc ABC abc", "abc", "x", rfReplaceAll | rfIgnoreCase), "x x x");
  EXPECT_EQ(StringReplace("\u00c4pfel und \u00e4pfel", "\u00e4PFEL", "Birnen",
                          rfReplaceAll | rfIgnoreCase),
            "Birnen und Birnen");
  EXPECT_EQ(StringReplace("abc", "", "x", rfReplaceAll), "abc");
}

TEST(FileNames, PartsAndExtensions) {
  EXPECT_EQ(ExtractFileName("/data/sub/file.tar.gz"), "file.tar.gz");
  EXPECT_EQ(ExtractFilePath("/data/sub/file.tar.gz"), "/data/sub/");
  EXPECT_EQ(ExtractFilePath("file"), "");
  EXPECT_EQ(ExtractFileExt("/data/sub/file.tar.gz"), ".gz");
  EXPECT_EQ(ExtractFileExt("/data/dir.d/file"), "");
  EXPECT_EQ(ChangeFileExt("/data/dir.d/file", ".csv"), "/data/dir.d/file.csv");
  EXPECT_EQ(ChangeFileExt("a/b.txt", ""), "a/b");
  EXPECT_EQ(IncludeTrailingPathDelimiter("/tmp"), "/tmp/");
  EXPECT_EQ(IncludeTrailingPathDelimiter("/tmp/"), "/tmp/");
}

TEST(FileSystem, ExistsRenameAndDelete) {
  namespace fs = std::filesystem;
  const fs::path dir = fs::temp_directory_path() / ("orv-sysutils-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  const String a = (dir / "a.txt").string(), b = (dir / "b.txt").string();
  std::ofstream(a) << "new";
  std::ofstream(b) << "old";

  EXPECT_TRUE(FileExists(a));
  EXPECT_FALSE(FileExists(dir.string()));  // a directory is not a file
  EXPECT_TRUE(DirectoryExists(dir.string()));
  EXPECT_FALSE(DirectoryExists(a));
  EXPECT_TRUE(RenameFile(a, b));  // replaces the old file
  EXPECT_FALSE(FileExists(a));
  String content;
  std::ifstream(b) >> content;
  EXPECT_EQ(content, "new");
  EXPECT_FALSE(RenameFile(a, b));
  EXPECT_FALSE(DeleteFile(dir.string()));
  EXPECT_TRUE(DeleteFile(b));
  EXPECT_FALSE(DeleteFile(b));
  fs::remove_all(dir);
}

TEST(FormatSettingsFromLocale, IcuConventionsInThePlatformsLetters) {
  const TFormatSettings de = TFormatSettings::Create("de_DE.UTF-8");
  EXPECT_EQ(de.DecimalSeparator, ',');
  EXPECT_EQ(de.ThousandSeparator, '.');
  EXPECT_EQ(de.DateSeparator, '.');
  EXPECT_EQ(de.ShortDateFormat, "dd/mm/yyyy");
  EXPECT_EQ(de.LongTimeFormat, "hh:nn:ss");
  EXPECT_EQ(de.LongMonthNames[2], "M\u00e4rz");
  EXPECT_EQ(de.CurrencyString, "\u20ac");
  EXPECT_EQ(CurrToStrF(Currency(-1234.5), ffCurrency, 2, de), "-1.234,50 \u20ac");
  const TDateTime value = EncodeDate(2011, 3, 4) + EncodeTime(13, 5, 0, 0);
  EXPECT_EQ(DateTimeToStr(value, de), "04.03.2011 13:05:00");
  EXPECT_EQ(StrToDateTime("04.03.2011 13:05:00", de).Val, value.Val);

  const TFormatSettings us = TFormatSettings::Create("en_US");
  EXPECT_EQ(us.ShortDateFormat, "m/d/yyyy");
  EXPECT_EQ(us.ShortTimeFormat, "h:nn AMPM");
  EXPECT_EQ(FormatDateTime("t", value, us), "1:05 PM");
  EXPECT_EQ(StrToTime("1:05 PM", us).Val, EncodeTime(13, 5, 0, 0).Val);

  const TFormatSettings es = TFormatSettings::Create("es_ES");
  EXPECT_EQ(FormatDateTime("dddddd", value, es), "viernes, 4 de marzo de 2011");  // quoted "de"

  // The C locale and locales ICU does not know keep the invariant values.
  for (const char* name : {"C", "POSIX", "C.UTF-8", "xx_YY"}) {
    const TFormatSettings settings = TFormatSettings::Create(name);
    EXPECT_EQ(settings.ShortDateFormat, "MM/dd/yyyy") << name;
    EXPECT_EQ(settings.DecimalSeparator, '.') << name;
    EXPECT_EQ(settings.LongMonthNames[0], "January") << name;
  }
}

// Whatever a locale's conventions, what the settings write they read back.
TEST(FormatSettingsFromLocale, EveryLocaleReadsBackWhatItWrites) {
  const TDateTime date = EncodeDate(2011, 3, 4);
  const TDateTime afternoon = date + EncodeTime(13, 5, 9, 0);
  // Among them: right-to-left marks around separators (ar_EG), words between the numbers
  // (fr_CA "13 h 05 min 09 s", bg_BG "4.03.2011 г."), AM/PM and words before the hour (ko_KR,
  // ee_GH, dz_BT).
  for (const char* name :
       {"de_DE", "en_US", "en_GB", "fr_FR", "fi_FI", "ja_JP", "ko_KR", "ru_RU", "es_ES", "de_CH",
        "ar_EG", "hi_IN", "zh_CN", "pl_PL", "fr_CA", "bg_BG", "ee_GH", "dz_BT"}) {
    const TFormatSettings s = TFormatSettings::Create(name);
    EXPECT_NE(s.DecimalSeparator, s.ThousandSeparator) << name;
    for (TDateTime value : {date, afternoon}) {
      const String text = DateTimeToStr(value, s);
      TDateTime parsed;
      EXPECT_TRUE(TryStrToDateTime(text, parsed, s) && parsed.Val == value.Val)
          << name << ": " << text;
    }
    const String time = FormatDateTime("t", afternoon, s);
    TDateTime parsed;
    EXPECT_TRUE(TryStrToTime(time, parsed, s) && FormatDateTime("t", parsed, s) == time)
        << name << ": " << time;
    EXPECT_EQ(StrToFloat(FloatToStr(-1234.5, s), s), -1234.5) << name;
    EXPECT_EQ(StrToCurr(CurrToStr(Currency::FromRaw(-12345678), s), s).Raw(), -12345678) << name;
  }
}

TEST(FormatSettingsFromLocale, ProcessLocaleByCategory) {
  struct EnvGuard {
    std::vector<std::pair<String, String>> Saved;
    void Set(const char* name, const char* value) {
      const char* old = std::getenv(name);
      Saved.emplace_back(name, old ? old : "\x01");
      value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~EnvGuard() {
      for (auto& [name, value] : Saved)
        value == "\x01" ? unsetenv(name.c_str()) : setenv(name.c_str(), value.c_str(), 1);
    }
  } env;
  env.Set("LC_ALL", nullptr);
  env.Set("LANG", "C.UTF-8");
  env.Set("LC_NUMERIC", "de_DE.UTF-8");
  env.Set("LC_TIME", "fr_FR.UTF-8");
  const TFormatSettings mixed = TFormatSettings::Create();
  EXPECT_EQ(mixed.DecimalSeparator, ',');
  EXPECT_EQ(mixed.LongMonthNames[0], "janvier");
  env.Set("LC_ALL", "en_US.UTF-8");
  EXPECT_EQ(TFormatSettings::Create().DecimalSeparator, '.');
}

}  // namespace
}  // namespace orv
