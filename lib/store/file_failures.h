// What the system refuses of a file, as a status that says so.
#pragma once

#include <system_error>

#include "store/status.h"

namespace store {

/// The statuses for one kind of file; `refused` is for all that has no status of its own.
struct FileStatuses {
  Status missing;
  Status isNoFile;
  Status linkLoop;
  Status pathTooLong;
  Status refused;
};

inline Status statusOf(const std::error_code& error, const FileStatuses& statuses) {
  if (error == std::errc::no_such_file_or_directory) return statuses.missing;
  if (error == std::errc::is_a_directory) return statuses.isNoFile;
  if (error == std::errc::too_many_symbolic_link_levels) return statuses.linkLoop;
  if (error == std::errc::filename_too_long) return statuses.pathTooLong;
  return statuses.refused;
}

/// Calls `work`, which uses a File, and gives its result.
template <typename Work>
auto withFile(const FileStatuses& statuses, Work work) {
  try {
    return work();
  } catch (const std::system_error& error) {
    throw Failure(statusOf(error.code(), statuses));
  }
}

}  // namespace store
