#include "replay/internet/detail/name_lookup_emulation.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "replay/internet/detail/byte_order.h"

namespace replay::internet::address::emulation {
namespace {

using platform::addrinfo;
using platform::sockaddr_in;
using platform::sockets;
namespace wsa = platform::wsa;

constexpr int type_raw = 3;
constexpr std::size_t name_size = 1025;
constexpr std::uint32_t loopback = 0x7F000001;

int error_of_host_lookup() {
  const int error = sockets.WSAGetLastError();
  return error == wsa::try_again || error == wsa::no_recovery ? error : wsa::host_not_found;
}

// What a look-up asks for, once its hints and its service are understood.
struct query {
  int flags = 0;
  int type = 0;
  int protocol = 0;
  std::uint16_t port = 0;      // network byte order, like the one below
  std::uint16_t udp_port = 0;  // that of the copies
  bool is_cloned = false;
};

addrinfo* new_entry(const query& wanted, std::uint32_t host) {
  auto* const entry = new (std::nothrow) addrinfo{};
  auto* const address = new (std::nothrow) sockaddr_in{};
  if (entry == nullptr || address == nullptr) {
    delete entry;
    delete address;
    return nullptr;
  }
  address->sin_family = platform::familyIp4;
  address->sin_port = wanted.port;
  address->sin_address = host;
  entry->ai_family = platform::familyIp4;
  entry->ai_socktype = wanted.type;
  entry->ai_protocol = wanted.protocol;
  entry->ai_addrlen = sizeof *address;
  entry->ai_addr = address;
  return entry;
}

bool set_canonical_name(addrinfo& entry, std::string_view name) {
  entry.ai_canonname = new (std::nothrow) char[name.size() + 1];
  if (entry.ai_canonname == nullptr) return false;
  entry.ai_canonname[name.copy(entry.ai_canonname, name.size())] = '\0';
  return true;
}

int take_hints(const addrinfo& hints, bool has_node, query& wanted) {
  if (hints.ai_addrlen != 0 || hints.ai_canonname != nullptr || hints.ai_addr != nullptr ||
      hints.ai_next != nullptr) {
    return wsa::no_recovery;
  }
  if ((hints.ai_flags & canonical_name) != 0 && !has_node) return wsa::einval;
  if (hints.ai_family != 0 && hints.ai_family != platform::familyIp4) return wsa::eafnosupport;
  if (hints.ai_socktype < 0 || hints.ai_socktype > type_raw) return wsa::esocktnosupport;
  wanted.flags = hints.ai_flags;
  wanted.type = hints.ai_socktype;
  wanted.protocol = hints.ai_protocol;
  return 0;
}

std::uint16_t port_of_service(const char* name, const char* protocol) {
  const platform::servent* const service = sockets.getservbyname(name, protocol);
  return service == nullptr ? std::uint16_t{0} : static_cast<std::uint16_t>(service->s_port);
}

int take_service_name(const char* service, query& wanted) {
  std::uint16_t tcp_port = 0;
  if (wanted.type == 0 || wanted.type == platform::typeDatagram) {
    wanted.udp_port = port_of_service(service, "udp");
  }
  if (wanted.type == 0 || wanted.type == platform::typeStream) {
    tcp_port = port_of_service(service, "tcp");
  }
  wanted.port = tcp_port != 0 ? tcp_port : wanted.udp_port;
  if (wanted.port == 0) return wanted.type != 0 ? wsa::type_not_found : wsa::host_not_found;
  if (wanted.type == 0) {
    wanted.type = tcp_port != 0 ? platform::typeStream : platform::typeDatagram;
    wanted.is_cloned = tcp_port != 0 && wanted.udp_port != 0;
  }
  return 0;
}

int take_service(const char* service, query& wanted) {
  char* end = nullptr;
  const auto number = static_cast<std::uint16_t>(std::strtoul(service, &end, 10));
  if (*end != '\0') return take_service_name(service, wanted);
  wanted.port = wanted.udp_port = network_order(number);
  if (wanted.type == 0) {
    wanted.type = platform::typeStream;
    wanted.is_cloned = true;
  }
  return 0;
}

// The address of a node with exactly three dots, if it is one.
std::uint32_t dotted_address(std::string_view node) {
  const bool may_be_address = std::count(node.begin(), node.end(), '.') == 3;
  return may_be_address ? sockets.inet_addr(node.data()) : platform::noAddress;
}

int add_numeric(const query& wanted, std::uint32_t host, bool has_node, addrinfo** result) {
  addrinfo* const entry = new_entry(wanted, host);
  if (entry == nullptr) return wsa::not_enough_memory;
  *result = entry;
  if (!has_node) return 0;
  entry->ai_flags |= numeric_host;
  const bool is_named = (wanted.flags & canonical_name) != 0;
  return is_named && !set_canonical_name(*entry, sockets.inet_ntoa(host)) ? wsa::not_enough_memory
                                                                          : 0;
}

// One entry for each address of an answer, in order.
int add_addresses(const query& wanted, const platform::hostent& host, addrinfo** result) {
  if (host.h_addrtype != platform::familyIp4 || host.h_length != sizeof(std::uint32_t)) return 0;
  for (char** next = host.h_addresses; *next != nullptr; ++next) {
    std::uint32_t address = 0;
    std::memcpy(&address, *next, sizeof address);
    addrinfo* const entry = new_entry(wanted, address);
    if (entry == nullptr) return wsa::not_enough_memory;
    *result = entry;
    result = &entry->ai_next;
  }
  return 0;
}

// A name as the look-up of nodes keeps it.
struct name_buffer {
  char text[name_size] = {};

