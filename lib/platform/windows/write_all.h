// Writing all of a text, however little the system takes at once.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace platform {

/// False if the system refuses.
inline bool writeAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1U << 30));
    DWORD written = 0;
    if (!WriteFile(file, bytes.data(), count, &written, nullptr) || written == 0) return false;
    bytes.remove_prefix(written);
  }
  return true;
}

}  // namespace platform
