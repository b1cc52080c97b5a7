// What the library makes of a file, and what it leaves in it.
#include <gtest/gtest.h>

#include <chrono>
#include <regex>

#include "server.h"
#include "support/rows.h"

namespace standin_tests {
namespace {

namespace fs = std::filesystem;

const std::string longText(60000, 'x');

std::string damaged(int line) {
  return "Line " + std::to_string(line) + " of the database is damaged";
}

void overwrite(const std::string& part, const std::string& replacement) {
  std::fstream file("a.nsf", std::ios::binary | std::ios::in | std::ios::out);
  file.seekp(static_cast<std::streamoff>(test::contentOf("a.nsf").find(part)));
  file << replacement;
}

void append(const std::string& content) {
  std::ofstream("a.nsf", std::ios::binary | std::ios::app) << content;
}

TEST(File, ForeignOnesDoNotOpenAndKeepTheirBytes) {
  auto rows = test::rowsOf("standin/foreign_files.txt", 1);
  rows.push_back({"long line", {header.substr(0, header.size() - 1) + std::string(70000, ' ')}});
  for (const auto& [where, row] : rows) {
    const Server server;
    const DBHANDLE db = openDatabase();
    test::writeFile("a.nsf", row[0]);
    EXPECT_EQ(foundIn(), "The file is not a store of this library") << where;
    EXPECT_EQ(write(db, "text"), "The file is not a store of this library") << where;
    EXPECT_EQ(test::contentOf("a.nsf"), row[0]);
    EXPECT_EQ(found(db), "") << "what was known is lost";
  }
}

TEST(File, DamagedLinesFailTheOpenWithTheirNumber) {
  const std::string good = header + noteLine(7);
  for (const auto& [where, row] : test::rowsOf("standin/damaged_lines.txt", 1)) {
    const std::string& line = row[0];
    const Server server(good + "\r\n" + line + "\n" + noteLine(8));
    EXPECT_EQ(foundIn(), damaged(4)) << where;
    // The same line in two other places: behind what is loaded already, and torn off at the end.
    test::writeFile("a.nsf", good);
    const DBHANDLE db = openDatabase();
    append(line + "\n");
    EXPECT_EQ(foundIn(), damaged(3)) << where;
    EXPECT_EQ(write(db, "text"), damaged(3));
    EXPECT_EQ(found(db), "7") << "what was known is lost";
    test::writeFile("a.nsf", good + line);
    EXPECT_EQ(foundIn(), "7") << where;
  }
}

TEST(File, EveryFormOfLineEndIsReadAndTheLaterLineCounts) {
  const std::string first = noteLine(2, R"("text":"first")");
  const std::string second = noteLine(2, R"("text":"second","TEXT":"third")");
  const std::string open = second.substr(0, second.size() - 1);
  const std::pair<std::string, std::string> rows[] = {
      {header + first + second, "2 3"},
      {"\xEF\xBB\xBF" + header + first + second, "2 3"},
      {header + first + "\n\n" + second, "2 3"},
      {std::regex_replace(header + first + second + "\n", std::regex("\n"), "\r\n"), "2 3"},
      {header + noteLine(9) + first + open, "2 9 10"},
      {header + noteLine(2, R"("text":["first"])") + open + "\r", "2 3"}};
  for (const auto& [content, ids] : rows) {
    const Server server(content);
    const DBHANDLE db = openDatabase();
    EXPECT_EQ(textOf(openNote(db, 2), "Text"), "third") << content;
    EXPECT_EQ(write(db, "new"), noError);
    EXPECT_EQ(found(db), ids);
    EXPECT_TRUE(test::contentOf("a.nsf").starts_with(content)) << content;
  }
  const Server server(header.substr(0, header.size() - 1));
  EXPECT_EQ(write(openDatabase(), "x"), noError);
  EXPECT_EQ(test::contentOf("a.nsf"), header + noteLine(1, R"("text":"x")"));
}

TEST(File, LineCutAtAnyPlaceCountsOnlyIfItIsWhole) {
  const std::string whole = header + noteLine(1);
  const std::string line = noteLine(2, R"("text":"caf\u00e9 )" + std::string("\xC3\xA9\""));
  for (std::size_t length = 0; length <= line.size(); ++length) {
    const Server server(whole + line.substr(0, length));
    const bool counts = length + 1 >= line.size();
    EXPECT_EQ(foundIn(), counts ? "1 2" : "1") << length;
    EXPECT_EQ(test::contentOf("a.nsf"), whole + line.substr(0, length)) << "a reader wrote";
    EXPECT_EQ(write(openDatabase(), "x"), noError);
    EXPECT_EQ(foundIn(), counts ? "1 2 3" : "1 2") << length;
    EXPECT_EQ(test::contentOf("a.nsf"),
              whole + (counts ? line : "") + noteLine(counts ? 3 : 2, R"("text":"x")"));
  }
}

