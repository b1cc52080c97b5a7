// Files that are replaced as a whole: new bytes go to a file beside the old one, which then takes
// its name, so that whoever reads it finds all of the old or all of the new.
//
// Names are those of byte_files.h. A symbolic link stays one: its name stands for the file that it
// leads to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/file_outcome.h"

namespace platform {

/// Who may read a file that was replaced: those who might before, or whoever may read a new file;
/// or its owner alone, which Windows leaves to the rights of the folder.
enum class Readers : std::uint8_t { usual, owner };

/// Puts `bytes` in place of the file `name`, once they are on the disk. All but `done` leaves the
/// file as it was, and so does a file that may not be written.
FileOutcome replaceFile(const std::string& name, std::string_view bytes, Readers readers);

/// Whether two names, of which "-" stands for standard input, are those of one file.
bool isSameFile(const std::string& left, const std::string& right);

/// A lock for those who read a file and then replace it, between processes and between two objects
/// of one process alike. It is that of a file beside it, "<name>.lock", since the replaced file
/// itself is another one each time; who has the lock makes that file and removes it at the end.
/// After a process that died the file may stay: the system has ended the lock.
class ReplacementLock {
 public:
  explicit ReplacementLock(const std::string& name);
  ReplacementLock(const ReplacementLock&) = delete;
  ReplacementLock& operator=(const ReplacementLock&) = delete;
  ~ReplacementLock() { release(); }

  /// Waits for nobody: `busy` if somebody has the lock.
  FileOutcome tryTake();
  void release();

  /// The name of the file that is locked.
  const std::string& file() const { return file_; }

 private:
  static constexpr std::intptr_t none = -1;

  std::string file_;
  std::intptr_t handle_ = none;  // the system's own handle
};

}  // namespace platform
