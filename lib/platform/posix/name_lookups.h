// The system's look-ups of names under the terms of the Windows ones: their records, flags and
// error numbers. What the results of the first four point to is the system's, and lasts until the
// next such call of any thread.
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
