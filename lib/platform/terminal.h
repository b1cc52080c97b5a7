// Standard output where a person reads it.
#pragma once

#include <cstddef>
#include <optional>

namespace platform {

/// How many characters fit on a line of the terminal that standard output is; nothing if it is
/// none.
std::optional<std::size_t> terminalWidth();

/// Makes that terminal take the escape sequences of colours. False if it cannot.
bool enableTerminalColours();

}  // namespace platform
