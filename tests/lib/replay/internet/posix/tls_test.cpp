// The encrypted stream over the provider of this system.
#include <openssl/err.h>

#include <optional>

#include "lib/replay/internet/handshakes.h"
#include "lib/replay/internet/peer.h"
#include "lib/replay/internet/posix/certificates.h"
#include "platform/posix/openssl_connection.h"
#include "platform/security.h"

namespace {

using test::certificates;
using test::failureOf;
using test::handshakeStatus;
using test::Peer;

int released = 0;  // buffers
std::uint32_t encryptStatus = 0;
// The table is there before anything runs.
const platform::SecurityApi real = platform::security;  // NOLINT(*-interfaces-global-init)

// A TLS server at the other end of a played connection: it handles at once what the client sends.
class TlsServer : public Peer {
 public:
  explicit TlsServer(const std::string& name, const char* suites = "ALL", int version = 0x0303) {
    const std::string key = certificates().text() + "/" + name;
    settings_.reset(SSL_CTX_new(TLS_server_method()));
    SSL_CTX_set_min_proto_version(settings_.get(), version);
    SSL_CTX_set_max_proto_version(settings_.get(), version);
    SSL_CTX_set_cipher_list(settings_.get(), suites);
    SSL_CTX_use_certificate_chain_file(settings_.get(), (key + ".crt").c_str());
    SSL_CTX_use_PrivateKey_file(settings_.get(), (key + ".key").c_str(), SSL_FILETYPE_PEM);
    greeting.clear();
    platform::sockets.connect = [](platform::SocketHandle, const void*, int) {
      connection_.emplace(settings_.get());
      answer("", 1, ending);
      return 0;
    };
    platform::sockets.send = [](platform::SocketHandle, const char* bytes, int count, int) {
      connection_->put(bytes, static_cast<std::size_t>(count));
      const bool wasFinished = SSL_is_init_finished(ssl()) == 1;
      if (!wasFinished && SSL_accept(ssl()) == 1) TlsServer::send(greeting);
      char text[20'000];
      std::size_t size = 0;
      while (SSL_is_init_finished(ssl()) == 1 &&
             SSL_read_ex(ssl(), text, sizeof text, &size) == 1) {
        received.append(text, size);
      }
      sendOutput();
      return count;
    };
  }
  ~TlsServer() {
    connection_.reset();
    platform::security = real;
  }

  static void send(const std::string& text) {
    std::size_t written = 0;
    if (!text.empty()) SSL_write_ex(ssl(), text.data(), text.size(), &written);
    sendOutput();
  }

  // Both ends share OpenSSL's list of errors, on which the client must not find the server's.
  static void sendOutput() {
    ERR_clear_error();
    std::string bytes(connection_->pendingOutput(), '\0');
    connection_->takeOutput(bytes.data(), bytes.size());
    Peer::send(bytes, largest);
  }

  static SSL* ssl() { return connection_->ssl(); }

  static inline std::string greeting;            ///< text that is sent right behind the handshake
  static inline std::size_t largest = 1U << 30;  ///< what one receive of the client gives

 private:
  static inline platform::SslSettings settings_;
  static inline std::optional<platform::OpensslConnection> connection_;
};

class Stream : public test::SslStream {
 public:
  Stream()
      : ssl(Peer::address(), "127.0.0.1", test::trusting(certificates().path(), "authority")) {}

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

TEST(Tls, OnlyACertificateOfTheTrustedAndForTheHostIsGood) {
  std::optional<TlsServer> server;
  test::expectHandshakesOfTable(certificates().path(), [&](const std::string& certificate) {
    server.emplace(certificate);
    return Peer::address();
  });
  server.emplace("good");
  const Stream dotted;
  const auto asked = [] { return SSL_get_servername(TlsServer::ssl(), TLSEXT_NAMETYPE_host_name); };
  EXPECT_EQ(asked(), nullptr) << "an address is no name";
  const test::SslStream named(Peer::address(), "localhost", test::trusting({}, "*"));
  EXPECT_STREQ(asked(), "localhost");
  EXPECT_NE(Peer::calls.find("setsockopt,65535,4102,30000"), std::string::npos) << "a time-out";
}

TEST(Tls, OtherVersionsSuitesAndProtocolsFailTheHandshake) {
  for (const auto& [suites, version] :
       {std::pair("ALL", 0x0304), {"ECDHE-ECDSA-AES128-SHA256", 0x0303}}) {
    const TlsServer server("good", suites, version);
    EXPECT_EQ(failureOf([] { const Stream stream; }), handshakeStatus("0x80090331")) << suites;
  }
  const Peer peer;
  Peer::answer("HTTP/1.1 400 Bad Request\r\n\r\n", 99);
  EXPECT_EQ(failureOf([] { const Stream stream; }), handshakeStatus("0x80090326"));
  EXPECT_EQ(failureOf([] { const Stream stream; }),
            "internet.transport.connection_failed.connection_closed[recv() failed]");
}

TEST(Tls, BytesArriveEachWayHoweverTheyAreSplit) {
  std::string text;
  for (unsigned number = 0; text.size() < 100'000; ++number) {
    text += std::to_string(number) + std::string(number * 7 % 60, 'x') + "\r\n";
  }
  TlsServer server("good");
  for (const std::size_t largest : {1U, 5U, 1000U, 5000U}) {
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
    stream.write(text);
    EXPECT_TRUE(Peer::received == text) << largest;
    EXPECT_GT(stream.sent(), text.size() + std::size_t{7} * (5 + 8 + 16))
        << "encrypted bytes count";
  }
}

TEST(Tls, MessagesAreReleasedAndNotRepeated) {
  const TlsServer server("good");
  platform::SecurityApi& api = platform::security;
  api.EncryptMessage = [](platform::SecurityContext* context, std::uint32_t quality,
                          platform::SecurityBufferList* list, std::uint32_t sequence) {
    EXPECT_EQ(quality + sequence + list->ulVersion + list->pBuffers[3].BufferType, 0U);
    return encryptStatus != 0 ? encryptStatus : real.EncryptMessage(context, 0, list, 0);
  };
  released = 0;
  api.FreeContextBuffer = [](void*) { return static_cast<std::uint32_t>(++released); };
  TlsServer::greeting = "abc";
  Stream stream;
  TlsServer::send("de");
  TlsServer::send("f");
  Peer::pieces = {Peer::pieces[0] + Peer::pieces[1]};
  EXPECT_EQ(stream.next(), "abc") << "left over from the handshake";
  EXPECT_EQ(stream.next(), "de");
  Peer::ending = Peer::silence;
  EXPECT_EQ(stream.next(), "f") << "without a receive";
  EXPECT_NE(stream.next().find("timed_out"), std::string::npos);
  TlsServer::send("g");
  EXPECT_EQ(stream.next(), "g") << "as if nothing had been asked for";
  EXPECT_EQ(released, 5) << "each text, and what lay behind one";
  encryptStatus = 0x80090329;
  EXPECT_EQ(failureOf([&] { stream.write(std::string(16'384, 'y') + "z"); }),
            "internet.transport.security[EncryptMessage returned status 0x80090329]");
  encryptStatus = 0;
  stream.flush();
  EXPECT_EQ(Peer::received, "z");
}

TEST(Tls, WhatIsNoGoodMessageYieldsNoData) {
  const TlsServer server("good");
  for (std::size_t position = 0; position < 13 + 6 + 16; ++position) {
    Stream stream;
    TlsServer::send("abcde\n");
    char& damaged = Peer::pieces[0][position];
    damaged = static_cast<char>(damaged ^ (position == 3 ? '\x80' : '\x02'));
    // A length that grows has the stream wait for more; a huge one is refused at once.
    const char* const failure = position == 3 ? "0x80090326" : "0x8009030f";
    EXPECT_EQ(stream.next(), decryptStatus(failure)) << position;
  }
  Stream closing;
  SSL_shutdown(TlsServer::ssl());
  TlsServer::sendOutput();
  EXPECT_EQ(closing.next(), decryptStatus("0x00090317"));
  Stream renegotiating;
  SSL_renegotiate(TlsServer::ssl());
  SSL_do_handshake(TlsServer::ssl());
  TlsServer::sendOutput();
  EXPECT_EQ(renegotiating.next(), decryptStatus("0x00090321"));
}

}  // namespace
