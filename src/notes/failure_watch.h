// Decides which of two failures a caller sees where an owner fails to close what it owns while
// another failure is on its way out.
#pragma once

#include <exception>

namespace notes {

/// A member of an owner that closes in its destructor, to be asked there. The destructor raises its
/// own failure unless isUnwinding() is true: then a failure that came up since the owner was made
/// goes on alone.
class FailureWatch {
 public:
  bool isUnwinding() const { return std::uncaught_exceptions() > failuresBefore_; }

 private:
  int failuresBefore_ = std::uncaught_exceptions();
};

}  // namespace notes
