#include "directory/address_book.h"

#include <utility>

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/network_path.h"

namespace directory {

AddressBook::AddressBook(std::u16string path)
    : completePath_(std::move(path)), narrowPath_(base::toUtf8(completePath_)) {
  notes::NetworkPath parts;
  const STATUS status = notes::parsePath(narrowPath_, parts);
  if (status != 0) {
    throw AddressBookError(u"OSPathNetParse call failed: " +
                           notes::DominoApiTools::errorText(status));
  }
  portPart_ = base::toWideFromLocal(parts.port.c_str());
  serverPart_ = base::toWideFromLocal(parts.server.c_str());
  filePart_ = base::toWideFromLocal(parts.file.c_str());
}

std::u16string AddressBook::describe() const {
  return base::joined({u"Complete path (", completePath_, u"), Port (", portPart_, u"), Server (",
                       serverPart_, u"), File (", filePart_, u")"});
}

}  // namespace directory
