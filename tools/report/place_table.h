// A hash table of places in a list that lies elsewhere: eight bytes for each, and hardly a look at
// what lies there but at the one that is found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace reader {

class PlaceTable {
 public:
  static constexpr auto none = static_cast<std::uint32_t>(-1);

  /// The place of what has this hash and is `equal`; `none` if there is none.
  template <typename Equal>
  std::uint32_t find(std::size_t hash, const Equal& equal) const {
    if (slots_.empty()) return none;
    const std::uint32_t mark = markOf(hash);
    for (std::size_t at = firstSlot(mark); slots_[at].place != none; at = nextSlot(at)) {
      if (slots_[at].mark == mark && equal(slots_[at].place)) return slots_[at].place;
    }
    return none;
  }

  /// Enters a place that is not there yet, with the hash of what lies there.
  void insert(std::size_t hash, std::uint32_t place) {
    if (4 * ++size_ > 3 * slots_.size()) grow();
    put({place, markOf(hash)});
  }

 private:
  struct Slot {
    std::uint32_t place = none;
    std::uint32_t mark = 0;
  };

  // The bits of a hash are not equally good: the product brings all to bear on the highest.
  static std::uint32_t markOf(std::size_t hash) {
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) * 0x9E3779B97F4A7C15U >> 32);
  }
  std::size_t firstSlot(std::uint32_t mark) const { return mark & (slots_.size() - 1); }
  std::size_t nextSlot(std::size_t at) const { return (at + 1) & (slots_.size() - 1); }

  void put(Slot slot) {
    std::size_t at = firstSlot(slot.mark);
    while (slots_[at].place != none) at = nextSlot(at);
    slots_[at] = slot;
  }

  void grow() {
    constexpr std::size_t smallest = 64;
    std::vector<Slot> old(slots_.empty() ? smallest : 2 * slots_.size());
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.place != none) put(slot);
    }
  }

  std::vector<Slot> slots_{};  // as many as a power of two
  std::size_t size_ = 0;
};

}  // namespace reader
