#include "ZLib.h"

#include <zlib.h>

#include <memory>

namespace orv {

namespace {

constexpr size_t ChunkSize = 64 * 1024;

int ZLevel(TZCompressionLevel level) {
  switch (level) {
    case zcNone: return Z_NO_COMPRESSION;
    case zcFastest: return Z_BEST_SPEED;
    case zcMax: return Z_BEST_COMPRESSION;
    default: return Z_DEFAULT_COMPRESSION;
  }
}

String ZReason(const z_stream& z, int code) {
  if (z.msg) return z.msg;
  return zError(code);
}

struct DeflateEnd {
  void operator()(z_stream* z) const { deflateEnd(z); }
};
struct InflateEnd {
  void operator()(z_stream* z) const { inflateEnd(z); }
};

// Runs `z` over all of `in`, writing each full output chunk to `out`; `step` is deflate or
// inflate with the flush mode, and answers zlib's code.
template <class Step, class Check>
int Pump(z_stream& z, TStream* in, TStream* out, bool finishAtEnd, Step step, Check check) {
  TBytes input(ChunkSize), output(ChunkSize);
  int code = Z_OK;
  bool inputEnded = false;
  while (code != Z_STREAM_END) {
    if (z.avail_in == 0 && !inputEnded) {
      const int64_t n = in->Read(input.data(), ChunkSize);
      inputEnded = n < static_cast<int64_t>(ChunkSize);
      z.next_in = input.data();
      z.avail_in = static_cast<uInt>(n);
    }
    z.next_out = output.data();
    z.avail_out = static_cast<uInt>(ChunkSize);
    code = step(inputEnded && finishAtEnd ? Z_FINISH : Z_NO_FLUSH);
    const size_t produced = ChunkSize - z.avail_out;
    check(code, produced, inputEnded);
    out->WriteBuffer(output.data(), static_cast<int64_t>(produced));
  }
  return static_cast<int>(z.avail_in);  // bytes read past the end of the zlib stream
}

}  // namespace

void ZCompressStream(TStream* inStream, TStream* outStream, TZCompressionLevel level) {
  z_stream z{};
  if (deflateInit(&z, ZLevel(level)) != Z_OK) throw EZCompressionError("Compression error");
  std::unique_ptr<z_stream, DeflateEnd> guard(&z);
  inStream->SetPosition(0);
  Pump(z, inStream, outStream, true, [&](int flush) { return deflate(&z, flush); },
       [&](int code, size_t, bool) {
         if (code != Z_OK && code != Z_STREAM_END && code != Z_BUF_ERROR)
           throw EZCompressionError("Compression error: " + ZReason(z, code));
       });
}

void ZDecompressStream(TStream* inStream, TStream* outStream, int64_t maxSize) {
  z_stream z{};
  if (inflateInit(&z) != Z_OK) throw EZDecompressionError("Decompression error");
  std::unique_ptr<z_stream, InflateEnd> guard(&z);
  int64_t total = 0;
  const int unused = Pump(
      z, inStream, outStream, false, [&](int flush) { return inflate(&z, flush); },
      [&](int code, size_t produced, bool inputEnded) {
        if (code == Z_NEED_DICT) throw EZDecompressionError("Invalid compressed data: dictionary required");
        if (code == Z_DATA_ERROR || code == Z_MEM_ERROR || code == Z_STREAM_ERROR)
          throw EZDecompressionError("Invalid compressed data: " + ZReason(z, code));
        if (code != Z_STREAM_END && inputEnded && z.avail_in == 0 && produced == 0)
          throw EZDecompressionError("Invalid compressed data: unexpected end of data");
        total += static_cast<int64_t>(produced);
        if (total > maxSize)
          throw EZDecompressionError("Decompressed data exceed the limit of " +
                                     std::to_string(maxSize) + " bytes");
      });
  if (unused > 0) inStream->Seek(-unused, soCurrent);
}

TBytes ZCompress(std::span<const uint8_t> data, TZCompressionLevel level) {
  TBytesStream in(TBytes(data.begin(), data.end())), out;
  ZCompressStream(&in, &out, level);
  return out.GetBytes();
}

TBytes ZDecompress(std::span<const uint8_t> data, int64_t maxSize) {
  TBytesStream in(TBytes(data.begin(), data.end())), out;
  ZDecompressStream(&in, &out, maxSize);
  return out.GetBytes();
}

}  // namespace orv
