// The encrypted stream against a TLS server of another make.
#include <gtest/gtest.h>

#include <thread>

#include "internet/posix/tls_server.h"
#include "internet/tables.h"
#include "replay/internet/environment.h"
#include "replay/internet/ssl.h"

namespace {

using namespace replay::internet::transport;
using replay::internet::address::ip4;
using test::failureOf;
using test::TlsServer;
using Trust = tcp::ssl::certificate_trust;

constexpr std::size_t manyBytes = 10'000'000;
const std::string closedFailure =
    "internet.transport.connection_failed.connection_closed[recv() failed]";

Trust trusting(const std::string& name) {
  return {test::contentOf(test::certificates().path() / (name + ".der")), false};
}

// Many lines, none of which begins like a command of the server.
std::string manyLines() {
  std::string lines;
  lines.reserve(manyBytes + 100);
  for (unsigned number = 0; lines.size() < manyBytes; ++number) {
    lines += std::to_string(number) + std::string(number * 7 % 60, 'x') + "\r\n";
  }
  return lines;
}

std::string handshakeStatus(const std::string& status) {
  return "internet.transport.security[InitializeSecurityContext returned status " + status + "]";
}

class TlsPeer : public testing::Test {
 protected:
  static ip4 addressOf(const TlsServer& server) { return {"127.0.0.1", server.port()}; }

  test::Tables tables_;

