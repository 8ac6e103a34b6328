#include <gtest/gtest.h>

#include "StreamsTestSupport.h"
#include "Zip.h"

namespace orv {
namespace {

using testing::MessageOf;
using testing::ReadFileBytes;
using testing::TTempDir;
using testing::WriteFileBytes;

String EntryText(TZipFile& zip, int32_t index) {
  std::unique_ptr<TStream> stream;
  zip.Read(index, stream);
  const TBytes bytes = stream->ReadRemainingBytes();
  return String(bytes.begin(), bytes.end());
}

// A stream that fails after its first bytes, like a disk read going wrong.
class TFailingStream : public TStringStream {
 public:
  TFailingStream() : TStringStream(String(200000, 'x')) {}
  int64_t Read(void* buffer, int64_t count) override {
    if (GetPosition() > 0) throw EReadError("Stream read error");
    return TStringStream::Read(buffer, count);
  }
};

void WriteThreeEntries(const String& path) {
  TZipFile zip;
  zip.Open(path, zmWrite);
  TStringStream first("ID,Name\r\n1,Ann\r\n"), big(String(100000, 'z'));
  first.SetPosition(3);  // entries take the stream from its position
  zip.Add(&first, "data.txt");
  zip.Add(&big, "dir/big.txt", zcStored);
  zip.Add(TBytes{'v', '2'}, "data.txt");
  EXPECT_EQ(zip.GetFileCount(), 3);
  EXPECT_EQ(MessageOf<EZipException>([&] { zip.Read(0); }), "File must be open for reading");
  zip.Close();
}

TEST(ZipFile, WritesReadsAndAddsToArchives) {
  TTempDir dir;
  const String path = dir / "packets.zip";
  WriteThreeEntries(path);
  {
    TZipFile zip;
    zip.Open(path, zmRead);
    EXPECT_EQ(zip.GetFileNames(), (std::vector<String>{"data.txt", "dir/big.txt", "data.txt"}));
    EXPECT_EQ(zip.IndexOf("data.txt"), 0);  // the first of two
    EXPECT_EQ(zip.IndexOf("DATA.TXT"), -1);
    EXPECT_EQ(EntryText(zip, 0), "Name\r\n1,Ann\r\n");
    EXPECT_EQ(EntryText(zip, 2), "v2");
    EXPECT_EQ(zip.Read("dir/big.txt")->GetSize(), 100000);
    EXPECT_EQ(MessageOf<EZipException>([&] { zip.Read("nope.txt"); }), "File not found: nope.txt");
    EXPECT_EQ(MessageOf<EListError>([&] { zip.Read(3); }), "List index out of bounds (3)");
    EXPECT_EQ(MessageOf<EZipException>([&] { zip.Add(TBytes{}, "x"); }),
              "File must be open for writing");
  }
  {
    TZipFile zip;
    zip.Open(path, zmReadWrite);  // keeps the old entries and adds after them
    EXPECT_EQ(EntryText(zip, 2), "v2");
    zip.Add(TBytes{'v', '3'}, "data.txt");
    zip.Close();
    EXPECT_EQ(MessageOf<EZipException>([&] { zip.Read(0); }), "File must be open");
  }
  TZipFile zip;
  zip.Open(path, zmRead);
  ASSERT_EQ(zip.FileCount(), 4);
  EXPECT_EQ(zip.FileName(3), "data.txt");
  EXPECT_EQ(EntryText(zip, 0), "Name\r\n1,Ann\r\n");
  EXPECT_EQ(EntryText(zip, 3), "v3");
  EXPECT_EQ(dir.FileCount(), 1u);
}

TEST(ZipFile, FailedSaveLeavesTheOldArchive) {
  TTempDir dir;
  const String path = dir / "packets.zip";
  WriteThreeEntries(path);
  const String before = ReadFileBytes(path);
  {
    TZipFile zip;
    zip.Open(path, zmReadWrite);
    TFailingStream failing;
    EXPECT_THROW(zip.Add(&failing, "half.txt"), EReadError);
    EXPECT_EQ(MessageOf<EZipException>([&] { zip.Add(TBytes{'x'}, "more.txt"); }),
              "Error writing zip file");
    EXPECT_EQ(MessageOf<EZipException>([&] { zip.Close(); }), "Error writing zip file");
    EXPECT_EQ(zip.GetMode(), zmClosed);
  }
  {
    TZipFile zip;  // destroyed while open for writing: what was added is dropped
    zip.Open(path, zmWrite);
    zip.Add(TBytes{'x'}, "only.txt");
  }
  EXPECT_EQ(ReadFileBytes(path), before);
  EXPECT_EQ(dir.FileCount(), 1u);
}

TEST(ZipFile, RefusesFilesThatAreNoArchives) {
  TTempDir dir;
  const String text = dir / "plain.txt";
  WriteFileBytes(text, "ID,Name\r\n1,Ann\r\n");
  TZipFile zip;
  EXPECT_EQ(MessageOf<EZipException>([&] { zip.Open(text, zmRead); }), "Error reading zip file");
  EXPECT_EQ(MessageOf<EZipException>([&] { zip.Open(text, zmReadWrite); }), "Error reading zip file");
  EXPECT_EQ(ReadFileBytes(text), "ID,Name\r\n1,Ann\r\n");
  EXPECT_FALSE(TZipFile::IsValid(text));
  EXPECT_THROW(zip.Open(dir / "missing.zip", zmRead), EFOpenError);
  EXPECT_THROW(zip.Open(dir / "missing.zip", zmReadWrite), EFOpenError);

  // A damaged entry is found when it is read: deflate data or CRC no longer match.
  const String path = dir / "damaged.zip";
  WriteThreeEntries(path);
  String bytes = ReadFileBytes(path);
  const size_t data = bytes.find("data.txt") + 8;  // the first entry's data follow its name
  for (size_t i = data; i < data + 6; ++i) bytes[i] = static_cast<char>(bytes[i] ^ 0x33);
  WriteFileBytes(path, bytes);
  ASSERT_TRUE(TZipFile::IsValid(path));
  zip.Open(path, zmRead);
  EXPECT_EQ(MessageOf<EZipException>([&] { zip.Read(0); }), "Error reading zip file");
  EXPECT_EQ(EntryText(zip, 2), "v2");
  EXPECT_EQ(zip.GetMode(), zmRead);
  EXPECT_EQ(dir.FileCount(), 2u);
}

}  // namespace
}  // namespace orv
