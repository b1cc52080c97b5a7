// Streams and files as a run may find them, or may find in their place.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/console.h"
#include "platform/files.h"
#include "platform/process.h"
#include "support/folders.h"
#include "support/world.h"

namespace {

// The report would get the number of a stream that is closed, and all that is written to the
// stream. A file that may not grow further loses its lines, and ends no run.
TEST(Streams, ClosedOrFullOnesHarmNothingElse) {
  for (const std::string how : {">&-", ">&- 2>&-", "<&- >&- 2>&-", "> /dev/null"}) {
    const test::World world("sample");
    const bool isFull = how == "> /dev/null";
    const std::string command = "'" + test::builtProgram("qbdiagnostics") + "' '" + world.root() +
                                "/program' stdout " + how + "; test $? = 1";
    EXPECT_EQ(std::system(((isFull ? "ulimit -f 4; " : "") + command).c_str()), 0) << how;
    const std::size_t size = world.reportBytes().size();
    EXPECT_EQ(size == 2048 || size == 4096, isFull) << "blocks of a shell: 512 or 1024 bytes";
    if (isFull) continue;
    EXPECT_EQ(world.shownReport(world.reportBytes()), world.expected().report) << how;
  }
}

// What a reader is sent of a line through a pipe whose writer does not wait by itself.
std::string arrived(const std::string& line, const std::string& reader) {
  const test::TemporaryFolder folder;
  FILE* const pipe = popen((reader + " >'" + folder.text() + "/received'").c_str(), "w");
  fcntl(fileno(pipe), F_SETFL, O_NONBLOCK);
  std::fflush(stdout);
  const int before = dup(STDOUT_FILENO);
  dup2(fileno(pipe), STDOUT_FILENO);
  platform::printNarrowLine(std::string_view(line));
  dup2(before, STDOUT_FILENO);
  close(before);
  pclose(pipe);
  return test::contentOf(folder.path() / "received");
}

TEST(Streams, ReaderIsWaitedForUntilItHangsUp) {
  platform::prepareProcess();
  const std::string line(1 << 20, 'x');
  EXPECT_TRUE(arrived(line, "cat") == line + "\n");
  EXPECT_EQ(arrived(line, "head -c 1"), "x");
}

TEST(Files, PipeOrDeviceIsNoLibraryAndNoReport) {
  const test::World world("start_with_text_as_library");
  const std::filesystem::path library = world.program() / "nnotes.dll";
  for (const std::string make : {"mkfifo", "ln -s /dev/zero"}) {
    std::filesystem::remove(library);
    EXPECT_EQ(std::system((make + " '" + library.string() + "'").c_str()), 0);
    EXPECT_EQ(world.run(), world.expected());
    EXPECT_FALSE(platform::OutputFile().open(library.u16string()));
  }
}

}  // namespace
