// Writing all of a text, however little the system takes at once.
#pragma once

#include <string_view>

namespace platform {

/// Waits where the file is one that does not wait by itself, as who started the program may have
/// made its output. False if the system refuses.
bool writeAll(int file, std::string_view bytes);

}  // namespace platform
