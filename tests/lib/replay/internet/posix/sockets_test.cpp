// The adapters over the system's own sockets, where they differ from what they stand for.
#include "platform/sockets.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <functional>
#include <tuple>

#include "lib/replay/internet/tables.h"
#include "replay/internet/address.h"
#include "replay/internet/detail/byte_order.h"
#include "replay/internet/environment.h"

namespace {

using platform::sockets;
using replay::internet::environment;
using replay::internet::network_order;
using replay::internet::address::ip4;
using test::failureOf;

template <typename Function>
Function lookup(const char* name) {
  return reinterpret_cast<Function>(platform::systemLibraries.GetProcAddress(nullptr, name));
}

TEST(PosixSockets, EachCallOutsideAnEnvironmentFails) {
  platform::SocketHandle socket = platform::noSocket;
  {
    const environment outer;
    { const environment inner; }
    socket = sockets.socket(2, 1, 0);
    EXPECT_NE(socket, platform::noSocket) << "the inner one stopped what the outer one started";
  }
  char bytes[4] = {};
  const std::function<bool()> calls[] = {
      [&] { return sockets.socket(2, 1, 0) == platform::noSocket; },
      [&] { return sockets.connect(socket, ip4().data(), 16) == -1; },
      [&] { return sockets.send(socket, bytes, 1, 0) == -1; },
      [&] { return sockets.recv(socket, bytes, 1, 0) == -1; },
      [&] { return sockets.setsockopt(socket, 65535, 4102, bytes, 4) == -1; },
      [&] { return sockets.closesocket(socket) == -1; },
      [&] { return sockets.WSACleanup() == -1; },
      [&] { return sockets.gethostbyname("127.0.0.1") == nullptr; },
      [&] { return sockets.gethostbyaddr(bytes, 4, 2) == nullptr; },
      [&] { return sockets.getservbyname("http", "tcp") == nullptr; },
      [&] { return sockets.getservbyport(80, "tcp") == nullptr; },
  };
  for (const auto& fails : calls) {
    sockets.WSASetLastError(0);
    EXPECT_TRUE(fails()) << &fails - calls;
    EXPECT_EQ(sockets.WSAGetLastError(), 10093) << &fails - calls;
  }
  const char* const notReady = "internet.environment.subsystem_not_ready[";
  EXPECT_TRUE(failureOf([] { ip4("127.0.0.1", 80); }).starts_with(notReady));
  EXPECT_TRUE(failureOf([] { std::ignore = ip4().name(2); }).starts_with(notReady));
  const environment started;
  EXPECT_EQ(sockets.closesocket(socket), -1) << "the refused call did not close the socket";
  EXPECT_EQ(sockets.WSAGetLastError(), 10038);
}

TEST(PosixSockets, ConnectionCarriesBytesAndEachRefusalHasItsNumber) {
  const environment started;
  const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  platform::sockaddr_in server{2, 0, network_order(0x7F000001U), {}};
  auto* const record = reinterpret_cast<::sockaddr*>(&server);
  socklen_t length = sizeof server;
  ASSERT_EQ(::bind(listener, record, length) + ::getsockname(listener, record, &length), 0);
  const platform::SocketHandle socket = sockets.socket(2, 1, 0);
  char value[4] = {};
  const auto refusal = [](bool isRefused) { return isRefused ? sockets.WSAGetLastError() : 0; };
  EXPECT_EQ(refusal(sockets.socket(23, 1, 0) == platform::noSocket), 10047);
  EXPECT_EQ(refusal(sockets.socket(2, 1, 17) == platform::noSocket), 10043);
  EXPECT_EQ(refusal(sockets.setsockopt(socket, 65535, 4101, value, 4) == -1), 10042);
  EXPECT_EQ(refusal(sockets.setsockopt(socket, 6, 4102, value, 4) == -1), 10042);
  EXPECT_EQ(refusal(sockets.setsockopt(socket, 65535, 4102, value, 3) == -1), 10014);
  EXPECT_EQ(refusal(sockets.send(socket, value, 1, 0) == -1), 10054) << "and no signal";
  EXPECT_EQ(refusal(sockets.recv(socket, value, 1, 0) == -1), 10057);
  EXPECT_EQ(refusal(sockets.connect(socket, &server, 16) == -1), 10061);
  ::listen(listener, 1);
  ASSERT_EQ(sockets.connect(socket, &server, 16), 0);
  const int served = ::accept(listener, nullptr, nullptr);
  const std::uint32_t milliseconds = 2345;
  std::memcpy(value, &milliseconds, 4);
  EXPECT_EQ(sockets.setsockopt(socket, 65535, 4102, value, 4), 0);
  timeval timeout{};
  length = sizeof timeout;
  ::getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_RCVTIMEO, &timeout, &length);
  EXPECT_EQ(timeout.tv_sec, 2);
  EXPECT_NEAR(static_cast<double>(timeout.tv_usec), 345'000, 10'000) << "in ticks of the system";
  EXPECT_EQ(refusal(sockets.recv(socket, value, 4, MSG_DONTWAIT) == -1), 10060);
  EXPECT_EQ(sockets.send(socket, "abc", 3, 0), 3);
  EXPECT_EQ(::recv(served, value, 4, 0), 3);
  ::send(served, value, 2, 0);
  EXPECT_EQ(sockets.recv(socket, value, 4, 0), 2);
  const ::linger reset{1, 0};
  ::setsockopt(served, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
  ::close(served);
  EXPECT_EQ(refusal(sockets.recv(socket, value, 4, 0) == -1), 10054) << "a reset is no close";
  EXPECT_EQ(sockets.closesocket(socket), 0);
  EXPECT_EQ(refusal(sockets.closesocket(socket) == -1), 10038);
  int pair[2] = {};
  ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, pair), 0);
  ::close(pair[1]);
  EXPECT_EQ(sockets.recv(static_cast<platform::SocketHandle>(pair[0]), value, 4, 0), 0)
      << "and a close is no failure";
  ::close(pair[0]);
  ::close(listener);
}

