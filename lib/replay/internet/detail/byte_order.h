// Numbers in network byte order, most significant byte first.
//
// Threads: any number may call these at once.
#pragma once

#include <bit>
#include <cstdint>

namespace replay::internet {

/// Between the machine's byte order and the network's; the same step in both directions.
constexpr std::uint16_t network_order(std::uint16_t value) {
  if constexpr (std::endian::native == std::endian::big) return value;
  return static_cast<std::uint16_t>((value << 8U) | (value >> 8U));
}

constexpr std::uint32_t network_order(std::uint32_t value) {
  if constexpr (std::endian::native == std::endian::big) return value;
  return (value << 24U) | ((value & 0xFF00U) << 8U) | ((value >> 8U) & 0xFF00U) | (value >> 24U);
}

}  // namespace replay::internet
