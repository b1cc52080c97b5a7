#include "replay/internet/byte_queue.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace replay::internet {

void byte_queue::append(std::string_view bytes) {
  bytes.copy(prepare(bytes.size()).data(), bytes.size());
  commit(bytes.size());
}

std::span<char> byte_queue::prepare(std::size_t count) {
  if (capacity_ - end_ < count) {
    const std::size_t waiting = size();
    if (count > std::numeric_limits<std::size_t>::max() - waiting) throw std::bad_alloc();
    const std::size_t needed = waiting + count;
    if (needed <= capacity_ && waiting <= begin_) {
      // At least as many bytes were taken as move now, so that each moves a bounded number of
      // times.
      std::memmove(storage_.get(), storage_.get() + begin_, waiting);
    } else {
      const std::size_t capacity = std::max(needed, 2 * capacity_);
      auto storage = std::make_unique_for_overwrite<char[]>(capacity);
      std::copy_n(storage_.get() + begin_, waiting, storage.get());
      storage_ = std::move(storage);
      capacity_ = capacity;
    }
    begin_ = 0;
    end_ = waiting;
  }
  return {storage_.get() + end_, count};
}

}  // namespace replay::internet
