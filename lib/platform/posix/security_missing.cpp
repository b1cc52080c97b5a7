// The security provider of a build without OpenSSL.
#include "platform/security.h"

namespace platform {
namespace {

std::uint32_t encrypt(SecurityContext* /*context*/, std::uint32_t /*quality*/,
                      SecurityBufferList* /*message*/, std::uint32_t /*sequence*/) {
  return sec::e_unsupported_function;
}

std::uint32_t decrypt(SecurityContext* /*context*/, SecurityBufferList* /*message*/,
                      std::uint32_t /*sequence*/, std::uint32_t* /*quality*/) {
  return sec::e_unsupported_function;
}

std::uint32_t freeBuffer(void* /*buffer*/) { return sec::ok; }

std::uint32_t deleteContext(SecurityContext* /*context*/) { return sec::ok; }

}  // namespace

SecurityApi security{encrypt, decrypt, freeBuffer, deleteContext};

SecureStream clientHandshake(const HandshakeStream& /*stream*/, const std::string& /*host*/,
                             const CertificateTrust& /*trust*/) {
  throw SecurityFailure("AcquireCredentialsHandle", sec::e_unsupported_function);
}

}  // namespace platform
