// The texts that cross to and from the Notes library.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "notes/abi.h"

namespace notes {

/// The length of a text as the library takes it: the low 16 bits, to which a longer text is cut.
inline WORD lengthOf(const std::string& text) { return static_cast<WORD>(text.size()); }

/// A zero-filled buffer for a text that the library writes. Behind the `Size` bytes that the
/// library is told of there is a last zero that it does not reach.
template <std::size_t Size>
class TextBuffer {
 public:
  char* data() { return bytes_.data(); }

 private:
  std::array<char, Size + 1> bytes_{};
};

}  // namespace notes
