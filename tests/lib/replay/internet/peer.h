// A played connection whose other end answers as a test says, however badly.
#pragma once

#include <algorithm>
#include <deque>
#include <utility>

#include "lib/replay/internet/tables.h"
#include "replay/internet/address.h"
#include "replay/internet/environment.h"

namespace test {

class Peer : public Tables {
 public:
  /// What comes behind the last piece: a close, or the number of the error that a receive fails
  /// with.
  static constexpr int close = 0;
  static constexpr int silence = platform::wsa::etimedout;

  /// A server that does not listen refuses connections.
  explicit Peer(bool listens = true) {
    answer("", 1);
    largestSend = 1 << 30;
    listens_ = listens;
    platform::SocketsApi& api = platform::sockets;
    api.socket = [](int family, int type, int protocol) {
      note("socket", {family, type, protocol});
      isOpen_ = true;
      return platform::SocketHandle{7};
    };
    api.connect = [](platform::SocketHandle, const void*, int length) {
      note("connect", {length});
      return listens_ ? 0 : fail(platform::wsa::econnrefused);
    };
    api.send = [](platform::SocketHandle, const char* bytes, int count, int flags) {
      note("send", {count, flags});
      const int taken = std::min(count, largestSend);
      received.append(bytes, static_cast<std::size_t>(taken));
      return taken;
    };
    api.recv = receive;
    api.closesocket = [](platform::SocketHandle) {
      note("closesocket", {});
      return std::exchange(isOpen_, false) ? 0 : fail(platform::wsa::enotsock);
    };
    api.setsockopt = [](platform::SocketHandle, int level, int option, const char* value,
                        int length) {
      int milliseconds = 0;
      std::memcpy(&milliseconds, value, sizeof milliseconds);
      note("setsockopt", {level, option, milliseconds, length});
      return 0;
    };
  }

  /// Has the next connection answered with `bytes` in pieces of `pieceSize`, and forgets what was
  /// noted of the last one.
  static void answer(const std::string& bytes, std::size_t pieceSize, int end = close) {
    pieces.clear();
    send(bytes, pieceSize);
    ending = end;
    calls.clear();
    received.clear();
  }

  static void send(const std::string& bytes, std::size_t pieceSize) {
    for (std::size_t begin = 0; begin < bytes.size(); begin += pieceSize) {
      pieces.push_back(bytes.substr(begin, pieceSize));
    }
  }

  static replay::internet::address::ip4 address() { return {"127.0.0.1", 4711}; }
  static std::string url(const std::string& path) { return "http://127.0.0.1:4711" + path; }

  static inline std::deque<std::string> pieces;
  static inline int ending = close;
  static inline int largestSend = 0;   ///< what one send of the client takes
  static inline std::string calls;     ///< the client's calls with their arguments
  static inline std::string received;  ///< what has arrived at the server

 private:
  static void note(const char* name, std::initializer_list<int> arguments) {
    calls += calls.empty() ? name : std::string(" ") + name;
    for (const int argument : arguments) calls += "," + std::to_string(argument);
  }

  static int fail(int error) {
    platform::sockets.WSASetLastError(error);
    return -1;
  }

  static int receive(platform::SocketHandle /*socket*/, char* bytes, int count, int flags) {
    note("recv", {count, flags});
    if (pieces.empty()) return ending == close ? 0 : fail(ending);
    const std::size_t size = pieces.front().copy(bytes, static_cast<std::size_t>(count));
    pieces.front().erase(0, size);
    if (pieces.front().empty()) pieces.pop_front();
    return static_cast<int>(size);
  }

  static inline bool listens_ = true;
  static inline bool isOpen_ = false;

  replay::internet::environment environment_;
};

}  // namespace test
