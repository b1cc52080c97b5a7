#include "platform/clock.h"

#include <windows.h>

namespace platform {

// The forms with a 64-bit time: the plain one of a 32-bit program ends in 2038.
std::int64_t currentTime() { return _time64(nullptr); }

std::int64_t currentHundredths() {
  constexpr std::int64_t units = 100'000;             // in one, of those that the system counts
  constexpr std::int64_t epoch = 116444736000000000;  // 1970, in units from 1601
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return ((std::int64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime) - epoch) / units;
}

std::tm localTime(std::int64_t moment) {
  const __time64_t seconds = moment;
  std::tm parts{};
  _localtime64_s(&parts, &seconds);
  return parts;
}

}  // namespace platform
