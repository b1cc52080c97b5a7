// The three look-ups of host names, which not every system's sockets library has.
//
// They come from the system's library if it has all three, and from the emulation otherwise, never
// from both. Which it is, is settled when the object of the process is made, by its first look-up,
// whichever thread makes it, and stays so. All threads may share an object.
#pragma once

#include <string>

#include "platform/sockets.h"

namespace replay::internet::address {

class name_lookup {
 public:
  name_lookup();

  /// The addresses of `node`, for free_addr_info to release. 0 or an error number of Windows
  /// sockets, which becomes the thread's last error as well.
  int get_addr_info(const char* node, platform::addrinfo** list) const;

  /// Longest name of a host, its closing zero included.
  static constexpr std::uint32_t name_size = 1025;

  /// Writes the name of the host at `address` into `name`, which has room for name_size bytes. The
  /// result is that of get_addr_info.
  int get_name_info(const void* address, int size, char* name, int flags) const;

  void free_addr_info(platform::addrinfo* list) const;

 private:
  struct functions {
    platform::GetAddrInfo getaddrinfo;
    platform::GetNameInfo getnameinfo;
    platform::FreeAddrInfo freeaddrinfo;
  };

  static void* load_library();
  static void* load_library_with_lookups(const std::string& path);
  static bool find_functions(void* library, functions& found);

  functions functions_;
};

/// The object of the process, made at the first call.
name_lookup& process_name_lookup();

}  // namespace replay::internet::address
