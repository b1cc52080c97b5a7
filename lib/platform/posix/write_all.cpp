#include "platform/posix/write_all.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace platform {
namespace {

// False once there is nobody to wait for.
bool waitForRoom(int file) {
  pollfd output = {file, POLLOUT, 0};
  while (::poll(&output, 1, -1) < 0) {
    if (errno != EINTR) return false;
  }
  return (output.revents & POLLOUT) != 0;
}

}  // namespace

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && (errno == EINTR || (errno == EAGAIN && waitForRoom(file)))) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace platform
