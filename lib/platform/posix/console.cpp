#include "platform/console.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/code_pages.h"

namespace platform {
namespace {

// Whoever started the program may have made its output one that does not wait by itself. False once
// there is nobody to wait for.
bool waitForRoom() {
  pollfd output = {STDOUT_FILENO, POLLOUT, 0};
  while (::poll(&output, 1, -1) < 0) {
    if (errno != EINTR) return false;
  }
  return (output.revents & POLLOUT) != 0;
}

}  // namespace

void printNarrowLine(std::string_view text) {
  std::string line(text);
  line += '\n';
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t written = ::write(STDOUT_FILENO, rest.data(), rest.size());
    if (written < 0 && (errno == EINTR || (errno == EAGAIN && waitForRoom()))) continue;
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

void printWideLine(std::u16string_view text) { printNarrowLine(wideToUtf8(text)); }

}  // namespace platform
