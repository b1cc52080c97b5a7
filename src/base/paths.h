// Paths as the program composes them: wide text in which "//" and "\" may stand side by side.
#pragma once

#include <string>

namespace base {

/// Whether `path` leads to anything, a folder included.
bool fileExists(const std::u16string& path);

/// Makes the folder `name` within `parent`, one level only. True if it is there afterwards; an
/// empty parent gives a network path and so false.
bool createFolder(const std::u16string& parent, const std::u16string& name);

}  // namespace base
