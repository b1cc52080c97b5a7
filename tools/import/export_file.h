// An export as a file: read from its beginning to its end, once or more, and the same all the
// while.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "store/file.h"

namespace dxl {

class ExportFile {
 public:
  /// Opens a plain file, and waits for nobody. All functions throw ImportFailure, which names it.
  explicit ExportFile(const std::string& path);

  const std::string& path() const { return path_; }

  /// The state when it was opened.
  const store::FileState& state() const { return state_; }

  /// Fills the buffer, as far as the file goes, and gives the number of bytes read.
  std::size_t read(char* buffer, std::size_t size);

  /// Fails if the file is in another state now.
  void requireState(const store::FileState& state) const;

 private:
  std::string path_;
  store::File file_;
  store::FileState state_;
  std::uint64_t done_ = 0;
};

}  // namespace dxl
