// Files as only these systems have them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <utility>

#include "standin/server.h"

namespace standin_tests {
namespace {

TEST(File, ShortWriteFailsAndLeavesNothing) {
  const std::string before = header + noteLine(1);
  const Server server(before + R"({"note":2)");
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
  EXPECT_EQ(test::contentOf("a.nsf.torn"), "{\"note\":2\n");
  EXPECT_EQ(std::filesystem::status("a.nsf.torn").permissions(),
            std::filesystem::status("a.nsf").permissions());
  EXPECT_EQ(write(db, "text"), noError);
  std::ofstream("a.nsf", std::ios::app) << R"({"note":3)";
  EXPECT_EQ(write(db, "text"), noError);
  EXPECT_EQ(test::contentOf("a.nsf.torn"), "{\"note\":2\n{\"note\":3\n");
}

TEST(File, WhatIsNoFileIsNamedAndNotWaitedFor) {
  const Server server;
  EXPECT_EQ(mkfifo("pipe", 0600) + mknod("socket", S_IFSOCK, 0) + symlink("link", "link"), 0);
  for (const std::string path : {"pipe", "socket", "/dev/zero", "link"}) {
    const std::string words =
        path == "link" ? "lead around in a circle" : "leads to something that is not a file";
    EXPECT_TRUE(foundIn(path).ends_with(words)) << path;
    NotesTerm();
    EXPECT_TRUE(initialise("=" + path).ends_with(words)) << path;
    EXPECT_EQ(initialise(), noError);
  }
}

TEST(File, LockOfAnotherIsWaitedForOnce) {
  const Server server(header + noteLine(1), "LockWait=100");
  const DBHANDLE db = openDatabase();
  const int holder = open("a.nsf", O_RDWR);
  struct flock byte = {F_WRLCK, SEEK_SET, off_t{1} << 62, 1, 0};
  EXPECT_EQ(fcntl(holder, F_OFD_SETLK, &byte), 0);
  const std::string locked = "Another process holds the lock of the database";
  double first = 0;
  double shortest[2] = {1, 1};  // a busy machine makes some of each kind long
  for (int i = 0; i < 20; ++i) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(i % 2 == 0 ? foundIn() : write(db, "x"), locked);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    if (i == 0) first = took.count();
    shortest[i % 2] = std::min(shortest[i % 2], took.count());
  }
  EXPECT_GE(first, 0.1);
  EXPECT_LT(std::max(shortest[0], shortest[1]), 0.1);
  close(holder);
  EXPECT_EQ(foundIn(), "1");
}

}  // namespace
}  // namespace standin_tests
