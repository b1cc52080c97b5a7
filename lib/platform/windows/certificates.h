// Whether a server's certificate is good.
#pragma once

#include <windows.h>
//
#include <wincrypt.h>

#include <cstdint>
#include <string>

#include "platform/security.h"

namespace platform {

/// The status of the certificate of a server `host`, a name or a dotted address: sec::ok, or what
/// is wrong with its validity, its chain or its name.
std::uint32_t checkCertificate(PCCERT_CONTEXT certificate, const std::string& host,
                               const CertificateTrust& trust);

}  // namespace platform
