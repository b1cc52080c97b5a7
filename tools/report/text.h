// The bytes of a report as text.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace reader {

/// UTF-8 of what the bytes are read as: well-formed UTF-8 as its characters, each other byte as
/// that of windows-1252. A report does not name its character set.
std::string toUtf8(std::string_view bytes);

/// The same as 16-bit units.
std::u16string toWide(std::string_view bytes);

/// UTF-8 of bytes that are Latin-1: any bytes, each as the character of its number.
std::string latin1ToUtf8(std::string_view latin1);

/// The bytes that latin1ToUtf8 made this of; empty if there are none.
std::string toLatin1(std::string_view utf8);

/// Writes a report line as a part of one line: without leading tabs, and each other control
/// character as \x and two hexadecimal digits. UTF-8.
void writeShown(std::ostream& out, std::string_view bytes);

}  // namespace reader
