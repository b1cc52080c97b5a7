// Failing calls of the sockets library, and what they are raised as.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "internet/tables.h"
#include "replay/internet/address.h"
#include "replay/internet/environment.h"
#include "replay/internet/transport.h"
#include "replay/text.h"
#include "support/rows.h"

namespace {

using replay::internet::environment;
using replay::internet::address::ip4;
using test::failureOf;
namespace tcp = replay::internet::transport::tcp;

// The number that calls fail with, and the socket that opening one gives.
int error = 0;
platform::SocketHandle handle = 7;
int stops = 0;

int fail() {
  platform::sockets.WSASetLastError(error);
  return -1;
}

platform::SystemLibrariesApi::Function failingLookup(void*, const char* name) {
  using Function = platform::SystemLibrariesApi::Function;
  const platform::GetNameInfo names = [](const void*, int, char*, std::uint32_t, char*,
                                         std::uint32_t, int) { return error; };
  const platform::GetAddrInfo addresses = [](const char*, const char*, const platform::addrinfo*,
                                             platform::addrinfo**) { return error; };
  return std::string(name) == "getnameinfo" ? reinterpret_cast<Function>(names)
                                            : reinterpret_cast<Function>(addresses);
}

void failEachCall() {
  platform::SocketsApi& api = platform::sockets;
  api.WSAStartup = [](std::uint16_t version, platform::SocketLibraryData*) {
    return version == 0x0101 ? error : 1;
  };
  api.WSACleanup = [] { return ++stops, fail(); };
  api.socket = [](int, int, int) { return fail(), handle; };
  api.connect = [](platform::SocketHandle, const void*, int) { return fail(); };
  api.recv = [](platform::SocketHandle, char*, int, int) { return fail(); };
  api.send = [](platform::SocketHandle, const char*, int, int) { return fail(); };
  api.closesocket = [](platform::SocketHandle) { return fail(); };
  api.setsockopt = [](platform::SocketHandle, int, int, const char*, int) { return fail(); };
  platform::systemLibraries.GetProcAddress = failingLookup;
}

struct Call {
  std::string name;
  std::string general;  // its general class, and how that names the call
  std::function<void()> make;
};

TEST(Failures, EachErrorOfEachCallIsRaisedAsItsClass) {
  const test::Tables tables;
  failEachCall();
  tcp::raw stream;
  stream.open(ip4());
  const Call calls[] = {
      {"WSAStartup", "environment[WSAStartup()", [] { const environment started; }},
      {"WSACleanup", "environment[WSACleanup()",
       [] {
         const int wanted = std::exchange(error, 0);
         environment started;
         error = wanted;
         started.stop();
       }},
      {"GetAddrInfoA", "address[GetAddrInfoA()", [] { ip4("host", 80); }},
      {"GetNameInfoA", "address[GetAddrInfoA()", [] { std::ignore = ip4().name(4); }},
      {"socket", "transport[socket()",
       [] {
         handle = platform::noSocket;
         tcp::raw().open(ip4());
       }},
      {"connect", "transport[connect()", [&] { stream.connect(ip4()); }},
      {"recv", "transport[recv()", [&] { stream.fill(); }},
      {"send", "transport[send()", [&] { stream.send_all("x", 1); }},
      {"setsockopt", "transport[setsockopt()", [&] { stream.set_receive_timeout(); }},
      {"closesocket", "transport[closesocket()",
       [] {
         tcp::raw closing;
         closing.open(ip4());
         closing.close();
       }},
  };
  std::set<int> errors;
  std::map<std::pair<int, std::string>, std::string> classes;
  for (const test::TextRow& row : test::rowsOf("internet/failures.txt", 3)) {
    errors.insert(std::stoi(row.fields[0]));
    for (const std::string& call : replay::split(row.fields[1], ",")) {
      classes[{std::stoi(row.fields[0]), call}] = row.fields[2];
    }
  }
  for (const int number : errors) {
    for (const Call& call : calls) {
      error = number;
      handle = 7;
      const auto named = classes.find({number, call.name});
      std::string expected =
          "internet." + call.general + replay::format(" returned status 0x%.8x]", unsigned(number));
      if (named != classes.end()) expected = named->second;
      if (!expected.empty() && expected.back() != ']') expected += "[" + call.name + "() failed]";
      EXPECT_EQ(failureOf(call.make), expected) << number << " " << call.name;
    }
  }
}

TEST(Failures, StartThatFailedIsNotStoppedAndCloseThatFailedIsNotRepeated) {
  const test::Tables tables;
  failEachCall();
  error = 10091;
  stops = 0;
  EXPECT_NE(failureOf([] { const environment started; }), "");
  EXPECT_EQ(stops, 0);
  error = 0;
  { const environment started; }
  EXPECT_EQ(stops, 1);
  platform::sockets.WSACleanup = [] { return 0; };
  platform::sockets.WSAGetLastError = [] { return 10050; };
  EXPECT_EQ(failureOf([] { environment().stop(); }), "") << "the last error of another call";

  tcp::raw stream;
  stream.open(ip4());
  EXPECT_NE(failureOf([&] { stream.close(); }), "");
  EXPECT_EQ(failureOf([&] { stream.close(); }), "");
}

}  // namespace
