// The state of the sockets library that the system's own sockets lack.
#pragma once

namespace platform {

/// The calling thread's last error, as a Windows number.
void setSocketError(int error);
int socketError();

/// The Windows number of an errno of a socket call.
int socketErrorOf(int systemError);

/// Whether the library was started more often than stopped; if not, the error is set to 10093.
bool isSocketLibraryStarted();

/// Start and stop count, as those of the library do. A stop without a start fails with 10093.
void startSocketLibrary();
bool stopSocketLibrary();

}  // namespace platform
