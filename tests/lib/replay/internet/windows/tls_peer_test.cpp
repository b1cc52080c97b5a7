// The encrypted stream against a TLS server of another make, which runs outside of the Windows
// programs' system: the environment tells where. Sending is not tried, since not every provider
// there fills the sizes that it asks for.
#include <cstdlib>

#include "lib/replay/internet/handshakes.h"
#include "replay/internet/environment.h"

namespace {

using replay::internet::address::ip4;

// TLS_PEERS is the folder with the certificates and, for each server, a file with its port.
TEST(TlsPeer, HandshakesAndReceives) {
  const char* const peers = std::getenv("TLS_PEERS");
  ASSERT_NE(peers, nullptr) << "no TLS servers; \"scripts/test windows\" starts them";
  const std::filesystem::path folder = peers;
  const replay::internet::environment environment;
  const auto addressOf = [&](const std::string& name) -> ip4 {
    return {"127.0.0.1",
            static_cast<std::uint16_t>(std::stoi(test::contentOf(folder / (name + ".port"))))};
  };
  test::expectHandshakesOfTable(folder, addressOf);

  test::SslStream stream(addressOf("lines"), "localhost", test::trusting(folder, "authority"));
  const std::string lines = test::contentOf(folder / "lines.txt");
  std::string received;
  while (received.size() < lines.size()) {
    std::string bytes;
    stream.read_some(bytes);
    received += bytes;
  }
  EXPECT_TRUE(received == lines);
}

}  // namespace
