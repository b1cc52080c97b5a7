// What findings mean, as a page of Markdown that reads as plain text too.
#pragma once

#include <cstddef>
#include <ostream>

#include "report/code.h"

namespace reader {

/// Writes the chapter of a code, in lines of at most `width` characters.
void writeExplanation(Code code, std::size_t width, std::ostream& out);

/// Writes the page: a chapter for each code behind what is to be known of them all.
void writeExplanations(std::size_t width, std::ostream& out);

}  // namespace reader
