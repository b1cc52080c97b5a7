// How a request for a file ends.
#pragma once

#include <cstdint>

namespace platform {

enum class FileOutcome : std::uint8_t {
  done,
  missing,  ///< There is no file of that name, or no folder to make it in.
  busy,     ///< Another program has it.
  failed
};

}  // namespace platform
