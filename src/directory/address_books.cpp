#include "directory/address_books.h"

#include <string_view>

#include "base/text.h"
#include "notes/domino_api_tools.h"
#include "notes/network_path.h"

namespace directory {
namespace {

using notes::DominoApiTools::errorText;

}  // namespace

void AddressBooks::reset() {
  books_.clear();
  messages_.clear();
}

void AddressBooks::load(const std::u16string& server, bool useNamesOnly) {
  if (useNamesOnly) {
    messages_.emplace_back(u"Special setting - use names.nsf exclusively.");
    addNamesNsf();
    return;
  }
  notes::AddressBookList list;
  STATUS status = list.ask(base::toUtf8(server));
  if (status != 0) {
    messages_.push_back(u"NAMEGetAddressBooks call to server " + server + u"failed: " +
                        errorText(status));
    status = list.ask({});
  }
  if (status != 0) {
    messages_.push_back(u"NAMEGetAddressBooks with no servername specified failed: " +
                        errorText(status));
    messages_.emplace_back(u"No Addressbooks found, using names.nsf.");
    addNamesNsf();
    return;
  }
  list.forEach([this](std::string_view path) { addListed(path); });
}

void AddressBooks::addNamesNsf() { books_.emplace_back(namesNsf); }

void AddressBooks::addListed(std::string_view path) {
  const std::u16string name = base::toWideFromUtf7(path);
  try {
    books_.emplace_back(name);
  } catch (const AddressBook::AddressBookError& error) {
    throw AddressBooksError(u"Could not read entry (" + name + u")" + error.message());
  }
}

std::u16string AddressBooks::print(unsigned indent) const {
  const std::u16string newLine = base::newLine(indent);
  std::u16string text = newLine + u"ADDRESSBOKS:";
  if (!searchServer_.empty()) {
    text.append(newLine).append(u"Searched using server: ").append(searchServer_);
  }
  for (const AddressBook& book : books_) text.append(newLine).append(book.describe());
  text.append(newLine).append(u"MESSAGES");
  for (const std::u16string& message : messages_) text.append(newLine).append(message);
  return text;
}

bool useNamesNsf() {
  std::string value;
  return notes::DominoApiTools::readEnvironment("vrx_use_names_nsf", value) && value == "1";
}

}  // namespace directory
