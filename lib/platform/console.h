// The process's standard output, as whole flushed lines.
//
// Narrow lines go out as their bytes and wide lines as UTF-8, or through the console's wide call
// where standard output is a Windows console. Both share one stream, and what one line holds, or a
// reader that went away, never silences a later line.
#pragma once

#include <string_view>

namespace platform {

/// Writes `text` and a line end. Line feeds within the text become the target's line end as well.
void printNarrowLine(std::string_view text);
void printWideLine(std::u16string_view text);

}  // namespace platform
