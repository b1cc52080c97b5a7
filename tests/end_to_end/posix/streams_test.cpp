// Streams and files as a run may find them, or may find in their place.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <future>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/process.h"
#include "support/world.h"

namespace {

int runIn(const test::World& world, const std::string& before, const std::string& behind) {
  const std::string program = "exec '" BINARY_FOLDER "/" PROGRAM_NAME "' '";
  const std::string line = before + program + world.root() + "/program' stdout " + behind;
  const int status = std::system(line.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// The report would get the number of a stream that is closed, and all that is written to the
// stream.
TEST(ClosedStreams, ConsoleAndLastWordsDoNotLandInTheReport) {
  for (const char* closed : {">&-", ">&- 2>&-", "<&- >&- 2>&-"}) {
    const test::World world("sample");
    EXPECT_EQ(runIn(world, "", closed), 1);
    EXPECT_EQ(world.shownReport(world.reportBytes()), world.expected().report) << closed;
  }
}

TEST(FullStreams, FileThatMayNotGrowLosesLinesAndTheRunGoesOn) {
  const test::World world("sample");
  EXPECT_EQ(runIn(world, "ulimit -f 4; ", ">/dev/null"), 1);
  const std::size_t written = world.reportBytes().size();
  EXPECT_TRUE(written == 2048 || written == 4096) << "blocks of a shell have 512 or 1024 bytes";
}

// What a line arrives as in a pipe whose writer does not wait by itself, up to its end or, where
// the reader hangs up, to its first part.
std::string arrived(const std::string& text, bool hangsUp) {
  int ends[2] = {};
  EXPECT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
  std::fflush(stdout);
  const int before = dup(STDOUT_FILENO);
  dup2(ends[1], STDOUT_FILENO);
  close(ends[1]);
  fcntl(ends[0], F_SETFL, 0);
  const auto printed = std::async(std::launch::async, [&text, before] {
    platform::printNarrowLine(std::string_view(text));
    dup2(before, STDOUT_FILENO);
    close(before);
  });
  std::string received;
  std::string part(4096, ' ');
  for (ssize_t count = 1; count > 0 && !(hangsUp && !received.empty());) {
    count = read(ends[0], part.data(), part.size());
    received += part.substr(0, static_cast<std::size_t>(count));
  }
  close(ends[0]);
  printed.wait();
  return received;
}

TEST(FullStreams, PipeThatDoesNotWaitIsWaitedForUntilItHangsUp) {
  platform::prepareProcess();
  const std::string text(1 << 20, 'x');
  EXPECT_TRUE(arrived(text, false) == text + "\n");
  EXPECT_FALSE(arrived(text, true).empty());
}

TEST(FilesInTheWay, PipeOrDeviceIsNoLibraryAndNoReport) {
  const test::World world("start_with_text_as_library");
  const std::filesystem::path library = world.program() / "nnotes.dll";
  for (const bool isPipe : {true, false}) {
    std::filesystem::remove(library);
    EXPECT_EQ(isPipe ? mkfifo(library.c_str(), 0600) : symlink("/dev/zero", library.c_str()), 0);
    EXPECT_EQ(world.run(), world.expected());
    EXPECT_FALSE(platform::OutputFile().open(library.u16string()));
  }
}

}  // namespace
