#include "platform/process.h"

#include <windows.h>

namespace platform {

void prepareProcess() { SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); }

std::uint32_t processNumber() { return GetCurrentProcessId(); }

std::uint32_t threadNumber() { return GetCurrentThreadId(); }

// The forms with a 64-bit time: the plain one of a 32-bit program ends in 2038.
std::int64_t currentTime() { return _time64(nullptr); }

std::tm localTime(std::int64_t moment) {
  const __time64_t seconds = moment;
  std::tm parts{};
  _localtime64_s(&parts, &seconds);
  return parts;
}

}  // namespace platform
