// The entries of one kind in one address book.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "base/error.h"
#include "directory/address_book.h"
#include "directory/directory_entry.h"

namespace directory {

class ReadDirectory {
 public:
  class ReadDirectoryError : public base::Error {
   public:
    using Error::Error;
  };

  /// The kinds of documents that have a mail file, as places in the table of their types.
  static constexpr std::int32_t personType = 0;
  static constexpr std::int32_t databaseType = 1;

  /// Adds an entry for each document of a kind, in the order in which the library delivers them.
  /// One that cannot be read gives a message instead. Raises ReadDirectoryError; entries read up to
  /// there stay.
  static void readDirectory(std::deque<DirectoryEntry>& entries, const AddressBook& book,
                            std::int32_t typeIndex, std::vector<std::u16string>& messages);
};

}  // namespace directory
