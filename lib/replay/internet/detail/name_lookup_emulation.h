// Look-ups of host names for systems whose sockets library has only the older `gethostbyname`
// family.
//
// They have the terms of the system's own look-ups: error numbers of Windows sockets as results, no
// exceptions, lists that the matching function frees. Only the fourth version of the protocol.
#pragma once

#include "platform/sockets.h"

namespace replay::internet::address::emulation {

/// The flags of a look-up of addresses.
inline constexpr int passive = 1;
inline constexpr int canonical_name = 2;
inline constexpr int numeric_host = 4;

/// The flags of a look-up of names.
inline constexpr int without_domain = 1;
inline constexpr int numeric_name = 2;
inline constexpr int name_required = 4;
inline constexpr int numeric_service = 8;
inline constexpr int datagram = 16;

int SYSTEM_CALL getaddrinfo(const char* node, const char* service, const platform::addrinfo* hints,
                            platform::addrinfo** result);

int SYSTEM_CALL getnameinfo(const void* address, int length, char* host, std::uint32_t host_length,
                            char* service, std::uint32_t service_length, int flags);

void SYSTEM_CALL freeaddrinfo(platform::addrinfo* list);

}  // namespace replay::internet::address::emulation
