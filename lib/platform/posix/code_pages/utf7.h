// UTF-7 as Windows writes and reads it. No text is malformed: what is no base64 stands for itself,
// and bits that make no whole unit are dropped.
#pragma once

#include <span>
#include <string_view>

#include "platform/code_pages.h"

namespace platform {

/// Writes only letters, digits, '(),-./:? blank, tab, CR, LF and zero as they are, and closes each
/// base64 run with "-".
Conversion encodeUtf7(std::u16string_view text, std::span<char> buffer);

/// A byte above 7F is the unit of the same value; it ends a base64 run but keeps the bits left over
/// from it for the next run, also over a "+-".
Conversion decodeUtf7(std::string_view text, std::span<char16_t> buffer);

}  // namespace platform
