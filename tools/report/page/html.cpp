#include "report/page/html.h"

#include <algorithm>
#include <bit>
#include <string>

#include "report/text.h"

namespace reader {
namespace {

bool isPlain(char byte) {
  constexpr std::string_view special = "&<>\"'";
  return byte >= ' ' && byte <= '~' && special.find(byte) == std::string_view::npos;
}

std::string_view entityOf(char32_t character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

// What changes the order in which other characters show.
bool turnsDirection(char32_t character) {
  return character == 0x061C || character == 0x200E || character == 0x200F ||
         (character >= 0x202A && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069);
}

bool isNoCharacter(char32_t character) {
  return (character >= 0xFDD0 && character <= 0xFDEF) || (character & 0xFFFEU) == 0xFFFE;
}

// Takes a character of well-formed UTF-8, and gives its bytes.
std::string_view takeCharacter(std::string_view& utf8, char32_t& character) {
  const auto first = static_cast<unsigned char>(utf8.front());
  const auto ones = static_cast<std::size_t>(std::countl_one(first));
  const std::string_view bytes = utf8.substr(0, std::max<std::size_t>(ones, 1));
  character = first & (0xFFU >> ones);
  for (const char byte : bytes.substr(1))
    character = character << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
  utf8.remove_prefix(bytes.size());
  return bytes;
}

void writeNumber(std::ostream& out, char32_t number) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  out << "\\u";
  for (int shift = number > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4)
    out << digits[number >> static_cast<unsigned>(shift) & 0xFU];
}

}  // namespace

void Html::write(std::string_view bytes, bool keepsTabs) {
  if (std::ranges::all_of(bytes, isPlain)) {
    out_ << bytes;
    return;
  }
  const std::string utf8 = shown(bytes, keepsTabs);
  for (std::string_view rest = utf8; !rest.empty();) {
    char32_t character = 0;
    const std::string_view itself = takeCharacter(rest, character);
    const std::string_view entity = entityOf(character);
    if (turnsDirection(character) || isNoCharacter(character)) {
      writeNumber(out_, character);
    } else {
      out_ << (entity.empty() ? itself : entity);
    }
  }
}

}  // namespace reader
