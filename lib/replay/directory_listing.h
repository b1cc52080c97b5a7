// The names in a folder.
//
// Threads: any number may call this at once.
#pragma once

#include <string>
#include <vector>

namespace replay {

/// The names that match `mask` in the folder `base`, which ends in its separator: the two are
/// joined as they are; "*" and "?" in the mask stand for any characters and for one. Names are in
/// the system's default code page on Windows, and the bytes that they are on Linux. `directories`
/// and `files` say what is wanted; `recursive` goes down into the folders that match and adds their
/// names, without their folder, behind the folder's own. A folder whose name begins with "." is
/// passed over. Empty if nothing can be read.
std::vector<std::string> list_directory(const std::string& base, const std::string& mask,
                                        bool directories, bool files, bool recursive);

}  // namespace replay
