#include "platform/windows/certificates.h"

#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/ascii.h"
#include "platform/sockets.h"

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

// The certificates that came with the server's, and the one that is trusted: a server need not send
// it.
Store knownCertificates(PCCERT_CONTEXT certificate, const std::string& trusted) {
  Store all(CertOpenStore(CERT_STORE_PROV_COLLECTION, 0, 0, 0, nullptr));
  const Store own(CertOpenStore(CERT_STORE_PROV_MEMORY, 0, 0, 0, nullptr));
  CertAddEncodedCertificateToStore(
      own.get(), X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(trusted.data()),
      static_cast<DWORD>(trusted.size()), CERT_STORE_ADD_ALWAYS, nullptr);
  CertAddStoreToCollection(all.get(), own.get(), 0, 0);
  CertAddStoreToCollection(all.get(), certificate->hCertStore, 0, 0);
  return all;
}

Chain chainOf(PCCERT_CONTEXT certificate, const std::string& trusted) {
  const Store known = knownCertificates(certificate, trusted);
  char serverUse[] = szOID_PKIX_KP_SERVER_AUTH;
  char* uses[] = {serverUse};
  CERT_CHAIN_PARA parameters{};
  parameters.cbSize = sizeof parameters;
  parameters.RequestedUsage.dwType = USAGE_MATCH_TYPE_OR;
  parameters.RequestedUsage.Usage.cUsageIdentifier = 1;
  parameters.RequestedUsage.Usage.rgpszUsageIdentifier = uses;
  const CERT_CHAIN_CONTEXT* chain = nullptr;
  CertGetCertificateChain(nullptr, certificate, nullptr, known.get(), &parameters, 0, nullptr,
                          &chain);
  return Chain(chain);
}

bool isCertificate(PCCERT_CONTEXT certificate, const std::string& der) {
  return certificate->cbCertEncoded == der.size() &&
         std::memcmp(certificate->pbCertEncoded, der.data(), der.size()) == 0;
}

// Whether one certificate of the chain is the trusted one. That those above it lead to no root that
// the system knows is then no fault of the chain.
bool holdsTrusted(const CERT_SIMPLE_CHAIN& chain, const std::string& der) {
  for (DWORD index = 0; index < chain.cElement; ++index) {
    if (isCertificate(chain.rgpElement[index]->pCertContext, der)) return true;
  }
  return false;
}

std::uint32_t chainStatus(PCCERT_CONTEXT certificate, const CertificateTrust& trust) {
  const Chain chain = chainOf(certificate, trust.certificate);
  if (chain == nullptr || chain->cChain == 0) return sec::e_untrusted_root;
  DWORD errors = chain->TrustStatus.dwErrorStatus;
  if (!trust.certificate.empty()) {
    if (!holdsTrusted(*chain->rgpChain[0], trust.certificate)) return sec::e_untrusted_root;
    errors &= ~static_cast<DWORD>(CERT_TRUST_IS_UNTRUSTED_ROOT | CERT_TRUST_IS_PARTIAL_CHAIN);
  }
  if ((errors & CERT_TRUST_IS_NOT_TIME_VALID) != 0) return sec::e_cert_expired;
  return errors == 0 ? sec::ok : sec::e_untrusted_root;
}

std::string loweredText(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = lowered(c);
  return result;
}

// A wildcard stands for one whole label, the first.
bool matches(const std::string& pattern, const std::string& host) {
  if (!pattern.starts_with("*.")) return pattern == host;
  const std::size_t dot = host.find('.');
  return dot != std::string::npos && dot > 0 && host.substr(dot) == pattern.substr(1) &&
         pattern.find('.', 2) != std::string::npos;
}

std::string narrowed(const wchar_t* text) {
  std::string result;
  for (; *text != L'\0'; ++text) result += *text < 128 ? static_cast<char>(*text) : '?';
  return loweredText(result);
}

// The alternative names of a certificate; nothing if it has none.
std::vector<unsigned char> alternativeNames(PCCERT_CONTEXT certificate) {
  const CERT_EXTENSION* const extension =
      CertFindExtension(szOID_SUBJECT_ALT_NAME2, certificate->pCertInfo->cExtension,
                        certificate->pCertInfo->rgExtension);
  if (extension == nullptr) return {};
  DWORD size = 0;
  const auto decode = [&](void* result) {
    return CryptDecodeObjectEx(X509_ASN_ENCODING, X509_ALTERNATE_NAME, extension->Value.pbData,
                               extension->Value.cbData, 0, nullptr, result, &size) != 0;
  };
  if (!decode(nullptr)) return {};
  std::vector<unsigned char> names(size);
  if (!decode(names.data())) return {};
  return names;
}

bool namesHost(const CERT_ALT_NAME_ENTRY& entry, const std::string& host, std::uint32_t address) {
  if (entry.dwAltNameChoice == CERT_ALT_NAME_DNS_NAME) {
    return address == noAddress && matches(narrowed(entry.pwszDNSName), host);
  }
  return entry.dwAltNameChoice == CERT_ALT_NAME_IP_ADDRESS && address != noAddress &&
         entry.IPAddress.cbData == sizeof address &&
         std::memcmp(entry.IPAddress.pbData, &address, sizeof address) == 0;
}

bool isFor(PCCERT_CONTEXT certificate, const std::string& host) {
  const std::vector<unsigned char> names = alternativeNames(certificate);
  if (names.empty()) return false;
  const auto* const info = reinterpret_cast<const CERT_ALT_NAME_INFO*>(names.data());
  const std::uint32_t address = sockets.inet_addr(host.c_str());
  for (DWORD index = 0; index < info->cAltEntry; ++index) {
    if (namesHost(info->rgAltEntry[index], loweredText(host), address)) return true;
  }
  return false;
}

}  // namespace

std::uint32_t checkCertificate(PCCERT_CONTEXT certificate, const std::string& host,
                               const CertificateTrust& trust) {
  const std::uint32_t status = chainStatus(certificate, trust);
  if (status != sec::ok) return status;
  return isFor(certificate, host) ? sec::ok : sec::e_wrong_principal;
}

}  // namespace platform
