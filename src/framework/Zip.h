#pragma once
// Zip archives: read entries, add entries, keep the old archive until a new one is complete.

#include <memory>
#include <vector>

#include "Streams.h"

namespace orv {

enum TZipMode : uint8_t { zmClosed, zmRead, zmReadWrite, zmWrite };
enum TZipCompression : uint16_t { zcStored = 0, zcDeflate = 8 };

// A zip archive file. zmRead reads an existing archive; zmWrite makes a new one (replacing any
// file of that name); zmReadWrite keeps the entries of an existing archive and adds new ones.
// In both writing modes the archive is built in a temporary file beside the old one and renamed
// over it by Close, so a failed save leaves the old archive as it was. Destroying an archive
// that is still open for writing discards what was added: only Close writes.
//
// Entry names are compared exactly. Adding a name the archive already holds adds a second
// entry; IndexOf finds the first.
//
// Errors: EFOpenError / EFCreateError when the file cannot be opened or made; EZipException
// "Error reading zip file" (not a zip archive, or a damaged one), "Error writing zip file",
// "File must be open", "File must be open for reading", "File must be open for writing",
// "File not found: %s" (an entry name), "Support for compression method not registered: %d";
// EListError "List index out of bounds (%d)" for an entry index.
class TZipFile : public TObject {
  ORV_CLASS(TZipFile, TObject)
 public:
  TZipFile();
  ~TZipFile() override;

  void Open(const String& zipFileName, TZipMode mode);
  // Writes the archive in the writing modes; the archive is closed afterwards also on failure.
  void Close();
  TZipMode GetMode() const { return FMode; }

  int32_t GetFileCount() const { return static_cast<int32_t>(FEntries.size()); }
  int32_t FileCount() const { return GetFileCount(); }
  const String& GetFileName(int32_t index) const;
  const String& FileName(int32_t index) const { return GetFileName(index); }
  std::vector<String> GetFileNames() const;
  int32_t IndexOf(const String& fileName) const;  // -1 when missing

  // A memory stream of the entry's bytes, positioned at 0. Entries added since the archive was
  // opened cannot be read before it is closed.
  std::unique_ptr<TStream> Read(int32_t index);
  std::unique_ptr<TStream> Read(const String& fileName);
  void Read(int32_t index, std::unique_ptr<TStream>& stream) { stream = Read(index); }
  void Read(const String& fileName, std::unique_ptr<TStream>& stream) { stream = Read(fileName); }
  void Read(const String& fileName, TBytes& bytes);

  // Adds the bytes of `data` from its position to its end as an entry.
  void Add(TStream* data, const String& archiveFileName, TZipCompression compression = zcDeflate);
  void Add(const TBytes& data, const String& archiveFileName, TZipCompression compression = zcDeflate);

  // Whether the file is a zip archive that can be read.
  static bool IsValid(const String& zipFileName);

 private:
  struct TEntry {
    String Name;
    uint64_t DirectoryPos = 0;  // where the central directory describes it
    uint64_t Number = 0;        // its place in the archive
    bool Added = false;         // added since the archive was opened
  };
  struct THandles;
  void OpenForReading(const String& zipFileName);
  void OpenForWriting(const String& zipFileName, bool keepEntries);
  void CheckReadable() const;
  void CheckWritable() const;
  void WriteEntry(TStream* data, const String& name, TZipCompression compression);
  void Reset();

  TZipMode FMode = zmClosed;
  std::vector<TEntry> FEntries;
  std::unique_ptr<THandles> FHandles;
  bool FWriteFailed = false;
};

}  // namespace orv
