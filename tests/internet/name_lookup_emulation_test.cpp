#include "replay/internet/name_lookup_emulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <vector>

#include "internet/tables.h"
#include "replay/internet/byte_order.h"
#include "replay/text.h"

namespace {

// The allocation of this number, counted from 1, finds no memory.
int failingAllocation = 0;

bool isAllocationToFail() { return failingAllocation > 0 && --failingAllocation == 0; }

}  // namespace

// The emulation's lists are made of these two forms and nothing else in the tests is.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return isAllocationToFail() ? nullptr : ::operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return isAllocationToFail() ? nullptr : ::operator new[](size);
}

namespace {

namespace emulation = replay::internet::address::emulation;
using platform::addrinfo;
using replay::internet::network_order;

struct Host {
  const char* node;
  int error;
  int emptyAnswers;  // answers without an address before the one with all
  int family;
  std::vector<std::uint32_t> addresses;
  std::vector<const char*> names;  // the official names of the answers in turn
};

const Host hosts[] = {
    {"two", 0, 0, 2, {0x0A000001, 0x0A000002}, {"two.example"}},
    {"1.2.3", 0, 0, 2, {0x01020003}, {"one"}},
    {"1.2.3.999", 0, 0, 2, {0x0A000003}, {"one"}},
    {"255.255.255.255", 0, 0, 2, {0x0A000004}, {"one"}},
    {"late", 0, 2, 2, {0x0A000005}, {"a", "b", "c"}},
    {"wide", 0, 0, 23, {0x0A000006}, {"wide"}},
    {"itself", 0, 99, 2, {}, {"itself"}},
    {"turning", 0, 99, 2, {}, {"a", "b"}},
    {"unnamed", 0, 99, 2, {}, {""}},
    {"again", 11002, 0, 2, {}, {}},
    {"fatal", 11003, 0, 2, {}, {}},
    {"unknown", 11001, 0, 2, {}, {}},
    {"nodata", 11004, 0, 2, {}, {}},
    {"down", 10050, 0, 2, {}, {}},
};

int hostCalls = 0;

platform::hostent* fakeHostByName(const char* node) {
  static platform::hostent answer{};
  static std::uint32_t bytes[2];
  static char* addresses[3];
  const auto* const host = std::find_if(std::begin(hosts), std::end(hosts), [&](const Host& row) {
    return std::string(row.node) == node;
  });
  EXPECT_NE(host, std::end(hosts)) << node;
  const auto call = static_cast<std::size_t>(hostCalls++);
  if (host == std::end(hosts) || host->error != 0) {
    platform::sockets.WSASetLastError(host->error);
    return nullptr;
  }
  std::size_t count = 0;
  if (hostCalls > host->emptyAnswers) {
    for (const std::uint32_t address : host->addresses) {
      bytes[count] = network_order(address);
      addresses[count] = reinterpret_cast<char*>(&bytes[count]);
      ++count;
    }
  }
  addresses[count] = nullptr;
  answer = {const_cast<char*>(host->names[call % host->names.size()]), nullptr,
            static_cast<std::int16_t>(host->family), 4, addresses};
  return &answer;
}

platform::servent* service(std::uint16_t port, const char* name) {
  static platform::servent answer{};
  answer.s_port = static_cast<std::int16_t>(network_order(port));
  answer.s_name = const_cast<char*>(name);
  return &answer;
}

platform::servent* fakeServiceByName(const char* name, const char* protocol) {
  const std::string both = std::string(name) + "/" + protocol;
  if (both == "both/tcp") return service(7, name);
  if (both == "both/udp") return service(9, name);
  if (both == "stream/tcp") return service(21, name);
  if (both == "datagram/udp") return service(69, name);
  return nullptr;
}

class Emulation : public testing::Test {
 protected:
  Emulation() {
    platform::sockets.gethostbyname = fakeHostByName;
    platform::sockets.getservbyname = fakeServiceByName;
    platform::sockets.WSASetLastError = [](int error) { lastError = error; };
    platform::sockets.WSAGetLastError = [] { return lastError; };
    hostCalls = 0;
  }

