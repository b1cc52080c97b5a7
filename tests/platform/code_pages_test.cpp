// The pages with rows of their own give the same results on every system, byte for byte.

#include "platform/code_pages.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
namespace {

using namespace std::string_view_literals;

// A result, or the error number in its place.
template <typename Text>
struct Outcome {
  Text text;
  std::uint32_t error;
  bool operator==(const Outcome&) const = default;
};

template <typename Text>
void PrintTo(const Outcome<Text>& outcome, std::ostream* out) {
  *out << "error " << outcome.error << ", text" << std::hex;
  for (const auto unit : outcome.text) *out << ' ' << (static_cast<unsigned>(unit) & 0xFFFF);
}

Outcome<std::u16string> decoded(std::uint32_t page, bool strict, std::string_view text,
                                std::optional<std::size_t> room = {}) {
  std::u16string buffer(room.value_or(text.size()), u'#');
  const Conversion result = narrowToWide(page, strict, text, buffer);
  return {buffer.substr(0, result.length), result.error};
}

Outcome<std::string> encoded(std::uint32_t page, std::u16string_view text, bool* usedDefault,
                             std::optional<std::size_t> room = {}) {
  std::string buffer(room.value_or(text.size() * maximumCharacterSize(page)), '#');
  const Conversion result = wideToNarrow(page, text, buffer, usedDefault);
  return {buffer.substr(0, result.length), result.error};
}

struct DecodingRow {
  std::string_view bytes;
  std::u16string_view units;
  bool isMalformed = true;
};

TEST(CodePages, Utf8DecodingReplacesAsWindowsDoes) {
  const DecodingRow rows[] = {
      {"\x80"sv, u"\uFFFD"sv},
      {"\xBF\xBF"sv, u"\uFFFD\uFFFD"sv},
      {"a\x80"
       "b"sv,
       u"a\uFFFDb"sv},
      {"\xC0\x80"sv, u"\uFFFD\uFFFD"sv},
      {"\xC1\xBF"sv, u"\uFFFD\uFFFD"sv},
      {"\xE0\x80\x80"sv, u"\uFFFD\uFFFD"sv},
      {"\xE0\x9F\xBF"sv, u"\uFFFD\uFFFD"sv},
      {"\xE0\xA0\x80"sv, u"\u0800"sv, false},
      {"\xF0\x80\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD"sv},
      {"\xF0\x8F\xBF\xBF"sv, u"\uFFFD\uFFFD\uFFFD"sv},
      {"\xF0\x90\x80\x80"sv, u"\U00010000"sv, false},
      {"\xED\x9F\xBF"sv, u"\uD7FF"sv, false},
      {"\xED\xA0\x80"sv, u"\uFFFD\uFFFD"sv},
      {"\xED\xBF\xBF"sv, u"\uFFFD\uFFFD"sv},
      {"\xED\xA0\xBD\xED\xB8\x80"sv, u"\uFFFD\uFFFD\uFFFD\uFFFD"sv},
      {"\xC3"sv, u"\uFFFD"sv},
      {"\xC3z"sv, u"\uFFFDz"sv},
      {"\xC3\xC3\xA9"sv, u"\uFFFD\u00E9"sv},
      {"\xE2"sv, u"\uFFFD"sv},
      {"\xE2\x82"sv, u"\uFFFD"sv},
      {"\xE2\x82z"sv, u"\uFFFDz"sv},
      {"\xE2\x82\xE2\x82\xAC"sv, u"\uFFFD\u20AC"sv},
      {"\xF0\x9F"sv, u"\uFFFD"sv},
      {"\xF0\x9F\x98"sv, u"\uFFFD"sv},
      {"\xF0\x9F\x98z"sv, u"\uFFFDz"sv},
      {"\xF0\x9F\x98\xC3\xA9"sv, u"\uFFFD\u00E9"sv},
      {"\xF0\x9Fz"sv, u"\uFFFD"sv},  // fewer bytes than the lead asks for
      {"\xF0zz"sv, u"\uFFFD"sv},
      {"\xF0zzz"sv, u"\uFFFDzzz"sv},
      {"\xE2z"sv, u"\uFFFD"sv},
      {"\xE2zz"sv, u"\uFFFDzz"sv},
      {"\xF4\x8F\xBF\xBF"sv, u"\U0010FFFF"sv, false},
      {"\xF4\x90\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD"sv},
      {"\xF5\x80\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD\uFFFD"sv},
      {"\xF8\x88\x80\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"sv},
      {"\xFE\xFF"sv, u"\uFFFD\uFFFD"sv},
      {"\xEF\xBB\xBF"
       "a"sv,
       u"\uFEFFa"sv, false},
      {"a\0b"sv, u"a\0b"sv, false},
      {"\xEF\xBF\xBE"sv, u"\uFFFE"sv, false},
  };
  for (const auto& [bytes, units, isMalformed] : rows) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    const Outcome<std::u16string> expected{std::u16string(units), 0};
    const Outcome<std::u16string> refused{u"", errorNoUnicodeTranslation};
    EXPECT_EQ(decoded(65001, false, bytes), expected);
    EXPECT_EQ(decoded(65001, true, bytes), isMalformed ? refused : expected);
  }
}

