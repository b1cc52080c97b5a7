#include "import/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "import/failure.h"

namespace dxl {
namespace {

// Calls `transfer(done)`, which moves some bytes behind the first `done`, until `size` are moved or
// it moves none.
template <typename Transfer>
std::size_t transferAll(const std::string& path, std::size_t size, Transfer transfer) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = transfer(done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) failBySystem(path);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

void requireAll(const std::string& path, std::size_t written, std::size_t size) {
  if (written < size) failBySystem(path, ENOSPC);
}

}  // namespace

Descriptor Descriptor::openToRead(const std::string& path) {
  const int opened = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  if (opened < 0) failBySystem(path);
  return Descriptor(opened, path);
}

Descriptor::Descriptor(int opened, std::string path) : opened_(opened), path_(std::move(path)) {}

Descriptor::Descriptor(Descriptor&& other) noexcept
    : opened_(std::exchange(other.opened_, -1)), path_(std::move(other.path_)) {}

Descriptor::~Descriptor() {
  if (opened_ >= 0) close(opened_);
}

std::uint64_t Descriptor::size() const {
  struct stat status {};
  if (fstat(opened_, &status) != 0) failBySystem(path_);
  return S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::size_t Descriptor::read(char* buffer, std::size_t size) {
  return transferAll(path_, size,
                     [&](std::size_t done) { return ::read(opened_, buffer + done, size - done); });
}

std::size_t Descriptor::readAt(std::uint64_t position, char* buffer, std::size_t size) const {
  return transferAll(path_, size, [&](std::size_t done) {
    return pread(opened_, buffer + done, size - done, static_cast<off_t>(position + done));
  });
}

void Descriptor::write(std::string_view bytes) {
  const std::size_t written = transferAll(path_, bytes.size(), [&](std::size_t done) {
    return ::write(opened_, bytes.data() + done, bytes.size() - done);
  });
  requireAll(path_, written, bytes.size());
}

void Descriptor::writeAt(std::uint64_t position, std::string_view bytes) {
  const std::size_t written = transferAll(path_, bytes.size(), [&](std::size_t done) {
    return pwrite(opened_, bytes.data() + done, bytes.size() - done,
                  static_cast<off_t>(position + done));
  });
  requireAll(path_, written, bytes.size());
}

void Descriptor::sync() {
  if (fsync(opened_) != 0) failBySystem(path_);
}

}  // namespace dxl
