#include "replay/internet/address.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "internet/tables.h"
#include "replay/internet/environment.h"

namespace {

using replay::internet::environment;
using replay::internet::address::ip4;
using replay::internet::address::name_lookup;
using test::failureOf;
using Function = platform::SystemLibrariesApi::Function;

// What the look-ups of the system answer, and the calls of them and of the loader: the first letter
// of each, and what it was asked for.
std::vector<platform::addrinfo> answer;
int refusedFlags = -1;  // the look-up of names fails with these
std::string calls;

int fakeGetAddrInfo(const char*, const char* service, const platform::addrinfo* hints,
                    platform::addrinfo** result) {
  *result = answer.empty() ? nullptr : answer.data();
  return service == nullptr && hints == nullptr ? 0 : 1;
}

int fakeGetNameInfo(const void*, int length, char* host, std::uint32_t size, char* service,
                    std::uint32_t serviceSize, int flags) {
  std::strcpy(host, std::to_string(flags).c_str());
  const bool isInOrder = length == 16 && size == 1025 && service == nullptr && serviceSize == 0;
  return isInOrder && flags != refusedFlags ? 0 : 11001;
}

Function fakeFunction(void*, const char* name) {
  const std::string wanted = name;
  if (wanted == "getaddrinfo") return reinterpret_cast<Function>(fakeGetAddrInfo);
  if (wanted == "getnameinfo") return reinterpret_cast<Function>(fakeGetNameInfo);
  const platform::FreeAddrInfo release = [](platform::addrinfo* list) {
    EXPECT_EQ(list, answer.data());
    calls += "free";
  };
  return reinterpret_cast<Function>(release);
}

TEST(Address, FirstEntryThatFitsIsTakenAndTheListFreed) {
  const test::Tables tables;
  platform::systemLibraries.GetProcAddress = fakeFunction;
  platform::sockaddr_in first{2, 0x1111, 0x01020304, {}};
  platform::sockaddr_in second{2, 0x1111, 0x05060708, {}};
  answer = {{0, 23, 1, 0, 16, nullptr, &first, nullptr},
            {0, 2, 1, 0, 28, nullptr, &first, nullptr},
            {0, 2, 1, 0, 16, nullptr, &second, nullptr},
            {0, 2, 1, 0, 16, nullptr, &first, nullptr}};
  for (std::size_t next = 1; next < answer.size(); ++next) answer[next - 1].ai_next = &answer[next];
  calls.clear();
  const ip4 address("host", 8080);
  EXPECT_EQ(calls, "free");
  EXPECT_EQ(std::memcmp(address.data() + 4, &second.sin_address, 4), 0);
  EXPECT_EQ(address.port(), 8080);
  EXPECT_EQ(std::memcmp(address.data() + 2, "\x1f\x90", 2), 0) << "in network byte order";

  answer[1].ai_next = nullptr;
  EXPECT_EQ(failureOf([] { ip4("host", 80); }), "internet.address[GetAddrInfoA() walk failed]");
  EXPECT_EQ(calls, "freefree");
  refusedFlags = 4;
  EXPECT_EQ(address.name(1), "1");
  EXPECT_EQ(address.name(4), "2") << "the dotted form stands in";
}

// A state of the system, the loader's calls there, and whether its functions come out: L[oad] a
// library, G[et] a function by the letter behind its "get" or "fre", F[ree] a library.
struct System {
  unsigned folderLength;
  std::string libraries;  // those that load
  char missing;           // the letter of the function that no library has
  const char* calls;
  bool isReal;
} current;

TEST(Address, LookupsComeFromOneLibraryOrAllFromTheEmulation) {
  const test::Tables tables;
  const environment started;
  platform::systemLibraries.GetSystemDirectoryA = [](char* buffer, unsigned size) {
    std::strcpy(buffer, size == 260 ? "S" : "?");
    return current.folderLength;
  };
  platform::systemLibraries.LoadLibraryA = [](const char* path) -> void* {
    calls += std::string(" L") + path;
    const bool loads = current.libraries.find(std::strrchr(path, '\\') + 1) != std::string::npos;
    return loads ? &current : nullptr;
  };
  platform::systemLibraries.GetProcAddress = [](void* library, const char* name) {
    calls += std::string(" G") + name[3];
    return name[3] == current.missing ? nullptr : fakeFunction(library, name);
  };
  platform::systemLibraries.FreeLibrary = [](void*) {
    calls += " F";
    return 1;
  };
  const System rows[] = {
      {1, "ws2_32", 0, R"( LS\ws2_32 Ga Ga Gn Ge)", true},
      {259, "wship6", 0, R"( LS\ws2_32 LS\wship6 Ga Ga Gn Ge)", true},
      {1, "ws2_32 wship6", 'a', R"( LS\ws2_32 Ga F LS\wship6 Ga F)", false},
      {1, "ws2_32 wship6", 'n', R"( LS\ws2_32 Ga Ga Gn F)", false},
      {1, "ws2_32 wship6", 'e', R"( LS\ws2_32 Ga Ga Gn Ge F)", false},
      {1, "", 0, R"( LS\ws2_32 LS\wship6)", false},
      {0, "ws2_32", 0, "", false},
      {260, "ws2_32", 0, "", false},
  };
  answer.resize(1);
  for (const System& row : rows) {
    current = row;
    calls.clear();
    name_lookup lookup;
    const ip4 address;
    char name[name_lookup::name_size] = {};
    EXPECT_EQ(lookup.get_name_info(address.data(), 16, name, 2), 0);
    EXPECT_STREQ(name, row.isReal ? "2" : "255.255.255.255");
    platform::addrinfo* list = nullptr;
    EXPECT_EQ(lookup.get_addr_info("1.2.3.4", &list), 0);
    EXPECT_EQ(list == answer.data(), row.isReal) << "functions of both kinds are mixed";
    EXPECT_EQ(calls, row.calls) << "once for each object";
    lookup.free_addr_info(list);
  }
}

TEST(Address, BytesComparePortBeforeHost) {
  const auto address = [](std::array<unsigned char, 8> portAndHost, std::size_t size = 16) {
    unsigned char bytes[17] = {2, 0};
    std::memcpy(bytes + 2, portAndHost.data(), portAndHost.size());
    ip4 result;
    result.assign(bytes, size);
    return result;
  };
  for (const std::size_t size : {15U, 17U}) {
    EXPECT_EQ(failureOf([&] { address({}, size); }),
              "internet.address.invalid_address_format[Size mismatch]");
  }
  EXPECT_TRUE(address({0, 0, 255, 255, 255, 255}).equal_to(ip4()));
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
TEST(Address, BothKindsOfLookupsResolveDottedAddressesAndLocalNames) {
  for (const bool isEmulated : {false, true}) {
    const test::Tables tables;
    const environment started;
    if (isEmulated) test::Tables::emulateLookups();
    const ip4 dotted("127.0.0.1", 80);
    EXPECT_EQ(dotted.name(2), "127.0.0.1");
    EXPECT_TRUE(ip4("localhost", 80).equal_to(dotted));
    EXPECT_FALSE(dotted.name(0).empty());
  }
}

}  // namespace
