#include "store/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace store {
namespace {

constexpr off_t lockedByte = off_t{1} << 62;

[[noreturn]] void fail(int error) { throw std::system_error(error, std::generic_category()); }

void require(bool succeeded) {
  if (!succeeded) fail(errno);
}

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

std::intptr_t openFile(const std::string& path, Access access) {
  // Without O_NONBLOCK a pipe of that name would wait for a writer, and without O_NOCTTY a terminal
  // could become that of the process.
  const int flags = (access == Access::read ? O_RDONLY : O_RDWR) |
                    (access == Access::create ? O_CREAT : 0) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
  const int opened = open(path.c_str(), flags, 0666);
  if (opened >= 0) return opened;
  if (errno == ENOTDIR) fail(ENOENT);
  fail(errno == ENXIO ? EISDIR : errno);  // ENXIO is that of a socket
}

struct stat statusOf(int opened) {
  struct stat status {};
  require(fstat(opened, &status) == 0);
  return status;
}

}  // namespace

std::string nativePath(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  return path.starts_with("//") ? std::string() : path;
}

File::File(const std::string& path, Access access) : File(openFile(path, access)) {
  if (!S_ISREG(statusOf(descriptor(handle_)).st_mode)) fail(EISDIR);
}

// Closing ends the lock: it belongs to the open file and not to the process.
File::~File() { close(descriptor(handle_)); }

bool File::tryLock(Access access) {
  struct flock range {};
  range.l_type = access == Access::read ? F_RDLCK : F_WRLCK;
  range.l_whence = SEEK_SET;
  range.l_start = lockedByte;
  range.l_len = 1;
  if (fcntl(descriptor(handle_), F_OFD_SETLK, &range) == 0) return true;
  require(errno == EAGAIN || errno == EACCES);
  return false;
}

FileState File::state() const {
  using namespace std::chrono;
  const struct stat status = statusOf(descriptor(handle_));
  FileState state;
  state.volume = status.st_dev;
  state.file = status.st_ino;
  state.size = static_cast<std::uint64_t>(status.st_size);
  state.changed = floor<decltype(state.changed)::duration>(
      sys_seconds(seconds(status.st_mtim.tv_sec)) + nanoseconds(status.st_mtim.tv_nsec));
  return state;
}

std::string File::read(std::uint64_t from, std::uint64_t to) const {
  std::string bytes(to - from, '\0');
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t count = pread(descriptor(handle_), bytes.data() + filled, bytes.size() - filled,
                                static_cast<off_t>(from + filled));
    if (count < 0 && errno == EINTR) continue;
    require(count >= 0);
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  bytes.resize(filled);
  return bytes;
}

void File::append(std::uint64_t kept, std::string_view bytes) {
  const int file = descriptor(handle_);
  const auto end = static_cast<off_t>(kept);
  require(ftruncate(file, end) == 0);
  const ssize_t written = pwrite(file, bytes.data(), bytes.size(), end);
  const bool isWritten = written == static_cast<ssize_t>(bytes.size());
  if (isWritten && fdatasync(file) == 0) return;
  const int error = written >= 0 && !isWritten ? ENOSPC : errno;
  [[maybe_unused]] const int ignored = ftruncate(file, end);
  fail(error);
}

}  // namespace store
