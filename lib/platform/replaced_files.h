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

/// No handle of the system's own.
inline constexpr std::intptr_t noHandle = -1;

/// The bytes that are to take the place of a file. They go to a file beside it, which the end of an
/// object removes if it has not taken the name. All but `done` leaves the file as it was.
class Replacement {
 public:
  /// The outcome tells of a file that cannot be made or may not be replaced.
  Replacement(const std::string& name, Readers readers);
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement();

  FileOutcome outcome() const { return outcome_; }
  /// Behind what is there already.
  FileOutcome write(std::string_view bytes);
  /// Puts the bytes in place of the file once they are on the disk.
  FileOutcome finish();

 private:
  std::string target_;
  std::string beside_{};
  std::intptr_t handle_ = noHandle;
  FileOutcome outcome_;
};

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
  std::string file_;
  std::intptr_t handle_ = noHandle;
};

}  // namespace platform
