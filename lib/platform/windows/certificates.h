// Whether a server's certificate is good.
#pragma once

#include <windows.h>
//
#include <wincrypt.h>

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

struct FreeCertificate {
  void operator()(PCCERT_CONTEXT certificate) const { CertFreeCertificateContext(certificate); }
};
using Certificate = std::unique_ptr<const CERT_CONTEXT, FreeCertificate>;

/// The status of the certificate of a server `host`, a name or a dotted address: sec::ok, or what
/// is wrong with its chain, its validity or its name, whichever comes first. `trusted` is trusted
/// in place of the system's authorities, which count without it.
std::uint32_t checkCertificate(const CERT_CONTEXT& certificate, const std::string& host,
                               PCCERT_CONTEXT trusted);

}  // namespace platform
