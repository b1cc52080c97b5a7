#include "replay/unicode.h"

#include <gtest/gtest.h>

#include <functional>

#include "replay/codepage_tables.h"

namespace replay::unicode {
namespace {

using namespace std::string_view_literals;

// What the raised object says of itself; empty if nothing is raised.
std::string raised_by(const std::function<void()>& action) {
  try {
    action();
  } catch (const replay::exception& e) {
    return e.what();
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
  struct {
    std::uint32_t error;
    const char* narrowing;
    const char* widening;
  } const rows[] = {
      {122, "unicode.out_of_memory[]", "unicode.out_of_memory[]"},
      {87, "unicode.unmappable_character[]", "unicode.invalid_codepage[]"},
      {1113, "unicode[]", "unicode.unmappable_character[]"},
      {1004, "unicode[]", "unicode[]"},
      {0, "unicode[]", "unicode[]"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(raised_by([&] { raise_narrowing_failure(row.error); }), row.narrowing) << row.error;
    EXPECT_EQ(raised_by([&] { raise_widening_failure(row.error); }), row.widening) << row.error;
  }
}

TEST(Unicode, EmptyTextIsNeverRefused) {
  for (const codepage page : {99999, ascii, 0, 65000, 65001}) {
    EXPECT_EQ(to_narrow(u"", page, true), "");
    EXPECT_EQ(to_wide("", page), u"");
  }
}

TEST(Unicode, UnknownPageIsRefusedInBothDirections) {
  for (const codepage page : {99999, -2, 1200}) {
    EXPECT_EQ(narrowing(u"a", page, false), "unicode.invalid_codepage[]") << page;
    EXPECT_EQ(widening("a", page), "unicode.invalid_codepage[]") << page;
  }
}

TEST(Unicode, PseudoPageCopiesLowBytesOnly) {
  EXPECT_EQ(to_narrow(u"a\0\u0080\u00E9\u00FF"sv, ascii, true), "a\0\x80\xE9\xFF"sv);
  EXPECT_EQ(to_wide("a\0\x80\xE9\xFF"sv, ascii), u"a\0\u0080\u00E9\u00FF"sv);
  EXPECT_EQ(narrowing(u"a\u0100", ascii, false), "unicode.unmappable_character[]");
}

TEST(Unicode, StrictRefusesOnlyWhereThePageTakesChecks) {
  EXPECT_EQ(narrowing(u"a\u4E00", 1252, true), "unicode.unmappable_character[]");
  EXPECT_EQ(to_narrow(u"a\u4E00", 1252, false), "a?");
  EXPECT_EQ(to_narrow(u"\u0100", 1252, true), "A");
  EXPECT_EQ(to_narrow(u"\xD800", 65001, true), "\xEF\xBF\xBD");
  EXPECT_EQ(to_narrow(u"\u00E9", 65000, true), "+AOk-");
  EXPECT_EQ(to_wide("\xFFz", 65001), u"\uFFFDz");
  EXPECT_EQ(to_wide("+AOk-", 65000), u"\u00E9");
  EXPECT_EQ(widening("a\x82", 932), "unicode.unmappable_character[]");
}

TEST(Unicode, TextWithoutUnitsIsAFailureWhateverHappenedBefore) {
  EXPECT_EQ(widening("a\x82", 932), "unicode.unmappable_character[]");
  EXPECT_EQ(widening("+AO-", 65000), "unicode[]");
  EXPECT_EQ(widening("a", 99999), "unicode.invalid_codepage[]");
  EXPECT_EQ(widening("+", 65000), "unicode[]");
}

TEST(Unicode, EmbeddedZerosAreText) {
  for (const codepage page : {0, 1252, 28591, 65000, 65001}) {
    EXPECT_EQ(to_narrow(u"\0a\0"sv, page, true), "\0a\0"sv) << page;
    EXPECT_EQ(to_wide("\0a\0"sv, page), u"\0a\0"sv) << page;
  }
  EXPECT_EQ(to_utf8("\x80\0\xE9"sv), "\xE2\x82\xAC\0\xC3\xA9"sv);
}

TEST(Unicode, LongTextsAreWholeInBothDirections) {
  for (const codepage page : {1252, 65000, 65001}) {
    for (const std::size_t length : {50U, 51U, 52U, 63U, 64U, 65U, 255U, 256U, 257U, 100'000U}) {
      std::u16string text(length, u'\u00E9');
      text.back() = u'z';
      EXPECT_TRUE(to_wide(to_narrow(text, page, true), page) == text) << page << ' ' << length;
    }
  }
}

TEST(Unicode, NamesOfCharacterSetsFindTheirPages) {
  constexpr codepage missing = -2;
  struct {
    const char* name;
    codepage page;
  } const rows[] = {
      {"US-ASCII", -1},
      {"ISO-8859-1", 28591},
      {"iso_8859-15", 28605},
      {"ISO-8859-8-I", 38598},  // not all digits behind the beginning
      {"windows-1252", 1252},
      {"Windows-31J", missing},
      {"latin1", 28591},
      {"Latin-4", 28594},
      {"latin5", 28599},
      {"latin9", 28605},
      {"latin6", missing},
      {"latin0", missing},
      {"latin", missing},
      {"csISOLatin2", 28592},
      {"csISOLatinArabic", 28596},
      {"ISO-IR-100", 1252},  // the first of two rows
      {"KS_C_5601-1987", 949},
      {"\xC3\xA9utf-8", 65001},  // what is neither letter nor digit of ASCII does not count
      {"windows-2147483647", 2147483647},
      {"windows-2147483648", missing},
      {"windows-99999999999999999999", missing},
      {"iso8859-2147483647", missing},
      {"no such name", missing},
      {"", missing},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    if (row.page == missing) {
      EXPECT_EQ(raised_by([&] { codepage_of_name(row.name); }), "unicode.invalid_codepage[]");
    } else {
      EXPECT_EQ(codepage_of_name(row.name), row.page);
    }
  }
}

TEST(Unicode, PreferredNamesOfPages) {
  EXPECT_EQ(name_of_codepage(31), "IBM037");
  EXPECT_EQ(name_of_codepage(57011), "x-iscii-pa");
  EXPECT_EQ(name_of_codepage(65001), "utf-8");
  EXPECT_EQ(raised_by([] { name_of_codepage(37); }),
            "unicode.invalid_codepage[codepage 37 is not supported]");
  EXPECT_EQ(raised_by([] { name_of_codepage(-1); }),
            "unicode.invalid_codepage[codepage -1 is not supported]");
}

TEST(Unicode, NoRowOfTheListsIsLost) {
  EXPECT_EQ(alias_rows.size(), 107U);
  EXPECT_EQ(codepage_aliases.size(), 104U);
  EXPECT_EQ(codepage_names.size(), 140U);
  for (const auto& [name, page] : codepage_aliases) {
    EXPECT_EQ(codepage_of_name(name), page) << name << " is not in its normal form";
  }
}

}  // namespace
}  // namespace replay::unicode
