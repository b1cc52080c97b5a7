// Sockets, and the byte streams on top of them.
//
// A stream is made, opened, connected, and then read and written in any order; its destructor
// closes the socket. The sockets block. A failed call of the sockets library raises one of the
// classes below. Besides what stands above it, each operation that calls it may raise generic, and
// environment::subsystem_not_ready or subsystem_failed where the library itself is down.
//
// Threads: one object, one thread at a time; separate objects at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "replay/exception.h"
#include "replay/internet/address.h"
#include "replay/internet/byte_queue.h"

/// Sockets, and what failed with them.
namespace replay::internet::transport {

/// A failed call that no class below tells; the message has its name and status.
class generic : public exception {
 public:
  /// Takes what message() gives.
  explicit generic(const std::string& message) : exception(message) {
    append_name("internet.transport");
  }
};

/// The call was interrupted before it did anything.
class operation_interrupted : public generic {
 public:
  /// Takes what message() gives.
  explicit operation_interrupted(const std::string& message) : generic(message) {
    append_name("operation_interrupted");
  }
};

/// There is no open socket.
class not_a_socket : public generic {
 public:
  /// Takes what message() gives.
  explicit not_a_socket(const std::string& message) : generic(message) {
    append_name("not_a_socket");
  }
};

/// Connecting: the address of this side is taken.
class address_in_use : public generic {
 public:
  /// Takes what message() gives.
  explicit address_in_use(const std::string& message) : generic(message) {
    append_name("address_in_use");
  }
};

/// Connecting: the address is none that a host can have.
class address_not_valid : public generic {
 public:
  /// Takes what message() gives.
  explicit address_not_valid(const std::string& message) : generic(message) {
    append_name("address_not_valid");
  }
};

/// A socket that is opened once and closed once.
class base {
 public:
  base() = default;
  base(const base&) = delete;
  base& operator=(const base&) = delete;
  /// Closes the socket; nobody sees a failure of that.
  virtual ~base();

  /// Makes the socket, of the family of `address`. Only where none is open: that one would stay
  /// open, and nobody could close it any more.
  virtual void open(const address::base& address) = 0;

  /// Closes the socket if there is one.
  void close();

  /// Receives once into the `size` bytes at `buffer`, and returns how many came, at least one.
  /// Raises connection_closed if the peer has closed, connection_aborted, connection_reset,
  /// connection_timed_out, connection_failed without a connection, not_a_socket without a socket,
  /// or operation_interrupted.
  std::size_t receive(char* buffer, std::size_t size);

  /// Sends the `size` bytes at `buffer`, until all are gone. Raises connection_closed if the system
  /// takes nothing more, and what receive() raises.
  void send_all(const char* buffer, std::size_t size);

  /// Lets a receive fail with connection_timed_out after 30 seconds. Connecting and sending have no
  /// limit. Raises not_a_socket.
  void set_receive_timeout();

  /// Bytes that came over the socket so far, modulo 2^32.
  std::uint32_t received() const { return received_; }
  /// Bytes that left over the socket so far, modulo 2^32.
  std::uint32_t sent() const { return sent_; }

 protected:
  /// Makes the socket: `type` is 1 for a stream and 2 for datagrams.
  void open_socket(const address::base& address, int type);
  /// The system's handle, the descriptor on Linux; all bits are set where there is no socket.
  std::uintptr_t socket() const { return socket_; }

 private:
  std::uint32_t received_ = 0;
  std::uint32_t sent_ = 0;
  std::uintptr_t socket_ = ~std::uintptr_t{0};
};

/// Streams.
namespace tcp {

/// What all streams have in common: a queue of bytes for each direction, between which and the
/// socket stand flush and fill. The names of its failures follow their inheritance and say neither
/// "tcp" nor "base".
class base : public transport::base {
 public:
  /// There is no connection, or no longer.
  class connection_failed : public generic {
   public:
    /// Takes what message() gives.
    explicit connection_failed(const std::string& message) : generic(message) {
      append_name("connection_failed");
    }
  };

