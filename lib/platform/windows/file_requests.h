// Names of files as the system takes them, and what it answers.
#pragma once

#include <windows.h>

#include <string>

#include "platform/file_outcome.h"

namespace platform {

inline std::wstring nativeName(const std::string& name) {
  const int size = static_cast<int>(name.size());
  std::wstring native(name.size(), L'\0');
  native.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, name.data(), size, native.data(), size)));
  return native;
}

/// For the number of the last error.
inline FileOutcome outcomeOf(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
      return FileOutcome::missing;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return FileOutcome::denied;
    case ERROR_LOCK_VIOLATION:
    case ERROR_SHARING_VIOLATION:
      return FileOutcome::busy;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return FileOutcome::full;
    default:
      return FileOutcome::failed;
  }
}

}  // namespace platform
