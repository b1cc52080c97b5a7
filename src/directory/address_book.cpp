#include "directory/address_book.h"

#include <utility>

#include "base/text.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/text_buffer.h"

namespace directory {

AddressBook::AddressBook(std::u16string path)
    : completePath_(std::move(path)), narrowPath_(base::toStrictUtf8(completePath_)) {
  notes::TextBuffer<NOTES_PATH_SIZE> port{};
  notes::TextBuffer<NOTES_PATH_SIZE> server{};
  notes::TextBuffer<NOTES_PATH_SIZE> file{};
  const STATUS status =
      notes::OSPathNetParse(narrowPath_.c_str(), port.data(), server.data(), file.data());
  if (status != 0) {
    throw AddressBookError(u"OSPathNetParse call failed: " +
                           notes::DominoApiTools::errorText(status));
  }
  portPart_ = base::toWideFromLocal(port.data());
  serverPart_ = base::toWideFromLocal(server.data());
  filePart_ = base::toWideFromLocal(file.data());
}

std::u16string AddressBook::describe() const {
  return u"Complete path (" + completePath_ + u"), Port (" + portPart_ + u"), Server (" +
         serverPart_ + u"), File (" + filePart_ + u")";
}

}  // namespace directory
