#include <algorithm>
#include <cstring>

#include "Streams.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TStream)
ORV_IMPLEMENT_CLASS(TMemoryStream)
ORV_IMPLEMENT_CLASS(TBytesStream)
ORV_IMPLEMENT_CLASS(TStringStream)

// ---------------------------------------------------------------------------------------------
// TStream

int64_t TStream::GetSize() {
  const int64_t position = Seek(0, soCurrent);
  const int64_t size = Seek(0, soEnd);
  Seek(position, soBeginning);
  return size;
}

void TStream::SetSize(int64_t) {}

void TStream::ReadBuffer(void* buffer, int64_t count) {
  if (count != 0 && Read(buffer, count) != count) throw EReadError("Stream read error");
}

void TStream::WriteBuffer(const void* buffer, int64_t count) {
  if (count != 0 && Write(buffer, count) != count) throw EWriteError("Stream write error");
}

int64_t TStream::CopyFrom(TStream* source, int64_t count) {
  if (count <= 0) {
    source->SetPosition(0);
    count = source->GetSize();
  }
  constexpr int64_t MaxChunk = 1 << 20;
  TBytes chunk(static_cast<size_t>(std::min(count, MaxChunk)));
  for (int64_t left = count; left > 0;) {
    const int64_t n = std::min(left, MaxChunk);
    source->ReadBuffer(chunk.data(), n);
    WriteBuffer(chunk.data(), n);
    left -= n;
  }
  return count;
}

TBytes TStream::ReadBytes(int64_t count) {
  TBytes bytes(static_cast<size_t>(std::max<int64_t>(count, 0)));
  ReadBuffer(bytes.data(), static_cast<int64_t>(bytes.size()));
  return bytes;
}

TBytes TStream::ReadRemainingBytes() {
  const int64_t position = GetPosition();
  return ReadBytes(std::max<int64_t>(GetSize() - position, 0));
}

// ---------------------------------------------------------------------------------------------
// TMemoryStream

int64_t TMemoryStream::Read(void* buffer, int64_t count) {
  const int64_t size = GetSize();
  if (FPosition < 0 || count <= 0 || FPosition >= size) return 0;
  const int64_t n = std::min(count, size - FPosition);
  std::memcpy(buffer, FData.data() + FPosition, static_cast<size_t>(n));
  FPosition += n;
  return n;
}

int64_t TMemoryStream::Write(const void* buffer, int64_t count) {
  if (FPosition < 0 || count <= 0) return 0;
  const int64_t end = FPosition + count;
  if (end > GetSize()) FData.resize(static_cast<size_t>(end));
  std::memcpy(FData.data() + FPosition, buffer, static_cast<size_t>(count));
  FPosition = end;
  return count;
}

int64_t TMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
  switch (origin) {
    case soBeginning: FPosition = offset; break;
    case soCurrent: FPosition += offset; break;
    case soEnd: FPosition = GetSize() + offset; break;
  }
  return FPosition;
}

void TMemoryStream::SetSize(int64_t newSize) {
  FData.resize(static_cast<size_t>(std::max<int64_t>(newSize, 0)));
  FPosition = std::min(FPosition, GetSize());
}

void TMemoryStream::Clear() {
  TBytes().swap(FData);
  FPosition = 0;
}

void TMemoryStream::SetCapacity(int64_t capacity) {
  if (capacity > GetSize()) FData.reserve(static_cast<size_t>(capacity));
}

void TMemoryStream::LoadFromStream(TStream* stream) {
  stream->SetPosition(0);
  TBytes bytes = stream->ReadBytes(stream->GetSize());
  FData = std::move(bytes);  // only once all of it was read
  FPosition = std::min(FPosition, GetSize());
}

void TMemoryStream::SaveToStream(TStream* stream) const {
  stream->WriteBuffer(FData.data(), static_cast<int64_t>(FData.size()));
}

void TMemoryStream::LoadFromFile(const String& fileName) {
  TFileStream file(fileName, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(&file);
}

void TMemoryStream::SaveToFile(const String& fileName) const {
  WriteFileReplacing(fileName, [this](TStream& file) { SaveToStream(&file); });
}

// ---------------------------------------------------------------------------------------------
// TStringStream

String TStringStream::ReadString(int64_t count) {
  const int64_t left = std::max<int64_t>(GetSize() - FPosition, 0);
  const int64_t n = count < 0 ? left : std::min(count, left);
  String text(static_cast<size_t>(n), '\0');
  Read(text.data(), n);
  return text;
}

}  // namespace orv
