// The MD5 digest of a text (RFC 1321). It serves to recognise a text, not to protect one.
//
// Threads: any number may call this at once.
#pragma once

#include <string>
#include <string_view>

namespace replay {

/// The digest of `text` as 32 lower-case hexadecimal digits.
std::string md5_hex(std::string_view text);

}  // namespace replay
