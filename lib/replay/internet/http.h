// A client for plain HTTP/1.1.
//
// One connection for each request, which a monitor sees step by step and may abort. The client
// reads until the server closes or nothing comes for 30 seconds, or until the last chunk. No
// redirects, no proxy, no authentication, and no connection is kept.
//
// Threads: may send requests at once, each with a monitor of its own.
#pragma once

#include <cstdint>
#include <string>

#include "replay/exception.h"
#include "replay/internet/http_request.h"

/// Requests, replies, and what failed with them.
namespace replay::internet::http {

/// Any failure of a request that is told here; its name is "http" alone, without the namespaces.
class generic : public exception {
 public:
  /// Takes what message() gives.
  explicit generic(const std::string& message) : exception(message) { append_name("http"); }
};

/// The connection did not come about, or ended too early, or nothing came for 30 seconds. Without a
/// message.
class closed : public generic {
 public:
  /// Takes what message() gives.
  explicit closed(const std::string& message) : generic(message) { append_name("closed"); }
};

/// The monitor said so. Without a message.
class aborted : public generic {
 public:
  /// Takes what message() gives.
  explicit aborted(const std::string& message) : generic(message) { append_name("aborted"); }
};

/// What came is no reply of HTTP/1; the message is its first line, or says what of it.
class invalid_response : public generic {
 public:
  /// Takes what message() gives.
  explicit invalid_response(const std::string& message) : generic(message) {
    append_name("invalid_response");
  }
};

/// What a server answered. Of a reply that is not quite in order, parts may be missing or stand
/// elsewhere: a header without a value ends the headers, and what is behind it begins the body; a
/// status of 101 to 199 is taken for the reply itself, whose head begins the body then; letters a
/// to f behind the size of a chunk count as its digits, and a size without digits ends the body.
struct response {
  std::int32_t status = 0;  ///< The number of its last status line, such as 200.
  header_map headers;       ///< A repeated name keeps its last value.
  /// Its bytes, without the frames of chunks. Without chunks it ends where the connection does, be
  /// it broken or silent for 30 seconds: whether it is whole, only "Content-Length" tells.
  std::string body;
};

/// Sees the steps of a request. Each operation returns true to go on and false to abort the
/// request.
class monitor_type {
 public:
  monitor_type() = default;
  monitor_type(const monitor_type&) = default;             ///< As a value.
  monitor_type& operator=(const monitor_type&) = default;  ///< As a value.
  virtual ~monitor_type() = default;

  /// The connection stands, and nothing has been sent.
  virtual bool on_request(const std::string& method, const std::string& uri);
  /// For each status line, also that of a 100, behind which the client waits for the next.
  virtual bool on_status(std::int32_t status);
  /// Before a header is written.
  virtual bool on_request_header(const std::string& name, const std::string& value);
  /// Before a header is stored.
  virtual bool on_response_header(const std::string& name, const std::string& value);
  /// Before a body is written, all at once: `offset` is 0, `count` and `total` are its length.
  virtual bool on_request_body(const std::string& body, std::uint32_t offset, std::uint32_t count,
                               std::uint32_t total);
  /// After a piece was appended: the body so far and its length, the length of the piece, and that
  /// of the whole as the header "Content-Length" has it, 0 without one.
  virtual bool on_response_body(const std::string& body, std::uint32_t length, std::uint32_t piece,
                                std::int32_t total);
};

/// Sends the request with the word `method` and returns the reply, whatever its status. Raises
/// aborted if the monitor says so, invalid_response, and closed for every failure of the
/// connection that does not just end a body, a refused one among them, and for a body that is not
/// as long as "Content-Length" says, where that is not 0: so for a reply to "HEAD", a 204 or a 304
/// with a length. Other classes of transport and environment come as they are.
response perform(const request& request, monitor_type& monitor, const std::string& method);

/// perform() with "GET".
response get(const request& request, monitor_type& monitor);
/// The same with a monitor that only looks on.
response get(const request& request);

}  // namespace replay::internet::http
