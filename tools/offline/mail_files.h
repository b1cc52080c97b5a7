// The mail files that address books name, as empty stores.
#pragma once

#include <filesystem>
#include <string>

#include "offline/configuration.h"

namespace offline {

/// Lays out, in the folder `data`, each mail file on `server` that the address book names and that
/// has a recipient profile. What is there already stays. Warns of paths that lead out of the folder
/// or that the system refuses, and passes them over. Throws std::filesystem::filesystem_error.
void layOutMailFiles(const std::filesystem::path& book, const std::string& server,
                     const Recipients& recipients, const std::filesystem::path& data);

}  // namespace offline
