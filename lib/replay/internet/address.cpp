#include "replay/internet/address.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "replay/internet/byte_order.h"
#include "replay/internet/environment.h"
#include "replay/internet/name_lookup.h"
#include "replay/internet/name_lookup_emulation.h"
#include "replay/text.h"

namespace replay::internet::address {
namespace {

[[noreturn]] void raise_unknown_status(int status) {
  // Both look-ups give the name of this one.
  throw generic(format("GetAddrInfoA() returned status 0x%.8x", static_cast<unsigned>(status)));
}

[[noreturn]] void raise_resolving_failure(int status) {
  switch (status) {
    case platform::wsa::notinitialised:
      throw environment::subsystem_not_ready("GetAddrInfoA() failed");
    case platform::wsa::type_not_found:
      throw service_not_found("GetAddrInfoA() failed");
    case platform::wsa::host_not_found:
    case platform::wsa::no_data:
      throw host_not_found("GetAddrInfoA() failed");
    default:
      raise_unknown_status(status);
  }
}

// Copies the first address of the list that fits; false if there is none.
bool copy_address(const platform::addrinfo* list, platform::sockaddr_in& block) {
  for (; list != nullptr; list = list->ai_next) {
    if (list->ai_family != platform::familyIp4 || list->ai_addrlen != sizeof block) continue;
    std::memcpy(&block, list->ai_addr, sizeof block);
    return true;
  }
  return false;
}

}  // namespace

ip4::ip4(const std::string& host, std::uint16_t port) {
  platform::addrinfo* list = nullptr;
  const int status = process_name_lookup().get_addr_info(host.c_str(), &list);
  if (status != 0) raise_resolving_failure(status);
  const bool fits = copy_address(list, block_);
  process_name_lookup().free_addr_info(list);
  if (!fits) throw generic("GetAddrInfoA() walk failed");
  block_.sin_port = network_order(port);
}

void ip4::assign(const unsigned char* bytes, std::size_t size) {
  if (size != sizeof block_) throw invalid_address_format("Size mismatch");
  std::memcpy(&block_, bytes, size);
}

unsigned char* ip4::data() { return reinterpret_cast<unsigned char*>(&block_); }

const unsigned char* ip4::data() const { return reinterpret_cast<const unsigned char*>(&block_); }

std::string ip4::name(int flags) const {
  std::array<char, name_lookup::name_size> text{};
  const name_lookup& lookup = process_name_lookup();
  constexpr int size = sizeof block_;
  if (lookup.get_name_info(&block_, size, text.data(), flags) == 0 ||
      lookup.get_name_info(&block_, size, text.data(), emulation::numeric_name) == 0) {
    return text.data();
  }
  const int status = platform::sockets.WSAGetLastError();
  switch (status) {
    case 0:
      return text.data();
    case platform::wsa::notinitialised:
      throw environment::subsystem_not_ready("GetNameInfoA() failed");
    case platform::wsa::host_not_found:
    case platform::wsa::no_data:
      throw host_not_found("GetNameInfoA() failed");
    default:
      raise_unknown_status(status);
  }
}

std::uint16_t ip4::port() const { return network_order(block_.sin_port); }

bool ip4::equal_to(const base& other) const {
  return size() == other.size() && std::equal(data(), data() + size(), other.data());
}

bool ip4::not_equal_to(const base& other) const { return !equal_to(other); }

bool ip4::less_than(const base& other) const {
  if (size() != other.size()) return size() < other.size();
  return std::lexicographical_compare(data(), data() + size(), other.data(),
                                      other.data() + other.size());
}

}  // namespace replay::internet::address
