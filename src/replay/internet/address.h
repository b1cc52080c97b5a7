// Addresses of hosts, and the look-up of names.
#pragma once

#include <string>

#include "replay/exception.h"

namespace replay::internet::address {

class generic : public exception {
 public:
  explicit generic(const std::string& message) : exception(message) {
    append_name("internet.address");
  }
};

class invalid_address_format : public generic {
 public:
  explicit invalid_address_format(const std::string& message) : generic(message) {
    append_name("invalid_address_format");
  }
};

class host_not_found : public generic {
 public:
  explicit host_not_found(const std::string& message) : generic(message) {
    append_name("host_not_found");
  }
};

class service_not_found : public generic {
 public:
  explicit service_not_found(const std::string& message) : generic(message) {
    append_name("service_not_found");
  }
};

}  // namespace replay::internet::address
