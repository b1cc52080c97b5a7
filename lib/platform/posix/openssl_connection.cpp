#include "platform/posix/openssl_connection.h"

namespace platform {
namespace {

std::size_t take(BIO* memory, char* bytes, std::size_t size) {
  std::size_t count = 0;
  return BIO_read_ex(memory, bytes, size, &count) == 1 ? count : 0;
}

}  // namespace

OpensslConnection::OpensslConnection(SSL_CTX* settings)
    : ssl_(settings == nullptr ? nullptr : SSL_new(settings)) {
  if (ssl_ == nullptr) return;
  incoming_ = BIO_new(BIO_s_mem());
  outgoing_ = BIO_new(BIO_s_mem());
  SSL_set_bio(ssl_.get(), incoming_, outgoing_);
}

void OpensslConnection::put(const char* bytes, std::size_t count) {
  std::size_t written = 0;
  BIO_write_ex(incoming_, bytes, count, &written);
}

std::size_t OpensslConnection::pendingInput() const { return BIO_ctrl_pending(incoming_); }

std::size_t OpensslConnection::takeInput(char* bytes, std::size_t size) {
  return take(incoming_, bytes, size);
}

std::size_t OpensslConnection::pendingOutput() const { return BIO_ctrl_pending(outgoing_); }

std::size_t OpensslConnection::takeOutput(char* bytes, std::size_t size) {
  return take(outgoing_, bytes, size);
}

void OpensslConnection::dropOutput() { BIO_reset(outgoing_); }

}  // namespace platform
