#include "platform/posix/paths.h"

#include <algorithm>

#include "platform/code_pages.h"

namespace platform {

std::optional<std::string> nativePath(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  if (native.starts_with("//")) return std::nullopt;
  return native;
}

std::optional<std::string> nativePath(std::u16string_view path) {
  const auto isByte = [](char16_t unit) { return unit < 256; };
  std::string bytes;
  for (auto unit = path.begin(); unit != path.end();) {
    const auto wide = std::find_if_not(unit, path.end(), isByte);
    for (; unit != wide; ++unit) bytes += static_cast<char>(static_cast<unsigned char>(*unit));
    unit = std::find_if(wide, path.end(), isByte);
    bytes += wideToUtf8({wide, unit});
  }
  return nativePath(bytes);
}

}  // namespace platform
