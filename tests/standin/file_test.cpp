// What the library makes of a file, what it leaves in it, and processes that write to one file.
// They run this program, which is why it has a main of its own.
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <set>

#include "server.h"
#include "support/process.h"
#include "support/rows.h"
#include "support/stand_in.h"

namespace standin_tests {
namespace {

namespace fs = std::filesystem;

const std::string longText(60000, 'x');

TEST(File, PathLeadsToIt) {
  const Server server(header + noteLine(1), "ServerName=Mail/Acme");
  fs::create_directory("sub");
  test::writeFile("sub/b.nsf", header + noteLine(2));
  for (const auto& [where, row] : test::rowsOf("standin/database_paths.txt", 2)) {
    std::string path = row[0];
    if (path.starts_with("<here>")) path.replace(0, 6, fs::current_path().string());
    EXPECT_EQ(foundIn(path), row[1]) << where;
  }
}

TEST(File, IsReadAndWrittenOnlyIfItIsAStore) {
  const std::string foreign = "The file is not a store of this library";
  auto rows = test::rowsOf("standin/store_files.txt", 3);
  rows.push_back({"long line", {"<db>" + std::string(70000, ' ') + "\n", foreign, foreign}});
  for (auto& [where, row] : rows) {
    const std::size_t at = row[0].find("<db>");
    if (at != std::string::npos) row[0].replace(at, 4, header.substr(0, header.size() - 1));
    const Server server(header + noteLine(77));
    const DBHANDLE known = openDatabase();
    test::writeFile("a.nsf", row[0]);
    EXPECT_EQ(foundIn(), row[1]) << where;
    EXPECT_EQ(foundIn("./a.nsf"), row[1]) << "seen for the first time: " << where;
    EXPECT_EQ(test::contentOf("a.nsf"), row[0]) << "a reader wrote";
    const std::string words = write(known, "new");
    EXPECT_EQ(words == noError ? foundIn("./a.nsf") : words, row[2]) << where;
    const std::string torn = test::contentOf("a.nsf.torn");
    const std::size_t kept = row[0].size() + (torn.empty() ? 0 : 1) - torn.size();
    EXPECT_TRUE(test::contentOf("a.nsf").starts_with(row[0].substr(0, kept))) << where;
    EXPECT_TRUE(torn.starts_with(row[0].substr(kept))) << "something is lost: " << where;
    EXPECT_EQ(found(known), words == noError ? row[2] : row[1] == row[2] ? "77" : row[1]);
  }
}

std::string damaged(int line) {
  return "Line " + std::to_string(line) + " of the database is damaged";
}

void append(const std::string& content) {
  std::ofstream("a.nsf", std::ios::binary | std::ios::app) << content;
}

TEST(File, DamagedLinesFailTheOpenWithTheirNumber) {
  const std::string good = header + noteLine(7);
  for (const auto& [where, row] : test::rowsOf("standin/damaged_lines.txt", 1)) {
    const Server server(good + "\r\n" + row[0] + "\n" + noteLine(8));
    EXPECT_EQ(foundIn(), damaged(4)) << where;
    // The same line in two other places: behind what is loaded already, and without its end.
    test::writeFile("a.nsf", good);
    const DBHANDLE db = openDatabase();
    append(row[0] + "\n");
    EXPECT_EQ(foundIn(), damaged(3)) << where;
    EXPECT_EQ(write(db, "text"), damaged(3));
    EXPECT_EQ(found(db), "7") << "what was known is lost";
    test::writeFile("a.nsf", good + row[0]);
    EXPECT_EQ(foundIn(), damaged(3)) << where;
    EXPECT_EQ(write(db, "text"), damaged(3));
    EXPECT_EQ(test::contentOf("a.nsf"), good + row[0]) << "cut off";
  }
}

TEST(File, LineCutAtAnyPlaceCountsIfItIsWholeAndIsKeptIfNot) {
  const std::string whole = header + noteLine(2, R"("text":"first")");
  const std::string line = noteLine(2, "\"text\":\"\\u00e9 \xC3\xA9\",\"TEXT\":\"last\"");
  for (std::size_t length = 0; length <= line.size(); ++length) {
    const std::string zeros(length % 3 * 5000, '\0');
    const Server server(std::string(whole).append(line, 0, length).append(zeros));
    const bool counts = length + 1 >= line.size();
    const std::string torn = (counts ? "" : line.substr(0, length)) + zeros;
    const DBHANDLE db = openDatabase();
    EXPECT_EQ(textOf(openNote(db, 2), "Text"), counts ? "last" : "first") << length;
    EXPECT_EQ(write(db, "x"), noError);
    EXPECT_EQ(foundIn(), "2 3") << length;
    EXPECT_EQ(test::contentOf("a.nsf"),
              whole + (counts ? line : "") + noteLine(3, R"("text":"x")"));
    EXPECT_EQ(test::contentOf("a.nsf.torn"), torn + (torn.empty() ? "" : "\n"));
  }
  const Server server(whole + "{");
  fs::create_directory("a.nsf.torn");
  EXPECT_EQ(write(openDatabase(), "x"),
            "What an interrupted write left in the database cannot be kept in a file beside it");
  EXPECT_EQ(test::contentOf("a.nsf"), whole + "{");
}

void overwrite(const std::string& part, const std::string& replacement) {
  std::fstream file("a.nsf", std::ios::binary | std::ios::in | std::ios::out);
  file.seekp(static_cast<std::streamoff>(test::contentOf("a.nsf").find(part)));
  file << replacement;
}

TEST(File, IsReadAnewIfItIsAnotherAndNeverForAnOwnWrite) {
  const Server server(header + noteLine(1) + noteLine(2, R"("text":")" + longText + "\""));
  const auto then = fs::last_write_time("a.nsf") - std::chrono::hours(1);
  fs::last_write_time("a.nsf", then);
  const DBHANDLE db = openDatabase();
  overwrite("\"note\":1", "damage!!");
  fs::last_write_time("a.nsf", then);
  EXPECT_EQ(foundIn(), "1 2") << "read without need";
  EXPECT_EQ(write(db, "x"), noError);
  EXPECT_EQ(foundIn(), "1 2 3") << "read for an own write";
  fs::last_write_time("a.nsf", then + std::chrono::seconds(10));
  EXPECT_EQ(foundIn(), damaged(2)) << "a change by its time alone is missed";
  overwrite("damage!!", "\"note\":1");
  fs::last_write_time("a.nsf", then + std::chrono::seconds(10));
  EXPECT_EQ(foundIn(), "1 2 3") << "a repair is missed";
}

TEST(File, EditsAreSeenWhateverTheyDoToTheSizeAndTheTime) {
  const Server server(header + noteLine(1) + noteLine(2) + noteLine(3));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openNote(db, 2);
  const std::string same = noteLine(1, R"("text":")" + longText + "\"");
  const std::pair<std::string, std::string> edits[] = {
      {noteLine(1) + noteLine(4, R"("text":"longer")") + noteLine(3), "1 3 4"},
      {noteLine(5, R"("text":"grown in its only line")"), "5"},
      {noteLine(1) + R"({"note":5,"items":{}})", "1 5"},
      {noteLine(1) + noteLine(55), "1 55"},  // whose last line was not the whole of it
      {noteLine(1) + noteLine(56), "1 56"},
      {noteLine(7) + same, "1 7"},
      {noteLine(8) + same + noteLine(9), "1 8 9"},  // which begins as another file does
      {noteLine(6) + same + noteLine(9) + noteLine(10), "1 6 9 10"},  // which ends as it did
      {"", ""},
  };
  for (const auto& [lines, ids] : edits) {
    const bool isAnother = ids == "1 56" || ids == "1 8 9";
    const auto then = fs::last_write_time("a.nsf");
    test::writeFile(isAnother ? "b.nsf" : "a.nsf", header + lines);
    if (isAnother) fs::last_write_time("b.nsf", then);
    if (isAnother) fs::rename("b.nsf", "a.nsf");
    EXPECT_EQ(foundIn(), ids);
    EXPECT_EQ(wordsOf(NSFNoteUpdate(note, 0)), "There is no such note in the database");
    EXPECT_EQ(test::contentOf("a.nsf"), header + lines);
  }
  fs::remove("a.nsf");
  EXPECT_EQ(write(db, "text"), "The database does not exist");
  EXPECT_FALSE(fs::exists("a.nsf")) << "a database came into being";
}

