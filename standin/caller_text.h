// Texts as callers hand them over and take them: bytes up to a closing zero.
#pragma once

#include <cstddef>
#include <string_view>

#include "notes/abi.h"

namespace standin {

/// Copies as much of `text` as fits with a closing zero into `size` bytes, and gives the length
/// copied. Writes nothing into a buffer of no bytes.
inline WORD copyText(std::string_view text, char* buffer, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t length = text.copy(buffer, size - 1);
  buffer[length] = '\0';
  return static_cast<WORD>(length);
}

/// The text behind a pointer that may be null, which stands for an empty text.
inline std::string_view textOrEmpty(const char* text) {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace standin
