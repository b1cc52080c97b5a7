// Small helpers for texts that are bytes to this library, ASCII letters apart.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace store {

/// `text` with small letters for the capital ones of ASCII.
std::string lowered(std::string_view text);

/// True for texts that differ in the case of ASCII letters at most.
bool equalNames(std::string_view left, std::string_view right);

/// The same for names that are equal.
std::size_t hashOfName(std::string_view name);

/// True for well-formed UTF-8: shortest forms only, no surrogates, up to U+10FFFF.
bool isUtf8(std::string_view text);

/// A text that is well-formed UTF-8 as it is; any other is taken for windows-1252, whose five free
/// bytes are the characters of their numbers, and comes out as UTF-8.
std::string asUtf8(std::string text);

/// The bytes that the characters of a text number, if it is UTF-8 without a character above U+00FF
/// and those bytes are UTF-8 as well: a text whose bytes were each taken for a character. Any other
/// as it is.
std::string undoubled(std::string_view text);

/// `text` without the blanks and tabs around it.
std::string_view trimmed(std::string_view text);

}  // namespace store
