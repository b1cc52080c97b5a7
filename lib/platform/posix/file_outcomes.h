// What the system's error numbers mean for a request for a file.
#pragma once

#include <cerrno>

#include "platform/file_outcome.h"

namespace platform {

inline FileOutcome outcomeOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return FileOutcome::missing;
    case EISDIR:
      return FileOutcome::folder;
    case EACCES:
    case EPERM:
    case EROFS:
      return FileOutcome::denied;
    case EDQUOT:
    case EFBIG:
    case ENOSPC:
      return FileOutcome::full;
    default:
      return FileOutcome::failed;
  }
}

}  // namespace platform