  static inline int lastError = 0;
  test::Tables tables_;
};

std::string textOf(const addrinfo* list) {
  std::string text;
  for (; list != nullptr; list = list->ai_next) {
    EXPECT_EQ(list->ai_family, 2);
    EXPECT_EQ(list->ai_addrlen, 16U);
    EXPECT_EQ(list->ai_addr->sin_family, 2);
    text +=
        replay::format("%s%d/%d %s:%u", text.empty() ? "" : ", ", list->ai_socktype,
                       list->ai_protocol, platform::sockets.inet_ntoa(list->ai_addr->sin_address),
                       network_order(list->ai_addr->sin_port));
    if (list->ai_flags != 0) text += " flags " + std::to_string(list->ai_flags);
    if (list->ai_canonname != nullptr) text += std::string(" named ") + list->ai_canonname;
  }
  return text;
}

struct Query {
  const char* node;
  const char* service;
  addrinfo hints;
};

// The list of an answer, or its error number.
std::string answerTo(const Query& query) {
  hostCalls = 0;
  auto* result = reinterpret_cast<addrinfo*>(1);
  const int error = emulation::getaddrinfo(query.node, query.service, &query.hints, &result);
  if (error != 0) {
    EXPECT_EQ(result, nullptr);
    return std::to_string(error);
  }
  std::string text = textOf(result);
  emulation::freeaddrinfo(result);
  return text;
}

addrinfo hints(int flags, int type = 0, int protocol = 0, int family = 0) {
  return {flags, family, type, protocol, 0, nullptr, nullptr, nullptr};
}

TEST_F(Emulation, EachRuleOfTheLookupOfAddressesHolds) {
  static char name[] = "x";
  static platform::sockaddr_in address{};
  static addrinfo next{};
  const struct {
    Query query;
    const char* answer;
    int hostCalls;
  } rows[] = {
      // What cannot be asked.
      {{nullptr, nullptr, hints(0)}, "11001", 0},
      {{"1.2.3.4", nullptr, {0, 0, 0, 0, 1, nullptr, nullptr, nullptr}}, "11003", 0},
      {{"1.2.3.4", nullptr, {0, 0, 0, 0, 0, name, nullptr, nullptr}}, "11003", 0},
      {{"1.2.3.4", nullptr, {0, 0, 0, 0, 0, nullptr, &address, nullptr}}, "11003", 0},
      {{"1.2.3.4", nullptr, {0, 0, 0, 0, 0, nullptr, nullptr, &next}}, "11003", 0},
      {{nullptr, "7", hints(2)}, "10022", 0},
      {{nullptr, "7", hints(2, 9, 0, 23)}, "10022", 0},
      {{"1.2.3.4", nullptr, hints(0, 9, 0, 23)}, "10047", 0},
      {{"1.2.3.4", nullptr, hints(0, 4)}, "10044", 0},
      {{"1.2.3.4", nullptr, hints(0, -1)}, "10044", 0},
      // Dotted addresses: exactly three dots, and an address that inet_addr takes.
      {{"1.2.3.4", nullptr, hints(0, 3, 17, 2)}, "3/17 1.2.3.4:0 flags 4", 0},
      {{"1.2.3.4", nullptr, hints(2)}, "0/0 1.2.3.4:0 flags 4 named 1.2.3.4", 0},
      {{"1.2.3", nullptr, hints(0)}, "0/0 1.2.0.3:0", 1},
      {{"1.2.3.999", nullptr, hints(0)}, "0/0 10.0.0.3:0", 1},
      {{"255.255.255.255", nullptr, hints(0)}, "0/0 10.0.0.4:0", 1},
      {{"1.2.3", nullptr, hints(4)}, "11001", 0},
      // Ports by number, and no node.
      {{nullptr, "80", hints(0, 1)}, "1/0 127.0.0.1:80", 0},
      {{nullptr, "80", hints(1, 2)}, "2/0 0.0.0.0:80", 0},
      {{nullptr, "80", hints(0)}, "1/0 127.0.0.1:80, 2/0 127.0.0.1:80", 0},
      {{nullptr, "65616", hints(0, 3)}, "3/0 127.0.0.1:80", 0},
      {{"two", "80", hints(2, 0, 5)},
       "1/5 10.0.0.1:80 named two.example, 2/5 10.0.0.1:80, 1/5 10.0.0.2:80, 2/5 10.0.0.2:80",
       1},
      {{"1.2.3.4", "80", hints(0)}, "1/0 1.2.3.4:80 flags 4, 2/0 1.2.3.4:80", 0},
      // Ports by name.
      {{nullptr, "both", hints(0)}, "1/0 127.0.0.1:7, 2/0 127.0.0.1:9", 0},
      {{nullptr, "both", hints(0, 1)}, "1/0 127.0.0.1:7", 0},
      {{nullptr, "both", hints(0, 2)}, "2/0 127.0.0.1:9", 0},
      {{nullptr, "both", hints(0, 3)}, "10109", 0},
      {{nullptr, "stream", hints(0)}, "1/0 127.0.0.1:21", 0},
      {{nullptr, "stream", hints(0, 2)}, "10109", 0},
      {{nullptr, "datagram", hints(0)}, "2/0 127.0.0.1:69", 0},
      {{nullptr, "datagram", hints(0, 1)}, "10109", 0},
      {{nullptr, "7x", hints(0)}, "11001", 0},
      // Names of hosts: every pass asks for the node.
      {{"two", nullptr, hints(0)}, "0/0 10.0.0.1:0, 0/0 10.0.0.2:0", 1},
      {{"late", nullptr, hints(2)}, "0/0 10.0.0.5:0 named c", 3},
      {{"itself", nullptr, hints(0)}, "11003", 1},
      {{"wide", nullptr, hints(0)}, "11003", 1},
      {{"unnamed", nullptr, hints(0)}, "11003", 1},
      {{"turning", nullptr, hints(0)}, "11003", 16},
      {{"again", nullptr, hints(0)}, "11002", 1},
      {{"fatal", nullptr, hints(0)}, "11003", 1},
      {{"unknown", nullptr, hints(0)}, "11001", 1},
      {{"nodata", nullptr, hints(0)}, "11001", 1},
      {{"down", nullptr, hints(0)}, "11001", 1},
  };
  for (const auto& row : rows) {
    const std::string what = std::string(row.query.node == nullptr ? "-" : row.query.node) + " " +
                             (row.query.service == nullptr ? "-" : row.query.service);
    EXPECT_EQ(answerTo(row.query), row.answer) << what;
    EXPECT_EQ(hostCalls, row.hostCalls) << what;
  }
}

TEST_F(Emulation, EachAllocationThatFailsFreesTheList) {
  const Query queries[] = {{"two", "80", hints(2)}, {"1.2.3.4", nullptr, hints(2)}};
  const int allocations[] = {9, 3};
  for (int query = 0; query < 2; ++query) {
    for (int failing = 1; failing <= allocations[query]; ++failing) {
      failingAllocation = failing;
      EXPECT_EQ(answerTo(queries[query]), "8") << failing;
    }
    failingAllocation = allocations[query] + 1;
    EXPECT_NE(answerTo(queries[query]), "8") << "all allocations were made to fail in turn";
    failingAllocation = 0;
  }
}

// What getnameinfo is asked and answers: host and service, or the error number.
struct NameRow {
  int length, family;
  std::uint32_t hostLength, serviceLength;
  int flags;
  int port;
  const char* answer;
};

const char* hostName = nullptr;

TEST_F(Emulation, EachRuleOfTheLookupOfNamesHolds) {
  platform::sockets.gethostbyaddr = [](const char*, int length, int family) {
    static platform::hostent answer{};
    answer.h_name = const_cast<char*>(hostName);
    lastError = 11002;
    EXPECT_EQ(length, 4);
    EXPECT_EQ(family, 2);
    return hostName == nullptr ? nullptr : &answer;
  };
  platform::sockets.getservbyport = [](int port, const char* protocol) -> platform::servent* {
    if (port != network_order(std::uint16_t{7})) return nullptr;
    return service(7, protocol == nullptr ? "any" : protocol);
  };
  const auto answerTo = [](const NameRow& row) -> std::string {
    const platform::sockaddr_in address{static_cast<std::uint16_t>(row.family),
                                        network_order(static_cast<std::uint16_t>(row.port)),
                                        network_order(std::uint32_t{0x0A000001}),
                                        {}};
    char host[64] = "";
    char serviceName[64] = "";
    const int error =
        emulation::getnameinfo(row.length == 0 ? nullptr : &address, row.length, host,
                               row.hostLength, serviceName, row.serviceLength, row.flags);
    return error != 0 ? std::to_string(error) : std::string(host) + "|" + serviceName;
  };
  const NameRow named[] = {
      {0, 2, 64, 64, 0, 7, "11003"},
      {15, 2, 64, 64, 0, 7, "11003"},
      {16, 23, 0, 0, 6, 7, "10047"},
      {16, 2, 0, 0, 6, 7, "11001"},
      {16, 2, 64, 64, 6, 7, "10022"},
      {16, 2, 64, 64, 0, 7, "h.example.net|any"},
      {16, 2, 64, 64, 16, 7, "h.example.net|udp"},
      {16, 2, 64, 64, 8, 7, "h.example.net|7"},
      {16, 2, 64, 64, 1, 80, "h|80"},
      {16, 2, 64, 0, 4, 7, "h.example.net|"},
      {16, 2, 64, 64, 2, 7, "10.0.0.1|any"},
      {16, 2, 0, 64, 0, 7, "|any"},
      {16, 2, 13, 0, 0, 7, "11003"},
      {16, 2, 14, 0, 0, 7, "h.example.net|"},
      {16, 2, 2, 0, 1, 7, "h|"},
      {16, 2, 8, 0, 2, 7, "11003"},
      {16, 2, 9, 0, 2, 7, "10.0.0.1|"},
      {16, 2, 64, 3, 0, 7, "11003"},
      {16, 2, 64, 4, 0, 7, "h.example.net|any"},
      {16, 2, 64, 5, 0, 65535, "11003"},
      {16, 2, 64, 6, 0, 65535, "h.example.net|65535"},
  };
  hostName = "h.example.net";
  for (const NameRow& row : named) EXPECT_EQ(answerTo(row), row.answer) << row.flags;
  hostName = nullptr;
  EXPECT_EQ(answerTo({16, 2, 64, 0, 0, 7, ""}), "10.0.0.1|");
  EXPECT_EQ(answerTo({16, 2, 64, 0, 4, 7, ""}), "11002") << "a name is required";
}

}  // namespace
