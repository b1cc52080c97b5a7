#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <utility>

#include "standin/server.h"

namespace standin_tests {
namespace {

TEST(File, ShortWriteFailsAndLeavesNothing) {
  const std::string before = header + noteLine(1);
  const Server server(before + "torn");
  const DBHANDLE db = openDatabase();
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlim_t usual = std::exchange(limit.rlim_cur, before.size() + 10);
  std::signal(SIGXFSZ, SIG_IGN);
  EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  const std::string words = write(db, "text");
  limit.rlim_cur = usual;
  EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  EXPECT_EQ(words, "The system does not let the library write to the database");
  EXPECT_EQ(test::contentOf("a.nsf"), before);
  EXPECT_EQ(write(db, "text"), noError);
}

}  // namespace
}  // namespace standin_tests
