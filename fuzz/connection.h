// A connection whose peer sends what a fuzzer makes up, in pieces of its choice, and then closes.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/sockets.h"

class Connection {
 public:
  /// The pieces have `pieceSize` bytes; 0 stands for all at once.
  Connection(std::string_view bytes, std::size_t pieceSize) {
    rest_ = bytes;
    pieceSize_ = pieceSize == 0 ? bytes.size() + 1 : pieceSize;
    platform::SocketsApi& api = platform::sockets;
    api.socket = [](int, int, int) { return platform::SocketHandle{7}; };
    api.connect = [](platform::SocketHandle, const void*, int) { return 0; };
    api.setsockopt = [](platform::SocketHandle, int, int, const char*, int) { return 0; };
    api.closesocket = [](platform::SocketHandle) { return 0; };
    api.send = [](platform::SocketHandle, const char*, int count, int) { return count; };
    api.recv = [](platform::SocketHandle, char* buffer, int count, int) {
      const std::size_t size =
          rest_.copy(buffer, std::min<std::size_t>(static_cast<std::size_t>(count), pieceSize_));
      rest_.remove_prefix(size);
      return static_cast<int>(size);
    };
  }

 private:
  static inline std::string_view rest_;
  static inline std::size_t pieceSize_ = 0;
};
