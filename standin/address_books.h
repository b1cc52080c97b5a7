// The address books of the server: those of the notes.ini variable Names, or "names.nsf" where that
// says nothing.
//
// The library knows one server, its own, under the name of the variable ServerName; it reaches no
// other. Books asked for by server carry the server in their paths, those asked for without do not.
#pragma once

#include <string>
#include <string_view>

#include "notes/abi.h"
#include "store/notes_ini.h"

namespace standin {

struct AddressBooks {
  WORD count = 0;
  std::string block;  // the paths one after the other, each with a closing zero
};

/// Throws unknownServer unless `server` is empty or that of the settings.
void requireOwnServer(const store::NotesIni& settings, std::string_view server);

/// Throws unknownServer, pathTooLong, and addressBooksTooLong where a caller could not be told the
/// number of books or the length of the block.
AddressBooks addressBooks(const store::NotesIni& settings, std::string_view server);

}  // namespace standin
