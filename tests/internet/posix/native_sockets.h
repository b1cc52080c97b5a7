// What the servers of tests need of this system's sockets beyond what all systems have.
#pragma once

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstddef>

namespace test {

using NativeSocket = int;
using NativeLength = socklen_t;
using NativeCount = std::size_t;
inline constexpr int sendFlags = MSG_NOSIGNAL;

inline bool isOpen(NativeSocket socket) { return socket >= 0; }
inline void closeNative(NativeSocket socket) { ::close(socket); }

}  // namespace test
