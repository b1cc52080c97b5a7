#include "directory/address_book.h"

#include <utility>

#include "base/text.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"
#include "notes/library_text.h"

namespace directory {

AddressBook::AddressBook(std::u16string path)
    : completePath_(std::move(path)), narrowPath_(base::toStrictUtf8(completePath_)) {
  notes::TextBuffer<NOTES_PATH_SIZE> portBuffer;
  notes::TextBuffer<NOTES_PATH_SIZE> serverBuffer;
  notes::TextBuffer<NOTES_PATH_SIZE> fileBuffer;
  const STATUS status = notes::OSPathNetParse(narrowPath_.c_str(), portBuffer.data(),
                                              serverBuffer.data(), fileBuffer.data());
  if (status != 0) {
    throw AddressBookError(u"OSPathNetParse call failed: " +
                           notes::DominoApiTools::errorText(status));
  }
  portPart_ = base::toWideFromLocal(portBuffer.data());
  serverPart_ = base::toWideFromLocal(serverBuffer.data());
  filePart_ = base::toWideFromLocal(fileBuffer.data());
}

std::u16string AddressBook::describe() const {
  return base::joined({u"Complete path (", completePath_, u"), Port (", portPart_, u"), Server (",
                       serverPart_, u"), File (", filePart_, u")"});
}

}  // namespace directory
