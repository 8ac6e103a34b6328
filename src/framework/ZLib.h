#pragma once
// zlib streams (RFC 1950) of whole streams and byte arrays.

#include <span>

#include "Streams.h"

namespace orv {

enum TZCompressionLevel : uint8_t { zcNone, zcFastest, zcDefault, zcMax };

// The most a decompression produces unless told otherwise. Deflate expands at most about
// 1032:1, so a bound relative to the input would not stop anything a valid stream could not do
// anyway; a fixed ceiling is what keeps a small hostile input from taking all memory.
constexpr int64_t ZDefaultMaxDecompressedSize = int64_t(1) << 30;

// Compresses all of `inStream` (from its start) and writes the zlib stream to `outStream` at
// its position.
void ZCompressStream(TStream* inStream, TStream* outStream, TZCompressionLevel level = zcDefault);

// Decompresses the zlib stream that starts at the position of `inStream` and writes the data to
// `outStream` at its position; `inStream` is left just after the zlib stream. A corrupt or
// truncated stream raises EZDecompressionError "Invalid compressed data: <reason>"; more than
// `maxSize` bytes of output raise EZDecompressionError
// "Decompressed data exceed the limit of %d bytes".
void ZDecompressStream(TStream* inStream, TStream* outStream,
                       int64_t maxSize = ZDefaultMaxDecompressedSize);

TBytes ZCompress(std::span<const uint8_t> data, TZCompressionLevel level = zcDefault);
TBytes ZDecompress(std::span<const uint8_t> data, int64_t maxSize = ZDefaultMaxDecompressedSize);

}  // namespace orv
