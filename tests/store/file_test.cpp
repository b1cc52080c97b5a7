// What the library makes of a file, and what it leaves in it.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <regex>

#include "store/world.h"

namespace store_tests {
namespace {

namespace fs = std::filesystem;

const std::string foreign = "The file is not a store of this library";
const std::string missing = "The database does not exist";

std::string damaged(int line) {
  return "Line " + std::to_string(line) + " of the database is damaged";
}

void overwrite(const std::string& part, const std::string& replacement) {
  ASSERT_EQ(part.size(), replacement.size());
  const std::size_t at = test::contentOf("a.nsf").find(part);
  ASSERT_NE(at, std::string::npos);
  std::fstream file("a.nsf", std::ios::binary | std::ios::in | std::ios::out);
  file.seekp(static_cast<std::streamoff>(at));
  file << replacement;
}

void append(const std::string& content) {
  std::ofstream("a.nsf", std::ios::binary | std::ios::app) << content;
}

TEST(File, ForeignOnesDoNotOpenAndKeepTheirBytes) {
  const std::string note = noteLine(1, "");
  for (const std::string& content :
       {std::string(), std::string("\n"), std::string("\x1A\0\0\4", 4), std::string("{}\n"), note,
        note + header, "\n" + header, header.substr(0, header.size() - 2), "x" + header,
        header.substr(0, header.size() - 1) + "x\n" + note,
        std::string(R"({"database":{"title":"x"}})"),
        std::string(R"({"database":{"title":1,"replica":"852564F2007E1A3B"}})"),
        std::string(R"({"database":{"title":"x","replica":"852564F2007E1A3"}})"),
        std::string(R"({"database":{"title":"x","replica":"852564F2007E1A3G"}})"),
        std::string(R"({"database":{"title":"x","replica":"852564F2007E1A3B","more":1}})"),
        std::string(R"({"database":{"title":"x","replica":"852564F2007E1A3B"},"more":1})"),
        header.substr(0, header.size() - 1) + std::string(70000, ' ') + "\n"}) {
    const World world;
    const DBHANDLE db = openDatabase();
    test::writeFile("a.nsf", content);
    EXPECT_EQ(tryOpen(), foreign) << content.substr(0, 100);
    EXPECT_EQ(write(db, "text"), foreign);
    EXPECT_EQ(test::contentOf("a.nsf"), content);
    EXPECT_EQ(found(db), "") << "what was known is lost";
  }
}

// Lines that are no note, some of them for the value of an item.
std::vector<std::string> damagedLines() {
  std::vector<std::string> lines = {"nonsense",
                                    "[1]",
                                    R"({"note":1})",
                                    R"({"items":{}})",
                                    R"({"note":0,"items":{}})",
                                    R"({"note":-1,"items":{}})",
                                    R"({"note":1.0,"items":{}})",
                                    R"({"note":4294967296,"items":{}})",
                                    R"({"note":1,"items":[]})",
                                    R"({"note":1,"items":{)",
                                    R"({"note":1,"items":{},"more":1})",
                                    R"({"note":1,"items":{}} x)",
                                    R"({"note":1,"user":"u","items":{}})",
                                    R"({"note":1,"profile":"","items":{}})",
                                    R"({"note":1,"profile":1,"items":{}})",
                                    R"({"note":1,"items":{"":1}})",
                                    header.substr(0, header.size() - 1)};
  const std::vector<std::string> values = {"null",
                                           "true",
                                           "1e999",
                                           "[1]",
                                           R"(["x",["y"]])",
                                           "{}",
                                           "\"\xE9\"",
                                           R"({"time":1})",
                                           R"({"bytes":"e"})",
                                           R"({"bytes":"e9x0"})",
                                           R"({"time":"2012-02-30T00:00:00Z"})",
                                           R"({"time":"0000-01-01T00:00:00Z"})",
                                           R"({"time":"2012-05-30T24:00:00Z"})",
                                           R"({"time":"2012-05-30 14:07:00Z"})",
                                           R"({"time":"2012-05-30T14:07:00.2Z"})",
                                           R"({"time":"2012-05-30T14:07:00"})",
                                           R"({"time":"2012-05-30T14:07:00Z","b":"1"})",
                                           std::string(100000, '[')};
  for (const std::string& value : values)
    lines.push_back(R"({"note":1,"items":{"a":)" + value + "}}");
  return lines;
}

TEST(File, DamagedLinesFailTheOpenWithTheirNumber) {
  const std::string good = header + noteLine(7, "");
  for (const std::string& line : damagedLines()) {
    const World world(good);
    append("\r\n" + line + "\n");
    append(noteLine(8, ""));
    EXPECT_EQ(tryOpen(), damaged(4)) << line.substr(0, 100);
    // The same line in two other places: behind what is loaded already, and torn off at the end.
    test::writeFile("a.nsf", good);
    const DBHANDLE db = openDatabase();
    append(line + "\n");
    EXPECT_EQ(tryOpen(), damaged(3)) << line.substr(0, 100);
    EXPECT_EQ(write(db, "text"), damaged(3));
    EXPECT_EQ(found(db), "7") << "what was known is lost";
    test::writeFile("a.nsf", good + line);
    EXPECT_EQ(foundIn(), "7") << line.substr(0, 100);
  }
}

TEST(File, EveryFormOfLineEndIsReadAndTheLaterLineCounts) {
  const std::string bom = "\xEF\xBB\xBF";
  const std::string first = noteLine(2, R"("text":"first")");
  const std::string second = noteLine(2, R"("text":"second","TEXT":"third")");
  const std::string contents[] = {
      header + first + second,
      bom + header + first + second,
      header + first + "\n\n" + second,
      std::regex_replace(header + first + second + "\n", std::regex("\n"), "\r\n"),
      header + noteLine(9, "") + first + second.substr(0, second.size() - 1),
      header + noteLine(2, R"("text":["first"])") + second.substr(0, second.size() - 1) + "\r"};
  for (const std::string& content : contents) {
    const World world(content);
    const DBHANDLE db = openDatabase();
    EXPECT_EQ(textOf(openNote(db, 2), "Text"), "third") << content;
    EXPECT_EQ(write(db, "new"), noError);
    const std::string ids = content.find(":9,") == std::string::npos ? "2 3" : "2 9 10";
    EXPECT_EQ(found(db), ids);
    restart();
    EXPECT_EQ(foundIn(), ids) << content;
    EXPECT_TRUE(test::contentOf("a.nsf").starts_with(content)) << content;
  }
}

TEST(File, LineCutAtAnyPlaceCountsOnlyIfItIsWhole) {
  const std::string whole = header + noteLine(1, "");
  const std::string line = noteLine(2, R"("text":"caf\u00e9 )" + std::string("\xC3\xA9\""));
  for (std::size_t length = 0; length <= line.size(); ++length) {
    const World world(whole + line.substr(0, length));
    const bool counts = length + 1 >= line.size();
    EXPECT_EQ(foundIn(), counts ? "1 2" : "1") << length;
    EXPECT_EQ(test::contentOf("a.nsf"), whole + line.substr(0, length)) << "a reader wrote";
    EXPECT_EQ(write(openDatabase(), "x"), noError);
    EXPECT_EQ(foundIn(), counts ? "1 2 3" : "1 2") << length;
    EXPECT_EQ(test::contentOf("a.nsf"),
              whole + (counts ? line : "") + noteLine(counts ? 3 : 2, R"("text":"x")"));
  }
}

