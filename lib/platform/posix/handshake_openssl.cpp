// The client's side of a handshake, over OpenSSL.
#include <arpa/inet.h>
#include <openssl/err.h>
#include <openssl/x509v3.h>

#include <array>

#include "platform/certificate_names.h"
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

bool isOutOfTime(int fault) {
  return fault == X509_V_ERR_CERT_HAS_EXPIRED || fault == X509_V_ERR_CERT_NOT_YET_VALID;
}

// Whatever else is wrong with a chain goes before its time: the check goes on to look for that.
int goOnBehindFault(int isGood, X509_STORE_CTX* chain) {
  return isGood == 1 || isOutOfTime(X509_STORE_CTX_get_error(chain)) ? 1 : 0;
}

// OpenSSL ends a chain at the trusted certificate that it finds as an issuer, but not at the
// server's own: behind that it looks at whatever the server sent.
int checkChain(X509_STORE_CTX* chain, void* trusted) {
  if (X509_cmp(X509_STORE_CTX_get0_cert(chain), static_cast<X509*>(trusted)) == 0) {
    X509_STORE_CTX_set0_untrusted(chain, nullptr);
  }
  return X509_verify_cert(chain);
}

void trustOnly(SSL_CTX* settings, const std::string& der) {
  const auto* position = reinterpret_cast<const unsigned char*>(der.data());
  const std::unique_ptr<X509, OpensslFree<X509_free>> certificate(
      d2i_X509(nullptr, &position, static_cast<long>(der.size())));
  if (certificate == nullptr) throw SecurityFailure(credentials, sec::e_untrusted_root);
  X509_STORE* const store = SSL_CTX_get_cert_store(settings);
  X509_STORE_add_cert(store, certificate.get());  // which keeps it
  // The certificate may be the server's own, with whoever signed it unknown.
  X509_STORE_set_flags(store, X509_V_FLAG_PARTIAL_CHAIN);
  SSL_CTX_set_cert_verify_callback(settings, checkChain, certificate.get());
}

SslSettings settingsFor(const CertificateTrust& trust) {
  SslSettings settings(SSL_CTX_new(TLS_client_method()));
  if (settings == nullptr) throw SecurityFailure(credentials, sec::e_internal_error);
  SSL_CTX_set_min_proto_version(settings.get(), TLS1_2_VERSION);
  SSL_CTX_set_max_proto_version(settings.get(), TLS1_2_VERSION);
  SSL_CTX_set_cipher_list(settings.get(), "AESGCM:!aNULL:!PSK:!SRP");
  // The result of the check is asked for at the end; it does not end the handshake, whose last
  // words could fail to be sent.
  SSL_CTX_set_verify(settings.get(), SSL_VERIFY_NONE, goOnBehindFault);
  if (trust.certificate.empty()) {
    SSL_CTX_set_default_verify_paths(settings.get());
  } else {
    trustOnly(settings.get(), trust.certificate);
  }
  return settings;
}

// The name that the server is asked for; OpenSSL's macro for it casts in C's way.
void setHost(SSL* ssl, std::string host) {
  if (isDottedAddress(host)) return;
  SSL_ctrl(ssl, SSL_CTRL_SET_TLSEXT_HOSTNAME, TLSEXT_NAMETYPE_host_name, host.data());
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

// The value of the extension; empty if the certificate has none.
std::string_view alternativeNames(const X509* certificate) {
  const int index = X509_get_ext_by_NID(certificate, NID_subject_alt_name, -1);
  if (index < 0) return {};
  const ASN1_OCTET_STRING* const value = X509_EXTENSION_get_data(X509_get_ext(certificate, index));
  return {reinterpret_cast<const char*>(ASN1_STRING_get0_data(value)),
          static_cast<std::size_t>(ASN1_STRING_length(value))};
}

void checkCertificate(const OpensslConnection& connection, const std::string& host) {
  const long fault = SSL_get_verify_result(connection.ssl());
  if (fault != X509_V_OK) {
    throw SecurityFailure(handshake, isOutOfTime(static_cast<int>(fault)) ? sec::e_cert_expired
                                                                          : sec::e_untrusted_root);
  }
  if (!areNamesFor(alternativeNames(SSL_get0_peer_certificate(connection.ssl())), host)) {
    throw SecurityFailure(handshake, sec::e_wrong_principal);
  }
}

}  // namespace

SecureStream clientHandshake(const HandshakeStream& stream, const std::string& host,
                             const CertificateTrust& trust) {
  const SslSettings settings = settingsFor(trust);
  auto connection = std::make_unique<OpensslConnection>(settings.get());
  if (!connection->isValid()) throw SecurityFailure(credentials, sec::e_internal_error);
  setHost(connection->ssl(), host);
  establish(*connection, stream);
  if (!trust.acceptEverything) checkCertificate(*connection, host);

  SecureStream result{};
  result.leftOver.resize(connection->pendingInput());
  connection->takeInput(result.leftOver.data(), result.leftOver.size());
  result.sizes = {recordHeaderSize, recordTrailerSize, recordTextSize};
  result.context.lower = reinterpret_cast<std::uintptr_t>(connection.release());
  return result;
}

}  // namespace platform
