#include "replay/internet/ssl.h"

#include <gtest/gtest.h>

#include <map>

#include "internet/script.h"

namespace {

using namespace replay::internet::transport;
using platform::SecurityBufferList;
using platform::SecurityContext;
using test::failureOf;
using test::Script;

constexpr platform::SecurityStreamSizes sizes = {3, 2, 4};
constexpr std::uint32_t incomplete = 0x80090318;

// A provider whose messages are "<", the length as one digit, ">", the text in upper case, and
// "$\n". A length that stands in `statuses` gives that status instead.
class Provider {
 public:
  static inline std::string calls;
  static inline std::map<char, std::uint32_t> statuses;
  static inline std::uint32_t encryptStatus;

  Provider() {
    calls.clear();
    statuses.clear();
    encryptStatus = 0;
    platform::security = {encrypt, decrypt, release, destroy};
  }
  Provider(const Provider&) = delete;
  Provider& operator=(const Provider&) = delete;
  ~Provider() { platform::security = original_; }

 private:
  static std::uint32_t encrypt(SecurityContext* context, std::uint32_t quality,
                               SecurityBufferList* list, std::uint32_t sequence) {
    note("encrypt", list);
    EXPECT_EQ(context->lower + quality + sequence, 7U);
    if (encryptStatus != 0) return encryptStatus;
    auto* const text = static_cast<char*>(list->pBuffers[1].pvBuffer);
    const std::uint32_t size = list->pBuffers[1].cbBuffer;
    std::transform(text, text + size, text, [](char c) { return static_cast<char>(c - 32); });
    const std::string header = "<" + std::to_string(size) + ">";
    header.copy(static_cast<char*>(list->pBuffers[0].pvBuffer), header.size());
    *static_cast<char*>(list->pBuffers[2].pvBuffer) = '$';
    list->pBuffers[2].cbBuffer = 1;  // what it filled of the trailer does not count
    return 0;
  }

  static std::uint32_t decrypt(SecurityContext*, SecurityBufferList* list, std::uint32_t,
                               std::uint32_t* quality) {
    note("decrypt", list);
    EXPECT_EQ(quality, nullptr);
    platform::SecurityBuffer* const buffers = list->pBuffers;
    auto* const input = static_cast<char*>(buffers[0].pvBuffer);
    const std::uint32_t size = buffers[0].cbBuffer;
    for (std::uint32_t index = 0; index < 4; ++index) buffers[index].BufferType = 99;
    if (size < 3) return incomplete;
    if (statuses.contains(input[1])) return statuses[input[1]];
    const auto length = static_cast<std::uint32_t>(input[1] - '0');
    const std::uint32_t whole = 3 + length + 2;
    if (size < whole) return incomplete;
    std::transform(input + 3, input + 3 + length, input + 3,
                   [](char c) { return static_cast<char>(c + 32); });
    buffers[1] = {length, 1, input + 3};
    if (size > whole) buffers[3] = {size - whole, 5, input + whole};
    return 0;
  }

  static std::uint32_t release(void* pointer) {
    calls += pointer == nullptr ? "free-null " : "free ";
    return 0;
  }

  static std::uint32_t destroy(SecurityContext* context) {
    EXPECT_EQ(context->lower, 7U);
    calls += "delete ";
    return 0;
  }

  static void note(const char* name, const SecurityBufferList* list) {
    calls += std::string(name) + std::to_string(list->ulVersion);
    for (std::uint32_t index = 0; index < list->cBuffers; ++index) {
      const auto& [size, type, pointer] = list->pBuffers[index];
      calls += "," + std::to_string(type) + ":" + std::to_string(size);
    }
    calls += " ";
  }

  platform::SecurityApi original_ = platform::security;
};

class Stream : public tcp::ssl {
 public:
  explicit Stream(const std::string& leftOver = {})
      : ssl({{7, 0}, sizes, {leftOver.begin(), leftOver.end()}}) {}

