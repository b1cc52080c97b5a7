#include "memory_blocks.h"

#include <utility>

#include "status.h"

namespace standin {

HANDLE MemoryBlocks::add(std::string bytes) {
  blocks_.emplace(last_ + 1, std::move(bytes));
  return ++last_;
}

void* MemoryBlocks::address(HANDLE block) {
  const auto found = blocks_.find(block);
  if (found == blocks_.end()) throw Failure(Status::unknownBlock);
  return found->second.data();
}

void MemoryBlocks::free(HANDLE block) {
  if (blocks_.erase(block) == 0) throw Failure(Status::unknownBlock);
}

}  // namespace standin
