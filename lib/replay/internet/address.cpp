#include "replay/internet/address.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>

#include "platform/sockets.h"
#include "replay/internet/detail/byte_order.h"
#include "replay/internet/detail/name_lookup.h"
#include "replay/internet/detail/name_lookup_emulation.h"
#include "replay/internet/environment.h"
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

using record = platform::sockaddr_in;
using bytes_of_record = std::array<unsigned char, sizeof(record)>;

// The first address of the list that fits.
std::optional<record> fitting_address(const platform::addrinfo* list) {
  for (; list != nullptr; list = list->ai_next) {
    if (list->ai_family == platform::familyIp4 && list->ai_addrlen == sizeof(record)) {
      return *list->ai_addr;
    }
  }
  return std::nullopt;
}

bytes_of_record resolved(const std::string& host, std::uint16_t port) {
  platform::addrinfo* list = nullptr;
  const int status = process_name_lookup().get_addr_info(host.c_str(), &list);
  if (status != 0) raise_resolving_failure(status);
  std::optional<record> found = fitting_address(list);
  process_name_lookup().free_addr_info(list);
  if (!found) throw generic("GetAddrInfoA() walk failed");
  found->sin_port = network_order(port);
  return std::bit_cast<bytes_of_record>(*found);
}

}  // namespace

ip4::ip4()
    : block_(
          std::bit_cast<bytes_of_record>(record{platform::familyIp4, 0, platform::noAddress, {}})) {
}

ip4::ip4(const std::string& host, std::uint16_t port) : block_(resolved(host, port)) {}

void ip4::assign(const unsigned char* bytes, std::size_t size) {
  if (size != sizeof block_) throw invalid_address_format("Size mismatch");
  std::memcpy(block_.data(), bytes, size);
}

unsigned char* ip4::data() { return block_.data(); }

const unsigned char* ip4::data() const { return block_.data(); }

std::string ip4::name(int flags) const {
  std::array<char, name_lookup::name_size> text{};
  const name_lookup& lookup = process_name_lookup();
  constexpr int size = sizeof block_;
  if (lookup.get_name_info(data(), size, text.data(), flags) == 0 ||
      lookup.get_name_info(data(), size, text.data(), emulation::numeric_name) == 0) {
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

std::uint16_t ip4::port() const { return network_order(std::bit_cast<record>(block_).sin_port); }

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
