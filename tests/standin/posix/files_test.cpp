// Files as only these systems have them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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
  EXPECT_EQ(write(db, "text"), noError);
}

TEST(File, WhatIsNoFileIsNamedAndNotWaitedFor) {
  const Server server;
  const std::string noFile = "leads to something that is not a file";
  const std::string circle = "lead around in a circle";
  sockaddr_un name{AF_UNIX, "socket"};
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&name), sizeof name), 0);
  EXPECT_EQ(mkfifo("fifo", 0600) + symlink("link", "link"), 0);
  for (const auto& [path, words] : {std::pair("fifo", noFile), std::pair("/dev/zero", noFile),
                                    std::pair("socket", noFile), std::pair("link", circle)}) {
    EXPECT_TRUE(foundIn(path).ends_with(words)) << path;
    NotesTerm();
    EXPECT_TRUE(initialise("=" + std::string(path)).ends_with(words)) << path;
    EXPECT_EQ(initialise(), noError);
  }
  NotesTerm();
  EXPECT_EQ(initialise("=" + std::string(300, 'x')),
            "The path of notes.ini is longer than the system takes");
  close(listener);
}

TEST(File, LockOfAnotherIsWaitedForOnce) {
  const Server server(header + noteLine(1), "LockWait=100");
  const DBHANDLE db = openDatabase();
  const std::string locked = "Another process holds the lock of the database";
  const int holder = open("a.nsf", O_RDWR);
  struct flock byte {};
  byte.l_type = F_WRLCK;
  byte.l_start = off_t{1} << 62;
  byte.l_len = 1;
  EXPECT_EQ(fcntl(holder, F_OFD_SETLK, &byte), 0);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(foundIn(), locked);
  const auto first = std::chrono::steady_clock::now();
  for (int i = 0; i < 20; ++i) EXPECT_EQ(i % 2 == 0 ? foundIn() : write(db, "x"), locked);
  EXPECT_GE(first - start, std::chrono::milliseconds(100));
  EXPECT_LT(std::chrono::steady_clock::now() - first, std::chrono::seconds(1)) << "waited again";
  close(holder);
  EXPECT_EQ(foundIn(), "1");
}

}  // namespace
}  // namespace standin_tests
