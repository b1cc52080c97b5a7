#include "platform/replaced_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/posix/file_outcomes.h"
#include "platform/posix/write_all.h"

namespace platform {
namespace {

// The name of the file that a link leads to; there need not be one yet.
std::string followed(std::string name) {
  constexpr int mostLinks = 40;  // as many as the system follows
  std::error_code error;
  for (int links = 0; links < mostLinks; ++links) {
    const std::filesystem::path target = std::filesystem::read_symlink(name, error);
    if (error) break;
    name = (std::filesystem::path(name).parent_path() / target).string();
  }
  return name;
}

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

// Whoever had the lock before may have removed the file when it was opened here already.
bool isNamed(int file, const std::string& name) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(file, &opened) == 0 && ::stat(name.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

}  // namespace

FileOutcome replacePrivateFile(const std::string& name, std::string_view bytes) {
  const std::string target = followed(name);
  std::string beside = target + ".XXXXXX";
  const int file = ::mkstemp(beside.data());
  if (file < 0) return outcomeOf(errno);
  const bool written = writeAll(file, bytes) && ::fsync(file) == 0;
  const bool closed = ::close(file) == 0;
  if (written && closed && std::rename(beside.c_str(), target.c_str()) == 0)
    return FileOutcome::done;
  const FileOutcome outcome = outcomeOf(errno);
  ::unlink(beside.c_str());
  return outcome;
}

ReplacementLock::ReplacementLock(const std::string& name) : file_(followed(name) + ".lock") {}

FileOutcome ReplacementLock::tryTake() {
  constexpr int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NOCTTY;
  const int file = ::open(file_.c_str(), flags, 0600);
  if (file < 0) return outcomeOf(errno);
  FileOutcome outcome = FileOutcome::busy;
  if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK) outcome = outcomeOf(errno);
  } else if (isNamed(file, file_)) {
    handle_ = file;
    return FileOutcome::done;
  }
  ::close(file);
  return outcome;
}

// Removed while it is still locked: nobody else can have it. A file that holds something is not one
// that was made here.
void ReplacementLock::release() {
  if (handle_ == none) return;
  struct stat status {};
  if (::fstat(descriptor(handle_), &status) == 0 && status.st_size == 0) ::unlink(file_.c_str());
  ::close(descriptor(handle_));
  handle_ = none;
}

}  // namespace platform
