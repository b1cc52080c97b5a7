// A client for plain HTTP/1.1.
#pragma once

#include <string>

#include "replay/exception.h"

namespace replay::internet::http {

/// The family's name is "http" alone, without the namespace around it.
class generic : public exception {
 public:
  explicit generic(const std::string& message) : exception(message) { append_name("http"); }
};

class closed : public generic {
 public:
  explicit closed(const std::string& message) : generic(message) { append_name("closed"); }
};

class aborted : public generic {
 public:
  explicit aborted(const std::string& message) : generic(message) { append_name("aborted"); }
};

class invalid_response : public generic {
 public:
  explicit invalid_response(const std::string& message) : generic(message) {
    append_name("invalid_response");
  }
};

}  // namespace replay::internet::http
