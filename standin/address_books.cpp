#include "standin/address_books.h"

#include <algorithm>
#include <limits>

#include "standin/network_path.h"
#include "standin/status.h"
#include "store/letters.h"

namespace standin {
namespace {

constexpr std::string_view extension = ".nsf";

std::string fileOf(std::string_view book) {
  std::string file(book);
  if (!store::lowered(book).ends_with(extension)) file += extension;
  return file;
}

}  // namespace

void requireOwnServer(const store::NotesIni& settings, std::string_view server) {
  if (!server.empty() && !store::equalNames(server, settings.valueOrEmpty("ServerName")))
    throw Failure(Status::unknownServer);
}

AddressBooks addressBooks(const store::NotesIni& settings, std::string_view server) {
  requireOwnServer(settings, server);
  std::string names = settings.valueOrEmpty("Names");
  if (store::trimmed(names).empty()) names = "names.nsf";

  AddressBooks books;
  for (std::string_view rest = names; !rest.empty();) {
    const std::string_view book = store::trimmed(rest.substr(0, rest.find(',')));
    rest.remove_prefix(std::min(rest.find(','), rest.size() - 1) + 1);
    if (book.empty()) continue;
    ++books.count;
    books.block.append(composePath({{}, server, fileOf(book)})).push_back('\0');
    if (books.block.size() > std::numeric_limits<WORD>::max())
      throw Failure(Status::addressBooksTooLong);
  }
  return books;
}

}  // namespace standin
