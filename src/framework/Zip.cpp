#include "Zip.h"

#include <minizip/unzip.h>
#include <minizip/zip.h>

#include <ctime>
#include <exception>
#include <filesystem>

namespace orv {

ORV_IMPLEMENT_CLASS(TZipFile)

namespace {

[[noreturn]] void ZipError(const String& message) { throw EZipException(message); }
[[noreturn]] void ReadError() { ZipError("Error reading zip file"); }
[[noreturn]] void WriteError() { ZipError("Error writing zip file"); }

constexpr uLong Utf8NamesFlag = 1 << 11;
constexpr int64_t CopyChunk = 64 * 1024;

tm_zip ZipTimeNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  tm_zip t{};
  t.tm_sec = static_cast<uInt>(local.tm_sec);
  t.tm_min = static_cast<uInt>(local.tm_min);
  t.tm_hour = static_cast<uInt>(local.tm_hour);
  t.tm_mday = static_cast<uInt>(local.tm_mday);
  t.tm_mon = static_cast<uInt>(local.tm_mon);
  t.tm_year = static_cast<uInt>(local.tm_year + 1900);
  return t;
}

}  // namespace

// The minizip handles of an open archive: the archive read (zmRead, zmReadWrite) and the new
// archive written into a temporary file (zmWrite, zmReadWrite).
struct TZipFile::THandles {
  unzFile Reader = nullptr;
  zipFile Writer = nullptr;
  std::unique_ptr<TFileReplacement> Replacement;

  ~THandles() {
    if (Writer) zipClose(Writer, nullptr);
    if (Reader) unzClose(Reader);
  }
};

TZipFile::TZipFile() = default;

TZipFile::~TZipFile() { Reset(); }

void TZipFile::Reset() {
  FHandles.reset();  // an unfinished temporary file goes with its replacement
  FEntries.clear();
  FMode = zmClosed;
  FWriteFailed = false;
}

void TZipFile::Open(const String& zipFileName, TZipMode mode) {
  if (FMode != zmClosed) Close();
  FHandles = std::make_unique<THandles>();
  try {
    if (mode == zmRead || mode == zmReadWrite) OpenForReading(zipFileName);
    if (mode == zmWrite || mode == zmReadWrite) OpenForWriting(zipFileName, mode == zmReadWrite);
  } catch (...) {
    Reset();
    throw;
  }
  FMode = mode;
}

