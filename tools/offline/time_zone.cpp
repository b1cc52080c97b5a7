#include "offline/time_zone.h"

#include <charconv>

#include "store/letters.h"

namespace offline {

std::optional<int> readTimezone(std::string_view text) {
  constexpr int farthest = 23;
  text = store::trimmed(text);
  if (text.empty()) return 0;
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  int hours = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, hours);
  if (error != std::errc() || stop != end || hours < -farthest || hours > farthest)
    return std::nullopt;
  return hours;
}

}  // namespace offline
