#include "replay/internet/detail/transport_failure.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/sockets.h"
#include "replay/internet/environment.h"
#include "replay/internet/transport.h"
#include "replay/text.h"

namespace replay::internet::transport {
namespace {

namespace wsa = platform::wsa;
using stream = tcp::base;

// A cell of the table: raises its class for the operation of that name and its error.
using cell = void (*)(const char* operation, int error);

template <typename Failure>
[[noreturn]] void raise(const char* operation, int /*error*/) {
  throw Failure(format("%s() failed", operation));
}

[[noreturn]] void other(const char* operation, int error) {
  throw generic(format("%s() returned status 0x%.8x", operation, static_cast<unsigned>(error)));
}

void ignored(const char* /*operation*/, int /*error*/) {}

// An aborted connection has the receiving side's message when sending, too.
[[noreturn]] void abort_sent(const char* /*operation*/, int error) {
  raise<stream::connection_aborted>("recv", error);
}

constexpr cell interrupted = raise<operation_interrupted>;
constexpr cell no_socket = raise<not_a_socket>;
constexpr cell in_use = raise<address_in_use>;
constexpr cell not_valid = raise<address_not_valid>;
constexpr cell not_ready = raise<environment::subsystem_not_ready>;
constexpr cell down = raise<environment::subsystem_failed>;
constexpr cell no_network = raise<stream::network_unreachable>;
constexpr cell no_host = raise<stream::host_unreachable>;
constexpr cell failed = raise<stream::connection_failed>;
constexpr cell aborted = raise<stream::connection_aborted>;
constexpr cell closed = raise<stream::connection_closed>;
constexpr cell refused = raise<stream::connection_refused>;
constexpr cell reset = raise<stream::connection_reset>;
constexpr cell timed_out = raise<stream::connection_timed_out>;

constexpr std::size_t operation_count = 6;

struct row {
  int error;
  std::array<cell, operation_count> cells;
};

// A connect that times out has not reached the host; only receiving and sending report a time-out.
// clang-format off
constexpr row rows[] = {
    //                         socket     connect      recv         send         closesocket setsockopt
    {wsa::eintr,             {{other,     interrupted, interrupted, interrupted, other,      other}}},
    {wsa::enotsock,          {{other,     no_socket,   no_socket,   no_socket,   ignored,    no_socket}}},
    {wsa::eaddrinuse,        {{other,     in_use,      other,       other,       other,      other}}},
    {wsa::eaddrnotavail,     {{other,     not_valid,   other,       other,       other,      other}}},
    {wsa::enetdown,          {{not_ready, not_ready,   not_ready,   not_ready,   not_ready,  not_ready}}},
    {wsa::enetunreach,       {{other,     no_network,  other,       other,       other,      other}}},
    {wsa::enetreset,         {{other,     other,       reset,       reset,       other,      other}}},
    {wsa::econnaborted,      {{other,     other,       aborted,     abort_sent,  other,      other}}},
    {wsa::econnreset,        {{other,     other,       reset,       reset,       other,      other}}},
    {wsa::enotconn,          {{other,     other,       failed,      failed,      other,      other}}},
    {wsa::eshutdown,         {{other,     other,       closed,      closed,      other,      other}}},
    {wsa::etimedout,         {{other,     no_host,     timed_out,   timed_out,   other,      other}}},
    {wsa::econnrefused,      {{other,     refused,     other,       other,       other,      other}}},
    {wsa::ehostunreach,      {{other,     no_host,     other,       other,       other,      other}}},
    {wsa::notinitialised,    {{down,      down,        down,        down,        down,       down}}},
};
// clang-format on

constexpr std::array<const char*, operation_count> names = {"socket", "connect",     "recv",
                                                            "send",   "closesocket", "setsockopt"};

cell cell_of(int error, std::size_t column) {
  const auto* const found = std::find_if(std::begin(rows), std::end(rows),
                                         [error](const row& each) { return each.error == error; });
  return found == std::end(rows) ? other : found->cells.at(column);
}

}  // namespace

void raise_last_error(operation failed_operation) {
  const int error = platform::sockets.WSAGetLastError();
  const auto column = static_cast<std::size_t>(failed_operation);
  cell_of(error, column)(names.at(column), error);
}

}  // namespace replay::internet::transport
