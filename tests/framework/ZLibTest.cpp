#include <gtest/gtest.h>

#include <random>

#include "StreamsTestSupport.h"
#include "ZLib.h"

namespace orv {
namespace {

using testing::MessageOf;

TBytes MixedData(size_t size) {
  std::mt19937 random(7);
  TBytes data(size);
  for (size_t i = 0; i < size; ++i)  // runs of text and noise, so that both paths of deflate run
    data[i] = (i / 4096) % 2 ? static_cast<uint8_t>(random()) : static_cast<uint8_t>("orv "[i % 4]);
  return data;
}

TEST(ZLib, RoundTripsLargeAndEmptyDataThroughStreams) {
  for (size_t size : {size_t(0), size_t(3 << 20) + 17}) {
    const TBytes data = MixedData(size);
    TBytesStream plain(data), packed, unpacked;
    plain.SetPosition(plain.GetSize());  // compression takes the whole input anyway
    ZCompressStream(&plain, &packed);
    EXPECT_EQ(packed.GetBytes()[0], 0x78);  // a zlib header

    // Decompression starts at the position and stops after the zlib stream.
    TMemoryStream framed;
    framed.WriteBuffer("head", 4);
    packed.SaveToStream(&framed);
    framed.WriteBuffer("tail", 4);
    framed.SetPosition(4);
    ZDecompressStream(&framed, &unpacked);
    EXPECT_EQ(unpacked.GetBytes(), data);
    EXPECT_EQ(framed.GetPosition(), framed.GetSize() - 4);
  }
  const TBytes text{'a', 'b', 'a', 'b', 'a', 'b'};
  EXPECT_EQ(ZDecompress(ZCompress(text, zcMax)), text);
}

TEST(ZLib, CorruptTruncatedAndOversizedInputRaise) {
  const TBytes packed = ZCompress(MixedData(100000));
  using E = EZDecompressionError;
  EXPECT_EQ(MessageOf<E>([] { ZDecompress(TBytes{'n', 'o', 't', ' ', 'z'}); }),
            "Invalid compressed data: incorrect header check");
  EXPECT_EQ(MessageOf<E>([] { ZDecompress(TBytes{}); }),
            "Invalid compressed data: unexpected end of data");
  EXPECT_EQ(MessageOf<E>([&] { ZDecompress(TBytes(packed.begin(), packed.end() - 100)); }),
            "Invalid compressed data: unexpected end of data");
  TBytes damaged = packed;
  for (size_t i = 40; i < 60; ++i) damaged[i] ^= 0x5A;
  EXPECT_EQ(MessageOf<E>([&] { ZDecompress(damaged); }).rfind("Invalid compressed data: ", 0), 0u);

  // A few kilobytes that expand to 16 MiB stop at the bound, having written no more than it.
  const TBytes bomb = ZCompress(TBytes(16 << 20, 0));
  EXPECT_LT(bomb.size(), 100000u);
  TBytesStream in(bomb), out;
  EXPECT_EQ(MessageOf<E>([&] { ZDecompressStream(&in, &out, 1 << 20); }),
            "Decompressed data exceed the limit of 1048576 bytes");
  EXPECT_LE(out.GetSize(), 1 << 20);
  EXPECT_EQ(ZDecompress(bomb, 16 << 20).size(), size_t(16) << 20);
}

}  // namespace
}  // namespace orv
