#include "platform/process.h"

#include <unistd.h>

#include <csignal>

namespace platform {

void prepareProcess() {
  // The report matters more than its copy on the console: writing to a closed pipe is to fail, not
  // to end the process.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

std::uint32_t processNumber() { return static_cast<std::uint32_t>(::getpid()); }

std::uint32_t threadNumber() { return static_cast<std::uint32_t>(::gettid()); }

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  ::localtime_r(&now, &parts);
  return parts;
}

}  // namespace platform
