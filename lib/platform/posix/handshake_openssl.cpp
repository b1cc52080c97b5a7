// The client's side of a handshake, over OpenSSL.
#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/x509v3.h>

#include <array>

#include "platform/posix/openssl_connection.h"
#include "platform/posix/openssl_records.h"
#include "platform/security.h"

namespace platform {
namespace {

constexpr const char* credentials = "AcquireCredentialsHandle";
constexpr const char* handshake = "InitializeSecurityContext";

constexpr std::size_t blockSize = 4096;

bool isDottedAddress(const std::string& host) {
  in_addr ignored{};
  return inet_pton(AF_INET, host.c_str(), &ignored) == 1;
}

void trustOnly(SSL_CTX* settings, const std::string& der) {
  const auto* position = reinterpret_cast<const unsigned char*>(der.data());
  const std::unique_ptr<X509, OpensslFree<X509_free>> certificate(
      d2i_X509(nullptr, &position, static_cast<long>(der.size())));
  if (certificate == nullptr) throw SecurityFailure(credentials, sec::e_untrusted_root);
  X509_STORE* const store = SSL_CTX_get_cert_store(settings);
  X509_STORE_add_cert(store, certificate.get());
  // The certificate may be the server's own, with whoever signed it unknown.
  X509_STORE_set_flags(store, X509_V_FLAG_PARTIAL_CHAIN);
}

SslSettings settingsFor(const CertificateTrust& trust) {
  SslSettings settings(SSL_CTX_new(TLS_client_method()));
  if (settings == nullptr) throw SecurityFailure(credentials, sec::e_internal_error);
  SSL_CTX_set_min_proto_version(settings.get(), TLS1_2_VERSION);
  SSL_CTX_set_max_proto_version(settings.get(), TLS1_2_VERSION);
  SSL_CTX_set_cipher_list(settings.get(), "AESGCM:!aNULL:!PSK:!SRP");
  // The result of the check is asked for at the end; it does not end the handshake, whose last
  // words could fail to be sent.
  SSL_CTX_set_verify(settings.get(), SSL_VERIFY_NONE, nullptr);
  if (trust.certificate.empty()) {
    SSL_CTX_set_default_verify_paths(settings.get());
  } else {
    trustOnly(settings.get(), trust.certificate);
  }
  return settings;
}

void setHost(SSL* ssl, std::string host) {
  if (isDottedAddress(host)) {
    X509_VERIFY_PARAM_set1_ip_asc(SSL_get0_param(ssl), host.c_str());
  } else {
    SSL_set1_host(ssl, host.c_str());
    // The name that the server is asked for; OpenSSL's macro for it casts in C's way.
    SSL_ctrl(ssl, SSL_CTRL_SET_TLSEXT_HOSTNAME, TLSEXT_NAMETYPE_host_name, host.data());
  }
}

void sendPending(OpensslConnection& connection, const HandshakeStream& stream) {
  std::vector<char> bytes(connection.pendingOutput());
  if (bytes.empty()) return;
  stream.send(bytes.data(), connection.takeOutput(bytes.data(), bytes.size()));
}

// A peer that has no version or suite in common says so in an alert of its own.
std::uint32_t statusOfRefusal() {
  switch (ERR_GET_REASON(ERR_peek_error())) {
    case SSL_R_TLSV1_ALERT_PROTOCOL_VERSION:
    case SSL_R_SSLV3_ALERT_HANDSHAKE_FAILURE:
    case SSL_R_UNSUPPORTED_PROTOCOL:
      return sec::e_algorithm_mismatch;
    default:
      return sec::e_illegal_message;
  }
}

void establish(OpensslConnection& connection, const HandshakeStream& stream) {
  std::array<char, blockSize> block{};
  for (;;) {
    ERR_clear_error();
    const int result = SSL_connect(connection.ssl());
    const std::uint32_t refusal = statusOfRefusal();
    sendPending(connection, stream);
    if (result == 1) return;
    if (SSL_get_error(connection.ssl(), result) != SSL_ERROR_WANT_READ) {
      throw SecurityFailure(handshake, refusal);
    }
    connection.put(block.data(), stream.receive(block.data(), block.size()));
  }
}

void checkCertificate(const OpensslConnection& connection) {
  switch (SSL_get_verify_result(connection.ssl())) {
    case X509_V_OK:
      return;
    case X509_V_ERR_CERT_HAS_EXPIRED:
    case X509_V_ERR_CERT_NOT_YET_VALID:
      throw SecurityFailure(handshake, sec::e_cert_expired);
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH:
      throw SecurityFailure(handshake, sec::e_wrong_principal);
    default:
      throw SecurityFailure(handshake, sec::e_untrusted_root);
  }
}

}  // namespace

SecureStream clientHandshake(const HandshakeStream& stream, const std::string& host,
                             const CertificateTrust& trust) {
  const SslSettings settings = settingsFor(trust);
  auto connection = std::make_unique<OpensslConnection>(settings.get());
  if (!connection->isValid()) throw SecurityFailure(credentials, sec::e_internal_error);
  // OpenSSL takes no name for any name.
  if (host.empty() && !trust.acceptEverything) {
    throw SecurityFailure(handshake, sec::e_wrong_principal);
  }
  setHost(connection->ssl(), host);
  establish(*connection, stream);
  if (!trust.acceptEverything) checkCertificate(*connection);

  SecureStream result{};
  result.leftOver.resize(connection->pendingInput());
  connection->takeInput(result.leftOver.data(), result.leftOver.size());
  result.sizes = {recordHeaderSize, recordTrailerSize, recordTextSize};
  result.context.lower = reinterpret_cast<std::uintptr_t>(connection.release());
  return result;
}

}  // namespace platform
