#include "replay/internet/name_lookup_emulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <vector>

#include "internet/tables.h"
#include "replay/internet/byte_order.h"
#include "replay/text.h"
#include "support/rows.h"

namespace {

// The allocation of this number, counted from 1, finds no memory.
int failingAllocation = 0;

}  // namespace

// The emulation's lists are made of these two forms and nothing else in the tests is.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return --failingAllocation == 0 ? nullptr : ::operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return --failingAllocation == 0 ? nullptr : ::operator new[](size);
}

namespace {

namespace emulation = replay::internet::address::emulation;
using platform::addrinfo;
using replay::internet::network_order;
using test::TextRow;

struct Host {
  std::string node;
  int emptyAnswers;  // answers without an address before the one with all
  std::int16_t family;
  std::vector<std::uint32_t> addresses;
  std::vector<const char*> names;  // the official names of the answers in turn
};

const Host hosts[] = {
    {"two", 0, 2, {0x0A000001, 0x0A000002}, {"two.example"}},
    {"1.2.3", 0, 2, {0x01020003}, {"one"}},
    {"1.2.3.999", 0, 2, {0x0A000003}, {"one"}},
    {"255.255.255.255", 0, 2, {0x0A000004}, {"one"}},
    {"late", 2, 2, {0x0A000005}, {"a", "b", "c"}},
    {"wide", 0, 23, {0x0A000006}, {"wide"}},
    {"itself", 99, 2, {}, {"itself"}},
    {"turning", 99, 2, {}, {"a", "b"}},
    {"unnamed", 99, 2, {}, {""}},
};

std::size_t hostCalls = 0;

platform::hostent* fakeHostByName(const char* node) {
  static platform::hostent answer{};
  static std::uint32_t bytes[2];
  static char* addresses[3];
  const std::string name = node;
  const std::size_t call = hostCalls++;
  if (name.starts_with("error-")) {
    platform::sockets.WSASetLastError(std::stoi(name.substr(6)));
    return nullptr;
  }
  const Host& host = *std::find_if(std::begin(hosts), std::end(hosts) - 1,
                                   [&](const Host& row) { return row.node == name; });
  std::size_t count = 0;
  if (hostCalls > static_cast<std::size_t>(host.emptyAnswers)) {
    for (const std::uint32_t address : host.addresses) {
      bytes[count] = network_order(address);
      addresses[count] = reinterpret_cast<char*>(&bytes[count]);
      ++count;
    }
  }
  addresses[count] = nullptr;
  answer = {const_cast<char*>(host.names[call % host.names.size()]), nullptr, host.family, 4,
            addresses};
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

// The list of an answer, or its error number.
std::string answerTo(const std::string& node, const std::string& service, const addrinfo& hints) {
  const auto given = [](const std::string& text) { return text == "-" ? nullptr : text.c_str(); };
  auto* result = reinterpret_cast<addrinfo*>(1);
  hostCalls = 0;
  const int error = emulation::getaddrinfo(given(node), given(service), &hints, &result);
  if (error != 0) {
    EXPECT_EQ(result, nullptr);
    return std::to_string(error);
  }
  const std::string text = textOf(result);
  emulation::freeaddrinfo(result);
  return text;
}

class Emulation : public testing::Test {
 protected:
  Emulation() {
    platform::sockets.gethostbyname = fakeHostByName;
    platform::sockets.getservbyname = fakeServiceByName;
  }

 private:
  test::Tables tables_;
};

TEST_F(Emulation, EachRuleOfTheLookupOfAddressesHolds) {
  for (const TextRow& row : test::rowsOf("internet/lookup_queries.txt", 8)) {
    const auto number = [&](std::size_t field) { return std::stoi(row.fields[field]); };
    const addrinfo hints{number(2), number(5), number(3), number(4), 0, nullptr, nullptr, nullptr};
    EXPECT_EQ(answerTo(row.fields[0], row.fields[1], hints), row.fields[6]) << row.where;
    EXPECT_EQ(hostCalls, static_cast<std::size_t>(number(7))) << row.where;
  }
  char name[] = "x";
  platform::sockaddr_in address{};
  addrinfo none{};
  for (const addrinfo& results : {addrinfo{0, 0, 0, 0, 1, nullptr, nullptr, nullptr},
                                  {0, 0, 0, 0, 0, name, nullptr, nullptr},
                                  {0, 0, 0, 0, 0, nullptr, &address, nullptr},
                                  {0, 0, 0, 0, 0, nullptr, nullptr, &none}}) {
    EXPECT_EQ(answerTo("1.2.3.4", "-", results), "11003") << "hints are no results";
  }
}

TEST_F(Emulation, EachAllocationThatFailsFreesTheList) {
  const addrinfo named{emulation::canonical_name, 0, 0, 0, 0, nullptr, nullptr, nullptr};
  for (const auto& [node, service, allocations] :
       {std::tuple("two", "80", 9), {"1.2.3.4", "-", 3}}) {
    for (int failing = 1; failing <= allocations; ++failing) {
      failingAllocation = failing;
      EXPECT_EQ(answerTo(node, service, named), "8") << failing;
    }
    failingAllocation = allocations + 1;
    EXPECT_NE(answerTo(node, service, named), "8") << "all were made to fail in turn";
    failingAllocation = 0;
  }
}

TEST_F(Emulation, EachRuleOfTheLookupOfNamesHolds) {
  static bool hasName = true;
  platform::sockets.gethostbyaddr = [](const char*, int length, int family) {
    static char name[] = "h.example.net";
    static platform::hostent answer{name, nullptr, 2, 4, nullptr};
    platform::sockets.WSASetLastError(11002);
    return hasName && length == 4 && family == 2 ? &answer : nullptr;
  };
  platform::sockets.getservbyport = [](int port, const char* protocol) -> platform::servent* {
    if (port != network_order(std::uint16_t{7})) return nullptr;
    return service(7, protocol == nullptr ? "any" : protocol);
  };
  for (const TextRow& row : test::rowsOf("internet/lookup_names.txt", 8)) {
    const auto number = [&](std::size_t field) { return std::stoi(row.fields[field]); };
    const auto size = [&](std::size_t field) { return static_cast<std::uint32_t>(number(field)); };
    hasName = row.fields[0] == "named";
    const platform::sockaddr_in address{static_cast<std::uint16_t>(number(2)),
                                        network_order(static_cast<std::uint16_t>(number(6))),
                                        network_order(std::uint32_t{0x0A000001}),
                                        {}};
    char host[64] = "";
    char name[64] = "";
    const int error = emulation::getnameinfo(number(1) == 0 ? nullptr : &address, number(1), host,
                                             size(3), name, size(4), number(5));
    EXPECT_EQ(error != 0 ? std::to_string(error) : std::string(host) + "|" + name, row.fields[7])
        << row.where;
  }
}

}  // namespace
