// A file, open: the seam to the operating system.
//
// That of a database lives for one load or one append and is locked all the while, so that no
// reader sees half of a line that a writer is about to finish. The lock holds between processes and
// between two objects of one process alike, and ends with the object. It belongs to a byte far
// behind the data, because the locks of Windows keep others from reading what they cover.
//
// Failures are std::system_error with a code of std::errc: no_such_file_or_directory,
// is_a_directory for whatever is no plain file, too_many_symbolic_link_levels, filename_too_long,
// and any other for what the system refuses. This header knows nothing of the Notes library: the
// types of the two systems and of that library have names in common.
#pragma once

#include <chrono>
#include <cstdint>
#include <ratio>
#include <string>
#include <string_view>

namespace store {

/// Tells a file from every other, and what it holds from what it held before: a file with the same
/// state is unchanged.
struct FileState {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;
  std::uint64_t size = 0;
  std::chrono::sys_time<std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>> changed;

  bool operator==(const FileState&) const = default;
};

/// Readers share the lock, a writer has it alone. Only `create` makes a file that is missing; it
/// writes too.
enum class Access { read, write, create };

/// A path in which slash and backslash both separate, as the system takes it; empty for a path on a
/// network where the system knows none.
std::string nativePath(std::string path);

class File {
 public:
  /// Opens the file at a path as the system takes it, and waits for nobody.
  File(const std::string& path, Access access);
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File();

  /// Takes the lock, unless somebody has it: then false.
  bool tryLock(Access access);

  FileState state() const;

  /// The bytes from `from` to `to`; fewer if the file ends before.
  std::string read(std::uint64_t from, std::uint64_t to) const;

  /// Cuts the file to its first `kept` bytes, puts `bytes` behind them with one write, and returns
  /// once they are on the disk. A failure leaves the file cut, if the system still allows that.
  void append(std::uint64_t kept, std::string_view bytes);

 private:
  explicit File(std::intptr_t handle) noexcept : handle_(handle) {}

  std::intptr_t handle_;
};

}  // namespace store
