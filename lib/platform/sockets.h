// The system's sockets library, and the loading of system libraries, as tables of functions.
//
// The members carry the operation names of Windows sockets and of the Windows loader, and behave as
// those do: their records, constants and error numbers are the Windows ones on every system. On
// Windows the tables hold WS2_32 and KERNEL32 themselves, elsewhere thin adapters over the system's
// own sockets. Where a system would kill a process that sends to a closed connection, the send
// fails instead. Tests replace single members to make one call fail.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/system_call.h"

namespace platform {

/// Error numbers of Windows sockets, by their names in lower case.
namespace wsa {
inline constexpr int not_enough_memory = 8;
inline constexpr int eintr = 10004;
inline constexpr int eacces = 10013;
inline constexpr int efault = 10014;
inline constexpr int einval = 10022;
inline constexpr int emfile = 10024;
inline constexpr int einprogress = 10036;
inline constexpr int ealready = 10037;
inline constexpr int enotsock = 10038;
inline constexpr int emsgsize = 10040;
inline constexpr int eprototype = 10041;
inline constexpr int enoprotoopt = 10042;
inline constexpr int eprotonosupport = 10043;
inline constexpr int esocktnosupport = 10044;
inline constexpr int eopnotsupp = 10045;
inline constexpr int eafnosupport = 10047;
inline constexpr int eaddrinuse = 10048;
inline constexpr int eaddrnotavail = 10049;
inline constexpr int enetdown = 10050;
inline constexpr int enetunreach = 10051;
inline constexpr int enetreset = 10052;
inline constexpr int econnaborted = 10053;
inline constexpr int econnreset = 10054;
inline constexpr int enobufs = 10055;
inline constexpr int eisconn = 10056;
inline constexpr int enotconn = 10057;
inline constexpr int eshutdown = 10058;
inline constexpr int etimedout = 10060;
inline constexpr int econnrefused = 10061;
inline constexpr int ehostdown = 10064;
inline constexpr int ehostunreach = 10065;
inline constexpr int sysnotready = 10091;
inline constexpr int vernotsupported = 10092;
inline constexpr int notinitialised = 10093;
inline constexpr int syscallfailure = 10107;
inline constexpr int type_not_found = 10109;
inline constexpr int host_not_found = 11001;
inline constexpr int try_again = 11002;
inline constexpr int no_recovery = 11003;
inline constexpr int no_data = 11004;
}  // namespace wsa

/// A socket as the library knows it.
using SocketHandle = std::uintptr_t;
inline constexpr SocketHandle noSocket = ~SocketHandle{0};

/// Families, types and options as Windows numbers them.
inline constexpr int familyIp4 = 2;
inline constexpr int typeStream = 1;
inline constexpr int typeDatagram = 2;
inline constexpr int levelSocket = 65535;
inline constexpr int optionReceiveTimeout = 4102;  ///< 4 bytes, milliseconds; 0 waits for ever

/// `inet_addr` of a text that is no address, and the broadcast address as well.
inline constexpr std::uint32_t noAddress = 0xFFFFFFFF;

/// What WSAStartup fills in; only the two versions have a meaning here.
struct alignas(void*) SocketLibraryData {
  std::uint16_t version;
  std::uint16_t highestVersion;
  char description[sizeof(void*) == 8 ? 404 : 396];
};

/// An address of a host; port and address in network byte order.
struct sockaddr_in {
  std::uint16_t sin_family;
  std::uint16_t sin_port;
  std::uint32_t sin_address;
  unsigned char sin_zero[8];
};

struct addrinfo {
  int ai_flags;
  int ai_family;
  int ai_socktype;
  int ai_protocol;
  std::size_t ai_addrlen;
  char* ai_canonname;
  sockaddr_in* ai_addr;
  addrinfo* ai_next;
};

struct hostent {
  char* h_name;
  char** h_aliases;
  std::int16_t h_addrtype;
  std::int16_t h_length;
  char** h_addresses;
};

/// 64-bit Windows has the last two fields the other way round.
struct servent {
  char* s_name;
  char** s_aliases;
#ifdef _WIN64
  char* s_proto;
  std::int16_t s_port;
#else
  std::int16_t s_port;
  char* s_proto;
#endif
};

/// Pointers to addresses are to a sockaddr_in or to another family's record, of the given length.
struct SocketsApi {
  int(SYSTEM_CALL* WSAStartup)(std::uint16_t version, SocketLibraryData* data);
  int(SYSTEM_CALL* WSACleanup)();
  int(SYSTEM_CALL* WSAGetLastError)();
  void(SYSTEM_CALL* WSASetLastError)(int error);
  SocketHandle(SYSTEM_CALL* socket)(int family, int type, int protocol);
  int(SYSTEM_CALL* connect)(SocketHandle socket, const void* address, int length);
  int(SYSTEM_CALL* send)(SocketHandle socket, const char* bytes, int count, int flags);
  int(SYSTEM_CALL* recv)(SocketHandle socket, char* bytes, int count, int flags);
  int(SYSTEM_CALL* closesocket)(SocketHandle socket);
  int(SYSTEM_CALL* setsockopt)(SocketHandle socket, int level, int option, const char* value,
                               int length);
  hostent*(SYSTEM_CALL* gethostbyname)(const char* name);
  hostent*(SYSTEM_CALL* gethostbyaddr)(const char* address, int length, int family);
  servent*(SYSTEM_CALL* getservbyname)(const char* name, const char* protocol);
  servent*(SYSTEM_CALL* getservbyport)(int port, const char* protocol);
  std::uint32_t(SYSTEM_CALL* inet_addr)(const char* text);
  char*(SYSTEM_CALL* inet_ntoa)(std::uint32_t address);
};

extern SocketsApi sockets;

/// The look-ups that not every system's sockets library has; they are found by name.
using GetAddrInfo = int(SYSTEM_CALL*)(const char* node, const char* service, const addrinfo* hints,
                                      addrinfo** result);
using GetNameInfo = int(SYSTEM_CALL*)(const void* address, int length, char* host,
                                      std::uint32_t hostLength, char* service,
                                      std::uint32_t serviceLength, int flags);
using FreeAddrInfo = void(SYSTEM_CALL*)(addrinfo* list);

struct SystemLibrariesApi {
  using Function = void(SYSTEM_CALL*)();

  unsigned(SYSTEM_CALL* GetSystemDirectoryA)(char* buffer, unsigned size);
  void*(SYSTEM_CALL* LoadLibraryA)(const char* path);
  Function(SYSTEM_CALL* GetProcAddress)(void* library, const char* name);
  int(SYSTEM_CALL* FreeLibrary)(void* library);
};

extern SystemLibrariesApi systemLibraries;

}  // namespace platform