std::string program;

TEST(Processes, ThatAppendAtOnceAndAreKilledLoseNoFinishedNote) {
  constexpr NOTEID count = 25;
  const Server server;
  const auto start = [](const std::string& name) {
    return std::async(std::launch::async, [name] {
      const std::vector<std::string> command = {program, "append", std::to_string(count), name};
      return test::runProcess(command, name + ".txt").status;
    });
  };
  std::vector<std::future<int>> writers;
  for (const char* const name : {"a", "b", "c", "d", "e", "f", "g", "h"})
    writers.push_back(start(name));
  for (auto& writer : writers) EXPECT_EQ(writer.get(), test::killedStatus);

  std::set<std::string> texts;
  const DBHANDLE db = openDatabase();
  for (NOTEID id = 1; id <= 8 * count; ++id) texts.insert(textOf(openNote(db, id), "text"));
  EXPECT_EQ(texts.size(), 8 * count);
  EXPECT_TRUE(texts.contains("a0") && texts.contains("h24"));
}

// Writes so many notes, each with the name and its number, and is killed behind the last: nothing
// runs that is registered for the end.
int append(int count, const std::string& name) {
  if (initialise() != noError) return 1;
  const DBHANDLE db = openDatabase();
  for (int i = 0; i < count; ++i)
    if (write(db, name + std::to_string(i)) != noError) return 2;
  test::killSelf();
}

}  // namespace
}  // namespace standin_tests

int main(int argc, char** argv) {
  if (!test::loadStandIn()) return 3;
  if (argc == 4 && argv[1] == std::string("append"))
    return standin_tests::append(std::stoi(argv[2]), argv[3]);
  standin_tests::program = std::filesystem::absolute(argv[0]).string();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
