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

/// Puts `bytes` in place of the file `name`, once they are on the disk. On Linux nobody but its
/// owner may read it; on Windows it has the rights that its folder gives. All but `done` leaves the
/// file as it was.
FileOutcome replacePrivateFile(const std::string& name, std::string_view bytes);

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
