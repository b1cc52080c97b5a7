#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <set>

#include "store/world.h"
#include "support/process.h"

namespace store_tests {
namespace {

namespace fs = std::filesystem;

test::ProcessResult runSelf(const std::vector<std::string>& arguments, const std::string& output) {
  std::vector<std::string> command = {ownProgram()};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return test::runProcess(command, output);
}

TEST(Processes, TwoThatAppendAtOnceLoseNothing) {
  constexpr int count = 200;
  const World world;
  const auto start = [](const std::string& name) {
    return std::async(std::launch::async, [name] {
      return runSelf({"append", std::to_string(count), name}, name + ".txt").status;
    });
  };
  auto first = start("first");
  auto second = start("second");
  EXPECT_EQ(first.get(), 0);
  EXPECT_EQ(second.get(), 0);

  std::set<std::string> expected;
  for (int i = 0; i < count; ++i)
    for (const char* name : {"first", "second"}) expected.insert(name + std::to_string(i));
  const DBHANDLE db = openDatabase();
  std::set<std::string> texts;
  for (NOTEID id = 1; id <= 2 * count; ++id) texts.insert(textOf(openNote(db, id), "text"));
  EXPECT_EQ(texts, expected);
}

// Counts the lines that are followed by a line feed.
std::size_t linesOf(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

bool isWhole(DBHANDLE db, NOTEID id) {
  const NOTEHANDLE note = openNote(db, id);
  const bool isWhole = std::all_of(longItems.begin(), longItems.end(), [note](const char* item) {
    return textOf(note, item) == longText;
  });
  EXPECT_EQ(library().NSFNoteClose(note), 0);
  return isWhole;
}

// Runs a process that is killed, on the database as the one before it left it, and looks at what
// there is. `known` is the number of notes before and after.
void killOnce(unsigned delay, unsigned growth, NOTEID& known) {
  const auto result =
      runSelf({"until-killed", std::to_string(delay), std::to_string(growth)}, "written.txt");
  ASSERT_EQ(result.status, test::killedStatus) << result.output;
  const auto finished = static_cast<NOTEID>(linesOf(result.output));
  EXPECT_GE(finished, 1U);
  const DBHANDLE db = openDatabase();
  NOTEID last = known;
  for (NOTEHANDLE note = 0; library().NSFNoteOpen(db, last + 1, 0, &note) == 0; ++last)
    EXPECT_EQ(library().NSFNoteClose(note), 0);
  EXPECT_GE(last, known + finished) << "a note that was reported as written is lost";
  EXPECT_LE(last, known + finished + 1);
  for (; known < last; ++known) EXPECT_TRUE(isWhole(db, known + 1)) << known + 1;
  EXPECT_EQ(library().NSFDbClose(db), 0);
}

TEST(Processes, KilledInTheMiddleOfWritingLeaveEveryFinishedNote) {
  int torn = 0;
  for (unsigned kill = 0; kill < 20;) {
    const World world;
    NOTEID known = 0;
    // By turns at some moment and at some place of a line.
    for (const unsigned end = kill + 2; kill < end; ++kill) {
      const bool isByTime = kill % 2 == 0;
      ASSERT_NO_FATAL_FAILURE(
          killOnce(isByTime ? kill * 311 : 0, isByTime ? 0 : kill * 16000, known));
      torn += test::contentOf("a.nsf").ends_with('\n') ? 0 : 1;
    }
  }
  RecordProperty("torn", torn);
}

TEST(Processes, TwoViewsOfOneFileFollowEachOther) {
  const World world;
  const DBHANDLE here = openDatabase();
  const DBHANDLE there = openDatabase((fs::current_path() / "a.nsf").string());
  for (const char* text : {"1", "2", "3"}) {
    EXPECT_EQ(write(here, text), noError);
    EXPECT_EQ(write(there, text), noError);
  }
  EXPECT_EQ(found(there), "1 2 3 4 5 6");
  EXPECT_EQ(found(here), "1 2 3 4 5") << "shown before anybody looked";
  EXPECT_EQ(foundIn(), "1 2 3 4 5 6");
  EXPECT_EQ(found(here), "1 2 3 4 5 6");
}

}  // namespace
}  // namespace store_tests
