// The failures of socket calls, and the classes that they are raised as.
#pragma once

#include <cstddef>

namespace replay::internet::transport {

/// The calls that can fail, in the order of the table of failures.
enum class operation : std::size_t { socket, connect, recv, send, closesocket, setsockopt };

/// Raises the class that stands for the thread's last error of the sockets library after `failed`.
/// Returns where that is no failure: closing a socket that the system no longer knows.
void raise_last_error(operation failed);

}  // namespace replay::internet::transport