 private:
  replay::internet::environment environment_;
};

TEST_F(TlsPeer, TenMillionBytesArriveEachWay) {
  const std::string lines = manyLines();
  const TlsServer server("good", {"-quiet"}, lines);
  tcp::ssl stream(addressOf(server), "127.0.0.1", trusting("authority"));
  std::string received;
  std::string line;
  // The byte behind the last line never comes.
  while (received.size() + line.size() < lines.size() - 200) {
    stream.read_line(line);
    received += line + "\r\n";
  }
  while (received.size() < lines.size()) {
    stream.read_some(line);
    received += line;
  }
  EXPECT_TRUE(received == lines);
  EXPECT_GT(stream.received(), lines.size());

  for (std::size_t begin = 0, size = 1; begin < lines.size();) {
    size = (size * 7919 + 1) % 50'000 + 1;
    stream.write(std::string_view(lines).substr(begin, size));
    begin += size;
  }
  // The server writes down what it gets when it likes to.
  while (server.received() < lines.size()) std::this_thread::yield();
  EXPECT_TRUE(server.output() == lines);
}

enum Certificate { good, expired, selfSigned };

TEST_F(TlsPeer, OnlyACertificateOfTheTrustedAndForTheHostIsGood) {
  const struct {
    Certificate certificate;
    const char* host;
    Trust trust;
    std::string expected;
  } table[] = {
      {good, "127.0.0.1", trusting("authority"), ""},
      {good, "localhost", trusting("authority"), ""},
      {good, "other.example", trusting("authority"), handshakeStatus("0x80090322")},
      {good, "127.0.0.2", trusting("authority"), handshakeStatus("0x80090322")},
      {good, "", trusting("authority"), handshakeStatus("0x80090322")},
      {good, "127.0.0.1", {}, handshakeStatus("0x80090325")},
      {good, "127.0.0.1", trusting("self_signed"), handshakeStatus("0x80090325")},
      {expired, "127.0.0.1", trusting("authority"), handshakeStatus("0x80090328")},
      {selfSigned, "127.0.0.1", {}, handshakeStatus("0x80090325")},
      {selfSigned, "127.0.0.1", trusting("self_signed"), ""},
      {selfSigned, "other.example", trusting("self_signed"), handshakeStatus("0x80090322")},
      {expired, "", {"", true}, ""},
      {good,
       "127.0.0.1",
       {"no certificate", false},
       "internet.transport.security[AcquireCredentialsHandle returned status 0x80090325]"},
  };
  const TlsServer servers[] = {
      {"good", {"-quiet"}}, {"expired", {"-quiet"}}, {"self_signed", {"-quiet"}}};
  for (const auto& row : table) {
    const ip4 address = addressOf(servers[row.certificate]);
    EXPECT_EQ(failureOf([&] { const tcp::ssl stream(address, row.host, row.trust); }), row.expected)
        << row.certificate << " " << row.host;
  }
}

TEST_F(TlsPeer, OtherVersionsAndSuitesAreRefused) {
  const std::vector<std::string> table[] = {
      {"-quiet", "-tls1_3"},
      {"-quiet", "-tls1_2", "-cipher", "ECDHE-ECDSA-AES128-SHA256"},
      {"-quiet", "-tls1_2", "-cipher", "ECDHE-ECDSA-CHACHA20-POLY1305"},
  };
  for (const auto& options : table) {
    const TlsServer server("good", options);
    EXPECT_EQ(failureOf([&] {
                const tcp::ssl stream(addressOf(server), "127.0.0.1", trusting("authority"));
              }),
              handshakeStatus("0x80090331"))
        << options.back();
  }
}

TEST_F(TlsPeer, PeersThatCloseSayWhetherTheyMeantTo) {
  std::string bytes;
  {
    const TlsServer server("good", {"-rev"});
    tcp::ssl stream(addressOf(server), "127.0.0.1", trusting("authority"));
    stream.write("CLOSE\n");
    EXPECT_EQ(failureOf([&] { stream.read_some(bytes); }),
              "internet.transport.security[DecryptMessage returned status 0x00090317]");
  }
  {
    TlsServer server("good", {"-quiet"});
    tcp::ssl stream(addressOf(server), "127.0.0.1", trusting("authority"));
    server.kill();
    EXPECT_EQ(failureOf([&] { stream.read_some(bytes); }), closedFailure);
  }
  {
    // A process that dies with bytes unread resets its connection.
    TlsServer server("good", {"-quiet"});
    tcp::ssl stream(addressOf(server), "127.0.0.1", trusting("authority"));
    server.suspend();
    stream.write("unread");
    server.kill();
    EXPECT_EQ(failureOf([&] { stream.read_some(bytes); }),
              "internet.transport.connection_failed.connection_reset[recv() failed]");
  }
}

TEST_F(TlsPeer, SilenceInTheHandshakeIsATimeOutOfTheTransport) {
  platform::sockets.recv = [](platform::SocketHandle, char*, int, int) { return -1; };
  platform::sockets.WSAGetLastError = [] { return 10060; };
  const TlsServer server("good", {"-quiet"});
  EXPECT_EQ(failureOf([&] { const tcp::ssl stream(addressOf(server), "127.0.0.1"); }),
            "internet.transport.connection_failed.connection_timed_out[recv() failed]");
}

// A bit of the bytes that are received next, by its place among them.
struct Flip {
  std::size_t position = 0;
  int mask = 0;
} flip;

TEST_F(TlsPeer, FlippedBitNeverYieldsData) {
  const TlsServer server("good", {"-rev"});
  static platform::SocketsApi original;
  original = platform::sockets;
  constexpr std::size_t recordSize = 13 + 6 + 16;
  for (flip.position = 0; flip.position < recordSize; ++flip.position) {
    // A length that grows has the stream wait for more; a huge one is refused at once.
    flip.mask = flip.position == 3 ? 0x80 : 0x02;
    tcp::ssl stream(addressOf(server), "127.0.0.1", trusting("authority"));
    platform::sockets.recv = [](platform::SocketHandle socket, char* bytes, int count, int flags) {
      const int received = original.recv(socket, bytes, count, flags);
      if (received > static_cast<int>(flip.position)) {
        bytes[flip.position] = static_cast<char>(bytes[flip.position] ^ flip.mask);
      }
      return received;
    };
    stream.write("abcde\n");
    std::string bytes;
    const std::string failure = failureOf([&] { stream.read_some(bytes); });
    EXPECT_TRUE(failure.starts_with("internet.transport.security[DecryptMessage returned status"))
        << flip.position << failure;
    EXPECT_EQ(bytes, "");
    platform::sockets = original;
  }
}

}  // namespace
