// Items of notes, the formulas that select by them, and times.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <sstream>

#include "server.h"
#include "support/rows.h"

namespace standin_tests {
namespace {

// "<type> <length>", or the words of the failure. The name that is passed goes on behind its
// length.
std::string info(NOTEHANDLE note, const std::string& item) {
  WORD type = 0;
  DWORD length = 0;
  const auto size = static_cast<WORD>(item.size());
  const STATUS status =
      NSFItemInfo(note, (item + "x").data(), size, nullptr, &type, nullptr, &length);
  EXPECT_EQ(NSFItemInfo(note, item.data(), size, nullptr, nullptr, nullptr, nullptr), status);
  std::ostringstream text;
  text << std::hex << type << ' ' << std::dec << length;
  return status != 0 ? wordsOf(status) : text.str();
}

std::string converted(NOTEHANDLE note, const char* item, WORD size = 80) {
  std::string text(100, '#');
  const WORD length = NSFItemConvertToText(note, item, text.data(), size, '|');
  EXPECT_EQ(text[length], '#') << "written behind the text";
  return text.substr(0, length);
}

// What the readers answer for an item, each in its brackets.
std::string readers(NOTEHANDLE note, const char* item) {
  char text[] = "#####";
  NUMBER number = -1;
  TIMEDATE time{{7, 7}};
  std::ostringstream all;
  const WORD length = NSFItemGetText(note, item, text, 4);
  all << '<' << std::string(text, length) << "><" << NSFItemGetTextListEntries(note, item) << ',';
  EXPECT_EQ(text[length], '\0');
  const WORD entryLength = NSFItemGetTextListEntry(note, item, 1, text, 3);
  all << std::string(text, entryLength) << "><";
  if (NSFItemGetNumber(note, item, &number) != 0) all << number;
  all << "><";
  if (NSFItemGetTime(note, item, &time) != 0) all << time.Innards[1] << ':' << time.Innards[0];
  return all.str() + '>';
}

TEST(Item, ReadsAsItsTypeLengthAndText) {
  for (const auto& [where, row] : test::rowsOf("standin/values.txt", 4)) {
    const Server server(header + noteLine(1, R"("Item":)" + row[0]), "Timezone=-1");
    const NOTEHANDLE note = openNote(openDatabase(), 1);
    EXPECT_EQ(info(note, "iTEM"), row[1]) << where;
    EXPECT_EQ(info(note, "ite"), "There is no such item in the note");
    EXPECT_EQ(converted(note, "iTEM"), row[2]) << where;
    EXPECT_EQ(converted(note, "iTEM", 3), row[2].substr(0, 3));
    EXPECT_EQ(readers(note, "iTEM"), row[3]) << where;
    EXPECT_EQ(readers(note, "absent"), "<><0,><><>");
  }
}

TEST(Item, WritesReachTheFileInPlaceAndOrder) {
  const Server server(header + noteLine(3, R"("First":"1","Second":["a"],"Third":3)"));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openNote(db, 3);
  const TIMEDATE time{{8639999, 0xAB000000 | 2440588}};
  const TIMEDATE never{{0, 0}};
  const NUMBER number = 0.1;
  const NUMBER infinite = HUGE_VAL;
  EXPECT_EQ(NSFItemSetTime(note, "SECOND", &time), 0);
  EXPECT_EQ(setText(note, "Fourth", "4\n\""), 0);
  EXPECT_EQ(setText(note, "first", "\xE9"), 0);
  EXPECT_EQ(NSFItemSetNumber(note, "Fifth", &number), 0);
  EXPECT_EQ(NSFItemSetText(note, "Empty", nullptr, 0), 0);
  EXPECT_EQ(wordsOf(NSFItemSetTime(note, "x", &never)), "There is no such date or time of day");
  EXPECT_EQ(wordsOf(NSFItemSetNumber(note, "x", &infinite)),
            "An item cannot hold a number that is not finite");
  for (const char* name : {"", "\xE9"})
    EXPECT_EQ(wordsOf(setText(note, name, "x")), "The name of an item is UTF-8 and not empty");
  EXPECT_EQ(textOf(openNote(db, 3), "First"), "1") << "changed before the update";
  EXPECT_EQ(NSFNoteUpdate(note, 0), 0);
  EXPECT_EQ(textOf(openNote(db, 3), "First"), "\xE9");
  EXPECT_EQ(found(db), "3") << "an update made a second note";
  EXPECT_TRUE(test::contentOf("a.nsf").ends_with(
      "}}\n" + noteLine(3, R"("First":{"bytes":"e9"},"Second":{"time":"1970-01-01T23:59:59.99Z"},)"
                           R"("Third":3.0,"Fourth":"4\n\"","Fifth":0.1,"Empty":"")")));
}

TEST(Item, AnyBytesComeBackAndOnlyUtf8StandsAsItIs) {
  const Server server;
  const NOTEHANDLE note = createNote(openDatabase());
  const auto rows = test::rowsOf("standin/utf8.txt", 2);
  for (const auto& [where, row] : rows) EXPECT_EQ(setText(note, where, row[0]), 0);
  EXPECT_EQ(wordsOf(NSFNoteUpdate(note, 0)), noError);
  const std::string content = test::contentOf("a.nsf");
  const NOTEHANDLE again = openNote(openDatabase(), 1);
  for (const auto& [where, row] : rows) {
    const bool isText = content.find(where + "\":\"" + row[0] + '"') != std::string::npos;
    EXPECT_EQ(isText ? "as it is" : "bytes", row[1]) << where;
    EXPECT_EQ(textOf(again, where), row[0]) << where;
  }
}

// What a search delivers, or "<words> at <line>:<column>, <offset>+<length>".
std::string answer(const std::string& formula) {
  FORMULAHANDLE handle = 7777;
  STATUS error = 0;
  WORD compiled = 7, line = 0, column = 0, offset = 0, length = 0;
  const auto size = static_cast<WORD>(formula.size());
  const STATUS status = NSFFormulaCompile(nullptr, 0, formula.data(), size, &handle, &compiled,
                                          &error, &line, &column, &offset, &length);
  EXPECT_EQ(error, status);
  EXPECT_EQ(handle == 7777, status != 0) << formula;
  EXPECT_EQ(compiled, status == 0 ? size : 7) << formula;
  if (status == 0) return found(openDatabase(), formula);
  std::ostringstream text;
  text << wordsOf(status) << " at " << line << ':' << column << ", " << offset << '+' << length;
  return text.str();
}

TEST(Formula, SelectsExactlyWhatItSaysOrDoesNotCompile) {
  const Server server(test::contentOf(SOURCE_FOLDER "/tests/standin/formulas.nsf"));
  for (const auto& [where, row] : test::rowsOf("standin/formulas.txt", 2))
    EXPECT_EQ(answer(row[0]), row[1]) << where;
  std::string formula = R"(SELECT Form="qbEvent")";
  for (int i = 0; i < 5000; ++i) formula += R"(|Form="x")";
  EXPECT_EQ(answer(formula), "4") << "length is no limit";
  EXPECT_EQ(answer("SELECT " + std::string(99, '(') + "@All" + std::string(99, ')')), "1 2 3 4 5");
  for (const char mark : {'(', '!'})
    EXPECT_EQ(answer("SELECT " + std::string(30000, mark)),
              "The formula is nested too deeply at 1:108, 107+1");
}

INTLFORMAT ownSettings() {
  INTLFORMAT settings{};
  OSGetIntlSettings(&settings, sizeof settings);
  return settings;
}

INTLFORMAT yearFirst() {
  INTLFORMAT settings = ownSettings();
  settings.Flags |= DATE_YMD;
  settings.DateString[0] = '-';
  return settings;
}

// "<local time> of <day>:<hundredths>", or "refused".
std::string local(TIMEDATE gm) {
  TIME t{};
  t.GM = gm;
  if (TimeGMToLocal(&t) != 0) return t.year == 0 ? "refused" : "refused, but written";
  char text[160];
  std::snprintf(text, sizeof text,
                "%04d-%02d-%02d %02d:%02d:%02d.%02d weekday %d zone %d dst %d of %u:%u", t.year,
                t.month, t.day, t.hour, t.minute, t.second, t.hundredth, t.weekday, t.zone, t.dst,
                gm.Innards[1], gm.Innards[0]);
  return text;
}

// The local time of a text, or the words of why it is none.
std::string read(std::string text, const INTLFORMAT& settings, WORD maximum = 80,
                 const TFMT& format = {4, 0, 0, 2}) {
  TIMEDATE time{{7, 7}};
  char* rest = text.data();
  const STATUS status = ConvertTextToTIMEDATE(&settings, &format, &rest, maximum, &time);
  EXPECT_EQ(rest == text.data() && time.Innards[1] == 7, status != 0) << "outputs of a failure";
  return status != 0 ? wordsOf(status) : local(time);
}

TEST(Time, TextGoesToGmtAndBackOrIsRefused) {
  for (const auto& [where, row] : test::rowsOf("standin/times.txt", 3)) {
    const Server server(header, "Timezone=" + row[0]);
    EXPECT_EQ(read(row[1], yearFirst()), row[2]) << where;
  }
}

TEST(Time, SettingsDecideOrderSeparatorsAndLength) {
  const Server server(header, "Timezone=3");
  const std::string text = "02.01.2012 03:04:05";
  const std::string refused = "The text is not a date and a time of day";
  INTLFORMAT settings = ownSettings();
  EXPECT_EQ(settings.TimeZone, 3);
  EXPECT_EQ(read(text, settings), read("2012-01-02 03:04:05", yearFirst()));
  EXPECT_EQ(read(text, settings), read(text + "garbage", settings, 19));
  EXPECT_EQ(read(text, settings, 16), refused);
  EXPECT_EQ(read(text, yearFirst()), refused);
  for (const TFMT format : {TFMT{0, 0, 0, 2}, TFMT{4, 1, 0, 2}, TFMT{4, 0, 1, 2}, TFMT{4, 0, 0, 1}})
    EXPECT_EQ(read(text, settings, 80, format),
              "The library reads times only as date and time of day with all their parts");
  // A separator that fills its field has no closing zero.
  std::memset(settings.DateString, '-', sizeof settings.DateString);
  EXPECT_EQ(read("02-----01-----2012 03:04:05", settings), read(text, ownSettings()));
  settings.AMString[0] = '#';
  OSGetIntlSettings(&settings, 4);
  EXPECT_EQ(settings.AMString[0], '#') << "written behind the size";
}

TEST(Time, OnlyPossibleMomentsHaveParts) {
  const Server server(header, "Timezone=1");
  EXPECT_TRUE(local({{25, 2440588}}).starts_with("1969-12-31 23:00:00.25 weekday 4"));
  EXPECT_TRUE(local({{8639999, 0xAB000000 | 2440588}}).starts_with("1970-01-01 22:59:59.99"));
  for (const TIMEDATE time : {TIMEDATE{{8640000, 2440588}}, TIMEDATE{{0, 0xFFFFFF}},
                              TIMEDATE{{0, 1721426}}})  // the last is none only in this zone
    EXPECT_EQ(local(time), "refused");
  TIMEDATE now{};
  OSCurrentTIMEDATE(&now);
  const std::time_t seconds = (std::time_t{now.Innards[1]} - 2440588) * 86400;
  EXPECT_LE(std::abs(seconds + now.Innards[0] / 100 - std::time(nullptr)), 60);
}

}  // namespace
}  // namespace standin_tests
