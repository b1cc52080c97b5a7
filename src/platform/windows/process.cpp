#include "platform/process.h"

#include <windows.h>

namespace platform {

void prepareProcess() { SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); }

std::uint32_t processNumber() { return GetCurrentProcessId(); }

std::uint32_t threadNumber() { return GetCurrentThreadId(); }

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_s(&parts, &now);
  return parts;
}

}  // namespace platform
