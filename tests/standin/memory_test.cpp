#include <gtest/gtest.h>

#include <algorithm>

#include "server.h"

namespace standin_tests {
namespace {

// The books as "a;b;", or the words of the failure.
std::string books(const char* server) {
  WORD count = 77;
  WORD length = 77;
  HANDLE block = 77;
  const STATUS status = library().NAMEGetAddressBooks(server, 0, &count, &length, &block);
  if (status != 0) {
    EXPECT_TRUE(count == 77 && length == 77 && block == 77) << "a failure wrote its outputs";
    return wordsOf(status);
  }
  EXPECT_EQ(block == 0, count == 0);
  const auto* bytes = static_cast<const char*>(library().OSLockObject(block));
  std::string list(bytes == nullptr ? "" : bytes, length);
  EXPECT_EQ(std::count(list.begin(), list.end(), '\0'), count);
  std::replace(list.begin(), list.end(), '\0', ';');
  EXPECT_EQ(library().OSMemFree(block) == 0, count != 0);
  return list;
}

TEST(AddressBooks, AreThoseOfTheSettings) {
  const std::string unknown = "The remote server is not a known host";
  const std::string longName(251, 'n');
  std::string wraps = "Names=a";  // the length of the block is 65538
  for (int i = 1; i < 10923; ++i) wraps += ",a";
  const struct {
    std::string settings;
    const char* server;
    std::string expected;
  } rows[] = {
      {"", nullptr, "names.nsf;"},
      {"Names=\n", "", "names.nsf;"},
      {"Names= names , sub/More.NSF,,x.ntf\t,\n", nullptr, "names.nsf;sub/More.NSF;x.ntf.nsf;"},
      {"Names= , ,\n", nullptr, ""},
      {"Names=a,b\nServerName=Mail/Acme\n", "MAIL/acme", "MAIL/acme!!a.nsf;MAIL/acme!!b.nsf;"},
      {"ServerName=Mail/Acme\n", "Mail", unknown},
      {"", "Mail", unknown},
      {"Names=" + longName + "\n", nullptr, longName + ".nsf;"},
      {"Names=n" + longName + "\n", nullptr, "The path has more than 255 bytes"},
      {wraps, nullptr, "The list of address books is too long"},
  };
  for (const auto& row : rows) {
    const RunningServer server(row.settings);
    EXPECT_EQ(books(row.server), row.expected) << row.settings.substr(0, 60);
  }
}

TEST(MemoryBlocks, OnlyLivingHandlesWork) {
  const RunningServer server;
  const auto take = [] {
    WORD ignored = 0;
    HANDLE block = 0;
    EXPECT_EQ(library().NAMEGetAddressBooks(nullptr, 0, &ignored, &ignored, &block), 0);
    return block;
  };
  const HANDLE first = take();
  const HANDLE second = take();
  const void* const address = library().OSLockObject(second);
  EXPECT_EQ(library().OSUnlockObject(second), 1);
  EXPECT_EQ(library().OSMemFree(first), 0);
  EXPECT_NE(take(), first) << "a freed handle came back";
  EXPECT_EQ(library().OSLockObject(second), address) << "a block moved";
  for (const HANDLE wrong : {first, HANDLE{0}, HANDLE{0xFFFFFFFF}}) {
    EXPECT_EQ(library().OSLockObject(wrong), nullptr);
    EXPECT_EQ(library().OSUnlockObject(wrong), 0);
    EXPECT_EQ(wordsOf(library().OSMemFree(wrong)), "The handle is not that of a memory block");
  }
  library().NotesTerm();
  EXPECT_EQ(initialise(), "No error");
  EXPECT_EQ(library().OSLockObject(second), nullptr) << "a block outlived the end";
}

}  // namespace
}  // namespace standin_tests