  std::string next() {
    std::string bytes;
    read_some(bytes);
    return bytes;
  }
};

const std::string abc = "<3>ABC$\n";
const std::string empty = "<0>$\n";

TEST(Ssl, WritesLeaveAsMessagesOfTheLargestSizeEachAtFullLength) {
  const Script script;
  const Provider provider;
  Stream stream;
  stream.flush();
  EXPECT_EQ(Provider::calls, "") << "nothing to send, nothing to encrypt";
  stream.write("abcdefghij");
  EXPECT_EQ(Script::sent, std::string("<4>ABCD$\0<4>EFGH$\0<2>IJ$\0", 25));
  EXPECT_EQ(Provider::calls,
            "encrypt0,7:3,1:4,6:2,0:0 encrypt0,7:3,1:4,6:2,0:0 encrypt0,7:3,1:2,6:2,0:0 ");
  EXPECT_EQ(stream.sent(), 25U) << "the counters count encrypted bytes";
  Provider::encryptStatus = 0x80090329;
  EXPECT_EQ(failureOf([&] { stream.write("klmnop"); }),
            "internet.transport.security[EncryptMessage returned status 0x80090329]");
  Provider::encryptStatus = 0;
  Script::sent.clear();
  stream.flush();
  EXPECT_EQ(Script::sent, std::string("<2>OP$\0", 7)) << "what failed is gone, what waited is not";
}

TEST(Ssl, MessagesArriveWholeHoweverTheyAreSplit) {
  const std::string bytes = abc + empty + "<4>DEFG$\n" + "<1>H$\n";
  const Provider provider;
  for (std::size_t size = 1; size <= bytes.size(); ++size) {
    const Script script;
    Script::deliver(bytes, size);
    Stream stream;
    EXPECT_EQ(stream.next(), "abc") << size;
    EXPECT_EQ(stream.next(), "defg") << size;
    EXPECT_EQ(stream.next(), "h") << size;
    EXPECT_EQ(failureOf([&] { stream.next(); }),
              "internet.transport.connection_failed.connection_closed[recv() failed]");
  }
}

TEST(Ssl, SecondMessageOfASegmentNeedsNoSocket) {
  const Script script;
  const Provider provider;
  {
    Stream stream(abc + abc);
    EXPECT_EQ(stream.next(), "abc");
    EXPECT_EQ(stream.next(), "abc");
    EXPECT_EQ(Script::calls, "") << "left over from the handshake";
    Script::pieces = {empty, abc};
    EXPECT_EQ(stream.next(), "abc");
    EXPECT_EQ(Script::calls, "recv,4096,0 recv,4096,0");
  }
  EXPECT_EQ(Provider::calls,
            "decrypt0,1:16,0:0,0:0,0:0 free free decrypt0,1:8,0:0,0:0,0:0 free "
            "decrypt0,1:5,0:0,0:0,0:0 free decrypt0,1:8,0:0,0:0,0:0 free delete ");
}

TEST(Ssl, WhatTheProviderAnswersOtherwiseEndsTheStream) {
  const std::pair<std::uint32_t, std::string> table[] = {
      {0x00090317, "0x00090317"},  // the peer's notification that it closes
      {0x00090321, "0x00090321"},  // a wish for a new handshake
      {0x8009030F, "0x8009030f"},
      {0x12345678, "0x12345678"},
  };
  const Provider provider;
  for (const auto& [status, text] : table) {
    const Script script;
    Stream stream(abc + "<x>");
    Provider::statuses = {{'x', status}};
    EXPECT_EQ(stream.next(), "abc");
    EXPECT_EQ(failureOf([&] { stream.next(); }),
              "internet.transport.security[DecryptMessage returned status " + text + "]");
  }
  const Script script;
  Script::ending = 10060;
  Stream stream("<3>A");
  EXPECT_EQ(failureOf([&] { stream.next(); }),
            "internet.transport.connection_failed.connection_timed_out[recv() failed]");
}

}  // namespace
