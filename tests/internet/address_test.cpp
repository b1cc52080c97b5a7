#include "replay/internet/address.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "internet/tables.h"
#include "replay/internet/environment.h"

namespace {

using replay::internet::environment;
using replay::internet::address::ip4;
using replay::internet::address::name_lookup;
using test::failureOf;

// What the look-ups of the system answer, and what they were asked.
int statuses[2];
int asked = 0;
int freed = 0;
std::vector<platform::addrinfo> answer;

int fakeGetAddrInfo(const char*, const char* service, const platform::addrinfo* hints,
                    platform::addrinfo** result) {
  *result = answer.empty() ? nullptr : answer.data();
  return service == nullptr && hints == nullptr ? statuses[0] : 1;
}

int fakeGetNameInfo(
    const void*, int length, char* host, std::uint32_t size,
    char* service,  // NOLINT(readability-non-const-parameter): the signature is given
    std::uint32_t serviceSize, int flags) {
  std::strcpy(host, std::to_string(flags).c_str());
  const bool isInOrder = length == 16 && size == 1025 && service == nullptr && serviceSize == 0;
  return isInOrder ? statuses[asked++] : 1;
}

void fakeFreeAddrInfo(platform::addrinfo* list) {
  EXPECT_EQ(list, answer.data());
  ++freed;
}

platform::SystemLibrariesApi::Function fakeFunction(void*, const char* name) {
  using Function = platform::SystemLibrariesApi::Function;
  const std::string wanted = name;
  if (wanted == "getaddrinfo") return reinterpret_cast<Function>(fakeGetAddrInfo);
  if (wanted == "getnameinfo") return reinterpret_cast<Function>(fakeGetNameInfo);
  return reinterpret_cast<Function>(fakeFreeAddrInfo);
}

class Address : public testing::Test {
 protected:
  Address() {
    platform::systemLibraries.GetProcAddress = fakeFunction;
    asked = freed = statuses[0] = statuses[1] = 0;
    answer.clear();
  }

