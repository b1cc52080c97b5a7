#include "platform/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace platform {

std::optional<std::size_t> terminalWidth() {
  constexpr std::size_t usual = 80;
  if (::isatty(STDOUT_FILENO) == 0) return std::nullopt;
  winsize size{};
  if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usual;
  return size.ws_col;
}

bool enableTerminalColours() {
  const char* const kind = std::getenv("TERM");
  return kind != nullptr && std::string_view(kind) != "dumb";
}

}  // namespace platform
