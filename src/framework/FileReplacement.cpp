#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>

#include "Streams.h"

namespace orv {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void CannotCreate(const String& fileName, int errorCode) {
  throw EFCreateError("Cannot create file \"" + fileName + "\". " + SysErrorMessage(errorCode));
}

// The file a path names: a symbolic link is followed so that the link itself survives.
fs::path FileBehindLinks(const String& fileName) {
  std::error_code ec;
  if (!fs::is_symlink(fileName, ec)) return fileName;
  fs::path resolved = fs::weakly_canonical(fileName, ec);
  return ec ? fs::path(fileName) : resolved;
}

// A name beside `target` that no other writer uses at the same moment; creation with O_EXCL
// below settles any clash.
fs::path TempNameBeside(const fs::path& target, unsigned attempt) {
  const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
  String name = ".";
  name.append(target.filename().string())
      .append(".tmp")
      .append(std::to_string(::getpid()))
      .append("-")
      .append(std::to_string(static_cast<uint64_t>(ticks) % 1000000007u))
      .append("-")
      .append(std::to_string(attempt));
  return target.parent_path() / name;
}

}  // namespace

TFileReplacement::TFileReplacement(const String& fileName) {
  const fs::path target = FileBehindLinks(fileName);
  FFileName = target.string();
  struct stat old {};
  if (::stat(FFileName.c_str(), &old) == 0) {
    // Replacing by rename needs only a writable folder; a file we could not write stays.
    if (::access(FFileName.c_str(), W_OK) != 0) CannotCreate(fileName, errno);
    FMode = static_cast<int>(old.st_mode & 07777);
  }
  for (unsigned attempt = 0;; ++attempt) {
    const fs::path temp = TempNameBeside(target, attempt);
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) {
      if (errno == EEXIST && attempt < 100) continue;
      CannotCreate(fileName, errno);
    }
    ::close(fd);
    FTempFileName = temp.string();
    return;
  }
}

TFileReplacement::~TFileReplacement() {
  if (!FCommitted) ::unlink(FTempFileName.c_str());
}

void TFileReplacement::Commit() {
  const int fd = ::open(FTempFileName.c_str(), O_RDWR | O_CLOEXEC);
  if (fd < 0) CannotCreate(FFileName, errno);
  if (FMode >= 0) (void)::fchmod(fd, static_cast<mode_t>(FMode));  // keep the old file's rights
  const bool synced = ::fsync(fd) == 0;
  const int syncError = errno;
  ::close(fd);
  if (!synced) CannotCreate(FFileName, syncError);
  if (::rename(FTempFileName.c_str(), FFileName.c_str()) != 0) CannotCreate(FFileName, errno);
  FCommitted = true;
}

void WriteFileReplacing(const String& fileName, const std::function<void(TStream&)>& write) {
  TFileReplacement replacement(fileName);
  {
    TFileStream file(replacement.GetTempFileName(), fmOpenWrite);
    write(file);
  }
  replacement.Commit();
}

}  // namespace orv
