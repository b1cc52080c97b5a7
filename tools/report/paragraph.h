// Text in lines of a width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace reader {

/// The words of UTF-8 text in lines of at most `width` characters, each behind `indent` blanks. A
/// word that is longer has a line of its own.
std::string paragraph(std::string_view text, std::size_t indent, std::size_t width);

}  // namespace reader
