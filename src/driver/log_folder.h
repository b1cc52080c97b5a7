// The folder of the add-on's logs within the Notes data directory.
#pragma once

#include <string>

namespace driver {

/// Makes the folder if need be and gives its path; `otherwise` if it cannot be made.
std::u16string makeLogFolder(const std::u16string& dataDirectory, const std::u16string& otherwise);

}  // namespace driver
