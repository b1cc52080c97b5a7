// The tests, and under other arguments the second processes that they start.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <thread>

#include "store/world.h"
#include "support/process.h"

namespace store_tests {
namespace {

std::string program;

void require(bool condition) {
  if (!condition) std::exit(2);
}

// At once, since the process may have no time left.
void report(std::size_t number) { std::cout << number << std::endl; }

int append(std::size_t count, const std::string& name) {
  const DBHANDLE db = openDatabase();
  for (std::size_t i = 0; i < count; ++i) {
    require(write(db, name + std::to_string(i)) == noError);
    report(i);
  }
  library().NotesTerm();
  return 0;
}

// Waits, and then for the file to grow by so much: a write is short, and seldom hit by chance.
// Then ends every thread at once, wherever it is; nothing runs that is registered for the end.
void killLater(std::chrono::microseconds delay, std::uintmax_t growth) {
  std::this_thread::sleep_for(delay);
  const std::uintmax_t size = std::filesystem::file_size("a.nsf");
  while (std::filesystem::file_size("a.nsf") < size + growth) {
  }
  test::killSelf();
}

[[noreturn]] void writeUntilKilled(std::chrono::microseconds delay, std::uintmax_t growth) {
  const DBHANDLE db = openDatabase();
  std::thread killer;
  for (std::size_t i = 0;; ++i) {
    const NOTEHANDLE note = createNote(db);
    for (const char* item : longItems) require(setText(note, item, longText) == 0);
    require(library().NSFNoteUpdate(note, 0) == 0);
    require(library().NSFNoteClose(note) == 0);
    report(i);
    if (i == 0) killer = std::thread(killLater, delay, growth);
  }
}

}  // namespace

const std::string& ownProgram() { return program; }

int runAs(const std::string& role, char** arguments) {
  require(initialise() == noError);
  if (role == "append") return append(std::stoul(arguments[0]), arguments[1]);
  writeUntilKilled(std::chrono::microseconds(std::stoul(arguments[0])), std::stoul(arguments[1]));
}

}  // namespace store_tests

int main(int argc, char** argv) {
  store_tests::program = std::filesystem::absolute(argv[0]).string();
  const std::string role = argc > 1 ? argv[1] : "";
  if (role == "append" || role == "until-killed") return store_tests::runAs(role, argv + 2);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
