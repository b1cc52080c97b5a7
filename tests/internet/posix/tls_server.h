// A TLS server in the test itself, at the other end of a played connection: it handles at once what
// the client sends, and what it answers waits until the client receives.
#pragma once

#include <string>

#include "internet/tables.h"
#include "support/temporary_folder.h"

namespace test {

/// A folder with the certificates of make_certificates.sh, made once for a program.
const TemporaryFolder& certificates();

class TlsServer : public Tables {
 public:
  /// Serves each connection with the certificate `name` of the folder above, one of the suites and
  /// the given version of the protocol.
  explicit TlsServer(const std::string& name, const char* suites = "ALL", int version = 0x0303);
  ~TlsServer();

  static void send(const std::string& text);  ///< as messages of the largest size
  static void sendClosing();                  ///< that it closes
  static void sendWish();                     ///< for a new handshake

  static inline std::string waiting;   ///< what the client receives next
  static inline std::string received;  ///< text that has come
  static inline std::string greeting;  ///< text that is sent right behind the handshake
  static inline int largest = 0;       ///< what one receive of the client gives
  static inline int ending = 0;        ///< the number of the error behind that, 0 for a close
};

}  // namespace test
