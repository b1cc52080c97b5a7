#include "replay/internet/environment.h"

#include <new>

#include "platform/sockets.h"
#include "replay/text.h"

namespace replay::internet {
namespace {

constexpr std::uint16_t version = 0x0101;

}  // namespace

environment::environment() {
  static_assert(sizeof data_ == sizeof(platform::SocketLibraryData));
  static_assert(alignof(environment) == alignof(platform::SocketLibraryData));
  const int status = platform::sockets.WSAStartup(version, new (data_) platform::SocketLibraryData);
  switch (status) {
    case 0:
      return;
    case platform::wsa::sysnotready:
      throw subsystem_not_ready("WSAStartup() failed");
    case platform::wsa::vernotsupported:
      throw version_not_supported("WSAStartup() failed");
    default:
      throw generic(format("WSAStartup() returned status 0x%.8x", static_cast<unsigned>(status)));
  }
}

environment::~environment() {
  try {
    stop();
  } catch (...) {  // NOLINT(bugprone-empty-catch): a failed stop is never seen
  }
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): each object stops its own start
void environment::stop() {
  const bool failed = platform::sockets.WSACleanup() == -1;
  const int status = failed ? platform::sockets.WSAGetLastError() : 0;
  switch (status) {
    case 0:
    case platform::wsa::notinitialised:
      return;
    case platform::wsa::enetdown:
      throw subsystem_failed("WSACleanup() failed");
    default:
      throw generic(format("WSACleanup() returned status 0x%.8x", static_cast<unsigned>(status)));
  }
}

}  // namespace replay::internet
