// Files, and words for what the system refuses of them.
#pragma once

#include <stdexcept>
#include <string>

#include "platform/file_outcome.h"

namespace reader {

/// What the program cannot do, in words for the user.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Raises Failure unless a request for the file `name` is done: that it cannot be `read`, or what
/// else was asked for.
void require(platform::FileOutcome outcome, const std::string& name, const char* request);

/// All bytes of a file, or of standard input if its name is "-". Raises Failure.
std::string bytesOf(const std::string& name);

}  // namespace reader
