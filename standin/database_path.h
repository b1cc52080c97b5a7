// Where the file of a database lies.
#pragma once

#include <string>
#include <string_view>

#include "store/notes_ini.h"

namespace standin {

/// The path of the file for a path as callers give it: a bare or relative one counts from the data
/// directory, an absolute one is taken as it is, and "port!!!server!!file" leads to the file if the
/// server is the library's own. Slash and backslash both separate. Throws unknownServer,
/// pathPartTooLong and databaseMissing for a path without a file.
std::string databasePath(const store::NotesIni& settings, const std::string& dataDirectory,
                         std::string_view path);

}  // namespace standin
