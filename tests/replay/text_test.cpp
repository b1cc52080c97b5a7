#include "replay/text.h"

#include <gtest/gtest.h>

#include <limits>

#include "replay/md5.h"
#include "replay/variant.h"

namespace {

using replay::variant;

TEST(Variant, IntegerOfEachKindOfValue) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const std::int32_t least = std::numeric_limits<std::int32_t>::min();
  const struct {
    variant value;
    std::int32_t expected;
  } rows[] = {
      {variant(), 0},
      {variant(least), least},
      {variant(-1.9F), -1},
      {variant(3e9F), most},
      {variant(-3e9F), least},
      {variant(std::numeric_limits<float>::quiet_NaN()), 0},
      {variant(std::string("")), 0},
      {variant(std::string(" 42x")), 42},
      {variant(std::string("\t\v-7")), -7},
      {variant(std::string("+8")), 8},
      {variant(std::string("- 8")), 0},
      {variant(std::string("2147483648")), most},
      {variant(std::string("-2147483648")), least},
      {variant(std::string("-99999999999999999999999")), least},
      {variant(std::u16string(u" 12\u0663")), 12},
      {variant(std::u16string(u"x1")), 0},
  };
  for (std::size_t row = 0; row < std::size(rows); ++row) {
    EXPECT_EQ(rows[row].value.as_integer(), rows[row].expected) << "row " << row;
  }
}

TEST(Text, FormatOfAnyLengthIsWhole) {
  for (const int length : {0, 1, 1023, 1024, 1025, 5000}) {
    const std::string text(static_cast<std::size_t>(length), 'x');
    EXPECT_EQ(replay::format("%s|%d", text.c_str(), length), text + "|" + std::to_string(length));
  }
  EXPECT_EQ(replay::format("%c", 0), std::string(1, '\0'));
}

TEST(Text, PrefixMayBeLongerThanTheText) {
  EXPECT_TRUE(replay::starts_with("iso8859", "iso"));
  EXPECT_FALSE(replay::starts_with("is", "iso"));
  EXPECT_FALSE(replay::starts_with("Iso", "iso"));
}

TEST(Text, CaseDoesNotCountInComparisons) {
  EXPECT_TRUE(replay::iequals("Content-Length", "content-lengtH"));
  EXPECT_FALSE(replay::iequals("content", "content-"));
  EXPECT_FALSE(replay::iless("HOST", "host"));
  EXPECT_TRUE(replay::iless("HOSS", "host"));
}

TEST(Text, ReplacementThatHoldsThePatternEnds) {
  const struct {
    std::string text, pattern, replacement, expected;
  } rows[] = {
      {"aaa", "a", "aa", "aaaaaa"}, {"aaa", "aa", "b", "ba"}, {"x&amp;lt;", "&amp;", "&", "x&lt;"},
      {"abc", "c", "", "ab"},       {"abc", "", "x", "abc"},  {"", "a", "b", ""}};
  for (const auto& row : rows) {
    std::string text = row.text;
    replay::replace_all(text, row.pattern, row.replacement);
    EXPECT_EQ(text, row.expected) << row.text << " / " << row.pattern;
  }
}

TEST(Text, SplitMakesNoEmptyTokens) {
  using tokens = std::vector<std::string>;
  EXPECT_EQ(replay::split(",,a,,b,", ","), (tokens{"a", "b"}));
  EXPECT_EQ(replay::split("a b;c", "; "), (tokens{"a", "b", "c"}));
  EXPECT_EQ(replay::split("whole", ","), tokens{"whole"});
  EXPECT_EQ(replay::split(",,", ","), tokens{});
  EXPECT_EQ(replay::split("", ","), tokens{});
}

TEST(Text, HexadecimalBothWays) {
  EXPECT_EQ(replay::hex_encode(std::string("\x00\x7f\x80\xff", 4)), "007f80ff");
  const struct {
    std::string digits;
    std::uint64_t start, expected;
  } rows[] = {{"1 a", 0, 26},
              {"FfFf", 0, 65535},
              {"", 7, 7},
              {"g\xff-0", 1, 16},
              {"123456789abcdef01", 0, 0x23456789abcdef01}};
  for (const auto& row : rows) {
    std::uint64_t value = row.start;
    replay::hex_value(row.digits, value);
    EXPECT_EQ(value, row.expected) << row.digits;
  }
}

TEST(Text, UrlEscapesAllButLettersDigitsAndThreeMarks) {
  std::string encoded = "?";
  replay::url_encode("aZ0.-_ ~+/\xe6", encoded);
  EXPECT_EQ(encoded, "?aZ0.-_%20%7E%2B%2F%E6");
}

// The digests of RFC 1321, and those around the place where the length needs a block of its own,
// taken from md5sum.
TEST(Md5, DigestsOfKnownTexts) {
  EXPECT_EQ(replay::md5_hex(""), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_EQ(replay::md5_hex("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
  EXPECT_EQ(replay::md5_hex("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
            "d174ab98d277d9f5a5611c2c9f419d9f");
  EXPECT_EQ(replay::md5_hex(std::string(55, 'a')), "ef1772b6dff9a122358552954ad0df65");
  EXPECT_EQ(replay::md5_hex(std::string(56, 'a')), "3b0c8ac703f828b04c6c197006d17218");
  EXPECT_EQ(replay::md5_hex(std::string(64, 'a')), "014842d480b571495a4a0363793f7367");
  EXPECT_EQ(replay::md5_hex(std::string(1000, '\xff')), "23cc517ae5734b068e21c92920a5ee02");
}

}  // namespace
