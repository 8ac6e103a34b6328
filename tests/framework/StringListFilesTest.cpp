#include <gtest/gtest.h>

#include "StreamsTestSupport.h"
#include "StringLists.h"

namespace orv {
namespace {

using testing::MessageOf;
using testing::ReadFileBytes;
using testing::TTempDir;
using testing::WriteFileBytes;

struct TSample {
  const char* Name;
  std::string Bytes;
  const TEncoding* Encoding;
};

// "Zoë" and "señor" on two lines, in each encoding a text file may have.
const std::vector<TSample>& Samples() {
  static const std::vector<TSample> samples{
      {"plain UTF-8", "Zo\xc3\xab\r\nse\xc3\xb1or\r\n", TEncoding::ANSI()},
      {"UTF-8 with mark", "\xef\xbb\xbfZo\xc3\xab\r\nse\xc3\xb1or\r\n", TEncoding::UTF8()},
      {"UTF-16LE", std::string("\xff\xfeZ\0o\0\xeb\0\r\0\n\0s\0e\0\xf1\0o\0r\0\r\0\n\0", 26),
       TEncoding::Unicode()},
      {"UTF-16BE", std::string("\xfe\xff\0Z\0o\0\xeb\0\r\0\n\0s\0e\0\xf1\0o\0r\0\r\0\n", 26),
       TEncoding::BigEndianUnicode()},
  };
  return samples;
}

TEST(StringListFiles, EncodingsAreDetectedAndWrittenBackByteForByte) {
  TTempDir dir;
  for (const TSample& sample : Samples()) {
    SCOPED_TRACE(sample.Name);
    const String path = dir / "in.txt", copy = dir / "out.txt";
    WriteFileBytes(path, sample.Bytes);

    TStringList list;
    list.LoadFromFile(path);
    EXPECT_EQ(list.ToStringArray(), (std::vector<String>{"Zo\xc3\xab", "se\xc3\xb1or"}));
    EXPECT_EQ(list.GetEncoding(), sample.Encoding);
    list.SaveToFile(copy);
    EXPECT_EQ(ReadFileBytes(copy), sample.Bytes);

    TWideStringList wide;
    wide.LoadFromFile(path);
    EXPECT_EQ(wide.Get(0), u"Zo\u00eb");
    TMemoryStream stream;
    wide.SaveToStream(&stream);
    EXPECT_EQ(String(reinterpret_cast<const char*>(stream.Memory()), stream.GetSize()), sample.Bytes);
  }
}

TEST(StringListFiles, StreamsReadFromTheirPositionAndEncodingsCanBeForced) {
  TStringStream stream("skip\xef\xbb\xbf" "a\rb\n\nc");
  stream.SetPosition(4);
  TStringList list;
  list.LoadFromStream(&stream);
  EXPECT_EQ(list.ToStringArray(), (std::vector<String>{"a", "b", "", "c"}));
  EXPECT_EQ(list.GetEncoding(), TEncoding::UTF8());

  // A forced encoding: its own mark is skipped, another one is text.
  TStringStream utf16(std::string("\xff\xfeh\0i\0", 6));
  list.LoadFromStream(&utf16, TEncoding::Unicode());
  EXPECT_EQ(list.GetText(), "hi\r\n");
  TStringStream marked("\xef\xbb\xbfx");
  list.LoadFromStream(&marked, TEncoding::ANSI());
  EXPECT_EQ(list.Get(0), "\xef\xbb\xbfx");

  TStringStream out;
  list.SetText("x");
  list.SaveToStream(&out, TEncoding::BigEndianUnicode());
  list.SetWriteBOM(true);
  list.SaveToStream(&out, TEncoding::UTF8());
  EXPECT_EQ(out.GetDataString(), std::string("\0x\0\r\0\n\xef\xbb\xbfx\r\n", 12));
}

// A list whose lines can fail to be read, as a subclass that computes them might.
class TFailingList : public TStringList {
 public:
  bool Fail = false;
  String Get(int32_t index) const override {
    if (Fail && index == 1) throw EReadError("Stream read error");
    return TStringList::Get(index);
  }
};

TEST(StringListFiles, FailedSaveLeavesTheOldFile) {
  TTempDir dir;
  const String path = dir / "packet.txt";
  TFailingList list;
  list.SetText("a\nb\nc");
  list.SaveToFile(path);
  list.Fail = true;
  EXPECT_THROW(list.SaveToFile(path), EReadError);
  EXPECT_EQ(ReadFileBytes(path), "a\r\nb\r\nc\r\n");
  EXPECT_EQ(dir.FileCount(), 1u);

  const String nowhere = dir / "missing/packet.txt";
  EXPECT_EQ(MessageOf<EFCreateError>([&] { list.SaveToFile(nowhere); }),
            "Cannot create file \"" + nowhere + "\". No such file or directory");
  const String missing = dir / "missing.txt";
  EXPECT_EQ(MessageOf<EFOpenError>([&] { list.LoadFromFile(missing); }),
            "Cannot open file \"" + missing + "\". No such file or directory");
  list.Fail = false;
  EXPECT_EQ(list.GetCount(), 3);  // a failed load changes nothing
}

}  // namespace
}  // namespace orv
