// The bytes of a report as text.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace reader {

/// UTF-8 of bytes that are Latin-1.
std::string toUtf8(std::string_view latin1);

/// The bytes whose UTF-8 this is; nothing if it is that of no bytes.
std::optional<std::string> toLatin1(std::string_view utf8);

/// Writes a report line as a part of one line: without leading tabs, and each other control
/// character as \x and two hexadecimal digits. UTF-8.
void writeShown(std::ostream& out, std::string_view latin1);

}  // namespace reader
