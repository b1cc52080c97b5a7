// The handshakes of certificates.txt, for whatever servers there are.
#pragma once

#include <gtest/gtest.h>

#include "lib/replay/internet/tables.h"
#include "replay/internet/ssl.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

namespace test {

using SslStream = replay::internet::transport::tcp::ssl;

inline std::string handshakeStatus(const std::string& status) {
  return "internet.transport.security[InitializeSecurityContext returned status " + status + "]";
}

/// What `name` stands for in a row; certificates lie in `folder`.
inline SslStream::certificate_trust trusting(const std::filesystem::path& folder,
                                             const std::string& name) {
  const bool isCertificate = name != "-" && name != "*";
  return {isCertificate ? contentOf(folder / (name + ".der")) : "", name == "*"};
}

/// `addressOf` gives the address of a server with a row's certificate.
template <typename AddressOf>
void expectHandshakesOfTable(const std::filesystem::path& folder, AddressOf addressOf) {
  for (const TextRow& row : rowsOf("lib/replay/internet/certificates.txt", 4)) {
    const auto address = addressOf(row.fields[0]);
    const auto trust = trusting(folder, row.fields[2]);
    const std::string failure =
        failureOf([&] { const SslStream stream(address, row.fields[1], trust); });
    EXPECT_EQ(failure, row.fields[3].empty() ? "" : handshakeStatus(row.fields[3])) << row.where;
  }
  const auto address = addressOf("good");
  EXPECT_EQ(failureOf([&] {
              const SslStream stream(address, "a", {"no certificate", false});
            }),
            "internet.transport.security[AcquireCredentialsHandle returned status 0x80090325]");
}

}  // namespace test
