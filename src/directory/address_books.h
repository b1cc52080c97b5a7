// The address books of a server, and how they were found.
//
// The Notes library is asked for those of the server, then for those of no server in particular,
// and where it has no answer to either there is still "names.nsf". Each fall-back leaves a message.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "directory/address_book.h"

namespace directory {

class AddressBooks {
 public:
  class AddressBooksError : public base::Error {
   public:
    using Error::Error;
  };

  /// Forgets all books and messages.
  void reset();

  /// Adds the books of `server`, or of no server in particular if it is empty, in the order in
  /// which the library lists them; only "names.nsf", without asking, if `useNamesOnly`. Raises
  /// AddressBooksError for a listed path that cannot be parsed, and AddressBookError for
  /// "names.nsf".
  void load(const std::u16string& server, bool useNamesOnly);

  const std::vector<AddressBook>& books() const { return books_; }

  /// Titles, books and messages, each on a line that begins with `indent` tabs.
  std::u16string print(unsigned indent) const;

 private:
  void addNamesNsf();
  void addListed(std::string_view path);

  std::u16string searchServer_;  // shown where it is set, which no search of the program does
  std::vector<AddressBook> books_;
  std::vector<std::u16string> messages_;
};

/// Whether notes.ini asks for "names.nsf" alone: its variable vrx_use_names_nsf is exactly "1".
bool useNamesNsf();

}  // namespace directory
