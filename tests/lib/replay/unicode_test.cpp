#include "replay/unicode.h"

#include <gtest/gtest.h>

#include <map>

#include "replay/detail/codepage_tables.h"
#include "support/rows.h"

namespace replay::unicode {
namespace {

TEST(Unicode, TextsOfAnyLengthAreWholeWithTheirZeros) {
  for (const codepage page : {0, 28591, 65000, 65001}) {
    for (const std::size_t length : {1U, 51U, 52U, 64U, 65U, 256U, 257U, 100'000U}) {
      std::u16string text(length, u'\u00E9');
      text.back() = u'\0';
      EXPECT_TRUE(to_wide(to_narrow(text, page, true), page) == text) << page << ' ' << length;
    }
  }
}

// The page of a name, or -2.
codepage page_of(const std::string& name) {
  try {
    return codepage_of_name(name);
  } catch (const invalid_codepage&) {
    return -2;
  }
}

TEST(Unicode, PreferredNamesFindTheirPagesOrHoldTheirNumbers) {
  std::map<codepage, std::string> others;
  for (const auto& [where, fields] : test::rowsOf("lib/replay/preferred_names.txt", 2)) {
    others[std::stoi(fields[0])] = fields[1];
  }
  EXPECT_EQ(codepage_names.size(), 140U);
  for (const auto& [page, entry] : codepage_names) {
    const std::string name = name_of_codepage(page);
    const std::string digits = name.substr(name.find_last_not_of("0123456789") + 1);
    const int number = digits.empty() ? 0 : std::stoi(digits);
    const bool fits =
        page_of(name) == page || number == page || number + 20000 == page || others[page] == name;
    EXPECT_TRUE(fits) << page << ' ' << name;
  }
  EXPECT_THROW(name_of_codepage(37), invalid_codepage);
}

}  // namespace
}  // namespace replay::unicode
