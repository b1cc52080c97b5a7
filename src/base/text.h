// The ways in which text crosses between narrow and wide.
//
// Nearly all text within the program is wide. Which way a call takes follows from what support
// people have always seen in that place of the report and not from the kind of text, so the ways
// differ on purpose; each is one function, and a caller shows by its name which one it takes.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace base {

/// By code page 65000 (UTF-7): plain ASCII as it is, "+" as a shift. Raises
/// replay::unicode::generic for text that is not empty and gives no character.
std::u16string toWideFromUtf7(std::string_view text);

/// By code page 65001 (UTF-8), each malformed sequence as U+FFFD.
std::u16string toWideFromUtf8(std::string_view text);

/// The first 1,023 bytes of a zero-terminated text, each as the unit of the same value.
std::u16string toWideFromLocal(const char* text);

/// By code page 65001 with checks, which that page has none of: a lone surrogate comes out as
/// U+FFFD.
std::string toUtf8(std::u16string_view text);

/// The parts one behind the other, copied once.
std::string joined(std::initializer_list<std::string_view> parts);
std::u16string joined(std::initializer_list<std::u16string_view> parts);

/// A line feed, and the tabs that the next line begins with.
std::u16string newLine(unsigned tabs);

/// The decimal digits of a number, behind a minus sign if it is negative.
std::u16string numberToText(std::uint32_t number);
std::u16string numberToText(std::int32_t number);

/// The decimal integer with which a text begins, behind white space and one sign; nothing if there
/// is none or it has more than 32 bits.
std::optional<std::int32_t> leadingInteger(std::u16string_view text);

}  // namespace base
