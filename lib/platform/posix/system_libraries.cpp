// The sockets library as the loader of system libraries sees it: one library with three look-ups,
// which are adapters over the system's own.

#include <netdb.h>

#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "platform/posix/socket_errors.h"
#include "platform/sockets.h"

namespace platform {
namespace {

constexpr int windowsFamilyIp6 = 23;

struct Translation {
  int windows;
  int system;
};

constexpr Translation nameFlags[] = {
    {1, NI_NOFQDN}, {2, NI_NUMERICHOST}, {4, NI_NAMEREQD}, {8, NI_NUMERICSERV}, {16, NI_DGRAM},
};

int errorOf(int lookupError) {
  switch (lookupError) {
    case 0:
      return 0;
    case EAI_NONAME:
      return wsa::host_not_found;
    case EAI_AGAIN:
      return wsa::try_again;
    case EAI_NODATA:
      return wsa::no_data;
    case EAI_MEMORY:
      return wsa::not_enough_memory;
    case EAI_BADFLAGS:
      return wsa::einval;
    case EAI_FAMILY:
      return wsa::eafnosupport;
    case EAI_SOCKTYPE:
      return wsa::esocktnosupport;
    case EAI_SERVICE:
      return wsa::type_not_found;
    case EAI_OVERFLOW:
      return wsa::efault;
    default:
      return wsa::no_recovery;
  }
}

// One block for each entry of a list, with all that its record points at.
struct Entry : addrinfo {
  sockaddr_storage address{};
  std::string name;
};

addrinfo* windowsForm(const ::addrinfo& system) {
  auto entry = std::make_unique<Entry>();
  const int family = system.ai_family == AF_INET6 ? windowsFamilyIp6 : system.ai_family;
  std::memcpy(&entry->address, system.ai_addr, system.ai_addrlen);
  entry->address.ss_family = static_cast<sa_family_t>(family);
  entry->ai_flags = system.ai_flags;
  entry->ai_family = family;
  entry->ai_socktype = system.ai_socktype;
  entry->ai_protocol = system.ai_protocol;
  entry->ai_addrlen = system.ai_addrlen;
  entry->ai_addr = reinterpret_cast<sockaddr_in*>(&entry->address);
  if (system.ai_canonname != nullptr) {
    entry->name = system.ai_canonname;
    entry->ai_canonname = entry->name.data();
  }
  return entry.release();
}

void freeAddresses(addrinfo* list) {
  while (list != nullptr) {
    // Every record of a list is one.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-static-cast-downcast)
    const std::unique_ptr<Entry> entry(static_cast<Entry*>(list));
    list = entry->ai_next;
  }
}

int addressesOf(const char* node, const char* service, const addrinfo* hints, addrinfo** result) {
  *result = nullptr;
  if (!isSocketLibraryStarted()) return wsa::notinitialised;
  ::addrinfo wanted{};
  if (hints != nullptr) {
    // The three flags that there are have the same values on both systems.
    wanted.ai_flags = hints->ai_flags & (AI_PASSIVE | AI_CANONNAME | AI_NUMERICHOST);
    wanted.ai_family = hints->ai_family == windowsFamilyIp6 ? AF_INET6 : hints->ai_family;
    wanted.ai_socktype = hints->ai_socktype;
    wanted.ai_protocol = hints->ai_protocol;
  }
  ::addrinfo* found = nullptr;
  const int error = ::getaddrinfo(node, service, hints == nullptr ? nullptr : &wanted, &found);
  if (error != 0) return errorOf(error);
  const std::unique_ptr<::addrinfo, decltype(&::freeaddrinfo)> owner(found, ::freeaddrinfo);
  for (addrinfo** end = result; found != nullptr; found = found->ai_next) {
    *end = windowsForm(*found);
    end = &(*end)->ai_next;
  }
  return 0;
}

int nameOf(const void* address, int length, char* host, std::uint32_t hostLength, char* service,
           std::uint32_t serviceLength, int flags) {
  if (!isSocketLibraryStarted()) return wsa::notinitialised;
  int systemFlags = 0;
  for (const Translation& flag : nameFlags) {
    if ((flags & flag.windows) != 0) systemFlags |= flag.system;
  }
  return errorOf(::getnameinfo(static_cast<const sockaddr*>(address),
                               static_cast<socklen_t>(length), host, hostLength, service,
                               serviceLength, systemFlags));
}

unsigned systemFolder(char* buffer, unsigned size) {
  constexpr std::string_view folder = R"(C:\Windows\System32)";
  if (size <= folder.size()) return static_cast<unsigned>(folder.size()) + 1;
  buffer[folder.copy(buffer, folder.size())] = '\0';
  return static_cast<unsigned>(folder.size());
}

// The address of this stands for the one library that there is.
char socketLibrary = 0;

void* load(const char* path) {
  return std::string_view(path).ends_with(R"(\ws2_32)") ? &socketLibrary : nullptr;
}

SystemLibrariesApi::Function find(void* /*library*/, const char* name) {
  using Function = SystemLibrariesApi::Function;
  const std::string_view wanted = name;
  if (wanted == "getaddrinfo") return reinterpret_cast<Function>(addressesOf);
  if (wanted == "getnameinfo") return reinterpret_cast<Function>(nameOf);
  if (wanted == "freeaddrinfo") return reinterpret_cast<Function>(freeAddresses);
  return nullptr;
}

int release(void* /*library*/) { return 1; }

}  // namespace

SystemLibrariesApi systemLibraries = {
    .GetSystemDirectoryA = systemFolder,
    .LoadLibraryA = load,
    .GetProcAddress = find,
    .FreeLibrary = release,
};

}  // namespace platform
