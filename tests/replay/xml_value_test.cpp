#include "replay/internet/xml_value.h"

#include <gtest/gtest.h>

#include <random>

#include "replay/text.h"
#include "support/slow_text.h"

namespace replay {
namespace {

using namespace std::string_view_literals;

class Generator {
 public:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::string text(const std::vector<std::string>& pieces, std::size_t most) {
    std::string result;
    for (std::size_t count = below(most + 1); count > 0; --count) {
      result += pieces[below(pieces.size())];
    }
    return result;
  }

 private:
  std::mt19937 random_{20};  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts in every run
};

TEST(XmlValue, ValuesOfDocuments) {
  const struct {
    std::string_view document, path, expected;
  } rows[] = {
      {"<a><b>1</b></a>", "a.b", "true 1"},
      {"<a><b>1</b></a>", ".A..B.", "true 1"},
      {"<a><b>1</b></a>", "b", "true 1"},
      {"<a/><b>1</b>", "a.b", "true 1"},
      {"<a><b>1</b></a>", "b.a", "false untouched"},
      {"<a>1</a>", "", "false untouched"},
      {"<a>1</a>", "..", "false untouched"},
      {"<a>x<b>1</b></a>", "a", "true x"},
      {"<a></a>", "a", "true "},
      {"<a/><b>1</b>", "a", "true "},
      {"<aB>1</ab>", "A", "true 1"},
      {"<a x=1>2</a>", "a", "true 2"},
      {"<a>1 &amp;lt; 2</a>", "a", "true 1 &lt; 2"},
      {"<a>&amp;quot;&#65;</a>", "a", "true \"&#65;"},
      {"<<a>>1", "a", "true 1"},
      {"<<<", "a", "false untouched"},
      {"<?xml?><!--a--><a>1", "a", "true 1"},
      {"<\xC4>1", "\xE4", "false untouched"},  // letters of no single-byte page have a case
      {"<a>", "a", "out of range untouched"},
      {"<a>>", "a", "out of range untouched"},
      {"<a", "a", "out of range untouched"},
      {"<a\0b>\0<"sv, "a"sv, "true \0"sv},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(outcome(internet::scan_value, row.document, row.path), row.expected)
        << row.document << " / " << row.path;
  }
}

TEST(XmlValue, GivesWhatTheSlowScanGives) {
  const std::vector<std::string> pieces = {
      "<",     "<a",  "<A>", "<b>",   ">",    "a",   "B",     "aba", "<", "/>",   "\xC4",
      "<\xE4", "<&>", "<a<", "&amp;", "&lt;", "lt;", "quot;", " ",   "&", "&gt;", "apos;"};
  const std::vector<std::string> names = {"a", "B",    "a", "b", "",  "aba", "a<A",
                                          ">", "\xE4", "&", "/", "<", "a>"};
  const std::vector<std::string> dots = {".", "..", ""};
  Generator generate;
  int found = 0;
  int raised = 0;
  for (int round = 0; round < 100'000; ++round) {
    const std::string document = generate.text(pieces, 40);
    std::string path = generate.text(dots, 1);
    for (std::size_t count = generate.below(3); count > 0; --count) {
      path += generate.text(names, 1) + generate.text(names, 1) + generate.text(dots, 2);
    }
    const std::string expected = outcome(scanWithLoweredCopies, document, path);
    ASSERT_EQ(outcome(internet::scan_value, document, path), expected) << document << " / " << path;
    found += expected.starts_with("true");
    raised += expected.starts_with("out");
  }
  EXPECT_GT(found, 10'000) << "the documents are not fit for the test";
  EXPECT_GT(raised, 1'000) << "the documents are not fit for the test";
}

TEST(XmlValue, ReplacesWhatTheSlowWayReplaces) {
  Generator generate;
  for (int round = 0; round < 100'000; ++round) {
    const std::string text = generate.text({"a", "b", "aab", "\xFF"}, 20);
    const std::string pattern = "a" + generate.text({"a", "b", "\xFF"}, 4);
    const std::string replacement = generate.text({"a", "b", "\xFF"}, 3);
    std::string expected = text;
    replaceInPlace(expected, pattern, replacement);
    std::string replaced = text;
    replace_all(replaced, pattern, replacement);
    ASSERT_EQ(replaced, expected) << text << " / " << pattern << " / " << replacement;
  }
}

// A scan that starts anew for each tag compares a hundred thousand million characters here.
TEST(XmlValue, LongNamesAndManyTagsComeToAnEnd) {
  std::string tags;
  while (tags.size() < 1'000'000) tags += "<a";
  std::string out;
  EXPECT_FALSE(internet::scan_value(tags, std::string(tags, 1, tags.size() / 2) + "b", out));
  EXPECT_FALSE(internet::scan_value(tags, "b", out));
  EXPECT_FALSE(internet::scan_value(std::string(1'000'000, '<'), "a", out));
  EXPECT_TRUE(internet::scan_value("<a" + std::string(1'000'000, '>') + "1", "a", out));
  EXPECT_EQ(out, "1");
  std::string text(1'000'000, 'a');
  replace_all(text, std::string(500'000, 'a') + "b", "");
  EXPECT_EQ(text.size(), 1'000'000U);
}

}  // namespace
}  // namespace replay
