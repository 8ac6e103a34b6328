// File names and the file system.

#include <filesystem>
#include <system_error>

#include "SysUtils.h"

namespace orv {

namespace fs = std::filesystem;

namespace {

// Where the extension starts: the last dot after the last delimiter, or npos.
size_t ExtensionStart(const String& path) {
  const size_t at = path.find_last_of(String(".") + PathDelim);
  return at != String::npos && path[at] == '.' ? at : String::npos;
}

}  // namespace

String ExtractFileName(const String& path) {
  const size_t delim = path.rfind(PathDelim);
  return delim == String::npos ? path : path.substr(delim + 1);
}

String ExtractFilePath(const String& path) {
  const size_t delim = path.rfind(PathDelim);
  return delim == String::npos ? String() : path.substr(0, delim + 1);
}

String ExtractFileExt(const String& path) {
  const size_t dot = ExtensionStart(path);
  return dot == String::npos ? String() : path.substr(dot);
}

String ChangeFileExt(const String& path, const String& ext) {
  const size_t dot = ExtensionStart(path);
  return (dot == String::npos ? path : path.substr(0, dot)) + ext;
}

String IncludeTrailingPathDelimiter(const String& path) {
  return !path.empty() && path.back() == PathDelim ? path : path + PathDelim;
}

bool FileExists(const String& path) {
  std::error_code error;
  return !path.empty() && fs::is_regular_file(path, error);
}

bool DirectoryExists(const String& path) {
  std::error_code error;
  return !path.empty() && fs::is_directory(path, error);
}

bool DeleteFile(const String& path) {
  std::error_code error;
  return FileExists(path) && fs::remove(path, error);
}

// Replaces an existing target, as rename does on this platform: writers rely on it to put a
// finished temporary file over the old one in one step.
bool RenameFile(const String& from, const String& to) {
  std::error_code error;
  fs::rename(from, to, error);
  return !error;
}

}  // namespace orv
