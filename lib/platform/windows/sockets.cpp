#include "platform/sockets.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <cstddef>

namespace platform {
namespace {

// The tables' records have names of their own, so that no code above needs the system's headers.
// They are the system's records all the same:
static_assert(sizeof(SocketLibraryData) == sizeof(WSADATA));
static_assert(sizeof(SocketHandle) == sizeof(SOCKET) && noSocket == INVALID_SOCKET);
static_assert(sizeof(sockaddr_in) == sizeof(::sockaddr_in));
static_assert(offsetof(sockaddr_in, sin_address) == offsetof(::sockaddr_in, sin_addr));
static_assert(sizeof(addrinfo) == sizeof(::addrinfo));
static_assert(offsetof(addrinfo, ai_canonname) == offsetof(::addrinfo, ai_canonname));
static_assert(offsetof(addrinfo, ai_addr) == offsetof(::addrinfo, ai_addr));
static_assert(sizeof(hostent) == sizeof(::hostent));
static_assert(offsetof(hostent, h_addresses) == offsetof(::hostent, h_addr_list));
static_assert(sizeof(servent) == sizeof(::servent));
static_assert(offsetof(servent, s_port) == offsetof(::servent, s_port));
static_assert(SOL_SOCKET == levelSocket && SO_RCVTIMEO == optionReceiveTimeout);

template <typename Member, typename Operation>
void take(Member& member, Operation* operation) {
  member = reinterpret_cast<Member>(operation);
}

// The system's own takes a record of four bytes in the place of the number.
char* SYSTEM_CALL textOfAddress(std::uint32_t address) {
  in_addr record{};
  record.S_un.S_addr = address;
  return ::inet_ntoa(record);
}

SocketsApi systemSockets() {
  SocketsApi api{};
  take(api.WSAStartup, ::WSAStartup);
  take(api.WSACleanup, ::WSACleanup);
  take(api.WSAGetLastError, ::WSAGetLastError);
  take(api.WSASetLastError, ::WSASetLastError);
  take(api.socket, ::socket);
  take(api.connect, ::connect);
  take(api.send, ::send);
  take(api.recv, ::recv);
  take(api.closesocket, ::closesocket);
  take(api.setsockopt, ::setsockopt);
  take(api.gethostbyname, ::gethostbyname);
  take(api.gethostbyaddr, ::gethostbyaddr);
  take(api.getservbyname, ::getservbyname);
  take(api.getservbyport, ::getservbyport);
  take(api.inet_addr, ::inet_addr);
  api.inet_ntoa = textOfAddress;
  return api;
}

SystemLibrariesApi loader() {
  SystemLibrariesApi api{};
  take(api.GetSystemDirectoryA, ::GetSystemDirectoryA);
  take(api.LoadLibraryA, ::LoadLibraryA);
  take(api.GetProcAddress, ::GetProcAddress);
  take(api.FreeLibrary, ::FreeLibrary);
  return api;
}

}  // namespace

SocketsApi sockets = systemSockets();

SystemLibrariesApi systemLibraries = loader();

}  // namespace platform
