#include "replay/md5.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "replay/text.h"

namespace replay {
namespace {

using state_type = std::array<std::uint32_t, 4>;

constexpr std::size_t block_size = 64;
constexpr std::size_t length_size = 8;

constexpr state_type initial_state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};

// The integer part of 2^32 * |sin(i)| for i from 1 to 64, as RFC 1321 defines the table T.
constexpr std::array<std::uint32_t, 64> sines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

// How far each step of the four rounds turns.
constexpr std::array<std::array<int, 4>, 4> shifts = {
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

struct round_step {
  std::uint32_t mixed;
  std::size_t word;
};

round_step mix(std::size_t step, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
  switch (step / 16) {
    case 0:
      return {(b & c) | (~b & d), step};
    case 1:
      return {(b & d) | (c & ~d), (5 * step + 1) % 16};
    case 2:
      return {b ^ c ^ d, (3 * step + 5) % 16};
    default:
      return {c ^ (b | ~d), 7 * step % 16};
  }
}

std::uint32_t word_at(std::string_view block, std::size_t index) {
  std::uint32_t word = 0;
  for (std::size_t byte = 4; byte-- > 0;) {
    word = word << 8 | static_cast<unsigned char>(block[4 * index + byte]);
  }
  return word;
}

void add_block(state_type& state, std::string_view block) {
  auto [a, b, c, d] = state;
  for (std::size_t step = 0; step < 64; ++step) {
    const auto [mixed, word] = mix(step, b, c, d);
    const std::uint32_t sum = a + mixed + sines[step] + word_at(block, word);
    a = d;
    d = c;
    c = b;
    b += std::rotl(sum, shifts[step / 16][step % 4]);
  }
  state[0] += a;
  state[1] += b;
  state[2] += c;
  state[3] += d;
}

// What follows the last whole block: the rest of the text, a one bit, zeros, and the length in
// bits.
std::string closing_blocks(std::string_view rest, std::uint64_t text_size) {
  std::string closing(rest);
  closing += '\x80';
  while (closing.size() % block_size != block_size - length_size) closing += '\0';
  const std::uint64_t bits = text_size * 8;
  for (unsigned byte = 0; byte < length_size; ++byte) {
    closing += static_cast<char>(static_cast<unsigned char>(bits >> (8 * byte)));
  }
  return closing;
}

}  // namespace

std::string md5_hex(std::string_view text) {
  state_type state = initial_state;
  std::string_view rest = text;
  for (; rest.size() >= block_size; rest.remove_prefix(block_size)) {
    add_block(state, rest.substr(0, block_size));
  }
  const std::string closing = closing_blocks(rest, text.size());
  for (std::size_t at = 0; at < closing.size(); at += block_size) {
    add_block(state, std::string_view(closing).substr(at, block_size));
  }

  std::string digest;
  for (const std::uint32_t word : state) {
    digest += format("%c%c%c%c", static_cast<int>(word & 0xff), static_cast<int>(word >> 8 & 0xff),
                     static_cast<int>(word >> 16 & 0xff), static_cast<int>(word >> 24));
  }
  return hex_encode(digest);
}

}  // namespace replay
