// Which failure goes on where a close fails as well.
#pragma once

#include <exception>

namespace notes {

/// A member of an owner that closes in its destructor. A failed close there is raised unless a
/// failure has begun to unwind since the owner was made, which then goes on alone.
class FailureWatch {
 public:
  bool isUnwinding() const { return std::uncaught_exceptions() > failuresBefore_; }

 private:
  int failuresBefore_ = std::uncaught_exceptions();
};

}  // namespace notes
