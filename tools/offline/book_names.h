// The names under which address books lie in the data folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace offline {

inline constexpr const char* configurationStore = "QBConf.nsf";

struct AddressBook {
  std::filesystem::path exported;
  std::string store;  // a bare file name that ends with ".nsf"
};

/// Names each book as its export says, or else after the file of the export. Throws Failed where
/// that gives a name that no book can have, that of the configuration, or that of another book.
std::vector<AddressBook> nameBooks(const std::vector<std::filesystem::path>& exports);

}  // namespace offline
