// A folder of a test's own, removed with everything in it at the end.
#pragma once

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/process.h"

namespace test {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    static int count = 0;
    // The moment as well: the number of a process is given out again, and a test that was killed
    // leaves its folder, perhaps with a lock in it.
    const auto moment = std::chrono::system_clock::now().time_since_epoch().count();
    path_ = std::filesystem::temp_directory_path() /
            ("qbdiagnostics-test-" + std::to_string(platform::processNumber()) + "-" +
             std::to_string(moment) + "-" + std::to_string(++count));
    std::filesystem::create_directories(path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }

  /// The path with slashes, as the program may be given it on every system.
  std::string text() const { return path_.generic_string(); }
  std::u16string wide() const { return path_.generic_u16string(); }

 private:
  std::filesystem::path path_;
};

/// The bytes of a file; empty if there is none.
inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

inline void writeFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

/// The one file of a folder whose name begins with `prefix`; an empty path if there is not exactly
/// one.
inline std::filesystem::path onlyFile(const std::filesystem::path& folder,
                                      const std::string& prefix) {
  std::filesystem::path found;
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.path().filename().string().starts_with(prefix)) continue;
    found = entry.path();
    ++count;
  }
  return count == 1 ? found : std::filesystem::path();
}

}  // namespace test
