#include "report/text.h"

#include <algorithm>

#include "report/lines.h"

namespace reader {
namespace {

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

void appendUtf8(std::string& text, char byte) {
  if (isAscii(byte)) {
    text += byte;
    return;
  }
  const auto unit = static_cast<unsigned char>(byte);
  text += static_cast<char>(0xC0 | unit >> 6);
  text += static_cast<char>(0x80 | (unit & 0x3F));
}

bool isControl(char byte) {
  const auto unit = static_cast<unsigned char>(byte);
  return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

std::string toUtf8(std::string_view latin1) {
  std::string text;
  text.reserve(2 * latin1.size() -
               static_cast<std::size_t>(std::ranges::count_if(latin1, isAscii)));
  for (const char byte : latin1) appendUtf8(text, byte);
  return text;
}

std::optional<std::string> toLatin1(std::string_view utf8) {
  std::string text;
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (isAscii(utf8[at])) {
      text += utf8[at];
      continue;
    }
    if ((lead != 0xC2 && lead != 0xC3) || at + 1 == utf8.size()) return std::nullopt;
    text += static_cast<char>((lead & 3) << 6 | (static_cast<unsigned char>(utf8[++at]) & 0x3F));
  }
  return text;
}

void writeShown(std::ostream& out, std::string_view latin1) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::size_t piece = 4096;
  std::string text;
  for (const char byte : withoutTabs(latin1)) {
    const auto unit = static_cast<unsigned char>(byte);
    if (isControl(byte)) {
      text.append({'\\', 'x', digits[unit >> 4], digits[unit & 0xF]});
    } else {
      appendUtf8(text, byte);
    }
    if (text.size() < piece) continue;
    out << text;
    text.clear();
  }
  out << text;
}

}  // namespace reader
