#include "address_books.h"

#include <algorithm>
#include <limits>

#include "network_path.h"
#include "status.h"
#include "text.h"

namespace standin {
namespace {

constexpr std::string_view extension = ".nsf";

std::string fileOf(std::string_view book) {
  std::string file(book);
  if (!lowered(book).ends_with(extension)) file += extension;
  return file;
}

}  // namespace

void requireOwnServer(const NotesIni& settings, std::string_view server) {
  if (!server.empty() && !equalNames(server, settings.valueOrEmpty("ServerName")))
    throw Failure(Status::unknownServer);
}

AddressBooks addressBooks(const NotesIni& settings, std::string_view server) {
  requireOwnServer(settings, server);
  std::string names = settings.valueOrEmpty("Names");
  if (trimmed(names).empty()) names = "names.nsf";

  AddressBooks books;
  for (std::string_view rest = names; !rest.empty();) {
    const std::string_view book = trimmed(rest.substr(0, rest.find(',')));
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
