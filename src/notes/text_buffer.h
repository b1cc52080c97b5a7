// Buffers for the texts that the Notes library writes.
#pragma once

#include <array>
#include <cstddef>

namespace notes {

/// To be made zero-filled, as `TextBuffer<size> text{}`: behind the `Size` bytes that the library
/// is told of there is a last zero that it does not reach.
template <std::size_t Size>
using TextBuffer = std::array<char, Size + 1>;

}  // namespace notes
