#include "replay/text.h"

#include <gtest/gtest.h>

#include <limits>

#include "replay/md5.h"
#include "replay/variant.h"
#include "support/rows.h"

namespace {

using replay::variant;

TEST(Variant, IntegerOfEachKindOfValue) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const std::int32_t least = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(variant().as_integer(), 0);
  EXPECT_EQ(variant(least).as_integer(), least);
  EXPECT_EQ(variant(-1.9F).as_integer(), -1);
  EXPECT_EQ(variant(3e9F).as_integer(), most);
  EXPECT_EQ(variant(-3e9F).as_integer(), least);
  EXPECT_EQ(variant(std::numeric_limits<float>::quiet_NaN()).as_integer(), 0);
  EXPECT_EQ(variant(std::u16string(u" 12\u0663")).as_integer(), 12);
  for (const auto& [where, fields] : test::rowsOf("replay/integers.txt", 2)) {
    EXPECT_EQ(variant(fields[0]).as_integer(), std::stoll(fields[1])) << where;
  }
}

TEST(Text, FormatOfAnyLengthIsWhole) {
  for (const int length : {0, 1, 5000}) {
    const std::string text(static_cast<std::size_t>(length), 'x');
    EXPECT_EQ(replay::format("%s|%d", text.c_str(), length), text + "|" + std::to_string(length));
  }
  EXPECT_EQ(replay::format("%c", 0), std::string(1, '\0'));
}

TEST(Text, CaseDoesNotCountInComparisonsButInPrefixes) {
  EXPECT_TRUE(replay::starts_with("iso8859", "iso"));
  EXPECT_FALSE(replay::starts_with("Iso", "iso"));
  EXPECT_TRUE(replay::iequals("Content-Length", "content-lengtH"));
  EXPECT_FALSE(replay::iequals("content", "content-"));
  EXPECT_FALSE(replay::iless("HOST", "host"));
  EXPECT_TRUE(replay::iless("HOSS", "host"));
}

TEST(Text, ReplacementThatHoldsThePatternEnds) {
  const auto replaced = [](std::string text, const char* pattern, const char* replacement) {
    replay::replace_all(text, pattern, replacement);
    return text;
  };
  EXPECT_EQ(replaced("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(replaced("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replaced("abc", "", "x"), "abc");
}

TEST(Text, SplitMakesNoEmptyTokens) {
  using tokens = std::vector<std::string>;
  EXPECT_EQ(replay::split(",,a b;c,", ",; "), (tokens{"a", "b", "c"}));
  EXPECT_EQ(replay::split("whole", ","), tokens{"whole"});
  EXPECT_EQ(replay::split(",,", ","), tokens{});
}

TEST(Text, DigitsBothWays) {
  EXPECT_EQ(replay::hex_encode(std::string("\x00\x7f\x80\xff", 4)), "007f80ff");
  const auto added = [](std::uint64_t value, const char* digits) {
    replay::hex_value(digits, value);
    return value;
  };
  EXPECT_EQ(added(0xf, "123456789abcdef"), 0xf123456789abcdefU);
  EXPECT_EQ(added(0xf, "ABCDEF0gG/:@`\xff-"), 0xfabcdef0U);
  EXPECT_EQ(added(1, "123456789abcdef01"), 0x23456789abcdef01U);
  std::string encoded = "?";
  replay::url_encode("aZ0.-_ ~+/\xe6", encoded);
  EXPECT_EQ(encoded, "?aZ0.-_%20%7E%2B%2F%E6");
}

// Taken from md5sum, around the place where the length needs a block of its own.
TEST(Md5, DigestsOfKnownTexts) {
  EXPECT_EQ(replay::md5_hex(""), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_EQ(replay::md5_hex(std::string(55, 'a')), "ef1772b6dff9a122358552954ad0df65");
  EXPECT_EQ(replay::md5_hex(std::string(56, 'a')), "3b0c8ac703f828b04c6c197006d17218");
  EXPECT_EQ(replay::md5_hex(std::string(64, 'a')), "014842d480b571495a4a0363793f7367");
  EXPECT_EQ(replay::md5_hex(std::string(1000, '\xff')), "23cc517ae5734b068e21c92920a5ee02");
}

}  // namespace
