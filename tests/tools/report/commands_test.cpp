// The built program, as its users run it.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "report_text.h"
#include "support/folders.h"
#include "support/process.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

class Commands : public testing::Test {
 protected:
  void SetUp() override {
    before_ = fs::current_path();
    fs::current_path(folder_.path());
    const std::string end = "@Done Testing Get VRX events.\n";
    const std::string start = "@STARTING LOG\r\n@SYSTEM ENVIRONMENT:\n";
    test::writeFile("report", test::reportOf(start + "\xe9\n" + end));
    test::writeFile(
        "failing",
        test::reportOf(start + "@Could not count users: x\a\xc3\xa9\x80\x81\xc2\x9f\n" + end));
    test::writeFile("-later", test::reportOf("@a\n"));
    test::writeFile("text", "no report on text-1\n");
    fs::create_directory("empty");
    fs::create_directory("logs");
    fs::copy_file("failing", "logs/b-DIAGNOSTIC-.log");
    fs::copy_file("report", "logs/C-DIAGNOSTIC-1.log");
    fs::copy_file("text", "logs/DIAGNOSTIC.log");
    fs::copy_file("text", "logs/a-DIAGNOSTIC-.txt");
    fs::create_directory("logs/a-DIAGNOSTIC-.log");
  }
  void TearDown() override { fs::current_path(before_); }

  // Its status and what it says on both streams, with words and settings for the shell.
  static std::string runByShell(const std::string& words, const std::string& settings = "") {
    const test::ProcessResult result = test::runProcess(
        {"sh", "-c", settings + "exec \"$0\" 2>&1 " + words, test::builtProgram("qbreport")},
        "output");
    return std::to_string(result.status) + " " + result.output;
  }

  // The same on a terminal, which begins lines with a CR.
  static std::string runOnTerminal(const std::string& words, const std::string& settings) {
    const std::string command = settings + "exec " + test::builtProgram("qbreport") + ' ' + words;
    const test::ProcessResult result =
        test::runProcess({"script", "-qec", command, "/dev/null"}, "output");
    return std::to_string(result.status) + " " + result.output;
  }

  static test::ProcessResult run(const std::string& words) {
    std::vector<std::string> command = {test::builtProgram("qbreport")};
    std::istringstream stream(words);
    for (std::string word; stream >> word;) command.push_back(word);
    return test::runProcess(command, "output");
  }

  static void expectTextOnTerminals() {
    const std::string settings = "stty cols 60; unset NO_COLOR; export TERM=xterm; ";
    const auto check = [&](const std::string& words, const std::string& more = "") {
      return runOnTerminal("check " + words, settings + more);
    };
    EXPECT_TRUE(check("failing").starts_with("1 \x1B[1;33mwarning\x1B[0m: The users"));
    EXPECT_TRUE(check("failing", "export NO_COLOR=1; ")
                    .starts_with("1 warning: The users whose mail is filtered could not be\r\n"));
    EXPECT_TRUE(check("failing", "TERM=dumb; ").starts_with("1 warning: The users"));
    EXPECT_TRUE(check("--plain failing").starts_with("1 users\tfiltered-users\t"));
    EXPECT_EQ(check("report"), "0 no findings\r\n");
    EXPECT_EQ(check("failing -o out"), "1 ");
  }

  static void expectReasonsOfFailures() {
    for (const auto& [where, fields] : test::rowsOf("tools/report/failures.txt", 2))
      EXPECT_EQ(runByShell(fields[0]), "2 qbreport: " + fields[1] + '\n') << where;
    fs::remove("pipe");
  }

  test::TemporaryFolder folder_;
  fs::path before_;
};

TEST_F(Commands, GiveTheStatusAndWriteNothingWhereTheyFail) {
  for (const auto& [where, fields] : test::rowsOf("tools/report/commands.txt", 3)) {
    const test::ProcessResult result = run(fields[2]);
    EXPECT_EQ(std::to_string(result.status), fields[0]) << where;
    EXPECT_EQ(result.output.substr(0, fields[1].size()), fields[1]) << where;
    EXPECT_TRUE(!fields[1].empty() || result.output.empty()) << where << result.output;
  }
  const std::string longText(10000, 'x');
  test::writeFile("text",
                  test::reportOf("@STARTING LOG\n@Could not count users: " + longText + "\n"));
  EXPECT_NE(run("check text").output.find(" " + longText + "\t"), std::string::npos);
  EXPECT_EQ(test::contentOf("out"), run("mask report").output);
  if (fs::path::preferred_separator == '/') {
    EXPECT_EQ(fs::status("out").permissions(), fs::status("report").permissions());
    EXPECT_EQ(fs::status("map").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    fs::permissions("out", fs::perms::owner_all);
    run("mask report -o out");
    EXPECT_EQ(fs::status("out").permissions(), fs::perms::owner_all);
    for (const std::string words : {"check failing", "json report", "diff report failing",
                                    "mask report", "explain", "--help"}) {
      for (const std::string stream : {" >/dev/full", " >&-", " <&- >&-"}) {
        EXPECT_EQ(runByShell(words + stream), "2 qbreport: standard output cannot be written\n")
            << words << stream;
      }
    }
    expectTextOnTerminals();
    expectReasonsOfFailures();
    EXPECT_TRUE(runByShell("check '\x1B'").starts_with("2 qbreport: \\x1B: "));
    EXPECT_TRUE(runByShell("mask report --map map <&- 2>&-").starts_with("0 15-11-2026"));
    EXPECT_EQ(runByShell("mask failing --map map >/dev/null", "ulimit -f 0; "), "2 ")
        << "a map that is not written, and words that are not either";
  }
  EXPECT_EQ(test::contentOf("map"), "{\"format\":1,\"values\":{\n\"text\":{\n\"\xc3\xa9\":1}}}\n");
  fs::remove("made");  // Windows notices before it is there
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 9) << "a file was left beside another";
}

// The map is an empty file at first, and has a second name.
TEST_F(Commands, KeepAllOfAMapThatSeveralRunsWriteAtOnce) {
  if (fs::path::preferred_separator != '/') return;  // one shell starts them all
  test::writeFile("map", "");
  fs::create_symlink("../map", "logs/link");
  fs::create_symlink("logs/link", "link");
  const std::vector<std::string> names = {"a", "b", "c", "d", "e", "f", "g", "h"};
  for (const std::string& name : names) test::writeFile(name, test::reportOf("@" + name + "\n"));
  runByShell("--version",
             "for name in a b c d; do \"$0\" mask --map map $name & done; "
             "for name in e f g h; do \"$0\" mask --map link $name & done; wait; ");
  for (const std::string& name : names)
    EXPECT_NE(test::contentOf("map").find('"' + name + '"'), std::string::npos) << name;
  EXPECT_TRUE(fs::is_symlink("link") && fs::is_symlink("logs/link"));
  EXPECT_FALSE(fs::exists("map.lock"));
}

}  // namespace
