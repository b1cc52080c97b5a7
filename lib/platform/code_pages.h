// Conversion between wide text and the bytes of a code page.
//
// The functions have the terms of the Windows calls of the same purpose: the caller provides the
// buffer, malformed text is replaced unless checks are asked for, and a failure is a Windows error
// number. On Windows they are those calls. Elsewhere the pages 65000, 65001, 28591 and 1252 (also
// as page 0) give the results that Windows gives, byte for byte, where they fit the buffer; every
// other page is what the system's iconv makes of it, which differs from Windows for undefined bytes
// and has no best fit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// Error numbers with which a conversion may fail, as GetLastError gives them.
inline constexpr std::uint32_t errorInvalidParameter = 87;
inline constexpr std::uint32_t errorInsufficientBuffer = 122;
inline constexpr std::uint32_t errorInvalidFlags = 1004;
inline constexpr std::uint32_t errorNoUnicodeTranslation = 1113;

struct Conversion {
  /// Units written; 0 if there were none or the conversion failed.
  std::size_t length;
  /// Why `length` is 0. 0 also where the text is in order and has no units.
  std::uint32_t error;
};

/// The bytes that one character of `page` takes at most, or 0 if the system does not know the page.
std::size_t maximumCharacterSize(std::uint32_t page);

/// Converts `text` to the bytes of `page`, with the page's default character for what it lacks.
/// Sets `*usedDefault` if that happened; a null pointer for the pages that take none.
Conversion wideToNarrow(std::uint32_t page, std::u16string_view text, std::span<char> buffer,
                        bool* usedDefault);

/// Converts bytes of `page` to wide text. With `strict` a malformed sequence fails with
/// errorNoUnicodeTranslation, without it comes out as the system's replacement.
Conversion narrowToWide(std::uint32_t page, bool strict, std::string_view text,
                        std::span<char16_t> buffer);

/// UTF-8 of any wide text, with EF BF BD for a lone surrogate.
std::string wideToUtf8(std::u16string_view text);

}  // namespace platform