TEST(File, OnlyWhatIsNewIsRead) {
  const Server server(header + noteLine(1) + noteLine(2, R"("text":")" + longText + "\""));
  const auto then = fs::last_write_time("a.nsf") - std::chrono::hours(1);
  fs::last_write_time("a.nsf", then);
  EXPECT_EQ(foundIn(), "1 2");
  overwrite("\"note\":1", "damage!!");
  fs::last_write_time("a.nsf", then);
  EXPECT_EQ(foundIn(), "1 2") << "read without need";
  append(noteLine(3));
  EXPECT_EQ(foundIn(), "1 2 3") << "what is known was read again";
  fs::last_write_time("a.nsf", then + std::chrono::seconds(10));
  EXPECT_EQ(foundIn(), damaged(2)) << "a change by its time alone is missed";
}

TEST(File, EditsAreSeenWhateverTheyDoToTheSize) {
  const Server server(header + noteLine(1) + noteLine(2) + noteLine(3));
  const NOTEHANDLE note = openNote(openDatabase(), 2);
  const std::string fifth = R"({"note":5,"items":{}})";
  const std::pair<std::string, std::string> edits[] = {
      {noteLine(1) + noteLine(4, R"("text":"longer")") + noteLine(3), "1 3 4"},
      {noteLine(3), "3"},
      {noteLine(5, R"("text":"grown in its only line")"), "5"},
      {noteLine(1) + fifth, "1 5"},
      {noteLine(1) + noteLine(55), "1 55"},  // whose last line was not the whole of it
      {"", ""},
  };
  for (const auto& [lines, ids] : edits) {
    test::writeFile("a.nsf", header + lines);
    EXPECT_EQ(foundIn(), ids);
    EXPECT_EQ(wordsOf(NSFNoteUpdate(note, 0)), "There is no such note in the database");
    EXPECT_EQ(test::contentOf("a.nsf"), header + lines);
  }
}

TEST(File, ReplacedOneIsAnother) {
  const std::string missing = "The database does not exist";
  const Server server(header + noteLine(1));
  const DBHANDLE db = openDatabase();
  test::writeFile("b.nsf", header + noteLine(2));
  fs::last_write_time("b.nsf", fs::last_write_time("a.nsf"));
  fs::rename("b.nsf", "a.nsf");
  EXPECT_EQ(write(db, "text"), noError);
  EXPECT_EQ(found(db), "2 3");

  const std::string same = noteLine(2, R"("text":")" + longText + "\"");
  test::writeFile("a.nsf", header + noteLine(1, R"("text":"a")") + same);
  EXPECT_EQ(textOf(openNote(openDatabase(), 1), "text"), "a");
  test::writeFile("b.nsf", header + noteLine(1, R"("text":"b")") + same + noteLine(3));
  fs::rename("b.nsf", "a.nsf");
  EXPECT_EQ(textOf(openNote(openDatabase(), 1), "text"), "b") << "read on in another file";

  fs::remove("a.nsf");
  EXPECT_EQ(write(db, "text"), missing);
  EXPECT_EQ(foundIn(), missing);
  EXPECT_FALSE(fs::exists("a.nsf")) << "a database came into being";
}

TEST(File, TwoViewsFollowEachOtherUntilTheIdsEnd) {
  const Server server(header + noteLine(4294967290));
  const DBHANDLE here = openDatabase();
  const DBHANDLE there = openDatabase("./a.nsf");
  for (const DBHANDLE db : {here, there, here, there}) EXPECT_EQ(write(db, "text"), noError);
  EXPECT_EQ(found(here), "4294967290 4294967291 4294967292 4294967293") << "before anybody looked";
  EXPECT_EQ(write(here, "text"), noError);
  EXPECT_EQ(write(there, "text"), "The database has given out its last note id");
  EXPECT_TRUE(foundIn().ends_with(" 4294967293 4294967294 4294967295"));
}

}  // namespace
}  // namespace standin_tests
