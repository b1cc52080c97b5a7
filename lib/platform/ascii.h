// Letters of ASCII, whatever the locale.
#pragma once

namespace platform {

/// The small letter for a capital one; any other unit as it is.
template <typename Unit>
constexpr Unit lowered(Unit unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<Unit>(unit - 'A' + 'a') : unit;
}

}  // namespace platform
