#include <gtest/gtest.h>

#include <cstdlib>

#include "support/world.h"

namespace {

// The report would get the number of a stream that is closed, and all that is written to the
// stream.
TEST(ClosedStreams, ConsoleAndLastWordsDoNotLandInTheReport) {
  for (const char* closed : {" >&-", " >&- 2>&-", " <&- >&- 2>&-"}) {
    const test::World world("sample");
    const std::string command = "'" BINARY_FOLDER "/" PROGRAM_NAME "' '";
    EXPECT_NE(std::system((command + world.root() + "/program' stdout" + closed).c_str()), 0)
        << "a finished run exits with 1";
    EXPECT_EQ(world.shownReport(world.reportBytes()), world.expected().report) << closed;
  }
}

}  // namespace
