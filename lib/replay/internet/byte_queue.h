// A queue of bytes in one contiguous block.
//
// Bytes are appended behind the last and taken from the front in blocks; what stays never moves for
// a take. The storage grows in proportion to the bytes that wait, and is kept when they are gone.
//
// Threads: one queue, one thread at a time.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string_view>

namespace replay::internet {

/// Bytes that wait. Not copied.
class byte_queue {
 public:
  /// Whether no bytes wait.
  bool empty() const { return begin_ == end_; }
  /// The number of bytes that wait.
  std::size_t size() const { return end_ - begin_; }

  /// All bytes, from the front. Valid until the next call that is not const.
  std::string_view view() const { return {storage_.get() + begin_, size()}; }

  /// Removes `count` bytes from the front, at most size().
  void remove(std::size_t count) {
    begin_ += count;
    if (empty()) clear();
  }

  /// Removes all bytes.
  void clear() { begin_ = end_ = 0; }

  /// Adds bytes behind the last. Raises std::bad_alloc, with the queue as it was.
  void append(std::string_view bytes);

  /// Room for `count` bytes behind the last, with whatever values; valid until the next call that
  /// is not const. Raises std::bad_alloc, with the queue as it was.
  std::span<char> prepare(std::size_t count);
  /// Makes the first `count` bytes of the room that prepare() gave, at most all, part of the queue.
  void commit(std::size_t count) { end_ += count; }

 private:
  std::unique_ptr<char[]> storage_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace replay::internet
