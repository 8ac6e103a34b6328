#pragma once
// Streams: the abstract TStream with its buffer helpers, memory, byte, string, handle and file
// streams, and the replace-by-rename helper every file save goes through.

#include <functional>
#include <memory>
#include <type_traits>

#include "System.h"

namespace orv {

enum TSeekOrigin : uint8_t { soBeginning, soCurrent, soEnd };
// The older spelling of the seek origins.
constexpr TSeekOrigin soFromBeginning = soBeginning;
constexpr TSeekOrigin soFromCurrent = soCurrent;
constexpr TSeekOrigin soFromEnd = soEnd;

class TStream : public TObject {
  ORV_CLASS(TStream, TObject)
 public:
  TStream() = default;

  // Reads up to `count` bytes; answers how many were read (0 at the end).
  virtual int64_t Read(void* buffer, int64_t count) = 0;
  // Writes up to `count` bytes; answers how many were written.
  virtual int64_t Write(const void* buffer, int64_t count) = 0;
  // Moves the position; answers the new position.
  virtual int64_t Seek(int64_t offset, TSeekOrigin origin) = 0;

  int64_t GetPosition() { return Seek(0, soCurrent); }
  void SetPosition(int64_t position) { Seek(position, soBeginning); }
  virtual int64_t GetSize();
  // Streams that cannot change their size ignore it.
  virtual void SetSize(int64_t newSize);

  // Exactly `count` bytes or EReadError "Stream read error".
  void ReadBuffer(void* buffer, int64_t count);
  // Exactly `count` bytes or EWriteError "Stream write error".
  void WriteBuffer(const void* buffer, int64_t count);

  // Copies `count` bytes of `source` from its position; 0 copies all of it from its start.
  // Answers the number of bytes copied.
  int64_t CopyFrom(TStream* source, int64_t count);

  // Exactly `count` bytes (EReadError when fewer remain).
  TBytes ReadBytes(int64_t count);
  // The bytes from the position to the end.
  TBytes ReadRemainingBytes();
  void WriteBytes(const TBytes& bytes) { WriteBuffer(bytes.data(), static_cast<int64_t>(bytes.size())); }

  // A plain value in its in-memory form (integers little-endian on the platforms we build for).
  template <class T>
  T ReadData() {
    static_assert(std::is_trivially_copyable_v<T>);
    T value;
    ReadBuffer(&value, sizeof(T));
    return value;
  }
  template <class T>
  void WriteData(const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    WriteBuffer(&value, sizeof(T));
  }
};

// A stream over a block of memory it owns; the block grows as it is written past its end.
class TMemoryStream : public TStream {
  ORV_CLASS(TMemoryStream, TStream)
 public:
  TMemoryStream() = default;

  int64_t Read(void* buffer, int64_t count) override;
  int64_t Write(const void* buffer, int64_t count) override;
  int64_t Seek(int64_t offset, TSeekOrigin origin) override;
  int64_t GetSize() override { return static_cast<int64_t>(FData.size()); }
  void SetSize(int64_t newSize) override;

  // The stream's bytes; valid until the size changes.
  uint8_t* Memory() { return FData.data(); }
  const uint8_t* Memory() const { return FData.data(); }
  void Clear();
  void SetCapacity(int64_t capacity);

  // Replaces the content by the whole of `stream`, from its start.
  void LoadFromStream(TStream* stream);
  // Writes the whole content to `stream` at its position.
  void SaveToStream(TStream* stream) const;
  void LoadFromFile(const String& fileName);
  // Replaces the file as a whole (WriteFileReplacing).
  void SaveToFile(const String& fileName) const;

 protected:
  TBytes FData;
  int64_t FPosition = 0;
};

// A memory stream that starts from, and hands back, a byte array.
class TBytesStream : public TMemoryStream {
  ORV_CLASS(TBytesStream, TMemoryStream)
 public:
  TBytesStream() = default;
  explicit TBytesStream(TBytes bytes) { FData = std::move(bytes); }

