// The form of the records of TLS 1.2 with AES-GCM.
#pragma once

#include <cstdint>

namespace platform {

/// Type, version and length, 5 bytes, and the explicit part of the nonce, 8 (RFC 5288).
inline constexpr std::uint32_t recordHeaderSize = 13;

/// The tag.
inline constexpr std::uint32_t recordTrailerSize = 16;

/// The most text of one record.
inline constexpr std::uint32_t recordTextSize = 16384;

}  // namespace platform
