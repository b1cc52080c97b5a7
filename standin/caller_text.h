// Texts as callers hand them over and take them: bytes up to a closing zero.
//
// What is handed out is UTF-8. The diagnostics take each byte of a text for a character, as those
// of a server's own set are, and hand characters back as UTF-8: what they hand over is their
// doubled form. So a text that comes in is undone once, each on its own; but names of items, which
// callers have from nobody, are as they are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "notes/abi.h"
#include "store/letters.h"

namespace standin {

/// Copies as much of `text` as fits with a closing zero into `size` bytes, and gives the length
/// copied. Writes nothing into a buffer of no bytes.
inline WORD copyText(std::string_view text, char* buffer, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t length = text.copy(buffer, size - 1);
  buffer[length] = '\0';
  return static_cast<WORD>(length);
}

/// The text that a caller hands over; null stands for an empty text.
inline std::string textFrom(const char* text) {
  return text == nullptr ? std::string() : store::undoubled(text);
}
inline std::string textFrom(const char* text, std::size_t length) {
  return length == 0 ? std::string() : store::undoubled({text, length});
}

}  // namespace standin
