#include "replay/unicode.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "replay/codepage_tables.h"
#include "support/rows.h"

namespace replay::unicode {
namespace {

using namespace std::string_view_literals;

// What the raised object says of itself; empty if nothing is raised.
std::string raised_by(const std::function<void()>& action) {
  try {
    action();
  } catch (const generic& failure) {
    return failure.what();
  }
  return "";
}

std::string narrowing(std::u16string_view text, codepage page, bool strict) {
  return raised_by([&] { to_narrow(text, page, strict); });
}

std::string widening(std::string_view text, codepage page) {
  return raised_by([&] { to_wide(text, page); });
}

TEST(Unicode, EachDirectionReadsErrorNumbersItsOwnWay) {
  std::string narrowing;
  std::string widening;
  for (const std::uint32_t error : {122U, 87U, 1113U, 0U}) {
    narrowing += raised_by([&] { raise_narrowing_failure(error); });
    widening += raised_by([&] { raise_widening_failure(error); });
  }
  EXPECT_EQ(narrowing, "unicode.out_of_memory[]unicode.unmappable_character[]unicode[]unicode[]");
  EXPECT_EQ(widening,
            "unicode.out_of_memory[]unicode.invalid_codepage[]unicode.unmappable_character[]"
            "unicode[]");
}

TEST(Unicode, UnknownPageIsRefusedInBothDirectionsUnlessThereIsNoText) {
  for (const codepage page : {99999, -2, 1200}) {
    EXPECT_EQ(narrowing(u"a", page, false), "unicode.invalid_codepage[]") << page;
    EXPECT_EQ(widening("a", page), "unicode.invalid_codepage[]") << page;
    EXPECT_EQ(to_narrow(u"", page, true), "");
    EXPECT_EQ(to_wide("", page), u"");
  }
}

TEST(Unicode, PseudoPageCopiesLowBytesOnly) {
  EXPECT_EQ(to_narrow(u"a\0\u0080\u00E9\u00FF"sv, ascii, true), "a\0\x80\xE9\xFF"sv);
  EXPECT_EQ(to_wide("a\0\x80\xE9\xFF"sv, ascii), u"a\0\u0080\u00E9\u00FF"sv);
  EXPECT_EQ(narrowing(u"a\u0100", ascii, false), "unicode.unmappable_character[]");
}

TEST(Unicode, StrictRefusesOnlyWhereThePageTakesChecks) {
  EXPECT_EQ(narrowing(u"a\u4E00", 1252, true), "unicode.unmappable_character[]");
  EXPECT_EQ(to_narrow(u"\u0100", 1252, true), "A");
  EXPECT_EQ(to_narrow(u"\xD800", 65001, true), "\xEF\xBF\xBD");
  EXPECT_EQ(to_wide("\xFFz", 65001), u"\uFFFDz");
  EXPECT_EQ(widening("a\x82", 932), "unicode.unmappable_character[]");
  EXPECT_EQ(widening("+AO-", 65000), "unicode[]") << "text without units, whatever failed before";
}

TEST(Unicode, TextsOfAnyLengthAreWholeWithTheirZeros) {
  for (const codepage page : {0, 28591, 65000, 65001}) {
    for (const std::size_t length : {1U, 51U, 52U, 64U, 65U, 256U, 257U, 100'000U}) {
      std::u16string text(length, u'\u00E9');
      text.back() = u'\0';
      EXPECT_TRUE(to_wide(to_narrow(text, page, true), page) == text) << page << ' ' << length;
    }
  }
  EXPECT_EQ(to_utf8("\x80\0\xE9"sv), "\xE2\x82\xAC\0\xC3\xA9"sv);
}

// The page of a name, or "none".
std::string page_of(const std::string& name) {
  try {
    return std::to_string(codepage_of_name(name));
  } catch (const invalid_codepage&) {
    return "none";
  }
}

TEST(Unicode, NamesOfCharacterSetsFindTheirPages) {
  for (const auto& [where, fields] : test::rowsOf("replay/character_sets.txt", 2)) {
    EXPECT_EQ(page_of(fields[0]), fields[1]) << where;
  }
  EXPECT_EQ(alias_rows.size(), 107U);
  EXPECT_EQ(codepage_aliases.size(), 104U);
  for (const auto& [name, page] : codepage_aliases) {
    EXPECT_EQ(page_of(name), std::to_string(page)) << name << " is not in its normal form";
  }
}

TEST(Unicode, PreferredNamesFindTheirPagesOrHoldTheirNumbers) {
  std::map<codepage, std::string> others;
  for (const auto& [where, fields] : test::rowsOf("replay/preferred_names.txt", 2)) {
    others[std::stoi(fields[0])] = fields[1];
  }
  EXPECT_EQ(codepage_names.size(), 140U);
  for (const auto& [page, entry] : codepage_names) {
    const std::string name = name_of_codepage(page);
    const std::string digits = name.substr(name.find_last_not_of("0123456789") + 1);
    const int number = digits.empty() ? 0 : std::stoi(digits);
    const bool fits = page_of(name) == std::to_string(page) || number == page ||
                      number + 20000 == page || others[page] == name;
    EXPECT_TRUE(fits) << page << ' ' << name;
  }
  EXPECT_EQ(raised_by([] { name_of_codepage(37); }),
            "unicode.invalid_codepage[codepage 37 is not supported]");
}

}  // namespace
}  // namespace replay::unicode
