// What the servers of tests need of this system's sockets beyond what all systems have.
#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

namespace test {

using NativeSocket = SOCKET;
using NativeLength = int;
using NativeCount = int;
inline constexpr int sendFlags = 0;

inline bool isOpen(NativeSocket socket) { return socket != INVALID_SOCKET; }
inline void closeNative(NativeSocket socket) { ::closesocket(socket); }

}  // namespace test
