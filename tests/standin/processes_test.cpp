// Processes that write to one database, and the program that they run: this one.
#include <gtest/gtest.h>

#include <future>
#include <set>

#include "server.h"
#include "support/process.h"

namespace standin_tests {
namespace {

std::string program;

TEST(Processes, TwoThatAppendAtOnceAndAreKilledLoseNoFinishedNote) {
  constexpr NOTEID count = 200;
  const Server server;
  const auto start = [](const std::string& name) {
    return std::async(std::launch::async, [name] {
      const std::vector<std::string> command = {program, "append", std::to_string(count), name};
      return test::runProcess(command, name + ".txt").status;
    });
  };
  auto first = start("first");
  auto second = start("second");
  EXPECT_EQ(first.get(), test::killedStatus);
  EXPECT_EQ(second.get(), test::killedStatus);

  std::set<std::string> expected;
  std::set<std::string> texts;
  const DBHANDLE db = openDatabase();
  for (NOTEID i = 1; i <= 2 * count; ++i) {
    expected.insert((i % 2 == 0 ? "first" : "second") + std::to_string((i - 1) / 2));
    texts.insert(textOf(openNote(db, i), "text"));
  }
  EXPECT_EQ(texts, expected);
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
  if (!standin_tests::loadStandIn()) return 3;
  if (argc == 4 && argv[1] == std::string("append"))
    return standin_tests::append(std::stoi(argv[2]), argv[3]);
  standin_tests::program = std::filesystem::absolute(argv[0]).string();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
