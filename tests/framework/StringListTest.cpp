#include <gtest/gtest.h>

#include "StreamsTestSupport.h"
#include "StringLists.h"

namespace orv {
namespace {

using testing::MessageOf;

std::vector<String> Lines(const TStrings& list) { return list.ToStringArray(); }

TEST(StringList, TextReadsAnyLineBreakAndWritesCrLf) {
  TStringList list;
  list.SetText("one\r\ntwo\nthree\rfour\n\r\nsix\r\n");
  EXPECT_EQ(Lines(list), (std::vector<String>{"one", "two", "three", "four", "", "six"}));
  EXPECT_EQ(list.GetText(), "one\r\ntwo\r\nthree\r\nfour\r\n\r\nsix\r\n");
  list.SetText("\n\nlast without break");
  EXPECT_EQ(Lines(list), (std::vector<String>{"", "", "last without break"}));
  list.SetText("");
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetText(), "");

  TWideStringList wide;
  wide.SetText(u"\u00e9t\u00e9\rhiver\n");
  EXPECT_EQ(wide.GetText(), u"\u00e9t\u00e9\r\nhiver\r\n");
}

TEST(StringList, DelimitedTextQuotesWhatWouldNotReadBack) {
  TStringList list;
  list.AddStrings(std::vector<String>{"plain", "with blank", "say \"hi\"", "", "a,b", "\xc3\xa9t\xc3\xa9"});
  EXPECT_EQ(list.GetDelimitedText(), R"(plain,"with blank","say ""hi""",,"a,b",été)");
  EXPECT_EQ(list.GetCommaText(), list.GetDelimitedText());

  TStringList back;
  back.SetDelimitedText(list.GetDelimitedText());
  EXPECT_TRUE(back.Equals(&list));

  // Outside quotes, blanks separate items unless StrictDelimiter; a last delimiter leaves an
  // empty item.
  back.SetDelimitedText("  a b , \"c d\"  ,,e,");
  EXPECT_EQ(Lines(back), (std::vector<String>{"a", "b", "c d", "", "e", ""}));
  back.SetStrictDelimiter(true);
  back.SetDelimitedText(" a b ,\"c d\",,e");
  EXPECT_EQ(Lines(back), (std::vector<String>{" a b ", "c d", "", "e"}));
  EXPECT_EQ(back.GetDelimitedText(), " a b ,c d,,e");

  back.SetDelimiter(';');
  back.SetQuoteChar('\'');
  back.SetDelimitedText("x;'it''s; here';y");
  EXPECT_EQ(Lines(back), (std::vector<String>{"x", "it's; here", "y"}));
  EXPECT_EQ(back.GetCommaText(), "x,\"it's; here\",y");  // comma text keeps its own settings
  back.SetCommaText("\"\"");
  EXPECT_EQ(Lines(back), (std::vector<String>{""}));
  EXPECT_EQ(back.GetDelimitedText(), "''");
}

TEST(StringList, NamesAndValues) {
  TStringList list;
  list.SetText("Name=Ann\nCity=Oslo=Norway\nno separator\n=empty name\n");
  EXPECT_EQ(list.Names(1), "City");
  EXPECT_EQ(list.Names(2), "");
  EXPECT_EQ(list.Values("city"), "Oslo=Norway");  // names compare without case
  EXPECT_EQ(list.ValueFromIndex(2), "");
  EXPECT_EQ(list.ValueFromIndex(3), "empty name");
  EXPECT_EQ(list.IndexOfName("NAME"), 0);

  list.SetValue("Name", "Bob");
  list.SetValue("Zip", "0150");
  list.SetValueFromIndex(1, "Bergen");  // the name stays, the value changes
  list.SetValueFromIndex(2, "x");       // a line without a name gets an empty one
  EXPECT_EQ(Lines(list), (std::vector<String>{"Name=Bob", "City=Bergen", "=x", "=empty name", "Zip=0150"}));
  list.SetValueFromIndex(0, "");  // an empty value deletes the line
  list.SetValue("zip", "");
  EXPECT_EQ(Lines(list), (std::vector<String>{"City=Bergen", "=x", "=empty name"}));

  list.SetNameValueSeparator(':');
  list.AddPair("Key", "Value");
  EXPECT_EQ(list.Values("key"), "Value");
  EXPECT_EQ(list.Names(0), "");
}

TEST(StringList, SortedListsKeepOrderAndApplyTheDuplicatesPolicy) {
  TStringList list;
  list.AddStrings(std::vector<String>{"cherry", "Banana", "apple", "banana"});
  list.SetSorted(true);
  EXPECT_EQ(Lines(list), (std::vector<String>{"apple", "Banana", "banana", "cherry"}));  // stable

  EXPECT_EQ(list.Add("BANANA"), 1);  // dupIgnore: the line that is there
  EXPECT_EQ(list.GetCount(), 4);
  int32_t index = -1;
  EXPECT_TRUE(list.Find("banana", index));
  EXPECT_EQ(index, 1);
  EXPECT_FALSE(list.Find("blueberry", index));
  EXPECT_EQ(index, 3);
  EXPECT_EQ(list.IndexOf("CHERRY"), 3);

  list.SetDuplicates(dupError);
  EXPECT_EQ(MessageOf<EStringListError>([&] { list.Add("Apple"); }),
            "String list does not allow duplicates");
  EXPECT_EQ(MessageOf<EStringListError>([&] { list.Insert(0, "zebra"); }),
            "Operation not allowed on sorted list");
  EXPECT_EQ(MessageOf<EStringListError>([&] { list.Put(0, "zebra"); }),
            "Operation not allowed on sorted list");
  list.SetDuplicates(dupAccept);
  EXPECT_EQ(list.Add("Apple"), 0);  // before the equal line
  EXPECT_EQ(list.Add("avocado"), 2);

  list.SetCaseSensitive(true);  // sorts again, and only equal case is equal now
  EXPECT_EQ(list.IndexOf("APPLE"), -1);
  EXPECT_EQ(std::abs(list.IndexOf("Apple") - list.IndexOf("apple")), 1);

  list.SetSorted(false);
  list.CustomSort([](TStringListOf<TStrings>* l, int32_t a, int32_t b) {
    return static_cast<int>(l->Get(b).size()) - static_cast<int>(l->Get(a).size());
  });
  EXPECT_EQ(list.Get(0), "avocado");
  EXPECT_EQ(MessageOf<EStringListError>([&] { list.Get(7); }), "List index out of bounds (7)");
}

class TTracked : public TObject {
 public:
  explicit TTracked(int& live) : FLive(live) { ++FLive; }
  ~TTracked() override { --FLive; }

 private:
  int& FLive;
};

TEST(StringList, OwnedObjectsAreFreedExactlyOnce) {
  int live = 0;
  TTracked* refused = new TTracked(live);
  {
    TStringList list(true);
    for (const char* name : {"d", "c", "b", "a"}) list.AddObject(name, new TTracked(live));
    list.Move(0, 3);
    list.Exchange(0, 1);
    list.Sort();
    EXPECT_EQ(live, 5);  // moving lines moves their objects, frees none
    list.Delete(0);
    list.PutObject(0, new TTracked(live));  // the replaced object goes
    list.PutObject(0, list.GetObject(0));   // the same object stays
    EXPECT_EQ(live, 4);

    list.SetSorted(true);
    list.AddObject("b", refused);  // an ignored duplicate stays the caller's
    EXPECT_EQ(list.IndexOfObject(refused), -1);

    TWideStringList borrowed;  // copies share the objects without owning them
    borrowed.Assign(&list);
    EXPECT_EQ(borrowed.GetObject(2), list.GetObject(2));
    borrowed.Clear();
    EXPECT_EQ(live, 4);
    list.Clear();
    EXPECT_EQ(live, 1);
    list.AddObject("e", new TTracked(live));
  }
  EXPECT_EQ(live, 1);
  delete refused;
}

TEST(StringList, UpdatesFireOneChangeAndEndAlsoOnFailure) {
  TStringList list;
  std::vector<String> events;
  list.SetOnChanging([&](TObject* sender) {
    EXPECT_EQ(sender, &list);
    events.push_back("changing");
  });
  list.SetOnChange([&](TObject*) { events.push_back("change " + std::to_string(list.GetCount())); });

  list.Add("x");
  list.BeginUpdate();
  list.BeginUpdate();
  list.Add("y");
  list.Delete(0);
  list.EndUpdate();
  list.SetText("a\nb\nc");
  list.EndUpdate();
  list.Clear();
  list.Clear();  // nothing to clear: no events
  EXPECT_EQ(events, (std::vector<String>{"changing", "change 1", "changing", "change 3", "changing",
                                         "change 0"}));

  // A bulk change that fails half way still ends its update.
  events.clear();
  list.SetSorted(true);
  list.SetDuplicates(dupError);
  EXPECT_THROW(list.SetCommaText("a,b,a,c"), EStringListError);
  EXPECT_EQ(list.GetUpdateCount(), 0);
  EXPECT_EQ(events, (std::vector<String>{"changing", "change 2"}));
}

TEST(StringList, AssignCopiesLinesObjectsAndSettingsAcrossTextTypes) {
  TStringList source;
  source.SetDelimiter(';');
  source.SetQuoteChar('\'');
  source.SetNameValueSeparator(':');
  source.SetStrictDelimiter(true);
  source.AddObject("gr\xc3\xbc\xc3\x9f" "e", &source);
  source.Add("b c");

  TWideStringList wide;
  wide.Add(u"old");
  wide.Assign(&source);
  EXPECT_EQ(wide.GetText(), u"gr\u00fc\u00dfe\r\nb c\r\n");
  EXPECT_EQ(wide.GetObject(0), &source);
  EXPECT_EQ(wide.GetDelimitedText(), u"gr\u00fc\u00dfe;b c");

  TStringList back;
  back.Assign(&wide);
  EXPECT_TRUE(back.Equals(&source));
  EXPECT_EQ(back.GetNameValueSeparator(), ':');
  back.Put(1, "B c");
  EXPECT_FALSE(back.Equals(&source));

  TStrings& asStrings = back;
  EXPECT_THROW(asStrings.Assign(nullptr), EConvertError);
}

}  // namespace
}  // namespace orv
