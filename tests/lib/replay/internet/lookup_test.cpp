// Addresses, the look-ups of hosts that they use, and the emulation of those.
#include <gtest/gtest.h>

#include <new>
#include <vector>

#include "lib/replay/internet/tables.h"
#include "replay/internet/address.h"
#include "replay/internet/detail/byte_order.h"
#include "replay/internet/detail/name_lookup_emulation.h"
#include "replay/internet/environment.h"
#include "replay/text.h"
#include "support/rows.h"

namespace {

// The thread's allocation of this number, counted from 1, finds no memory.
thread_local int failingAllocation = 0;

}  // namespace

// The emulation's lists are made of this form and nothing else in the tests is.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return --failingAllocation == 0 ? nullptr : ::operator new(size);
}

namespace {

namespace emulation = replay::internet::address::emulation;
using platform::addrinfo;
using platform::sockaddr_in;
using platform::sockets;
using platform::systemLibraries;
using replay::internet::environment;
using replay::internet::network_order;
using replay::internet::address::ip4;
using test::failureOf;
using test::TextRow;
using Function = platform::SystemLibrariesApi::Function;

std::vector<std::string> hosts;  // the answers in turn: "<name>=<number of addresses>" or an error
std::size_t hostCalls = 0;

platform::hostent* fakeHostByName(const char* node) {
  static std::uint32_t bytes[] = {network_order(0x0A000001U), network_order(0x0A000002U)};
  static char* addresses[] = {reinterpret_cast<char*>(bytes), reinterpret_cast<char*>(bytes + 1),
                              nullptr};
  static std::string name;
  static platform::hostent answer{nullptr, nullptr, 2, 4, nullptr};
  name = hosts[hostCalls++ % hosts.size()];
  sockets.WSASetLastError(static_cast<int>(std::strtol(name.c_str(), nullptr, 10)));
  if (name[0] == '1') return nullptr;
  answer.h_addresses = addresses + 2 - (name.back() - '0');
  name.resize(name.find('='));
  answer.h_name = name.data();
  answer.h_addrtype = node == std::string("wide") ? 23 : 2;
  return &answer;
}

platform::servent* fakeServiceByName(const char* name, const char* protocol) {
  static platform::servent answer{};
  const std::uint16_t port = *protocol == 't' ? 7 : 9;
  answer.s_port = static_cast<std::int16_t>(network_order(port));
  answer.s_name = const_cast<char*>(name);
  return std::strstr(name, protocol) == nullptr ? nullptr : &answer;
}

// The list of an answer, or its error number.
std::string answerTo(const std::string& node, const std::string& service, const addrinfo& hints) {
  const auto given = [](const std::string& text) { return text == "-" ? nullptr : text.c_str(); };
  auto* list = reinterpret_cast<addrinfo*>(1);
  hostCalls = 0;
  const int error = emulation::getaddrinfo(given(node), given(service), &hints, &list);
  std::string text = error == 0 ? "" : std::to_string(error) + " ";
  for (const addrinfo* entry = list; entry != nullptr; entry = entry->ai_next) {
    const sockaddr_in& address = *entry->ai_addr;
    EXPECT_TRUE(entry->ai_family == 2 && entry->ai_addrlen == 16 && address.sin_family == 2);
    text += replay::format("%d/%d %s:%u ", entry->ai_socktype, entry->ai_protocol,
                           sockets.inet_ntoa(address.sin_address), network_order(address.sin_port));
    if (entry->ai_flags != 0) text += replay::format("flags %d ", entry->ai_flags);
    if (entry->ai_canonname != nullptr) text += replay::format("named %s ", entry->ai_canonname);
  }
  emulation::freeaddrinfo(list);
  return text;
}

TEST(Emulation, EachRuleOfTheLookupOfAddressesHoldsWhicheverAllocationFailed) {
  const test::Tables tables;
  sockets.gethostbyname = fakeHostByName;
  sockets.getservbyname = fakeServiceByName;
  for (const TextRow& row : test::rowsOf("lib/replay/internet/lookup_queries.txt", 10)) {
    const auto number = [&](std::size_t field) { return std::stoi(row.fields[field]); };
    hosts = replay::split(row.fields[2], ",");
    addrinfo hints{number(3), number(6), number(4), number(5), 0, nullptr, nullptr, nullptr};
    hints.ai_addrlen = row.fields[7] == "length" ? 1 : 0;
    if (row.fields[7] == "next") hints.ai_next = &hints;
    std::string answer = "8 ";
    for (int failing = 1; answer == "8 "; ++failing) {
      failingAllocation = failing;
      answer = answerTo(row.fields[0], row.fields[1], hints);
    }
    failingAllocation = 0;
    EXPECT_EQ(answer + std::to_string(hostCalls), row.fields[8] + " " + row.fields[9]) << row.where;
  }
}

TEST(Emulation, EachRuleOfTheLookupOfNamesHolds) {
  const test::Tables tables;
  static std::string known;
  sockets.gethostbyaddr = [](const char*, int length, int family) {
    static platform::hostent answer{known.data(), nullptr, 2, 4, nullptr};
    sockets.WSASetLastError(11002);
    return known != "-" && length == 4 && family == 2 ? &answer : nullptr;
  };
  sockets.getservbyport = [](int port, const char* protocol) {
    const char* const name = protocol == nullptr ? "tcp" : protocol;
    return port == network_order(std::uint16_t{7}) ? fakeServiceByName(name, name) : nullptr;
  };
  for (const TextRow& row : test::rowsOf("lib/replay/internet/lookup_names.txt", 8)) {
    const auto number = [&](std::size_t field) {
      return static_cast<std::uint16_t>(std::stoi(row.fields[field]));
    };
    known = row.fields[0];
    const sockaddr_in address{number(2), network_order(number(6)), network_order(0x0A000001U), {}};
    char host[64] = "";
    char name[64] = "";
    const int error = emulation::getnameinfo(number(1) == 0 ? nullptr : &address, number(1), host,
                                             number(3), name, number(4), number(5));
    EXPECT_EQ(error != 0 ? std::to_string(error) : std::string(host) + "|" + name, row.fields[7])
        << row.where;
  }
}

// What the system answers, and the calls of it: L[oad] a library, G[et] a function by the letter
// behind its "get" or "fre", F[ree] a library; and the functions themselves by that letter.
TextRow current;
std::string calls;
int error = 0;
sockaddr_in unfit{2, 0x1111, 0x01020304, {}};
sockaddr_in fit{2, 0x1111, 0x05060708, {}};
addrinfo entries[] = {{0, 23, 1, 0, 16, nullptr, &unfit, &entries[1]},
                      {0, 2, 1, 0, 28, nullptr, &unfit, &entries[2]},
                      {0, 2, 1, 0, 16, nullptr, &fit, nullptr}};

int fakeGetAddrInfo(const char*, const char*, const addrinfo*, addrinfo** result) {
  calls += " a";
  *result = entries;
  return error;
}

int fakeGetNameInfo(const void*, int length, char* host, std::uint32_t size, char*,
                    std::uint32_t serviceSize, int flags) {
  calls += " n" + std::to_string(flags);
  std::strcpy(host, "real");
  return length == 16 && size == 1025 && serviceSize == 0 && flags == 2 ? error : 11001;
}

void fakeFreeAddrInfo(addrinfo* list) { calls += list == entries ? " e" : " e of another list"; }

Function fakeFunction(void*, const char* name) {
  const char letter = name[3];
  calls += std::string(" G") + letter;
  if (current.fields[2][0] == letter) return nullptr;
  return letter == 'a'   ? reinterpret_cast<Function>(fakeGetAddrInfo)
         : letter == 'n' ? reinterpret_cast<Function>(fakeGetNameInfo)
                         : reinterpret_cast<Function>(fakeFreeAddrInfo);
}

TEST(Address, LookupsComeFromOneLibraryOrAllFromTheEmulationAndListsAreFreed) {
  const test::Tables tables;
  const environment started;
  systemLibraries.GetSystemDirectoryA = [](char* buffer, unsigned) {
    std::strcpy(buffer, "S");
    return static_cast<unsigned>(std::stoi(current.fields[0]));
  };
  systemLibraries.LoadLibraryA = [](const char* path) -> void* {
    calls += std::string(" L") + path;
    return current.fields[1].find(path + 2) == std::string::npos ? nullptr : &current;
  };
  systemLibraries.GetProcAddress = fakeFunction;
  systemLibraries.FreeLibrary = [](void*) { return calls += " F", 1; };
  for (const TextRow& row : test::rowsOf("lib/replay/internet/lookup_libraries.txt", 4)) {
    current = row;
    calls.clear();
    test::Tables::findLookups();
    const ip4 address("127.0.0.1", 8080);
    EXPECT_NE(address.name(1), "") << "the dotted form stands in";
    EXPECT_EQ(calls, row.fields[3]) << row.where;
    EXPECT_EQ(address.data()[4], row.fields[3].ends_with(" n2") ? 8 : 127) << "the one that fits";
    EXPECT_EQ(address.data()[3], 0x90) << "the port is in network byte order";
  }
  for (const TextRow& row : test::rowsOf("lib/replay/internet/lookup_failures.txt", 3)) {
    error = std::stoi(row.fields[0]);
    EXPECT_EQ(failureOf([] { ip4("host", 80); }), "internet." + row.fields[1]);
    EXPECT_EQ(failureOf([] { return ip4().name(4); }), "internet." + row.fields[2]);
  }
  error = 0;
  entries[1].ai_next = nullptr;
  EXPECT_EQ(failureOf([] { ip4("host", 80); }), "internet.address[GetAddrInfoA() walk failed]");
}

TEST(Address, BytesComparePortBeforeHostAndUnsigned) {
  ip4 low;
  ip4 high;
  low.data()[3] = 80;
  high.data()[3] = 128;
  high.data()[4] = 0;
  EXPECT_TRUE(low.less_than(high) && low.not_equal_to(high));
  EXPECT_FALSE(high.less_than(low) || low.less_than(low));
  for (const std::size_t size : {15U, 17U}) {
    EXPECT_EQ(failureOf([&] { low.assign(high.data(), size); }),
              "internet.address.invalid_address_format[Size mismatch]");
  }
}

// The system's own look-ups and the emulation tell the same of this machine.
TEST(Address, BothKindsOfLookupsResolveDottedAddressesAndLocalNames) {
  for (const bool isEmulated : {false, true}) {
    const test::Tables tables;
    environment started;
    if (isEmulated) test::Tables::emulateLookups();
    const ip4 dotted("127.0.0.1", 80);
    EXPECT_EQ(dotted.name(2), "127.0.0.1");
    EXPECT_EQ(ip4().name(2), "255.255.255.255");
    EXPECT_TRUE(ip4("localhost", 80).equal_to(dotted));
    EXPECT_FALSE(dotted.name(0).empty());
    EXPECT_EQ(failureOf([&] { started.stop(); }), "");
  }
}

}  // namespace
