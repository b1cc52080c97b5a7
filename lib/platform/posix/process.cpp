#include "platform/process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace platform {

namespace {

// A stream that is closed would give its number to the next file that is opened, and with it all
// that is written to the stream.
void fillClosedStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", O_RDWR);
  }
}

}  // namespace

void prepareProcess() {
  fillClosedStreams();
  // The report matters more than its copy on the console, and a run more than the end of its
  // report: writing to a closed pipe, or beyond the largest file allowed, is to fail, not to end
  // the process.
  for (const int signal : {SIGPIPE, SIGXFSZ}) static_cast<void>(std::signal(signal, SIG_IGN));
}

std::uint32_t processNumber() { return static_cast<std::uint32_t>(::getpid()); }

std::uint32_t threadNumber() { return static_cast<std::uint32_t>(::gettid()); }

}  // namespace platform
