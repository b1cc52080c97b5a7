// A connection whose other side a test writes down: every operation of the sockets table is played.
#pragma once

#include <algorithm>
#include <deque>
#include <string>

#include "internet/tables.h"

namespace test {

class Script {
 public:
  /// What each recv gives in turn; behind the last comes `ending`, an error number or 0 for a peer
  /// that closes.
  static inline std::deque<std::string> pieces;
  static inline int ending = 0;

  static inline std::string calls;  ///< the operations with their arguments
  static inline std::string sent;
  static inline int largestSend = 1 << 30;  ///< what one send takes

  Script() {
    reset();
    platform::SocketsApi& api = platform::sockets;
    api.socket = [](int family, int type, int protocol) -> platform::SocketHandle {
      note("socket", {family, type, protocol});
      return 7;
    };
    api.connect = [](platform::SocketHandle, const void*, int length) {
      return note("connect", {length});
    };
    api.setsockopt = [](platform::SocketHandle, int level, int option, const char* value,
                        int length) {
      std::uint32_t milliseconds = 0;
      std::memcpy(&milliseconds, value, sizeof milliseconds);
      return note("setsockopt", {level, option, static_cast<int>(milliseconds), length});
    };
    api.closesocket = [](platform::SocketHandle) { return note("closesocket", {}); };
    api.send = [](platform::SocketHandle, const char* bytes, int count, int flags) {
      const int taken = std::min(count, largestSend);
      sent.append(bytes, static_cast<std::size_t>(taken));
      note("send", {count, flags});
      return taken;
    };
    api.recv = [](platform::SocketHandle, char* bytes, int count, int flags) {
      note("recv", {count, flags});
      if (pieces.empty()) return ending == 0 ? 0 : -1;
      const std::size_t length = pieces.front().copy(bytes, static_cast<std::size_t>(count));
      pieces.front().erase(0, length);
      if (pieces.front().empty()) pieces.pop_front();
      return static_cast<int>(length);
    };
    api.WSAGetLastError = [] { return ending; };
  }

  static void reset() {
    pieces.clear();
    ending = 0;
    calls.clear();
    sent.clear();
    largestSend = 1 << 30;
  }

  /// Delivers `bytes` in pieces of `size` bytes.
  static void deliver(const std::string& bytes, std::size_t size) {
    pieces.clear();
    for (std::size_t begin = 0; begin < bytes.size(); begin += size) {
      pieces.push_back(bytes.substr(begin, size));
    }
  }

 private:
  static int note(const char* name, std::initializer_list<int> arguments) {
    calls += calls.empty() ? name : std::string(" ") + name;
    for (const int argument : arguments) calls += "," + std::to_string(argument);
    return 0;
  }

  Tables tables_;
};

}  // namespace test
