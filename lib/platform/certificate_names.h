// Whom a server's certificate is for, which each system's library tells in a way of its own: here
// it is told the same everywhere.
#pragma once

#include <string_view>

namespace platform {

/// Whether `names`, the value of a certificate's extension of alternative names (DER, RFC 5280),
/// has `host`, a name or a dotted address. A name there may begin with "*." for one whole label of
/// a host that has two more. Names that cannot be read are for no host.
bool areNamesFor(std::string_view names, std::string_view host);

}  // namespace platform