TEST(PosixSockets, ServicesAndHostsAreFoundByNameAndByNumber) {
  const environment started;
  const platform::servent* service = sockets.getservbyname("http", "tcp");
  ASSERT_NE(service, nullptr) << "the package netbase is missing";
  EXPECT_EQ(std::string(service->s_name) + "/" + service->s_proto, "http/tcp");
  EXPECT_EQ(network_order(static_cast<std::uint16_t>(service->s_port)), 80);
  service = sockets.getservbyport(network_order(std::uint16_t{514}), "udp");
  EXPECT_STREQ(service->s_name, "syslog") << "and not that of TCP";
  EXPECT_EQ(sockets.getservbyname("http", "none"), nullptr);
  EXPECT_EQ(sockets.WSAGetLastError(), 11004);
  EXPECT_EQ(sockets.gethostbyname("no address"), nullptr);
  EXPECT_EQ(sockets.WSAGetLastError(), 11001);

  const auto addresses = lookup<platform::GetAddrInfo>("getaddrinfo");
  const auto names = lookup<platform::GetNameInfo>("getnameinfo");
  const auto release = lookup<platform::FreeAddrInfo>("freeaddrinfo");
  platform::addrinfo hints{2 | 4, 2, 2, 0, 0, nullptr, nullptr, nullptr};
  platform::addrinfo* list = nullptr;
  ASSERT_EQ(addresses("127.0.0.1", "domain", &hints, &list), 0);
  EXPECT_EQ(list->ai_next, nullptr) << "of one family and type";
  EXPECT_STREQ(list->ai_canonname, "127.0.0.1");
  char host[64] = "";
  char name[64] = "";
  EXPECT_EQ(names(list->ai_addr, 16, host, 64, name, 64, 2), 0);
  EXPECT_EQ(std::string(host) + ":" + name, "127.0.0.1:domain");
  EXPECT_EQ(names(list->ai_addr, 16, host, 64, name, 64, 2 | 8), 0);
  EXPECT_STREQ(name, "53");
  EXPECT_EQ(names(list->ai_addr, 16, host, 64, name, 2, 2), 10014);
  release(list);
  hints.ai_family = 99;
  EXPECT_EQ(addresses("127.0.0.1", nullptr, &hints, &list), 10047);
  hints.ai_family = 23;
  ASSERT_EQ(addresses("::1", nullptr, &hints, &list), 0);
  EXPECT_EQ(list->ai_family, 23);
  EXPECT_EQ(list->ai_addr->sin_family, 23);
  release(list);
  hints.ai_socktype = 9;
  EXPECT_EQ(addresses("127.0.0.1", nullptr, &hints, &list), 10044);
  EXPECT_EQ(addresses("no address", "80", nullptr, &list), 11001);
  EXPECT_EQ(list, nullptr);
}

}  // namespace
