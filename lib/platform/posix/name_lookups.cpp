#include "platform/posix/name_lookups.h"

#include <arpa/inet.h>
#include <netdb.h>

#include <cerrno>
#include <vector>

#include "platform/posix/socket_errors.h"

namespace platform {
namespace {

int errorOfHostLookup(int systemError) {
  switch (systemError) {
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

// What a `query` of the system finds, with all that it points to, kept for the thread that asks.
template <typename Record, typename Query>
Record* answerTo(Query query) {
  constexpr std::size_t usualSize = 1024;
  thread_local Record record{};
  thread_local std::vector<char> bytes(usualSize);
  Record* found = nullptr;
  while (query(&record, bytes.data(), bytes.size(), &found) == ERANGE) {
    bytes.resize(2 * bytes.size());
  }
  return found;
}

// `query` takes the place of the system's error as well.
template <typename Query>
hostent* findHost(Query query) {
  if (!isSocketLibraryStarted()) return nullptr;
  int error = 0;
  const auto* const host =
      answerTo<::hostent>([&](auto... place) { return query(place..., &error); });
  thread_local hostent result{};
  if (host == nullptr) {
    setSocketError(errorOfHostLookup(error));
    return nullptr;
  }
  result = {host->h_name, host->h_aliases, static_cast<std::int16_t>(host->h_addrtype),
            static_cast<std::int16_t>(host->h_length), host->h_addr_list};
  return &result;
}

template <typename Query>
servent* findService(Query query) {
  if (!isSocketLibraryStarted()) return nullptr;
  const auto* const service = answerTo<::servent>(query);
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
  return findHost([=](auto... place) { return ::gethostbyname_r(name, place...); });
}

hostent* hostByAddress(const char* address, int length, int family) {
  return findHost([=](auto... place) {
    return ::gethostbyaddr_r(address, static_cast<socklen_t>(length), family, place...);
  });
}

servent* serviceByName(const char* name, const char* protocol) {
  return findService([=](auto... place) { return ::getservbyname_r(name, protocol, place...); });
}

servent* serviceByPort(int port, const char* protocol) {
  return findService([=](auto... place) { return ::getservbyport_r(port, protocol, place...); });
}

std::uint32_t addressOfText(const char* text) { return ::inet_addr(text); }

char* textOfAddress(std::uint32_t address) {
  thread_local char text[INET_ADDRSTRLEN];
  ::inet_ntop(AF_INET, &address, text, sizeof text);
  return text;
}

}  // namespace platform
