#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "Streams.h"

namespace orv {

ORV_IMPLEMENT_CLASS(THandleStream)
ORV_IMPLEMENT_CLASS(TFileStream)

String SysErrorMessage(int errorCode) { return std::generic_category().message(errorCode); }

namespace {

String FileErrorText(const char* what, const String& fileName, int errorCode) {
  return String(what) + " \"" + fileName + "\". " + SysErrorMessage(errorCode);
}

int OpenFlags(uint16_t mode) {
  if ((mode & fmCreate) == fmCreate) return O_RDWR | O_CREAT | O_TRUNC;
  switch (mode & 3) {
    case fmOpenWrite: return O_WRONLY;
    case fmOpenReadWrite: return O_RDWR;
    default: return O_RDONLY;
  }
}

// Opens a regular file; -1 with errno set otherwise (a directory gives EISDIR).
int OpenRegularFile(const String& fileName, int flags) {
  const int fd = ::open(fileName.c_str(), flags | O_CLOEXEC, 0666);
  if (fd < 0) return -1;
  struct stat st {};
  if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
    ::close(fd);
    errno = EISDIR;
    return -1;
  }
  return fd;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// THandleStream

int64_t THandleStream::Read(void* buffer, int64_t count) {
  auto* out = static_cast<char*>(buffer);
  int64_t done = 0;
  while (done < count) {
    const ssize_t n = ::read(FHandle, out + done, static_cast<size_t>(count - done));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += n;
  }
  return done;
}

int64_t THandleStream::Write(const void* buffer, int64_t count) {
  const auto* in = static_cast<const char*>(buffer);
  int64_t done = 0;
  while (done < count) {
    const ssize_t n = ::write(FHandle, in + done, static_cast<size_t>(count - done));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += n;
  }
  return done;
}

int64_t THandleStream::Seek(int64_t offset, TSeekOrigin origin) {
  const int whence = origin == soBeginning ? SEEK_SET : origin == soCurrent ? SEEK_CUR : SEEK_END;
  return ::lseek(FHandle, offset, whence);
}

void THandleStream::SetSize(int64_t newSize) {
  if (::ftruncate(FHandle, newSize) != 0) throw EStreamError(SysErrorMessage(errno));
  Seek(newSize, soBeginning);
}

// ---------------------------------------------------------------------------------------------
// TFileStream

TFileStream::TFileStream(const String& fileName, uint16_t mode)
    : THandleStream(OpenRegularFile(fileName, OpenFlags(mode))), FFileName(fileName) {
  if (FHandle >= 0) return;
  if ((mode & fmCreate) == fmCreate)
    throw EFCreateError(FileErrorText("Cannot create file", fileName, errno));
  throw EFOpenError(FileErrorText("Cannot open file", fileName, errno));
}

TFileStream::~TFileStream() {
  if (FHandle >= 0) ::close(FHandle);
}

void TFileStream::FlushBuffers() {
  if (::fsync(FHandle) != 0) throw EWriteError("Stream write error");
}

}  // namespace orv
