// The web server that the clients are measured against, a process of its own.
#pragma once

#include <sys/types.h>

#include <cstdint>

namespace benchmark {

class Server {
 public:
  /// Serves "/identity" and "/chunked", each 200 MiB, and "/small", 1 KiB, on a free port.
  Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server();

  std::uint16_t port() const { return port_; }

 private:
  std::uint16_t port_ = 0;
  pid_t process_ = 0;
};

inline constexpr std::size_t largeBody = 200U << 20U;
inline constexpr std::size_t smallBody = 1024;
inline constexpr std::size_t chunkSize = 16U << 10U;

}  // namespace benchmark
