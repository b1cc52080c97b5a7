#include "standin/address_books.h"

#include <limits>

#include "standin/network_path.h"
#include "standin/status.h"
#include "store/letters.h"

namespace standin {
void requireOwnServer(const store::NotesIni& settings, std::string_view server) {
  if (!server.empty() && !store::equalNames(server, settings.valueOrEmpty("ServerName")))
    throw Failure(Status::unknownServer);
}

AddressBooks addressBooks(const store::NotesIni& settings, std::string_view server) {
  requireOwnServer(settings, server);
  std::string names = settings.valueOrEmpty("Names");
  if (store::trimmed(names).empty()) names = "names.nsf";
  AddressBooks books;
  for (const std::string_view book : store::booksFrom(names)) {
    ++books.count;
    books.block.append(composePath({{}, server, store::fileOfBook(book)})).push_back('\0');
    if (books.block.size() > std::numeric_limits<WORD>::max())
      throw Failure(Status::addressBooksTooLong);
  }
  return books;
}

}  // namespace standin
