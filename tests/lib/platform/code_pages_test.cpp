// The pages with rows of their own give the same results on every system, byte for byte.

#include "platform/code_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>

#include "support/rows.h"

namespace platform {
namespace {

constexpr bool isNative = std::filesystem::path::preferred_separator == '/';

// A result, or nothing and the error number.
template <typename Text>
using Outcome = std::pair<Text, std::uint32_t>;

Outcome<std::u16string> decoded(std::uint32_t page, bool strict, std::string_view text) {
  std::u16string buffer(text.empty() ? 1 : text.size(), u'#');
  const Conversion result = narrowToWide(page, strict, text, buffer);
  return {buffer.substr(0, result.length), result.error};
}

Outcome<std::string> encoded(std::uint32_t page, std::u16string_view text, bool* usedDefault) {
  std::string buffer(std::max<std::size_t>(text.size() * maximumCharacterSize(page), 1), '#');
  const Conversion result = wideToNarrow(page, text, buffer, usedDefault);
  return {buffer.substr(0, result.length), result.error};
}

TEST(CodePages, TextsConvertAsMeasured) {
  auto rows = test::rowsOf("lib/platform/conversions.txt", 4);
  if (isNative) {
    for (const auto& row : test::rowsOf("lib/platform/native_conversions.txt", 4))
      rows.push_back(row);
  }
  for (const auto& [where, fields] : rows) {
    SCOPED_TRACE(where);
    const auto page = static_cast<std::uint32_t>(std::stoul(fields[0]));
    const bool takesChecks = page != 65000;
    const Outcome<std::string> bytes{fields[1], 0};
    const Outcome<std::u16string> units{test::wide(fields[3]), 0};
    const std::string& arrow = fields[2];
    if (arrow.ends_with('>')) {
      EXPECT_EQ(decoded(page, false, bytes.first), units);
      const Outcome<std::u16string> refused{
          u"", takesChecks ? errorNoUnicodeTranslation : errorInvalidFlags};
      const bool isRefused = arrow == "~>" || !takesChecks;
      EXPECT_EQ(decoded(page, true, bytes.first), isRefused ? refused : units);
    }
    if (arrow.starts_with('<')) {
      bool used = false;
      EXPECT_EQ(encoded(page, units.first, takesChecks ? &used : nullptr), bytes);
      EXPECT_EQ(used, arrow == "<~");
    }
  }
}

TEST(CodePages, BytesOfWesternPagesStandForThemselvesAndWhatLooksAlike) {
  std::map<std::string, std::u16string> expected;
  for (const auto& [where, fields] : test::rowsOf("lib/platform/look_alikes.txt", 3)) {
    expected[fields[0] + '\t' + std::to_string(std::stoul(fields[1], nullptr, 16))] =
        test::wide(fields[2]);
  }
  for (const std::uint32_t page : {1252U, 28591U}) {
    std::array<std::u16string, 256> found;
    for (unsigned byte = 0; byte < 256; ++byte) {
      found[byte] = decoded(page, true, std::string(1, static_cast<char>(byte))).first;
    }
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
      const std::u16string text(1, static_cast<char16_t>(unit));
      bool used = false;
      const std::string byte = encoded(page, text, &used).first;
      auto& characters = found[static_cast<unsigned char>(byte.at(0))];
      if (!used && !characters.starts_with(text)) characters += text;
    }
    for (unsigned byte = 0; byte < 256; ++byte) {
      const auto row = expected.find(std::to_string(page) + '\t' + std::to_string(byte));
      const std::u16string itself(1, static_cast<char16_t>(byte));
      EXPECT_EQ(found[byte], row == expected.end() ? itself : row->second) << page << ' ' << byte;
    }
  }
}

TEST(CodePages, EveryCharacterSurvivesBothUnicodePages) {
  std::u16string text;
  for (char32_t c = 0; c < 0x110000; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    if (c >= 0x10000) text += static_cast<char16_t>(0xD7C0 + (c >> 10));
    text += static_cast<char16_t>(c < 0x10000 ? c : 0xDC00 | (c & 0x3FF));
  }
  const std::string utf8 = wideToUtf8(text);
  EXPECT_TRUE(decoded(65001, true, utf8).first == text);
  EXPECT_TRUE(encoded(65001, text, nullptr).first == utf8);
  EXPECT_TRUE(decoded(65000, false, encoded(65000, text, nullptr).first).first == text);
  EXPECT_EQ(wideToUtf8(u"\xD800"), "\xEF\xBF\xBD");
  EXPECT_EQ(wideToUtf8(u""), "");
}

TEST(CodePages, PagesAndTextsThatNoConversionTakes) {
  for (const std::uint32_t page : {1200U, 1201U, 12000U, 99999U}) {
    EXPECT_EQ(maximumCharacterSize(page), 0U) << page;
    EXPECT_EQ(decoded(page, false, "a").second, errorInvalidParameter) << page;
    EXPECT_EQ(encoded(page, u"a", nullptr).second, errorInvalidParameter) << page;
  }
  EXPECT_EQ(decoded(1252, false, "").second, errorInvalidParameter);
  EXPECT_EQ(encoded(1252, u"", nullptr).second, errorInvalidParameter);
  bool used = false;
  EXPECT_EQ(encoded(65000, u"a", &used).second, errorInvalidParameter);
}

}  // namespace
}  // namespace platform
