#include "platform/posix/socket_errors.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <iterator>

#include "platform/sockets.h"

namespace platform {
namespace {

thread_local int lastError = 0;

std::atomic<int> starts = 0;

struct Translation {
  int system;
  int windows;
};

constexpr Translation translations[] = {
    {EINTR, wsa::eintr},
    {EACCES, wsa::eacces},
    {EPERM, wsa::eacces},
    {EFAULT, wsa::efault},
    {EINVAL, wsa::einval},
    {EMFILE, wsa::emfile},
    {ENFILE, wsa::emfile},
    // Blocking sockets give this for nothing but a time-out that has passed.
    {EAGAIN, wsa::etimedout},
    {EINPROGRESS, wsa::einprogress},
    {EALREADY, wsa::ealready},
    {EBADF, wsa::enotsock},
    {ENOTSOCK, wsa::enotsock},
    {EMSGSIZE, wsa::emsgsize},
    {EPROTOTYPE, wsa::eprototype},
    {ENOPROTOOPT, wsa::enoprotoopt},
    {EPROTONOSUPPORT, wsa::eprotonosupport},
    {ESOCKTNOSUPPORT, wsa::esocktnosupport},
    {EOPNOTSUPP, wsa::eopnotsupp},
    {EAFNOSUPPORT, wsa::eafnosupport},
    {EADDRINUSE, wsa::eaddrinuse},
    {EADDRNOTAVAIL, wsa::eaddrnotavail},
    {ENETDOWN, wsa::enetdown},
    {ENETUNREACH, wsa::enetunreach},
    {ENETRESET, wsa::enetreset},
    {ECONNABORTED, wsa::econnaborted},
    {ECONNRESET, wsa::econnreset},
    // A send after the peer's reset was told once; nothing here shuts down its own side.
    {EPIPE, wsa::econnreset},
    {ENOBUFS, wsa::enobufs},
    {ENOMEM, wsa::enobufs},
    {EISCONN, wsa::eisconn},
    {ENOTCONN, wsa::enotconn},
    {ESHUTDOWN, wsa::eshutdown},
    {ETIMEDOUT, wsa::etimedout},
    {ECONNREFUSED, wsa::econnrefused},
    {EHOSTDOWN, wsa::ehostdown},
    {EHOSTUNREACH, wsa::ehostunreach},
};

}  // namespace

void setSocketError(int error) { lastError = error; }

int socketError() { return lastError; }

int socketErrorOf(int systemError) {
  const auto* const found =
      std::find_if(std::begin(translations), std::end(translations),
                   [systemError](const Translation& row) { return row.system == systemError; });
  return found != std::end(translations) ? found->windows : wsa::syscallfailure;
}

bool isSocketLibraryStarted() {
  if (starts > 0) return true;
  setSocketError(wsa::notinitialised);
  return false;
}

void startSocketLibrary() { ++starts; }

bool stopSocketLibrary() {
  int count = starts;
  while (count > 0 && !starts.compare_exchange_weak(count, count - 1)) {
  }
  if (count == 0) setSocketError(wsa::notinitialised);
  return count > 0;
}

}  // namespace platform
