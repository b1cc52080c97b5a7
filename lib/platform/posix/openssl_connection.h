// One TLS connection of OpenSSL that reads and writes memory only, so that the caller carries the
// bytes.
#pragma once

#include <openssl/ssl.h>

#include <cstddef>
#include <memory>

namespace platform {

template <auto Free>
struct OpensslFree {
  template <typename Object>
  void operator()(Object* object) const {
    Free(object);
  }
};

using SslSettings = std::unique_ptr<SSL_CTX, OpensslFree<SSL_CTX_free>>;

class OpensslConnection {
 public:
  /// Null settings, or memory that is short, give a connection that is not valid.
  explicit OpensslConnection(SSL_CTX* settings);

  bool isValid() const { return ssl_ != nullptr && incoming_ != nullptr && outgoing_ != nullptr; }
  SSL* ssl() const { return ssl_.get(); }

  /// Gives the connection bytes of the peer.
  void put(const char* bytes, std::size_t count);

  /// Bytes of the peer that the connection has not looked at.
  std::size_t pendingInput() const;
  std::size_t takeInput(char* bytes, std::size_t size);

  /// Bytes for the peer. Gives how many there were, at most `size`.
  std::size_t pendingOutput() const;
  std::size_t takeOutput(char* bytes, std::size_t size);
  void dropOutput();

 private:
  std::unique_ptr<SSL, OpensslFree<SSL_free>> ssl_;
  BIO* incoming_ = nullptr;  // both belong to ssl_
  BIO* outgoing_ = nullptr;
};

}  // namespace platform
