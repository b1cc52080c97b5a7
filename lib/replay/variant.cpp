#include "replay/variant.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "replay/detail/leading_integer.h"

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
          return static_cast<std::int32_t>(
              std::clamp(leading_integer(value).value_or(0), smallest, largest));
        }
      },
      value_);
}

}  // namespace replay
