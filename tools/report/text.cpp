#include "report/text.h"

#include <algorithm>
#include <array>

#include "platform/code_pages.h"
#include "report/lines.h"

namespace reader {
namespace {

constexpr std::uint32_t windowsPage = 1252;
constexpr std::uint32_t latin1Page = 28591;
constexpr std::uint32_t utf8Page = 65001;

// Takes the first character, and gives it as UTF-8.
std::string takeCharacter(std::string_view& bytes) {
  constexpr std::size_t longest = 4;
  std::array<char16_t, 2> wide{};
  for (std::size_t size = 1; size <= std::min(longest, bytes.size()); ++size) {
    const std::string_view sequence = bytes.substr(0, size);
    if (platform::narrowToWide(utf8Page, true, sequence, wide).length == 0) continue;
    bytes.remove_prefix(size);
    return std::string(sequence);
  }
  const auto length = platform::narrowToWide(windowsPage, false, bytes.substr(0, 1), wide).length;
  bytes.remove_prefix(1);
  return platform::wideToUtf8({wide.data(), length});
}

// Empty if it is no UTF-8.
std::u16string wideOf(std::string_view utf8) {
  std::u16string wide(utf8.size(), u'\0');
  wide.resize(platform::narrowToWide(utf8Page, true, utf8, wide).length);
  return wide;
}

}  // namespace

std::string toUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const auto end = std::ranges::find_if_not(bytes, isAscii);
    const auto size = static_cast<std::size_t>(end - bytes.begin());
    text += bytes.substr(0, size);
    bytes.remove_prefix(size);
    if (!bytes.empty()) text += takeCharacter(bytes);
  }
  return text;
}

std::u16string toWide(std::string_view bytes) { return wideOf(toUtf8(bytes)); }

std::string latin1ToUtf8(std::string_view latin1) {
  std::u16string wide(latin1.size(), u'\0');
  platform::narrowToWide(latin1Page, false, latin1, wide);
  return platform::wideToUtf8(wide);
}

std::string toLatin1(std::string_view utf8) {
  const std::u16string wide = wideOf(utf8);
  const bool isLatin1 = std::ranges::all_of(wide, [](char16_t unit) { return unit <= 0xFF; });
  return isLatin1 ? std::string(wide.begin(), wide.end()) : std::string();
}

std::string shown(std::string_view bytes, bool keepsTabs) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const std::string text = toUtf8(bytes);
  const auto unitAt = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool isOfTwo = unitAt(at) == 0xC2 && unitAt(at + 1) < 0xA0;
    if ((!isOfTwo && unitAt(at) >= 0x20 && unitAt(at) != 0x7F) || (keepsTabs && text[at] == '\t')) {
      result += text[at];
      continue;
    }
    if (isOfTwo) ++at;  // to the byte that is the character's number
    result.append("\\x").append(1, digits[unitAt(at) >> 4]).append(1, digits[unitAt(at) & 0xF]);
  }
  return result;
}

}  // namespace reader
