#pragma once
// Test helpers for file-based tests: a fresh temporary folder removed afterwards, and whole-file
// reads and writes done without the classes under test.

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace orv::testing {

class TTempDir {
 public:
  TTempDir() {
    static std::atomic<int> counter{0};
    FPath = std::filesystem::temp_directory_path() /
            ("orv-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(FPath);
    std::filesystem::create_directories(FPath);
  }
  ~TTempDir() {
    std::error_code ec;
    std::filesystem::permissions(FPath, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ec);
    std::filesystem::remove_all(FPath, ec);
  }
  std::string operator/(const std::string& name) const { return (FPath / name).string(); }
  const std::filesystem::path& Path() const { return FPath; }
  // Files in the folder, so that tests can see no temporary file was left behind.
  size_t FileCount() const {
    return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(FPath),
                                             std::filesystem::directory_iterator()));
  }

 private:
  std::filesystem::path FPath;
};

inline std::string ReadFileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteFileBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// The message of the exception of class E that `action` raises.
template <class E>
std::string MessageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const E& e) {
    return e.what();
  }
  return "(no exception)";
}

// Root ignores file permissions, so permission tests skip themselves there.
inline bool RunningAsRoot() { return ::geteuid() == 0; }

}  // namespace orv::testing
