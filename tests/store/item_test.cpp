#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "store/world.h"

namespace store_tests {
namespace {

// "<type> <length>", or the words of the failure; a name longer than `item` shows that its length
// is given apart.
std::string info(NOTEHANDLE note, const std::string& item) {
  WORD type = 0;
  DWORD length = 0;
  const std::string longer = item + "x";
  const auto size = static_cast<WORD>(item.size());
  const STATUS status =
      library().NSFItemInfo(note, longer.data(), size, nullptr, &type, nullptr, &length);
  for (const STATUS other :
       {library().NSFItemInfo(note, longer.data(), size, nullptr, nullptr, nullptr, nullptr),
        library().NSFItemInfo(note, longer.data(), size, nullptr, &type, nullptr, nullptr)})
    EXPECT_EQ(other, status);
  if (status != 0) return wordsOf(status);
  char digits[8];
  std::snprintf(digits, sizeof digits, "%03X", type);
  return digits + (" " + std::to_string(length));
}

std::string converted(NOTEHANDLE note, const char* item, WORD size = 80) {
  char text[100];
  std::fill(std::begin(text), std::end(text), '#');
  const WORD length = library().NSFItemConvertToText(note, item, text, size, '|');
  EXPECT_EQ(text[length], '#') << "written behind the text";
  return {text, length};
}

TEST(Item, TypesLengthsAndTextsAreThoseOfTheValue) {
  const struct {
    const char *json, *info, *text;
  } rows[] = {
      {R"("")", "500 2", ""},
      {R"("caf\u00e9")", "500 7", "caf\xC3\xA9"},
      {R"("a\u0000b")", "500 5", nullptr},
      {R"({"bytes":"E9"})", "500 3", "\xE9"},
      {R"([])", "501 4", ""},
      {R"([""])", "501 6", ""},
      {R"(["one",{"bytes":"ff"},"3"])", "501 15", "one|\xFF|3"},
      {"4", "300 10", "4"},
      {"-2.5", "300 10", "-2.5"},
      {"0.1", "300 10", "0.1"},
      {"18446744073709551615", "300 10", "18446744073709551616"},
      {"1e300", "300 10", "1e+300"},
      {R"({"time":"2012-05-30T14:07:00.25Z"})", "400 10", "2012-05-30 15:07:00"},
      {R"({"time":"2012-12-31T23:30:59Z"})", "400 10", "2013-01-01 00:30:59"},
      {R"({"time":"9999-12-31T23:30:59Z"})", "400 10", ""},  // no such local time
  };
  for (const auto& row : rows) {
    const World world(header + noteLine(1, R"("Item":)" + std::string(row.json)), "Timezone=-1\n");
    const NOTEHANDLE note = openNote(openDatabase(), 1);
    EXPECT_EQ(info(note, "iTEM"), row.info) << row.json;
    EXPECT_EQ(info(note, "ite"), "There is no such item in the note");
    if (row.text == nullptr) continue;
    EXPECT_EQ(converted(note, "iTEM"), row.text) << row.json;
    EXPECT_EQ(converted(note, "iTEM", 3), std::string(row.text).substr(0, 3));
    EXPECT_EQ(converted(note, "iTEM", 0), "");
  }
}

TEST(Item, ReadersAnswerForTheirTypeOnly) {
  const World world(header + noteLine(1, R"("text":"t","list":["a","bcd"],"none":[],"number":4,)"
                                         R"("time":{"time":"1970-01-01T00:00:01.05Z"})"));
  const NOTEHANDLE note = openNote(openDatabase(), 1);
  for (const std::string item : {"text", "list", "none", "number", "time", "absent"}) {
    char buffer[] = "###";
    NUMBER number = -1;
    TIMEDATE time{{7, 7}};
    EXPECT_EQ(library().NSFItemGetText(note, item.c_str(), buffer, sizeof buffer),
              item == "text" ? 1 : 0);
    EXPECT_STREQ(buffer, item == "text" ? "t" : "") << item;
    EXPECT_EQ(library().NSFItemGetTextListEntries(note, item.c_str()), item == "list" ? 2 : 0);
    EXPECT_EQ(library().NSFItemGetTextListEntry(note, item.c_str(), 1, buffer, 3),
              item == "list" ? 2 : 0);
    EXPECT_STREQ(buffer, item == "list" ? "bc" : "") << item;
    EXPECT_EQ(library().NSFItemGetTextListEntry(note, item.c_str(), 2, buffer, 3), 0);
    EXPECT_EQ(library().NSFItemGetNumber(note, item.c_str(), &number), item == "number" ? 1 : 0);
    EXPECT_EQ(number, item == "number" ? 4 : -1);
    EXPECT_EQ(library().NSFItemGetTime(note, item.c_str(), &time), item == "time" ? 1 : 0);
    const DWORD day = time.Innards[1];
    const DWORD hundredths = time.Innards[0];
    EXPECT_EQ(day, item == "time" ? 2440588U : 7U);
    EXPECT_EQ(hundredths, item == "time" ? 105U : 7U);
  }
}

TEST(Item, LongTextIsCutToTheBuffer) {
  const World world(header + noteLine(1, R"("text":")" + std::string(1100, 'x') + "\""));
  const NOTEHANDLE note = openNote(openDatabase(), 1);
  std::string buffer(NOTES_ITEM_TEXT_SIZE + 1, '#');
  EXPECT_EQ(library().NSFItemGetText(note, "text", buffer.data(), NOTES_ITEM_TEXT_SIZE), 1023);
  EXPECT_EQ(buffer, std::string(1023, 'x') + '\0' + '#');
}

TEST(Item, WritesReachTheFileInPlaceAndOrder) {
  const World world(header + noteLine(3, R"("First":"1","Second":["a"],"Third":3)"));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openNote(db, 3);
  const TIMEDATE time{{8639999, 0xAB000000 | 2440588}};
  const NUMBER number = 0.1;
  EXPECT_EQ(library().NSFItemSetTime(note, "SECOND", &time), 0);
  EXPECT_EQ(setText(note, "Fourth", "4\n\"\xC3\xA9"), 0);
  EXPECT_EQ(setText(note, "first", "\xE9"), 0);
  EXPECT_EQ(library().NSFItemSetNumber(note, "Fifth", &number), 0);
  EXPECT_EQ(library().NSFItemSetText(note, "Empty", nullptr, 0), 0);
  EXPECT_EQ(textOf(openNote(db, 3), "First"), "1") << "changed before the update";
  EXPECT_EQ(library().NSFNoteUpdate(note, 0), 0);
  EXPECT_EQ(textOf(openNote(db, 3), "First"), "\xE9");
  const std::string content = test::contentOf("a.nsf");
  EXPECT_EQ(content.substr(content.rfind("{\"note\"")),
            noteLine(3, R"("First":{"bytes":"e9"},"Second":{"time":"1970-01-01T23:59:59.99Z"},)"
                        R"("Third":3.0,"Fourth":"4\n\")"
                        "\xC3\xA9"
                        R"(","Fifth":0.1,"Empty":"")"));
  EXPECT_EQ(foundIn(), "3") << "an update made a second note";
}

TEST(Item, AnyBytesComeBackAsTheyWere) {
  std::vector<std::string> texts = {"\xC0\x80",     "\xC1\xBF",         "\xE0\x9F\xBF",
                                    "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                                    "\xE2\x82",     "\xF0\x9F\x98",     "\xF4\x8F\xBF\xBF",
                                    "\xED\x9F\xBF", "a\xE2\x82\xAC\x80"};
  for (int byte = 0; byte < 256; ++byte) {
    texts.emplace_back(1, static_cast<char>(byte));
    for (const int second : {0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0})
      texts.push_back({static_cast<char>(byte), static_cast<char>(second), '\x80', '\xBF'});
  }
  const World world;
  const NOTEHANDLE note = createNote(openDatabase());
  for (std::size_t i = 0; i < texts.size(); ++i)
    EXPECT_EQ(setText(note, std::to_string(i).c_str(), texts[i]), 0);
  EXPECT_EQ(wordsOf(library().NSFNoteUpdate(note, 0)), noError);
  restart();
  const NOTEHANDLE again = openNote(openDatabase(), 1);
  for (std::size_t i = 0; i < texts.size(); ++i)
    EXPECT_EQ(textOf(again, std::to_string(i).c_str()), texts[i]) << i;
}

TEST(Item, WhatNoFileCanHoldIsRefused) {
  const World world;
  const NOTEHANDLE note = createNote(openDatabase());
  const TIMEDATE never{{0, 0}};
  EXPECT_NE(library().NSFItemSetTime(note, "x", &never), 0);
  for (const NUMBER number : {std::nan(""), std::numeric_limits<double>::infinity()})
    EXPECT_EQ(wordsOf(library().NSFItemSetNumber(note, "x", &number)),
              "An item cannot hold a number that is not finite");
  for (const char* name : {"", "\xE9"})
    EXPECT_EQ(wordsOf(setText(note, name, "x")), "The name of an item is UTF-8 and not empty");
  EXPECT_NE(library().NSFItemSetText(note, "x", nullptr, 1), 0);
  EXPECT_EQ(info(note, "x"), "There is no such item in the note");
}

}  // namespace
}  // namespace store_tests