  const TBytes& GetBytes() const { return FData; }
};

// A memory stream over text: its bytes are the text's UTF-8 bytes as they stand.
class TStringStream : public TBytesStream {
  ORV_CLASS(TStringStream, TBytesStream)
 public:
  TStringStream() = default;
  explicit TStringStream(const String& text) : TBytesStream(TBytes(text.begin(), text.end())) {}

  String GetDataString() const { return String(FData.begin(), FData.end()); }
  // Up to `count` bytes from the position as text; a negative count reads to the end.
  String ReadString(int64_t count = -1);
  void WriteString(const String& text) { WriteBuffer(text.data(), static_cast<int64_t>(text.size())); }
};

// A stream over an operating-system file descriptor that someone else owns.
class THandleStream : public TStream {
  ORV_CLASS(THandleStream, TStream)
 public:
  explicit THandleStream(int handle) : FHandle(handle) {}

  int64_t Read(void* buffer, int64_t count) override;
  int64_t Write(const void* buffer, int64_t count) override;
  int64_t Seek(int64_t offset, TSeekOrigin origin) override;
  // EStreamError with the system's text when the file cannot be resized.
  void SetSize(int64_t newSize) override;
  int GetHandle() const { return FHandle; }

 protected:
  int FHandle = -1;
};

// File open modes; the sharing flags are accepted and have no effect here.
constexpr uint16_t fmCreate = 0xFF00;
constexpr uint16_t fmOpenRead = 0x0000;
constexpr uint16_t fmOpenWrite = 0x0001;
constexpr uint16_t fmOpenReadWrite = 0x0002;
constexpr uint16_t fmShareCompat = 0x0000;
constexpr uint16_t fmShareExclusive = 0x0010;
constexpr uint16_t fmShareDenyWrite = 0x0020;
constexpr uint16_t fmShareDenyRead = 0x0030;
constexpr uint16_t fmShareDenyNone = 0x0040;

// A stream over a named file it opens and closes. fmCreate makes or empties the file and opens
// it for reading and writing. Failures raise EFCreateError `Cannot create file "%s". %s` or
// EFOpenError `Cannot open file "%s". %s`, the second part the system's text.
class TFileStream : public THandleStream {
  ORV_CLASS(TFileStream, THandleStream)
 public:
  TFileStream(const String& fileName, uint16_t mode);
  ~TFileStream() override;

  const String& GetFileName() const { return FFileName; }
  // Writes what the system buffers to the device.
  void FlushBuffers();

 private:
  String FFileName;
};

// The system's text for an error number, as error messages quote it.
String SysErrorMessage(int errorCode);

// Replaces a file as a whole: the new content goes to a temporary file beside it (so on the same
// file system), which is renamed over the old one only once it is complete and on disk. If
// anything fails the temporary file is removed and the old file stays as it was. A symbolic link
// is followed, so the file it names is replaced and the link stays.
class TFileReplacement {
 public:
  // Makes the temporary file; EFCreateError naming `fileName` when it cannot be made.
  explicit TFileReplacement(const String& fileName);
  TFileReplacement(const TFileReplacement&) = delete;
  TFileReplacement& operator=(const TFileReplacement&) = delete;
  // Removes the temporary file unless committed.
  ~TFileReplacement();

  const String& GetFileName() const { return FFileName; }
  const String& GetTempFileName() const { return FTempFileName; }
  // Flushes the temporary file to disk and renames it over the file; EFCreateError on failure.
  void Commit();

 private:
  String FFileName;      // the file replaced (a link resolved)
  String FTempFileName;
  int FMode = -1;  // the permission bits of the file replaced, if there was one
  bool FCommitted = false;
};

// Writes a file through `write`, replacing any old file only when `write` and the flush succeed.
void WriteFileReplacing(const String& fileName, const std::function<void(TStream&)>& write);

}  // namespace orv
