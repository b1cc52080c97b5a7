#include <gtest/gtest.h>

#include <set>

#include "server.h"

extern "C" RunFromC runFromC;

namespace standin_tests {
namespace {

std::string variable(const char* name, WORD size = NOTES_ENVIRONMENT_SIZE) {
  char value[NOTES_ENVIRONMENT_SIZE] = "untouched";
  const BOOL exists = library().OSGetEnvironmentString(name, value, size);
  return (exists != 0 ? "yes:" : "no:") + std::string(value);
}

TEST(Start, FailsWithTheCauseAndCanBeRepeated) {
  const std::string unreadable = "The file notes.ini cannot be found or read";
  const std::string noDirectory = "The file notes.ini has no variable Directory";
  const std::string timezone =
      "The variable Timezone in notes.ini is not a whole number from -23 to 23";
  const struct {
    std::string settings;
    std::vector<std::string> arguments;
    std::string words;
  } rows[] = {
      {"Directory=/data\n", {"=missing/notes.ini"}, unreadable},
      {"Directory=/data\n", {"="}, unreadable},
      {"Directory=/data\n", {"=."}, unreadable},
      {"", {}, noDirectory},
      {"Directory=\n", {}, noDirectory},
      {"Directory=/data\nTimezone=5.5\n", {}, timezone},
      {"Directory=/data\nTimezone=24\n", {}, timezone},
  };
  for (const auto& row : rows) {
    const Server server(row.settings);
    EXPECT_EQ(initialise(row.arguments), row.words);
    EXPECT_EQ(variable("Directory"), "no:") << "a failed start left its settings";
    test::writeFile("notes.ini", "Directory=/other\n");
    EXPECT_EQ(initialise(), "No error");
  }
  const Server server("");
  std::filesystem::remove("notes.ini");
  EXPECT_EQ(initialise(), unreadable);
}

TEST(Start, ArgumentWinsAndSecondStartKeepsTheFirst) {
  const Server server("Directory=/data\nFrom=folder\n");
  test::writeFile("other.ini", "Directory=/data\nFrom=argument\n");
  EXPECT_EQ(initialise({"stdout", "=other.ini", "=missing.ini"}), "No error");
  EXPECT_EQ(initialise(), "The library is initialised already");
  EXPECT_EQ(variable("From"), "yes:argument");
  library().NotesTerm();
  EXPECT_EQ(variable("From"), "no:");
  EXPECT_EQ(initialise(), "No error");
  EXPECT_EQ(variable("From"), "yes:folder");
}

TEST(Start, WithoutItNothingWorksAndNothingIsWritten) {
  for (const bool afterTheEnd : {false, true}) {
    const Server server("Directory=/data\n");
    if (afterTheEnd) initialise();
    library().NotesTerm();
    char path[NOTES_PATH_SIZE] = "untouched";
    HANDLE handle = 7;
    WORD number = 7;
    TIME time{};
    EXPECT_EQ(library().OSGetDataDirectory(path), 0);
    library().OSGetExecutableDirectory(path);
    EXPECT_STREQ(path, "untouched");
    EXPECT_EQ(library().TimeGMToLocal(&time), 1);
    for (const STATUS status :
         {library().NAMEGetAddressBooks(nullptr, 0, &number, &number, &handle),
          library().OSMemFree(1), library().NSFDbOpen("names.nsf", &handle)})
      EXPECT_EQ(wordsOf(status), "The library is not initialised");
    EXPECT_TRUE(number == 7 && handle == 7);
  }
}

TEST(Settings, EveryFormOfLineIsRead) {
  const std::string line(300, 'x');
  const RunningServer server(
      "[Notes]\r\nCrLf=1\r\nFirst=one\nfirst=two\n=nameless\nNo mark\nEmpty=\nBlanks= a b \n"
      "Marks=a=b=\nBytes=\xE9\xFF\nCr=a\rb\r\r\nLong=" +
      line + "\nLast=end");
  const std::pair<const char*, std::string> rows[] = {
      {"CrLf", "yes:1"},       {"FIRST", "yes:one"},  {"Empty", "yes:"},
      {"Blanks", "yes: a b "}, {"Marks", "yes:a=b="}, {"Bytes", "yes:\xE9\xFF"},
      {"Cr", "yes:a\rb\r"},    {"Last", "yes:end"},   {"", "no:"},
      {"No mark", "no:"},      {"[Notes]", "no:"},    {"Long", "yes:" + line.substr(0, 255)}};
  for (const auto& [name, expected] : rows) EXPECT_EQ(variable(name), expected) << name;
  EXPECT_EQ(variable("Long", 4), "yes:xxx");
  EXPECT_EQ(variable("Long", 1), "yes:");
  EXPECT_EQ(variable("Long", 0), "yes:untouched");
}

TEST(Settings, DirectoriesKeepTheirKindOfSeparator) {
  const std::string tooLong(300, 'x');
  const std::string cut(255, 'x');
  const struct {
    std::string data, program, expectedData, expectedProgram;
  } rows[] = {
      {"/data/", "/opt/domino", "/data", "/opt/domino/"},
      {"C:\\Data\\", "C:\\Domino", "C:\\Data", "C:\\Domino\\"},
      {"data", "", "data", "<the current one>"},
      {tooLong, tooLong, cut, cut},
  };
  for (const auto& row : rows) {
    const Server server("Directory=" + row.data + "\nNotesProgram=" + row.program + "\n");
    const std::string here = (std::filesystem::current_path() / "").string();
    EXPECT_EQ(initialise(), "No error");
    char path[NOTES_PATH_SIZE];
    EXPECT_EQ(library().OSGetDataDirectory(path), row.expectedData.size());
    EXPECT_EQ(path, row.expectedData);
    library().OSGetExecutableDirectory(path);
    EXPECT_EQ(path, row.program.empty() ? here : row.expectedProgram);
  }
}

TEST(Words, EveryStatusHasItsOwnThatFitAndTakeAFullStop) {
  std::set<std::string> known;
  for (STATUS code = 0; code <= NOTES_ERROR_MASK; ++code) {
    const std::string words = wordsOf(code);
    ASSERT_EQ(words, wordsOf(code | 0x8000));
    if (words.starts_with("Unknown status 0x")) continue;
    EXPECT_TRUE(known.insert(words).second) << words;
    EXPECT_FALSE(words.ends_with('.')) << words;
    EXPECT_LT(words.size(), NOTES_ERROR_TEXT_SIZE - 1U) << "may have been cut: " << words;
  }
  EXPECT_GT(known.size(), 10U);
  EXPECT_EQ(wordsOf(0x7ABC), "Unknown status 0x3ABC");
  char small[4];
  EXPECT_EQ(library().OSLoadString(nullptr, 0, small, sizeof small), 3);
  EXPECT_STREQ(small, "No ");
}

TEST(Interface, IsCallableFromC) {
  const Server server("Directory=/data\n");
  EXPECT_EQ(runFromC(&library(), 0, nullptr), 0) << "line of c_caller.c";
}

}  // namespace
}  // namespace standin_tests
