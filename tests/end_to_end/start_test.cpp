#include <gtest/gtest.h>

#include "support/process.h"
#include "support/world.h"

namespace {

using test::joined;
using test::Lines;
using test::World;

const std::string banner = "Quellbright Domino Module Diagnostics version 0.0.1.6b\n";

TEST(Start, UsageFollowsTheBannerWhenThereIsNoPath) {
  const test::TemporaryFolder folder;
  const test::ProcessResult result =
      test::runProcess({BINARY_FOLDER "/" PROGRAM_NAME}, folder.text() + "/console");
  EXPECT_EQ(result.status, 0);
  std::string output = result.output;
  std::erase(output, '\r');
  const std::string program = output.substr(0, output.find(" <path"));
  EXPECT_EQ(program.substr(0, banner.size() + 8), banner + "Syntax: ");
  EXPECT_NE(program.find("qbdiagnostics"), std::string::npos);
  EXPECT_EQ(output.substr(program.size()),
            " <path to domino> [stdout]\n"
            "The tool will create a diagnostic-file named VRX-DIAGNOSTIC<date>.log placed in the "
            "quellbright-folder in the data-directory.\n"
            "If the optional parameter \"stdout\" is given after the <path to domino>, output will "
            "also be written to stdout.\n");
}

TEST(Start, EachFailureHasItsLineAndLeavesNothingBehind) {
  const std::filesystem::path standIn = BINARY_FOLDER "/standin/nnotes.dll";
  const struct {
    std::filesystem::path library;
    const char* notesIni;
    const char* expected;
  } rows[] = {
      {"", "[Notes]\n", "Unable to find nnotes.dll.\n"},
      {SOURCE_FOLDER "/README.md", "[Notes]\n", "Unable to load nnotes.dll.\n"},
      {BINARY_FOLDER "/incomplete_library/incomplete.dll", "[Notes]\n",
       "Unable to load nnotes.dll.\n"},
      {standIn, "[Notes]\nKitType=2\n",
       "Could not initialize notes: The file notes.ini has no variable Directory.\n"},
  };
  for (const auto& row : rows) {
    const World world("sample", row.library.empty() ? standIn : row.library);
    if (row.library.empty()) std::filesystem::remove(world.program() / "nnotes.dll");
    test::writeFile(world.program() / "notes.ini", row.notesIni);
    const test::Shown shown = world.run({"stdout"});
    EXPECT_EQ(shown.status, "0") << row.expected;
    EXPECT_EQ(joined(shown.console), banner + row.expected);
    EXPECT_FALSE(std::filesystem::exists(world.data() / "Quellbright")) << row.expected;
  }
}

}  // namespace
