#include "replay/internet/detail/line_end.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace replay::internet {
namespace {

// Sixteen bytes at once, which the compiler maps to the machine's vector registers.
using block = signed char __attribute__((vector_size(16)));
constexpr std::size_t block_size = sizeof(block);

// The place of the first line end in the sixteen bytes, or block_size. Bytes in registers stand in
// the order of memory only on a little-endian machine.
std::size_t find_in_block(const char* bytes) {
  block values;
  std::memcpy(&values, bytes, block_size);
  const block found = (values == '\r') | (values == '\n');
  std::uint64_t halves[2];
  std::memcpy(halves, &found, block_size);
  if (halves[0] != 0) return static_cast<std::size_t>(std::countr_zero(halves[0])) / 8;
  if (halves[1] != 0) return 8 + static_cast<std::size_t>(std::countr_zero(halves[1])) / 8;
  return block_size;
}

}  // namespace

std::size_t find_line_end(std::string_view bytes, std::size_t from) {
  if constexpr (std::endian::native == std::endian::little) {
    for (; from + block_size <= bytes.size(); from += block_size) {
      const std::size_t found = find_in_block(bytes.data() + from);
      if (found != block_size) return from + found;
    }
  }
  while (from < bytes.size() && !is_line_end(bytes[from])) ++from;
  return from;
}

}  // namespace replay::internet
