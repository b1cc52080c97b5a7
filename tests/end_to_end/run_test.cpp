#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

#include "end_to_end/server_world.h"

namespace {

using test::contentOf;
using test::masked;
using test::ProcessResult;
using test::ServerWorld;
using test::TemporaryFolder;

const std::string banner = "Quellbright Domino Module Diagnostics version 0.0.1.6b\n";
constexpr int completed = 1;
constexpr int notStarted = 0;

// What a console shows, whatever the target's line end is.
std::string shown(std::string output, const std::string& root = "\x01") {
  std::erase(output, '\r');
  return masked(output, root);
}

std::string expectedFile(const std::string& name) {
  return contentOf(std::string(SOURCE_FOLDER "/tests/end_to_end/expected/") + name);
}

std::string onlyFileContent(const std::filesystem::path& folder, const std::string& prefix) {
  return masked(contentOf(test::onlyFile(folder, prefix)), "\x01");
}

// Every database of a server, by its path.
std::map<std::filesystem::path, std::string> databases(const ServerWorld& server) {
  std::map<std::filesystem::path, std::string> result;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(server.data())) {
    const std::filesystem::path& path = entry.path();
    if (path.extension() == ".nsf") result[path.lexically_normal()] = contentOf(path);
  }
  return result;
}

TEST(Run, SampleServerGivesTheExpectedReportAndConsole) {
  const struct {
    std::vector<std::string> arguments;
    const char* console;
  } rows[] = {
      {{"stdout"}, "sample_console_stdout.txt"},
      {{}, "sample_console.txt"},
      {{"STDOUT"}, "sample_console.txt"},
      {{"x", "stdout"}, "sample_console.txt"},
  };
  for (const auto& [arguments, console] : rows) {
    const ServerWorld server;
    const ProcessResult result = server.run(arguments);
    EXPECT_EQ(result.status, completed);
    EXPECT_EQ(shown(result.output, server.root()), expectedFile(console));
    EXPECT_EQ(masked(server.report(), server.root()), expectedFile("sample_report.txt"));
    EXPECT_EQ(onlyFileContent(server.data() / "Quellbright", "Quellbright-TESTLOGFILE-"),
              "<time>\t(<numbers>)\tSTARTING LOG\n"
              "<time>\t(<numbers>)\tThis is a sample output from the diagnistic tool.\n");
  }
}

TEST(Run, AddsThreeEventsToTheDatabaseAndChangesNothingElse) {
  const ServerWorld server;
  std::map<std::filesystem::path, std::string> before = databases(server);
  server.run();
  std::map<std::filesystem::path, std::string> after = databases(server);
  std::string& changed = after[server.data() / "QBConf.nsf"];
  const std::string& original = before[server.data() / "QBConf.nsf"];
  EXPECT_EQ(std::count(changed.begin(), changed.end(), '\n'),
            std::count(original.begin(), original.end(), '\n') + 3);
  changed.resize(original.size());
  EXPECT_EQ(after, before);
  EXPECT_GT(after.size(), 50U);
}

TEST(Start, UsageFollowsTheBannerWhenThereIsNoPath) {
  const TemporaryFolder folder;
  const ProcessResult result = test::runProgram({}, folder);
  EXPECT_EQ(result.status, notStarted);
  const std::string output = shown(result.output);
  const std::string program = output.substr(0, output.find(" <path"));
  EXPECT_EQ(output.substr(0, banner.size() + 8), banner + "Syntax: ");
  EXPECT_NE(program.find("qbdiagnostics"), std::string::npos);
  EXPECT_EQ(output.substr(program.size()),
            " <path to domino> [stdout]\n"
            "The tool will create a diagnostic-file named VRX-DIAGNOSTIC<date>.log placed in the "
            "quellbright-folder in the data-directory.\n"
            "If the optional parameter \"stdout\" is given after the <path to domino>, output will "
            "also be written to stdout.\n");
}

TEST(Start, EachFailureHasItsLineAndLeavesNothingBehind) {
  const std::string incomplete = contentOf(BINARY_FOLDER "/incomplete_library/incomplete.dll");
  const std::string standIn = contentOf(BINARY_FOLDER "/standin/nnotes.dll");
  const struct {
    std::string library;
    std::string notesIni;
    std::string expected;
  } rows[] = {
      {"", "[Notes]\n", "Unable to find nnotes.dll.\n"},
      {"not a library", "[Notes]\n", "Unable to load nnotes.dll.\n"},
      {incomplete, "[Notes]\n", "Unable to load nnotes.dll.\n"},
      {standIn, "[Notes]\nKitType=2\n",
       "Could not initialize notes: The file notes.ini has no variable Directory.\n"},
  };
  for (const auto& row : rows) {
    const ServerWorld server;
    std::filesystem::remove(server.program() / "nnotes.dll");
    if (!row.library.empty()) test::writeFile(server.program() / "nnotes.dll", row.library);
    test::writeFile(server.program() / "notes.ini", row.notesIni);
    const ProcessResult result = server.run({"stdout"});
    EXPECT_EQ(result.status, notStarted) << row.expected;
    EXPECT_EQ(shown(result.output), banner + row.expected);
    EXPECT_FALSE(std::filesystem::exists(server.data() / "Quellbright")) << row.expected;
  }
  const TemporaryFolder folder;
  EXPECT_EQ(shown(test::runProgram({folder.text() + "/missing"}, folder).output),
            banner + "Unable to find nnotes.dll.\n");
}

TEST(Start, AllArgumentsReachTheNotesLibrary) {
  const ServerWorld server;
  std::filesystem::rename(server.program() / "notes.ini", server.data() / "other.ini");
  const ProcessResult result = server.run({"stdout", "=" + server.root() + "/data/other.ini"});
  EXPECT_EQ(result.status, completed);
  EXPECT_EQ(masked(server.report(), server.root()), expectedFile("sample_report.txt"));
}

