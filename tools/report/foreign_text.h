// Files that are no report as the diagnostics wrote it.
#pragma once

#include <string>
#include <string_view>

namespace reader {

/// Whether bytes begin with the byte order mark of UTF-16, of either order.
bool isWide(std::string_view bytes);

/// UTF-8 of such bytes, without the mark; U+FFFD for half a surrogate pair, and for half a unit at
/// the end.
std::string wideAsUtf8(std::string_view bytes);

/// Why a file may hold no entry, in words that tell what to ask for.
std::string whyNoEntry(std::string_view bytes);

}  // namespace reader
