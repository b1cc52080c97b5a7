// Paths with a port and a server, and the address books that the library knows by them.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "notes/abi.h"

namespace notes {

/// The parts of a path, as the library writes them.
struct NetworkPath {
  std::string port;
  std::string server;
  std::string file;
};

/// Both give the library's status. On a failure the result is what the library has left there.
STATUS parsePath(const std::string& path, NetworkPath& parts);
STATUS constructPath(const std::string& server, const std::string& file, std::string& path);

/// The paths of address books, as a block of the library's memory that is there to be read once.
class AddressBookList {
 public:
  /// Asks for the books of a server, or of none in particular if `server` is empty. Gives the
  /// library's status; after a failure there are no books.
  STATUS ask(const std::string& server);

  /// Calls `visit` with each path while the block is locked, and frees it then, also on the way
  /// out of a failure. Calls nothing if there are no books or the block cannot be locked.
  void forEach(const std::function<void(std::string_view)>& visit) const;

 private:
  WORD count_ = 0;
  HANDLE block_ = 0;
};

}  // namespace notes
