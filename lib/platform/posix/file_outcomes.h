// What the system's error numbers mean for a request for a file.
#pragma once

#include <cerrno>

#include "platform/file_outcome.h"

namespace platform {

inline FileOutcome outcomeOf(int error) {
  switch (error) {
    case ENOENT:
      return FileOutcome::missing;
    case EACCES:
    case EROFS:
      return FileOutcome::denied;
    default:
      return FileOutcome::failed;
  }
}

}  // namespace platform
