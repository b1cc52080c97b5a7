#include "platform/sockets.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/posix/name_lookups.h"
#include "platform/posix/socket_errors.h"

namespace platform {
namespace {

constexpr int failed = -1;

int fail(int error) {
  setSocketError(error);
  return failed;
}

int failAsSystem() { return fail(socketErrorOf(errno)); }

int descriptorOf(SocketHandle socket) { return static_cast<int>(socket); }

int start(std::uint16_t version, SocketLibraryData* data) {
  *data = {};
  data->version = version;
  data->highestVersion = 0x0202;
  startSocketLibrary();
  return 0;
}

int stop() { return stopSocketLibrary() ? 0 : failed; }

SocketHandle openSocket(int family, int type, int protocol) {
  if (!isSocketLibraryStarted()) return noSocket;
  // The numbers of the other families are not this system's.
  if (family != familyIp4) {
    setSocketError(wsa::eafnosupport);
    return noSocket;
  }
  const int descriptor = ::socket(AF_INET, type | SOCK_CLOEXEC, protocol);
  if (descriptor >= 0) return static_cast<SocketHandle>(descriptor);
  failAsSystem();
  return noSocket;
}

int connectSocket(SocketHandle socket, const void* address, int length) {
  if (!isSocketLibraryStarted()) return failed;
  const int result = ::connect(descriptorOf(socket), static_cast<const sockaddr*>(address),
                               static_cast<socklen_t>(length));
  return result == 0 ? 0 : failAsSystem();
}

int sendBytes(SocketHandle socket, const char* bytes, int count, int flags) {
  if (!isSocketLibraryStarted()) return failed;
  const ssize_t sent =
      ::send(descriptorOf(socket), bytes, static_cast<std::size_t>(count), flags | MSG_NOSIGNAL);
  return sent >= 0 ? static_cast<int>(sent) : failAsSystem();
}

int receiveBytes(SocketHandle socket, char* bytes, int count, int flags) {
  if (!isSocketLibraryStarted()) return failed;
  const ssize_t received =
      ::recv(descriptorOf(socket), bytes, static_cast<std::size_t>(count), flags);
  return received >= 0 ? static_cast<int>(received) : failAsSystem();
}

// A socket that outlives the library is refused as any other, and is gone all the same: where the
// library closes them with its last stop, nothing is left to leak.
int closeSocket(SocketHandle socket) {
  const int result = ::close(descriptorOf(socket));
  if (!isSocketLibraryStarted()) return failed;
  return result == 0 ? 0 : failAsSystem();
}

int setOption(SocketHandle socket, int level, int option, const char* value, int length) {
  if (!isSocketLibraryStarted()) return failed;
  if (level != levelSocket || option != optionReceiveTimeout) return fail(wsa::enoprotoopt);
  std::uint32_t milliseconds = 0;
  if (length != sizeof milliseconds) return fail(wsa::efault);
  std::memcpy(&milliseconds, value, sizeof milliseconds);
  timeval timeout{};
  timeout.tv_sec = milliseconds / 1000;
  timeout.tv_usec = static_cast<suseconds_t>(milliseconds % 1000) * 1000;
  const int result =
      ::setsockopt(descriptorOf(socket), SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof timeout);
  return result == 0 ? 0 : failAsSystem();
}

}  // namespace

SocketsApi sockets = {
    .WSAStartup = start,
    .WSACleanup = stop,
    .WSAGetLastError = socketError,
    .WSASetLastError = setSocketError,
    .socket = openSocket,
    .connect = connectSocket,
    .send = sendBytes,
    .recv = receiveBytes,
    .closesocket = closeSocket,
    .setsockopt = setOption,
    .gethostbyname = hostByName,
    .gethostbyaddr = hostByAddress,
    .getservbyname = serviceByName,
    .getservbyport = serviceByPort,
    .inet_addr = addressOfText,
    .inet_ntoa = textOfAddress,
};

}  // namespace platform