TEST(CodePages, Utf7DecodingDropsAndKeepsAsWindowsDoes) {
  const DecodingRow rows[] = {
      {"a+-b"sv, u"a+b"sv},
      {"+AOk-"sv, u"\u00E9"sv},
      {"+AOk"sv, u"\u00E9"sv},
      {"+AOkz"sv, u"\u00E9"sv},
      {"+AOk!x"sv, u"\u00E9!x"sv},
      {"+AOk-!x"sv, u"\u00E9!x"sv},
      {"+AOk--"sv, u"\u00E9-"sv},
      {"a+"sv, u"a"sv},
      {"+ x"sv, u" x"sv},
      {"+"sv, u""sv},
      {"+A"sv, u""sv},
      {"+AO"sv, u""sv},
      {"+AO-"sv, u""sv},
      {"++-"sv, u""sv},
      {"+/-"sv, u""sv},
      {"+AOl-"sv, u"\u00E9"sv},
      {"+AOkB-"sv, u"\u00E9"sv},
      {"+AOkAAA-"sv, u"\u00E9\0"sv},
      {"+2D3eAA-"sv, u"\U0001F600"sv},
      {"+2D0-"sv, u"\xD83D"sv},
      {"+3gA-"sv, u"\xDE00"sv},
      {"\x80\xFF"sv, u"\u0080\u00FF"sv},
      {"+AOk\xE9"
       "b"sv,
       u"\u00E9\u00E9b"sv},
      {"+\xE9-"sv, u"\u00E9-"sv},
      {"+A\xE9+OkA-"sv, u"\u00E9\u00E9"sv},  // left-over bits outlive a byte above 7F
      {"+/\xE9+AGE-"sv, u"\u00E9\uFC01"sv},
      {"+AO-+kAA-"sv, u"\u9000"sv},  // but no other end of a run
      {"+//!+AGE-"sv, u"!a"sv},
      {"+AGEAYg-+AGM-"sv, u"abc"sv},
      {"~\\"sv, u"~\\"sv},
      {"+AA\xE9+-+6Q-"sv, u"\u00E9+\u000E"sv},
      {"+AGE="sv, u"a="sv},
      {"a\0+AOk\0-"sv, u"a\0\u00E9\0-"sv},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.bytes);
    EXPECT_EQ(decoded(65000, false, row.bytes),
              (Outcome<std::u16string>{std::u16string(row.units), 0}));
  }
  EXPECT_EQ(decoded(65000, true, "a"), (Outcome<std::u16string>{u"", errorInvalidFlags}));
}

struct EncodingRow {
  std::uint32_t page;
  std::u16string_view units;
  std::string_view bytes;
  bool usesDefault = false;
};

