// How a request for a file ends.
#pragma once

#include <cstdint>

namespace platform {

enum class FileOutcome : std::uint8_t {
  done,
  missing,  ///< There is no file of that name, or no folder to make it in.
  folder,   ///< It is one.
  special,  ///< It is neither a plain file nor a folder, a device for example.
  denied,   ///< The user may not do it.
  busy,     ///< Another program has it.
  full,     ///< There is no room for its bytes.
  failed
};

}  // namespace platform
