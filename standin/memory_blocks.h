// The memory blocks that calls hand to a caller, who locks, reads and frees them by handle.
//
// A block never moves, so locking only gives its address. Every handle is checked; numbers are not
// given out twice, so a handle that was freed is never that of a younger block.
#pragma once

#include <string>
#include <unordered_map>

#include "notes/abi.h"

namespace standin {

class MemoryBlocks {
 public:
  /// Keeps `bytes` as a new block.
  HANDLE add(std::string bytes);

  /// The block's bytes, valid until it is freed. Throws unknownBlock, as do the others.
  void* address(HANDLE block);
  void free(HANDLE block);

 private:
  std::unordered_map<HANDLE, std::string> blocks_;
  HANDLE last_ = 0;
};

}  // namespace standin
