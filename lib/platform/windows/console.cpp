#include "platform/console.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "platform/code_pages.h"
#include "platform/windows/write_all.h"

namespace platform {
namespace {

// A console refuses a single call of more than about 64 KB.
constexpr std::size_t largestConsoleWrite = 8192;

// The text and a line end, with every line feed as CR LF.
template <typename Character>
std::basic_string<Character> asLine(std::basic_string_view<Character> text) {
  std::basic_string<Character> line;
  line.reserve(text.size() + 2);
  for (const Character character : text) {
    if (character == '\n') line += '\r';
    line += character;
  }
  line += '\r';
  line += '\n';
  return line;
}

void writeUnits(HANDLE console, std::u16string_view units) {
  while (!units.empty()) {
    const auto count = static_cast<DWORD>(std::min(units.size(), largestConsoleWrite));
    DWORD written = 0;
    if (!WriteConsoleW(console, units.data(), count, &written, nullptr) || written == 0) return;
    units.remove_prefix(written);
  }
}

}  // namespace

void printNarrowLine(std::string_view text) {
  writeAll(GetStdHandle(STD_OUTPUT_HANDLE), asLine(text));
}

void printWideLine(std::u16string_view text) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  const std::u16string line = asLine(text);
  DWORD mode = 0;
  if (GetConsoleMode(output, &mode)) {
    writeUnits(output, line);
  } else {
    writeAll(output, wideToUtf8(line));
  }
}

}  // namespace platform
