// The sockets library, held open for as long as an object lives.
//
// Each object starts the library once and stops it once; the system does the counting.
//
// Threads: each may start and stop objects of its own, whatever others do; an object is not shared.
#pragma once

#include <cstddef>
#include <string>

#include "replay/exception.h"

/// What speaks to other hosts.
namespace replay::internet {

/// The sockets library, started. Whoever looks up names, makes a request, connects, sends or
/// receives needs one while it does so, on every system; WebRequest makes its own.
class environment {
 public:
  /// A start or stop that failed for a reason that no class below tells; the message has the
  /// status.
  class generic : public exception {
   public:
    /// Takes what message() gives.
    explicit generic(const std::string& message) : exception(message) {
      append_name("internet.environment");
    }
  };

  /// The network is down, or a name was looked up without an environment.
  class subsystem_not_ready : public generic {
   public:
    /// Takes what message() gives.
    explicit subsystem_not_ready(const std::string& message) : generic(message) {
      append_name("subsystem_not_ready");
    }
  };

  /// A socket was used without an environment, or the library could not be stopped.
  class subsystem_failed : public generic {
   public:
    /// Takes what message() gives.
    explicit subsystem_failed(const std::string& message) : generic(message) {
      append_name("subsystem_failed");
    }
  };

  /// The system lacks the library's version.
  class version_not_supported : public generic {
   public:
    /// Takes what message() gives.
    explicit version_not_supported(const std::string& message) : generic(message) {
      append_name("version_not_supported");
    }
  };

  /// Starts the library in its version 1.1. Raises subsystem_not_ready, version_not_supported or
  /// generic.
  environment();
  environment(const environment&) = delete;
  environment& operator=(const environment&) = delete;
  /// Stops the library; nobody sees a failure of that.
  ~environment();

  /// Stops the library, to see whether that fails; one that is not started is no failure. The
  /// destructor stops it all the same, so this is for the last object of a process: the second stop
  /// would be that of another object. Raises subsystem_failed or generic.
  void stop();

 private:
  // What the system fills in at the start, its only record of this object.
  alignas(void*) std::byte data_[sizeof(void*) == 8 ? 408 : 400]{};
};

}  // namespace replay::internet
