#include "replay/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <stdexcept>

#include "replay/detail/finder.h"

namespace replay {
namespace {

char upper(char character) {
  return static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
}

// Texts are ordered by the unsigned values of their bytes.
unsigned char lowered_value(char character) {
  return static_cast<unsigned char>(lowered(character));
}

constexpr std::uint16_t no_digit = 65535;

constexpr std::array<std::uint16_t, 256> digit_values = [] {
  std::array<std::uint16_t, 256> values{};
  values.fill(no_digit);
  for (std::uint16_t digit = 0; digit < 10; ++digit) values['0' + digit] = digit;
  for (std::uint16_t digit = 10; digit < 16; ++digit) {
    values['a' + digit - 10] = digit;
    values['A' + digit - 10] = digit;
  }
  return values;
}();

}  // namespace

std::string format(const char* pattern, ...) {
  std::va_list arguments;
  va_start(arguments, pattern);
  std::va_list measured;
  va_copy(measured, arguments);
  const int length = std::vsnprintf(nullptr, 0, pattern, measured);
  va_end(measured);
  std::string text(length < 0 ? 0 : static_cast<std::size_t>(length), '\0');
  // The string owns the byte behind its last, into which the formatter writes its closing zero.
  if (length > 0) {
    static_cast<void>(std::vsnprintf(text.data(), text.size() + 1, pattern, arguments));
  }
  va_end(arguments);
  if (length < 0) throw std::length_error("format() failed");
  return text;
}

bool starts_with(std::string_view text, std::string_view prefix) {
  return text.starts_with(prefix);
}

char lowered(char character) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

void to_lower(std::string& text) {
  for (char& character : text) character = lowered(character);
}

void to_upper(std::string& text) { std::transform(text.begin(), text.end(), text.begin(), upper); }

std::string lowered(std::string_view text) {
  std::string copy(text);
  to_lower(copy);
  return copy;
}

bool iequals(std::string_view left, std::string_view right) {
  return lowered(left) == lowered(right);
}

bool iless(std::string_view left, std::string_view right) {
  return std::ranges::lexicographical_compare(left, right, {}, lowered_value, lowered_value);
}

void replace_all(std::string& text, std::string_view pattern, std::string_view replacement) {
  if (pattern.empty()) return;
  const finder search{std::string(pattern)};
  std::size_t found = search.find(text, 0);
  if (found == std::string::npos) return;
  // Building the result anew keeps the time linear: each byte moves once.
  std::string result;
  std::size_t done = 0;
  for (; found != std::string::npos; found = search.find(text, done)) {
    result.append(text, done, found - done).append(replacement);
    done = found + pattern.size();
  }
  result.append(text, done);
  text = std::move(result);
}

std::vector<std::string> split(std::string_view text, std::string_view separators) {
  std::vector<std::string> tokens;
  std::size_t begin = text.find_first_not_of(separators);
  while (begin != std::string_view::npos) {
    const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
    tokens.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(separators, end);
  }
  return tokens;
}

std::string hex_encode(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  text.reserve(2 * bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += digits[value / 16U];
    text += digits[value % 16U];
  }
  return text;
}

void hex_value(std::string_view digits, std::uint64_t& value) {
  for (const char digit : digits) {
    const std::uint16_t digit_value = digit_values[static_cast<unsigned char>(digit)];
    if (digit_value != no_digit) value = value * 16 + digit_value;
  }
}

void url_encode(std::string_view bytes, std::string& encoded) {
  for (const char byte : bytes) {
    if (std::isalnum(static_cast<unsigned char>(byte)) != 0 || byte == '.' || byte == '-' ||
        byte == '_') {
      encoded += byte;
    } else {
      std::string digits = hex_encode({&byte, 1});
      to_upper(digits);
      encoded.append("%").append(digits);
    }
  }
}

}  // namespace replay