void TZipFile::OpenForReading(const String& zipFileName) {
  // Opening it as a file first gives the system's reason when it is missing or locked away.
  { TFileStream probe(zipFileName, fmOpenRead); }
  unzFile reader = unzOpen64(zipFileName.c_str());
  if (!reader) ReadError();
  FHandles->Reader = reader;
  for (int rc = unzGoToFirstFile(reader); rc != UNZ_END_OF_LIST_OF_FILE; rc = unzGoToNextFile(reader)) {
    if (rc != UNZ_OK) ReadError();
    unz_file_info64 info{};
    if (unzGetCurrentFileInfo64(reader, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
      ReadError();
    String name(info.size_filename, '\0');
    unz64_file_pos pos{};
    if (unzGetCurrentFileInfo64(reader, &info, name.data(), static_cast<uLong>(name.size()),
                                nullptr, 0, nullptr, 0) != UNZ_OK ||
        unzGetFilePos64(reader, &pos) != UNZ_OK)
      ReadError();
    FEntries.push_back({std::move(name), pos.pos_in_zip_directory, pos.num_of_file, false});
  }
}

void TZipFile::OpenForWriting(const String& zipFileName, bool keepEntries) {
  if (keepEntries) { TFileStream probe(zipFileName, fmOpenReadWrite); }
  FHandles->Replacement = std::make_unique<TFileReplacement>(zipFileName);
  const String& temp = FHandles->Replacement->GetTempFileName();
  int append = APPEND_STATUS_CREATE;
  if (keepEntries) {
    // The old entries stay as they are stored; new ones follow them in the copy.
    std::error_code ec;
    std::filesystem::copy_file(FHandles->Replacement->GetFileName(), temp,
                               std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) WriteError();
    append = APPEND_STATUS_ADDINZIP;
  }
  FHandles->Writer = zipOpen64(temp.c_str(), append);
  if (!FHandles->Writer) keepEntries ? ReadError() : WriteError();
}

void TZipFile::Close() {
  if (FMode == zmClosed) return;
  struct ResetOnExit {
    TZipFile* Zip;
    ~ResetOnExit() { Zip->Reset(); }
  } resetOnExit{this};
  if (FMode == zmRead) return;
  if (FWriteFailed) WriteError();
  const int rc = zipClose(std::exchange(FHandles->Writer, nullptr), nullptr);
  if (rc != ZIP_OK) WriteError();
  FHandles->Replacement->Commit();
}

void TZipFile::CheckReadable() const {
  if (FMode == zmClosed) ZipError("File must be open");
  if (FMode == zmWrite) ZipError("File must be open for reading");
}

void TZipFile::CheckWritable() const {
  if (FMode == zmClosed) ZipError("File must be open");
  if (FMode == zmRead) ZipError("File must be open for writing");
}

const String& TZipFile::GetFileName(int32_t index) const {
  if (index < 0 || index >= GetFileCount())
    throw EListError("List index out of bounds (" + std::to_string(index) + ")");
  return FEntries[static_cast<size_t>(index)].Name;
}

std::vector<String> TZipFile::GetFileNames() const {
  std::vector<String> names;
  names.reserve(FEntries.size());
  for (const TEntry& entry : FEntries) names.push_back(entry.Name);
  return names;
}

int32_t TZipFile::IndexOf(const String& fileName) const {
  for (size_t i = 0; i < FEntries.size(); ++i)
    if (FEntries[i].Name == fileName) return static_cast<int32_t>(i);
  return -1;
}

std::unique_ptr<TStream> TZipFile::Read(int32_t index) {
  CheckReadable();
  GetFileName(index);  // checks the index
  const TEntry& entry = FEntries[static_cast<size_t>(index)];
  if (entry.Added)
    ZipError("Entry " + entry.Name + " was added since the archive was opened; close it first");
  unzFile reader = FHandles->Reader;
  const unz64_file_pos pos{entry.DirectoryPos, entry.Number};
  if (unzGoToFilePos64(reader, &pos) != UNZ_OK || unzOpenCurrentFile(reader) != UNZ_OK) ReadError();
  auto stream = std::make_unique<TMemoryStream>();
  TBytes chunk(CopyChunk);
  int n;
  while ((n = unzReadCurrentFile(reader, chunk.data(), static_cast<unsigned>(chunk.size()))) > 0)
    stream->WriteBuffer(chunk.data(), n);
  // Closing the entry checks its CRC; a damaged entry fails here or in the read above.
  if (unzCloseCurrentFile(reader) != UNZ_OK || n < 0) ReadError();
  stream->SetPosition(0);
  return stream;
}

std::unique_ptr<TStream> TZipFile::Read(const String& fileName) {
  CheckReadable();
  const int32_t index = IndexOf(fileName);
  if (index < 0) ZipError("File not found: " + fileName);
  return Read(index);
}

void TZipFile::Read(const String& fileName, TBytes& bytes) {
  std::unique_ptr<TStream> stream = Read(fileName);
  bytes = stream->ReadRemainingBytes();
}

void TZipFile::Add(TStream* data, const String& archiveFileName, TZipCompression compression) {
  CheckWritable();
  if (compression != zcStored && compression != zcDeflate)
    ZipError("Support for compression method not registered: " + std::to_string(compression));
  try {
    WriteEntry(data, archiveFileName, compression);
  } catch (...) {
    // minizip cannot take back half an entry: the new archive is lost, the old file stays.
    FWriteFailed = true;
    throw;
  }
  FEntries.push_back({archiveFileName, 0, 0, true});
}

void TZipFile::Add(const TBytes& data, const String& archiveFileName, TZipCompression compression) {
  TBytesStream stream(data);
  Add(&stream, archiveFileName, compression);
}

void TZipFile::WriteEntry(TStream* data, const String& name, TZipCompression compression) {
  if (FWriteFailed) WriteError();
  const int64_t size = data->GetSize() - data->GetPosition();
  zip_fileinfo info{};
  info.tmz_date = ZipTimeNow();
  const int level = compression == zcDeflate ? Z_DEFAULT_COMPRESSION : 0;
  const int zip64 = size >= 0xFFFFFFFFll ? 1 : 0;
  zipFile writer = FHandles->Writer;
  if (zipOpenNewFileInZip4_64(writer, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                              compression, level, 0, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY, nullptr, 0,
                              0, Utf8NamesFlag, zip64) != ZIP_OK)
    WriteError();
  TBytes chunk(CopyChunk);
  for (int64_t n; (n = data->Read(chunk.data(), CopyChunk)) > 0;)
    if (zipWriteInFileInZip(writer, chunk.data(), static_cast<unsigned>(n)) != ZIP_OK) WriteError();
  if (zipCloseFileInZip(writer) != ZIP_OK) WriteError();
}

bool TZipFile::IsValid(const String& zipFileName) {
  unzFile reader = unzOpen64(zipFileName.c_str());
  if (!reader) return false;
  unzClose(reader);
  return true;
}

}  // namespace orv
