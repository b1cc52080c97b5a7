// The pages that the system's iconv converts, as it comes: undefined bytes, private characters and
// composed letters may differ from Windows, nothing is replaced by what looks alike, and in the
// pages that compose letters a replacement stands before the letter that is held back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/code_pages.h"

namespace platform {

std::size_t iconvCharacterSize(std::uint32_t page);

Conversion wideToIconv(std::uint32_t page, std::u16string_view text, std::span<char> buffer,
                       bool& usedDefault);

Conversion iconvToWide(std::uint32_t page, bool strict, std::string_view text,
                       std::span<char16_t> buffer);

}  // namespace platform