  test::Tables tables_;
  environment environment_;
};

TEST_F(Address, EachStatusOfResolvingHasItsClass) {
  const struct {
    int status;
    const char* failure;
  } rows[] = {
      {10093, "internet.environment.subsystem_not_ready[GetAddrInfoA() failed]"},
      {10109, "internet.address.service_not_found[GetAddrInfoA() failed]"},
      {11001, "internet.address.host_not_found[GetAddrInfoA() failed]"},
      {11004, "internet.address.host_not_found[GetAddrInfoA() failed]"},
      {11002, "internet.address[GetAddrInfoA() returned status 0x00002afa]"},
      {8, "internet.address[GetAddrInfoA() returned status 0x00000008]"},
  };
  // What raises an exception may use the system's own slot of the last error.
  static int lastError = 0;
  platform::sockets.WSASetLastError = [](int error) { lastError = error; };
  for (const auto& row : rows) {
    statuses[0] = row.status;
    EXPECT_EQ(failureOf([] { ip4("host", 80); }), row.failure);
    EXPECT_EQ(lastError, row.status);
  }
  EXPECT_EQ(freed, 0);
}

TEST_F(Address, FirstEntryThatFitsIsTakenAndTheListFreed) {
  platform::sockaddr_in first{2, 0x1111, 0x01020304, {}};
  platform::sockaddr_in second{2, 0x1111, 0x05060708, {}};
  answer = {{0, 23, 1, 0, 28, nullptr, &first, nullptr},
            {0, 2, 1, 0, 28, nullptr, &first, nullptr},
            {0, 2, 1, 0, 16, nullptr, &second, nullptr},
            {0, 2, 1, 0, 16, nullptr, &first, nullptr}};
  for (std::size_t next = 1; next < answer.size(); ++next) answer[next - 1].ai_next = &answer[next];
  const ip4 address("host", 8080);
  EXPECT_EQ(freed, 1);
  EXPECT_EQ(std::memcmp(address.data() + 4, &second.sin_address, 4), 0);
  EXPECT_EQ(address.port(), 8080);
  EXPECT_EQ(std::memcmp(address.data() + 2, "\x1f\x90", 2), 0) << "in network byte order";

  answer[1].ai_next = nullptr;
  EXPECT_EQ(failureOf([] { ip4("host", 80); }), "internet.address[GetAddrInfoA() walk failed]");
  EXPECT_EQ(freed, 2);
}

TEST_F(Address, NameFallsBackToTheDottedFormAndThenFails) {
  const struct {
    int first, second;
    const char* failure;
    const char* name;
  } rows[] = {
      {0, 1, "", "4"},
      {11001, 0, "", "2"},
      {11001, 10093, "internet.environment.subsystem_not_ready[GetNameInfoA() failed]", ""},
      {1, 11001, "internet.address.host_not_found[GetNameInfoA() failed]", ""},
      {1, 11004, "internet.address.host_not_found[GetNameInfoA() failed]", ""},
      {11001, 10047, "internet.address[GetAddrInfoA() returned status 0x0000273f]", ""},
  };
  for (const auto& row : rows) {
    asked = 0;
    statuses[0] = row.first;
    statuses[1] = row.second;
    std::string name;
    EXPECT_EQ(failureOf([&] { name = ip4().name(4); }), row.failure);
    EXPECT_EQ(name, row.name);
  }
}

// The calls of the loader for each state of the system, and whose functions come out. "D" is the
// system's folder, "L" a library loaded, "G" a function asked for, "F" a library freed.
struct System {
  unsigned folderLength;
  const char* libraries;  // those that load
  const char* missing;    // what the functions' names begin with that no library has
  const char* calls;
  bool isReal;
};

System current;
std::string calls;

TEST_F(Address, LookupsComeFromOneLibraryOrAllFromTheEmulation) {
  platform::systemLibraries.GetSystemDirectoryA = [](char* buffer, unsigned size) {
    calls += "D" + std::to_string(size);
    std::strcpy(buffer, "S");
    return current.folderLength;
  };
  platform::systemLibraries.LoadLibraryA = [](const char* path) -> void* {
    calls += std::string(" L") + path;
    const char* const name = std::strrchr(path, '\\');
    const bool loads = std::strstr(current.libraries, name + 1) != nullptr;
    return loads ? const_cast<char*>(current.libraries) : nullptr;
  };
  platform::systemLibraries.GetProcAddress = [](void* library, const char* name) {
    calls += std::string(" G") + name[3];
    const bool isMissing = *current.missing != '\0' && name[3] == *current.missing;
    return isMissing ? nullptr : fakeFunction(library, name);
  };
  platform::systemLibraries.FreeLibrary = [](void*) {
    calls += " F";
    return 1;
  };
  // The letters of the functions: get[a]ddrinfo, get[n]ameinfo, fre[e]addrinfo.
  const System rows[] = {
      {1, "ws2_32", "", R"(D260 LS\ws2_32 Ga Ga Gn Ge)", true},
      {1, "wship6", "", R"(D260 LS\ws2_32 LS\wship6 Ga Ga Gn Ge)", true},
      {1, "ws2_32 wship6", "a", R"(D260 LS\ws2_32 Ga F LS\wship6 Ga F)", false},
      {1, "ws2_32 wship6", "n", R"(D260 LS\ws2_32 Ga Ga Gn F)", false},
      {1, "ws2_32 wship6", "e", R"(D260 LS\ws2_32 Ga Ga Gn Ge F)", false},
      {1, "", "", R"(D260 LS\ws2_32 LS\wship6)", false},
      {0, "ws2_32", "", "D260", false},
      {261, "ws2_32", "", "D260", false},
  };
  platform::sockets.gethostbyaddr = [](const char*, int, int) -> platform::hostent* {
    return nullptr;
  };
  answer.resize(1);
  for (const System& row : rows) {
    current = row;
    calls.clear();
    asked = 0;
    name_lookup lookup;
    const ip4 address;
    char name[name_lookup::name_size] = {};
    EXPECT_EQ(lookup.get_name_info(address.data(), 16, name, 0), 0);
    EXPECT_STREQ(name, row.isReal ? "0" : "255.255.255.255");
    lookup.get_name_info(address.data(), 16, name, 0);
    platform::addrinfo* list = nullptr;
    lookup.get_addr_info("1.2.3.4", &list);
    EXPECT_EQ(list == answer.data(), row.isReal) << "functions of both kinds are mixed";
    lookup.free_addr_info(list);
    EXPECT_EQ(calls, row.calls) << "once for each object";
  }
}

TEST(AddressBlock, BytesComparePortBeforeHost) {
  EXPECT_EQ(failureOf([] { ip4().assign(ip4().data(), 15); }),
            "internet.address.invalid_address_format[Size mismatch]");
  const auto address = [](const std::array<unsigned char, 6>& portAndHost) {
    ip4 result;
    unsigned char bytes[16] = {2, 0};
    std::copy(portAndHost.begin(), portAndHost.end(), bytes + 2);
    result.assign(bytes, sizeof bytes);
    return result;
  };
  const ip4 all = address({0, 0, 255, 255, 255, 255});
  EXPECT_TRUE(all.equal_to(ip4()));
  EXPECT_EQ(failureOf([&] { ip4(all).assign(all.data(), 17); }),
            "internet.address.invalid_address_format[Size mismatch]");
  const ip4 low = address({0, 80, 1, 255, 255, 255});
  const ip4 high = address({0, 128, 1, 0, 0, 0});
  EXPECT_EQ(high.port(), 128);
  EXPECT_TRUE(low.less_than(high)) << "the bytes are unsigned and the port comes first";
  EXPECT_FALSE(high.less_than(low));
  EXPECT_FALSE(low.less_than(low));
  EXPECT_TRUE(low.not_equal_to(high));
  EXPECT_FALSE(low.not_equal_to(low));
}

// The system's own look-ups and the emulation tell the same of this machine.
TEST(SystemLookups, BothKindsResolveDottedAddressesAndLocalNames) {
  for (const bool isEmulated : {false, true}) {
    const test::Tables tables;
    const environment started;
    if (isEmulated) test::Tables::emulateLookups();
    const ip4 dotted("127.0.0.1", 80);
    EXPECT_EQ(dotted.name(2), "127.0.0.1");
    EXPECT_EQ(dotted.port(), 80);
    EXPECT_TRUE(ip4("localhost", 80).equal_to(dotted));
    EXPECT_FALSE(dotted.name(0).empty());
  }
}

}  // namespace
