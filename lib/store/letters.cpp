#include "store/letters.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "platform/ascii.h"
#include "platform/code_pages.h"

namespace store {
namespace {

constexpr std::uint32_t utf8 = 65001;
constexpr std::uint32_t windows1252 = 1252;

// Nothing for a text that is not well-formed.
std::optional<std::u16string> unitsOfUtf8(std::string_view text) {
  std::u16string units(text.size(), u'\0');
  const platform::Conversion converted = platform::narrowToWide(utf8, true, text, units);
  if (converted.error == platform::errorNoUnicodeTranslation) return std::nullopt;
  units.resize(converted.length);
  return units;
}

}  // namespace

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

bool isUtf8(std::string_view text) { return unitsOfUtf8(text).has_value(); }

std::string asUtf8(std::string text) {
  if (isUtf8(text)) return text;
  std::u16string units(text.size(), u'\0');
  units.resize(platform::narrowToWide(windows1252, false, text, units).length);
  return platform::wideToUtf8(units);
}

std::string undoubled(std::string_view text) {
  const std::optional<std::u16string> units = unitsOfUtf8(text);
  const auto isByte = [](char16_t unit) { return unit <= 0xFF; };
  if (!units.has_value() || !std::all_of(units->begin(), units->end(), isByte))
    return std::string(text);
  std::string bytes(units->begin(), units->end());
  return isUtf8(bytes) ? bytes : std::string(text);
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace store