TEST(CodePages, EncodingReplacesAsWindowsDoes) {
  const EncodingRow rows[] = {
      {65001, u"a\xD800z"sv, "a\xEF\xBF\xBDz"sv, true},
      {65001, u"\xDC00"sv, "\xEF\xBF\xBD"sv, true},
      {65001, u"\xDE00\xD83D"sv, "\xEF\xBF\xBD\xEF\xBF\xBD"sv, true},
      {65001, u"\xD83D\U0001F600"sv, "\xEF\xBF\xBD\xF0\x9F\x98\x80"sv, true},
      {65001, u"\uFFFE\uFFFF"sv, "\xEF\xBF\xBE\xEF\xBF\xBF"sv},
      {65001, u"a\0b"sv, "a\0b"sv},
      {0, u"\u0100\u2190\u4E00\uFF21"sv, "A??A"sv, true},
      {1252, u"\u0100\u2190\u4E00\uFF21"sv, "A??A"sv, true},
      {1252, u"\u0100"sv, "A"sv},
      {1252, u"\u20AC\u0081\u0153\0"sv, "\x80\x81\x9C\0"sv},
      {1252, u"e\u0301"sv, "e\xB4"sv},
      {1252, u"\U0001F600"sv, "??"sv, true},
      {1252, u"\xD800"sv, "?"sv, true},
      {28591, u"\u20AC\u0153"sv, "?o"sv, true},
      {28591, u"\u0080\u009F\u00FF"sv, "\x80\x9F\xFF"sv},
      {932, u"\u30A2\u2015"sv, "\x83\x41\x81\x5C"sv},
      {932, u"\u0E01x"sv, "?x"sv, true},
      {437, u"\U0001F600"sv, "??"sv, true},
      {37, u"a\u4E00"sv, "\x81\x6F"sv, true},  // the page's own question mark
      {20866, u"\u0416"sv, "\xF6"sv},
  };
  for (const auto& [page, units, bytes, usesDefault] : rows) {
    SCOPED_TRACE(testing::PrintToString(bytes) + " in " + std::to_string(page));
    bool used = false;
    EXPECT_EQ(encoded(page, units, &used), (Outcome<std::string>{std::string(bytes), 0}));
    EXPECT_EQ(used, usesDefault);
  }
}

TEST(CodePages, Utf7EncodingClosesEachRun) {
  const EncodingRow rows[] = {
      {65000, u"a\xD800z"sv, "a+2AA-z"sv},    {65000, u"\U0001F600"sv, "+2D3eAA-"sv},
      {65000, u"a\u00E9+b"sv, "a+AOk-+-b"sv}, {65000, u"\u00E9\u00E8"sv, "+AOkA6A-"sv},
      {65000, u"\u00E9-"sv, "+AOk--"sv},      {65000, u"\u00E9A"sv, "+AOk-A"sv},
      {65000, u"\u00E9!"sv, "+AOkAIQ-"sv},    {65000, u"'(),-./:?"sv, "'(),-./:?"sv},
      {65000, u"~\\"sv, "+AH4AXA-"sv},        {65000, u"\t\r\n a\0b"sv, "\t\r\n a\0b"sv},
      {65000, u"\x01\x7F"sv, "+AAEAfw-"sv},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(encoded(65000, row.units, nullptr),
              (Outcome<std::string>{std::string(row.bytes), 0}));
  }
  bool used = false;
  EXPECT_EQ(encoded(65000, u"a", &used), (Outcome<std::string>{"", errorInvalidParameter}));
}

TEST(CodePages, WesternBytesAreNeverRefused) {
  constexpr std::u16string_view controls1252 =
      u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D"
      u"\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D"
      u"\u017E\u0178";
  for (unsigned byte = 0; byte < 0x100; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    const auto same = static_cast<char16_t>(byte);
    const bool isControl = byte >= 0x80 && byte < 0xA0;
    const char16_t in1252 = isControl ? controls1252[byte - 0x80] : same;
    EXPECT_EQ(decoded(0, true, text).text, std::u16string(1, in1252)) << byte;
    EXPECT_EQ(decoded(1252, true, text).text, std::u16string(1, in1252)) << byte;
    EXPECT_EQ(decoded(28591, true, text).text, std::u16string(1, same)) << byte;
  }
}

