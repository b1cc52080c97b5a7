#include "replay/text.h"

#include <gtest/gtest.h>

#include <limits>

#include "replay/internet/web_request.h"
#include "replay/md5.h"
#include "replay/unicode.h"
#include "replay/variant.h"
#include "support/rows.h"

namespace replay {
namespace {

std::string shown(bool value) { return value ? "true" : "false"; }

std::string shown(const std::u16string& units) {
  std::string text;
  for (const char16_t unit : units) text += test::bytesOfUnit(unit);
  return text;
}

std::string result_of(const std::string& function, const std::string& argument,
                      const std::string& text) {
  std::string out;
  if (function == "integer") return std::to_string(variant(text).as_integer());
  if (function == "begins") return shown(starts_with(text, argument));
  if (function == "equals") return shown(iequals(text, argument));
  if (function == "less") return shown(iless(text, argument));
  if (function == "hex") return hex_encode(text);
  if (function == "md5") return md5_hex(std::string(std::stoul(text), '\xff'));
  if (function == "widen") return shown(unicode::to_wide(text, std::stoi(argument)));
  if (function == "utf8") return unicode::to_utf8(text);
  if (function == "page") return std::to_string(unicode::codepage_of_name(text));
  if (function == "narrow" || function == "strictly") {
    return unicode::to_narrow(test::wide(text), std::stoi(argument), function == "strictly");
  }
  if (function == "value")
    return internet::WebRequest::scan_value(text, argument, out) ? "= " + out : "none" + out;
  if (function == "split") {
    for (const std::string& token : split(text, argument)) out += ' ' + token;
  } else if (function == "url") {
    url_encode(text, out = "?");
  } else if (function == "number") {
    std::uint64_t value = std::stoull(argument);
    hex_value(text, value);
    return std::to_string(value);
  }
  return out;
}

TEST(Text, FunctionsGiveTheResultsOfTheTable) {
  for (const auto& [where, fields] : test::rowsOf("lib/replay/texts.txt", 3)) {
    const std::size_t end = std::min(fields[0].find(' '), fields[0].size() - 1);
    std::string result;
    try {
      result =
          result_of(fields[0].substr(0, fields[0].find(' ')), fields[0].substr(end + 1), fields[1]);
    } catch (const replay::exception& failure) {
      result = std::string("raises ") + failure.what();
    } catch (const std::out_of_range&) {
      result = "raises";
    }
    EXPECT_EQ(result, fields[2]) << where;
  }
}

TEST(Variant, NumbersAreCutToIntegers) {
  const std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const std::int32_t least = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(variant().as_integer(), 0);
  EXPECT_EQ(variant(least).as_integer(), least);
  EXPECT_EQ(variant(-1.9F).as_integer(), -1);
  EXPECT_EQ(variant(3e9F).as_integer(), most);
  EXPECT_EQ(variant(-3e9F).as_integer(), least);
  EXPECT_EQ(variant(std::numeric_limits<float>::quiet_NaN()).as_integer(), 0);
  EXPECT_EQ(variant(std::u16string(u" 12\u0663")).as_integer(), 12);
}

}  // namespace
}  // namespace replay
