// The bytes of a report as text.
#pragma once

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

/// The same as toUtf8, as a part of one line: each control character, but perhaps tabs, as \x and
/// two hexadecimal digits.
std::string shown(std::string_view bytes, bool keepsTabs = false);

}  // namespace reader