// A row lost from a table of look-alikes, or one too many, changes the sums.
TEST(CodePages, LookAlikesOfWesternPagesAreComplete) {
  struct Row {
    std::uint32_t page;
    int mapped;
    int alike;
    unsigned sum;
  };
  for (const Row& row : {Row{1252, 697, 441, 0x2A1C6CE5}, Row{28591, 551, 295, 0x0606FA10}}) {
    Row found{row.page, 0, 0, 0};
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
      const std::u16string text(1, static_cast<char16_t>(unit));
      bool used = false;
      const std::string bytes = encoded(row.page, text, &used).text;
      if (used) continue;
      ++found.mapped;
      found.alike += decoded(row.page, true, bytes).text != text;
      found.sum = found.sum * 31 + static_cast<unsigned char>(bytes[0]) + unit;
    }
    EXPECT_EQ(found.mapped, row.mapped) << row.page;
    EXPECT_EQ(found.alike, row.alike) << row.page;
    EXPECT_EQ(found.sum, row.sum) << row.page;
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
  EXPECT_EQ(utf8.size(), 0x80U + 0x780U * 2 + (0xF800U - 0x800U) * 3 + 0x100000U * 4);
  EXPECT_TRUE(decoded(65001, true, utf8).text == text);
  EXPECT_TRUE(encoded(65001, text, nullptr).text == utf8);
  EXPECT_TRUE(decoded(65000, false, encoded(65000, text, nullptr).text).text == text);
  EXPECT_EQ(wideToUtf8(u"\xD800"), "\xEF\xBF\xBD");
  EXPECT_EQ(wideToUtf8(u""), "");
}

// Where a run of ASCII ends, and where the buffer does, must not depend on each other.
TEST(CodePages, EachPlaceOfAnAccentAndEachLackOfRoomIsSeen) {
  for (const std::uint32_t page : {0U, 28591U, 65000U, 65001U}) {
    for (std::size_t place = 0; place < 40; ++place) {
      std::u16string text(40, u'x');
      text[place] = u'\u00E9';
      const std::string bytes = encoded(page, text, nullptr).text;
      EXPECT_EQ(decoded(page, false, bytes, text.size()).text, text) << page << ' ' << place;
      EXPECT_EQ(encoded(page, text, nullptr, bytes.size()).text, bytes) << page << ' ' << place;
      for (std::size_t room = 0; room < text.size(); ++room) {
        ASSERT_EQ(decoded(page, false, bytes, room).error, errorInsufficientBuffer) << room;
        ASSERT_EQ(encoded(page, text, nullptr, room).error, errorInsufficientBuffer) << room;
      }
    }
  }
}

// A page that takes more than it promises fails as out of memory. These units are composed of two
// or three bytes, or need shifts to and fro.
TEST(CodePages, NoUnitNeedsMoreThanTheMaximumCharacterSize) {
  struct {
    std::uint32_t page;
    char16_t unit;
  } const rows[] = {{932, 0x3042},   {1255, 0xFB2C},  {1258, 0x00C3},  {20932, 0x4E02},
                    {50220, 0x3042}, {50225, 0xAC00}, {50227, 0x4E0F}, {54936, 0x0080}};
  for (const auto& [page, unit] : rows) {
    if (maximumCharacterSize(page) == 0) continue;  // not every system has all of them
    const Outcome<std::string> result = encoded(page, std::u16string(1, unit), nullptr);
    EXPECT_EQ(result.error, 0U) << page;
    EXPECT_FALSE(result.text.empty()) << page;
  }
}

TEST(CodePages, OtherPagesGiveAllOfTheTextAndRefuseMalformedBytes) {
  EXPECT_EQ(decoded(932, true, "\x83\x41x").text, u"\u30A2x");
  EXPECT_EQ(decoded(1251, true, "\xC6").text, u"\u0416");
  EXPECT_EQ(decoded(1255, true, "\xE0").text, u"\u05D0");  // a letter that a mark could follow
  for (const std::string_view bytes : {"\x82"sv, "a\x82"sv, "\x81\x7F"sv}) {
    EXPECT_EQ(decoded(932, true, bytes), (Outcome<std::u16string>{u"", errorNoUnicodeTranslation}));
    EXPECT_EQ(decoded(932, false, bytes).error, 0U);
  }
}

TEST(CodePages, PagesAndTextsThatNoConversionTakes) {
  for (const std::uint32_t page : {1200U, 1201U, 12000U, 99999U}) {
    EXPECT_EQ(maximumCharacterSize(page), 0U) << page;
    EXPECT_EQ(decoded(page, false, "a").error, errorInvalidParameter) << page;
    EXPECT_EQ(encoded(page, u"a", nullptr, 4).error, errorInvalidParameter) << page;
  }
  EXPECT_EQ(decoded(1252, false, "", 4).error, errorInvalidParameter);
  EXPECT_EQ(encoded(1252, u"", nullptr, 4).error, errorInvalidParameter);
}

}  // namespace
}  // namespace platform
