// The system's look-ups of names under the terms of the Windows ones: their records, flags and
// error numbers. A result is that of the calling thread, with all that it points to, and lasts
// until the thread's next call for a host, a service or a text.
#pragma once

#include "platform/sockets.h"

namespace platform {

hostent* hostByName(const char* name);
hostent* hostByAddress(const char* address, int length, int family);
servent* serviceByName(const char* name, const char* protocol);
servent* serviceByPort(int port, const char* protocol);

std::uint32_t addressOfText(const char* text);
char* textOfAddress(std::uint32_t address);

}  // namespace platform
