#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "standin/server.h"

namespace standin_tests {
namespace {

TEST(ShortWrite, LeavesNothingInTheFileAndGoesWell) {
  const std::string before = header + noteLine(1);
  const Server server(before + "torn");
  const DBHANDLE db = openDatabase();
  rlimit unlimited{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &unlimited), 0);
  rlimit limited = unlimited;
  limited.rlim_cur = before.size() + 10;
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
  const std::string words = write(db, "text");
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &unlimited), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(words, "The system does not let the library write to the database");
  EXPECT_EQ(test::contentOf("a.nsf"), before);
  EXPECT_EQ(write(db, "text"), noError);
  EXPECT_EQ(foundIn(), "1 2");
}

}  // namespace
}  // namespace standin_tests
