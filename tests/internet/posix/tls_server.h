// "openssl s_server" on this machine, as a TLS server of another make.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace test {

/// A folder with the certificates of make_certificates.sh, made once for a program.
const TemporaryFolder& certificates();

class TlsServer {
 public:
  /// Serves with the certificate `name` of the folder above and further options; sends `input` to
  /// the first client.
  TlsServer(const std::string& name, const std::vector<std::string>& options,
            const std::string& input = {});
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;
  ~TlsServer();

  std::uint16_t port() const { return port_; }

  /// What it has received, and what it says of itself unless it is quiet.
  std::string output() const;

  /// The bytes of that.
  std::size_t received() const;

  void suspend() const;
  void kill();

 private:
  TemporaryFolder folder_;
  std::uint16_t port_ = 0;
  int input_ = -1;  // stays open: the server ends a connection at the end of its input
  pid_t feeder_ = 0;
  pid_t process_ = 0;
};

}  // namespace test
