// What an HTTP client asks of whom.
//
// Threads: may share, and send, a request that none of them changes.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "replay/internet/address.h"
#include "replay/text.h"

namespace replay::internet::http {

/// Orders the names of headers without regard to case.
struct header_order {
  /// As iless() has it.
  bool operator()(std::string_view left, std::string_view right) const {
    return iless(left, right);
  }
};

/// Headers and their values; a name is there once, in whatever case.
using header_map = std::map<std::string, std::string, header_order>;

/// What to ask, and whom.
struct request {
  /// A request for `text`, "http://host:port/path" with all but the host optional. Resolves the
  /// host, for which there must be an environment; raises what address::ip4 and unicode::to_utf8()
  /// raise. Another scheme than http counts as the host: "https://127.0.0.1/" looks for a host
  /// "https". The port is the number behind the colon, cut to 16 bits, and 0 for a word. The path
  /// is text of the system's default page: bytes of UTF-8 in it come out encoded twice, while "%"
  /// and what is behind it stay. A query without a path is taken for part of the host or, behind a
  /// port, is lost.
  explicit request(const std::string& text);

  address::ip4 address;  ///< The server.
  std::string uri;       ///< As it goes on the wire.
  header_map headers;    ///< At first "Host", without the port, and "Connection: close".
  std::string body;      ///< Whoever sets it adds the header "Content-Length".
};

}  // namespace replay::internet::http
