#include "import/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "import/failure.h"

namespace dxl {
namespace {

constexpr std::size_t pieceSize = std::size_t{256} << 10U;
constexpr int endingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

std::atomic<const char*> removedAtEnd = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);

extern "C" void removeAndEnd(int signal) {
  const char* const path = removedAtEnd;
  if (path != nullptr) unlink(path);
  // The signal is blocked until this returns, and then ends the process as it would have.
  static_cast<void>(raise(signal));
}

// A signal that is ignored stays so: that is how a program outlives its terminal.
void handleSignals() {
  struct sigaction handling {};
  handling.sa_handler = removeAndEnd;
  handling.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : endingSignals) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &handling, nullptr);
  }
}

// No signal ends the process while an object of this is there.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before_);
  }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;
  ~SignalsBlocked() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_{};
};

std::string folderOf(const std::string& path) {
  const std::size_t separator = path.rfind('/');
  return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

// Makes a file in the folder of `target`, whose name comes into `path`.
int openRemovedAtEnd(const std::string& target, std::string& path) {
  const SignalsBlocked blocked;
  path = folderOf(target) + ".import-dxl-XXXXXX";
  const int opened = mkostemp(path.data(), O_CLOEXEC);
  if (opened < 0) failBySystem(target);
  removedAtEnd = path.c_str();
  handleSignals();
  return opened;
}

// Not every file system can refuse to replace by itself.
int renameToNew(const char* from, const char* to) {
  const int result = renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
  if (result == 0 || (errno != EINVAL && errno != ENOSYS)) return result;
  return link(from, to) == 0 ? unlink(from) : -1;
}

// The rename is whole without it; this is for a machine that goes down at once.
void syncFolderOf(const std::string& target) {
  const std::string folder = folderOf(target);
  const int opened = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
  if (opened < 0) return;
  fsync(opened);
  close(opened);
}

}  // namespace

NewFile::NewFile(std::string target)
    : target_(std::move(target)), opened_(openRemovedAtEnd(target_, path_)) {
  // As a file that is made under its own name.
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(opened_, 0666 & ~mask);
}

NewFile::~NewFile() {
  close(opened_);
  const SignalsBlocked blocked;
  removedAtEnd = nullptr;
  if (!path_.empty()) unlink(path_.c_str());
}

void NewFile::write(std::string_view bytes) {
  pending_ += bytes;
  if (pending_.size() >= pieceSize) flush();
}

void NewFile::flush() {
  for (std::string_view rest = pending_; !rest.empty();) {
    const ssize_t count = ::write(opened_, rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) failBySystem(target_);
    if (count == 0) failBySystem(target_, ENOSPC);
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
  pending_.clear();
}

void NewFile::publish(bool replaces) {
  flush();
  if (fsync(opened_) != 0) failBySystem(target_);
  const SignalsBlocked blocked;
  const int result = replaces ? std::rename(path_.c_str(), target_.c_str())
                              : renameToNew(path_.c_str(), target_.c_str());
  if (result != 0) failBySystem(target_);
  removedAtEnd = nullptr;
  path_.clear();
  syncFolderOf(target_);
}

}  // namespace dxl
