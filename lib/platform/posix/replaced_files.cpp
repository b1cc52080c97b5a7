#include "platform/replaced_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
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

bool isSame(const struct stat& left, const struct stat& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

bool statusOf(const std::string& name, struct stat& status) {
  return (name == "-" ? ::fstat(STDIN_FILENO, &status) : ::stat(name.c_str(), &status)) == 0;
}

// Whoever had the lock before may have removed the file when it was opened here already.
bool isNamed(int file, const std::string& name) {
  struct stat opened {};
  struct stat named {};
  return ::fstat(file, &opened) == 0 && ::stat(name.c_str(), &named) == 0 && isSame(opened, named);
}

// Whether a file may be replaced, or made; its status if it is there. Its folder may allow what its
// own rights do not.
FileOutcome fitnessOf(const std::string& name, std::optional<struct stat>& before) {
  struct stat status {};
  if (::stat(name.c_str(), &status) != 0)
    return errno == ENOENT ? FileOutcome::done : outcomeOf(errno);
  if (S_ISDIR(status.st_mode)) return FileOutcome::folder;
  if (!S_ISREG(status.st_mode)) return FileOutcome::special;
  before = status;
  return ::access(name.c_str(), W_OK) == 0 ? FileOutcome::done : outcomeOf(errno);
}

// The new file, which its owner alone may read, gets the rights of that before, if there was one.
void setRights(int file, const std::optional<struct stat>& before, Readers readers) {
  if (before) {
    [[maybe_unused]] const int ignored = ::fchown(file, before->st_uid, before->st_gid);
  }
  if (readers == Readers::owner) return;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  ::fchmod(file, before ? before->st_mode & 0777 : 0666 & ~mask);
}

}  // namespace

Replacement::Replacement(const std::string& name, Readers readers) : target_(followed(name)) {
  std::optional<struct stat> before;
  outcome_ = fitnessOf(target_, before);
  if (outcome_ != FileOutcome::done) return;
  beside_ = target_ + ".XXXXXX";
  const int file = ::mkstemp(beside_.data());
  if (file < 0) {
    outcome_ = outcomeOf(errno);
    return;
  }
  handle_ = file;
  setRights(file, before, readers);
}

Replacement::~Replacement() {
  if (handle_ == noHandle) return;
  ::close(descriptor(handle_));
  ::unlink(beside_.c_str());
}

FileOutcome Replacement::write(std::string_view bytes) {
  if (outcome_ == FileOutcome::done && !writeAll(descriptor(handle_), bytes))
    outcome_ = outcomeOf(errno);
  return outcome_;
}

FileOutcome Replacement::finish() {
  if (outcome_ != FileOutcome::done) return outcome_;
  if (::fsync(descriptor(handle_)) != 0 || std::rename(beside_.c_str(), target_.c_str()) != 0)
    return outcome_ = outcomeOf(errno);
  ::close(descriptor(handle_));
  handle_ = noHandle;
  return outcome_;
}

bool isSameFile(const std::string& left, const std::string& right) {
  struct stat statuses[2] = {};
  return statusOf(left, statuses[0]) && statusOf(right, statuses[1]) &&
         isSame(statuses[0], statuses[1]);
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
  if (handle_ == noHandle) return;
  struct stat status {};
  if (::fstat(descriptor(handle_), &status) == 0 && status.st_size == 0) ::unlink(file_.c_str());
  ::close(descriptor(handle_));
  handle_ = noHandle;
}

}  // namespace platform
