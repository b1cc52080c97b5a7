#include "internet/peer.h"

#include <native_sockets.h>

#include <cstdlib>
#include <mutex>
#include <thread>

#include "replay/internet/environment.h"

namespace test {

namespace {

::sockaddr* generic(::sockaddr_in& address) { return reinterpret_cast<::sockaddr*>(&address); }

::sockaddr_in localAddress(std::uint16_t port) {
  ::sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(port);
  return address;
}

// Without its server no test says anything.
void require(bool isDone) {
  if (!isDone) std::abort();
}

template <typename Value>
void setOption(NativeSocket socket, int level, int option, const Value& value) {
  ::setsockopt(socket, level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

// Appends what has come; false at the end of the connection.
bool receive(NativeSocket socket, std::string& bytes) {
  char buffer[4096];
  const auto count = ::recv(socket, buffer, sizeof buffer, 0);
  if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
  return count > 0;
}

void sendAll(NativeSocket socket, const std::string& bytes) {
  for (std::size_t begin = 0; begin < bytes.size();) {
    const auto count = ::send(socket, bytes.data() + begin,
                              static_cast<NativeCount>(bytes.size() - begin), sendFlags);
    if (count <= 0) return;
    begin += static_cast<std::size_t>(count);
  }
}

}  // namespace

class Peer::Server {
 public:
  explicit Server(Reply reply) : reply_(std::move(reply)) {
    ::sockaddr_in address = localAddress(0);
    NativeLength length = sizeof address;
    require(::bind(listener_, generic(address), length) == 0);
    require(::listen(listener_, 64) == 0);
    require(::getsockname(listener_, generic(address), &length) == 0);
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { serve(); });
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  ~Server() {
    isEnding_ = true;
    // A connection of its own wakes the thread up.
    const NativeSocket waker = ::socket(AF_INET, SOCK_STREAM, 0);
    ::sockaddr_in address = localAddress(port_);
    require(::connect(waker, generic(address), sizeof address) == 0);
    thread_.join();
    closeNative(waker);
    closeNative(listener_);
  }

  void answerWith(Reply reply) {
    const std::lock_guard lock(mutex_);
    reply_ = std::move(reply);
  }

  std::uint16_t port() const { return port_; }

  std::string request() const {
    const std::lock_guard lock(mutex_);
    return request_;
  }

 private:
  void serve() {
    for (;;) {
      const NativeSocket socket = ::accept(listener_, nullptr, nullptr);
      if (!isEnding_ && isOpen(socket)) answer(socket);
      if (isOpen(socket)) closeNative(socket);
      if (isEnding_) return;
    }
  }

  void answer(NativeSocket socket) {
    setOption(socket, IPPROTO_TCP, TCP_NODELAY, int{1});
    std::string request;
    while (request.find("\r\n\r\n") == std::string::npos) {
      if (!receive(socket, request)) return;
    }
    Reply reply;
    {
      const std::lock_guard lock(mutex_);
      request_ = request;
      reply = reply_;
    }
    const std::size_t end = receivedByClient() + reply.bytes.size();
    sendAll(socket, reply.bytes);
    if (reply.ending == Ending::reset) {
      while (receivedByClient() < end && !isEnding_) std::this_thread::yield();
      setOption(socket, SOL_SOCKET, SO_LINGER, ::linger{1, 0});
    } else if (reply.ending == Ending::silence) {
      // Until the client has had enough.
      while (receive(socket, request)) {
      }
    }
  }

  replay::internet::environment environment_;
  mutable std::mutex mutex_;
  Reply reply_;
  std::string request_;
  NativeSocket listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
  std::uint16_t port_ = 0;
  std::atomic<bool> isEnding_ = false;
  std::thread thread_;
};

Peer::Peer(Reply reply) : server_(std::make_unique<Server>(std::move(reply))) {}

Peer::~Peer() = default;

void Peer::answerWith(Reply reply) { server_->answerWith(std::move(reply)); }

std::uint16_t Peer::port() const { return server_->port(); }

std::string Peer::url() const { return "http://127.0.0.1:" + std::to_string(port()); }

std::string Peer::request() const { return server_->request(); }

std::atomic<std::size_t>& Peer::receivedByClient() {
  static std::atomic<std::size_t> count = 0;
  return count;
}

}  // namespace test
