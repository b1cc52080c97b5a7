// A server on this machine that answers as a test says, however badly.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace test {

class Peer {
 public:
  /// How a connection ends: in order, or with a reset; or the peer stays silent.
  enum class Ending { close, reset, silence };

  struct Reply {
    std::string bytes;
    Ending ending = Ending::close;
  };

  /// Listens on a port of its own at 127.0.0.1 and answers each connection, once its request has
  /// come up to an empty line, with the present reply.
  explicit Peer(Reply reply);
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;
  ~Peer();

  void answerWith(Reply reply);

  std::uint16_t port() const;
  /// "http://127.0.0.1:" and the port.
  std::string url() const;
  /// What the last connection asked; call it once its reply was read.
  std::string request() const;

  /// A reset takes back what has not been received yet: the peer waits with it until the client has
  /// counted all bytes of the reply here.
  static std::atomic<std::size_t>& receivedByClient();

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace test