  /// The system of this side gave the connection up.
  class connection_aborted : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit connection_aborted(const std::string& message) : connection_failed(message) {
      append_name("connection_aborted");
    }
  };

  /// The peer has closed the connection.
  class connection_closed : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit connection_closed(const std::string& message) : connection_failed(message) {
      append_name("connection_closed");
    }
  };

  /// Connecting: nobody listens at the address.
  class connection_refused : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit connection_refused(const std::string& message) : connection_failed(message) {
      append_name("connection_refused");
    }
  };

  /// The peer cut the connection off.
  class connection_reset : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit connection_reset(const std::string& message) : connection_failed(message) {
      append_name("connection_reset");
    }
  };

  /// Nothing came within the time-out, or nobody took what was sent.
  class connection_timed_out : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit connection_timed_out(const std::string& message) : connection_failed(message) {
      append_name("connection_timed_out");
    }
  };

  /// Connecting: there is no way to the network of the address.
  class network_unreachable : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit network_unreachable(const std::string& message) : connection_failed(message) {
      append_name("network_unreachable");
    }
  };

  /// Connecting: there is no way to the host, or it did not answer.
  class host_unreachable : public connection_failed {
   public:
    /// Takes what message() gives.
    explicit host_unreachable(const std::string& message) : connection_failed(message) {
      append_name("host_unreachable");
    }
  };

  void open(const address::base& address) override;
  /// Connects the open socket, and waits for that as long as the system does. Raises
  /// connection_refused, host_unreachable, network_unreachable, address_in_use, address_not_valid,
  /// not_a_socket or operation_interrupted.
  void connect(const address::base& address);

  /// Sends all that waits in the write queue. Raises what send_all() raises.
  virtual void flush() = 0;
  /// Waits for bytes and adds them to the read queue, at least one. Raises what receive() raises.
  virtual void fill() = 0;

  /// Sets `line` to the bytes before the next CR or LF. One of each, in either order, is one line
  /// end, so that the byte behind a terminator is waited for: raises connection_closed, with `line`
  /// empty, if the peer closes right behind it; and what fill() raises.
  void read_line(std::string& line);

  /// Sets `bytes` to what has arrived, at most `maximum` bytes and, unless that is 0, at least one.
  /// Raises what fill() raises, where nothing has arrived yet.
  void read(std::size_t maximum, std::string& bytes);
  /// Sets `bytes` to all that has arrived, at least one byte. Raises what read() raises.
  void read_some(std::string& bytes);

  /// Appends to `bytes` what read() would set it to, and returns the number of bytes. Raises what
  /// read() raises.
  std::size_t append(std::size_t maximum, std::string& bytes);

  /// Queues `text` and CR LF, to leave at the next flush or at once, which raises what flush()
  /// raises.
  void write_line(std::string_view text, bool flush_now);

  /// Sends `text`, behind all that waits. Raises what flush() raises.
  void write(std::string_view text);

 protected:
  /// What was written and has not left yet: flush() takes it.
  byte_queue& write_queue() { return write_queue_; }
  /// What has arrived and was not read yet: fill() adds to it.
  byte_queue& read_queue() { return read_queue_; }

 private:
  // What the next read may take, at most `maximum` bytes; waits until there is any.
  std::string_view waiting(std::size_t maximum);

  byte_queue write_queue_;
  byte_queue read_queue_;
};

/// The plain stream.
class raw : public base {
 public:
  /// What waits is gone even if sending fails: a failed flush is not repeated.
  void flush() override;
  /// Receives once, at most 8,192 bytes.
  void fill() override;
};

}  // namespace tcp

/// Datagrams.
namespace udp {

/// A socket for datagrams, without operations to send or receive any.
class raw : public base {
 public:
  void open(const address::base& address) override;
};

}  // namespace udp

}  // namespace replay::internet::transport