TEST(File, FirstLineMayLackItsLineFeed) {
  const World world(header.substr(0, header.size() - 1));
  const DBHANDLE db = openDatabase();
  EXPECT_EQ(write(db, "x"), noError);
  EXPECT_EQ(found(db), "1");
  EXPECT_EQ(test::contentOf("a.nsf"), header + noteLine(1, R"("text":"x")"));
}

TEST(File, UnchangedOneIsNotReadAgain) {
  const World world(header + noteLine(1, R"("text":"one")"));
  const auto then = fs::last_write_time("a.nsf") - std::chrono::hours(1);
  fs::last_write_time("a.nsf", then);
  EXPECT_EQ(foundIn(), "1");
  overwrite("\"note\":1", "damage!!");
  fs::last_write_time("a.nsf", then);
  EXPECT_EQ(foundIn(), "1") << "read without need";
  fs::last_write_time("a.nsf", then + std::chrono::seconds(10));
  EXPECT_EQ(foundIn(), damaged(2)) << "a change by its time alone is missed";
}

TEST(File, GrownOneIsReadFromWhereTheLastLookEnded) {
  const World world(header + noteLine(1, "") + noteLine(2, R"("text":")" + longText + "\""));
  const DBHANDLE db = openDatabase();
  overwrite("\"note\":1", "damage!!");
  append(noteLine(3, ""));
  EXPECT_EQ(tryOpen(), noError) << "what is known was read again";
  EXPECT_EQ(found(db), "1 2 3");
}

