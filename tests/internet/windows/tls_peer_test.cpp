// The encrypted stream against a TLS server of another make, which runs outside of the Windows
// programs' system: the environment tells where. Sending is not tried, since not every provider
// there fills the sizes that it asks for.
#include <gtest/gtest.h>

#include <cstdlib>

#include "internet/tables.h"
#include "replay/internet/environment.h"
#include "replay/internet/ssl.h"
#include "support/temporary_folder.h"

namespace {

using namespace replay::internet::transport;
using replay::internet::address::ip4;
using test::failureOf;
using Trust = tcp::ssl::certificate_trust;

std::string handshakeStatus(const std::string& status) {
  return "internet.transport.security[InitializeSecurityContext returned status " + status + "]";
}

// TLS_PEERS is the folder with the certificates and, for each server, a file with its port.
TEST(TlsPeer, HandshakesAndReceives) {
  const char* const folder = std::getenv("TLS_PEERS");
  ASSERT_NE(folder, nullptr) << "no TLS servers; \"scripts/test windows\" starts them";
  const replay::internet::environment environment;
  const auto file = [folder](const std::string& name) {
    return test::contentOf(std::filesystem::path(folder) / name);
  };
  const auto addressOf = [&](const std::string& name) -> ip4 {
    return {"127.0.0.1", static_cast<std::uint16_t>(std::stoi(file(name + ".port")))};
  };
  const Trust authority{file("authority.der"), false};
  const Trust theSystem;
  const Trust everything{"", true};
  const Trust selfSigned{file("self_signed.der"), false};
  const struct {
    const char* certificate;
    const char* host;
    Trust trust;
    std::string expected;
  } table[] = {
      {"good", "other.example", authority, handshakeStatus("0x80090322")},
      {"good", "", authority, handshakeStatus("0x80090322")},
      {"good", "127.0.0.2", authority, handshakeStatus("0x80090322")},
      {"good", "127.0.0.1", theSystem, handshakeStatus("0x80090325")},
      {"good", "127.0.0.1", selfSigned, handshakeStatus("0x80090325")},
      {"expired", "127.0.0.1", authority, handshakeStatus("0x80090328")},
      {"expired", "", everything, ""},
      {"self_signed", "127.0.0.1", theSystem, handshakeStatus("0x80090325")},
      {"self_signed", "localhost", selfSigned, ""},
  };
  for (const auto& row : table) {
    const ip4 address = addressOf(row.certificate);
    EXPECT_EQ(failureOf([&] { const tcp::ssl stream(address, row.host, row.trust); }), row.expected)
        << row.certificate << " " << row.host;
  }

  tcp::ssl stream(addressOf("lines"), "localhost", authority);
  const std::string lines = file("lines.txt");
  std::string received;
  while (received.size() < lines.size()) {
    std::string bytes;
    stream.read_some(bytes);
    received += bytes;
  }
  EXPECT_TRUE(received == lines);
}

}  // namespace
