#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "Streams.h"
#include "StreamsTestSupport.h"

namespace orv {
namespace {

using testing::MessageOf;
using testing::ReadFileBytes;
using testing::TTempDir;
using testing::WriteFileBytes;

TEST(MemoryStream, WriteSeekReadResizeAndCopy) {
  TMemoryStream stream;
  stream.WriteBuffer("hello world", 11);
  EXPECT_EQ(stream.GetPosition(), 11);
  EXPECT_EQ(stream.Seek(-5, soEnd), 6);
  EXPECT_EQ(stream.Seek(1, soCurrent), 7);
  stream.SetPosition(13);  // past the end: writing there fills the gap
  stream.WriteBuffer("!", 1);
  EXPECT_EQ(stream.GetSize(), 14);
  EXPECT_EQ(stream.Memory()[11], 0);

  stream.SetSize(5);  // the position follows the end back
  EXPECT_EQ(stream.GetPosition(), 5);
  char buffer[8] = {};
  EXPECT_EQ(stream.Read(buffer, 8), 0);
  stream.SetPosition(1);
  EXPECT_EQ(stream.Read(buffer, 8), 4);
  EXPECT_EQ(String(buffer, 4), "ello");
  stream.SetPosition(3);
  EXPECT_EQ(MessageOf<EReadError>([&] { stream.ReadBuffer(buffer, 3); }), "Stream read error");

  // CopyFrom with 0 takes the whole source whatever its position; otherwise from the position.
  TStringStream target;
  EXPECT_EQ(target.CopyFrom(&stream, 0), 5);
  stream.SetPosition(1);
  EXPECT_EQ(target.CopyFrom(&stream, 2), 2);
  EXPECT_EQ(target.GetDataString(), "helloel");
  EXPECT_THROW(target.CopyFrom(&stream, 10), EReadError);

  target.SetPosition(5);
  EXPECT_EQ(target.ReadString(), "el");
  target.SetPosition(0);
  EXPECT_EQ(target.ReadBytes(2), (TBytes{'h', 'e'}));
  EXPECT_EQ(target.ReadData<char>(), 'l');
}

TEST(FileStream, OpensCreatesAndReportsSystemErrors) {
  TTempDir dir;
  const String path = dir / "data.bin";
  {
    TFileStream file(path, fmCreate);
    file.WriteData<int32_t>(-7);
    file.WriteBuffer("abc", 3);
    EXPECT_EQ(file.GetSize(), 7);
  }
  {
    TFileStream file(path, fmOpenReadWrite);  // opening for writing keeps the content
    file.Seek(0, soEnd);
    file.WriteBuffer("d", 1);
  }
  {
    TFileStream file(path, fmOpenRead | fmShareDenyWrite);
    EXPECT_EQ(file.ReadData<int32_t>(), -7);
    EXPECT_EQ(file.ReadRemainingBytes(), (TBytes{'a', 'b', 'c', 'd'}));
    EXPECT_EQ(MessageOf<EWriteError>([&] { file.WriteBuffer("x", 1); }), "Stream write error");
  }
  const String missing = dir / "missing.bin";
  EXPECT_EQ(MessageOf<EFOpenError>([&] { TFileStream(missing, fmOpenRead); }),
            "Cannot open file \"" + missing + "\". No such file or directory");
  const String nowhere = dir / "no/such/dir.bin";
  EXPECT_EQ(MessageOf<EFCreateError>([&] { TFileStream(nowhere, fmCreate); }),
            "Cannot create file \"" + nowhere + "\". No such file or directory");
  EXPECT_EQ(MessageOf<EFOpenError>([&] { TFileStream(dir.Path().string(), fmOpenRead); }),
            "Cannot open file \"" + dir.Path().string() + "\". Is a directory");
}

TEST(FileReplacement, NewContentAppearsWholeOrNotAtAll) {
  TTempDir dir;
  const String path = dir / "packet.txt";
  WriteFileBytes(path, "old content");
  ::chmod(path.c_str(), 0640);

  TMemoryStream stream;
  stream.WriteBuffer("new", 3);
  stream.SaveToFile(path);
  EXPECT_EQ(ReadFileBytes(path), "new");
  struct stat st {};
  ::stat(path.c_str(), &st);
  EXPECT_EQ(st.st_mode & 0777, 0640u);

  // A writer that fails half way leaves the old file and no temporary file.
  EXPECT_THROW(WriteFileReplacing(path,
                                  [](TStream& file) {
                                    file.WriteBuffer("partial", 7);
                                    throw EWriteError("Stream write error");
                                  }),
               EWriteError);
  EXPECT_EQ(ReadFileBytes(path), "new");
  EXPECT_EQ(dir.FileCount(), 1u);

  const String nowhere = dir / "missing/packet.txt";
  EXPECT_EQ(MessageOf<EFCreateError>([&] { stream.SaveToFile(nowhere); }),
            "Cannot create file \"" + nowhere + "\". No such file or directory");

  // A link stays a link; the file behind it is replaced.
  const String link = dir / "link.txt";
  std::filesystem::create_symlink(path, link);
  TStringStream("via link").SaveToFile(link);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(ReadFileBytes(path), "via link");

  TMemoryStream loaded;
  loaded.LoadFromFile(link);
  EXPECT_EQ(String(reinterpret_cast<const char*>(loaded.Memory()), 8), "via link");
  EXPECT_EQ(dir.FileCount(), 2u);
}

TEST(FileReplacement, UnwritableTargetsAreRefused) {
  if (testing::RunningAsRoot()) GTEST_SKIP() << "root writes anywhere";
  TTempDir dir;
  const String path = dir / "locked.txt";
  WriteFileBytes(path, "keep");
  ::chmod(path.c_str(), 0444);
  EXPECT_THROW(TStringStream("x").SaveToFile(path), EFCreateError);
  EXPECT_EQ(ReadFileBytes(path), "keep");
  ::chmod(dir.Path().c_str(), 0555);
  EXPECT_THROW(TStringStream("x").SaveToFile(dir / "new.txt"), EFCreateError);
}

}  // namespace
}  // namespace orv
