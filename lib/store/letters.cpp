#include "store/letters.h"

#include <algorithm>
#include <cstdint>

#include "platform/ascii.h"
#include "platform/code_pages.h"

namespace store {
std::string lowered(std::string_view text) {
  std::string result(text);
  for (char& letter : result) letter = platform::lowered(letter);
  return result;
}

bool equalNames(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return platform::lowered(a) == platform::lowered(b); });
}

std::size_t hashOfName(std::string_view name) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char letter : name)
    hash = (hash ^ static_cast<unsigned char>(platform::lowered(letter))) * 0x100000001B3;
  return static_cast<std::size_t>(hash);
}

bool isUtf8(std::string_view text) {
  constexpr std::uint32_t page = 65001;
  std::u16string units(text.size(), u'\0');
  return platform::narrowToWide(page, true, text, units).error !=
         platform::errorNoUnicodeTranslation;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace store
