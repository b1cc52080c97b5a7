// The client's side of a handshake, over the provider of Windows.
#define SECURITY_WIN32
#include <windows.h>
//
#include <schannel.h>
#include <security.h>

#include <array>
#include <memory>
#include <optional>

#include "platform/security.h"
#include "platform/windows/certificates.h"

namespace platform {
namespace {

constexpr const char* acquire = "AcquireCredentialsHandle";
constexpr const char* initialize = "InitializeSecurityContext";
constexpr const char* connectionInfo = "QueryContextAttributes(SECPKG_ATTR_CONNECTION_INFO)";
constexpr const char* streamSizes = "QueryContextAttributes(SECPKG_ATTR_STREAM_SIZES)";

constexpr std::size_t blockSize = 4096;

void require(const char* operation, SECURITY_STATUS status) {
  if (status != SEC_E_OK) throw SecurityFailure(operation, static_cast<std::uint32_t>(status));
}

class Credentials {
 public:
  Credentials() {
    SCHANNEL_CRED settings{};
    settings.dwVersion = SCHANNEL_CRED_VERSION;
    settings.grbitEnabledProtocols = SP_PROT_TLS1_2_CLIENT;
    // The provider's own validation takes self-signed certificates on some systems.
    settings.dwFlags = SCH_CRED_MANUAL_CRED_VALIDATION | SCH_CRED_NO_DEFAULT_CREDS;
    char package[] = UNISP_NAME_A;
    require(acquire, AcquireCredentialsHandleA(nullptr, package, SECPKG_CRED_OUTBOUND, nullptr,
                                               &settings, nullptr, nullptr, &handle_, nullptr));
  }
  Credentials(const Credentials&) = delete;
  Credentials& operator=(const Credentials&) = delete;
  ~Credentials() { FreeCredentialsHandle(&handle_); }

  CredHandle* get() { return &handle_; }

 private:
  CredHandle handle_{};
};

// A context on its way to being established; deleted if it does not get there.
class Handshake {
 public:
  Handshake(const HandshakeStream& stream, std::string host)
      : stream_(stream), host_(std::move(host)) {}
  Handshake(const Handshake&) = delete;
  Handshake& operator=(const Handshake&) = delete;
  ~Handshake() {
    if (context_) DeleteSecurityContext(&*context_);
  }

  void run() {
    SECURITY_STATUS status = step();
    while (status != SEC_E_OK) {
      if (status == SEC_E_INCOMPLETE_MESSAGE || received_.empty()) receive();
      status = step();
    }
  }

  // TLS 1.2 with AES-GCM, by the name of the suite, or where the provider does not tell it by the
  // hash, which such a suite has none of.
  void requireSuite() {
    SecPkgContext_ConnectionInfo info{};
    require(connectionInfo,
            QueryContextAttributesA(&*context_, SECPKG_ATTR_CONNECTION_INFO, &info));
    const bool isAes = info.aiCipher == CALG_AES_128 || info.aiCipher == CALG_AES_256;
    if (info.dwProtocol != SP_PROT_TLS1_2_CLIENT || !isAes || !isAuthenticated(info)) {
      throw SecurityFailure(connectionInfo, sec::e_algorithm_mismatch);
    }
  }

  void requireCertificate(PCCERT_CONTEXT trusted) {
    PCCERT_CONTEXT certificate = nullptr;
    require(initialize, QueryContextAttributesA(&*context_, SECPKG_ATTR_REMOTE_CERT_CONTEXT,
                                                static_cast<void*>(&certificate)));
    const Certificate owner(certificate);
    const std::uint32_t status = checkCertificate(*certificate, host_, trusted);
    if (status != sec::ok) throw SecurityFailure(initialize, status);
  }

  SecureStream take() {
    SecPkgContext_StreamSizes sizes{};
    require(streamSizes, QueryContextAttributesA(&*context_, SECPKG_ATTR_STREAM_SIZES, &sizes));
    SecureStream result{};
    result.sizes = {sizes.cbHeader, sizes.cbTrailer, sizes.cbMaximumMessage};
    result.leftOver = std::move(received_);
    result.context = {context_->dwLower, context_->dwUpper};
    context_.reset();
    return result;
  }

 private:
  void receive() {
    const std::size_t size = received_.size();
    received_.resize(size + blockSize);
    received_.resize(size + stream_.receive(received_.data() + size, blockSize));
  }

