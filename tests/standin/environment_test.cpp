// Start and end, settings, network paths, address books and handles.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "server.h"
#include "support/rows.h"

namespace standin_tests {
namespace {

std::string variable(const std::string& name, WORD size = NOTES_ENVIRONMENT_SIZE) {
  char value[NOTES_ENVIRONMENT_SIZE] = "untouched";
  const BOOL exists = OSGetEnvironmentString(name.c_str(), value, size);
  return (exists != 0 ? "yes:" : "no:") + std::string(value);
}

std::string grown(const std::string& field) {
  return std::regex_replace(field, std::regex("<255>"), std::string(255, 'x'));
}

TEST(Start, FailsWithTheCauseAndCanBeRepeated) {
  for (const auto& [where, row] : test::rowsOf("standin/starts.txt", 3)) {
    const Server server;
    NotesTerm();
    test::writeFile("notes.ini", grown(row[0]));
    EXPECT_EQ(initialise(grown(row[1])), row[2]) << where;
    EXPECT_EQ(variable("Directory"), "no:") << "a failed start left its settings";
    test::writeFile("notes.ini", "Directory=/other");
    EXPECT_EQ(initialise(), noError) << where;
  }
}

TEST(Start, ArgumentWinsAndTheSessionLastsUntilTheEnd) {
  const Server server(header, "From=folder");
  test::writeFile("other.ini", "Directory=/data\nFrom=argument\n");
  EXPECT_EQ(initialise("=other.ini"), "The library is initialised already");
  EXPECT_EQ(variable("From"), "yes:folder");
  NotesTerm();
  char path[NOTES_PATH_SIZE];
  EXPECT_EQ(OSGetDataDirectory(path), 0);
  EXPECT_EQ(variable("From"), "no:");
  EXPECT_EQ(foundIn(), "The library is not initialised");
  EXPECT_EQ(wordsOf(0x8201), "The library is not initialised") << "with the bits of flags";
  EXPECT_EQ(wordsOf(0x7ABC), "Unknown status 0x3ABC");
  EXPECT_EQ(initialise("stdout", "=other.ini"), noError);
  EXPECT_EQ(variable("From"), "yes:argument");
}

TEST(Settings, EveryFormOfLineIsRead) {
  const auto rows = test::rowsOf("standin/notes_ini.txt", 3);
  std::string lines = "\xEF\xBB\xBFLong=" + std::string(300, 'x');
  for (const auto& [where, row] : rows) lines += "\n" + row[0];
  const Server server(header, lines);
  for (const auto& [where, row] : rows) EXPECT_EQ(variable(row[1]), row[2]) << where;
  EXPECT_EQ(variable("Long"), "yes:" + std::string(255, 'x'));
  EXPECT_EQ(variable("Long", 0), "yes:untouched");
}

TEST(Settings, DirectoriesKeepTheirKindOfSeparator) {
  for (const auto& [where, row] : test::rowsOf("standin/directories.txt", 4)) {
    const Server server(header, "Directory=" + grown(row[0]) + "\nNotesProgram=" + row[1]);
    const std::string here = (std::filesystem::current_path() / "").string();
    char path[NOTES_PATH_SIZE];
    EXPECT_EQ(OSGetDataDirectory(path), grown(row[2]).size());
    EXPECT_EQ(path, grown(row[2])) << where;
    OSGetExecutableDirectory(path);
    EXPECT_EQ(path, row[3] == "<here>" ? here : row[3]) << where;
  }
}

TEST(NetworkPath, PartsGoInAndComeOutAsFarAsTheyFit) {
  for (auto [where, row] : test::rowsOf("standin/network_paths.txt", 5)) {
    for (std::string& field : row) field = grown(field);
    char path[NOTES_PATH_SIZE] = "";
    char port[NOTES_PATH_SIZE] = "";
    char server[NOTES_PATH_SIZE] = "";
    if (row[0] != "parse") {
      const STATUS status =
          OSPathNetConstruct(row[1].c_str(), row[2].c_str(), row[3].c_str(), path);
      EXPECT_EQ(status == 0 ? path : wordsOf(status), row[4]) << where;
    }
    if (row[0] == "compose") continue;
    const STATUS status = OSPathNetParse(row[4].c_str(), port, server, path);
    EXPECT_EQ(status == 0 ? path : wordsOf(status), row[3]) << where;
    EXPECT_TRUE(port == row[1] && server == row[2]) << where;
  }
  char path[] = "names.nsf";
  EXPECT_NE(OSPathNetParse(path, path, path, nullptr), 0);
}

// The books as "a;b;", or the words of the failure.
std::string books(const std::string& server) {
  WORD count = 77;
  WORD length = 77;
  HANDLE block = 77;
  const STATUS status = NAMEGetAddressBooks(server.c_str(), 0, &count, &length, &block);
  EXPECT_EQ(count == 77 && length == 77 && block == 77, status != 0) << "outputs of a failure";
  if (status != 0) return wordsOf(status);
  const auto* bytes = static_cast<const char*>(OSLockObject(block));
  std::string list(bytes == nullptr ? "" : bytes, length);
  EXPECT_EQ(std::count(list.begin(), list.end(), '\0'), count);
  EXPECT_EQ(OSMemFree(block) == 0, count != 0);
  std::replace(list.begin(), list.end(), '\0', ';');
  return list;
}

TEST(AddressBooks, AreThoseOfTheSettings) {
  auto rows = test::rowsOf("standin/address_books.txt", 3);
  rows.push_back({"many", {"Names=", "", "The list of address books is too long"}});
  for (int i = 0; i < 10923; ++i) rows.back().fields[0] += "a,";  // a block of 65538 bytes
  for (const auto& [where, row] : rows) {
    const Server server(header, row[0]);
    EXPECT_EQ(books(row[1]), row[2]) << where;
  }
}

TEST(Handles, OnlyOpenOnesOfTheRightKindWork) {
  const Server server(header + noteLine(1));
  const DBHANDLE db = openDatabase();
  const NOTEHANDLE note = openNote(db, 1);
  const FORMULAHANDLE formula = compile("SELECT @All");
  WORD ignored = 0;
  HANDLE block = 0;
  EXPECT_EQ(NAMEGetAddressBooks(nullptr, 0, &ignored, &ignored, &block), 0);
  const HANDLE all[] = {0, 0xFFFFFFFF, db, note, formula, block};
  for (const HANDLE handle : all) {
    EXPECT_EQ(setText(handle, "x", "y") == 0, handle == note);
    EXPECT_EQ(OSLockObject(handle) != nullptr, handle == block);
    EXPECT_EQ(OSUnlockObject(handle), handle == block ? 1 : 0);
  }
  char text[4];
  EXPECT_EQ(NSFItemGetText(db, "x", text, 4) + NSFItemGetTextListEntries(db, "x") +
                NSFItemGetTextListEntry(db, "x", 0, text, 4) +
                NSFItemConvertToText(db, "x", text, 4, '|') + NSFItemGetNumber(db, "x", nullptr) +
                NSFItemGetTime(db, "x", nullptr),
            0);
  for (const HANDLE handle : all) EXPECT_EQ(NSFDbClose(handle) == 0, handle == db);
  EXPECT_EQ(wordsOf(NSFDbClose(db)), "The handle is not that of an open database");
  const DBHANDLE younger = openDatabase();
  EXPECT_EQ(wordsOf(setText(note, "x", "y")), "The database of the note is closed");
  for (const HANDLE handle : all) EXPECT_EQ(NSFNoteClose(handle) == 0, handle == note);
  EXPECT_EQ(wordsOf(NSFNoteClose(note)), "The handle is not that of an open note");
  for (const HANDLE handle : all)
    EXPECT_EQ(OSMemFree(handle) == 0, handle == formula || handle == block);
  EXPECT_EQ(wordsOf(OSMemFree(formula)), "The handle is not that of a memory block");
  NotesTerm();
  EXPECT_EQ(initialise(), noError);
  EXPECT_NE(NSFDbClose(younger), 0) << "a handle outlived the end";
}

}  // namespace
}  // namespace standin_tests