TEST(File, EditsAreSeenWhateverTheyDoToTheSize) {
  const World world(header + noteLine(1, "") + noteLine(2, "") + noteLine(3, ""));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openNote(db, 2);
  const std::pair<std::string, std::string> edits[] = {
      {noteLine(1, "") + noteLine(4, R"("text":"longer")") + noteLine(3, ""), "1 3 4"},
      {noteLine(3, ""), "3"},
      {noteLine(5, R"("text":"grown in its only line")"), "5"},
      {"", ""},
  };
  for (const auto& [lines, ids] : edits) {
    test::writeFile("a.nsf", header + lines);
    EXPECT_EQ(foundIn(), ids);
    EXPECT_EQ(wordsOf(library().NSFNoteUpdate(note, 0)), "There is no such note in the database");
    EXPECT_EQ(test::contentOf("a.nsf"), header + lines);
  }
}

TEST(File, LastLineWithoutFeedMayNotHaveBeenTheWholeOfIt) {
  const std::string start = header + noteLine(1, "") + R"({"note":5,"items":{}})";
  const World world(start);
  EXPECT_EQ(foundIn(), "1 5");
  test::writeFile("a.nsf", header + noteLine(1, "") + noteLine(55, ""));
  EXPECT_EQ(foundIn(), "1 55");
}

TEST(File, ReplacedOneIsAnother) {
  const World world(header + noteLine(1, ""));
  const DBHANDLE db = openDatabase();
  test::writeFile("b.nsf", header + noteLine(2, ""));
  fs::last_write_time("b.nsf", fs::last_write_time("a.nsf"));
  fs::rename("b.nsf", "a.nsf");
  EXPECT_EQ(write(db, "text"), noError);
  EXPECT_EQ(found(db), "2 3");

  const std::string same = noteLine(2, R"("text":")" + longText + "\"");
  test::writeFile("a.nsf", header + noteLine(1, R"("text":"a")") + same);
  EXPECT_EQ(textOf(openNote(openDatabase(), 1), "text"), "a");
  test::writeFile("b.nsf", header + noteLine(1, R"("text":"b")") + same + noteLine(3, ""));
  fs::rename("b.nsf", "a.nsf");
  EXPECT_EQ(textOf(openNote(openDatabase(), 1), "text"), "b") << "read on in another file";

  fs::remove("a.nsf");
  EXPECT_EQ(write(db, "text"), missing);
  EXPECT_EQ(tryOpen(), missing);
  EXPECT_FALSE(fs::exists("a.nsf")) << "a database came into being";
}

TEST(File, IdsEndAtTheLastOne) {
  const World world(header + noteLine(4294967294, ""));
  const DBHANDLE db = openDatabase();
  EXPECT_EQ(write(db, "last"), noError);
  EXPECT_EQ(write(db, "too many"), "The database has given out its last note id");
  EXPECT_EQ(foundIn(), "4294967294 4294967295");
}

// The sections of STORE.md that show a file, in their order.
std::vector<std::string> examples() {
  const std::string page = test::contentOf(SOURCE_FOLDER "/standin/STORE.md");
  const std::regex block("\n```\n([^`]*)```");
  std::vector<std::string> found;
  for (std::sregex_iterator at(page.begin(), page.end(), block), end; at != end; ++at)
    found.push_back((*at)[1]);
  return found;
}

TEST(File, DescriptionOfTheFormatIsTrue) {
  const std::vector<std::string> blocks = examples();
  ASSERT_EQ(blocks.size(), 3U);
  {
    const World world(blocks[0] + blocks[1]);
    EXPECT_EQ(foundIn(), "1");
  }
  const World world(blocks[2]);
  const DBHANDLE db = openDatabase();
  EXPECT_EQ(found(db), "1 5");
  EXPECT_EQ(textOf(openNote(db, 1), "event"), "second try");
  EXPECT_EQ(textOf(openNote(db, 5), "Remark"), "caf\xE9");
  EXPECT_EQ(library().NSFItemGetTextListEntries(openNote(db, 3), "vrxqbevent"), 2);
  EXPECT_EQ(write(db, "new"), noError);
  EXPECT_EQ(found(db), "1 5 6");
}

TEST(File, ManyNotesCostInProportion) {
  constexpr NOTEID count = 5000;
  std::string content = header;
  for (NOTEID id = 1; id <= count; ++id)
    content += noteLine(id, R"("Form":"qbEvent","event":"This is an event.","category":3)");
  const World world(content);
  const auto start = std::chrono::steady_clock::now();
  const DBHANDLE db = openDatabase();
  EXPECT_EQ(found(db, R"(SELECT Form="none")"), "");
  for (NOTEID id = 1; id <= count; ++id) {
    const DBHANDLE again = openDatabase();
    EXPECT_EQ(textOf(openNote(again, id), "event"), "This is an event.");
    EXPECT_EQ(library().NSFDbClose(again), 0);
  }
  // Far above what this takes anywhere, and far below 5000 times 5000 lines.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

}  // namespace
}  // namespace store_tests
