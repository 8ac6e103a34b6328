// TGraphic, and TBitmap with its BMP file form.

#include <algorithm>
#include <cstdlib>

#include "Graphics.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TGraphic)
ORV_IMPLEMENT_CLASS(TBitmap)

// ---------------------------------------------------------------------------------------------
// TGraphic

void TGraphic::LoadFromFile(const String& fileName) {
  TFileStream file(fileName, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(&file);
}

void TGraphic::SaveToFile(const String& fileName) const {
  WriteFileReplacing(fileName, [this](TStream& file) { SaveToStream(&file); });
}

void TGraphic::SetModified(bool value) {
  if (value)
    Changed();
  else
    FModified = false;
}

void TGraphic::Changed() {
  FModified = true;
  if (FOnChange) FOnChange(this);
}

// ---------------------------------------------------------------------------------------------
// BMP layout

namespace {

constexpr int64_t FileHeaderSize = 14;
constexpr int64_t InfoHeaderSize = 40;
constexpr uint32_t NoCompression = 0;

[[noreturn]] void InvalidBitmap() { throw EInvalidGraphic("Bitmap image is not valid"); }

// Little-endian fields at fixed offsets of a header.
class TFieldWriter {
 public:
  explicit TFieldWriter(TBytes& bytes) : FBytes(bytes) {}
  void Put16(uint16_t value) { Put(value, 2); }
  void Put32(uint32_t value) { Put(value, 4); }

 private:
  void Put(uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) FBytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
  }
  TBytes& FBytes;
};

uint32_t Get32(const TBytes& bytes, size_t at) {
  return uint32_t{bytes[at]} | uint32_t{bytes[at + 1]} << 8 | uint32_t{bytes[at + 2]} << 16 |
         uint32_t{bytes[at + 3]} << 24;
}
uint16_t Get16(const TBytes& bytes, size_t at) {
  return static_cast<uint16_t>(bytes[at] | bytes[at + 1] << 8);
}

// Rows are padded to whole 32-bit words.
int64_t RowBytes(int64_t width, int bitsPerPixel) { return (width * bitsPerPixel / 8 + 3) / 4 * 4; }

uint32_t PixelOf(const uint8_t* bgr) {
  return uint32_t{bgr[2]} | uint32_t{bgr[1]} << 8 | uint32_t{bgr[0]} << 16;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// TBitmap

void TBitmap::Assign(TPersistent* source) {
  if (source && !dynamic_cast<TBitmap*>(source)) return TGraphic::Assign(source);
  auto* bitmap = static_cast<TBitmap*>(source);
  FWidth = bitmap ? bitmap->FWidth : 0;
  FHeight = bitmap ? bitmap->FHeight : 0;
  FPixels = bitmap ? bitmap->FPixels : std::vector<uint32_t>();
  Changed();
}

void TBitmap::SetSize(int32_t width, int32_t height) {
  width = std::max(width, 0);
  height = std::max(height, 0);
  if (width == FWidth && height == FHeight) return;
  std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
  const int32_t keepWidth = std::min(width, FWidth), keepHeight = std::min(height, FHeight);
  for (int32_t y = 0; y < keepHeight; ++y)
    std::copy_n(FPixels.begin() + static_cast<ptrdiff_t>(y) * FWidth, keepWidth,
                pixels.begin() + static_cast<ptrdiff_t>(y) * width);
  FPixels = std::move(pixels);
  FWidth = width;
  FHeight = height;
  Changed();
}

TColor TBitmap::GetPixel(int32_t x, int32_t y) const {
  if (x < 0 || y < 0 || x >= FWidth || y >= FHeight) return TColor(-1);
  return TColor(static_cast<int32_t>(FPixels[static_cast<size_t>(y) * FWidth + x]));
}

void TBitmap::SetPixel(int32_t x, int32_t y, TColor color) {
  if (x < 0 || y < 0 || x >= FWidth || y >= FHeight) return;
  FPixels[static_cast<size_t>(y) * FWidth + x] = static_cast<uint32_t>(color) & 0xFFFFFF;
  Changed();
}

void TBitmap::SaveToStream(TStream* stream) const {
  if (GetEmpty()) return;
  const int64_t rowBytes = RowBytes(FWidth, 24);
  const int64_t imageBytes = rowBytes * FHeight;
  TBytes bytes;
  bytes.reserve(static_cast<size_t>(FileHeaderSize + InfoHeaderSize + imageBytes));
  TFieldWriter out(bytes);
  out.Put16('B' | 'M' << 8);
  out.Put32(static_cast<uint32_t>(FileHeaderSize + InfoHeaderSize + imageBytes));
  out.Put32(0);  // reserved
  out.Put32(static_cast<uint32_t>(FileHeaderSize + InfoHeaderSize));
  out.Put32(InfoHeaderSize);
  out.Put32(static_cast<uint32_t>(FWidth));
  out.Put32(static_cast<uint32_t>(FHeight));  // positive: rows bottom-up
  out.Put16(1);                               // planes
  out.Put16(24);
  out.Put32(NoCompression);
  out.Put32(static_cast<uint32_t>(imageBytes));
  for (int i = 0; i < 4; ++i) out.Put32(0);  // resolution and palette: none
  for (int32_t y = FHeight - 1; y >= 0; --y) {
    const uint32_t* row = &FPixels[static_cast<size_t>(y) * FWidth];
    for (int32_t x = 0; x < FWidth; ++x) {
      bytes.push_back(static_cast<uint8_t>(row[x] >> 16));  // blue, green, red
      bytes.push_back(static_cast<uint8_t>(row[x] >> 8));
      bytes.push_back(static_cast<uint8_t>(row[x]));
    }
    bytes.resize(bytes.size() + static_cast<size_t>(rowBytes - int64_t{FWidth} * 3));
  }
  stream->WriteBytes(bytes);
}

void TBitmap::LoadFromStream(TStream* stream) {
  const int64_t available = stream->GetSize() - stream->GetPosition();
  if (available <= 0) return Assign(nullptr);
  if (available < FileHeaderSize) InvalidBitmap();
  const TBytes fileHeader = stream->ReadBytes(FileHeaderSize);
  const int64_t fileSize = Get32(fileHeader, 2), bitsOffset = Get32(fileHeader, 10);
  if (fileHeader[0] != 'B' || fileHeader[1] != 'M' || fileSize < FileHeaderSize + InfoHeaderSize ||
      fileSize > available)
    InvalidBitmap();
  const TBytes body = stream->ReadBytes(fileSize - FileHeaderSize);  // what follows the file header

  const int64_t infoSize = Get32(body, 0);
  const int32_t width = static_cast<int32_t>(Get32(body, 4));
  const int32_t height = static_cast<int32_t>(Get32(body, 8));
  const int bits = Get16(body, 14);
  if (infoSize < InfoHeaderSize || bitsOffset < FileHeaderSize + infoSize || width <= 0 ||
      height == 0 || height == INT32_MIN || Get16(body, 12) != 1 || (bits != 24 && bits != 32) ||
      Get32(body, 16) != NoCompression)
    InvalidBitmap();
  const int32_t rows = std::abs(height);
  const int64_t rowBytes = RowBytes(width, bits);
  const int64_t dataStart = bitsOffset - FileHeaderSize;
  const auto dataBytes = static_cast<int64_t>(body.size()) - dataStart;
  if (dataBytes < 0 || rows > dataBytes / rowBytes) InvalidBitmap();

  std::vector<uint32_t> pixels(static_cast<size_t>(width) * static_cast<size_t>(rows));
  for (int32_t r = 0; r < rows; ++r) {
    const int32_t y = height < 0 ? r : rows - 1 - r;  // a negative height stores rows top-down
    const uint8_t* in = body.data() + dataStart + r * rowBytes;
    for (int32_t x = 0; x < width; ++x, in += bits / 8)
      pixels[static_cast<size_t>(y) * width + x] = PixelOf(in);
  }
  FWidth = width;
  FHeight = rows;
  FPixels = std::move(pixels);
  Changed();
}

}  // namespace orv
