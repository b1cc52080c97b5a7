// The encrypted stream over the provider of this system.
#include <optional>

#include "internet/handshakes.h"
#include "internet/posix/tls_server.h"

namespace {

using replay::internet::address::ip4;
using test::failureOf;
using test::handshakeStatus;
using test::TlsServer;

class Stream : public test::SslStream {
 public:
  explicit Stream(const std::string& trust = "authority")
      : ssl(ip4(), "127.0.0.1", test::trusting(test::certificates().path(), trust)) {}

  /// What is read next, or the failure.
  std::string next() {
    std::string text;
    const std::string failure = failureOf([&] { read_some(text); });
    return failure.empty() ? text : failure;
  }
};

std::string decryptStatus(const std::string& status) {
  return "internet.transport.security[DecryptMessage returned status " + status + "]";
}

constexpr const char* closed =
    "internet.transport.connection_failed.connection_closed[recv() failed]";

TEST(Tls, OnlyACertificateOfTheTrustedAndForTheHostIsGood) {
  std::optional<TlsServer> server;
  test::expectHandshakesOfTable(test::certificates().path(), [&](const std::string& certificate) {
    server.emplace(certificate);
    return ip4();
  });
  EXPECT_EQ(failureOf([] {
              const test::SslStream stream(ip4(), "a", {"no certificate", false});
            }),
            "internet.transport.security[AcquireCredentialsHandle returned status 0x80090325]");
}

TEST(Tls, OtherVersionsAndSuitesAreRefused) {
  const std::pair<const char*, int> rows[] = {{"ALL", 0x0304},
                                              {"ECDHE-ECDSA-AES128-SHA256", 0x0303},
                                              {"ECDHE-ECDSA-CHACHA20-POLY1305", 0x0303}};
  for (const auto& [suites, version] : rows) {
    const TlsServer server("good", suites, version);
    EXPECT_EQ(failureOf([] { const Stream stream; }), handshakeStatus("0x80090331")) << suites;
  }
}

TEST(Tls, PeerThatIsNoTlsServerOrSilentFailsTheHandshake) {
  const TlsServer server("good");
  platform::sockets.send = [](platform::SocketHandle, const char*, int count, int) {
    return count;
  };
  EXPECT_EQ(failureOf([] { const Stream stream; }), closed);
  TlsServer::ending = 10060;
  EXPECT_EQ(failureOf([] { const Stream stream; }),
            "internet.transport.connection_failed.connection_timed_out[recv() failed]");
  platform::sockets.send = [](platform::SocketHandle, const char*, int count, int) {
    TlsServer::waiting = "HTTP/1.1 400 Bad Request\r\n\r\n";
    return count;
  };
  EXPECT_EQ(failureOf([] { const Stream stream; }), handshakeStatus("0x80090326"));
}

TEST(Tls, BytesArriveEachWayHoweverTheyAreSplit) {
  std::string text;
  for (unsigned number = 0; text.size() < 100'000; ++number) {
    text += std::to_string(number) + std::string(number * 7 % 60, 'x') + "\r\n";
  }
  TlsServer server("good");
  for (const int largest : {1, 5, 1000, 5000}) {
    TlsServer::largest = largest;
    TlsServer::greeting = text.substr(0, 1000);
    Stream stream;
    std::string received;
    std::string line;
    TlsServer::send(text.substr(1000) + "x");
    while (received.size() < text.size()) {
      stream.read_line(line);
      received += line + "\r\n";
    }
    EXPECT_TRUE(received == text) << largest;
    EXPECT_EQ(stream.next(), "x");
    EXPECT_GT(stream.received(), text.size() + 7 * (5 + 8 + 16)) << "encrypted bytes count";

    const std::uint32_t before = stream.sent();
    for (std::size_t begin = 0, size = 1; begin < text.size(); begin += size) {
      size = (size * 7919 + 1) % 50'000 + 1;
      stream.write(std::string_view(text).substr(begin, size));
    }
    EXPECT_TRUE(TlsServer::received == text) << largest;
    EXPECT_GT(stream.sent() - before, text.size()) << "encrypted bytes count";
  }
}

// The provider's operations, with the types and sizes of the buffers that each was given.
std::string calls;
platform::SecurityApi real;
std::uint32_t encryptStatus = 0;

void note(const char* name, const platform::SecurityBufferList& list) {
  calls += name + std::to_string(list.ulVersion);
  for (std::uint32_t index = 0; index < list.cBuffers; ++index) {
    calls += "," + std::to_string(list.pBuffers[index].BufferType) + ":";
    calls += std::to_string(list.pBuffers[index].cbBuffer);
  }
  calls += " ";
}

class NotedTls : public testing::Test {
 protected:
  NotedTls() {
    real = platform::security;
    encryptStatus = 0;
    platform::SecurityApi& api = platform::security;
    api.EncryptMessage = [](platform::SecurityContext* context, std::uint32_t quality,
                            platform::SecurityBufferList* list, std::uint32_t sequence) {
      note("encrypt", *list);
      EXPECT_EQ(quality + sequence, 0U);
      return encryptStatus != 0 ? encryptStatus : real.EncryptMessage(context, 0, list, 0);
    };
    api.DecryptMessage = [](platform::SecurityContext* context, platform::SecurityBufferList* list,
                            std::uint32_t sequence, std::uint32_t* quality) {
      note("decrypt", *list);
      EXPECT_EQ(quality, nullptr);
      return real.DecryptMessage(context, list, sequence, quality);
    };
    api.FreeContextBuffer = [](void*) {
      calls += "free ";
      return std::uint32_t{0};
    };
    api.DeleteSecurityContext = [](platform::SecurityContext* context) {
      calls += "delete ";
      return real.DeleteSecurityContext(context);
    };
  }
  NotedTls(const NotedTls&) = delete;
  NotedTls& operator=(const NotedTls&) = delete;
  ~NotedTls() override { platform::security = real; }

