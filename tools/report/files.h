// Files, and words for what the system refuses of them.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/file_outcome.h"

namespace reader {

/// What the program cannot do, in words for the user.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& reason) : runtime_error(reason), reason_(reason) {}
  Failure(const std::string& file, const std::string& reason)
      : runtime_error(file + ": " + reason), reason_(reason) {}

  /// Without the file's name.
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
};

/// Why a request for a file is not done: that it cannot be `read`, or what else was asked for.
std::string failureOf(platform::FileOutcome outcome, const char* request);

/// Raises Failure unless a request for the file `name` is done: in the words of failureOf.
void require(platform::FileOutcome outcome, const std::string& name, const char* request);

/// All bytes of a file, or of standard input if its name is "-". Raises Failure.
std::string bytesOf(const std::string& name);

}  // namespace reader
