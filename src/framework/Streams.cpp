#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

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

namespace {

[[noreturn]] void OutOfStreamMemory() {
  throw EStreamError("Out of memory while expanding memory stream");
}

}  // namespace

void TMemoryStream::TFreeBlock::operator()(void* block) const noexcept { std::free(block); }

void* TMemoryStream::Realloc(int64_t& NewCapacity) {
  constexpr int64_t Step = 0x2000;
  constexpr int64_t Largest = std::numeric_limits<int64_t>::max() / 4;
  if (NewCapacity > Largest) OutOfStreamMemory();
  if (NewCapacity > FCapacity) NewCapacity = std::max(NewCapacity, FCapacity + FCapacity / 2);
  if (NewCapacity > 0) NewCapacity = (NewCapacity + Step - 1) & ~(Step - 1);
  if (NewCapacity == FCapacity) return FBlock.get();
  if (NewCapacity == 0) {
    FBlock.reset();
    return nullptr;
  }
  void* block = std::realloc(FBlock.get(), static_cast<size_t>(NewCapacity));
  if (!block) OutOfStreamMemory();
  (void)FBlock.release();  // realloc has taken the old block over
  FBlock.reset(block);
  if (NewCapacity > FCapacity)
    std::memset(static_cast<uint8_t*>(block) + FCapacity, 0, static_cast<size_t>(NewCapacity - FCapacity));
  return block;
}

void TMemoryStream::SetCapacity(int64_t NewCapacity) {
  SetPointer(Realloc(NewCapacity), FSize);
  FCapacity = NewCapacity;
}

int64_t TMemoryStream::Read(void* buffer, int64_t count) {
  if (FPosition < 0 || count <= 0 || FPosition >= FSize) return 0;
  const int64_t n = std::min(count, FSize - FPosition);
  std::memcpy(buffer, Memory() + FPosition, static_cast<size_t>(n));
  FPosition += n;
  return n;
}

int64_t TMemoryStream::Write(const void* buffer, int64_t count) {
  if (FPosition < 0 || count <= 0) return 0;
  const int64_t end = FPosition + count;
  if (end > FSize) {
    if (end > FCapacity) SetCapacity(end);
    if (FPosition > FSize) std::memset(Memory() + FSize, 0, static_cast<size_t>(FPosition - FSize));
    FSize = end;
  }
  std::memcpy(Memory() + FPosition, buffer, static_cast<size_t>(count));
  FPosition = end;
  return count;
}

int64_t TMemoryStream::Seek(int64_t offset, TSeekOrigin origin) {
  switch (origin) {
    case soBeginning: FPosition = offset; break;
    case soCurrent: FPosition += offset; break;
    case soEnd: FPosition = FSize + offset; break;
  }
  return FPosition;
}

void TMemoryStream::SetSize(int64_t newSize) {
  newSize = std::max<int64_t>(newSize, 0);
  const int64_t oldSize = FSize;
  SetCapacity(newSize);
  FSize = newSize;
  // What lies past the end stays zero, so that growing the size again shows no old bytes.
  const int64_t staleEnd = std::min(oldSize, FCapacity);
  if (staleEnd > newSize) std::memset(Memory() + newSize, 0, static_cast<size_t>(staleEnd - newSize));
  if (FPosition > newSize) FPosition = newSize;
}

void TMemoryStream::Clear() {
  SetCapacity(0);
  FSize = 0;
  FPosition = 0;
}

void TMemoryStream::LoadFromStream(TStream* stream) {
  stream->SetPosition(0);
  const TBytes bytes = stream->ReadBytes(stream->GetSize());  // all of it before anything changes
  SetSize(static_cast<int64_t>(bytes.size()));
  if (!bytes.empty()) std::memcpy(Memory(), bytes.data(), bytes.size());
}

void TMemoryStream::SaveToStream(TStream* stream) const { stream->WriteBuffer(Memory(), FSize); }

void TMemoryStream::LoadFromFile(const String& fileName) {
  TFileStream file(fileName, fmOpenRead | fmShareDenyWrite);
  LoadFromStream(&file);
}

void TMemoryStream::SaveToFile(const String& fileName) const {
  WriteFileReplacing(fileName, [this](TStream& file) { SaveToStream(&file); });
}

// ---------------------------------------------------------------------------------------------
// TBytesStream and TStringStream

TBytesStream::TBytesStream(TBytes bytes) : FBytes(std::move(bytes)) {
  const auto size = static_cast<int64_t>(FBytes.size());
  SetPointer(FBytes.data(), size);
  SetCapacity(size);  // the array already has it: Realloc changes nothing
}

void* TBytesStream::Realloc(int64_t& NewCapacity) {
  try {
    if (NewCapacity == 0)
      TBytes().swap(FBytes);
    else
      FBytes.resize(static_cast<size_t>(NewCapacity));
  } catch (const std::exception&) {
    OutOfStreamMemory();
  }
  return FBytes.empty() ? nullptr : FBytes.data();
}

String TStringStream::ReadString(int64_t count) {
  const int64_t left = std::max<int64_t>(GetSize() - GetPosition(), 0);
  const int64_t n = count < 0 ? left : std::min(count, left);
  String text(static_cast<size_t>(n), '\0');
  Read(text.data(), n);
  return text;
}

}  // namespace orv