  void assign(std::string_view name) { text[name.copy(text, name_size - 1)] = '\0'; }
};

// Every pass asks for the node itself; the names that come back are compared only, to see whether
// another pass may tell anything new.
int add_host(const char* node, const query& wanted, addrinfo** result) {
  constexpr int most_passes = 16;
  name_buffer last;
  name_buffer current;
  last.assign(node);
  for (int pass = 1;; ++pass) {
    const platform::hostent* const host = sockets.gethostbyname(node);
    if (host == nullptr) return error_of_host_lookup();
    const int error = add_addresses(wanted, *host, result);
    if (error != 0) return error;
    if (host->h_name != nullptr) current.assign(host->h_name);
    const std::string_view name = current.text;
    if (*result != nullptr) {
      const bool is_named = (wanted.flags & canonical_name) != 0;
      return is_named && !set_canonical_name(**result, name) ? wsa::not_enough_memory : 0;
    }
    if (name.empty() || name == last.text || pass == most_passes) return wsa::no_recovery;
    std::swap(last, current);
  }
}

// Puts behind each entry its copy for datagrams.
int add_clones(const query& wanted, addrinfo* list) {
  query clone = wanted;
  clone.type = platform::typeDatagram;
  clone.port = wanted.udp_port;
  while (list != nullptr) {
    addrinfo* const entry = new_entry(clone, list->ai_addr->sin_address);
    if (entry == nullptr) return wsa::not_enough_memory;
    entry->ai_next = list->ai_next;
    list->ai_next = entry;
    list = entry->ai_next;
  }
  return 0;
}

int add_node(const char* node, const query& wanted, addrinfo** result) {
  if (node == nullptr) {
    const std::uint32_t host = (wanted.flags & passive) != 0 ? 0 : network_order(loopback);
    return add_numeric(wanted, host, false, result);
  }
  const std::uint32_t address = dotted_address(node);
  if (address != platform::noAddress) return add_numeric(wanted, address, true, result);
  if ((wanted.flags & numeric_host) != 0) return wsa::host_not_found;
  return add_host(node, wanted, result);
}

int copy_fitting(std::string_view text, char* buffer, std::uint32_t length) {
  if (text.size() >= length) return wsa::no_recovery;
  buffer[text.copy(buffer, text.size())] = '\0';
  return 0;
}

int write_service(const sockaddr_in& address, char* buffer, std::uint32_t length, int flags) {
  if ((flags & numeric_service) == 0) {
    const char* const protocol = (flags & datagram) != 0 ? "udp" : nullptr;
    const platform::servent* const service = sockets.getservbyport(address.sin_port, protocol);
    if (service != nullptr && service->s_name != nullptr) {
      return copy_fitting(service->s_name, buffer, length);
    }
  }
  return copy_fitting(std::to_string(network_order(address.sin_port)), buffer, length);
}

int write_host(const sockaddr_in& address, char* buffer, std::uint32_t length, int flags) {
  if ((flags & numeric_name) == 0) {
    const platform::hostent* const host =
        sockets.gethostbyaddr(reinterpret_cast<const char*>(&address.sin_address),
                              sizeof address.sin_address, platform::familyIp4);
    if (host != nullptr && host->h_name != nullptr) {
      std::string_view name = host->h_name;
      if ((flags & without_domain) != 0) name = name.substr(0, name.find('.'));
      return copy_fitting(name, buffer, length);
    }
    if ((flags & name_required) != 0) return error_of_host_lookup();
  }
  return copy_fitting(sockets.inet_ntoa(address.sin_address), buffer, length);
}

}  // namespace

int SYSTEM_CALL getaddrinfo(const char* node, const char* service, const addrinfo* hints,
                            addrinfo** result) {
  *result = nullptr;
  if (node == nullptr && service == nullptr) return wsa::host_not_found;
  query wanted;
  int error = hints == nullptr ? 0 : take_hints(*hints, node != nullptr, wanted);
  if (error == 0 && service != nullptr) error = take_service(service, wanted);
  if (error == 0) error = add_node(node, wanted, result);
  if (error == 0 && wanted.is_cloned) error = add_clones(wanted, *result);
  if (error != 0) {
    emulation::freeaddrinfo(*result);
    *result = nullptr;
  }
  return error;
}

int SYSTEM_CALL getnameinfo(const void* address, int length, char* host, std::uint32_t host_length,
                            char* service, std::uint32_t service_length, int flags) {
  sockaddr_in block{};
  if (address == nullptr || length < static_cast<int>(sizeof block)) return wsa::no_recovery;
  std::memcpy(&block, address, sizeof block);
  const bool wants_host = host != nullptr && host_length != 0;
  const bool wants_service = service != nullptr && service_length != 0;
  if (block.sin_family != platform::familyIp4) return wsa::eafnosupport;
  if (!wants_host && !wants_service) return wsa::host_not_found;
  if ((flags & numeric_name) != 0 && (flags & name_required) != 0) return wsa::einval;
  int error = wants_service ? write_service(block, service, service_length, flags) : 0;
  if (error == 0 && wants_host) error = write_host(block, host, host_length, flags);
  return error;
}

void SYSTEM_CALL freeaddrinfo(addrinfo* list) {
  while (list != nullptr) {
    addrinfo* const next = list->ai_next;
    delete[] list->ai_canonname;
    delete list->ai_addr;
    delete list;
    list = next;
  }
}

}  // namespace replay::internet::address::emulation
