// The caller's buffer of a conversion, which reports in the end whether all units found room.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>

#include "platform/code_pages.h"

namespace platform {

template <typename Unit>
class BoundedOutput {
 public:
  explicit BoundedOutput(std::span<Unit> buffer)
      : begin_(buffer.data()), next_(begin_), end_(begin_ + buffer.size()) {}

  /// Appends all the units, or none where there is no room for all.
  template <typename... Units>
  void put(Units... units) {
    if (room() < sizeof...(units)) {
      overflowed_ = true;
    } else {
      ((*next_++ = static_cast<Unit>(units)), ...);
    }
  }

  /// Appends the ASCII units that `text` begins with and gives their number; once there is no room
  /// for one, the length of all `text`, since nothing behind it can mend that.
  template <typename From>
  std::size_t putAscii(std::basic_string_view<From> text) {
    const std::size_t limit = std::min(text.size(), room());
    std::size_t done = 0;
    // Most text is runs of ASCII, and a block of fixed size is one step of the vector unit.
    while (limit - done >= block && isAscii(text.data() + done)) {
      for (std::size_t i = 0; i < block; ++i) next_[i] = static_cast<Unit>(text[done + i]);
      next_ += block;
      done += block;
    }
    for (; done < limit && bits(text[done]) < 0x80; ++done)
      *next_++ = static_cast<Unit>(text[done]);
    if (done == text.size() || bits(text[done]) >= 0x80) return done;
    overflowed_ = true;
    return text.size();
  }

  Conversion result() const {
    if (overflowed_) return {0, errorInsufficientBuffer};
    return {static_cast<std::size_t>(next_ - begin_), 0};
  }

 private:
  static constexpr std::size_t block = 16;

  std::size_t room() const { return static_cast<std::size_t>(end_ - next_); }

  template <typename From>
  static unsigned bits(From unit) {
    return static_cast<std::make_unsigned_t<From>>(unit);
  }

  template <typename From>
  static bool isAscii(const From* units) {
    unsigned all = 0;
    for (std::size_t i = 0; i < block; ++i) all |= bits(units[i]);
    return all < 0x80;
  }

  Unit* begin_;
  Unit* next_;
  Unit* end_;
  bool overflowed_ = false;
};

}  // namespace platform
