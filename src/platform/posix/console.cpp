#include "platform/console.h"

#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/code_pages.h"

namespace platform {

void printNarrowLine(std::string_view text) {
  std::string line(text);
  line += '\n';
  std::string_view rest = line;
  while (!rest.empty()) {
    const ssize_t written = ::write(STDOUT_FILENO, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

void printWideLine(std::u16string_view text) { printNarrowLine(wideToUtf8(text)); }

}  // namespace platform
