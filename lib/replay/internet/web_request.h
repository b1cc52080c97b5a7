// Named values sent to a web server as a query, and the text that it answers.
//
// Threads: one object, one thread at a time; separate objects at once.
#pragma once

#include <exception>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "replay/internet/xml_value.h"

namespace replay::internet {

/// A query by "GET" and its answer. An object may ask again.
class WebRequest {
 public:
  /// A failure as applications show it: one wide message. It is no replay::exception, and what()
  /// is that of std::exception, which tells nothing.
  class WebRequestError : public std::exception {
   public:
    /// Takes what message() gives.
    explicit WebRequestError(std::u16string message) : message_(std::move(message)) {}

    /// One of "HTTP-error: Connection aborted.", "HTTP-error: Connection closed.", "HTTP-error:
    /// Invalid response.", "HTTP-error: Could not resolve hostname.", "HTTP-error: Connection
    /// failed." and "Bad HTTP Response.".
    const std::u16string& message() const { return message_; }

   private:
    std::u16string message_;
  };

  /// Asks `base_url` with the values of `parameters` and keeps what was asked and answered in the
  /// fields below. Values are escaped, names only as http::request does it. Raises WebRequestError
  /// for each failure of host, connection and reply, and for a status other than 200; the classes
  /// of environment and unicode come as they are.
  void execute();

  /// The value in `body` at a path of element names, as scan_value() finds it; empty also where the
  /// path is not found. Raises std::out_of_range as that does.
  std::string value(std::string_view path) const;

  /// As the function of that name does it.
  static bool scan_value(std::string_view document, std::string_view path, std::string& out) {
    return internet::scan_value(document, path, out);
  }

  /// The address as http::request takes it, up to where the query begins. It has a path: without
  /// one the query becomes part of the host or, behind a port, is lost.
  std::string base_url;
  std::map<std::string, std::string> parameters;  ///< The values to ask with, by name.

  std::string query;  ///< What was asked: "?", and each parameter as "name=value" with "&" between.
  std::string url;    ///< `base_url` and `query`.
  std::string raw_body;  ///< As received.
  std::string body;      ///< Without line ends and tabs.
};

}  // namespace replay::internet
