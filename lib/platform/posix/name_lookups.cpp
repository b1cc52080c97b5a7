#include "platform/posix/name_lookups.h"

#include <arpa/inet.h>
#include <netdb.h>

#include "platform/posix/socket_errors.h"

namespace platform {
namespace {

int errorOfHostLookup() {
  switch (h_errno) {
    case HOST_NOT_FOUND:
      return wsa::host_not_found;
    case TRY_AGAIN:
      return wsa::try_again;
    case NO_DATA:
      return wsa::no_data;
    default:
      return wsa::no_recovery;
  }
}

hostent* windowsForm(const ::hostent* host) {
  thread_local hostent result{};
  if (host == nullptr) {
    setSocketError(errorOfHostLookup());
    return nullptr;
  }
  result = {host->h_name, host->h_aliases, static_cast<std::int16_t>(host->h_addrtype),
            static_cast<std::int16_t>(host->h_length), host->h_addr_list};
  return &result;
}

servent* windowsForm(const ::servent* service) {
  thread_local servent result{};
  if (service == nullptr) {
    setSocketError(wsa::no_data);
    return nullptr;
  }
  result = {service->s_name, service->s_aliases, static_cast<std::int16_t>(service->s_port),
            service->s_proto};
  return &result;
}

}  // namespace

hostent* hostByName(const char* name) {
  return isSocketLibraryStarted() ? windowsForm(::gethostbyname(name)) : nullptr;
}

hostent* hostByAddress(const char* address, int length, int family) {
  if (!isSocketLibraryStarted()) return nullptr;
  return windowsForm(::gethostbyaddr(address, static_cast<socklen_t>(length), family));
}

servent* serviceByName(const char* name, const char* protocol) {
  return isSocketLibraryStarted() ? windowsForm(::getservbyname(name, protocol)) : nullptr;
}

servent* serviceByPort(int port, const char* protocol) {
  return isSocketLibraryStarted() ? windowsForm(::getservbyport(port, protocol)) : nullptr;
}

std::uint32_t addressOfText(const char* text) { return ::inet_addr(text); }

char* textOfAddress(std::uint32_t address) { return ::inet_ntoa(in_addr{address}); }

}  // namespace platform