  // Hands the provider what the peer has sent and the peer what the provider answers. Gives
  // SEC_E_OK, SEC_I_CONTINUE_NEEDED or SEC_E_INCOMPLETE_MESSAGE.
  SECURITY_STATUS step() {
    std::array<SecBuffer, 2> input = {
        SecBuffer{static_cast<ULONG>(received_.size()), SECBUFFER_TOKEN, received_.data()},
        SecBuffer{0, SECBUFFER_EMPTY, nullptr}};
    SecBufferDesc inputList{SECBUFFER_VERSION, input.size(), input.data()};
    SecBuffer output{0, SECBUFFER_TOKEN, nullptr};
    SecBufferDesc outputList{SECBUFFER_VERSION, 1, &output};
    const SECURITY_STATUS status = advance(context_ ? &inputList : nullptr, &outputList);
    sendAnswer(output);
    if (status == SEC_E_INCOMPLETE_MESSAGE) return status;
    // The server asks for a certificate of the client, and the client has none to show.
    if (status == SEC_I_INCOMPLETE_CREDENTIALS) return SEC_I_CONTINUE_NEEDED;
    if (status != SEC_E_OK && status != SEC_I_CONTINUE_NEEDED) require(initialize, status);
    keepExtra(input[1]);
    return status;
  }

  SECURITY_STATUS advance(SecBufferDesc* input, SecBufferDesc* output) {
    constexpr ULONG wishes = ISC_REQ_SEQUENCE_DETECT | ISC_REQ_REPLAY_DETECT |
                             ISC_REQ_CONFIDENTIALITY | ISC_REQ_STREAM | ISC_REQ_ALLOCATE_MEMORY |
                             ISC_REQ_EXTENDED_ERROR | ISC_REQ_MANUAL_CRED_VALIDATION;
    CtxtHandle next = context_.value_or(CtxtHandle{});
    ULONG granted = 0;
    const SECURITY_STATUS status = InitializeSecurityContextA(
        credentials_.get(), context_ ? &*context_ : nullptr, host_.data(), wishes, 0, 0, input, 0,
        &next, output, &granted, nullptr);
    if (status == SEC_E_OK || status == SEC_I_CONTINUE_NEEDED) context_ = next;
    return status;
  }

  void sendAnswer(const SecBuffer& output) {
    if (output.pvBuffer == nullptr) return;
    const std::unique_ptr<void, decltype(&FreeContextBuffer)> owner(output.pvBuffer,
                                                                    FreeContextBuffer);
    if (output.cbBuffer > 0) stream_.send(static_cast<char*>(output.pvBuffer), output.cbBuffer);
  }

  // What the provider has not looked at stands at the end.
  void keepExtra(const SecBuffer& extra) {
    const std::size_t kept = extra.BufferType == SECBUFFER_EXTRA ? extra.cbBuffer : 0;
    received_.erase(received_.begin(), received_.end() - static_cast<std::ptrdiff_t>(kept));
  }

  bool isAuthenticated(const SecPkgContext_ConnectionInfo& info) {
    SecPkgContext_CipherInfo cipher{};
    cipher.dwVersion = SECPKGCONTEXT_CIPHERINFO_V1;
    if (QueryContextAttributesA(&*context_, SECPKG_ATTR_CIPHER_INFO, &cipher) != SEC_E_OK) {
      return info.aiHash == 0;
    }
    return std::wstring(cipher.szCipherSuite).find(L"_GCM_") != std::wstring::npos;
  }

  const HandshakeStream& stream_;
  std::string host_;
  Credentials credentials_;
  std::optional<CtxtHandle> context_;
  std::vector<char> received_;
};

Certificate trustedOf(const CertificateTrust& trust) {
  if (trust.certificate.empty()) return nullptr;
  Certificate trusted(CertCreateCertificateContext(
      X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(trust.certificate.data()),
      static_cast<DWORD>(trust.certificate.size())));
  if (trusted == nullptr) throw SecurityFailure(acquire, sec::e_untrusted_root);
  return trusted;
}

}  // namespace

SecureStream clientHandshake(const HandshakeStream& stream, const std::string& host,
                             const CertificateTrust& trust) {
  const Certificate trusted = trustedOf(trust);
  Handshake handshake(stream, host);
  handshake.run();
  handshake.requireSuite();
  if (!trust.acceptEverything) handshake.requireCertificate(trusted.get());
  return handshake.take();
}

}  // namespace platform
