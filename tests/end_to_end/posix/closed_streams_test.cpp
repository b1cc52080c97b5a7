#include <gtest/gtest.h>

#include <cstdlib>

#include "end_to_end/server_world.h"

namespace {

// The report would get the number of a stream that is closed, and all that is written to the
// stream.
TEST(ClosedStreams, ConsoleAndLastWordsDoNotLandInTheReport) {
  const std::string whole =
      test::contentOf(SOURCE_FOLDER "/tests/end_to_end/expected/sample_report.txt");
  for (const char* closed : {" >&-", " >&- 2>&-", " <&- >&- 2>&-"}) {
    const test::ServerWorld server;
    const std::string command =
        std::string("'" BINARY_FOLDER "/" PROGRAM_NAME "' '") + server.root() + "/program' stdout";
    EXPECT_NE(std::system((command + closed).c_str()), 0) << "a finished run exits with 1";
    EXPECT_EQ(test::masked(server.report(), server.root()), whole) << closed;
  }
}

}  // namespace
