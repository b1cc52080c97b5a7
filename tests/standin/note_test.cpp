// Items of notes, times, profiles, and the searches that find notes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <sstream>

#include "server.h"
#include "support/folders.h"
#include "support/rows.h"

namespace standin_tests {
namespace {

// The type and length of an item, its text in a buffer of 20 bytes, and what the readers of texts,
// of lists, of numbers and of times answer. Its name may go on behind the length that is given.
std::string shown(NOTEHANDLE note, const std::string& item) {
  char text[40] = {};
  WORD type = 0;
  DWORD length = 0;
  NUMBER number = 0;
  TIMEDATE time{};
  std::ostringstream all;
  EXPECT_EQ(NSFItemInfo(note, (item + "x").data(), 4, nullptr, &type, nullptr, &length), 0);
  all << std::hex << type << std::dec << ' ' << length << " <";
  all.write(text, NSFItemConvertToText(note, item.c_str(), text, 20, '|')) << "> <";
  all.write(text, NSFItemGetText(note, item.c_str(), text, 4)) << "> <";
  all << NSFItemGetTextListEntries(note, item.c_str()) << ':';
  all.write(text, NSFItemGetTextListEntry(note, item.c_str(), 1, text, 3)) << "> <";
  if (NSFItemGetNumber(note, item.c_str(), &number) == 1) all << number;
  all << "> <";
  if (NSFItemGetTime(note, item.c_str(), &time) == 1) all << time.Innards[0];
  return all.str() + '>';
}

TEST(Item, ReadsAsItsTypeLengthAndText) {
  for (const auto& [where, row] : test::rowsOf("standin/values.txt", 2)) {
    const Server server(header + noteLine(1, R"("Item":)" + row[0]), "Timezone=-1");
    EXPECT_EQ(shown(openNote(openDatabase(), 1), "iTEM"), row[1]) << where;
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
  EXPECT_NE(NSFItemInfo(note, "x", 1, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(textOf(openNote(db, 3), "First"), "1") << "changed before the update";
  EXPECT_EQ(NSFNoteUpdate(note, 0), 0);
  EXPECT_EQ(textOf(openNote(db, 3), "First"), "\xE9");
  EXPECT_EQ(found(db), "3") << "an update made a second note";
  EXPECT_TRUE(test::contentOf("a.nsf").ends_with(
      "}}\n" + noteLine(3, R"("First":{"bytes":"e9"},"Second":{"time":"1970-01-01T23:59:59.99Z"},)"
                           R"("Third":3.0,"Fourth":"4\n\"","Fifth":0.1,"Empty":"")")));
}

TEST(Item, AnyBytesComeBackAndOnlyUtf8StandsAsItIs) {
  const Server server(header + noteLine(1));
  const NOTEHANDLE note = openNote(openDatabase(), 1);
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

INTLFORMAT settingsOf(const std::string& order) {
  INTLFORMAT settings{};
  OSGetIntlSettings(&settings, sizeof settings);
  if (order == "day") return settings;
  settings.Flags |= DATE_YMD;
  settings.DateString[0] = '-';
  return settings;
}

// "<local time> of <day>:<hundredths>", or "refused".
std::string local(TIMEDATE gm) {
  TIME t{};
  t.GM = gm;
  if (TimeGMToLocal(&t) != 0) return "refused";
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
  for (const auto& [where, row] : test::rowsOf("standin/times.txt", 4)) {
    const Server server(header, "Timezone=" + row[0]);
    EXPECT_EQ(settingsOf("day").TimeZone, std::stoi(row[0]));
    EXPECT_EQ(read(row[2], settingsOf(row[1])), row[3]) << where;
  }
}

TEST(Time, OnlyItsSettingsFormatAndCalendarCount) {
  const Server server(header, "Timezone=+1");
  const std::string text = "02.01.2012 03:04:05";
  INTLFORMAT settings = settingsOf("day");
  EXPECT_EQ(read(text, settings), read(text + "garbage", settings, 19));
  for (const TFMT format : {TFMT{0, 0, 0, 2}, TFMT{4, 1, 0, 2}, TFMT{4, 0, 1, 2}, TFMT{4, 0, 0, 1}})
    EXPECT_EQ(read(text, settings, 80, format),
              "The library reads times only as date and time of day with all their parts");
  // A separator that fills its field has no closing zero.
  std::memset(settings.DateString, '-', sizeof settings.DateString);
  EXPECT_EQ(read("02-----01-----2012 03:04:05", settings), read(text, settingsOf("day")));
  // A day of more hundredths, one that is in no calendar, and one that has begun only in Greenwich.
  for (const TIMEDATE time : {TIMEDATE{{8640000, 2440588}}, {{0, 0xFFFFFF}}, {{0, 1721426}}})
    EXPECT_EQ(local(time), "refused");
  TIMEDATE now{};
  OSCurrentTIMEDATE(&now);
  const std::time_t seconds = (std::time_t{now.Innards[1]} - 2440588) * 86400;
  EXPECT_LE(std::abs(seconds + now.Innards[0] / 100 - std::time(nullptr)), 60);
}

NOTEHANDLE openProfile(DBHANDLE db, const std::string& profile, const std::string& user = "") {
  NOTEHANDLE note = 0;
  EXPECT_EQ(NSFProfileOpen(db, profile.data(), static_cast<WORD>(profile.size()), user.data(),
                           static_cast<WORD>(user.size()), 1, &note),
            0);
  return note;
}

TEST(Profile, ReachesTheFileOnlyByItsOwnUpdateAndIsOneForItsName) {
  const std::string lines = R"({"note":6,"profile":"gone","items":{}})"
                            "\n"
                            R"({"note":8,"profile":"Late","items":{"name":"8"}})"
                            "\n"
                            R"({"note":7,"profile":"late","items":{"name":"7"}})"
                            "\n";
  const Server server(header + lines + noteLine(8) + noteLine(6, R"("name":"6")"));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openProfile(db, "Customer");
  EXPECT_EQ(setText(note, "name", "Nordholm"), 0);
  EXPECT_EQ(wordsOf(NSFNoteUpdate(note, 0)),
            "A profile note is written only by the operation for profiles");
  EXPECT_EQ(textOf(openProfile(db, "customer"), "name"), "");
  for (const char* name : {"Customer", "CUSTOMER"})
    EXPECT_EQ(NSFProfileUpdate(note, name, 8, nullptr, 0), 0);
  EXPECT_EQ(NSFProfileUpdate(note, "Customer", 8, "Mail/Acme", 9), 0);
  EXPECT_EQ(textOf(openProfile(db, "customer", "mail/acme"), "NAME"), "Nordholm");
  EXPECT_EQ(textOf(openProfile(db, "customer", "mail"), "name"), "");
  EXPECT_EQ(textOf(openProfile(db, "late"), "name"), "7");
  EXPECT_EQ(textOf(openProfile(db, "gone"), "name"), "") << "its line is no profile any more";
  EXPECT_EQ(write(db, "document"), noError);
  EXPECT_EQ(foundIn("./a.nsf"), "6 8 11") << "two notes for one profile";
  EXPECT_EQ(wordsOf(NSFProfileUpdate(openNote(db, 8), "customer", 8, nullptr, 0)),
            "The note is not a profile note");
  NOTEHANDLE nameless = 0;
  EXPECT_EQ(wordsOf(NSFProfileOpen(db, "", 0, nullptr, 0, 1, &nameless)), "A profile needs a name");
}

// What a search delivers, or the words of the failure.
std::string answer(const std::string& formula) {
  FORMULAHANDLE handle = 7777;
  STATUS error = 7;
  WORD compiled = 7;
  std::array<WORD, 4> place = {7, 7, 7, 7};
  const auto size = static_cast<WORD>(formula.size());
  const STATUS status = NSFFormulaCompile(nullptr, 0, formula.data(), size, &handle, &compiled,
                                          &error, place.data(), &place[1], &place[2], &place[3]);
  EXPECT_EQ(error, status);
  EXPECT_EQ(place, (std::array<WORD, 4>{}));
  EXPECT_EQ(handle == 7777, status != 0) << "outputs of a failure";
  EXPECT_EQ(compiled, status == 0 ? size : 7) << formula;
  return status == 0 ? found(openDatabase(), formula) : wordsOf(status);
}

TEST(Formula, SelectsExactlyWhatItSaysOrDoesNotCompile) {
  const Server server(test::contentOf(test::inRepository("tests/standin/formulas.nsf")));
  for (const auto& [where, row] : test::rowsOf("standin/formulas.txt", 2))
    EXPECT_EQ(answer(row[0]), row[1]) << where;
  std::string formula = R"(SELECT Form="qbEvent")";
  for (int i = 0; i < 5000; ++i) formula += " & A" + std::to_string(i % 40) + "=\"\"";
  EXPECT_EQ(answer(formula), "4") << "length is no limit";
}

TEST(Search, FindsTheTextsThatNotesHaveByNow) {
  const Server server(header + noteLine(1, R"("a":["x","X"])") + noteLine(2, R"("a":"y")"));
  const DBHANDLE db = openDatabase();
  const std::string formula = R"(SELECT @LowerCase(A)="x" & b="")";
  EXPECT_EQ(found(db, formula), "1");
  std::ofstream("a.nsf", std::ios::app)
      << noteLine(4, R"("a":["y","X"])") << noteLine(3, R"("a":"x","b":1)")
      << noteLine(2, R"("a":"X")") << noteLine(1) << R"({"note":5,"profile":"p","items":{"a":"x"}})"
      << '\n';
  openDatabase();
  EXPECT_EQ(found(db, formula), "2 4");
  const NOTEHANDLE note = openNote(db, 2);
  EXPECT_EQ(setText(note, "b", "1"), 0);
  EXPECT_EQ(NSFNoteUpdate(note, 0), 0);
  EXPECT_EQ(found(db, formula), "4");
}

TEST(Search, CallbackMayDoAnythingAndSeesTheNotesOfTheStart) {
  const Server server(header + noteLine(11) + noteLine(1) + noteLine(9) + noteLine(3));
  const DBHANDLE db = openDatabase();
  const FORMULAHANDLE formula = compile("SELECT @All");
  std::string seen;
  const auto callback = [](void* context, SEARCH_MATCH* match, void* summary) -> STATUS {
    EXPECT_EQ(*static_cast<const WORD*>(summary), 0);
    EXPECT_TRUE(match->NoteClass == NOTE_CLASS_DATA && match->ID.File.Innards[1] == 0x852564F2);
    static_cast<std::string*>(context)->append(std::to_string(match->ID.NoteID) + ",");
    if (match->ID.NoteID != 1) return match->ID.NoteID == 9 ? 0x8123 : 0;
    EXPECT_EQ(write(openDatabase(), "new"), noError);
    EXPECT_EQ(foundIn(), "1 3 9 11 12");
    NotesTerm();
    return 0;
  };
  const auto search = [&](WORD flags, WORD noteClass, TIMEDATE* since) {
    return NSFSearch(db, formula, "", flags, noteClass, since, callback, &seen, nullptr);
  };
  TIMEDATE time{{0, 2440588}};
  for (const STATUS status : {search(1, 1, nullptr), search(0, 2, nullptr), search(0, 1, &time)})
    EXPECT_EQ(wordsOf(status),
              "The library searches documents only, and without flags or a time to begin at");
  EXPECT_EQ(search(0, NOTE_CLASS_DATA, nullptr), 0x8123);
  EXPECT_EQ(seen, "1,3,9,") << "9 ends it";
}

}  // namespace
}  // namespace standin_tests
