#include "replay/internet/environment.h"

#include <gtest/gtest.h>

#include "internet/tables.h"

namespace {

using replay::internet::environment;
using test::failureOf;

int status = 0;
int starts = 0;
int stops = 0;

class Environment : public testing::Test {
 protected:
  Environment() {
    status = starts = stops = 0;
    platform::sockets.WSAStartup = [](std::uint16_t version, platform::SocketLibraryData*) {
      ++starts;
      return version == 0x0101 ? status : 1;
    };
    platform::sockets.WSACleanup = [] {
      ++stops;
      return status == 0 ? 0 : -1;
    };
    platform::sockets.WSAGetLastError = [] { return status; };
  }

  test::Tables tables_;
};

TEST_F(Environment, EachStatusOfTheStartHasItsClass) {
  const struct {
    int status;
    const char* failure;
  } rows[] = {
      {0, ""},
      {10091, "internet.environment.subsystem_not_ready[WSAStartup() failed]"},
      {10092, "internet.environment.version_not_supported[WSAStartup() failed]"},
      {10093, "internet.environment[WSAStartup() returned status 0x0000276d]"},
      {-1, "internet.environment[WSAStartup() returned status 0xffffffff]"},
  };
  for (const auto& row : rows) {
    status = row.status;
    stops = 0;
    EXPECT_EQ(failureOf([] { environment started; }), row.failure);
    EXPECT_EQ(stops, row.status == 0 ? 1 : 0) << "what has not started is not stopped";
  }
}

TEST_F(Environment, EachStatusOfTheStopHasItsClassAndNoneLeavesTheDestructor) {
  const struct {
    int status;
    const char* failure;
  } rows[] = {
      {0, ""},
      {10093, ""},
      {10050, "internet.environment.subsystem_failed[WSACleanup() failed]"},
      {10036, "internet.environment[WSACleanup() returned status 0x00002734]"},
  };
  for (const auto& row : rows) {
    status = 0;
    environment started;
    status = row.status;
    EXPECT_EQ(failureOf([&] { started.stop(); }), row.failure);
  }
  EXPECT_EQ(starts, 4);
  EXPECT_EQ(stops, 8) << "by the call and by the destructor";
}

TEST_F(Environment, LastErrorCountsForAFailedStopOnly) {
  environment started;
  platform::sockets.WSAGetLastError = [] { return 10050; };
  EXPECT_EQ(failureOf([&] { started.stop(); }), "");
}

TEST(SystemSockets, CallsOutsideAnEnvironmentFail) {
  const auto open = [] { return platform::sockets.socket(2, 1, 0); };
  {
    const environment outer;
    { const environment inner; }
    const platform::SocketHandle socket = open();
    EXPECT_NE(socket, platform::noSocket) << "the inner one stopped what the outer one started";
    EXPECT_EQ(platform::sockets.closesocket(socket), 0);
  }
  // Other libraries of a process may have started it for themselves.
  while (platform::sockets.WSACleanup() == 0) {
  }
  EXPECT_EQ(open(), platform::noSocket);
  EXPECT_EQ(platform::sockets.WSAGetLastError(), 10093);
  EXPECT_EQ(platform::sockets.gethostbyname("127.0.0.1"), nullptr);
  EXPECT_EQ(platform::sockets.WSAGetLastError(), 10093);
  EXPECT_EQ(platform::sockets.WSACleanup(), -1);
  EXPECT_EQ(platform::sockets.WSAGetLastError(), 10093);
}

}  // namespace