TEST(Run, ValuesOfNotesIniPassThroughUtf7AndAreCutAt255Bytes) {
  const ServerWorld server;
  server.setNotesIni("ServerTasks=1+1=2 a+-b +AOk-\nEXTMGR_ADDINS=" + std::string(300, 'x') +
                     ",qbsmtp.dll\nNSF_HOOKS=caf\xe9,qbrouter\nServerName=\n");
  const ProcessResult result = server.run({"stdout"});
  EXPECT_EQ(result.status, completed);
  const std::string report = masked(server.report(), server.root());
  EXPECT_NE(report.find("EXTMGR_ADDINS=" + std::string(255, 'x') + "\n"), std::string::npos);
  EXPECT_NE(report.find(" a+b \xe9\n"), std::string::npos) << report;
  EXPECT_NE(report.find("NSF_HOOKS=caf\xe9,qbrouter\n"), std::string::npos);
  EXPECT_NE(report.find("qbsmtp.dll was not found in EXTMGR_ADDINS."), std::string::npos);
  EXPECT_NE(result.output.find("NSF_HOOKS=caf\xc3\xa9,qbrouter"), std::string::npos)
      << "the console shows wide text as UTF-8";
}

TEST(Run, CharacterAbove255EndsTheReportButNotTheRun) {
  const ServerWorld server;
  server.setNotesIni("ServerTasks=+IKw-\n");
  const ProcessResult result = server.run({"stdout"});
  EXPECT_EQ(result.status, completed);
  const std::string report = masked(server.report(), server.root());
  EXPECT_EQ(report.substr(report.find("SYSTEM")), "SYSTEM ENVIRONMENT:\n\t\t\t\t\tServerTasks=");
  EXPECT_NE(result.output.find("ServerTasks=\xe2\x82\xac"), std::string::npos);
  EXPECT_NE(result.output.find("FILE CHECK:"), std::string::npos);
}

TEST(Run, ReportThatCannotBeOpenedIsTriedAgainForEachLine) {
  const ServerWorld server;
  test::writeFile(server.data() / "Quellbright", "in the way");
  const ProcessResult result = server.run();
  EXPECT_EQ(result.status, completed);
  const std::string path = "<server>/data//Quellbright\\Quellbright-DIAGNOSTIC-<time>.log\n";
  const std::string failure = "<time>   VRX-DIAGNOSTIC: Could not open file: " + path;
  std::string expected = banner + failure + "Output from diagnostic is written to: " + path;
  // What the console has besides, in front of the line of the report that follows it.
  const std::pair<std::string, std::string> besides[] = {
      {"ACCESS TO QUELLBRIGHTDIRECTORY",
       "<time>   Quellbright[test]: Could not open file: "
       "<server>/data//Quellbright\\Quellbright-TESTLOGFILE-<time>.log\n"},
      {"Creating quellbright test events.",
       "Parsed simulated path for \"names.nsf\":Complete path (names.nsf), Port (), Server (), "
       "File (names.nsf)\n"},
  };
  const std::string report = expectedFile("sample_report.txt");
  const std::string prefix = "\n<time>\t(<numbers>)\t";
  for (std::size_t line = report.find(prefix); line != std::string::npos;
       line = report.find(prefix, line + 1)) {
    for (const auto& [text, console] : besides) {
      if (report.compare(line + prefix.size(), text.size(), text) == 0) expected += console;
    }
    expected += failure;
  }
  EXPECT_EQ(shown(result.output, server.root()), expected);
  EXPECT_EQ(contentOf(server.data() / "Quellbright"), "in the way");
}

// The file at the root of the drive that `text` names with this beginning; an empty path if it
// names none.
std::filesystem::path fileAtRoot(const std::string& text, const std::string& beginning) {
  const std::size_t begin = text.find("\\" + beginning);
  if (begin == std::string::npos) return {};
  const std::size_t end = text.find(".log", begin) + 4;
  return std::filesystem::temp_directory_path().root_path() /
         text.substr(begin + 1, end - begin - 1);
}

TEST(Run, ReportOfAServerWithoutDataDirectoryGoesToTheRootOfTheDrive) {
  const ServerWorld server;
  std::filesystem::remove_all(server.data());
  const ProcessResult result = server.run();
  EXPECT_EQ(result.status, completed);
  const std::filesystem::path file = fileAtRoot(result.output, "Quellbright-DIAGNOSTIC-");
  ASSERT_FALSE(file.empty()) << result.output;
  // Not everybody may write there.
  const bool opened =
      result.output.find("Could not open file: \\Quellbright-DIAGNOSTIC-") == std::string::npos;
  const std::string report = contentOf(file);
  EXPECT_EQ(report.find("STARTING LOG") != std::string::npos, opened);
  EXPECT_EQ(std::filesystem::remove(file), opened);
  // The file of the access test lies beside it.
  EXPECT_EQ(std::filesystem::remove(fileAtRoot(report, "Quellbright-TESTLOGFILE-")), opened);
}

// The program directory is one shift sequence of UTF-7 that holds no character.
TEST(Run, UnexpectedFailureEndsTheProcessAndKeepsTheLinesWrittenSoFar) {
  const ServerWorld server;
  server.setNotesIni("");
  test::writeFile(server.program() / "notes.ini",
                  "NotesProgram=+A\nDirectory=" + server.root() + "/data\n");
  const ProcessResult result = server.run();
  EXPECT_NE(result.status, completed);
  EXPECT_NE(result.status, notStarted);
  const std::string report = masked(server.report(), server.root());
  EXPECT_TRUE(report.ends_with("nqbschd was not found in ServerTasks.\n")) << report;
}

}  // namespace
