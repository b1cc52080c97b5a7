// Addresses of hosts, and the look-up of names.
//
// Threads: may look up names at once, and share an address that none of them changes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "replay/exception.h"

/// Addresses of hosts, and what failed with them.
namespace replay::internet::address {

/// A look-up that failed for a reason that no class below tells. The message has the status, which
/// is 0x00002afa where no name server answered; for a host that has addresses, but none of IPv4, it
/// is "GetAddrInfoA() walk failed".
class generic : public exception {
 public:
  /// Takes what message() gives.
  explicit generic(const std::string& message) : exception(message) {
    append_name("internet.address");
  }
};

/// Raw bytes that are no address of the kind.
class invalid_address_format : public generic {
 public:
  /// Takes what message() gives.
  explicit invalid_address_format(const std::string& message) : generic(message) {
    append_name("invalid_address_format");
  }
};

/// No host has the name, or no address of any kind belongs to it.
class host_not_found : public generic {
 public:
  /// Takes what message() gives.
  explicit host_not_found(const std::string& message) : generic(message) {
    append_name("host_not_found");
  }
};

/// The system offers no service of the kind that was asked for.
class service_not_found : public generic {
 public:
  /// Takes what message() gives.
  explicit service_not_found(const std::string& message) : generic(message) {
    append_name("service_not_found");
  }
};

/// What sockets take as an address. Two addresses compare by size and then by their raw bytes,
/// which hold the port as well as the host.
class base {
 public:
  /// Takes over raw bytes. Raises invalid_address_format unless `size` is that of the address.
  virtual void assign(const unsigned char* bytes, std::size_t size) = 0;
  /// The raw bytes, `size()` of them, in network byte order.
  virtual unsigned char* data() = 0;
  /// The same bytes, to read.
  virtual const unsigned char* data() const = 0;
  /// The number of raw bytes.
  virtual std::size_t size() const = 0;
  /// The name of the host, or its dotted form where it has none. `flags` are those of the system's
  /// look-up of names: 1 without the domain, 2 dotted, 4 with a name required; the dotted form
  /// stands in for any failure. Raises environment::subsystem_not_ready, host_not_found or generic.
  virtual std::string name(int flags) const = 0;
  /// The port as a number.
  virtual std::uint16_t port() const = 0;
  /// Whether all raw bytes are equal.
  virtual bool equal_to(const base& other) const = 0;
  /// The opposite of equal_to().
  virtual bool not_equal_to(const base& other) const = 0;
  /// Whether this one is shorter or, at the same size, has the smaller of the first bytes that
  /// differ.
  virtual bool less_than(const base& other) const = 0;

 protected:
  base() = default;
  base(const base&) = default;             ///< As a value.
  base& operator=(const base&) = default;  ///< As a value.
  ~base() = default;
};

/// Host and port of the fourth version of the protocol. A plain value; nothing is destroyed through
/// its base.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class ip4 final : public base {
 public:
  /// The host 255.255.255.255 and the port 0.
  ip4();
  /// Looks `host` up, a name or a dotted address. Raises host_not_found, service_not_found,
  /// generic, or without an environment environment::subsystem_not_ready.
  ip4(const std::string& host, std::uint16_t port);

  void assign(const unsigned char* bytes, std::size_t size) override;
  unsigned char* data() override;
  const unsigned char* data() const override;
  std::size_t size() const override { return block_.size(); }
  std::string name(int flags) const override;
  std::uint16_t port() const override;
  bool equal_to(const base& other) const override;
  bool not_equal_to(const base& other) const override;
  bool less_than(const base& other) const override;

 private:
  alignas(std::uint32_t) std::array<unsigned char, 16> block_;  // as the system lays it out
};

}  // namespace replay::internet::address
