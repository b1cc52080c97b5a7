#include "replay/variant.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace replay {
namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();

std::int32_t saturated(float value) {
  if (std::isnan(value)) return 0;
  // 2^31 is the first float above every 32-bit integer.
  if (value >= 2147483648.0F) return static_cast<std::int32_t>(largest);
  if (value <= -2147483648.0F) return static_cast<std::int32_t>(smallest);
  return static_cast<std::int32_t>(value);
}

template <typename Text>
std::int32_t leading_integer(const Text& text) {
  const auto is_blank = [](auto unit) { return unit == ' ' || (unit >= '\t' && unit <= '\r'); };
  auto unit = std::find_if_not(text.begin(), text.end(), is_blank);
  const bool negative = unit != text.end() && *unit == '-';
  if (unit != text.end() && (*unit == '-' || *unit == '+')) ++unit;
  std::int64_t value = 0;
  for (; unit != text.end() && *unit >= '0' && *unit <= '9'; ++unit) {
    value = std::min<std::int64_t>(value * 10 + (*unit - '0'), largest + 1);
  }
  return static_cast<std::int32_t>(std::clamp(negative ? -value : value, smallest, largest));
}

}  // namespace

std::int32_t variant::as_integer() const {
  // A state of the type that no assignment brings about, as none of a text can fail midway.
  if (value_.valueless_by_exception()) throw generic("as_integer() failed");
  return std::visit(
      [](const auto& value) -> std::int32_t {
        using type = std::decay_t<decltype(value)>;
        if constexpr (std::is_same_v<type, std::monostate>) {
          return 0;
        } else if constexpr (std::is_same_v<type, std::int32_t>) {
          return value;
        } else if constexpr (std::is_same_v<type, float>) {
          return saturated(value);
        } else {
          return leading_integer(value);
        }
      },
      value_);
}

}  // namespace replay
