#include "platform/clock.h"

namespace platform {

std::int64_t currentTime() { return std::time(nullptr); }

std::int64_t currentHundredths() {
  constexpr std::int64_t nanoseconds = 10'000'000;  // of one
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::int64_t{now.tv_sec} * 100 + now.tv_nsec / nanoseconds;
}

std::tm localTime(std::int64_t moment) {
  const std::time_t seconds = moment;
  std::tm parts{};
  ::localtime_r(&seconds, &parts);
  return parts;
}

}  // namespace platform
