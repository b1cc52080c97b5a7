#include "platform/terminal.h"

#include <windows.h>

#include <algorithm>

namespace platform {

// A console that knows no escape sequences goes to the next line behind its last column.
std::optional<std::size_t> terminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info)) return std::nullopt;
  return static_cast<std::size_t>(std::max(info.srWindow.Right - info.srWindow.Left, 1));
}

bool enableTerminalColours() {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(output, &mode) &&
         SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace platform
