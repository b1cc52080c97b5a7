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
#include <utility>

namespace replay::internet {

/// Bytes that wait. A queue is not copied; one that was moved from is empty.
class byte_queue {
 public:
  /// No bytes wait.
  byte_queue() = default;
  /// The bytes of the other.
  byte_queue(byte_queue&& other) noexcept { swap(other); }
  /// The bytes of the other in place of its own.
  byte_queue& operator=(byte_queue&& other) noexcept {
    byte_queue taken(std::move(other));
    swap(taken);
    return *this;
  }
  ~byte_queue() = default;

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
  void swap(byte_queue& other) noexcept {
    std::swap(storage_, other.storage_);
    std::swap(capacity_, other.capacity_);
    std::swap(begin_, other.begin_);
    std::swap(end_, other.end_);
  }

  std::unique_ptr<char[]> storage_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace replay::internet
