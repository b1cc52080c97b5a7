// The decimal integer with which a text begins.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace replay {

/// The integer behind white space and one sign, or none of them; nothing if there is no digit. One
/// that is far above 32 bits comes out as some number above them.
template <typename Text>
std::optional<std::int64_t> leading_integer(const Text& text) {
  constexpr std::int64_t largest = std::int64_t{1} << 40;
  const auto is_blank = [](auto unit) { return unit == ' ' || (unit >= '\t' && unit <= '\r'); };
  const auto is_digit = [](auto unit) { return unit >= '0' && unit <= '9'; };
  auto unit = std::find_if_not(text.begin(), text.end(), is_blank);
  const bool is_negative = unit != text.end() && *unit == '-';
  if (unit != text.end() && (*unit == '-' || *unit == '+')) ++unit;
  if (unit == text.end() || !is_digit(*unit)) return std::nullopt;
  std::int64_t value = 0;
  for (; unit != text.end() && is_digit(*unit); ++unit)
    value = std::min<std::int64_t>(value * 10 + (*unit - '0'), largest);
  return is_negative ? -value : value;
}

}  // namespace replay
