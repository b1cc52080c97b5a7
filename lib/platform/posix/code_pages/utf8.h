// UTF-8 with the replacements of Windows.
#pragma once

#include <span>
#include <string_view>

#include "platform/code_pages.h"

namespace platform {

/// A lone surrogate becomes EF BF BD and sets `replaced`.
Conversion encodeUtf8(std::u16string_view text, std::span<char> buffer, bool& replaced);

/// A malformed sequence becomes U+FFFD, or with `strict` fails the conversion. One U+FFFD stands
/// for a lead byte and those of its continuation bytes that could be right, the first also where it
/// is out of the lead's range; and for all that is left where a lead of three or four bytes has
/// less than its length before the end.
Conversion decodeUtf8(std::string_view text, bool strict, std::span<char16_t> buffer);

}  // namespace platform
