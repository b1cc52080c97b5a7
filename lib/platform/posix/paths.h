// Windows paths as names of the file system.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The bytes by which the file system knows a path; nothing for a network path.
std::optional<std::string> nativePath(std::string_view path);
std::optional<std::string> nativePath(std::u16string_view path);

}  // namespace platform
