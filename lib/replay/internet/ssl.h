// The encrypted stream.
//
// Above flush and fill nobody knows that a stream is encrypted: lines, reads and writes are those
// of the plain one, and the counters count encrypted bytes. Whatever the security provider answers
// beside success and "incomplete" is the end of the stream: a close notification and a wish for a
// new handshake as well, which are not carried out. No notification is sent at the end.
//
// Threads: one object, one thread at a time; separate objects at once.
#pragma once

#include <string>
#include <vector>

#include "platform/security.h"
#include "replay/internet/transport.h"

namespace replay::internet::transport::tcp {

class ssl : public base {
 public:
  /// The security provider failed; the message tells its operation and status.
  class security : public generic {
   public:
    explicit security(const std::string& message) : generic(message) { append_name("security"); }
  };

  using certificate_trust = platform::CertificateTrust;

  /// Connects to `server` with the time-out of receiving set, and establishes the security context
  /// as its client. `host_name`, a name or a dotted address, is what the server's certificate must
  /// have among its alternative names; `trust` tells which authorities count, those of the system
  /// by default. Only TLS 1.2 with AES-GCM is spoken: with other suites the provider fills less
  /// than the header and trailer that it asks for, and a message sent at full size would not be
  /// valid. Raises security, and what opening, connecting, sending and receiving raise.
  ssl(const address::base& server, const std::string& host_name,
      const certificate_trust& trust = {});
  ~ssl() override;

  /// Sends what waits as messages of the largest size. What a failed message held is gone.
  void flush() override;

  /// Adds the data of one message to the read queue.
  void fill() override;

 protected:
  /// Takes over an established context.
  explicit ssl(platform::SecureStream established);

 private:
  void receive_more();
  bool take_message(platform::SecurityBuffer* buffers, std::size_t count);

  std::vector<char> encrypted_input_;  // received and not yet decrypted
  platform::SecurityContext context_{};
  platform::SecurityStreamSizes stream_sizes_{};
};

}  // namespace replay::internet::transport::tcp
