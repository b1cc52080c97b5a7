// Files and folders.
//
// Paths are Windows paths in wide text. Where the system is not Windows, the backslash separates
// like the slash, a unit below 256 is one byte of the name and a unit above is UTF-8; a path that
// begins with two separators is a network path and counts as not found. So a path shows in the
// report exactly as the program composed it, while the file lands in the real folder.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// True for a file as well as for a folder.
bool fileExists(const std::u16string& path);

/// Makes one folder; its parent must be there. True if the name is taken afterwards, also by a
/// plain file.
bool createFolder(const std::u16string& path);

/// Makes `path`, given as the process received it, the current directory.
bool changeDirectory(const std::string& path);

struct FolderEntry {
  std::string name;
  bool isFolder;
};

/// What lies in a folder and matches: `pattern` is the folder's path and behind the last separator
/// a mask with "*" and "?". Includes "." and ".." where they match.
std::vector<FolderEntry> listFolder(const std::string& pattern);

/// A file that is written. Closes itself; not copied.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile() { close(); }

  /// Opens `path` for writing, emptied if it exists; others may read and write it meanwhile. False
  /// for a pipe or device too, where the system keeps such a thing under a name of a file.
  bool open(const std::u16string& path);
  bool isOpen() const { return handle_ != none; }
  void close();

  /// Bytes from the start of the file at which the next write lands, or -1 on failure.
  std::int64_t position() const;
  bool moveTo(std::int64_t position);

  /// Hands all `bytes` to the system before it returns, in one call unless the system takes fewer.
  bool write(std::string_view bytes);

 private:
  static constexpr std::intptr_t none = -1;
  std::intptr_t handle_ = none;  // the system's own handle
};

}  // namespace platform
