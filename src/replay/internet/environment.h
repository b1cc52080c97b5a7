// The sockets library, held open for as long as an object lives.
#pragma once

#include <string>

#include "replay/exception.h"

namespace replay::internet {

class environment {
 public:
  class generic : public exception {
   public:
    explicit generic(const std::string& message) : exception(message) {
      append_name("internet.environment");
    }
  };

  class subsystem_not_ready : public generic {
   public:
    explicit subsystem_not_ready(const std::string& message) : generic(message) {
      append_name("subsystem_not_ready");
    }
  };

  class subsystem_failed : public generic {
   public:
    explicit subsystem_failed(const std::string& message) : generic(message) {
      append_name("subsystem_failed");
    }
  };

  class version_not_supported : public generic {
   public:
    explicit version_not_supported(const std::string& message) : generic(message) {
      append_name("version_not_supported");
    }
  };
};

}  // namespace replay::internet
