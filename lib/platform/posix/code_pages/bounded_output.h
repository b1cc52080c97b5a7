// The caller's buffer of a conversion, which reports in the end whether all units found room.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

  /// Appends a unit, of the low bits of its argument.
  template <typename From>
  void put(From unit) {
    if (room() == 0) {
      overflowed_ = true;
    } else {
      *next_++ = static_cast<Unit>(unit);
    }
  }

  /// Appends `count` units, the first in the lowest place of `word`; none where there is no room
  /// for all.
  void putUnits(std::uint64_t word, std::size_t count) {
    if (room() < count) {
      overflowed_ = true;
      return;
    }
    if (isLittleEndian && room() >= sizeof(word) / sizeof(Unit)) {
      // One store of the whole word; what comes next goes over the part that is too much.
      std::memcpy(next_, &word, sizeof(word));
    } else {
      for (std::size_t i = 0; i < count; ++i)
        next_[i] = static_cast<Unit>(word >> 8 * sizeof(Unit) * i);
    }
    next_ += count;
  }

  /// Appends the ASCII units that `text` begins with and gives their number; once there is no room
  /// for one, the length of all `text`, since nothing behind it can mend that.
  template <typename From>
  std::size_t putAscii(std::basic_string_view<From> text) {
    const std::size_t limit = std::min(text.size(), room());
    std::size_t done = 0;
    // Most text is runs of ASCII. A block is written whole, and what comes after its ASCII over it.
    while (limit - done >= block) {
      for (std::size_t i = 0; i < block; ++i) next_[i] = static_cast<Unit>(text[done + i]);
      const std::size_t count = asciiUnits(text.data() + done);
      next_ += count;
      done += count;
      if (count < block) return done;
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
  static constexpr std::size_t block = 8;
  static constexpr bool isLittleEndian = std::endian::native == std::endian::little;

  std::size_t room() const { return static_cast<std::size_t>(end_ - next_); }

  template <typename From>
  static std::uint32_t bits(From unit) {
    return static_cast<std::make_unsigned_t<From>>(unit);
  }

  // The number of ASCII units that a block begins with.
  template <typename From>
  static std::size_t asciiUnits(const From* units) {
    using Word = std::uint64_t;
    constexpr std::size_t unitsOfWord = sizeof(Word) / sizeof(From);
    constexpr Word notAscii = sizeof(From) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
    for (std::size_t at = 0; at < block; at += unitsOfWord) {
      Word word = 0;
      std::memcpy(&word, units + at, sizeof(word));
      word &= notAscii;
      if (word != 0) return at + clearBitsInFront(word) / (8 * sizeof(From));
    }
    return block;
  }

  // Those of the bytes that come first in memory, which are the low ones of a word or the high
  // ones.
  static std::size_t clearBitsInFront(std::uint64_t word) {
    return static_cast<std::size_t>(isLittleEndian ? std::countr_zero(word)
                                                   : std::countl_zero(word));
  }

  Unit* begin_;
  Unit* next_;
  Unit* end_;
  bool overflowed_ = false;
};

}  // namespace platform
