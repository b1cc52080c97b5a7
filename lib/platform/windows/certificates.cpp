#include "platform/windows/certificates.h"

#include <cstring>
#include <string_view>

#include "platform/certificate_names.h"
#include "platform/security.h"

namespace platform {
namespace {

struct FreeChain {
  void operator()(const CERT_CHAIN_CONTEXT* chain) const { CertFreeCertificateChain(chain); }
};
using Chain = std::unique_ptr<const CERT_CHAIN_CONTEXT, FreeChain>;

struct CloseStore {
  void operator()(void* store) const { CertCloseStore(store, 0); }
};
using Store = std::unique_ptr<void, CloseStore>;

bool isSame(const CRYPT_INTEGER_BLOB& left, const CRYPT_INTEGER_BLOB& right) {
  return left.cbData == right.cbData && std::memcmp(left.pbData, right.pbData, left.cbData) == 0;
}

// Whether a certificate could take the place of the trusted one, as one of the same key, or of what
// stands above it.
bool competes(CERT_INFO& certificate, CERT_INFO& trusted) {
  const bool isIssuer =
      isSame(certificate.Subject, trusted.Issuer) && !isSame(trusted.Subject, trusted.Issuer);
  return isIssuer || CertComparePublicKeyInfo(X509_ASN_ENCODING, &certificate.SubjectPublicKeyInfo,
                                              &trusted.SubjectPublicKeyInfo) != 0;
}

// What a chain may be made of besides what the system knows: the certificates that came with the
// server's, and the one that is trusted, which a server need not send.
Store knownCertificates(const CERT_CONTEXT& certificate, PCCERT_CONTEXT trusted) {
  Store known(CertOpenStore(CERT_STORE_PROV_MEMORY, 0, 0, 0, nullptr));
  const auto add = [&](PCCERT_CONTEXT each) {
    CertAddCertificateContextToStore(known.get(), each, CERT_STORE_ADD_ALWAYS, nullptr);
  };
  PCCERT_CONTEXT sent = nullptr;
  while ((sent = CertEnumCertificatesInStore(certificate.hCertStore, sent)) != nullptr) {
    if (trusted == nullptr || !competes(*sent->pCertInfo, *trusted->pCertInfo)) add(sent);
  }
  if (trusted != nullptr) add(trusted);
  return known;
}

Chain chainOf(const CERT_CONTEXT& certificate, PCCERT_CONTEXT trusted) {
  const Store known = knownCertificates(certificate, trusted);
  char serverUse[] = szOID_PKIX_KP_SERVER_AUTH;
  char* uses[] = {serverUse};
  CERT_CHAIN_PARA parameters{};
  parameters.cbSize = sizeof parameters;
  parameters.RequestedUsage.dwType = USAGE_MATCH_TYPE_OR;
  parameters.RequestedUsage.Usage.cUsageIdentifier = 1;
  parameters.RequestedUsage.Usage.rgpszUsageIdentifier = uses;
  // What the server and the caller gave is all that there is up to the trusted one.
  const DWORD flags = trusted == nullptr ? 0 : CERT_CHAIN_CACHE_ONLY_URL_RETRIEVAL;
  const CERT_CHAIN_CONTEXT* chain = nullptr;
  CertGetCertificateChain(nullptr, &certificate, nullptr, known.get(), &parameters, flags, nullptr,
                          &chain);
  return Chain(chain);
}

// What is wrong with a chain up to the trusted certificate, which ends it: who signed that one, and
// how that goes on, is no fault.
DWORD errorsUpTo(const CERT_CONTEXT& trusted, const CERT_SIMPLE_CHAIN& chain) {
  constexpr DWORD ofThoseAbove = CERT_TRUST_IS_UNTRUSTED_ROOT | CERT_TRUST_IS_PARTIAL_CHAIN |
                                 CERT_TRUST_IS_NOT_SIGNATURE_VALID;
  DWORD errors = 0;
  for (DWORD index = 0; index < chain.cElement; ++index) {
    const CERT_CHAIN_ELEMENT& element = *chain.rgpElement[index];
    const CERT_CONTEXT& certificate = *element.pCertContext;
    const bool isTrusted = isSame({certificate.cbCertEncoded, certificate.pbCertEncoded},
                                  {trusted.cbCertEncoded, trusted.pbCertEncoded});
    errors |= element.TrustStatus.dwErrorStatus & ~(isTrusted ? ofThoseAbove : 0);
    if (isTrusted) return errors;
  }
  return CERT_TRUST_IS_UNTRUSTED_ROOT;
}

std::uint32_t chainStatus(const CERT_CONTEXT& certificate, PCCERT_CONTEXT trusted) {
  const Chain chain = chainOf(certificate, trusted);
  if (chain == nullptr || chain->cChain == 0) return sec::e_untrusted_root;
  const DWORD errors = trusted == nullptr ? chain->TrustStatus.dwErrorStatus
                                          : errorsUpTo(*trusted, *chain->rgpChain[0]);
  if (errors == 0) return sec::ok;
  return errors == CERT_TRUST_IS_NOT_TIME_VALID ? sec::e_cert_expired : sec::e_untrusted_root;
}

// The value of the extension; empty if the certificate has none.
std::string_view alternativeNames(const CERT_INFO& certificate) {
  const CERT_EXTENSION* const extension =
      CertFindExtension(szOID_SUBJECT_ALT_NAME2, certificate.cExtension, certificate.rgExtension);
  if (extension == nullptr) return {};
  return {reinterpret_cast<const char*>(extension->Value.pbData), extension->Value.cbData};
}

}  // namespace

// The system's own check of a chain for a host (CertVerifyCertificateChainPolicy) takes the common
// name of a certificate without alternative ones, and not everywhere an address among those.
std::uint32_t checkCertificate(const CERT_CONTEXT& certificate, const std::string& host,
                               PCCERT_CONTEXT trusted) {
  const std::uint32_t status = chainStatus(certificate, trusted);
  if (status != sec::ok) return status;
  return areNamesFor(alternativeNames(*certificate.pCertInfo), host) ? sec::ok
                                                                     : sec::e_wrong_principal;
}

}  // namespace platform
