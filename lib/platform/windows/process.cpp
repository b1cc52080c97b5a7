#include "platform/process.h"

#include <windows.h>

namespace platform {

void prepareProcess() { SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); }

std::uint32_t processNumber() { return GetCurrentProcessId(); }

std::uint32_t threadNumber() { return GetCurrentThreadId(); }

}  // namespace platform
