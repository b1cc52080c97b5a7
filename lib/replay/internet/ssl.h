// The encrypted stream.
//
// Above flush and fill nobody knows that a stream is encrypted: lines, reads and writes are those
// of the plain one, and the counters count encrypted bytes. Whatever the security provider answers
// beside success and "incomplete" is the end of the stream: a close notification and a wish for a
// new handshake as well, which are not carried out. No notification is sent at the end.
//
// Threads: one object, one thread at a time; separate objects at once.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "replay/internet/transport.h"

namespace replay::internet::transport::tcp {

/// A stream over TLS 1.2, the client of a server whose certificate was good.
class ssl : public base {
 public:
  /// The security provider failed; the message tells its operation and status.
  class security : public generic {
   public:
    /// Takes what message() gives.
    explicit security(const std::string& message) : generic(message) { append_name("security"); }
  };

  /// What makes a server's certificate good.
  struct certificate_trust {
    /// A certificate, DER, that is trusted in place of the system's authorities: the server's own
    /// or one above it. Empty for the system's authorities.
    std::string certificate;
    /// Takes every certificate, whoever signed it and whatever name it has: nobody knows then who
    /// is at the other end.
    bool acceptEverything = false;
  };

  /// Connects to `server` with the time-out of receiving set, and establishes the security context
  /// as its client. `host_name`, a name or a dotted address, is what the server's certificate must
  /// have among its alternative names; `trust` tells which authorities count, those of the system
  /// by default. Only TLS 1.2 with AES-GCM is spoken: with other suites the provider fills less
  /// than the header and trailer that it asks for, and a message sent at full size would not be
  /// valid. Raises security, and what opening, connecting, sending and receiving raise.
  ssl(const address::base& server, const std::string& host_name, const certificate_trust& trust);
  /// The same with the authorities of the system.
  ssl(const address::base& server, const std::string& host_name);
  ~ssl() override;

  /// Sends what waits as messages of the largest size. What a failed message held is gone. Raises
  /// security, and what send_all() raises.
  void flush() override;

  /// Waits for a message and adds its data to the read queue. Raises security, also for the
  /// notification by which the server ends the stream, and what receive() raises.
  void fill() override;

 private:
  struct message;

  void receive_more();
  bool take_message(const message& buffers);

  std::vector<char> encrypted_input_;        // received and not yet decrypted
  std::array<std::uintptr_t, 2> context_{};  // as the security provider names it
  std::uint32_t header_size_ = 0;
  std::uint32_t trailer_size_ = 0;
  std::uint32_t maximum_size_ = 0;
};

}  // namespace replay::internet::transport::tcp
