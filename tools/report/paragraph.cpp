#include "report/paragraph.h"

#include <algorithm>

namespace reader {
namespace {

std::size_t charactersOf(std::string_view utf8) {
  return static_cast<std::size_t>(std::ranges::count_if(
      utf8, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

}  // namespace

std::string paragraph(std::string_view text, std::size_t indent, std::size_t width) {
  std::string lines(indent, ' ');
  std::size_t used = indent;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    const std::size_t size = charactersOf(word);
    if (used > indent && used + 1 + size > width) {
      lines.append(1, '\n').append(indent, ' ');
      used = indent;
    } else if (used > indent) {
      lines += ' ';
      ++used;
    }
    lines += word;
    used += size;
  }
  return lines += '\n';
}

}  // namespace reader
