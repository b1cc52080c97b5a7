#include "internet/peer.h"

#include <native_sockets.h>

#include <algorithm>
#include <stdexcept>

#include "replay/internet/byte_order.h"

namespace test {
namespace {

using platform::SocketHandle;
using replay::internet::network_order;
using Native = decltype(::socket(0, 0, 0));

platform::SocketsApi real;  // the system's own
Native listener;
Native connection;
bool isConnected = false;
std::uint16_t port = 0;
std::size_t underWay = 0;  // bytes that the server has sent and the client has not received

void note(const char* name, std::initializer_list<int> arguments) {
  Peer::calls += Peer::calls.empty() ? name : std::string(" ") + name;
  for (const int argument : arguments) Peer::calls += "," + std::to_string(argument);
}

template <typename Value>
void setOption(int level, int option, const Value& value) {
  ::setsockopt(connection, level, option, reinterpret_cast<const char*>(&value), sizeof value);
}

// With a reset, which tells the client of the end at once and leaves nothing behind in the real.
void closeConnection() {
  if (!isConnected) return;
  isConnected = false;
  setOption(SOL_SOCKET, SO_LINGER, ::linger{1, 0});
  real.closesocket(static_cast<SocketHandle>(connection));
}

int connect(SocketHandle socket, const void* address, int length) {
  note("connect", {length});
  const int result = real.connect(socket, address, length);
  if (result != 0) return result;
  connection = ::accept(listener, nullptr, nullptr);
  isConnected = true;
  underWay = 0;
  setOption(IPPROTO_TCP, TCP_NODELAY, int{1});
  return result;
}

int send(SocketHandle socket, const char* bytes, int count, int flags) {
  note("send", {count, flags});
  const int sent = real.send(socket, bytes, std::min(count, Peer::largestSend), flags);
  char buffer[4096];
  for (int left = sent; left > 0;) {
    const int arrived = real.recv(static_cast<SocketHandle>(connection), buffer,
                                  std::min<int>(left, sizeof buffer), 0);
    if (arrived <= 0) break;
    Peer::received.append(buffer, static_cast<std::size_t>(arrived));
    left -= arrived;
  }
  return sent;
}

int receive(SocketHandle socket, char* bytes, int count, int flags) {
  note("recv", {count, flags});
  if (underWay == 0 && !Peer::pieces.empty()) {
    const std::string& piece = Peer::pieces.front();
    underWay = piece.size();
    real.send(static_cast<SocketHandle>(connection), piece.data(), static_cast<int>(underWay), 0);
    Peer::pieces.pop_front();
  } else if (underWay == 0 && Peer::ending > 0) {
    platform::sockets.WSASetLastError(Peer::ending);
    return -1;
  } else if (underWay == 0 && Peer::ending == Peer::close) {
    ::shutdown(connection, 1);
  } else if (underWay == 0 && Peer::ending == Peer::reset) {
    closeConnection();
  }
  const int taken = real.recv(socket, bytes, count, flags);
  underWay -= static_cast<std::size_t>(std::max(taken, 0));
  return taken;
}

// The time-out is shorter than it was asked for where a test waits for it.
int setTimeout(SocketHandle socket, int level, int option, const char* value, int length) {
  std::uint32_t milliseconds = 0;
  std::memcpy(&milliseconds, value, sizeof milliseconds);
  note("setsockopt", {level, option, static_cast<int>(milliseconds), length});
  const std::uint32_t shorter = 100;
  if (Peer::ending == Peer::silence) value = reinterpret_cast<const char*>(&shorter);
  return real.setsockopt(socket, level, option, value, length);
}

}  // namespace

Peer::Peer(bool listens) {
  answer("", 1);
  largestSend = 1 << 30;
  platform::sockaddr_in address{
      platform::familyIp4, 0, network_order(std::uint32_t{0x7F000001}), {}};
  auto* const record = reinterpret_cast<::sockaddr*>(&address);
  socklen_t length = sizeof address;
  listener = ::socket(AF_INET, SOCK_STREAM, 0);
  if (::bind(listener, record, length) != 0 || ::getsockname(listener, record, &length) != 0 ||
      (listens && ::listen(listener, 1) != 0)) {
    throw std::runtime_error("no server");
  }
  port = network_order(address.sin_port);
  platform::SocketsApi& api = platform::sockets;
  real = api;
  api.socket = [](int family, int type, int protocol) {
    note("socket", {family, type, protocol});
    return real.socket(family, type, protocol);
  };
  api.closesocket = [](SocketHandle socket) {
    note("closesocket", {});
    closeConnection();
    return real.closesocket(socket);
  };
  api.connect = connect;
  api.send = send;
  api.recv = receive;
  api.setsockopt = setTimeout;
}

Peer::~Peer() {
  closeConnection();
  real.closesocket(static_cast<SocketHandle>(listener));
}

void Peer::answer(const std::string& bytes, std::size_t pieceSize, int ending) {
  pieces.clear();
  for (std::size_t begin = 0; begin < bytes.size(); begin += pieceSize) {
    pieces.push_back(bytes.substr(begin, pieceSize));
  }
  Peer::ending = ending;
  calls.clear();
  received.clear();
}

replay::internet::address::ip4 Peer::address() { return {"127.0.0.1", port}; }

std::string Peer::url(const std::string& path) {
  return "http://127.0.0.1:" + std::to_string(port) + path;
}

}  // namespace test
