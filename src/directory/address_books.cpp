#include "directory/address_books.h"

#include <string_view>

#include "base/text.h"
#include "notes/api.h"
#include "notes/domino_api_tools.h"

namespace directory {
namespace {

using notes::DominoApiTools::errorText;

// What the library answers to the question for address books: a block of memory with `count`
// zero-terminated paths.
struct BookList {
  WORD count = 0;
  WORD length = 0;
  HANDLE block = 0;
};

STATUS listBooks(const std::string& server, BookList& list) {
  list = {};
  const STATUS status = notes::NAMEGetAddressBooks(server.empty() ? nullptr : server.c_str(), 0,
                                                   &list.count, &list.length, &list.block);
  if (status != 0) list = {};
  return status;
}

// A block of the library, locked as long as this lives and freed then.
class LockedBlock {
 public:
  explicit LockedBlock(HANDLE block) : block_(block), data_(notes::OSLockObject(block)) {}
  LockedBlock(const LockedBlock&) = delete;
  LockedBlock& operator=(const LockedBlock&) = delete;
  ~LockedBlock() {
    if (data_ != nullptr) notes::OSUnlockObject(block_);
    notes::OSMemFree(block_);
  }

  /// Null if it could not be locked.
  const char* data() const { return static_cast<const char*>(data_); }

 private:
  HANDLE block_;
  void* data_;
};

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
  BookList list;
  STATUS status = listBooks(base::toStrictUtf8(server), list);
  if (status != 0) {
    messages_.push_back(u"NAMEGetAddressBooks call to server " + server + u"failed: " +
                        errorText(status));
    status = listBooks({}, list);
  }
  if (status != 0) {
    messages_.push_back(u"NAMEGetAddressBooks with no servername specified failed: " +
                        errorText(status));
    messages_.emplace_back(u"No Addressbooks found, using names.nsf.");
    addNamesNsf();
    return;
  }
  if (list.count > 0) addListed(list.block, list.count);
}

void AddressBooks::addNamesNsf() { books_.emplace_back(namesNsf); }

void AddressBooks::addListed(HANDLE block, WORD count) {
  const LockedBlock locked(block);
  const char* position = locked.data();
  if (position == nullptr) return;
  for (WORD index = 0; index < count; ++index) {
    const std::string_view narrowName(position);
    const std::u16string name = base::toWideFromUtf7(narrowName);
    try {
      books_.emplace_back(name);
    } catch (const AddressBook::AddressBookError& error) {
      throw AddressBooksError(u"Could not read entry (" + name + u")" + error.message());
    }
    position += narrowName.size() + 1;
  }
}

std::u16string AddressBooks::print(unsigned indent) const {
  const std::u16string newLine = u"\n" + std::u16string(indent, u'\t');
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
