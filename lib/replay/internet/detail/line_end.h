// Where lines end.
#pragma once

#include <cstddef>
#include <string_view>

namespace replay::internet {

constexpr bool is_line_end(char byte) { return byte == '\r' || byte == '\n'; }

/// The place of the first CR or LF at or behind `from`, or the size of `bytes` if there is none.
std::size_t find_line_end(std::string_view bytes, std::size_t from);

}  // namespace replay::internet
