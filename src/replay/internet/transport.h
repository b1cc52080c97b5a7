// Sockets, and the byte streams on top of them.
#pragma once

#include <string>

#include "replay/exception.h"

namespace replay::internet::transport {

class generic : public exception {
 public:
  explicit generic(const std::string& message) : exception(message) {
    append_name("internet.transport");
  }
};

class operation_interrupted : public generic {
 public:
  explicit operation_interrupted(const std::string& message) : generic(message) {
    append_name("operation_interrupted");
  }
};

class not_a_socket : public generic {
 public:
  explicit not_a_socket(const std::string& message) : generic(message) {
    append_name("not_a_socket");
  }
};

class address_in_use : public generic {
 public:
  explicit address_in_use(const std::string& message) : generic(message) {
    append_name("address_in_use");
  }
};

class address_not_valid : public generic {
 public:
  explicit address_not_valid(const std::string& message) : generic(message) {
    append_name("address_not_valid");
  }
};

namespace tcp {

/// What all streams have in common. The names of its failures follow their inheritance and say
/// neither "tcp" nor "base".
class base {
 public:
  class connection_failed : public generic {
   public:
    explicit connection_failed(const std::string& message) : generic(message) {
      append_name("connection_failed");
    }
  };

  class connection_aborted : public connection_failed {
   public:
    explicit connection_aborted(const std::string& message) : connection_failed(message) {
      append_name("connection_aborted");
    }
  };

  class connection_closed : public connection_failed {
   public:
    explicit connection_closed(const std::string& message) : connection_failed(message) {
      append_name("connection_closed");
    }
  };

  class connection_refused : public connection_failed {
   public:
    explicit connection_refused(const std::string& message) : connection_failed(message) {
      append_name("connection_refused");
    }
  };

  class connection_reset : public connection_failed {
   public:
    explicit connection_reset(const std::string& message) : connection_failed(message) {
      append_name("connection_reset");
    }
  };

  class connection_timed_out : public connection_failed {
   public:
    explicit connection_timed_out(const std::string& message) : connection_failed(message) {
      append_name("connection_timed_out");
    }
  };

  class network_unreachable : public connection_failed {
   public:
    explicit network_unreachable(const std::string& message) : connection_failed(message) {
      append_name("network_unreachable");
    }
  };

  class host_unreachable : public connection_failed {
   public:
    explicit host_unreachable(const std::string& message) : connection_failed(message) {
      append_name("host_unreachable");
    }
  };
};

/// The stream over an established security context.
class ssl : public base {
 public:
  class security : public generic {
   public:
    explicit security(const std::string& message) : generic(message) { append_name("security"); }
  };
};

}  // namespace tcp

}  // namespace replay::internet::transport
