// Helpers for narrow text that the rest of the library shares.
//
// Threads: any number may call these at once, on texts that no other changes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace replay {

/// The text of a printf format and its arguments, of any length. Raises std::bad_alloc, and
/// std::length_error for a text of more than 2 GiB.
[[gnu::format(printf, 1, 2)]] std::string format(const char* pattern, ...);

/// Whether `text` begins with `prefix`, case included.
bool starts_with(std::string_view text, std::string_view prefix);

/// The small letter of a character, by the runtime library's own rule for a single one.
char lowered(char character);
/// Makes each letter a small one, in place.
void to_lower(std::string& text);
/// Makes each letter a capital, in place.
void to_upper(std::string& text);
/// A copy with each letter a small one.
std::string lowered(std::string_view text);

/// Whether two texts are equal but for the case of letters.
bool iequals(std::string_view left, std::string_view right);
/// Whether `left` comes before `right`, the case of letters aside: an ordering for maps.
bool iless(std::string_view left, std::string_view right);

/// Replaces each occurrence of `pattern`, from the start on and never within what was inserted. An
/// empty pattern occurs nowhere. Takes time in proportion to text, pattern and result.
void replace_all(std::string& text, std::string_view pattern, std::string_view replacement);

/// The maximal runs of characters that are not in `separators`, in order; none of them is empty.
std::vector<std::string> split(std::string_view text, std::string_view separators);

/// Two lower-case digits for each byte, the most significant first.
std::string hex_encode(std::string_view bytes);

/// Shifts the value of each hexadecimal digit of `digits` into `value`, which the caller has set to
/// its start. Whatever is no digit is passed over: "1 a" is 26.
void hex_value(std::string_view digits, std::uint64_t& value);

/// Appends `bytes` to `encoded` with all but letters, digits, ".", "-" and "_" as "%" and two
/// upper-case digits.
void url_encode(std::string_view bytes, std::string& encoded);

}  // namespace replay
