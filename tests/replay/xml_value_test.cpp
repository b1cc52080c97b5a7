#include "replay/internet/xml_value.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "replay/finder.h"
#include "support/rows.h"

namespace {

std::string scanned(const std::string& document, const std::string& path) {
  std::string out = "untouched";
  try {
    const bool found = replay::internet::scan_value(document, path, out);
    if (found) return "= " + out;
    return out == "untouched" ? "none" : out;
  } catch (const std::out_of_range&) {
    return out == "untouched" ? "raises" : out;
  }
}

TEST(XmlValue, ValuesOfDocuments) {
  for (const auto& [where, fields] : test::rowsOf("replay/values_of_documents.txt", 3)) {
    EXPECT_EQ(scanned(fields[1], fields[0]), fields[2]) << where;
  }
}

// All texts of two letters up to a length, each of which is a number in binary behind its first 1.
std::string text_of(unsigned number) {
  return number == 1 ? "" : text_of(number / 2) + (number % 2 == 0 ? 'a' : 'b');
}

TEST(Finder, BrokenMatchesLeaveTheBeginningsOfOthers) {
  for (unsigned pattern = 2; pattern < 64; ++pattern) {
    const replay::finder finder(text_of(pattern));
    for (unsigned text = 1; text < 1024; ++text) {
      const std::string where = text_of(text);
      for (const std::size_t from : {0U, 3U}) {
        ASSERT_EQ(finder.find(where, from), where.find(text_of(pattern), from))
            << where << " / " << text_of(pattern) << " / " << from;
      }
    }
  }
}

}  // namespace
