// Which store each export is of, and under which name it lies in the data folder.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace offline {

struct ExportedStore {
  std::string name;  // a bare file name that ends with ".nsf"
  std::vector<std::filesystem::path> exports;
};

/// The stores that the exports make, that of the configuration first. An export whose store would
/// have its name is of the configuration, and where there is none the first of all. The others are
/// address books, each named as its export says, or else after the file of the export. Throws
/// Failed where that gives a name that no book can have, and for a file that is there twice.
std::vector<ExportedStore> storesOf(const std::vector<std::filesystem::path>& exports);

}  // namespace offline
