#include "import/export_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>

#include "import/failure.h"

namespace dxl {
namespace {

[[noreturn]] void failAsNoFile(const std::string& path) {
  throw ImportFailure(path + ": is not a file");
}

int openToRead(const std::string& path) {
  // Without O_NONBLOCK a pipe of that name would wait for a writer, and without O_NOCTTY a terminal
  // could become that of the process.
  const int opened = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (opened >= 0) return opened;
  if (errno == ENXIO) failAsNoFile(path);  // a socket
  failBySystem(path);
}

}  // namespace

ExportFile::ExportFile(const std::string& path) : ExportFile(openToRead(path), path) {
  state_ = currentState();
}

ExportFile::~ExportFile() { close(opened_); }

store::FileState ExportFile::currentState() const {
  using namespace std::chrono;
  struct stat status {};
  if (fstat(opened_, &status) != 0) failBySystem(path_);
  if (!S_ISREG(status.st_mode)) failAsNoFile(path_);
  store::FileState state;
  state.volume = status.st_dev;
  state.file = status.st_ino;
  state.size = static_cast<std::uint64_t>(status.st_size);
  state.changed = floor<decltype(state.changed)::duration>(
      sys_seconds(seconds(status.st_mtim.tv_sec)) + nanoseconds(status.st_mtim.tv_nsec));
  return state;
}

std::size_t ExportFile::read(char* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = ::read(opened_, buffer + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) failBySystem(path_);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

void ExportFile::requireState(const store::FileState& state) const {
  if (currentState() != state) throw ImportFailure(path_ + ": has changed while it was read");
}

}  // namespace dxl