  TlsServer server_{"good"};
};

TEST_F(NotedTls, MessagesOfASegmentNeedNoSocketAndReleaseTheirBuffers) {
  TlsServer::greeting = "abc";
  {
    Stream stream;
    TlsServer::send("de");
    TlsServer::send("f");
    calls.clear();
    EXPECT_EQ(stream.next(), "abc") << "left over from the handshake";
    EXPECT_EQ(stream.next(), "de");
    TlsServer::ending = 10060;
    EXPECT_EQ(stream.next(), "f");
    EXPECT_NE(stream.next().find("timed_out"), std::string::npos);
    TlsServer::send("g");
    EXPECT_EQ(stream.next(), "g") << "as if nothing had been asked for";
  }
  EXPECT_EQ(calls,
            "decrypt0,1:32,0:0,0:0,0:0 free decrypt0,1:61,0:0,0:0,0:0 free free "
            "decrypt0,1:30,0:0,0:0,0:0 free decrypt0,1:30,0:0,0:0,0:0 free delete ");
}

TEST_F(NotedTls, WritesLeaveAsMessagesOfTheLargestSizeAndAreNotRepeated) {
  Stream stream;
  calls.clear();
  stream.flush();
  EXPECT_EQ(calls, "") << "nothing to send, nothing to encrypt";
  stream.write(std::string(32'769, 'x'));
  EXPECT_EQ(calls,
            "encrypt0,7:13,1:16384,6:16,0:0 encrypt0,7:13,1:16384,6:16,0:0 "
            "encrypt0,7:13,1:1,6:16,0:0 ");
  encryptStatus = 0x80090329;
  EXPECT_EQ(failureOf([&] { stream.write(std::string(16'384, 'y') + "z"); }),
            "internet.transport.security[EncryptMessage returned status 0x80090329]");
  encryptStatus = 0;
  stream.flush();
  EXPECT_EQ(TlsServer::received, std::string(32'769, 'x') + "z");
}

TEST_F(NotedTls, WhatIsNoMessageEndsTheStream) {
  {
    Stream stream;
    TlsServer::sendClosing();
    EXPECT_EQ(stream.next(), decryptStatus("0x00090317"));
  }
  {
    Stream stream;
    TlsServer::sendWish();
    EXPECT_EQ(stream.next(), decryptStatus("0x00090321"));
  }
  // A message without data is no end.
  Stream stream;
  TlsServer::send("abc");
  platform::security.DecryptMessage = [](platform::SecurityContext*,
                                         platform::SecurityBufferList* list, std::uint32_t,
                                         std::uint32_t*) {
    platform::security.DecryptMessage = real.DecryptMessage;
    list->pBuffers[1] = {0, 1, list->pBuffers[0].pvBuffer};
    list->pBuffers[3] = {list->pBuffers[0].cbBuffer, 5, list->pBuffers[0].pvBuffer};
    return std::uint32_t{0};
  };
  EXPECT_EQ(stream.next(), "abc");
  EXPECT_EQ(stream.next(), closed);
}

TEST(Tls, FlippedBitNeverYieldsData) {
  const TlsServer server("good");
  for (std::size_t position = 0; position < 13 + 6 + 16; ++position) {
    Stream stream;
    TlsServer::send("abcde\n");
    char& byte = TlsServer::waiting[position];
    byte = static_cast<char>(byte ^ (position == 3 ? 0x80 : 0x02));
    // A length that grows has the stream wait for more; a huge one is refused at once.
    EXPECT_EQ(stream.next(), decryptStatus(position == 3 ? "0x80090326" : "0x8009030f"))
        << position;
  }
}

}  // namespace
